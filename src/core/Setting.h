#pragma once

#include <utility>

/// What a setting of any type does when it changes.
class SettingBase
{
protected:
    /// Lets the settings be saved soon, if they are loaded already.
    static void noteStored();
    /// Lets the settings' observer know of it.
    void noteLet() const;
};

/// One setting of the tool: reading it is calling it.
template <typename Value>
class Setting : public SettingBase
{
public:
    explicit Setting(Value initial = {}) : m_value(std::move(initial)) {}

    const Value &operator()() const { return m_value; }
    /// Stores the value and tells the settings' observer. The value that it has already changes
    /// nothing.
    void Let(Value value)
    {
        if (store(std::move(value))) {
            noteLet();
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
        noteStored();
        return true;
    }

    Value m_value;
};
