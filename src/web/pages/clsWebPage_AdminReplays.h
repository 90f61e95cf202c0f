#pragma once

#include "web/pages/WholePage.h"

/// The settings of the replay archive, and the archived replays to download and to delete.
class clsWebPage_AdminReplays final : public WholePage
{
private:
    QString build() const override;
};
