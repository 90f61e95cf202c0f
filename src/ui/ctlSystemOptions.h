#pragma once

#include "ui/SettingsPanel.h"

#include <memory>

namespace Ui {
class ctlSystemOptions;
}

/// The panel on the System tab: how the tool starts, and its web server with a button to start and
/// stop it. Every edit is stored at once. The address is that under which this machine is reached,
/// so that loading the panel stores it.
class ctlSystemOptions : public SettingsPanel
{
    Q_DISABLE_COPY_MOVE(ctlSystemOptions)

public:
    ctlSystemOptions();
    ~ctlSystemOptions() override;

    void FillFields() override;
    void PushUpdate() override;

private:
    void addCheckBoxes();
    void addFields();
    void showAutostartPlace();
    void cmdWebServer_Click();

    std::unique_ptr<Ui::ctlSystemOptions> m_ui;
};
