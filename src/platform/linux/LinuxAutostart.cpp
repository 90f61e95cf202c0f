#include "platform/linux/LinuxAutostart.h"

#include "platform/Failure.h"
#include "platform/linux/ErrorCodes.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cerrno>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <utility>

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

QString entryIn(const QString &folder)
{
    return folder + u"/ZEBEK.EXE.desktop"_s;
}

std::uint32_t queryIn(const QString &folder)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(entryIn(folder)).constData(), &status) == 0
               ? Autostart::Success
               : windowsCode(errno);
}

/// Whether the folder, or the one that it is to be made in, lets this user write.
bool isWritable(const QString &folder)
{
    QFileInfo there(folder);
    while (!there.exists() && !there.isRoot()) {
        there.setFile(there.path());
    }
    return there.isDir() && there.isWritable();
}

} // namespace

LinuxAutostart::LinuxAutostart(Files &files, QString systemFolder, QString userFolder)
    : m_files(files), m_systemFolder(std::move(systemFolder)), m_userFolder(std::move(userFolder))
{
}

QString LinuxAutostart::usersFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           u"/autostart"_s;
}

std::uint32_t LinuxAutostart::query()
{
    const std::uint32_t forAll = queryIn(m_systemFolder);
    return forAll != Success && queryIn(m_userFolder) == Success ? Success : forAll;
}

std::uint32_t LinuxAutostart::write(const QString &program)
{
    const std::uint32_t forAll = writeTo(m_systemFolder, program);
    if (forAll == windowsCode(EACCES)) {
        return writeTo(m_userFolder, program);
    }
    if (forAll == Success) {
        removeFrom(m_userFolder); // which would take precedence
    }
    return forAll;
}

std::uint32_t LinuxAutostart::writeTo(const QString &folder, const QString &program) const
{
    // A desktop that was never asked to start anything may lack the folder. Everybody must be able
    // to read it and the entry, whatever mask the process has.
    std::error_code failed;
    if (std::filesystem::create_directories(QFile::encodeName(folder).constData(), failed)) {
        QFile::setPermissions(folder,
                              ReadableByAll | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther);
    }
    if (failed) {
        return windowsCode(failed.value());
    }
    try {
        replaceFile(m_files, entryIn(folder), entryFor(program), Durability::SurvivesPowerLoss);
    } catch (const Failure &failure) {
        return windowsCode(failure.number());
    }
    return QFile::setPermissions(entryIn(folder), ReadableByAll) ? Success : windowsCode(EACCES);
}

std::uint32_t LinuxAutostart::remove()
{
    const std::uint32_t own = removeFrom(m_userFolder);
    const std::uint32_t forAll = removeFrom(m_systemFolder);
    const bool ownStays = own != Success && own != NotFound;
    return ownStays || forAll == NotFound ? own : forAll;
}

std::uint32_t LinuxAutostart::removeFrom(const QString &folder) const
{
    const std::uint32_t present = queryIn(folder);
    if (present != Success) {
        return present;
    }
    try {
        m_files.remove(entryIn(folder));
        return Success;
    } catch (const Failure &failure) {
        return windowsCode(failure.number());
    }
}

QString LinuxAutostart::place()
{
    const bool forAll = queryIn(m_systemFolder) == Success ||
                        (queryIn(m_userFolder) != Success && isWritable(m_systemFolder));
    return forAll ? u"For every user of this machine, in %1."_s.arg(m_systemFolder)
                  : u"For this user alone, in %1%2."_s.arg(
                        m_userFolder, isWritable(m_systemFolder)
                                          ? QString()
                                          : u", since %1 may not be changed"_s.arg(m_systemFolder));
}

} // namespace platform
