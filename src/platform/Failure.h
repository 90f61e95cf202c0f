#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

namespace platform {

/// What an operation throws that could not do its work: a number and a text for the error log.
/// The number is the system's own error code where the system refused, else one of Failure::Code.
class Failure : public std::exception
{
public:
    /// Numbers of the failures that the system itself knows no code for.
    enum Code {
        InvalidCall = 5,
        Overflow = 6,
        TypeMismatch = 13,
        Unexpected = 51,
        FileNotFound = 53,
        PathAccess = 75,
        DuplicateKey = 457,
    };

    Failure(int number, const QString &description)
        : m_number(number), m_description(description), m_what(description.toUtf8())
    {
    }

    int number() const { return m_number; }
    const QString &description() const { return m_description; }
    const char *what() const noexcept override { return m_what.constData(); }

private:
    int m_number;
    QString m_description;
    QByteArray m_what;
};

} // namespace platform
