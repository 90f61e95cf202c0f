#include "ui/ctlReplayOptions.h"

#include "ui/CheckBoxSetting.h"
#include "ui/ScrolledNumberSetting.h"
#include "ui/bound.h"
#include "ui/messages.h"
#include "ui_ctlReplayOptions.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

void openReplays()
{
    openOrTell(u"folder"_s, QFileInfo(gRoot->Options()->ReplayFolder()).absoluteFilePath(),
               u"Replay Folder"_s);
}

} // namespace

ctlReplayOptions::ctlReplayOptions() : m_ui(std::make_unique<Ui::ctlReplayOptions>())
{
    m_ui->setupUi(this);
    connect(m_ui->lblReplayDirectory, &Link::clicked, this, openReplays);
    add(new CheckBoxSetting(m_ui->chkRecordReplays, m_ui->lblRecordReplays,
                            bound(&clsOptions::RecordReplays)));
    add(new CheckBoxSetting(m_ui->chkSkipBlankReplays, m_ui->lblSkipBlankReplays,
                            bound(&clsOptions::SkipBlankReplays)));
    addReplayCount();
}

ctlReplayOptions::~ctlReplayOptions() = default;

void ctlReplayOptions::addReplayCount()
{
    auto *const count = new ScrolledNumberSetting(
        m_ui->txtReplayCount, m_ui->vscrReplayCount, m_ui->lblReplayCount,
        u"Please enter a value between 0 and 32767)"_s, // without its opening twin
        bound(&clsOptions::ReplayCount));
    add(count);
    // Leading zeros do not stay.
    connect(m_ui->txtReplayCount, &QLineEdit::textChanged, count, [count] { count->fill(); });
}

void ctlReplayOptions::FillFields()
{
    SettingsPanel::FillFields();
    m_ui->lblReplayDirectory->setText(gRoot->Options()->ReplayFolder());
}
