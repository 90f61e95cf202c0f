#include "platform/DesktopMessageBoxes.h"

#include <QtTest/QtTest>
#include <QtWidgets/QtWidgets>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace platform;

TEST(DesktopMessageBoxes, ComeOneAtATimeAndATextThatIsThereAlreadyOnlyOnce)
{
    DesktopMessageBoxes boxes;
    QStringList seen;
    QStringList ended; // text and button of each, in the order in which the calls returned
    int come = 0;
    const auto show = [&](const QString &text) {
        ++come;
        const int style = text == u'B' ? RetryCancel : OkOnly;
        ended.append(text + QString::number(boxes.show(text, u"Title"_s, style)));
    };
    QTimer operators;
    QObject::connect(&operators, &QTimer::timeout, [&] {
        QWidgetList open = QApplication::topLevelWidgets();
        open.removeIf([](const QWidget *window) { return !window->isVisible(); });
        EXPECT_LE(open.size(), 1);
        auto *const box = qobject_cast<QMessageBox *>(open.value(0));
        if (box && seen.isEmpty()) { // others come meanwhile, as from timers and sockets
            for (const char text : {'B', 'A', 'B', 'C'}) {
                QTimer::singleShot(0, [&show, text] { show(QChar::fromLatin1(text)); });
            }
        }
        if (box && !seen.contains(box->text())) {
            seen += box->text();
        } else if (box && come == 5) {
            box->buttons().constFirst()->click();
        }
    });
    operators.start(0);
    show(u"A"_s);
    EXPECT_EQ(seen.join(u' '), u"A C B"_s);
    EXPECT_EQ(ended.join(u' '), u"A1 B2 C1 B4 A1"_s);
    come = 4;
    show(u"A"_s);
    EXPECT_EQ(ended.size(), 6) << "it was answered, and so counts anew";
}

TEST(DesktopMessageBoxes, ABoxThatMayAnswersItselfOnceItsTimeIsUp)
{
    DesktopMessageBoxes impatient(std::chrono::milliseconds(1));
    EXPECT_EQ(impatient.show(u"A"_s, u"Title"_s, RetryCancel | RetriesAlone), RetryButton);
    EXPECT_EQ(impatient.show(u"A"_s, u"Title"_s, RetryCancel | CancelsAlone), CancelButton);
    EXPECT_EQ(impatient.show(u"A"_s, u"Title"_s, AcceptsAlone), OkButton);
}
