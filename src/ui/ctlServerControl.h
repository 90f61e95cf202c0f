#pragma once

#include "ui/ctlPanel.h"

#include <memory>
#include <vector>

class CheckBoxSetting;
class NumberSetting;

namespace Ui {
class ctlServerControl;
}

/// The panel on the Server Control tab: how the game server is started, watched and restarted, its
/// live state, and buttons to start and stop it. Every edit is stored at once.
class ctlServerControl : public ctlPanel
{
    Q_DISABLE_COPY_MOVE(ctlServerControl)

public:
    ctlServerControl();
    ~ctlServerControl() override;

    void FillFields() override;
    void PushUpdate() override;

private:
    void tieCheckBoxes();
    void tieNumbers();

    std::unique_ptr<Ui::ctlServerControl> m_ui;
    std::vector<CheckBoxSetting *> m_checkBoxes;
    std::vector<NumberSetting *> m_numbers;
};
