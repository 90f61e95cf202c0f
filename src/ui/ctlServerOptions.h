#pragma once

#include "server/clsMods.h"
#include "server/clsOptionsXML.h"
#include "ui/ctlPanel.h"

#include <memory>
#include <vector>

class CheckBoxLabel;
class QCheckBox;
class QLineEdit;
class QListWidgetItem;

namespace Ui {
class ctlServerOptions;
}

/// The panel on the Server Options tab: the game's own settings and its active mods. Edits are
/// collected until Save writes them together or Cancel reads the files again. The game rewrites its
/// files while it runs, so that nothing is saved meanwhile.
class ctlServerOptions : public ctlPanel
{
    Q_DISABLE_COPY_MOVE(ctlServerOptions)

public:
    ctlServerOptions();
    ~ctlServerOptions() override;

    void FillFields() override;
    /// Shows the mods anew: the active ones in order, a separator, the others. Selects the first.
    void FillListView();
    /// Shows whether the game server stands in the way of saving.
    void PushUpdate() override;

    bool Dirty() const override { return m_dirty; }
    /// The mods as they are shown.
    const clsMods *ModsList() const override { return &m_mods; }

private:
    /// Where a setting of the game is shown.
    template <typename Control, typename Value>
    struct Row
    {
        Control *control;
        GameSetting<Value> clsOptionsXML::*setting;
    };

    void tieTexts();
    void tieCheckBoxes();
    void tieNumbers();
    void tieMods();

    void edited();
    void UpdateControls();
    void updateMoveButtons();
    void setChecked(const QListWidgetItem &row);
    void moveSelected(void (clsMods::*move)(const QString &));
    void showEditedMods(const QString &key);
    /// The selected row of an active mod, or null.
    const QListWidgetItem *selectedActiveRow() const;

    void cmdSave_Click();
    void showOptions();
    void saveOptions();
    void saveMods();

    std::unique_ptr<Ui::ctlServerOptions> m_ui;
    std::vector<Row<QLineEdit, QString>> m_texts;
    std::vector<Row<QCheckBox, bool>> m_checkBoxes;
    std::vector<Row<QLineEdit, std::int32_t>> m_numbers;
    clsOptionsXML m_options;
    clsMods m_mods;
    bool m_dirty = false;
    bool m_filled = false; ///< whether the controls have ever shown what is in the file
};
