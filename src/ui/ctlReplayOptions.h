#pragma once

#include "ui/SettingsPanel.h"

#include <memory>

namespace Ui {
class ctlReplayOptions;
}

/// The panel on the Replay Options tab: which replays are archived and how many, and a link to
/// their folder. Every edit is stored at once.
class ctlReplayOptions : public SettingsPanel
{
    Q_DISABLE_COPY_MOVE(ctlReplayOptions)

public:
    ctlReplayOptions();
    ~ctlReplayOptions() override;

    void FillFields() override;

private:
    void addReplayCount();

    std::unique_ptr<Ui::ctlReplayOptions> m_ui;
};
