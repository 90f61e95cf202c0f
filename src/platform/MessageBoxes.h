#pragma once

#include <QString>

namespace platform {

/// Styles of a message box: one of the button sets, plus the icon, plus the button that is pressed
/// by itself after a minute, where what waits for the answer must not wait for ever.
enum MessageBoxStyle {
    OkOnly = 0,
    RetryCancel = 5,
    StopIcon = 16,
    InformationIcon = 64,
    RetriesAlone = 0x10000,
    CancelsAlone = 0x20000,
    AcceptsAlone = 0x40000
};

/// Codes of the buttons.
enum MessageBoxButton { OkButton = 1, CancelButton = 2, RetryButton = 4 };

/// Boxes that tell or ask the operator something and wait for his answer; timers and sockets go on
/// meanwhile.
class MessageBoxes
{
public:
    virtual ~MessageBoxes() = default;

    /// Shows the text (line ends LF or CR LF) and returns the button's code. `style` is a sum of
    /// MessageBoxStyle values. Closing the box is the OK or the Cancel button.
    virtual int show(const QString &text, const QString &title, int style) = 0;
};

} // namespace platform
