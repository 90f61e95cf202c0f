#pragma once

namespace platform {

/// Teaches the XML library the encoding "windows-1252", which it may have been built without, with
/// the same table as everywhere else: every byte is a character. Does its work once.
void registerXmlCodePage();

} // namespace platform
