#include "web/pages/clsWebPage_AdminModList.h"

#include "server/clsMods.h"
#include "web/pages/PageText.h"

using namespace Qt::StringLiterals;

namespace {

QString button(const char *value, const char *name)
{
    return u"<input type=\"submit\" name=\"ActionButton\" value=\"%1\" "
           "aria-label=\"%2\">"_s.arg(QLatin1String(value), QLatin1String(name));
}

/// The form of one mod; `cells` are those with its buttons.
QString form(const clsModInfo &mod, const QString &cells)
{
    return u"<form name=\"mod\" method=\"POST\" action=\"EditMod\">\n"
           "<input type=\"hidden\" name=\"modname\" value=\""_s +
           mod.ModName + u"\">"_s + page::credentialFields() +
           u"\n<table role=\"group\" aria-label=\""_s + mod.shownName() +
           u"\"><tr><td class=\"modline\">"_s + mod.shownName() + u"</td>"_s + cells +
           u"</tr></table>\n</form>\n"_s;
}

} // namespace

QString clsWebPage_AdminModList::build() const
{
    clsMods mods;
    mods.Load();
    const QString activeCells = u"<td class=\"modline action\">"_s +
                                button("Deactivate", "Deactivate") +
                                u"</td><td class=\"modline order\">"_s + button("^", "Move up") +
                                button("v", "Move down") + u"</td>"_s;
    const QString availableCells = u"<td class=\"modline activate\" colspan=\"3\">"_s +
                                   button("  Activate  ", "Activate") + u"</td>"_s;
    QString page = page::text(3600);
    for (const clsModInfo *const mod : mods.activeMods()) {
        page += form(*mod, activeCells);
    }
    page += u"<table role=\"presentation\"><tr><td class=\"available\" colspan=\"4\" "
            "role=\"heading\" aria-level=\"2\">Available "
            "Mods</td></tr></table>\n"_s;
    for (const auto &mod : mods.Mods()) {
        if (!mod->Active) {
            page += form(*mod, availableCells);
        }
    }
    return page + page::text(3601);
}
