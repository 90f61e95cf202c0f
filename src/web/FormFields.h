#pragma once

#include "core/basNumbers.h"
#include "web/clsWebServerRequest.h"

#include <QString>

#include <cstdint>
#include <limits>
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

/// Stores one form in its settings, field by field, and collects the messages.
template <typename Target, template <typename> class Held, typename Store>
class FormReader
{
public:
    /// `store` is called with a setting and its new value.
    FormReader(const clsWebServerRequest &request, Target &target, Store store)
        : m_request(request), m_target(target), m_store(store)
    {
    }

    void read(const FormField<Target, Held> &field)
    {
        m_field = &field;
        m_text = m_request.FormField(QString::fromLatin1(field.name));
        std::visit([this](auto setting) { take(m_target.*setting); }, field.setting);
    }

    const QString &messages() const { return m_messages; }

private:
    void take(Held<bool> &setting) { m_store(setting, m_text == QLatin1String("on")); }

    void take(Held<QString> &setting)
    {
        if (m_text.size() > m_field->limit) {
            m_text.truncate(m_field->limit);
            m_messages += QLatin1String(m_field->message) + m_text + QLatin1String(")<br>");
        }
        m_store(setting, m_text);
    }

    void take(Held<std::int32_t> &setting)
    {
        const std::optional<std::int32_t> number = fnIfInteger(m_text);
        const bool limited = m_field->limit != m_field->NoLimit;
        if (!number || (limited && (*number < 0 || *number > m_field->limit))) {
            m_messages += QLatin1String(m_field->message);
            return;
        }
        m_store(setting, *number);
    }

    const clsWebServerRequest &m_request;
    Target &m_target;
    Store m_store;
    const FormField<Target, Held> *m_field = nullptr;
    QString m_text;
    QString m_messages;
};

/// Stores a form in its settings. The result are the messages, or that all is well.
template <typename Target, template <typename> class Held, std::size_t Count, typename Store>
QString storeForm(const clsWebServerRequest &request, Target &target,
                  const FormField<Target, Held> (&fields)[Count], Store store)
{
    FormReader<Target, Held, Store> reader(request, target, store);
    for (const FormField<Target, Held> &field : fields) {
        reader.read(field);
    }
    return reader.messages().isEmpty() ? QStringLiteral("Configuration Updated")
                                       : reader.messages();
}
