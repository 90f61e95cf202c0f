#pragma once

#include "platform/Files.h"

#include <QStorageInfo>

namespace platform {

class SystemFiles final : public Files
{
public:
    void remove(const QString &path) override;
    void create(const QString &path, const QByteArray &content,
                const Permissions &permissions) override;
    void replaceEnd(const QString &path, qint64 position, const QByteArray &old,
                    const QByteArray &content) override;
    void flush(const QString &path) override;
    void rename(const QString &from, const QString &to) override;
    void flushFolder(const QString &path) override;
    qint64 freeSpace(const QString &folder) override
    {
        return QStorageInfo(folder).bytesAvailable();
    }
};

} // namespace platform
