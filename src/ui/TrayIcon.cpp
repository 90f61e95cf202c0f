#include "ui/TrayIcon.h"

using namespace Qt::StringLiterals;

TrayIcon::TrayIcon(const std::function<void()> &clicked)
{
    if (!QSystemTrayIcon::isSystemTrayAvailable()) {
        return;
    }
    m_icon = std::make_unique<QSystemTrayIcon>();
    QObject::connect(m_icon.get(), &QSystemTrayIcon::messageClicked, clicked);
    QObject::connect(m_icon.get(), &QSystemTrayIcon::activated,
                     [clicked](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::Trigger) {
                             clicked();
                         }
                     });
}

void TrayIcon::showState(const QIcon &icon, const QString &toolTip)
{
    if (m_icon) {
        m_icon->setIcon(icon);
        m_icon->setToolTip(toolTip);
        m_icon->show();
    }
}

void TrayIcon::notify(const QString &text)
{
    if (m_icon) {
        m_icon->showMessage(u"Zebek Suite"_s, text, QSystemTrayIcon::Warning);
    }
}
