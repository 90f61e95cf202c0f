#pragma once

#include "ui/SettingsPanel.h"

#include <functional>
#include <memory>

namespace Ui {
class ctlServerControl;
}

/// The panel on the Server Control tab: how the game server is started, watched and restarted, its
/// live state, and buttons to start and stop it. Every edit is stored at once.
class ctlServerControl : public SettingsPanel
{
    Q_DISABLE_COPY_MOVE(ctlServerControl)

public:
    ctlServerControl();
    ~ctlServerControl() override;

    void PushUpdate() override;

private:
    void addCheckBoxes();
    void addNumbers();
    void obey(const std::function<void()> &order);

    std::unique_ptr<Ui::ctlServerControl> m_ui;
    bool m_isObeying = false;
};
