#pragma once

#include <QByteArray>

/// Collects what arrives of one HTTP request, until it is whole by its own account: it has the
/// blank line that ends the headers, and then as many bytes as the header Content-Length says.
class IncomingRequest
{
public:
    /// A longer request is cut. A form with hundreds of replays has a quarter of this.
    static constexpr qsizetype Largest = qsizetype{256} * 1024;

    void append(const QByteArray &piece);
    bool isWhole() const { return m_data.size() >= m_size; }
    const QByteArray &data() const { return m_data; }

private:
    QByteArray m_data;
    qsizetype m_size = Largest; ///< as far as it is known
};
