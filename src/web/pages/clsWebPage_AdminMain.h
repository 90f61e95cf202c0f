#pragma once

#include "web/pages/WholePage.h"

/// Where an administrator arrives: what the menu has to offer.
class clsWebPage_AdminMain final : public WholePage
{
private:
    QString build() const override;
};
