#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/// One HTTP request as it arrived: its method, its target and the fields of a posted form. Headers
/// are skipped unread, and a query string is part of the target.
///
/// The text is in the code page, one character a byte. A form is read from the body in the
/// encoding "application/x-www-form-urlencoded" of the HTML standard. Fields without a value are
/// not kept.
class clsWebServerRequest
{
public:
    enum RequestMethod { Get = 0, Post = 1, Other = 32767 };

    /// Reads one request. A text that breaks off is recorded, and leaves what was read until then:
    /// nothing is a GET of an empty target.
    void ParseRequest(const QString &text);

    RequestMethod Method() const { return m_method; }
    /// The request's target as it stands in the request line, not decoded.
    const QString &URI() const { return m_uri; }
    /// The field's value; empty when there is none. The key does not mind the case of letters.
    QString FormField(const QString &key) const { return m_values.value(key.toCaseFolded()); }
    /// In the order in which they were posted.
    const QStringList &FieldNames() const { return m_names; }

    // Of the interface, without a user here.
    const QString &File() const { return m_uri; }
    QString Item(const QString &key) const { return FormField(key); }

private:
    void fnParseFormFields(const QString &body);
    void add(const QString &name, const QString &value);

    RequestMethod m_method = Get;
    QString m_uri;
    QHash<QString, QString> m_values; ///< by their names in one case
    QStringList m_names;
};
