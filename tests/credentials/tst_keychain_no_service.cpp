#include "credentials/keychain_class.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>

namespace {

const char* const attemptOption = "--attempt";

void print(const QString& line)
{
    QTextStream(stdout) << line << '\n';
}

/// Tries every operation once and prints how it ended. Runs in a process of its own, since the bus
/// connection of a process never changes and a hanging call has to be ended from outside.
int attempt()
{
    KeyChainClass keyChain("ledora.test", nullptr);
    QString value = "kept";
    QString error;
    print(keyChain.readKeySync("key", value, error) ? "read" : "read failed: " + error);
    print("value: " + value);
    error.clear();
    print(keyChain.writeKeySync("key", "text", error) ? "written" : "write failed: " + error);
    error.clear();
    print(keyChain.deleteKeySync("key", error) ? "deleted" : "delete failed: " + error);

    QSignalSpy failed(&keyChain, &KeyChainClass::error);
    keyChain.readKey("key");
    keyChain.writeKey("key", "text");
    keyChain.deleteKey("key");
    while (failed.size() < 3 && failed.wait(20000)) { }
    for (const QVariantList& arguments : std::as_const(failed))
        print(arguments.first().toString());
    print("end");
    return 0;
}

/// A bus on which nobody answers for the secret store, and nobody can be started.
class EmptyBus
{
public:
    ~EmptyBus()
    {
        m_daemon.terminate();
        if (!m_daemon.waitForFinished(10000))
            m_daemon.kill();
        m_daemon.waitForFinished(10000);
    }

    /// \return  its address, empty if it does not start
    QString start()
    {
        QFile config(m_folder.filePath("bus.conf"));
        if (!config.open(QIODevice::WriteOnly))
            return {};
        config.write(QString("<busconfig><type>session</type><listen>unix:path=%1</listen>"
                             "<auth>EXTERNAL</auth><policy context=\"default\">"
                             "<allow send_destination=\"*\" eavesdrop=\"true\"/>"
                             "<allow eavesdrop=\"true\"/><allow own=\"*\"/>"
                             "</policy></busconfig>")
                         .arg(m_folder.filePath("bus"))
                         .toUtf8());
        config.close();
        m_daemon.start(
            "dbus-daemon",
            {"--config-file=" + config.fileName(), "--nofork", "--nopidfile", "--print-address"});
        while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead(20000)) { }
        return QString::fromUtf8(m_daemon.readLine()).trimmed();
    }

private:
    QTemporaryDir m_folder {"/tmp/emptybus.XXXXXX"};
    QProcess m_daemon;
};

} // namespace

class tst_keychain_no_service : public QObject
{
    Q_OBJECT

private slots:
    void failsWithAMessage_data();
    void failsWithAMessage();
};

void tst_keychain_no_service::failsWithAMessage_data()
{
    QTest::addColumn<bool>("bus");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("message");

    QTest::newRow("bus without a secret service")
        << true << ""
        << "The name org.freedesktop.secrets was not provided by any .service files";
    QTest::newRow("nothing at the bus's address") << false << "unix:path=/nonexistent/bus"
                                                  << "Could not connect: No such file or directory";
    QTest::newRow("no address of a bus") << false << ""
                                         << "Cannot autolaunch D-Bus without X11";
}

void tst_keychain_no_service::failsWithAMessage()
{
    QFETCH(bool, bus);
    QFETCH(QString, address);
    QFETCH(QString, message);

    EmptyBus emptyBus;
    if (bus) {
        address = emptyBus.start();
        QVERIFY2(!address.isEmpty(), "dbus-daemon does not start");
    }

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // The desktop's name decides which kind of store is asked.
    for (const char* name : {"XDG_CURRENT_DESKTOP", "DESKTOP_SESSION", "GNOME_DESKTOP_SESSION_ID",
                             "KDE_FULL_SESSION", "KDE_SESSION_VERSION", "DISPLAY"})
        environment.remove(name);
    environment.remove("DBUS_SESSION_BUS_ADDRESS");
    if (!address.isEmpty())
        environment.insert("DBUS_SESSION_BUS_ADDRESS", address);

    QProcess attempting;
    attempting.setProcessEnvironment(environment);
    attempting.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    attempting.start(QCoreApplication::applicationFilePath(), {attemptOption});
    const bool ended = attempting.waitForFinished(100000);
    if (!ended) {
        attempting.kill();
        attempting.waitForFinished();
    }
    const QStringList lines =
        QString::fromUtf8(attempting.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
    QVERIFY2(ended, qPrintable("hangs after: " + lines.join(" | ")));

    const QStringList starts {
        "read failed: ",     "value: kept",        "write failed: ",      "delete failed: ",
        "Read key failed: ", "Write key failed: ", "Delete key failed: ", "end"};
    QCOMPARE(lines.size(), starts.size());
    for (int i = 0; i < lines.size(); ++i) {
        QVERIFY2(lines[i].startsWith(starts[i]), qPrintable(lines[i]));
        if (starts[i].endsWith(' '))
            QVERIFY2(lines[i].mid(starts[i].size()).contains(message), qPrintable(lines[i]));
    }
}

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    if (argc > 1 && qstrcmp(argv[1], attemptOption) == 0)
        return attempt();
    tst_keychain_no_service test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_keychain_no_service.moc"
