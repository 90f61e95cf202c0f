#include "ui/StatusFooter.h"

#include "core/basMain.h"
#include "core/clsErrors.h"
#include "core/clsZebek.h"
#include "ui/Link.h"
#include "ui/ProblemLabel.h"
#include "ui/StateDot.h"
#include "ui/messages.h"

#include <QHBoxLayout>
#include <QLabel>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

void openLog()
{
    openOrTell(u"file"_s, gRoot->Errors()->path(), u"Error Log"_s);
}

} // namespace

StatusFooter::StatusFooter(QWidget *parent)
    : QWidget(parent), m_dot(new StateDot), m_process(new QLabel), m_network(new QLabel),
      m_errors(new Link(this)), m_problem(new ProblemLabel)
{
    m_dot->setObjectName(u"stateDot"_s);
    m_process->setObjectName(u"lblFooterProcess"_s);
    m_network->setObjectName(u"lblFooterNetwork"_s);
    m_errors->setObjectName(u"lblErrors"_s);
    m_problem->setObjectName(u"lblFooterProblem"_s);
    m_network->setWordWrap(true); // rather than to widen the window
    m_errors->setToolTip(u"Click to open the error log"_s);
    m_errors->hide();
    connect(m_errors, &Link::clicked, this, openLog);

    auto *const line = new QHBoxLayout;
    line->addWidget(m_dot);
    line->addWidget(m_process);
    line->addSpacing(fontMetrics().height());
    line->addWidget(m_network, 1);
    line->addWidget(m_errors);
    auto *const lines = new QVBoxLayout(this);
    lines->setContentsMargins({});
    lines->addLayout(line);
    lines->addWidget(m_problem);
}

void StatusFooter::showState(const ServerState &state, const QString &toolTip)
{
    m_dot->setHealth(state.health);
    m_process->setText(state.process);
    m_network->setText(state.network);
    setToolTip(toolTip);
}

void StatusFooter::showProblem(const QString &problem)
{
    m_problem->tell(problem);
}

void StatusFooter::showErrors(int count)
{
    if (std::exchange(m_count, count) == count) {
        return;
    }
    m_errors->setText(count == 1 ? u"1 error logged"_s : u"%1 errors logged"_s.arg(count));
    m_errors->setVisible(count > 0);
}

QWidget *StatusFooter::link() const
{
    return m_errors;
}
