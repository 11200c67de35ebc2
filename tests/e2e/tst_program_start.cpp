#include "tests/e2e/desktop.h"
#include "tests/e2e/ledora_process.h"
#include "tests/e2e/run_setup.h"
#include "tests/support/start_folder.h"

#include <QCoreApplication>
#include <QDir>
#include <QtTest>

namespace {

const QString noHostFile = QStringLiteral("Die Konfigurationsdatei wurde nicht gefunden\\.");
const QString mainWindow = QStringLiteral("MainWindow");
const QString fatalTitle = QStringLiteral("Fehler:");

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("A file of the test can't be written.");
}

} // namespace

/// How a host starts the program.
class tst_program_start : public QObject
{
    Q_OBJECT

private slots:
    void endsWithoutItsHostFile_data();
    void endsWithoutItsHostFile();
    void opensTheDefaultFileWithoutAnArgument();
    void opensAFileByItsPath_data();
    void opensAFileByItsPath();
    void removesTheOldExportBeforeTheUserActs();
    void opensWithoutASecretService();
    void showsAWindowThatCanBeMadeFullSize();
};

void tst_program_start::endsWithoutItsHostFile_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("key");
    QTest::newRow("no argument") << QStringList() << QStringLiteral("Return");
    QTest::newRow("no such file") << QStringList(QStringLiteral("/nowhere/host.txt"))
                                  << QStringLiteral("Escape");
    QTest::newRow("an empty argument") << QStringList(QString()) << QStringLiteral("Return");
    QTest::newRow("quotes alone") << QStringList(QStringLiteral(" \"\" "))
                                  << QStringLiteral("Return");
}

void tst_program_start::endsWithoutItsHostFile()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, key);
    LedoraProcess program;
    QVERIFY(program.start(arguments));
    QCOMPARE(desktop::waitForWindow(program.pid(), {fatalTitle, mainWindow}), fatalTitle);
    QVERIFY(!desktop::waitForText(program.pid(), noHostFile).isEmpty());
    QVERIFY(!desktop::isShown(program.pid(), QStringLiteral("^MainWindow$")));
    QVERIFY(
        desktop::key(desktop::waitForWindowId(program.pid(), QStringLiteral("^Fehler:$")), key));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
}

void tst_program_start::opensTheDefaultFileWithoutAnArgument()
{
    // On this system the default path is relative to the folder the program is started in.
    const StartFolder folder;
    QVERIFY(QDir(folder.path(QString())).mkpath(QStringLiteral("c:/test")));
    writeFile(folder.path(QStringLiteral("c:/test/wooexport-input.txt")),
              folder.hostLines().join(QLatin1Char('\n')).toUtf8());
    writeFile(folder.exportFile(), "old");
    LedoraProcess program;
    program.setFolder(folder.path(QString()));
    QVERIFY(program.start({}));
    QCOMPARE(desktop::waitForWindow(program.pid(), {fatalTitle, mainWindow}), mainWindow);
    QVERIFY(!QFile::exists(folder.exportFile()));
}

void tst_program_start::opensAFileByItsPath_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("argument");
    QTest::newRow("plain") << QStringLiteral("host.txt") << QStringLiteral("%1");
    QTest::newRow("a blank in it, quoted")
        << QStringLiteral("a b/ho st.txt") << QStringLiteral("\"%1\"");
    QTest::newRow("a blank in it, not quoted")
        << QStringLiteral("a b/ho st.txt") << QStringLiteral("%1");
    QTest::newRow("blanks around the quotes")
        << QStringLiteral("host.txt") << QStringLiteral("  \"%1\" ");
    QTest::newRow("umlauts") << QStringLiteral("für/Büro.txt") << QStringLiteral("%1");
}

void tst_program_start::opensAFileByItsPath()
{
    QFETCH(QString, name);
    QFETCH(QString, argument);
    const StartFolder folder;
    const QString path = folder.path(name);
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    writeFile(path, folder.hostLines().join(QLatin1String("\r\n")).toUtf8());
    // That it goes shows that this file was read, and no other.
    writeFile(folder.exportFile(), "old");
    LedoraProcess program;
    QVERIFY(program.start({argument.arg(path), QStringLiteral("/ignored/host.txt")}));
    QCOMPARE(desktop::waitForWindow(program.pid(), {fatalTitle, mainWindow}), mainWindow);
    QVERIFY(!QFile::exists(folder.exportFile()));
}

void tst_program_start::removesTheOldExportBeforeTheUserActs()
{
    const StartFolder folder;
    folder.writeHostFile();
    writeFile(folder.exportFile(), "old");
    // Two boxes ask for attention before the window, and the export is gone already.
    folder.saveOptions(run_setup::completeOptions(QStringLiteral("https://unknown.example")));
    LedoraProcess program;
    QVERIFY(program.start({folder.hostFile()}));
    const QString title = QStringLiteral("Fehler beim Entschlüsseln:");
    QCOMPARE(desktop::waitForWindow(program.pid(), {title, mainWindow}), title);
    QVERIFY(!QFile::exists(folder.exportFile()));
}

void tst_program_start::opensWithoutASecretService()
{
    const StartFolder folder;
    folder.writeHostFile();
    folder.saveOptions(run_setup::completeOptions(QStringLiteral("https://shop.example")));
    LedoraProcess program;
    program.setVariable(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                        QStringLiteral("unix:path=/nonexistent"));
    QVERIFY(program.start({folder.hostFile()}));
    // Without the bus no screen reader sees the boxes; the X server knows them.
    QStringList seen;
    for (int box = 0; box < 2; ++box) {
        QStringList boxes;
        QTRY_VERIFY_WITH_TIMEOUT(
            (boxes = desktop::windows(program.pid(), QStringLiteral("^Fehler beim Entschl"))).size()
                    == 1
                && !seen.contains(boxes.first()),
            30000);
        seen += boxes;
        QVERIFY(!desktop::isShown(program.pid(), QStringLiteral("^MainWindow$")));
        QVERIFY(desktop::closeWindow(boxes.first()));
        QTRY_VERIFY_WITH_TIMEOUT(
            !desktop::windows(program.pid(), QStringLiteral("^Fehler")).contains(seen.last()),
            30000);
    }
    QTRY_VERIFY_WITH_TIMEOUT(desktop::isShown(program.pid(), QStringLiteral("^MainWindow$")),
                             30000);
    QVERIFY(!desktop::isShown(program.pid(), QStringLiteral("^Fehler")));
    QVERIFY(program.isRunning());
}

void tst_program_start::showsAWindowThatCanBeMadeFullSize()
{
    const StartFolder folder;
    folder.writeHostFile();
    LedoraProcess program;
    QVERIFY(program.start({folder.hostFile()}));
    QCOMPARE(desktop::waitForWindow(program.pid(), {fatalTitle, mainWindow}), mainWindow);
    const QString window = desktop::waitForWindowId(program.pid(), QStringLiteral("^MainWindow$"));
    QVERIFY(!window.isEmpty());
    const desktop::Outcome properties =
        desktop::run(QStringLiteral("xprop"),
                     {QStringLiteral("-id"), window, QStringLiteral("_NET_WM_ALLOWED_ACTIONS")});
    for (const char* action : {"_MAXIMIZE_HORZ", "_MINIMIZE", "_CLOSE"})
        QVERIFY2(properties.output.contains(QLatin1String(action)), action);
}

int main(int argc, char** argv)
{
    desktop::enterSession(argv);
    QCoreApplication application(argc, argv);
    tst_program_start test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_program_start.moc"
