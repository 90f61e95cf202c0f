#pragma once

#include <utility>

/// Pages of the web site that show a setting: the key of one of them, or one of these.
inline constexpr const char *NoPage = nullptr;
inline constexpr const char *EveryPage = "";

/// Renders the pages again that show a setting, if there is a web site yet.
void RefreshPages(const char *pages);
/// Lets the settings be saved soon, if they are loaded already.
void NoteChangedSetting();

/// One setting of the tool: reading it is calling it.
template <typename Value>
class Setting
{
public:
    explicit Setting(const char *pages, Value initial = {})
        : m_pages(pages), m_value(std::move(initial))
    {
    }

    const Value &operator()() const { return m_value; }
    /// Stores the value and renders the pages again that show it. The value that it has already
    /// changes nothing.
    void Let(Value value)
    {
        if (store(std::move(value))) {
            RefreshPages(m_pages);
        }
    }
    /// For the web site's own handlers, which render their pages themselves: only stores.
    void Ex(Value value) { store(std::move(value)); }

private:
    bool store(Value value)
    {
        if (value == m_value) {
            return false;
        }
        m_value = std::move(value);
        NoteChangedSetting();
        return true;
    }

    const char *m_pages;
    Value m_value;
};
