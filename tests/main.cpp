#include <QApplication>
#include <QNetworkProxyFactory>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char *argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QTemporaryDir desktop; // where this and the programs that it starts keep their window
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(desktop.path()));
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QNetworkProxyFactory::setUseSystemConfiguration(false); // the tests' own sockets stay here
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
