#include "web/pages/clsWebPage_AdminModList.h"

#include "server/clsMods.h"
#include "web/pages/PageText.h"

namespace {

QString button(const char *value, const char *name)
{
    return QStringLiteral("<input type=\"submit\" name=\"ActionButton\" value=\"%1\" "
                          "aria-label=\"%2\">")
        .arg(QLatin1String(value), QLatin1String(name));
}

/// The form of one mod; `cells` are those with its buttons.
QString form(const clsModInfo &mod, const QString &cells)
{
    return QStringLiteral("<form name=\"mod\" method=\"POST\" action=\"EditMod\">\n"
                          "<input type=\"hidden\" name=\"modname\" value=\"") +
           mod.ModName + QStringLiteral("\">") + page::credentialFields() +
           QStringLiteral("\n<table><tr><td class=\"modline\">") + mod.Name() +
           QStringLiteral("</td>") + cells + QStringLiteral("</tr></table>\n</form>\n");
}

} // namespace

QString clsWebPage_AdminModList::build() const
{
    clsMods mods;
    mods.Load();
    const QString activeCells =
        QStringLiteral("<td class=\"modline action\">") + button("Deactivate", "Deactivate") +
        QStringLiteral("</td><td class=\"modline order\">") + button("^", "Move up") +
        button("v", "Move down") + QStringLiteral("</td>");
    const QString availableCells = QStringLiteral("<td class=\"modline activate\" colspan=\"3\">") +
                                   button("  Activate  ", "Activate") + QStringLiteral("</td>");
    QString page = page::text(3600);
    for (const clsModInfo *const mod : mods.ActiveMods()) {
        page += form(*mod, activeCells);
    }
    page += QStringLiteral("<table><tr><td class=\"available\" colspan=\"4\">Available "
                           "Mods</td></tr></table>\n");
    for (const auto &mod : mods.Mods()) {
        if (!mod->Active) {
            page += form(*mod, availableCells);
        }
    }
    return page + page::text(3601);
}
