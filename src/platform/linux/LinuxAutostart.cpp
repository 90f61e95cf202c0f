#include "platform/linux/LinuxAutostart.h"

#include "platform/Failure.h"
#include "platform/linux/ErrorCodes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr QFile::Permissions ReadableByAll =
    QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther;

/// An argument of an Exec line: quoted, with the characters escaped that are special in quotes,
/// then with the escapes of a text value on top, and "%" doubled since it begins a field code.
QString execArgument(const QString &text)
{
    QString quoted;
    for (const QChar character : text) {
        if (u"\"`$\\"_s.contains(character)) {
            quoted.append(u'\\');
        }
        quoted.append(character);
    }
    quoted.replace(u"\\"_s, u"\\\\"_s);
    quoted.replace(u"%"_s, u"%%"_s);
    return u"\"%1\""_s.arg(quoted);
}

QByteArray entryFor(const QString &program)
{
    return "[Desktop Entry]\nType=Application\nName=Zebek Suite\nExec="_ba +
           QFile::encodeName(execArgument(program)) + "\nTerminal=false\n";
}

} // namespace

LinuxAutostart::LinuxAutostart(Files &files, const QString &folder)
    : m_files(files), m_folder(folder), m_path(folder + u"/ZEBEK.EXE.desktop"_s)
{
}

std::uint32_t LinuxAutostart::query()
{
    struct stat status = {};
    return ::stat(QFile::encodeName(m_path).constData(), &status) == 0 ? Success
                                                                       : windowsCode(errno);
}

std::uint32_t LinuxAutostart::write(const QString &program)
{
    // A desktop that was never asked to start anything may lack the folder. Everybody must be able
    // to read it and the entry, whatever mask the process has.
    if (!QFileInfo::exists(m_folder) && QDir().mkpath(m_folder)) {
        QFile::setPermissions(m_folder,
                              ReadableByAll | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther);
    }
    try {
        replaceFile(m_files, m_path, entryFor(program), Durability::SurvivesPowerLoss);
    } catch (const Failure &failure) {
        return windowsCode(failure.number());
    }
    return QFile::setPermissions(m_path, ReadableByAll) ? Success : windowsCode(EACCES);
}

std::uint32_t LinuxAutostart::remove()
{
    // The missing right comes before the missing entry.
    if (::access(QFile::encodeName(m_folder).constData(), W_OK) != 0) {
        return windowsCode(errno);
    }
    const std::uint32_t present = query();
    if (present != Success) {
        return present;
    }
    try {
        m_files.remove(m_path);
        return Success;
    } catch (const Failure &failure) {
        return windowsCode(failure.number());
    }
}

} // namespace platform
