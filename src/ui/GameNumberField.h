#pragma once

#include <QObject>
#include <QString>

#include <cstdint>
#include <functional>
#include <optional>

class QLineEdit;

/// Lets a text box hold only a number that a game setting can have: any other text, an empty one
/// too, is silently replaced by the last one that was accepted. Tells of every accepted change.
class GameNumberField : public QObject
{
public:
    GameNumberField(QLineEdit *box, std::function<void()> edited);

    QLineEdit &box() const { return *m_box; }
    static bool holds(std::int32_t number);
    /// Shows a number that the box holds, or nothing. This is no edit.
    void show(std::optional<std::int32_t> number);
    std::int32_t number() const;

private:
    void textChanged(const QString &text);
    void putBack(const QString &refused);

    QLineEdit *m_box;
    std::function<void()> m_edited;
    QString m_accepted;
};
