#include "ui/ctlServerOptions.h"

#include "core/basMain.h"
#include "core/basNumbers.h"
#include "core/basTraps.h"
#include "core/clsZebek.h"
#include "core/frmGlobal.h"
#include "platform/Failure.h"
#include "platform/Machine.h"
#include "server/ctlGRServer.h"
#include "ui/GameNumberField.h"
#include "ui_ctlServerOptions.h"

#include <QSignalBlocker>

namespace {

constexpr int KeyRole = Qt::UserRole;
const QLatin1String SeparatorKey("Separator");
constexpr int SeparatorLength = 36;

constexpr Routine routine(const char *name)
{
    return {"Server Options Panel", name, "Unknown"};
}

bool serverRuns()
{
    const ctlGRServer &server = *gRoot->GlobalForm()->uctlGRServer;
    return server.Connected() && server.Process()->StillActive();
}

QString keyOf(const QListWidgetItem &row)
{
    return row.data(KeyRole).toString();
}

bool isChecked(const QListWidgetItem &row)
{
    return row.checkState() == Qt::Checked;
}

QListWidgetItem *rowOf(const QListWidget &list, const QString &key)
{
    for (int row = 0; row < list.count(); ++row) {
        if (keyOf(*list.item(row)) == key) {
            return list.item(row);
        }
    }
    return nullptr;
}

void addMod(QListWidget &list, const clsModInfo &mod)
{
    auto *const row = new QListWidgetItem(mod.Name(), &list);
    row->setData(KeyRole, mod.ModName);
    row->setCheckState(mod.Active ? Qt::Checked : Qt::Unchecked);
}

/// It has no check box that could be clicked.
void addSeparator(QListWidget &list)
{
    auto *const row = new QListWidgetItem(QString(SeparatorLength, u'-'), &list);
    row->setData(KeyRole, SeparatorKey);
    row->setForeground(QColor(128, 128, 128));
    row->setFlags(row->flags() & ~Qt::ItemIsUserCheckable);
}

/// Lets the selected row be grey while the keyboard's focus is elsewhere; little else shows it.
void showFocus(QListWidget &list)
{
    QPalette palette;
    palette.setColor(QPalette::Inactive, QPalette::Highlight,
                     list.palette().color(QPalette::Midlight));
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText,
                     list.palette().color(QPalette::Text));
    list.setPalette(palette);
}

/// A button that is switched off leaves the keyboard's focus to its heir, where it can be seen and
/// the same key does no harm.
void enableButton(QWidget &button, bool enabled, QWidget &heir, bool heirEnabled)
{
    if (!enabled && heirEnabled && button.window()->focusWidget() == &button) {
        heir.setEnabled(true);
        heir.setFocus();
    }
    button.setEnabled(enabled);
}

constexpr const char *FormLimit = "formLimit";

/// A longer text that the game's file holds already is not cut, but none after it may be as long.
void setText(QLineEdit &box, const QString &text)
{
    box.setMaxLength(qMax(box.property(FormLimit).toInt(), static_cast<int>(text.size())));
    box.setText(text);
}

} // namespace

ctlServerOptions::ctlServerOptions() : m_ui(std::make_unique<Ui::ctlServerOptions>())
{
    m_ui->setupUi(this);
    tieTexts();
    tieCheckBoxes();
    tieNumbers();
    tieMods();
    connect(m_ui->cmdSave, &QPushButton::clicked, this, [this] { cmdSave_Click(); });
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, [this] { FillFields(); });
    m_ui->lblSaveWarning->hide();
    UpdateControls();
}

ctlServerOptions::~ctlServerOptions() = default;

void ctlServerOptions::tieTexts()
{
    m_texts = {
        {m_ui->txtName, &clsOptionsXML::MPGameName},
        {m_ui->txtMOTD, &clsOptionsXML::MOTD},
        {m_ui->txtPassword, &clsOptionsXML::RemoteServerPasswd},
    };
    for (const auto &row : m_texts) {
        row.control->setProperty(FormLimit, row.control->maxLength());
        connect(row.control, &QLineEdit::textChanged, this, &ctlServerOptions::edited);
    }
}

void ctlServerOptions::tieCheckBoxes()
{
    m_checkBoxes = {
        {m_ui->chkAllowRemoteAccess, &clsOptionsXML::RemoteServerAccess},
        {m_ui->chkRecordGame, &clsOptionsXML::RecordGame},
        {m_ui->chkFirewall, &clsOptionsXML::BehindFirewall},
    };
    m_ui->lblAllowRemoteAccess->setCheckBox(m_ui->chkAllowRemoteAccess);
    m_ui->lblRecordGame->setCheckBox(m_ui->chkRecordGame);
    m_ui->lblFirewall->setCheckBox(m_ui->chkFirewall);
    for (const auto &row : m_checkBoxes) {
        connect(row.control, &QCheckBox::clicked, this, &ctlServerOptions::edited);
    }
}

void ctlServerOptions::tieNumbers()
{
    m_numbers = {
        {m_ui->txtSynchTimeout, &clsOptionsXML::GameSynchTimeout},
        {m_ui->txtJoinPort, &clsOptionsXML::JoinPort},
        {m_ui->txtAnnouncePort, &clsOptionsXML::AnnouncePort},
    };
    for (const auto &row : m_numbers) {
        new GameNumberField(row.control, [this] { edited(); });
    }
}

void ctlServerOptions::tieMods()
{
    QListWidget *const list = m_ui->lsvMods;
    showFocus(*list);
    connect(list, &QListWidget::itemChanged, this,
            [this](const QListWidgetItem *row) { setChecked(*row); });
    connect(list, &QListWidget::clicked, this, &ctlServerOptions::UpdateControls);
    connect(list, &QListWidget::itemSelectionChanged, this, &ctlServerOptions::UpdateControls);
    connect(m_ui->cmdIncrease, &QToolButton::clicked, this,
            [this] { moveSelected(&clsMods::DecreaseModPosition); });
    connect(m_ui->cmdDecrease, &QToolButton::clicked, this,
            [this] { moveSelected(&clsMods::IncreaseModPosition); });
}

void ctlServerOptions::FillFields()
{
    TrapRepeated(routine("FillFields"), [this] {
        // Without the file there is nothing to show, and edits had better stay on screen.
        m_options.LoadOrFail();
        showOptions();
        m_filled = true;
        m_mods.Load();
        FillListView();
        m_dirty = false;
        UpdateControls();
    });
}

void ctlServerOptions::showOptions()
{
    for (const auto &row : m_texts) {
        setText(*row.control, (m_options.*row.setting)());
    }
    for (const auto &row : m_checkBoxes) {
        row.control->setChecked((m_options.*row.setting)());
    }
    for (const auto &row : m_numbers) {
        const auto &setting = m_options.*row.setting;
        const QString number = QString::number(setting());
        row.control->setText(number);
        if (row.control->text() != number) { // the box keeps to the numbers that may be typed
            Trap(routine("FillFields"), [&] {
                throw platform::Failure(platform::Failure::Overflow,
                                        QStringLiteral("%1: %2 is out of range")
                                            .arg(QLatin1String(setting.Name()), number));
            });
        }
    }
}

void ctlServerOptions::FillListView()
{
    Trap(routine("FillListView"), [this] {
        QListWidget &list = *m_ui->lsvMods;
        const QSignalBlocker filling(list);
        list.clear();
        for (const clsModInfo *mod = m_mods.FirstActiveMod(); mod != nullptr;
             mod = mod->NextActiveMod) {
            addMod(list, *mod);
        }
        addSeparator(list);
        for (const auto &mod : m_mods.Mods()) {
            if (!mod->Active) {
                addMod(list, *mod);
            }
        }
        list.setCurrentRow(0);
    });
}

void ctlServerOptions::edited()
{
    m_dirty = true;
    UpdateControls();
}

void ctlServerOptions::UpdateControls()
{
    Trap(routine("UpdateControls"), [this] {
        enableButton(*m_ui->cmdSave, m_dirty, *m_ui->txtName, true);
        enableButton(*m_ui->cmdCancel, m_dirty, *m_ui->txtName, true);
        updateMoveButtons();
    });
}

void ctlServerOptions::updateMoveButtons()
{
    const QListWidgetItem *const row = selectedActiveRow();
    const auto possible = [row](const clsModInfo *end) {
        return row != nullptr && end != nullptr && keyOf(*row) != end->ModName;
    };
    const bool up = possible(m_mods.FirstActiveMod());
    const bool down = possible(m_mods.LastActiveMod());
    enableButton(*m_ui->cmdIncrease, up, *m_ui->cmdDecrease, down);
    enableButton(*m_ui->cmdDecrease, down, *m_ui->cmdIncrease, up);
}

const QListWidgetItem *ctlServerOptions::selectedActiveRow() const
{
    const QList<QListWidgetItem *> rows = m_ui->lsvMods->selectedItems();
    return !rows.isEmpty() && isChecked(*rows.first()) ? rows.first() : nullptr;
}

void ctlServerOptions::setChecked(const QListWidgetItem &row)
{
    const QString key = keyOf(row);
    if (key == SeparatorKey) {
        const QSignalBlocker undoing(m_ui->lsvMods);
        rowOf(*m_ui->lsvMods, key)->setData(Qt::CheckStateRole, {});
        return;
    }
    if (isChecked(row)) {
        m_mods.ActivateMod(key);
    } else {
        m_mods.DeactivateMod(key);
    }
    showEditedMods(key);
}

void ctlServerOptions::moveSelected(void (clsMods::*move)(const QString &))
{
    if (const QListWidgetItem *const row = selectedActiveRow()) {
        const QString key = keyOf(*row);
        (m_mods.*move)(key);
        showEditedMods(key);
    }
}

void ctlServerOptions::showEditedMods(const QString &key)
{
    m_dirty = true;
    FillListView();
    m_ui->lsvMods->setCurrentItem(rowOf(*m_ui->lsvMods, key));
    UpdateControls();
}

void ctlServerOptions::cmdSave_Click()
{
    if (serverRuns()) {
        gRoot->Machine().messageBoxes.show(
            QStringLiteral("You will need to stop the server to save your changes."),
            QStringLiteral("Please note"), platform::OkOnly + platform::InformationIcon);
        return;
    }
    Trap(routine("cmdSave_Click"), [this] {
        saveOptions();
        saveMods();
        FillFields();
    });
    gRoot->RefreshPages(QStringLiteral("AdminServerOptions"));
}

/// The file may have changed since it was shown: what is not shown here keeps the new values.
void ctlServerOptions::saveOptions()
{
    m_options.LoadOrFail();
    if (!m_filled) { // the empty controls would empty the file's settings
        throw clsOptionsXML::Unreadable();
    }
    for (const auto &row : m_texts) {
        (m_options.*row.setting).Let(row.control->text());
    }
    for (const auto &row : m_checkBoxes) {
        (m_options.*row.setting).Let(row.control->isChecked());
    }
    for (const auto &row : m_numbers) {
        (m_options.*row.setting).Let(fnToInteger(row.control->text()));
    }
    m_options.Save();
}

void ctlServerOptions::saveMods()
{
    for (const auto &mod : m_mods.Mods()) {
        if (const QListWidgetItem *const row = rowOf(*m_ui->lsvMods, mod->ModName)) {
            mod->Active = isChecked(*row);
        }
    }
    m_mods.Save();
}

void ctlServerOptions::PushUpdate()
{
    m_ui->lblSaveWarning->setVisible(serverRuns());
}
