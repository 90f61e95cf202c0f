#pragma once

#include "web/pages/iWebPage.h"

/// A page that tells the outcome of an update: a head as old as its last refresh, the message, and
/// a closing text.
template <int Head, int Closing>
class UpdatePage final : public iWebPage
{
public:
    QByteArray HTML(const QString &message) override;
    void Refresh() override;

private:
    QByteArray m_head;
};

using clsWebPage_AdminReplaysUpdate = UpdatePage<3150, 3151>;
using clsWebPage_AdminServerControlU = UpdatePage<3250, 3251>;
using clsWebPage_AdminServerOptionsU = UpdatePage<3350, 3351>;
using clsWebPage_AdminSystemOptionsU = UpdatePage<3450, 3451>;
using clsWebPage_AdminStatusOptionsU = UpdatePage<3550, 3551>;
