#pragma once

#include "web/pages/iWebPage.h"

#include <QString>

#include <memory>
#include <utility>
#include <vector>

class ConnectionSocket;
class clsWebServerRequest;

/// The web site: answers every request on the connection that brought it.
///
/// Anybody gets the public page, the log-in page, the redirect to the image of the server's state
/// and the error log. Replays are sent to who has the administrator's password in
/// the address. Everything else is posted, and every post carries name and password in fields of
/// its form: no log-in is kept. While no name or no password is stored, nobody is let in. Texts and
/// pages are sent bare, without a status line and headers; the end of an answer is the end of its
/// connection.
class clsWebSite
{
public:
    using PageCollection = std::vector<std::pair<QString, std::unique_ptr<iWebPage>>>;

    clsWebSite();
    clsWebSite(const clsWebSite &) = delete;
    clsWebSite &operator=(const clsWebSite &) = delete;
    ~clsWebSite() = default;

    const PageCollection &Pages() const { return m_pages; }
    /// Null for a key without a page.
    iWebPage *Page(const QString &key) const;
    void RefreshAllPages();

    /// Takes what has arrived on the connection as one request and answers it, if it is one that
    /// is answered. A failure is recorded and leaves the connection open.
    void ParseRequest(ConnectionSocket &socket);

private:
    using Answer = void (clsWebSite::*)(const clsWebServerRequest &, ConnectionSocket &);
    /// `start`: the target's first eight characters, all of them where it is shorter.
    struct Route
    {
        const char *start;
        Answer answer; ///< null for a request that is not answered
    };
    static const Route GetRoutes[];
    static const Route PostRoutes[];

    void answerGet(const clsWebServerRequest &request, ConnectionSocket &socket);
    void answerPost(const clsWebServerRequest &request, ConnectionSocket &socket);

    void redirectToNews(const clsWebServerRequest &request, ConnectionSocket &socket);
    void redirectToStatusImage(const clsWebServerRequest &request, ConnectionSocket &socket);
    void sendReplay(const clsWebServerRequest &request, ConnectionSocket &socket);
    void sendErrorLog(const clsWebServerRequest &request, ConnectionSocket &socket);
    void sendErrorLogAsText(const clsWebServerRequest &request, ConnectionSocket &socket);
    void sendLogIn(const clsWebServerRequest &request, ConnectionSocket &socket);
    void sendPublicStatus(const clsWebServerRequest &request, ConnectionSocket &socket);

    void openMods(const clsWebServerRequest &request, ConnectionSocket &socket);
    void editMod(const clsWebServerRequest &request, ConnectionSocket &socket);
    void chooseFromMenu(const clsWebServerRequest &request, ConnectionSocket &socket);
    void update(const clsWebServerRequest &request, ConnectionSocket &socket);
    void deleteReplays(const clsWebServerRequest &request, ConnectionSocket &socket);
    void logOn(const clsWebServerRequest &request, ConnectionSocket &socket);

    void sendPage(ConnectionSocket &socket, const QString &key, const QString &message = {}) const;

    PageCollection m_pages;
};
