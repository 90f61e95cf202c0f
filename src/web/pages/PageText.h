#pragma once

#include "core/PageKey.h"

#include <QString>

#include <array>
#include <optional>

/// The pieces that pages are made of. Values stand in them as they are, not escaped: what a name
/// holds is shown as markup, and the policy in every page's head keeps its scripts from running.
namespace page {

/// An entry of the administration's menu and the page that it opens.
struct MenuEntry
{
    const char *value = "";
    std::optional<PageKey> page; ///< nothing for a page that does not exist yet
};
inline constexpr std::array<MenuEntry, 7> Menu{{
    {"Main", PageKey::AdminMain},
    {"System Status", PageKey::AdminSystemOptions},
    {"Server Control", PageKey::AdminServerControl},
    {"Server Options", PageKey::AdminServerOptions},
    {"Replays", PageKey::AdminReplays},
    {"Status Options", PageKey::AdminStatusOptions},
    {"Stats", std::nullopt},
}};

/// One of the texts in the folder "resources". "{menu:Main}" in it stands for the menu's buttons,
/// Main being the page that is shown, the end of its form and the opening of the content;
/// "{include:name}" for the text of that name, and "{hash:name}" for that text's hash as a policy
/// names it. A line's end after any of them does not count.
QString text(const QString &name);
/// The page or piece of that number.
QString text(int number);

/// The hidden fields with the administrator's name and password that begin every form.
QString credentialFields();

/// The head of every administration page: the frame and the beginning of its menu form.
QString adminFrame();

QString row(const QString &content);

/// `attributes` follow those of the field itself.
QString checkBox(const char *name, bool ticked, const QString &label,
                 const QString &attributes = {});
QString disabledCheckBox(bool ticked, const QString &label);

/// Widths are in characters; without a longest length the text may have any.
struct FieldWidth
{
    int size = 0;
    int longest = 0;
};
QString textField(const char *name, const QString &label, const QString &value, FieldWidth width);
QString disabledTextField(const QString &label, const QString &value, int size);

/// An area to type in and the hidden field that is posted; the area's text gets there when the area
/// is left.
QString textArea(const char *areaId, const char *name, const QString &label, const QString &value,
                 const QString &fieldAttributes = {});

} // namespace page
