#pragma once

#include <QProcess>

/// The real program, running as a process of its own on the screen. It is ended with this object if
/// it still runs then.
class LedoraProcess
{
public:
    LedoraProcess();
    ~LedoraProcess();
    Q_DISABLE_COPY_MOVE(LedoraProcess)

    /// Sets a variable of the program's environment; to be called before start().
    void setVariable(const QString& name, const QString& value);
    /// Sets the folder the program is started in; to be called before start().
    void setFolder(const QString& folder);

    /// Starts the program. \return false if that failed
    bool start(const QStringList& arguments);
    qint64 pid() const;
    bool isRunning() const;

    /// Waits for the program's end while the event loop goes on. \return true if it ended in time
    bool waitForEnd(int seconds = 30);
    /// True if the program has ended of its own accord with status 0.
    bool hasEndedWell() const;
    /// Everything it said on standard output and standard error up to now.
    QString output() const;

private:
    QProcess m_process;
    QByteArray m_output;
};
