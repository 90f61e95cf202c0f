#pragma once

#include <QObject>

#include <functional>

/// How a control reads what it shows, and where it stores an edit.
template <typename Type>
struct SettingValue
{
    std::function<Type()> read;
    std::function<void(Type)> write;
};

/// Ties a control to a setting, in which every edit is stored at once.
class SettingControl : public QObject
{
public:
    using QObject::QObject;

    /// Shows the stored value.
    virtual void fill() = 0;
};
