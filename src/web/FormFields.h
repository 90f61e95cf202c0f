#pragma once

#include "core/basNumbers.h"
#include "core/basTraps.h"
#include "web/Website.h"
#include "web/clsWebServerRequest.h"

#include <QString>

#include <cstdint>
#include <limits>
#include <optional>
#include <type_traits>
#include <variant>

/// A field of a posted form and the setting that it becomes. A check box is ticked when its field
/// is "on"; a text longer than it may be is cut; a number that is none, or out of its range, is not
/// stored. `message` tells of such a text or number, of a text with the rest of it in parentheses.
template <typename Target, template <typename> class Held>
struct FormField
{
    const char *name = "";
    std::variant<Held<bool> Target::*, Held<QString> Target::*, Held<std::int32_t> Target::*>
        setting;
    const char *message = "";
    /// Of a number the largest, the least being 0; of a text the longest.
    std::int32_t limit = NoLimit;

    static constexpr std::int32_t NoLimit = std::numeric_limits<std::int32_t>::max();
};

/// Stores a form in its settings, field by field: `store` is called with a setting and its new
/// value. The result are the messages, or that all is well.
template <typename Target, template <typename> class Held, std::size_t Count, typename Store>
QString storeForm(const clsWebServerRequest &request, Target &target,
                  const FormField<Target, Held> (&fields)[Count], Store store)
{
    QString messages;
    const auto storeField = [&]<typename Value>(const FormField<Target, Held> &field,
                                                Held<Value> &setting) {
        QString text = request.FormField(QString::fromLatin1(field.name));
        if constexpr (std::is_same_v<Value, bool>) {
            store(setting, text == QLatin1String("on"));
        } else if constexpr (std::is_same_v<Value, QString>) {
            if (text.size() > field.limit) {
                text.truncate(field.limit);
                messages += QLatin1String(field.message) + text + QLatin1String(")<br>");
            }
            store(setting, text);
        } else if (const std::optional<Value> number = fnIfInteger(text);
                   number &&
                   (field.limit == field.NoLimit || (*number >= 0 && *number <= field.limit))) {
            store(setting, *number);
        } else {
            messages += QLatin1String(field.message);
        }
    };
    for (const FormField<Target, Held> &field : fields) {
        std::visit([&](auto setting) { storeField(field, target.*setting); }, field.setting);
    }
    return messages.isEmpty() ? QStringLiteral("Configuration Updated") : messages;
}

/// What the page of an update tells after a failure.
inline const QString UpdateFailed = QStringLiteral("An Error has occured. Please check the log");

/// Runs the body of an update, which returns what its page tells; a failure is recorded and told.
template <typename Body>
QString trapUpdate(const char *routine, Body body)
{
    QString message = UpdateFailed;
    trap(Website(routine), [&] { message = body(); });
    return message;
}
