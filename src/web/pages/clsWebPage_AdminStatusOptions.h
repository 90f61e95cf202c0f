#pragma once

#include "web/pages/WholePage.h"

/// The addresses of the two images that tell the game server's state.
class clsWebPage_AdminStatusOptions final : public WholePage
{
private:
    QString build() const override;
};
