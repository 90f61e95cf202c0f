#pragma once

#include <QDeadlineTimer>
#include <QIcon>
#include <QSystemTrayIcon>

#include <functional>

/// The program's icon in the desktop's tray; nothing while the desktop has none.
class TrayIcon
{
public:
    /// `clicked` is called for a click on the icon or on a notification.
    explicit TrayIcon(const std::function<void()> &clicked);

    void showState(const QIcon &icon, const QString &toolTip);
    /// A desktop's tray may come after the program, or anew; Qt does not notice. To be called again
    /// and again: it asks every 5 s, or less often where an answer takes long, but every hour.
    void lookForTray();
    void notify(const QString &text);
    /// Takes it away; one of a process that just ends may stay in the tray.
    void remove() { m_icon.hide(); }

private:
    QSystemTrayIcon m_icon;
    QDeadlineTimer m_nextLook; ///< due at once
};
