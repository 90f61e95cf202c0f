#include "ui/TrayIcon.h"

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

void TrayIcon::lookForTray()
{
    m_icon.setVisible(QSystemTrayIcon::isSystemTrayAvailable());
}

void TrayIcon::notify(const QString &text)
{
    if (QSystemTrayIcon::isSystemTrayAvailable()) {
        m_icon.showMessage(u"Zebek Suite"_s, text, QSystemTrayIcon::Warning);
    }
}
