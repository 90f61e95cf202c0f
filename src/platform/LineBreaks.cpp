#include "platform/LineBreaks.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr QChar LineMayBreak(0x200b);

void keepCopiesPlain()
{
    QClipboard *const clipboard = QGuiApplication::clipboard();
    QObject::connect(clipboard, &QClipboard::changed, clipboard, [=](QClipboard::Mode mode) {
        if (QGuiApplication::focusWindow() == nullptr) {
            return; // what others copy is theirs
        }
        const QString text = clipboard->text(mode);
        if (text.contains(LineMayBreak)) {
            clipboard->setText(QString(text).remove(LineMayBreak), mode);
        }
    });
}

} // namespace

QString breakable(QString text)
{
    [[maybe_unused]] static const bool copiesArePlain = (keepCopiesPlain(), true);
    // Separators in what is longer than a line should be, and whole letters in names that are.
    static const QRegularExpression place(u"([/\\\\]|(?:(?![/\\\\\\s])\\X){20})"_s);
    return text.replace(place, u"\\1"_s + LineMayBreak);
}

} // namespace platform
