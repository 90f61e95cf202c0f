#include "web/pages/PageText.h"

#include "core/basMain.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "platform/CodePage.h"

#include <QCryptographicHash>
#include <QFile>
#include <QHash>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace page {

namespace {

QString menu(const QString &shown)
{
    QString buttons;
    for (const MenuEntry &entry : Menu) {
        const QString value = QLatin1String(entry.value);
        const QString state = value == shown ? u" current\" aria-current=\"page"_s : QString();
        buttons += u"<input type=\"submit\" class=\"menubutton%1\" name=\"AdminMenu\" "
                   "value=\"%2\"%3>\n"_s.arg(state, value, entry.page ? QString() : u" disabled"_s);
    }
    return buttons + u"</form>\n</td>\n<td class=\"content\" role=\"main\">\n"_s;
}

QString ticking(bool ticked)
{
    return ticked ? u" checked=\"true\""_s : QString();
}

/// A control and its label stay together where a row is broken.
QString field(const QString &content)
{
    return u"<span class=\"field\">"_s + content + u"</span>"_s;
}

QString hiddenField(const char *name, const QString &value)
{
    return u"<input type=\"hidden\" name=\"%1\" value=\"%2\">"_s.arg(QLatin1String(name), value);
}

/// As a policy names a style or a handler that is to be heeded.
QString policyHash(const QString &code)
{
    const QByteArray hash = QCryptographicHash::hash(code.toUtf8(), QCryptographicHash::Sha256);
    return u"'sha256-%1'"_s.arg(QLatin1String(hash.toBase64()));
}

QString meaning(QStringView placeholder, const QString &argument)
{
    if (placeholder == u"menu") {
        return menu(argument);
    }
    const QString included = text(argument);
    return placeholder == u"hash" ? policyHash(included) : included;
}

} // namespace

QString text(const QString &name)
{
    static QHash<QString, QString> loaded;
    if (const auto known = loaded.constFind(name); known != loaded.constEnd()) {
        return *known;
    }
    static const QRegularExpression placeholder(u"\\{(menu|include|hash):([^}]*)\\}\\n?"_s);
    QFile file(u":/pages/"_s + name);
    file.open(QIODevice::ReadOnly);
    QString text = platform::fromCodePage(file.readAll());
    for (auto found = placeholder.match(text); found.hasMatch(); found = placeholder.match(text)) {
        text.replace(found.capturedStart(), found.capturedLength(),
                     meaning(found.capturedView(1), found.captured(2)));
    }
    loaded.insert(name, text);
    return text;
}

QString text(int number)
{
    return text(u"%1.html"_s.arg(number));
}

QString credentialFields()
{
    const clsOptions &options = *gRoot->Options();
    return hiddenField("UserName", options.AdminUserName()) + u"  "_s +
           hiddenField("PW", options.AdminPassword());
}

QString adminFrame()
{
    return text(3000) + credentialFields();
}

QString row(const QString &content)
{
    return u"<tr><td>"_s + content + u"</td></tr>\n"_s;
}

QString checkBox(const char *name, bool ticked, const QString &label, const QString &attributes)
{
    return field(u"<input type=\"checkbox\" name=\"%1\" id=\"%1\"%2%3>"
                 "<label for=\"%1\">%4</label>"_s.arg(QLatin1String(name), ticking(ticked),
                                                      attributes, label));
}

QString disabledCheckBox(bool ticked, const QString &label)
{
    return u"<label><input type=\"checkbox\"%1 disabled> "_s.arg(ticking(ticked)) + label +
           u"</label>"_s;
}

QString textField(const char *name, const QString &label, const QString &value, FieldWidth width)
{
    const QString limit = width.longest > 0 ? u" maxlength=\"%1\""_s.arg(width.longest) : QString();
    return field(u"<label for=\"%1\">%2</label> <input type=\"text\" name=\"%1\" "
                 "id=\"%1\"%3 size=\"%4\" value=\""_s.arg(QLatin1String(name), label, limit,
                                                          QString::number(width.size)) +
                 value + u"\">"_s);
}

QString disabledTextField(const QString &label, const QString &value, int size)
{
    return field(u"<label>%1 <input type=\"text\" size=\"%2\" value=\"%3\" "
                 "disabled></label>"_s.arg(label, QString::number(size), value));
}

QString textArea(const char *areaId, const char *name, const QString &label, const QString &value,
                 const QString &fieldAttributes)
{
    return u"<label for=\"%1\">%2</label><br>\n<textarea id=\"%1\" rows=\"4\" "
           "onblur=\"%3\">"_s.arg(QLatin1String(areaId), label,
                                  text(u"blur-%1.js"_s.arg(QLatin1String(name)))) +
           value +
           u"</textarea>\n<input type=\"hidden\" name=\"%1\" id=\"%1\"%2 value=\""_s.arg(
               QLatin1String(name), fieldAttributes) +
           value + u"\">"_s;
}

} // namespace page
