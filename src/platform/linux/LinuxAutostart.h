#pragma once

#include "platform/Autostart.h"
#include "platform/Files.h"

namespace platform {

/// An entry "ZEBEK.EXE.desktop" in the system's autostart folder, in the format of the
/// freedesktop.org standard for desktop entries.
class LinuxAutostart final : public Autostart
{
public:
    explicit LinuxAutostart(Files &files,
                            const QString &folder = QStringLiteral("/etc/xdg/autostart"));

    std::uint32_t query() override;
    std::uint32_t write(const QString &program) override;
    std::uint32_t remove() override;

private:
    Files &m_files;
    QString m_folder;
    QString m_path;
};

} // namespace platform
