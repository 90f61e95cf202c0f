#pragma once

#include "platform/Windows.h"

#include <QString>

#include <vector>

/// The top-level windows whose caption contains the text (case-sensitive), the topmost first,
/// each once. A failure is recorded; the list is then empty.
std::vector<platform::WindowHandle> fnFindWindows(const QString &text);

/// The window's caption, at most 511 characters of it; empty when it has none or is gone.
QString fnGetWindowCaption(platform::WindowHandle window);

/// True on the NT family of Windows, and on systems that offer the same services.
bool fnIsWindowsNT();
