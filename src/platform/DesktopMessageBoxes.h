#pragma once

#include "platform/MessageBoxes.h"

#include <QPointer>
#include <QStringList>

#include <chrono>

class QMessageBox;

namespace platform {

/// The desktop's message boxes, one at a time: while one is open the next waits for its turn.
/// Titles and texts also go to the standard error, where a log of the system may keep them. A box
/// whose very text is open already is not shown a second time; it counts as dismissed, so that a
/// failure that repeats does not pile up boxes while nobody looks.
class DesktopMessageBoxes final : public MessageBoxes
{
public:
    /// `patience`: after which a box that may answers itself.
    explicit DesktopMessageBoxes(std::chrono::milliseconds patience = std::chrono::minutes(1))
        : m_patience(patience)
    {
    }
    int show(const QString &text, const QString &title, int style) override;

private:
    void waitForTurn() const;

    std::chrono::milliseconds m_patience;
    QStringList m_texts; ///< of the open box and those that wait
    QPointer<QMessageBox> m_open;
};

} // namespace platform
