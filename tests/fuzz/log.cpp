#include "app/Program.h"
#include "core/ErrorLogFile.h"
#include "core/basMain.h"
#include "platform/Files.h"
#include "platform/Machine.h"
#include "platform/XmlOutline.h"

#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// Error logs of any content at the start: two records are there afterwards, last and whole, behind
/// those that were; or the file is as it was.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir directory;
    static const platform::Machine &machine = platform::nativeMachine();
    static Program root(machine, directory.path());
    gRoot = &root;
    const QString path = directory.filePath(QStringLiteral("ZEBEK_Error.xml"));
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    platform::replaceFile(machine.files, path, bytes, platform::Durability::SurvivesCrash);

    ErrorLogFile log(path);
    const int before = log.recordCount();
    for (const char *const record :
         {"<Error DateTime=\"1\">a</Error>", "<Error DateTime=\"2\"/>"}) {
        log.append(record);
    }
    const QByteArray after = platform::readFile(path);
    if (after == bytes) {
        return 0;
    }
    const platform::XmlOutline outline = platform::outlineXml(path, "Errors");
    if (!outline.wellFormed || outline.children != before + 2 || log.recordCount() != before + 2 ||
        !after.contains(R"(<Error DateTime="1">a</Error><Error DateTime="2"/>)")) {
        std::abort();
    }
    return 0;
}
