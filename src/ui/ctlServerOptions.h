#pragma once

#include "server/clsMods.h"
#include "server/clsOptionsXML.h"
#include "ui/ctlPanel.h"

#include <memory>
#include <vector>

class GameNumberField;
class QCheckBox;
class QLineEdit;
class QListWidgetItem;

namespace Ui {
class ctlServerOptions;
}

/// The panel on the Server Options tab: the game's own settings and its active mods. Edits are
/// collected until Save writes them together or Cancel reads the files again. The game rewrites its
/// files while it runs, so that nothing is saved meanwhile.
///
/// Save reads the files again and changes in them what was edited, nothing else: a file of which
/// nothing was edited is not written. Edits that could not be saved stay, and a message box says
/// so. A setting that is missing or that its control cannot show is an empty or off control and a
/// record, once, that names the element; the control has a frame until it is edited, and the panel
/// says why. Save gives the first of them the focus. Without the file the fields are off.
///
/// The mods are the file's list with the unsaved edits on top. Edits are kept as what was done, and
/// done anew whenever others have changed the file, so that neither hand undoes the other's work.
/// The rows follow such a change at once where there are no unsaved edits, else at the next one.
class ctlServerOptions final : public ctlPanel
{
    Q_DISABLE_COPY_MOVE(ctlServerOptions)

public:
    ctlServerOptions();
    ~ctlServerOptions() override;

    /// Shows what is in the files. Where that cannot be read, the controls stay as they are.
    void FillFields() override;
    void loadMods() override;
    /// Shows the mods anew: the active ones in order, a separator, the others. Selects the first.
    void FillListView();
    /// Shows whether the game server stands in the way of saving, and the file once it is there.
    void PushUpdate() override;

    bool Dirty() const override;
    void fitFont() override;
    QWidget *footer() const override;
    /// The mods, as the panel's edits have made them.
    const clsMods *ModsList() const override { return &m_mods; }

private:
    /// Where a setting of the game is shown.
    template <typename Control, typename Value>
    struct Row
    {
        Control *control;
        GameSetting<Value> clsOptionsXML::*setting;
        bool edited = false;
        QString fault = {}; ///< why the control cannot show or store it
    };
    /// Something that was done to a mod.
    struct ModEdit
    {
        void (clsMods::*change)(const QString &);
        QString key;
    };

    void tieTexts();
    void tieCheckBoxes();
    void tieNumbers();
    void tieMods();

    template <typename Action>
    void forEachRow(Action action);
    template <typename AnyRow>
    void setEdited(AnyRow &row);
    void UpdateControls();
    void updateMoveButtons();
    void setChecked(const QListWidgetItem &row);
    void moveSelected(void (clsMods::*move)(const QString &));
    void editMod(const ModEdit &edit);
    void showMods(const QString &selected);
    bool showsMods() const;
    void readMods();
    /// The selected row of an active mod, or null.
    const QListWidgetItem *selectedActiveRow() const;

    void showOptions();
    void readOptions();
    template <typename AnyRow>
    void setFault(AnyRow &row, const QString &reason);
    void tellProblems();
    void focusFault();
    bool optionsEdited() const;
    void cmdSave_Click();
    void saveOptions();
    bool saveMods();

    std::unique_ptr<Ui::ctlServerOptions> m_ui;
    std::vector<Row<QLineEdit, QString>> m_texts;
    std::vector<Row<QCheckBox, bool>> m_checkBoxes;
    std::vector<Row<GameNumberField, std::int32_t>> m_numbers;
    clsOptionsXML m_options;
    clsMods m_mods;
    std::vector<ModEdit> m_modEdits;
    QString m_stamp;      ///< of the file of the game's settings, as it was read last
    QString m_unreadable; ///< why that file cannot be read
};
