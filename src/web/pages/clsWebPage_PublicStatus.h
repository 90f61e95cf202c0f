#pragma once

#include "web/pages/iWebPage.h"

/// What anybody may see: the game server's name, its match and its players. However many ask, the
/// page is built at most once for every time that it is marked stale.
class clsWebPage_PublicStatus final : public iWebPage
{
public:
    QByteArray HTML(const QString &message) override;
    void Refresh() override;
    void setStale(bool stale) override { m_stale = stale; }

private:
    QByteArray m_text;
    bool m_stale = true;
};
