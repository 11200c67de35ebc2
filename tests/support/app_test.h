#pragma once

#include "tests/support/start_folder.h"

#include <QApplication>
#include <QtTest>

/// Runs the tests of \a TestClass in an application whose one argument is the path of the host's
/// file of a fresh folder, as a host would start it. The folder is handed to the test class.
template <typename TestClass>
int runAppTest(int argc, char** argv)
{
    // The secret store's jobs rely on it, and a variable of the caller's must not change that.
    qunsetenv("QT_NO_GLIB");
    const StartFolder folder;
    const QByteArray hostFile = folder.hostFile().toUtf8();
    QByteArray program(argv[0]);
    QByteArray path(hostFile);
    char* arguments[] = {program.data(), path.data(), nullptr};
    int count = 2;
    QApplication application(count, arguments);
    // The tests open and close windows; the process goes on.
    QApplication::setQuitOnLastWindowClosed(false);
    TestClass test(folder);
    return QTest::qExec(&test, argc, argv);
}

// NOLINTNEXTLINE(cppcoreguidelines-macro-usage)
#define LEDORA_APP_TEST_MAIN(TestClass)                                                            \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        return runAppTest<TestClass>(argc, argv);                                                  \
    }
