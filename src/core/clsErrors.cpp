#include "core/clsErrors.h"

#include "core/basMain.h"
#include "core/clsZebek.h"
#include "platform/Machine.h"

#include <QFile>

#include <array>
#include <utility>

clsErrors::clsErrors() : m_path(gRoot->RootDirectory() + QStringLiteral("ZEBEK_Error.xml"))
{
    m_document = QFile::exists(m_path) ? platform::XmlDocument::load(m_path)
                                       : platform::XmlDocument::create("Errors");
}

void clsErrors::RecordError(const QString &Module, const QString &Routine, const QString &ID,
                            int ErrorNo, const QString &Description) noexcept
{
    if (!m_document) {
        return;
    }
    try {
        const platform::Machine &machine = gRoot->Machine();
        if (auto log = m_document->findFirst("Errors")) {
            platform::XmlElement record = log->append("Error");
            record.setText(Description);
            const QString time =
                machine.clock.now().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
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
        }
        // Rewritten at every record, so it does not wait for the disk each time.
        platform::replaceFile(machine.files, m_path, m_document->toBytes(),
                              platform::Durability::SurvivesCrash);
    } catch (const std::exception &) { // NOLINT(bugprone-empty-catch)
        // There is nobody left to tell; the record stays in memory for the next save.
    }
}

bool clsErrors::IsNewReason(const QString &routine, const QString &reason)
{
    QSet<QString> &known = m_reasons[routine];
    const bool isNew = !known.contains(reason);
    known.insert(reason);
    return isNew;
}
