#include "ui/ctlSystemOptions.h"

#include "core/basUtilities.h"
#include "core/iGlobalForm.h"
#include "platform/Machine.h"
#include "platform/Sockets.h"
#include "ui/CheckBoxSetting.h"
#include "ui/NumberSetting.h"
#include "ui/TextSetting.h"
#include "ui/bound.h"
#include "ui/manual.h"
#include "ui/messages.h"
#include "ui_ctlSystemOptions.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace {

iGlobalForm &webServer()
{
    return *gRoot->GlobalForm();
}

QString startCaption()
{
    return u"Start"_s;
}

QString stopCaption()
{
    return u"Stop"_s;
}

/// In words of what to do, with the system's own behind them.
QString wordsOf(const WebServerProblem &problem)
{
    using enum WebServerProblem::Kind;
    const QString again = u" It is tried again every 3 seconds. (%1)"_s.arg(problem.system);
    switch (problem.kind) {
    case None:
        break;
    case NoLogIn:
        return u"Not started: first enter a user name and a password, which the administrator "
               "logs in with."_s;
    case NoPort:
        return u"Not started: there is no port %1. Enter one from 1 to 65535."_s.arg(problem.port);
    case PortTaken:
        return u"Another program has the port %1. "_s.arg(problem.port) +
               platform::adviceOnTakenPort() + again;
    case NotAllowed:
        return u"You are not allowed to use the port %1. "_s.arg(problem.port) +
               platform::adviceOnForbiddenPort() + again;
    case Other:
        return u"The port %1 cannot be used."_s.arg(problem.port) + again;
    }
    return {};
}

void storeAddress(const QString &text)
{
    if (fnIsValidIP(text)) {
        gRoot->Options()->RemoteAccessIP.Let(text);
    }
}

void storePort(std::int32_t port)
{
    if (webServer().WebServerRunning()) {
        showMessage(u"Changes will not take effect until web server is restarted"_s);
    }
    gRoot->Options()->RemoteAccessPort.Let(port);
}

} // namespace

ctlSystemOptions::ctlSystemOptions() : m_ui(std::make_unique<Ui::ctlSystemOptions>())
{
    m_ui->setupUi(this);
    addCheckBoxes();
    addFields();
    connect(m_ui->chkAutoRunonStartup, &QCheckBox::clicked, this, [this] { showAutostartPlace(); });
    connect(m_ui->lblManual, &Link::clicked, this, openManual);
    connect(m_ui->cmdWebServer, &QPushButton::clicked, this, [this] { cmdWebServer_Click(); });
}

ctlSystemOptions::~ctlSystemOptions() = default;

void ctlSystemOptions::addCheckBoxes()
{
    add(new CheckBoxSetting(m_ui->chkFindGRServer, m_ui->lblFindGRServer,
                            bound(&clsOptions::FindGRServer)));
    add(new CheckBoxSetting(m_ui->chkAutoRunonStartup, m_ui->lblAutoRunonStartup,
                            bound(&clsOptions::AutoRunOnStartup)));
    add(new CheckBoxSetting(m_ui->chkAllowRemoteAccess, m_ui->lblAllowRemoteAccess,
                            bound(&clsOptions::AllowRemoteAccess)));
}

void ctlSystemOptions::addFields()
{
    add(new TextSetting(m_ui->txtIP, m_ui->lblIP,
                        {[] { return webServer().DefaultLocalIP(); }, storeAddress}));
    add(new NumberSetting(m_ui->txtPort, m_ui->lblPort, std::numeric_limits<quint16>::max(),
                          u"Please enter a value between 0 and 65535)"_s,
                          {bound(&clsOptions::RemoteAccessPort).read, storePort}));
    add(new TextSetting(m_ui->txtUserName, m_ui->lblUserName, bound(&clsOptions::AdminUserName)));
    add(new TextSetting(m_ui->txtPassword, m_ui->lblPassword, bound(&clsOptions::AdminPassword)));
    for (QLineEdit *const box :
         std::initializer_list<QLineEdit *>{m_ui->txtUserName, m_ui->txtPassword}) {
        box->setPlaceholderText(u"needed to start the web server"_s);
    }
}

void ctlSystemOptions::FillFields()
{
    SettingsPanel::FillFields();
    showAutostartPlace();
    PushUpdate();
}

/// The box tells in its tooltip what it does; the label adds for whom, and where that is kept.
void ctlSystemOptions::showAutostartPlace()
{
    m_ui->lblAutoRunonStartup->setToolTip(m_ui->chkAutoRunonStartup->toolTip() + u' ' +
                                          gRoot->Machine().autostart.place());
}

void ctlSystemOptions::PushUpdate()
{
    const bool running = webServer().WebServerRunning();
    m_ui->lblStatus->setText(running ? u"Web server is currently running"_s
                                     : u"Web server is currently stopped"_s);
    m_ui->cmdWebServer->setText(running ? stopCaption() : startCaption());
    m_ui->lblProblem->tell(wordsOf(webServer().webServerProblem()));
}

/// Does what the button says, even where the server's state has changed since it was lettered.
void ctlSystemOptions::cmdWebServer_Click()
{
    if (m_ui->cmdWebServer->text() == startCaption()) {
        webServer().StartWebServer();
    } else {
        webServer().StopWebServer();
    }
}
