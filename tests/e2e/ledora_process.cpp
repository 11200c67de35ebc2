#include "tests/e2e/ledora_process.h"

#include "tests/e2e/desktop.h"

#include <QEventLoop>
#include <QTimer>

LedoraProcess::LedoraProcess()
{
    m_process.setProgram(QStringLiteral(LEDORA_BIN_DIR "/ledora"));
    m_process.setProcessEnvironment(desktop::environment());
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    QObject::connect(&m_process, &QProcess::readyRead, &m_process,
                     [this] { m_output += m_process.readAll(); });
}

LedoraProcess::~LedoraProcess()
{
    if (!isRunning())
        return;
    m_process.kill();
    m_process.waitForFinished();
}

void LedoraProcess::setVariable(const QString& name, const QString& value)
{
    QProcessEnvironment environment = m_process.processEnvironment();
    environment.insert(name, value);
    m_process.setProcessEnvironment(environment);
}

void LedoraProcess::setFolder(const QString& folder)
{
    m_process.setWorkingDirectory(folder);
}

bool LedoraProcess::start(const QStringList& arguments)
{
    m_process.setArguments(arguments);
    m_process.start(QIODevice::ReadOnly);
    return m_process.waitForStarted();
}

qint64 LedoraProcess::pid() const
{
    return m_process.processId();
}

bool LedoraProcess::isRunning() const
{
    return m_process.state() != QProcess::NotRunning;
}

bool LedoraProcess::waitForEnd(int seconds)
{
    if (!isRunning())
        return true;
    QEventLoop loop;
    QObject::connect(&m_process, &QProcess::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(seconds * 1000, &loop, &QEventLoop::quit);
    loop.exec();
    return !isRunning();
}

bool LedoraProcess::hasEndedWell() const
{
    return !isRunning() && m_process.exitStatus() == QProcess::NormalExit
        && m_process.exitCode() == 0;
}

QString LedoraProcess::output() const
{
    return QString::fromUtf8(m_output);
}
