#pragma once

#include "platform/Autostart.h"
#include "platform/Files.h"

namespace platform {

/// An entry "ZEBEK.EXE.desktop" in an autostart folder, in the format of the freedesktop.org
/// standard for desktop entries: in the system's folder, or where this user may not write there, in
/// the user's own.
class LinuxAutostart final : public Autostart
{
public:
    explicit LinuxAutostart(Files &files,
                            QString systemFolder = QStringLiteral("/etc/xdg/autostart"),
                            QString userFolder = usersFolder());

    std::uint32_t query() override;
    std::uint32_t write(const QString &program) override;
    /// Removes the entries of both folders, or of one where only that may be changed.
    std::uint32_t remove() override;
    QString place() override;

private:
    static QString usersFolder();

    std::uint32_t writeTo(const QString &folder, const QString &program) const;
    std::uint32_t removeFrom(const QString &folder) const;

    Files &m_files;
    QString m_systemFolder;
    QString m_userFolder;
};

} // namespace platform
