#include <QApplication>

#include <gtest/gtest.h>

void recordForever(const QString &directory);

int main(int argc, char *argv[])
{
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList arguments = QApplication::arguments();
    if (arguments.value(1) == QLatin1String("--record-forever")) {
        recordForever(arguments.value(2));
    }
    return RUN_ALL_TESTS();
}
