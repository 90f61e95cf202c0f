#include "web/ReplayFiles.h"

#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "web/Website.h"
#include "web/clsWebServerRequest.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool isPlainFileName(const QString &name)
{
    static const QRegularExpression device(
        QRegularExpression::anchoredPattern(
            uR"((CON|PRN|AUX|NUL|CONIN\$|CONOUT\$|(COM|LPT)[0-9¹²³])\s*(\..*)?)"_s),
        QRegularExpression::CaseInsensitiveOption);
    const bool hasControl =
        std::any_of(name.begin(), name.end(), [](QChar character) { return character < u' '; });
    return !name.isEmpty() && !hasControl && !platform::hasPathCharacter(name) &&
           !device.match(name).hasMatch();
}

bool isInside(const QFileInfo &file, const QString &folder)
{
    return file.isFile() &&
           QFileInfo(file.canonicalFilePath()).path() == QDir(folder).canonicalPath();
}

/// With separators as they are, which servers in front refuse in another form.
QString encoded(const QString &text)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text, "/"));
}

/// Escapes stand for bytes of UTF-8, as browsers write them, or else of the code page.
QString decodedOnce(const QString &text)
{
    static const QRegularExpression escape(u"%([0-9A-Fa-f]{2})"_s);
    QByteArray bytes;
    qsizetype end = 0;
    for (const QRegularExpressionMatch &match : escape.globalMatch(text)) {
        bytes += platform::toCodePage(text.mid(end, match.capturedStart() - end)) +
                 QByteArray::fromHex(match.captured(1).toLatin1());
        end = match.capturedEnd();
    }
    bytes += platform::toCodePage(text.mid(end));
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString decoded = utf8(bytes);
    return utf8.hasError() ? platform::fromCodePage(bytes) : decoded;
}

} // namespace

QStringList fnReplayFiles()
{
    QStringList names;
    QDirIterator files(gRoot->Options()->ReplayFolder(), {u"*.rpf"_s}, QDir::Files | QDir::Hidden);
    while (files.hasNext()) {
        files.next();
        names.append(files.fileName());
    }
    return names;
}

std::optional<QString> fnReplayPath(const QString &name)
{
    const QString folder = gRoot->Options()->ReplayFolder();
    const QString path = folder + QDir::separator() + name;
    if (!isPlainFileName(name) || !isInside(QFileInfo(path), folder)) {
        return std::nullopt;
    }
    return path;
}

QString fnDownloadLink(const QString &name)
{
    return u"GETFILE"_s + encoded(gRoot->Options()->AdminPassword()) + u'/' + encoded(name);
}

std::optional<QString> fnDownloadName(const QString &address)
{
    const QString password = gRoot->Options()->AdminPassword();
    if (password.isEmpty()) {
        return std::nullopt;
    }
    const QString decoded = decodedOnce(address);
    if (decoded.startsWith(password)) {
        return decoded.mid(password.size() + 1);
    }
    return address.startsWith(password)
               ? std::optional(decodedOnce(address.mid(password.size() + 1)))
               : std::nullopt;
}

bool RemoveReplay(const QString &name)
{
    return trap(Website("RemoveReplay"), [&] {
        if (!name.contains(".rpf"_L1)) {
            return false;
        }
        const std::optional<QString> path = fnReplayPath(name);
        QFile file(path.value_or(QString()));
        if (path && !file.remove()) {
            throw platform::fileFailure(file);
        }
        return true;
    });
}

QString DeleteReplays(const clsWebServerRequest &request)
{
    const QString prefix = u"DELFILE"_s;
    int count = 0;
    const bool done = trap(Website("DeleteReplays"), [&] {
        for (const QString &field : request.FieldNames()) {
            if (field.startsWith(prefix) &&
                RemoveReplay(field.mid(prefix.size()).replace(u'+', u' '))) {
                ++count;
            }
        }
        return true;
    });
    return done ? u"%1 Replays Files Deleted"_s.arg(count)
                : u"An Error has occured. Please check the log. (%1 files deleted)"_s.arg(count);
}
