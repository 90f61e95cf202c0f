#pragma once

#include "core/PageKey.h"

#include <QString>

#include <optional>

class clsErrors;
class clsOptions;
class clsReplays;
class clsWebSite;
class ctlGRServer;
class iGlobalForm;
class iMainWindow;

namespace platform {
struct Machine;
}

/// The root object as everybody sees it: the way to the shared services. `Program` makes them.
class clsZebek
{
public:
    clsZebek() = default;
    clsZebek(const clsZebek &) = delete;
    clsZebek &operator=(const clsZebek &) = delete;
    virtual ~clsZebek() = default;

    /// The error log; null before the start made it.
    virtual clsErrors *Errors() const = 0;
    /// The tool's settings; null before the start made them and after Quit.
    virtual clsOptions *Options() const = 0;
    /// The replay archive; null before the start made it.
    virtual clsReplays *Replays() const = 0;
    /// The game's installation directory; ends in the platform's separator.
    virtual const QString &RootDirectory() const = 0;
    /// The statistics tracker's copy of the game's statistics page.
    QString StatsCacheFileName() const
    {
        return RootDirectory() + QStringLiteral("ZEBEKSCache.dat");
    }
    /// The web site; null before the start made it.
    virtual clsWebSite *WebSite() const = 0;

    virtual const platform::Machine &Machine() const = 0;
    /// The supervisor of the game server. Not before the start made it.
    virtual ctlGRServer &Server() const = 0;
    /// The hidden form that runs the web server; null before the start loaded it.
    virtual iGlobalForm *GlobalForm() const = 0;
    /// The main window; null before the start loaded it.
    virtual iMainWindow *MainWindow() const = 0;

    /// Renders a page of the web site again, or every page where there is no key. Nothing while
    /// there is no web site.
    virtual void RefreshPages(std::optional<PageKey> key) const = 0;
    /// Saves the options and ends the process at once. The game server keeps running.
    virtual void Quit() = 0;
};
