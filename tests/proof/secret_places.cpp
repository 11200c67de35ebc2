#include "tests/proof/secret_places.h"

#include "tests/app/secret_search.h"

#include <QDirIterator>
#include <QFile>
#include <QProcessEnvironment>
#include <QtTest>

#include <csignal>

namespace secret_places {

namespace {

// Long enough not to be met by accident.
constexpr qsizetype beginning = 14;

constexpr char busVariable[] = "DBUS_SESSION_BUS_ADDRESS";

// No service folders: nothing is ever started by asking for it.
constexpr char busConfig[] = R"(<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path=%1</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

void end(QProcess& process)
{
    process.terminate();
    if (process.waitForFinished(5000))
        return;
    process.kill();
    process.waitForFinished();
}

} // namespace

QStringList search(const QStringList& secrets, const QByteArray& bytes)
{
    QStringList found;
    const QByteArray unescaped = unescapedIni(bytes);
    // What an INI file calls "\xfc" is a letter, not a byte.
    const QByteArray letters = QString::fromLatin1(unescaped).toUtf8();
    const QByteArray decoded = QByteArray::fromPercentEncoding(bytes);
    for (const QString& secret : secrets) {
        // Without the signs at its end, which have escapes of their own, and from its middle on
        // too.
        for (const QString& part :
             {secret, secret.left(beginning), secret.mid(beginning, beginning)})
            for (const QByteArray& place : {bytes, unescaped, letters, decoded})
                found += waysToRead(part, place);
    }
    found.removeDuplicates();
    return found;
}

QByteArray iniText(const QString& text)
{
    QByteArray escaped;
    for (const QChar letter : text)
        escaped += "\\0" + QString(letter).toLatin1();
    return escaped;
}

QByteArray ofProcess(qint64 pid, const char* name)
{
    QFile file(QStringLiteral("/proc/%1/%2").arg(pid).arg(QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

desktop::Outcome shownTexts(qint64 pid)
{
    return desktop::run(QStringLiteral(LEDORA_SCRIPTS_DIR "/drive-window"),
                        {QStringLiteral("--pid"), QString::number(pid), QStringLiteral("texts")});
}

QMap<QString, QByteArray> filesBelow(const QString& folder)
{
    QMap<QString, QByteArray> files;
    QDirIterator it(folder, QDir::Files | QDir::Hidden | QDir::System,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile file(it.next());
        if (file.open(QIODevice::ReadOnly))
            files.insert(file.fileName(), file.readAll());
    }
    return files;
}

bool kill(qint64 pid)
{
    return pid > 0 && ::kill(static_cast<pid_t>(pid), SIGKILL) == 0;
}

BusWithoutSecrets::BusWithoutSecrets()
    : m_before(qgetenv(busVariable))
{
}

BusWithoutSecrets::~BusWithoutSecrets()
{
    qputenv(busVariable, m_before);
    end(m_accessibility);
    end(m_bus);
}

bool BusWithoutSecrets::start()
{
    const QString socket = m_folder.filePath(QStringLiteral("bus"));
    QFile config(m_folder.filePath(QStringLiteral("bus.conf")));
    if (!config.open(QIODevice::WriteOnly))
        return false;
    config.write(QString::fromLatin1(busConfig).arg(socket).toUtf8());
    config.close();
    m_bus.start(QStringLiteral("dbus-daemon"),
                {QStringLiteral("--config-file=") + config.fileName(), QStringLiteral("--nofork"),
                 QStringLiteral("--nopidfile"), QStringLiteral("--print-address=1")});
    // It tells its address once it listens there.
    if (!m_bus.waitForReadyRead(30000))
        return false;
    qputenv(busVariable, "unix:path=" + socket.toUtf8());

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder.path());
    environment.insert(QStringLiteral("GSETTINGS_BACKEND"), QStringLiteral("memory"));
    m_accessibility.setProcessEnvironment(environment);
    m_accessibility.start(QStringLiteral("/usr/libexec/at-spi-bus-launcher"),
                          {QStringLiteral("--launch-immediately")});
    return QTest::qWaitFor(
        [] {
            return desktop::run(QStringLiteral("dbus-send"),
                                {QStringLiteral("--session"), QStringLiteral("--print-reply"),
                                 QStringLiteral("--dest=org.a11y.Bus"),
                                 QStringLiteral("/org/a11y/bus"),
                                 QStringLiteral("org.a11y.Bus.GetAddress")})
                .ok;
        },
        30000);
}

} // namespace secret_places
