#include "platform/XmlDocument.h"

#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/XmlParser.h"

#include <cstdlib>
#include <functional>
#include <libxml/tree.h>
#include <libxml/xmlsave.h>
#include <limits>
#include <new>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// What the library's `standalone` tells of a document beside "yes" and "no".
constexpr int NotDeclared = -1;
constexpr int DeclaredWithoutStandalone = -2;

constexpr const char *Utf8 = "UTF-8";
constexpr const char *ByteOrderMark = "\xEF\xBB\xBF";

/// Never for UTF-16, where NUL bytes are in every tag.
bool endsLinesInCarriageReturns(const QByteArray &bytes)
{
    const qsizetype lines = bytes.count('\n');
    return lines > 0 && bytes.count("\r\n") == lines && !bytes.contains('\0');
}

const xmlChar *asXml(const char *text)
{
    return reinterpret_cast<const xmlChar *>(text);
}

bool isXmlCharacter(char32_t character)
{
    if (character < 0x20) {
        return character == '\t' || character == '\n' || character == '\r';
    }
    return character != 0xFFFE && character != 0xFFFF;
}

/// UTF-8 of the text with U+FFFD for every character that XML cannot hold.
QByteArray toXmlText(const QString &text)
{
    // The conversion itself takes care of halves of surrogate pairs.
    QList<uint> characters = text.toUcs4();
    for (uint &character : characters) {
        if (!isXmlCharacter(character)) {
            character = QChar::ReplacementCharacter;
        }
    }
    return QString::fromUcs4(reinterpret_cast<const char32_t *>(characters.constData()),
                             characters.size())
        .toUtf8();
}

QString takeText(xmlChar *text)
{
    QString result = QString::fromUtf8(reinterpret_cast<const char *>(text));
    xmlFree(text);
    return result;
}

template <typename Node>
Node *orThrow(Node *node)
{
    if (node == nullptr) {
        throw std::bad_alloc();
    }
    return node;
}

/// The node after `node` in document order.
xmlNode *following(xmlNode *node)
{
    if (node->type == XML_ELEMENT_NODE && node->children != nullptr) {
        return node->children;
    }
    while (node != nullptr && node->next == nullptr) {
        node = node->parent;
    }
    return node == nullptr ? nullptr : node->next;
}

/// What the library writes, by a function of its own for documents or for parts of them.
QByteArray saved(const char *encoding, int options, const std::function<void(xmlSaveCtxt *)> &save)
{
    const std::unique_ptr<xmlBuffer, void (*)(xmlBuffer *)> buffer(orThrow(xmlBufferCreate()),
                                                                   xmlBufferFree);
    xmlSaveCtxt *const saving = orThrow(xmlSaveToBuffer(buffer.get(), encoding, options));
    save(saving);
    if (xmlSaveClose(saving) < 0) {
        throw std::bad_alloc();
    }
    return {reinterpret_cast<const char *>(xmlBufferContent(buffer.get())),
            xmlBufferLength(buffer.get())};
}

/// The first element of the name from `node` on, in document order.
xmlNode *nextOfName(xmlNode *node, const char *name)
{
    while (node != nullptr && !(node->type == XML_ELEMENT_NODE && node->ns == nullptr &&
                                xmlStrEqual(node->name, asXml(name)) != 0)) {
        node = following(node);
    }
    return node;
}

} // namespace

QString XmlElement::text() const
{
    return takeText(xmlNodeGetContent(m_node));
}

void XmlElement::setText(const QString &text)
{
    // xmlNodeSetContent() would take "&" for the start of an entity; a text node holds it as it is.
    xmlNodeSetContent(m_node, nullptr);
    if (!text.isEmpty()) {
        const QByteArray content = toXmlText(text);
        xmlAddChild(m_node, orThrow(xmlNewDocText(m_node->doc, asXml(content.constData()))));
    }
}

QString XmlElement::attribute(const char *name) const
{
    return takeText(xmlGetNoNsProp(m_node, asXml(name)));
}

void XmlElement::setAttribute(const char *name, const QString &value)
{
    const QByteArray content = toXmlText(value);
    orThrow(xmlSetProp(m_node, asXml(name), asXml(content.constData())));
}

XmlElement XmlElement::append(const char *name)
{
    return XmlElement(orThrow(xmlNewChild(m_node, nullptr, asXml(name), nullptr)));
}

QByteArray XmlElement::toBytes() const
{
    return saved(Utf8, XML_SAVE_NO_DECL,
                 [this](xmlSaveCtxt *saving) { xmlSaveTree(saving, m_node); });
}

bool XmlDocument::libraryAvailable()
{
    // A shared library older than the headers lacks what this program calls. Only the last two
    // digits are the patch level; a suffix may follow them.
    constexpr int PatchLevels = 100;
    return std::strtol(xmlParserVersion, nullptr, 10) / PatchLevels >= LIBXML_VERSION / PatchLevels;
}

QString XmlDocument::libraryVersion()
{
    return QString::fromLatin1(LIBXML_DOTTED_VERSION);
}

XmlDocument XmlDocument::create(const char *rootName)
{
    XmlDocument result(orThrow(xmlNewDoc(asXml("1.0"))));
    result.m_document->standalone = DeclaredWithoutStandalone;
    result.useUtf8();
    xmlDocSetRootElement(result.m_document.get(), orThrow(xmlNewNode(nullptr, asXml(rootName))));
    return result;
}

std::optional<XmlDocument> XmlDocument::load(const QString &path)
{
    try {
        return loadOrFail(path);
    } catch (const Failure &) {
        return std::nullopt;
    }
}

XmlDocument XmlDocument::loadOrFail(const QString &path)
{
    std::optional<XmlDocument> document = parse(readFile(path));
    if (!document) {
        throw Failure(Failure::PathAccess, u"%1: Not well-formed XML"_s.arg(path));
    }
    return std::move(*document);
}

std::optional<XmlDocument> XmlDocument::parse(const QByteArray &bytes)
{
    if (bytes.size() > std::numeric_limits<int>::max()) {
        return std::nullopt;
    }
    const XmlParser parser = newXmlParser();
    xmlDoc *document =
        xmlCtxtReadMemory(parser.get(), bytes.constData(), static_cast<int>(bytes.size()), nullptr,
                          nullptr, XmlParserOptions);
    if (document == nullptr) {
        return std::nullopt;
    }
    XmlDocument result(document);
    result.m_byteOrderMark = bytes.startsWith(ByteOrderMark);
    result.m_carriageReturns = endsLinesInCarriageReturns(bytes);
    return result;
}

void XmlDocument::useUtf8()
{
    xmlFree(const_cast<xmlChar *>(m_document->encoding));
    m_document->encoding = orThrow(xmlStrdup(asXml(Utf8)));
}

XmlElement XmlDocument::root()
{
    return XmlElement(xmlDocGetRootElement(m_document.get()));
}

std::optional<XmlElement> XmlDocument::findFirst(const char *name)
{
    xmlNode *const node = nextOfName(xmlDocGetRootElement(m_document.get()), name);
    return node == nullptr ? std::nullopt : std::optional(XmlElement(node));
}

std::vector<XmlElement> XmlDocument::findAll(const char *name)
{
    std::vector<XmlElement> result;
    for (xmlNode *node = nextOfName(xmlDocGetRootElement(m_document.get()), name); node != nullptr;
         node = nextOfName(following(node), name)) {
        result.push_back(XmlElement(node));
    }
    return result;
}

QByteArray XmlDocument::toBytes() const
{
    const QByteArray encoding = reinterpret_cast<const char *>(m_document->encoding);
    const bool declared = m_document->standalone != NotDeclared;
    // Without an encoding's name the library would write all but ASCII as references.
    QByteArray result =
        saved(encoding.isEmpty() ? Utf8 : encoding.constData(), declared ? 0 : XML_SAVE_NO_DECL,
              [this](xmlSaveCtxt *saving) { xmlSaveDoc(saving, m_document.get()); });
    if (declared && encoding.isEmpty()) {
        const QByteArray added = R"( encoding="UTF-8")"_ba;
        result.remove(result.indexOf(added), added.size());
    }
    if (m_carriageReturns) {
        result.replace("\n", "\r\n");
    }
    if (m_byteOrderMark) {
        result.prepend(ByteOrderMark);
    }
    return result;
}

void XmlDocument::Deleter::operator()(_xmlDoc *document) const
{
    xmlFreeDoc(document);
}

} // namespace platform
