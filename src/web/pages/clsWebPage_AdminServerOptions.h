#pragma once

#include "web/pages/iWebPage.h"

/// The game's own settings and its mods. What may be done with them depends on whether a server is
/// held at this moment. An options.xml that was changed is read again: a page with old values, once
/// it is posted, would put them back.
class clsWebPage_AdminServerOptions final : public iWebPage
{
public:
    QByteArray HTML(const QString &message) override;
    /// Reads the game's files. A setting that cannot be read shows as empty.
    void Refresh() override;

private:
    QByteArray m_page;
    QString m_stamp; ///< of the file that it shows
};
