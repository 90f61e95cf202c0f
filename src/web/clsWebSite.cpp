#include "web/clsWebSite.h"

#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "core/iMainWindow.h"
#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "server/ctlGRServer.h"
#include "web/ConnectionSocket.h"
#include "web/ReplayFiles.h"
#include "web/UpdateForms.h"
#include "web/clsWebServerRequest.h"
#include "web/pages/PageText.h"
#include "web/pages/UpdatePage.h"
#include "web/pages/clsWebPage_AdminMain.h"
#include "web/pages/clsWebPage_AdminModList.h"
#include "web/pages/clsWebPage_AdminReplays.h"
#include "web/pages/clsWebPage_AdminServerControl.h"
#include "web/pages/clsWebPage_AdminServerOptions.h"
#include "web/pages/clsWebPage_AdminStatusOptions.h"
#include "web/pages/clsWebPage_AdminSystemOptions.h"
#include "web/pages/clsWebPage_PublicStatus.h"

#include <QFileInfo>

#include <optional>

namespace {

constexpr Routine routine(const char *name)
{
    return {"Website", name, "Root Object"};
}

constexpr qsizetype RouteLength = 8;
constexpr qsizetype LongestNameTold = 256;
constexpr int LogInPage = 1000;
constexpr int LogInFailurePage = 1001;
const QString NewsSite = QStringLiteral("https://www.cnn.com/");
const QByteArray LineEnd = QByteArrayLiteral("\r\n");

ctlGRServer &server()
{
    return gRoot->Server();
}

bool fnCheckCredentials(const QString &user, const QString &password)
{
    const clsOptions &options = *gRoot->Options();
    return options.HasLogIn() && password == options.AdminPassword() &&
           user == options.AdminUserName();
}

void SendStraightText(ConnectionSocket &socket, const QByteArray &text)
{
    Trap(routine("SendStraightText"), [&] { socket.send(text); });
}

void SendStraightPage(ConnectionSocket &socket, int resource)
{
    Trap(routine("SendStraightPage"),
         [&] { socket.send(platform::toCodePage(page::text(resource))); });
}

void SendRedirect(QString url, ConnectionSocket &socket)
{
    Trap(routine("SendRedirect"), [&] {
        url.remove(u'\r').remove(u'\n'); // they would make header lines of it
        socket.send("HTTP/1.1  307 Temporary Redirect" + LineEnd +
                    "Location: " + platform::toCodePage(url) + LineEnd + LineEnd);
    });
}

/// Null when the file cannot be read.
std::unique_ptr<FileContent> SendFile(const QString &path)
{
    return Trap(routine("SendFile"), [&] { return std::make_unique<FileContent>(path); });
}

void SendHeaderWithFile(const char *contentType, ConnectionSocket &socket, const QString &path)
{
    Trap(routine("SendHeaderWithFile"), [&] {
        socket.send("HTTP/1.1 200 OK" + LineEnd + "Content-Type: " + contentType + LineEnd +
                        LineEnd,
                    SendFile(path), LineEnd + LineEnd);
    });
}

QString ServerStatusGif()
{
    const clsOptions &options = *gRoot->Options();
    return Trap(routine("ServerStatusGif"), [&] {
        const clsProcess *const process = server().Process();
        const bool alive = process != nullptr && process->StillActive() &&
                           !server().StatusText().contains(QLatin1String("Dead"));
        return alive ? options.ServerRunningGif() : options.ServerCrashGif();
    });
}

platform::Failure noSuchFile(const QString &name)
{
    return {platform::Failure::FileNotFound, QStringLiteral("%1: No such file").arg(name)};
}

void sendErrorLogAs(const char *contentType, ConnectionSocket &socket)
{
    const QString path = gRoot->RootDirectory() + QStringLiteral("ZEBEK_Error.xml");
    if (!QFileInfo(path).isFile()) {
        throw noSuchFile(path);
    }
    SendHeaderWithFile(contentType, socket, path);
}

QString startServer(const clsWebServerRequest & /*request*/)
{
    return server().StartGRServer(true) ? QStringLiteral("Process start/find successful")
                                        : QStringLiteral("Process start/find failed");
}

QString stopServer(const clsWebServerRequest & /*request*/)
{
    return server().StopGRServer() ? QStringLiteral("Process stop successful")
                                   : QStringLiteral("Process stop failed");
}

/// The forms that "/UpdateA..." posts. The answer is the page of the same key and "Update".
const struct UpdateForm
{
    const char *uri;
    const char *submitType; ///< the button that was pressed; null where it does not matter
    QString (*update)(const clsWebServerRequest &);
    const char *page;
    bool fillsPanels;  ///< the desktop's panels show what was changed
    bool changesLogIn; ///< which every page holds
} UpdateForms[] = {
    {"/UpdateAdminReplaysConfig", nullptr, Update_ReplayConfig, "AdminReplays", true, false},
    {"/UpdateAdminServerControlConfig", "Update", Update_ServerControlConfig, "AdminServerControl",
     true, false},
    {"/UpdateAdminServerControlConfig", "Start Server", startServer, "AdminServerControl", false,
     false},
    {"/UpdateAdminServerControlConfig", "Stop Server", stopServer, "AdminServerControl", false,
     false},
    {"/UpdateAdminServerOptionsConfig", nullptr, Update_ServerOptionsConfig, "AdminServerOptions",
     true, false},
    {"/UpdateAdminSystemOptionsConfig", nullptr, Update_SystemOptionsConfig, "AdminSystemOptions",
     true, true},
    {"/UpdateAdminStatusOptionsConfig", nullptr, Update_StatusOptionsConfig, "AdminStatusOptions",
     true, false},
};

const UpdateForm *formOf(const clsWebServerRequest &request)
{
    const QString submitType = request.FormField(QStringLiteral("SubmitType"));
    for (const UpdateForm &form : UpdateForms) {
        if (request.URI() == QLatin1String(form.uri) &&
            (form.submitType == nullptr || submitType == QLatin1String(form.submitType))) {
            return &form;
        }
    }
    return nullptr;
}

} // namespace

const clsWebSite::Route clsWebSite::GetRoutes[] = {
    {"/CNN", &clsWebSite::redirectToNews},
    {"/ServerS", &clsWebSite::redirectToStatusImage},
    {"/GETFILE", &clsWebSite::sendReplay},
    {"/Error", &clsWebSite::sendErrorLog},
    {"/ErrorTe", &clsWebSite::sendErrorLogAsText},
    {"/Imageno", nullptr},
    {"/Login", &clsWebSite::sendLogIn},
};

const clsWebSite::Route clsWebSite::PostRoutes[] = {
    {"/OpenMod", &clsWebSite::openMods},       {"/EditMod", &clsWebSite::editMod},
    {"/AdminMe", &clsWebSite::chooseFromMenu}, {"/UpdateA", &clsWebSite::update},
    {"/DeleteR", &clsWebSite::deleteReplays},  {"/logon", &clsWebSite::logOn},
};

clsWebSite::clsWebSite()
{
    const auto add = [this]<typename Class>(const char *key, std::unique_ptr<Class> page) {
        m_pages.emplace_back(QString::fromLatin1(key), std::move(page));
    };
    add("AdminMain", std::make_unique<clsWebPage_AdminMain>());
    add("AdminReplays", std::make_unique<clsWebPage_AdminReplays>());
    add("AdminReplaysUpdate", std::make_unique<clsWebPage_AdminReplaysUpdate>());
    add("AdminServerControl", std::make_unique<clsWebPage_AdminServerControl>());
    add("AdminServerControlUpdate", std::make_unique<clsWebPage_AdminServerControlU>());
    add("AdminServerOptions", std::make_unique<clsWebPage_AdminServerOptions>());
    add("AdminServerOptionsUpdate", std::make_unique<clsWebPage_AdminServerOptionsU>());
    add("AdminSystemOptions", std::make_unique<clsWebPage_AdminSystemOptions>());
    add("AdminSystemOptionsUpdate", std::make_unique<clsWebPage_AdminSystemOptionsU>());
    add("AdminStatusOptions", std::make_unique<clsWebPage_AdminStatusOptions>());
    add("AdminStatusOptionsUpdate", std::make_unique<clsWebPage_AdminStatusOptionsU>());
    add("AdminModList", std::make_unique<clsWebPage_AdminModList>());
    add("PublicStatus", std::make_unique<clsWebPage_PublicStatus>());
}

iWebPage *clsWebSite::Page(const QString &key) const
{
    for (const auto &[name, page] : m_pages) {
        if (name == key) {
            return page.get();
        }
    }
    return nullptr;
}

void clsWebSite::RefreshAllPages()
{
    Trap(routine("RefreshAllPages"), [this] {
        for (const auto &entry : m_pages) {
            entry.second->Refresh();
        }
    });
}

/// What fails here is the search for a file that anybody can name; the rest has its own traps.
void clsWebSite::ParseRequest(ConnectionSocket &socket)
{
    Trap({"Website", "ParseRequest", "Root Object", /*byStrangers=*/true}, [&] {
        clsWebServerRequest request;
        request.ParseRequest(platform::fromCodePage(socket.data()));
        if (request.Method() == clsWebServerRequest::Get) {
            answerGet(request, socket);
        } else if (request.Method() == clsWebServerRequest::Post) {
            answerPost(request, socket);
        }
    });
}

void clsWebSite::answerGet(const clsWebServerRequest &request, ConnectionSocket &socket)
{
    const QString start = request.URI().left(RouteLength);
    for (const Route &route : GetRoutes) {
        if (start == QLatin1String(route.start)) {
            if (route.answer != nullptr) {
                (this->*route.answer)(request, socket);
            }
            return;
        }
    }
    sendPublicStatus(request, socket);
}

void clsWebSite::answerPost(const clsWebServerRequest &request, ConnectionSocket &socket)
{
    if (!fnCheckCredentials(request.FormField(QStringLiteral("UserName")),
                            request.FormField(QStringLiteral("PW")))) {
        SendStraightPage(socket, LogInFailurePage);
        return;
    }
    const QString start = request.URI().left(RouteLength);
    for (const Route &route : PostRoutes) {
        if (start == QLatin1String(route.start)) {
            (this->*route.answer)(request, socket);
            return;
        }
    }
}

void clsWebSite::redirectToNews(const clsWebServerRequest & /*request*/, ConnectionSocket &socket)
{
    SendRedirect(NewsSite, socket);
}

void clsWebSite::redirectToStatusImage(const clsWebServerRequest & /*request*/,
                                       ConnectionSocket &socket)
{
    SendRedirect(ServerStatusGif(), socket);
}

void clsWebSite::sendReplay(const clsWebServerRequest &request, ConnectionSocket &socket)
{
    const std::optional<QString> name = fnDownloadName(request.URI().mid(RouteLength));
    if (!name || !gRoot->Options()->HasLogIn()) {
        SendStraightText(socket, QByteArrayLiteral("Access Denied"));
        return;
    }
    const std::optional<QString> path = fnReplayPath(*name);
    if (!path) {
        throw noSuchFile(name->left(LongestNameTold));
    }
    SendHeaderWithFile("text/plain", socket, *path);
}

void clsWebSite::sendErrorLog(const clsWebServerRequest & /*request*/, ConnectionSocket &socket)
{
    sendErrorLogAs("text/XML", socket);
}

void clsWebSite::sendErrorLogAsText(const clsWebServerRequest & /*request*/,
                                    ConnectionSocket &socket)
{
    sendErrorLogAs("text/plain", socket);
}

void clsWebSite::sendLogIn(const clsWebServerRequest & /*request*/, ConnectionSocket &socket)
{
    SendStraightPage(socket, LogInPage);
}

void clsWebSite::sendPublicStatus(const clsWebServerRequest & /*request*/, ConnectionSocket &socket)
{
    sendPage(socket, QStringLiteral("PublicStatus"));
}

void clsWebSite::openMods(const clsWebServerRequest & /*request*/, ConnectionSocket &socket)
{
    Page(QStringLiteral("AdminModList"))->Refresh();
    sendPage(socket, QStringLiteral("AdminModList"));
}

void clsWebSite::editMod(const clsWebServerRequest &request, ConnectionSocket &socket)
{
    const QString message = Update_ModList(request);
    if (!message.isEmpty()) {
        SendStraightText(socket, platform::toCodePage(message));
        return;
    }
    Page(QStringLiteral("AdminModList"))->Refresh();
    Page(QStringLiteral("AdminServerOptions"))->Refresh();
    sendPage(socket, QStringLiteral("AdminModList"));
}

void clsWebSite::chooseFromMenu(const clsWebServerRequest &request, ConnectionSocket &socket)
{
    const QString choice = request.FormField(QStringLiteral("AdminMenu")).trimmed();
    for (const page::MenuEntry &entry : page::Menu) {
        if (entry.page != nullptr && choice == QLatin1String(entry.value)) {
            sendPage(socket, QString::fromLatin1(entry.page));
        }
    }
}

void clsWebSite::update(const clsWebServerRequest &request, ConnectionSocket &socket)
{
    const UpdateForm *const form = formOf(request);
    if (form == nullptr) {
        return;
    }
    const QString message = form->update(request);
    const QString answer = QLatin1String(form->page) + QStringLiteral("Update");
    if (form->changesLogIn) {
        Page(answer)->Refresh(); // its own menu has the new one
    }
    sendPage(socket, answer, message);
    RefreshPages(form->changesLogIn ? EveryPage : form->page);
    if (form->fillsPanels) {
        gRoot->MainWindow()->FillFields();
    }
}

void clsWebSite::deleteReplays(const clsWebServerRequest &request, ConnectionSocket &socket)
{
    const QString message = DeleteReplays(request);
    sendPage(socket, QStringLiteral("AdminReplaysUpdate"), message);
    Page(QStringLiteral("AdminReplays"))->Refresh();
}

void clsWebSite::logOn(const clsWebServerRequest & /*request*/, ConnectionSocket &socket)
{
    sendPage(socket, QStringLiteral("AdminMain"));
}

void clsWebSite::sendPage(ConnectionSocket &socket, const QString &key,
                          const QString &message) const
{
    SendStraightText(socket, Page(key)->HTML(message));
}
