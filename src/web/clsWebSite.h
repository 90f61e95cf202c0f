#pragma once

#include "core/PageKey.h"
#include "web/pages/iWebPage.h"

#include <array>
#include <memory>

class ConnectionSocket;

/// The web site: answers every request on the connection that brought it.
///
/// Anybody gets the public page, the log-in page, the redirect to the image of the server's state
/// and the error log. Replays are sent to who has the administrator's password in the address.
/// Everything else is posted, and every post carries name and password in fields of its form: no
/// log-in is kept. While no name or no password is stored, nobody is let in. Texts and pages are
/// sent bare, without a status line and headers; the end of an answer is the end of its connection.
class clsWebSite
{
public:
    struct PageEntry
    {
        PageKey key;
        const char *name;
        std::unique_ptr<iWebPage> page;
    };
    using PageCollection = std::array<PageEntry, 13>;

    /// From now on a setting's change renders the pages that show it.
    clsWebSite();
    clsWebSite(const clsWebSite &) = delete;
    clsWebSite &operator=(const clsWebSite &) = delete;
    ~clsWebSite() = default;

    iWebPage &Page(PageKey key) const;
    void RefreshAllPages();

    /// Takes what has arrived on the connection as one request and answers it, if it is one that
    /// is answered. A failure is recorded and leaves the connection open.
    void ParseRequest(ConnectionSocket &socket);

    // Of the interface, without a user here.
    const PageCollection &Pages() const { return m_pages; }
    /// Null where no page has that name.
    iWebPage *Page(const QString &name) const;

private:
    PageCollection m_pages;
};
