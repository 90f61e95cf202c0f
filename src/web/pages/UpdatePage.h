#pragma once

#include "platform/CodePage.h"
#include "web/pages/PageText.h"
#include "web/pages/iWebPage.h"

/// A page that tells the outcome of an update: a head as old as its last refresh, the message, and
/// a closing text.
template <int Head>
class UpdatePage final : public iWebPage
{
public:
    QByteArray HTML(const QString &message) override
    {
        return m_head +
               platform::toCodePage(message + page::text(QStringLiteral("update-closing.html")));
    }
    void Refresh() override
    {
        m_head = platform::toCodePage(page::adminFrame() + page::text(Head));
    }

private:
    QByteArray m_head;
};

using clsWebPage_AdminReplaysUpdate = UpdatePage<3150>;
using clsWebPage_AdminServerControlU = UpdatePage<3250>;
using clsWebPage_AdminServerOptionsU = UpdatePage<3350>;
using clsWebPage_AdminSystemOptionsU = UpdatePage<3450>;
using clsWebPage_AdminStatusOptionsU = UpdatePage<3550>;
