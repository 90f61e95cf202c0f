#pragma once

#include "web/pages/WholePage.h"

/// The tool's own settings: what it does at its start, the web server and the log-in.
class clsWebPage_AdminSystemOptions final : public WholePage
{
private:
    QString build() const override;
};
