#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>

namespace {

const int limit = 90000;

struct Ended
{
    int status = -1;
    QString output;
    QString errors;
};

/// Runs a command to its end under the script, with `input` as its standard input.
Ended run(const QStringList& command, const QByteArray& input = QByteArray(),
          const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment())
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start("/bin/bash", QStringList(LEDORA_WITH_KEYRING) + command);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(limit)) {
        process.terminate();
        if (!process.waitForFinished(limit))
            process.kill();
        return {};
    }
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

/// The processes that know of a folder by their environment or command line.
QStringList processesAround(const QString& folder)
{
    QStringList found;
    const QStringList ids = QDir("/proc").entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& id : ids) {
        for (const char* part : {"environ", "cmdline"}) {
            QFile file(QString("/proc/%1/%2").arg(id, part));
            if (file.open(QIODevice::ReadOnly) && file.readAll().contains(folder.toUtf8())) {
                found << id;
                break;
            }
        }
    }
    return found;
}

} // namespace

class tst_with_keyring : public QObject
{
    Q_OBJECT

private slots:
    void passesTheStatusOn_data();
    void passesTheStatusOn();
    void passesInputAndArgumentsOn();
    void leavesTheCommandItsFolders();
    void startsEmptyAndTakesSecrets();
    void runsSideBySide();
    void leavesNothingBehind_data();
    void leavesNothingBehind();
    void failsLoudlyWithoutItsTools();
    void failsLoudlyWithoutACommand();
};

void tst_with_keyring::passesTheStatusOn_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::addColumn<int>("status");

    QTest::newRow("success") << QStringList {"true"} << 0;
    QTest::newRow("failure") << QStringList {"sh", "-c", "exit 7"} << 7;
    QTest::newRow("skipped test") << QStringList {"sh", "-c", "exit 77"} << 77;
    QTest::newRow("killed") << QStringList {"sh", "-c", "kill -KILL $$"} << 128 + 9;
    QTest::newRow("no such command") << QStringList {"/nonexistent/command"} << 127;
}

void tst_with_keyring::passesTheStatusOn()
{
    QFETCH(QStringList, command);
    QTEST(run(command).status, "status");
}

void tst_with_keyring::passesInputAndArgumentsOn()
{
    const Ended ended =
        run({"sh", "-c", "cat; printf '%s|' \"$@\"", "sh", "a b", "", "$c"}, "input,");
    QCOMPARE(ended.output, "input,a b||$c|");
}

void tst_with_keyring::leavesTheCommandItsFolders()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QStringList names {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"};
    QString expected;
    for (const QString& name : names) {
        environment.insert(name, "/nonexistent/" + name);
        expected += name + "=/nonexistent/" + name + '\n';
    }
    const Ended ended = run({"env"}, QByteArray(), environment);
    QCOMPARE(ended.status, 0);
    for (const QString& line : expected.split('\n'))
        QVERIFY2(ended.output.split('\n').contains(line), qPrintable(line));
    QVERIFY(!ended.output.contains("DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent"));
}

void tst_with_keyring::startsEmptyAndTakesSecrets()
{
    const Ended ended = run({"sh", "-c",
                             "secret-tool lookup with-keyring ready; echo \"found $?\";"
                             "printf secret | secret-tool store --label=x k v &&"
                             "secret-tool lookup k v"});
    QCOMPARE(ended.output, "found 1\nsecret");
    QCOMPARE(ended.status, 0);
}

void tst_with_keyring::runsSideBySide()
{
    // Both store first, and only then does either read.
    QProcess processes[2];
    for (QProcess& process : processes) {
        process.start(LEDORA_WITH_KEYRING,
                      {"sh", "-c",
                       "read -r secret; printf %s \"$secret\" | secret-tool store --label=x k v;"
                       "echo stored; read -r go; secret-tool lookup k v"});
    }
    processes[0].write("first\n");
    processes[1].write("second\n");
    for (QProcess& process : processes) {
        while (!process.canReadLine() && process.waitForReadyRead(limit)) { }
        QCOMPARE(process.readLine(), "stored\n");
    }
    for (QProcess& process : processes) {
        process.write("go\n");
        QVERIFY(process.waitForFinished(limit));
    }
    QCOMPARE(processes[0].readAllStandardOutput(), "first");
    QCOMPARE(processes[1].readAllStandardOutput(), "second");
}

void tst_with_keyring::leavesNothingBehind_data()
{
    QTest::addColumn<bool>("terminated");
    QTest::addColumn<int>("status");

    QTest::newRow("after the command's end") << false << 3;
    QTest::newRow("after TERM") << true << 128 + 15;
}

void tst_with_keyring::leavesNothingBehind()
{
    QFETCH(bool, terminated);
    QFETCH(int, status);

    QProcess process;
    process.start(LEDORA_WITH_KEYRING,
                  {"sh", "-c", "echo \"$DBUS_SESSION_BUS_ADDRESS\"; read -r line; exit 3"});
    while (!process.canReadLine() && process.waitForReadyRead(limit)) { }
    const QString address = QString::fromUtf8(process.readLine());
    const QString folder = address.section("path=", 1).section("/bus", 0, 0);
    QVERIFY2(QDir(folder + "/data").exists(), qPrintable(address));
    // The bus, the keyring and the command.
    QVERIFY(processesAround(folder).size() >= 3);

    if (terminated)
        process.terminate();
    else
        process.write("\n");
    QVERIFY(process.waitForFinished(limit));
    QCOMPARE(process.exitCode(), status);
    QCOMPARE(processesAround(folder), QStringList());
    QVERIFY(!QDir(folder).exists());
}

void tst_with_keyring::failsLoudlyWithoutItsTools()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("PATH", "/nonexistent");
    const Ended ended = run({"/bin/true"}, QByteArray(), environment);
    QCOMPARE(ended.status, 125);
    QVERIFY2(ended.errors.contains("with-keyring: dbus-daemon is missing"),
             qPrintable(ended.errors));
}

void tst_with_keyring::failsLoudlyWithoutACommand()
{
    const Ended ended = run({});
    QCOMPARE(ended.status, 125);
    QVERIFY2(ended.errors.contains("usage"), qPrintable(ended.errors));
}

QTEST_GUILESS_MAIN(tst_with_keyring)

#include "tst_with_keyring.moc"
