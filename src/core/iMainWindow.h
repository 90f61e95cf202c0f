#pragma once

class clsMods;

/// What the web site asks of the main window.
class iMainWindow
{
public:
    virtual ~iMainWindow() = default;

    /// Lets the panel of the selected tab load its controls from the settings.
    virtual void FillFields() = 0;
    /// The mods that the server options panel shows; null where there is no such panel.
    virtual const clsMods *ModsList() const = 0;
};
