#pragma once

#include <utility>

/// One setting of the tool: reading it is calling it.
template <typename Value>
class Setting
{
public:
    explicit Setting(Value initial = {}) : m_value(std::move(initial)) {}

    const Value &operator()() const { return m_value; }
    void Let(Value value) { Ex(std::move(value)); }
    /// For the web site's own handlers, which render their pages themselves: stores and nothing
    /// else.
    void Ex(Value value) { m_value = std::move(value); }

private:
    Value m_value;
};
