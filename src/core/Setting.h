#pragma once

#include <utility>

/// One setting of the tool: reading it is calling it.
template <typename Value>
class Setting
{
public:
    explicit Setting(Value initial = {}) : m_value(std::move(initial)) {}

    const Value &operator()() const { return m_value; }
    void Let(Value value) { m_value = std::move(value); }

private:
    Value m_value;
};
