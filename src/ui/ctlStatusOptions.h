#pragma once

#include "ui/SettingsPanel.h"

#include <memory>

namespace Ui {
class ctlStatusOptions;
}

/// The panel on the Status Reporting tab: the addresses of the two images that show the game
/// server's state. Every edit is stored at once.
class ctlStatusOptions : public SettingsPanel
{
    Q_DISABLE_COPY_MOVE(ctlStatusOptions)

public:
    ctlStatusOptions();
    ~ctlStatusOptions() override;

private:
    std::unique_ptr<Ui::ctlStatusOptions> m_ui;
};
