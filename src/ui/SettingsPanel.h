#pragma once

#include "ui/SettingControl.h"
#include "ui/ctlPanel.h"

#include <vector>

/// A panel whose controls each store their setting at once.
class SettingsPanel : public ctlPanel
{
public:
    void FillFields() override
    {
        for (SettingControl *const control : m_controls) {
            control->fill();
        }
    }

protected:
    void add(SettingControl *control) { m_controls.push_back(control); }

private:
    std::vector<SettingControl *> m_controls;
};
