#include "platform/Files.h"

#include "platform/Failure.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

QString behindLinks(const QString &path)
{
    const QFileInfo file(path);
    if (!file.isSymLink()) {
        return path;
    }
    // A link whose target is gone has no canonical path; its target is then made anew.
    const QString target = file.canonicalFilePath();
    return target.isEmpty() ? file.symLinkTarget() : target;
}

} // namespace

Failure fileFailure(const QFileDevice &file)
{
    return {Failure::PathAccess, u"%1: %2"_s.arg(file.fileName(), file.errorString())};
}

Failure pathFailure(const QString &what, const std::error_code &code)
{
    return {Failure::PathAccess,
            u"%1: %2"_s.arg(what, QString::fromLocal8Bit(code.message().c_str()).trimmed())};
}

QByteArray readFile(const QString &path, qint64 atMost)
{
    if (const QFileInfo entry(path); entry.exists() && !entry.isFile() && !entry.isDir()) {
        throw Failure(Failure::PathAccess, u"%1: Not a file"_s.arg(path)); // a pipe makes wait
    }
    QFile file(path);
    QByteArray content;
    if (file.open(QIODevice::ReadOnly)) {
        content = file.read(std::min(atMost, file.size()));
    }
    if (file.error() != QFileDevice::NoError) {
        throw fileFailure(file);
    }
    return content;
}

void requireFolder(const QString &path)
{
    std::error_code failed;
    const std::filesystem::directory_iterator opened(QFileInfo(path).filesystemFilePath(), failed);
    if (failed) {
        throw pathFailure(path, failed);
    }
    if (!QFileInfo(path).isExecutable()) {
        throw pathFailure(path, std::make_error_code(std::errc::permission_denied));
    }
}

bool hasPathCharacter(const QString &name)
{
    static const QRegularExpression special(uR"([/\\:*?"<>|])"_s);
    return special.match(name).hasMatch();
}

QString replacementName(const QString &path)
{
    return path + u".zebek-new"_s;
}

Replacement::Replacement(Files &files, const QString &path, const QByteArray &content,
                         Durability durability, Permissions permissions)
    : m_files(files), m_target(behindLinks(path)), m_beside(replacementName(m_target)),
      m_durability(durability)
{
    if (QFileInfo::exists(m_target) && !QFileInfo(m_target).isFile()) {
        throw Failure(Failure::PathAccess, u"%1: Not a file"_s.arg(m_target));
    }
    if (permissions.like.isEmpty()) {
        permissions.like = m_target;
    }
    m_files.remove(m_beside);
    try {
        m_files.create(m_beside, content, permissions);
        if (m_durability == Durability::SurvivesPowerLoss) {
            m_files.flush(m_beside);
        }
    } catch (const Failure &) {
        discard();
        throw;
    }
}

Replacement::~Replacement()
{
    if (m_pending) {
        discard();
    }
}

void Replacement::commit()
{
    m_files.rename(m_beside, m_target);
    m_pending = false;
    if (m_durability == Durability::SurvivesPowerLoss) {
        m_files.flushFolder(QFileInfo(m_target).absolutePath());
    }
}

void Replacement::discard() noexcept
{
    try {
        m_files.remove(m_beside);
    } catch (const Failure &) { // NOLINT(bugprone-empty-catch)
        // The first failure is the one to report; the next replacement removes the rest.
    }
}

void replaceFile(Files &files, const QString &path, const QByteArray &content,
                 Durability durability, const Permissions &permissions)
{
    Replacement(files, path, content, durability, permissions).commit();
}

} // namespace platform
