#include "ui/ctlServerOptions.h"

#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsZebek.h"
#include "platform/Failure.h"
#include "platform/Machine.h"
#include "server/ctlGRServer.h"
#include "ui/GameNumberField.h"
#include "ui/ModDelegate.h"
#include "ui/SpentKey.h"
#include "ui/showText.h"
#include "ui_ctlServerOptions.h"

#include <QSignalBlocker>

#include <algorithm>
#include <optional>
#include <type_traits>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int KeyRole = Qt::UserRole;
constexpr QLatin1String SeparatorKey = "Separator"_L1;
constexpr int SeparatorLength = 36;

constexpr Module Here{"Server Options Panel", "Unknown"};

bool serverRuns()
{
    const ctlGRServer &server = gRoot->Server();
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
    auto *const row = new QListWidgetItem(mod.shownName(), &list);
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

/// What the rows show, in order. Null is the separator.
std::vector<const clsModInfo *> modsInOrder(const clsMods &mods)
{
    std::vector<const clsModInfo *> rows(mods.activeMods().begin(), mods.activeMods().end());
    rows.push_back(nullptr);
    for (const auto &mod : mods.Mods()) {
        if (!mod->Active) {
            rows.push_back(mod.get());
        }
    }
    return rows;
}

bool isRowOf(const QListWidgetItem &row, const clsModInfo *mod)
{
    return mod == nullptr ? keyOf(row) == SeparatorKey
                          : keyOf(row) == mod->ModName && row.text() == mod->shownName() &&
                                isChecked(row) == mod->Active;
}

/// A button that is switched off leaves the keyboard's focus to its heir, where it can be seen and
/// the same key does nothing.
void enableButton(QWidget &button, bool enabled, QWidget &heir)
{
    if (!enabled && button.window()->focusWidget() == &button) {
        heir.setFocus();
        new SpentKey(&heir);
    }
    button.setEnabled(enabled);
}

constexpr const char *FormLimit = "formLimit";

// How a control shows a setting, nothing where there is no such value, and what it holds.

/// A longer text that the game's file holds already is not cut, but none after it may be as long.
void showIn(QLineEdit &box, const std::optional<QString> &text)
{
    box.setMaxLength(
        qMax(box.property(FormLimit).toInt(), static_cast<int>(text.value_or(QString()).size())));
    showText(box, text.value_or(QString()));
}

QString valueIn(const QLineEdit &box)
{
    return box.text();
}

void showIn(QCheckBox &box, const std::optional<bool> &checked)
{
    box.setChecked(checked.value_or(false));
}

bool valueIn(const QCheckBox &box)
{
    return box.isChecked();
}

void showIn(GameNumberField &field, const std::optional<std::int32_t> &number)
{
    field.show(number);
}

std::int32_t valueIn(const GameNumberField &field)
{
    return field.number();
}

template <typename Value>
Value shownValue(const GameSetting<Value> &setting)
{
    setting.require();
    Value value = setting();
    if constexpr (std::is_same_v<Value, std::int32_t>) {
        if (!GameNumberField::holds(value)) {
            throw platform::Failure(
                platform::Failure::Overflow,
                u"%1: %2 is out of range"_s.arg(QLatin1String(setting.Name())).arg(value));
        }
    }
    return value;
}

/// Runs a step of filling the fields and returns why it failed, empty where it did not; each reason
/// is recorded once until all steps succeed.
template <typename Step>
QString failureOf(Step step)
{
    try {
        step();
        return {};
    } catch (...) {
        const platform::Failure failure = caughtFailure();
        recordNewFailure(Here("FillFields"), failure);
        return failure.description();
    }
}

QWidget &widgetOf(QWidget *control)
{
    return *control;
}

QWidget &widgetOf(GameNumberField *field)
{
    return field->box();
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
    for (auto &row : m_texts) {
        row.control->setProperty(FormLimit, row.control->maxLength());
        connect(row.control, &QLineEdit::textChanged, this, [&] { setEdited(row); });
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
    for (auto &row : m_checkBoxes) {
        connect(row.control, &QCheckBox::clicked, this, [&] { setEdited(row); });
    }
}

void ctlServerOptions::tieNumbers()
{
    const std::pair<QLineEdit *, GameSetting<std::int32_t> clsOptionsXML::*> boxes[] = {
        {m_ui->txtSynchTimeout, &clsOptionsXML::GameSynchTimeout},
        {m_ui->txtJoinPort, &clsOptionsXML::JoinPort},
        {m_ui->txtAnnouncePort, &clsOptionsXML::AnnouncePort},
    };
    m_numbers.reserve(std::size(boxes)); // its rows stay where they are
    for (const auto &[box, setting] : boxes) {
        m_numbers.push_back({nullptr, setting});
        auto &row = m_numbers.back();
        row.control = new GameNumberField(box, [&] { setEdited(row); });
    }
}

void ctlServerOptions::tieMods()
{
    QListWidget *const list = m_ui->lsvMods;
    list->setItemDelegate(new ModDelegate(list));
    connect(list, &QListWidget::itemChanged, this,
            [this](const QListWidgetItem *row) { setChecked(*row); });
    connect(list, &QListWidget::clicked, this, &ctlServerOptions::UpdateControls);
    connect(list, &QListWidget::itemSelectionChanged, this, &ctlServerOptions::UpdateControls);
    connect(m_ui->cmdIncrease, &QToolButton::clicked, this,
            [this] { moveSelected(&clsMods::DecreaseModPosition); });
    connect(m_ui->cmdDecrease, &QToolButton::clicked, this,
            [this] { moveSelected(&clsMods::IncreaseModPosition); });
}

void ctlServerOptions::fitFont()
{
    ctlPanel::fitFont();
    for (QToolButton *const arrow : {m_ui->cmdIncrease, m_ui->cmdDecrease}) {
        arrow->setIconSize(QSize(1, 1) * fontMetrics().height());
    }
}

QWidget *ctlServerOptions::footer() const
{
    return m_ui->footer;
}

template <typename Action>
void ctlServerOptions::forEachRow(Action action)
{
    std::ranges::for_each(m_texts, action);
    std::ranges::for_each(m_checkBoxes, action);
    std::ranges::for_each(m_numbers, action);
}

void ctlServerOptions::FillFields()
{
    showOptions();
    m_modEdits.clear();
    readMods();
    FillListView();
    UpdateControls();
}

void ctlServerOptions::showOptions()
{
    readOptions();
    if (!m_unreadable.isEmpty()) {
        return; // there is nothing to show, and edits had better stay on screen
    }
    bool allShown = true;
    forEachRow([&](auto &row) {
        std::optional<decltype((m_options.*row.setting)())> value;
        const QString fault = failureOf([&] { value = shownValue(m_options.*row.setting); });
        showIn(*row.control, value);
        row.edited = false;
        setFault(row, fault);
        allShown = allShown && fault.isEmpty();
    });
    if (allShown) {
        noteSuccess(Here("FillFields"));
    }
}

/// The fields are off while the file cannot be read.
void ctlServerOptions::readOptions()
{
    m_stamp = clsOptionsXML::stampOfFile();
    m_unreadable = failureOf([this] { m_options.loadOrFail(); });
    if (m_stamp.isEmpty() && !m_unreadable.isEmpty()) {
        m_unreadable = u"options.xml not found: start the game once"_s;
    }
    for (QWidget *const frame : {m_ui->fraServerOptions, m_ui->fraNetworkSettings}) {
        frame->setEnabled(m_unreadable.isEmpty());
    }
}

/// The control has a frame meanwhile.
template <typename AnyRow>
void ctlServerOptions::setFault(AnyRow &row, const QString &reason)
{
    row.fault = reason;
    widgetOf(row.control)
        .setStyleSheet(reason.isEmpty() ? QString()
                                        : u"QLineEdit, QCheckBox { border: 2px solid #d32f2f }"_s);
}

void ctlServerOptions::tellProblems()
{
    QStringList problems{m_unreadable};
    forEachRow([&](const auto &row) { problems += row.fault; });
    problems += m_mods.failure();
    problems.removeAll(QString());
    m_ui->lblProblem->tell(problems.join(u'\n'));
}

/// Of those that are missing in the file, or that their controls cannot show, the first.
void ctlServerOptions::focusFault()
{
    bool found = false;
    forEachRow([&](const auto &row) {
        if (!row.fault.isEmpty() && !std::exchange(found, true)) {
            widgetOf(row.control).setFocus();
        }
    });
}

void ctlServerOptions::readMods()
{
    m_mods.Load();
    for (const auto &[change, key] : m_modEdits) {
        (m_mods.*change)(key);
    }
    tellProblems();
}

void ctlServerOptions::loadMods()
{
    readMods();
    if (m_modEdits.empty() && !showsMods()) {
        const QListWidgetItem *const row = m_ui->lsvMods->currentItem();
        showMods(row != nullptr ? keyOf(*row) : QString());
    }
}

bool ctlServerOptions::showsMods() const
{
    const QListWidget &list = *m_ui->lsvMods;
    int row = 0;
    const auto mods = modsInOrder(m_mods);
    return list.count() == static_cast<int>(mods.size()) &&
           std::ranges::all_of(
               mods, [&](const clsModInfo *mod) { return isRowOf(*list.item(row++), mod); });
}

void ctlServerOptions::FillListView()
{
    trap(Here("FillListView"), [this] {
        QListWidget &list = *m_ui->lsvMods;
        const QSignalBlocker filling(list);
        list.clear();
        for (const clsModInfo *const mod : modsInOrder(m_mods)) {
            if (mod != nullptr) {
                addMod(list, *mod);
            } else {
                addSeparator(list);
            }
        }
        list.setCurrentRow(0);
    });
}

template <typename AnyRow>
void ctlServerOptions::setEdited(AnyRow &row)
{
    row.edited = true;
    setFault(row, {});
    tellProblems();
    UpdateControls();
}

bool ctlServerOptions::optionsEdited() const
{
    const auto anyIn = [](const auto &rows) {
        return std::ranges::any_of(rows, [](const auto &row) { return row.edited; });
    };
    return anyIn(m_texts) || anyIn(m_checkBoxes) || anyIn(m_numbers);
}

bool ctlServerOptions::Dirty() const
{
    return optionsEdited() || !m_modEdits.empty();
}

void ctlServerOptions::UpdateControls()
{
    trap(Here("UpdateControls"), [this] {
        enableButton(*m_ui->cmdSave, Dirty(), *m_ui->txtName);
        enableButton(*m_ui->cmdCancel, Dirty(), *m_ui->txtName);
        updateMoveButtons();
    });
}

void ctlServerOptions::updateMoveButtons()
{
    const QListWidgetItem *const row = selectedActiveRow();
    const auto possible = [row](const clsModInfo *end) {
        return row != nullptr && end != nullptr && keyOf(*row) != end->ModName;
    };
    enableButton(*m_ui->cmdIncrease, possible(m_mods.FirstActiveMod()), *m_ui->lsvMods);
    enableButton(*m_ui->cmdDecrease, possible(m_mods.LastActiveMod()), *m_ui->lsvMods);
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
    editMod({isChecked(row) ? &clsMods::ActivateMod : &clsMods::DeactivateMod, key});
}

void ctlServerOptions::moveSelected(void (clsMods::*move)(const QString &))
{
    if (const QListWidgetItem *const row = selectedActiveRow()) {
        editMod({move, keyOf(*row)});
    }
}

void ctlServerOptions::editMod(const ModEdit &edit)
{
    (m_mods.*edit.change)(edit.key);
    m_modEdits.push_back(edit);
    showMods(edit.key);
}

void ctlServerOptions::showMods(const QString &selected)
{
    FillListView();
    if (QListWidgetItem *const row = rowOf(*m_ui->lsvMods, selected)) {
        m_ui->lsvMods->setCurrentItem(row);
    }
    UpdateControls();
}

void ctlServerOptions::cmdSave_Click()
{
    platform::MessageBoxes &boxes = gRoot->Machine().messageBoxes;
    if (serverRuns()) {
        boxes.show(u"You will need to stop the server to save your changes."_s, u"Please note"_s,
                   platform::OkOnly + platform::InformationIcon);
        return;
    }
    QString reason;
    const auto save = [&] {
        saveOptions();
        const bool saved = saveMods();
        reason = m_mods.failure();
        return saved;
    };
    const bool saved = trap(Here("cmdSave_Click"), withReason(reason, save));
    if (saved) {
        FillFields();
    }
    tellProblems();
    focusFault();
    gRoot->RefreshPages(PageKey::AdminServerOptions);
    if (!saved) {
        boxes.show(u"Your changes could not be saved. They are still here.\r\n\r\n"_s + reason,
                   u"Server Options Not Saved"_s, platform::OkOnly + platform::StopIcon);
    }
}

/// The file may have changed since it was shown: what was not edited keeps the new values.
void ctlServerOptions::saveOptions()
{
    if (!optionsEdited()) {
        return;
    }
    m_options.loadOrFail();
    forEachRow([this](auto &row) {
        if (row.edited) {
            try {
                (m_options.*row.setting).require();
            } catch (const platform::Failure &failure) {
                setFault(row, failure.description());
                throw;
            }
            (m_options.*row.setting).Let(valueIn(*row.control));
        }
    });
    m_options.Save();
    forEachRow([](auto &row) { row.edited = false; });
}

bool ctlServerOptions::saveMods()
{
    if (m_modEdits.empty()) {
        return true;
    }
    readMods();
    if (!m_mods.Save()) {
        return false;
    }
    m_modEdits.clear();
    return true;
}

void ctlServerOptions::PushUpdate()
{
    m_ui->lblSaveWarning->setVisible(serverRuns());
    if (m_unreadable.isEmpty() || m_stamp == clsOptionsXML::stampOfFile()) {
        return;
    }
    // The game has made it meanwhile, or has written it to its end.
    if (Dirty()) {
        readOptions();
        tellProblems();
    } else {
        FillFields();
    }
}
