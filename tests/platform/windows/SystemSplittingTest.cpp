#include "platform/CommandLine.h"

#include <qt_windows.h>

#include <gtest/gtest.h>
#include <random>
#include <shellapi.h>

static QStringList splitBySystem(const QString &line)
{
    int count = 0;
    wchar_t **const words =
        CommandLineToArgvW(reinterpret_cast<const wchar_t *>(line.utf16()), &count);
    QStringList result;
    for (int index = 0; index < count; ++index) {
        result.append(QString::fromWCharArray(words[index]));
    }
    LocalFree(static_cast<void *>(words));
    return result;
}

TEST(splitCommandLine, SplitsAsTheSystemDoes)
{
    std::mt19937 random(1); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same lines each time
    for (int count = 0; count < 20000; ++count) {
        QString line = QStringLiteral("p ");
        for (unsigned length = random() % 20; length > 0; --length) {
            line.append(QLatin1Char("ab \t\\\\\"\""[random() % 8]));
        }
        // Two quotes in a row the system takes otherwise than the run time's own splitting does.
        while (line.contains(QStringLiteral("\"\""))) {
            line.replace(QStringLiteral("\"\""), QStringLiteral("\" \""));
        }
        ASSERT_EQ(platform::splitCommandLine(line), splitBySystem(line)) << line.toStdString();
    }
}
