#include "ui/TrayIcon.h"

#include <QElapsedTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

TrayIcon::TrayIcon(const std::function<void()> &clicked)
{
    QObject::connect(&m_icon, &QSystemTrayIcon::messageClicked, clicked);
    QObject::connect(&m_icon, &QSystemTrayIcon::activated,
                     [clicked](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::Trigger) {
                             clicked();
                         }
                     });
}

void TrayIcon::showState(const QIcon &icon, const QString &toolTip)
{
    m_icon.setIcon(icon);
    m_icon.setToolTip(toolTip);
}

/// Asking takes as long as the desktop's panel lets us wait: half a minute where it hangs, which is
/// no answer then.
void TrayIcon::lookForTray()
{
    constexpr qint64 LongAnswer = 1000;
    constexpr qint64 ShortestPause = 5000;
    constexpr qint64 LongestPause = 3'600'000;
    constexpr qint64 PausePerAnswer = 1000;
    if (!m_nextLook.hasExpired()) {
        return;
    }
    QElapsedTimer asking;
    asking.start();
    const bool available = QSystemTrayIcon::isSystemTrayAvailable();
    if (available || asking.elapsed() < LongAnswer) {
        m_icon.setVisible(available);
    }
    m_nextLook.setRemainingTime(
        std::clamp(PausePerAnswer * asking.elapsed(), ShortestPause, LongestPause));
}

void TrayIcon::notify(const QString &text)
{
    if (m_icon.isVisible()) {
        m_icon.showMessage(u"Zebek Suite"_s, text, QSystemTrayIcon::Warning);
    }
}
