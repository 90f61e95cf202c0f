#include "server/clsOptionsXML.h"

#include "core/basGamePath.h"
#include "core/basMain.h"
#include "core/basNumbers.h"
#include "core/basTraps.h"
#include "core/clsZebek.h"
#include "platform/Machine.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <type_traits>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr Module Here{"Options XML Class", "Unknown"};

/// The endings of a colour's elements, and where their bytes are.
constexpr std::array<std::pair<char, int>, 3> Components{{{'R', 0}, {'G', 8}, {'B', 16}}};
constexpr std::int32_t LargestComponent = 255;

QString filePath()
{
    return fnGamePath(u"options.xml"_s);
}

platform::Failure about(const char *element, int number, const QString &description)
{
    return {number, u"%1: %2"_s.arg(QLatin1String(element), description)};
}

QString componentName(const char *element, char component)
{
    return QLatin1String(element) + QLatin1Char(component);
}

} // namespace

template <typename Value>
Value GameSetting<Value>::operator()() const
{
    try {
        return fnFromText<Value>(m_file.GetNodeValue(QLatin1String(m_element)));
    } catch (const platform::Failure &failure) {
        throw about(m_element, failure.number(), failure.description());
    }
}

template <typename Value>
void GameSetting<Value>::require() const
{
    if (!m_file.find(QLatin1String(m_element))) {
        throw about(m_element, platform::Failure::PathAccess,
                    u"The game's file \"options.xml\" has no such element"_s);
    }
}

template <typename Value>
void GameSetting<Value>::Let(const Value &value)
{
    QString text = fnToText(value);
    if constexpr (std::is_same_v<Value, bool>) {
        text = text.toUpper(); // the game writes TRUE and FALSE
    }
    m_file.SetNodeValue(QLatin1String(m_element), text);
}

template class GameSetting<bool>;
template class GameSetting<std::int32_t>;
template class GameSetting<QString>;

std::int32_t GameColour::operator()() const
{
    std::int32_t colour = 0;
    for (const auto &[component, shift] : Components) {
        const QString text = m_file.GetNodeValue(componentName(m_element, component));
        colour |= std::clamp(fnIfInteger(text).value_or(0), 0, LargestComponent) << shift;
    }
    return colour;
}

void GameColour::Let(std::int32_t colour)
{
    for (const auto &[component, shift] : Components) {
        m_file.SetNodeValue(componentName(m_element, component),
                            QString::number(colour >> shift & LargestComponent));
    }
}

clsOptionsXML::clsOptionsXML() : m_path(filePath()), m_fileExists(QFile::exists(m_path))
{
    const QFile::Permissions permissions =
        m_fileExists ? QFile::permissions(m_path) : QFile::Permissions();
    if (m_fileExists && !permissions.testFlag(QFile::WriteOwner)) {
        QFile::setPermissions(m_path, permissions | QFile::WriteOwner);
    }
}

void clsOptionsXML::Load()
{
    skipFailure([this] { loadOrFail(); });
}

void clsOptionsXML::loadOrFail()
{
    m_path = filePath(); // the game may have written it since, with other letters
    m_document.reset();
    m_document = platform::XmlDocument::loadOrFail(m_path);
}

QString clsOptionsXML::stampOfFile()
{
    const QFileInfo file(filePath());
    return file.exists() ? u"%1|%2"_s.arg(file.size()).arg(file.lastModified().toMSecsSinceEpoch())
                         : QString();
}

void clsOptionsXML::Save()
{
    if (!m_document) {
        return;
    }
    const QByteArray content = m_document->toBytes();
    if (!platform::XmlDocument::parse(content)) {
        throw platform::Failure(platform::Failure::Unexpected,
                                u"%1: It is in an encoding that cannot be written"_s.arg(m_path));
    }
    platform::replaceFile(gRoot->Machine().files, m_path, content,
                          platform::Durability::SurvivesPowerLoss);
}

void clsOptionsXML::RemoveGRServer(const QString &address)
{
    if (!m_document) {
        return;
    }
    for (platform::XmlElement &element : m_document->findAll("IPAddress")) {
        if (element.text() == address) {
            element.setText({});
            return;
        }
    }
}

std::optional<platform::XmlElement> clsOptionsXML::find(const QString &element)
{
    return m_document ? m_document->findFirst(element.toLatin1().constData()) : std::nullopt;
}

QString clsOptionsXML::GetNodeValue(const QString &element)
{
    return trap(Here("GetNodeValue"), [&] {
        const auto found = find(element);
        return found ? found->text() : QString();
    });
}

void clsOptionsXML::SetNodeValue(const QString &element, const QString &text)
{
    trap(Here("SetNodeValue"), [&] {
        if (auto found = find(element)) {
            found->setText(text);
        }
    });
}
