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
#include "web/Website.h"
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

#include <algorithm>
#include <optional>
#include <span>

using namespace Qt::StringLiterals;

namespace {

using enum PageKey;

constexpr qsizetype RouteLength = 8;
constexpr qsizetype LongestNameTold = 256;
constexpr int LogInPage = 1000;
constexpr int LogInFailurePage = 1001;
const QString NewsSite = u"https://www.cnn.com/"_s;
const QByteArray LineEnd = "\r\n"_ba;

ctlGRServer &server()
{
    return gRoot->Server();
}

bool fnCheckCredentials(const QString &user, const QString &password)
{
    const clsOptions &options = *gRoot->Options();
    return options.hasLogIn() && password == options.AdminPassword() &&
           user == options.AdminUserName();
}

void SendStraightText(ConnectionSocket &socket, const QByteArray &text)
{
    trap(Website("SendStraightText"), [&] { socket.send(text); });
}

void SendStraightPage(ConnectionSocket &socket, int resource)
{
    trap(Website("SendStraightPage"),
         [&] { socket.send(platform::toCodePage(page::text(resource))); });
}

void SendRedirect(QString url, ConnectionSocket &socket)
{
    trap(Website("SendRedirect"), [&] {
        url.remove(u'\r').remove(u'\n'); // they would make header lines of it
        socket.send("HTTP/1.1  307 Temporary Redirect" + LineEnd +
                    "Location: " + platform::toCodePage(url) + LineEnd + LineEnd);
    });
}

/// Null when the file cannot be read.
std::unique_ptr<FileContent> SendFile(const QString &path)
{
    return trap(Website("SendFile"), [&] { return std::make_unique<FileContent>(path); });
}

void SendHeaderWithFile(const char *contentType, ConnectionSocket &socket, const QString &path)
{
    trap(Website("SendHeaderWithFile"), [&] {
        socket.send("HTTP/1.1 200 OK" + LineEnd + "Content-Type: " + contentType + LineEnd +
                        LineEnd,
                    SendFile(path), LineEnd + LineEnd);
    });
}

QString ServerStatusGif()
{
    const clsOptions &options = *gRoot->Options();
    return trap(Website("ServerStatusGif"), [&] {
        const clsProcess *const process = server().Process();
        const bool alive = process != nullptr && process->StillActive() &&
                           server().Status() != ServerQueryStatus::Dead;
        return alive ? options.ServerRunningGif() : options.ServerCrashGif();
    });
}

platform::Failure noSuchFile(const QString &name)
{
    return {platform::Failure::FileNotFound, u"%1: No such file"_s.arg(name)};
}

void sendErrorLogAs(const char *contentType, ConnectionSocket &socket)
{
    const QString path = gRoot->RootDirectory() + u"ZEBEK_Error.xml"_s;
    if (!QFileInfo(path).isFile()) {
        throw noSuchFile(path);
    }
    SendHeaderWithFile(contentType, socket, path);
}

QString startServer(const clsWebServerRequest & /*request*/)
{
    return server().StartGRServer(true) ? u"Process start/find successful"_s
                                        : u"Process start/find failed"_s;
}

QString stopServer(const clsWebServerRequest & /*request*/)
{
    return server().StopGRServer() ? u"Process stop successful"_s : u"Process stop failed"_s;
}

/// The forms that "/UpdateA..." posts.
const struct UpdateForm
{
    const char *uri;
    const char *submitType; ///< the button that was pressed; null where it does not matter
    QString (*update)(const clsWebServerRequest &);
    PageKey page;
    PageKey answer;
    bool fillsPanels;  ///< the desktop's panels show what was changed
    bool changesLogIn; ///< which every page holds
} UpdateForms[] = {
    {"/UpdateAdminReplaysConfig", nullptr, Update_ReplayConfig, AdminReplays, AdminReplaysUpdate,
     true, false},
    {"/UpdateAdminServerControlConfig", "Update", Update_ServerControlConfig, AdminServerControl,
     AdminServerControlUpdate, true, false},
    {"/UpdateAdminServerControlConfig", "Start Server", startServer, AdminServerControl,
     AdminServerControlUpdate, false, false},
    {"/UpdateAdminServerControlConfig", "Stop Server", stopServer, AdminServerControl,
     AdminServerControlUpdate, false, false},
    {"/UpdateAdminServerOptionsConfig", nullptr, Update_ServerOptionsConfig, AdminServerOptions,
     AdminServerOptionsUpdate, true, false},
    {"/UpdateAdminSystemOptionsConfig", nullptr, Update_SystemOptionsConfig, AdminSystemOptions,
     AdminSystemOptionsUpdate, true, true},
    {"/UpdateAdminStatusOptionsConfig", nullptr, Update_StatusOptionsConfig, AdminStatusOptions,
     AdminStatusOptionsUpdate, true, false},
};

const UpdateForm *formOf(const clsWebServerRequest &request)
{
    const QString submitType = request.FormField(u"SubmitType"_s);
    for (const UpdateForm &form : UpdateForms) {
        if (request.URI() == QLatin1String(form.uri) &&
            (form.submitType == nullptr || submitType == QLatin1String(form.submitType))) {
            return &form;
        }
    }
    return nullptr;
}

iWebPage &pageOf(PageKey key)
{
    return gRoot->WebSite()->Page(key);
}

void sendPage(ConnectionSocket &socket, PageKey key, const QString &message = {})
{
    SendStraightText(socket, pageOf(key).HTML(message));
}

void redirectToNews(const clsWebServerRequest & /*request*/, ConnectionSocket &socket)
{
    SendRedirect(NewsSite, socket);
}

void redirectToStatusImage(const clsWebServerRequest & /*request*/, ConnectionSocket &socket)
{
    SendRedirect(ServerStatusGif(), socket);
}

void sendReplay(const clsWebServerRequest &request, ConnectionSocket &socket)
{
    const std::optional<QString> name = fnDownloadName(request.URI().mid(RouteLength));
    if (!name || !gRoot->Options()->hasLogIn()) {
        SendStraightText(socket, "Access Denied"_ba);
        return;
    }
    const std::optional<QString> path = fnReplayPath(*name);
    if (!path) {
        throw noSuchFile(name->left(LongestNameTold));
    }
    SendHeaderWithFile("text/plain", socket, *path);
}

void sendErrorLog(const clsWebServerRequest & /*request*/, ConnectionSocket &socket)
{
    sendErrorLogAs("text/XML", socket);
}

void sendErrorLogAsText(const clsWebServerRequest & /*request*/, ConnectionSocket &socket)
{
    sendErrorLogAs("text/plain", socket);
}

void doNotAnswer(const clsWebServerRequest & /*request*/, ConnectionSocket & /*socket*/) {}

void sendLogIn(const clsWebServerRequest & /*request*/, ConnectionSocket &socket)
{
    SendStraightPage(socket, LogInPage);
}

void sendPublicStatus(const clsWebServerRequest & /*request*/, ConnectionSocket &socket)
{
    sendPage(socket, PublicStatus);
}

void openMods(const clsWebServerRequest & /*request*/, ConnectionSocket &socket)
{
    pageOf(AdminModList).Refresh();
    sendPage(socket, AdminModList);
}

void editMod(const clsWebServerRequest &request, ConnectionSocket &socket)
{
    const QString message = Update_ModList(request);
    if (!message.isEmpty()) {
        SendStraightText(socket, platform::toCodePage(message));
        return;
    }
    pageOf(AdminModList).Refresh();
    pageOf(AdminServerOptions).Refresh();
    sendPage(socket, AdminModList);
}

void chooseFromMenu(const clsWebServerRequest &request, ConnectionSocket &socket)
{
    const QString choice = request.FormField(u"AdminMenu"_s).trimmed();
    for (const page::MenuEntry &entry : page::Menu) {
        if (entry.page && choice == QLatin1String(entry.value)) {
            sendPage(socket, *entry.page);
        }
    }
}

void update(const clsWebServerRequest &request, ConnectionSocket &socket)
{
    const UpdateForm *const form = formOf(request);
    if (form == nullptr) {
        return;
    }
    const QString message = form->update(request);
    if (form->changesLogIn) {
        pageOf(form->answer).Refresh(); // its own menu has the new one
    }
    sendPage(socket, form->answer, message);
    gRoot->RefreshPages(form->changesLogIn ? std::nullopt : std::optional(form->page));
    if (form->fillsPanels) {
        gRoot->MainWindow()->FillFields();
    }
}

void deleteReplays(const clsWebServerRequest &request, ConnectionSocket &socket)
{
    const QString message = DeleteReplays(request);
    sendPage(socket, AdminReplaysUpdate, message);
    pageOf(AdminReplays).Refresh();
}

void logOn(const clsWebServerRequest & /*request*/, ConnectionSocket &socket)
{
    sendPage(socket, AdminMain);
}

void refuseLogIn(const clsWebServerRequest & /*request*/, ConnectionSocket &socket)
{
    SendStraightPage(socket, LogInFailurePage);
}

using Answer = void (*)(const clsWebServerRequest &, ConnectionSocket &);

/// `start`: the target's first eight characters, all of them where it is shorter.
struct Route
{
    const char *start;
    Answer answer;
};

constexpr Route GetRoutes[] = {
    {"/CNN", redirectToNews}, {"/ServerS", redirectToStatusImage}, {"/GETFILE", sendReplay},
    {"/Error", sendErrorLog}, {"/ErrorTe", sendErrorLogAsText},    {"/Imageno", doNotAnswer},
    {"/Login", sendLogIn},
};

constexpr Route PostRoutes[] = {
    {"/OpenMod", openMods}, {"/EditMod", editMod},       {"/AdminMe", chooseFromMenu},
    {"/UpdateA", update},   {"/DeleteR", deleteReplays}, {"/logon", logOn},
};

Answer answerIn(const clsWebServerRequest &request, std::span<const Route> routes, Answer otherwise)
{
    const QString start = request.URI().left(RouteLength);
    for (const Route &route : routes) {
        if (start == QLatin1String(route.start)) {
            return route.answer;
        }
    }
    return otherwise;
}

Answer answerOf(const clsWebServerRequest &request)
{
    if (request.Method() == clsWebServerRequest::Get) {
        return answerIn(request, GetRoutes, sendPublicStatus);
    }
    if (request.Method() == clsWebServerRequest::Post) {
        return fnCheckCredentials(request.FormField(u"UserName"_s), request.FormField(u"PW"_s))
                   ? answerIn(request, PostRoutes, doNotAnswer)
                   : refuseLogIn;
    }
    return doNotAnswer;
}

/// Renders the pages that show a setting of the tool; every page holds the log-in.
void refreshPagesOf(const SettingBase &changed)
{
    const clsOptions &options = *gRoot->Options();
    const std::pair<const SettingBase *, std::optional<PageKey>> rows[] = {
        {&options.AdminUserName, std::nullopt},
        {&options.AdminPassword, std::nullopt},
        {&options.AllowRemoteAccess, AdminSystemOptions},
        {&options.AutoRunOnStartup, AdminSystemOptions},
        {&options.FindGRServer, AdminSystemOptions},
        {&options.RemoteAccessPort, AdminSystemOptions},
        {&options.AutoStartGRServer, AdminServerControl},
        {&options.AutoRestartGRServer, AdminServerControl},
        {&options.AutoRestartOnProcessStop, AdminServerControl},
        {&options.ServerPollingFrequency, AdminServerControl},
        {&options.ServerStartupTimeout, AdminServerControl},
        {&options.ServerTimeout, AdminServerControl},
        {&options.ServerCommandLineArgs, AdminServerControl},
        {&options.ReplayCount, AdminReplays},
        {&options.RecordReplays, AdminReplays},
        {&options.ReplayFolder, AdminReplays},
        {&options.SkipBlankReplays, AdminReplays},
        {&options.ServerRunningGif, AdminStatusOptions},
        {&options.ServerCrashGif, AdminStatusOptions},
    };
    for (const auto &[setting, page] : rows) {
        if (setting == &changed) {
            gRoot->RefreshPages(page);
        }
    }
}

} // namespace

clsWebSite::clsWebSite()
    : m_pages{{
          {AdminMain, "AdminMain", std::make_unique<clsWebPage_AdminMain>()},
          {AdminReplays, "AdminReplays", std::make_unique<clsWebPage_AdminReplays>()},
          {AdminReplaysUpdate, "AdminReplaysUpdate",
           std::make_unique<clsWebPage_AdminReplaysUpdate>()},
          {AdminServerControl, "AdminServerControl",
           std::make_unique<clsWebPage_AdminServerControl>()},
          {AdminServerControlUpdate, "AdminServerControlUpdate",
           std::make_unique<clsWebPage_AdminServerControlU>()},
          {AdminServerOptions, "AdminServerOptions",
           std::make_unique<clsWebPage_AdminServerOptions>()},
          {AdminServerOptionsUpdate, "AdminServerOptionsUpdate",
           std::make_unique<clsWebPage_AdminServerOptionsU>()},
          {AdminSystemOptions, "AdminSystemOptions",
           std::make_unique<clsWebPage_AdminSystemOptions>()},
          {AdminSystemOptionsUpdate, "AdminSystemOptionsUpdate",
           std::make_unique<clsWebPage_AdminSystemOptionsU>()},
          {AdminStatusOptions, "AdminStatusOptions",
           std::make_unique<clsWebPage_AdminStatusOptions>()},
          {AdminStatusOptionsUpdate, "AdminStatusOptionsUpdate",
           std::make_unique<clsWebPage_AdminStatusOptionsU>()},
          {AdminModList, "AdminModList", std::make_unique<clsWebPage_AdminModList>()},
          {PublicStatus, "PublicStatus", std::make_unique<clsWebPage_PublicStatus>()},
      }}
{
    gRoot->Options()->setObserver(refreshPagesOf);
}

iWebPage &clsWebSite::Page(PageKey key) const
{
    return *std::ranges::find(m_pages, key, &PageEntry::key)->page;
}

iWebPage *clsWebSite::Page(const QString &name) const
{
    const auto *const entry = std::ranges::find_if(
        m_pages, [&](const PageEntry &page) { return name == QLatin1String(page.name); });
    return entry == m_pages.end() ? nullptr : entry->page.get();
}

void clsWebSite::RefreshAllPages()
{
    trap(Website("RefreshAllPages"), [this] {
        for (const PageEntry &entry : m_pages) {
            entry.page->Refresh();
        }
    });
}

/// What fails here is the search for a file that anybody can name; the rest has its own traps.
void clsWebSite::ParseRequest(ConnectionSocket &socket)
{
    trap({Website.name, "ParseRequest", Website.id, /*byStrangers=*/true}, [&] {
        clsWebServerRequest request;
        request.ParseRequest(platform::fromCodePage(socket.data()));
        answerOf(request)(request, socket);
    });
}
