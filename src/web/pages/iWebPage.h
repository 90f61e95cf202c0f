#pragma once

#include <QByteArray>
#include <QString>

/// A page of the web site. It keeps the text that Refresh() has built, so that a request mostly
/// only copies what is there. Texts are in the code page.
class iWebPage
{
public:
    iWebPage() = default;
    iWebPage(const iWebPage &) = delete;
    iWebPage &operator=(const iWebPage &) = delete;
    virtual ~iWebPage() = default;

    /// The complete page. The message is what the page tells of an update, if that is what it is
    /// for.
    virtual QByteArray HTML(const QString &message) = 0;
    /// Builds the stored text anew.
    virtual void Refresh() = 0;
    /// Lets the next HTML() build the text anew; of use to a page of live values only.
    virtual void setStale(bool /*stale*/) {}
};
