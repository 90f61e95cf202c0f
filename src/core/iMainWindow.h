#pragma once

class clsMods;

/// Why the game server was restarted.
enum class RestartReason { HadEnded, DidNotAnswer };

/// What the others ask of the main window.
class iMainWindow
{
public:
    virtual ~iMainWindow() = default;

    /// Fills the selected tab's panel from the settings, unless it holds unsaved edits.
    virtual void FillFields() = 0;
    /// Lets the panel of the selected tab refresh its live state.
    virtual void PushUpdate() = 0;
    /// Lets the server options panel read the mods anew; its unsaved edits stay.
    virtual void loadMods() = 0;
    /// The mods of the server options panel; null where there is no such panel.
    virtual const clsMods *ModsList() const = 0;
    /// Whether the window does not answer for some seconds.
    virtual void setBusy(bool busy) = 0;
    /// Lets the operator know of a restart that was just made.
    virtual void notifyRestart(RestartReason reason) = 0;
};
