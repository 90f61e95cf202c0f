#include "core/clsErrors.h"

#include "core/basMain.h"
#include "core/clsZebek.h"
#include "platform/Machine.h"
#include "platform/XmlDocument.h"

#include <array>
#include <utility>

clsErrors::clsErrors() : m_file(gRoot->RootDirectory() + QStringLiteral("ZEBEK_Error.xml")) {}

void clsErrors::RecordError(const QString &Module, const QString &Routine, const QString &ID,
                            int ErrorNo, const QString &Description) noexcept
{
    try {
        const QString time =
            gRoot->Machine().clock.now().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        platform::XmlDocument document = platform::XmlDocument::create("Error");
        platform::XmlElement record = document.root();
        record.setText(Description);
        const std::array<std::pair<const char *, QString>, 5> attributes{{
            {"DateTime", time},
            {"Module", Module},
            {"Routine", Routine},
            {"ID", ID},
            {"ErrorNo", QString::number(ErrorNo)},
        }};
        for (const auto &[name, value] : attributes) {
            record.setAttribute(name, value);
        }
        m_file.append(record.toBytes());
    } catch (const std::exception &) { // NOLINT(bugprone-empty-catch)
        // There is nobody left to tell; the record waits for the next save.
    }
}

bool clsErrors::IsNewReason(const QString &routine, const QString &reason)
{
    QSet<QString> &known = m_reasons[routine];
    const bool isNew = !known.contains(reason);
    known.insert(reason);
    return isNew;
}
