#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

extern "C" {
struct _xmlDoc;
struct _xmlNode;
}

namespace platform {

/// One element of an XmlDocument, valid as long as the document. Text that XML 1.0 cannot hold
/// (control characters, halves of surrogate pairs) is stored as U+FFFD, so that whatever was
/// written can be read again.
class XmlElement
{
public:
    /// The text of the element and all that it contains.
    QString text() const;
    void setText(const QString &text);
    QString attribute(const char *name) const;
    /// Sets an attribute; a new one comes last.
    void setAttribute(const char *name, const QString &value);
    /// Adds an element as the last child.
    XmlElement append(const char *name);
    /// The element with all that it contains, in UTF-8.
    QByteArray toBytes() const;

private:
    friend class XmlDocument;
    explicit XmlElement(_xmlNode *node) : m_node(node) {}

    _xmlNode *m_node;
};

/// An XML document in memory. Reading is strict about well-formedness, and uses no network and no
/// entities of the document's own.
class XmlDocument
{
public:
    /// Whether the XML library that this program runs with can be used.
    static bool libraryAvailable();
    /// Of the library that the program was built with.
    static QString libraryVersion();

    /// A document with an empty root element.
    static XmlDocument create(const char *rootName);
    /// Nothing when the file is missing, unreadable or not well-formed.
    static std::optional<XmlDocument> load(const QString &path);
    /// The same, but throws Failure with the system's reason, or that it is not XML.
    static XmlDocument loadOrFail(const QString &path);
    static std::optional<XmlDocument> parse(const QByteArray &bytes);

    /// Lets toBytes() write UTF-8, whatever the encoding was.
    void useUtf8();
    XmlElement root();
    /// The first element of that name, in document order.
    std::optional<XmlElement> findFirst(const char *name);
    /// All elements of that name, in document order.
    std::vector<XmlElement> findAll(const char *name);
    /// The whole document in the form in which it was read: with a declaration or without, in the
    /// encoding that it declares or else in UTF-8, with the byte order mark that UTF-8 may have,
    /// and with CR LF if every line ended so. Mixed line ends and those of UTF-16 become LF. A
    /// document that was made here declares UTF-8 and has LF.
    QByteArray toBytes() const;

private:
    struct Deleter
    {
        void operator()(_xmlDoc *document) const;
    };

    explicit XmlDocument(_xmlDoc *document) : m_document(document) {}

    std::unique_ptr<_xmlDoc, Deleter> m_document;
    bool m_byteOrderMark = false;
    /// Reading makes every line end LF.
    bool m_carriageReturns = false;
};

} // namespace platform
