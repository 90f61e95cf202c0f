#pragma once

#include "web/pages/WholePage.h"

/// The game's mods, in a window of their own: activates, deactivates and orders them.
class clsWebPage_AdminModList final : public WholePage
{
private:
    QString build() const override;
};
