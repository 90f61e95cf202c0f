#pragma once

#include "platform/MessageBoxes.h"

#include <QStringList>

namespace platform {

/// The desktop's message boxes. A box whose very text is open already is not shown a second time;
/// it counts as dismissed, so that a failure that repeats does not pile up boxes while nobody
/// looks.
class DesktopMessageBoxes final : public MessageBoxes
{
public:
    int show(const QString &text, const QString &title, int style) override;

private:
    QStringList m_open;
};

} // namespace platform
