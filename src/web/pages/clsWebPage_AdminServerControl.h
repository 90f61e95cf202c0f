#pragma once

#include "web/pages/iWebPage.h"

/// The supervision's settings, the server's state at this moment, and the buttons that start and
/// stop the server.
class clsWebPage_AdminServerControl final : public iWebPage
{
public:
    QByteArray HTML(const QString &message) override;
    void Refresh() override;

private:
    QByteArray m_body;
};
