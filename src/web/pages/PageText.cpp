#include "web/pages/PageText.h"

#include "core/basMain.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "platform/CodePage.h"

#include <QCryptographicHash>
#include <QFile>
#include <QRegularExpression>

namespace page {

namespace {

QString menu(const QString &shown)
{
    QString buttons;
    for (const MenuEntry &entry : Menu) {
        const QString value = QLatin1String(entry.value);
        const QString state =
            value == shown ? QStringLiteral(" current\" aria-current=\"page") : QString();
        buttons +=
            QStringLiteral("<input type=\"submit\" class=\"menubutton%1\" name=\"AdminMenu\" "
                           "value=\"%2\"%3>\n")
                .arg(state, value, entry.page ? QString() : QStringLiteral(" disabled"));
    }
    return buttons + QStringLiteral("</form>\n</td>\n<td class=\"content\">\n");
}

QString ticking(bool ticked)
{
    return ticked ? QStringLiteral(" checked=\"true\"") : QString();
}

/// A control and its label stay together where a row is broken.
QString field(const QString &content)
{
    return QStringLiteral("<span class=\"field\">") + content + QStringLiteral("</span>");
}

QString hiddenField(const char *name, const QString &value)
{
    return QStringLiteral("<input type=\"hidden\" name=\"%1\" value=\"%2\">")
        .arg(QLatin1String(name), value);
}

/// As a policy names a style or a handler that is to be heeded.
QString policyHash(const QString &code)
{
    const QByteArray hash = QCryptographicHash::hash(code.toUtf8(), QCryptographicHash::Sha256);
    return QStringLiteral("'sha256-%1'").arg(QLatin1String(hash.toBase64()));
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
    static const QRegularExpression placeholder(
        QStringLiteral("\\{(menu|include|hash):([^}]*)\\}\\n?"));
    QFile file(QStringLiteral(":/pages/") + name);
    file.open(QIODevice::ReadOnly);
    QString text = platform::fromCodePage(file.readAll());
    for (auto found = placeholder.match(text); found.hasMatch(); found = placeholder.match(text)) {
        text.replace(found.capturedStart(), found.capturedLength(),
                     meaning(found.capturedView(1), found.captured(2)));
    }
    return text;
}

QString text(int number)
{
    return text(QStringLiteral("%1.html").arg(number));
}

QString credentialFields()
{
    const clsOptions &options = *gRoot->Options();
    return hiddenField("UserName", options.AdminUserName()) + QStringLiteral("  ") +
           hiddenField("PW", options.AdminPassword());
}

QString adminFrame()
{
    return text(3000) + credentialFields();
}

QString row(const QString &content)
{
    return QStringLiteral("<tr><td>") + content + QStringLiteral("</td></tr>\n");
}

QString checkBox(const char *name, bool ticked, const QString &label, const QString &attributes)
{
    return field(QStringLiteral("<input type=\"checkbox\" name=\"%1\" id=\"%1\"%2%3>"
                                "<label for=\"%1\">%4</label>")
                     .arg(QLatin1String(name), ticking(ticked), attributes, label));
}

QString disabledCheckBox(bool ticked, const QString &label)
{
    return QStringLiteral("<label><input type=\"checkbox\"%1 disabled> ").arg(ticking(ticked)) +
           label + QStringLiteral("</label>");
}

QString textField(const char *name, const QString &label, const QString &value, FieldWidth width)
{
    const QString limit =
        width.longest > 0 ? QStringLiteral(" maxlength=\"%1\"").arg(width.longest) : QString();
    return field(QStringLiteral("<label for=\"%1\">%2</label> <input type=\"text\" name=\"%1\" "
                                "id=\"%1\"%3 size=\"%4\" value=\"")
                     .arg(QLatin1String(name), label, limit, QString::number(width.size)) +
                 value + QStringLiteral("\">"));
}

QString disabledTextField(const QString &label, const QString &value, int size)
{
    return field(QStringLiteral("<label>%1 <input type=\"text\" size=\"%2\" value=\"%3\" "
                                "disabled></label>")
                     .arg(label, QString::number(size), value));
}

QString textArea(const char *areaId, const char *name, const QString &label, const QString &value,
                 const QString &fieldAttributes)
{
    return QStringLiteral("<label for=\"%1\">%2</label><br>\n<textarea id=\"%1\" rows=\"4\" "
                          "onblur=\"%3\">")
               .arg(QLatin1String(areaId), label,
                    text(QStringLiteral("blur-%1.js").arg(QLatin1String(name)))) +
           value +
           QStringLiteral("</textarea>\n<input type=\"hidden\" name=\"%1\" id=\"%1\"%2 value=\"")
               .arg(QLatin1String(name), fieldAttributes) +
           value + QStringLiteral("\">");
}

} // namespace page
