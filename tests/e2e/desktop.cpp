#include "tests/e2e/desktop.h"

#include "tests/e2e/close_request.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QProcess>
#include <QTimer>

#include <chrono>
#include <unistd.h>

namespace desktop {

namespace {

constexpr char inSession[] = "LEDORA_E2E_SESSION";
const QString alwaysOn = QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON");

QString script(const char* name)
{
    return QStringLiteral(LEDORA_SCRIPTS_DIR "/") + QLatin1String(name);
}

Outcome drive(qint64 pid, const QString& action, const QString& argument, int seconds)
{
    QStringList words {QStringLiteral("--pid"), QString::number(pid), QStringLiteral("--timeout"),
                       QString::number(seconds), action};
    if (!argument.isEmpty())
        words.append(argument);
    Outcome outcome = run(script("drive-window"), words, seconds + 30);
    if (!outcome.ok)
        qWarning("%s", qPrintable(outcome.problem));
    return outcome;
}

} // namespace

Outcome run(const QString& program, const QStringList& arguments, int seconds)
{
    QProcess process;
    QEventLoop loop;
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::errorOccurred, &loop, &QEventLoop::quit);
    QTimer::singleShot(seconds * 1000, &loop, &QEventLoop::quit);
    process.setProcessEnvironment(environment());
    process.start(program, arguments);
    if (process.state() != QProcess::NotRunning)
        loop.exec();
    if (process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished();
        return {false, {}, program + QStringLiteral(": did not end in time")};
    }
    const bool ok = process.error() == QProcess::UnknownError
        && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    return {ok, QString::fromUtf8(process.readAllStandardOutput()).trimmed(),
            QString::fromUtf8(process.readAllStandardError()).trimmed()};
}

QString waitForWindow(qint64 pid, const QStringList& titles, int seconds)
{
    return drive(pid, QStringLiteral("wait-window"), titles.join(QLatin1Char('|')), seconds).output;
}

QString waitForText(qint64 pid, const QString& pattern, int seconds)
{
    return drive(pid, QStringLiteral("wait-text"), pattern, seconds).output;
}

bool click(qint64 pid, const QString& name)
{
    // A mouse that stands on the button already does not move, and its moving is waited for.
    run(QStringLiteral("xdotool"),
        {QStringLiteral("mousemove"), QStringLiteral("0"), QStringLiteral("0")});
    return drive(pid, QStringLiteral("click"), name, 30).ok;
}

bool clickAgainTwice()
{
    return run(QStringLiteral("xdotool"),
               {QStringLiteral("click"), QStringLiteral("--repeat"), QStringLiteral("2"),
                QStringLiteral("--delay"), QStringLiteral("100"), QStringLiteral("1")})
        .ok;
}

bool key(const QString& window, const QString& name)
{
    return run(QStringLiteral("xdotool"),
               {QStringLiteral("windowactivate"), QStringLiteral("--sync"), window,
                QStringLiteral("key"), name},
               20)
        .ok;
}

bool key(const QString& name, int times)
{
    return run(QStringLiteral("xdotool"),
               {QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("30"),
                QStringLiteral("--repeat"), QString::number(times), name},
               20)
        .ok;
}

bool type(const QString& text)
{
    return run(QStringLiteral("xdotool"),
               {QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("20"), text})
        .ok;
}

bool retype(const QString& text)
{
    return key(QStringLiteral("ctrl+a")) && type(text);
}

QList<Field> fields(qint64 pid)
{
    QList<Field> list;
    const QStringList lines =
        drive(pid, QStringLiteral("fields"), {}, 30).output.split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        const QStringList parts = line.split(QLatin1Char('\t'));
        list.append({parts.value(0), parts.value(1), parts.value(2)});
    }
    return list;
}

QString content(const QList<Field>& fields, const QString& name)
{
    for (const Field& field : fields) {
        if (field.name == name)
            return field.content;
    }
    return {};
}

QStringList tabTo(qint64 pid, const QString& name)
{
    return drive(pid, QStringLiteral("tab-to"), name, 60)
        .output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QStringList tabOrder(qint64 pid)
{
    return drive(pid, QStringLiteral("tab-order"), {}, 90).output.split(QLatin1Char('\n'));
}

QStringList windows(qint64 pid, const QString& pattern)
{
    const QStringList search {QStringLiteral("search"),
                              QStringLiteral("--all"),
                              QStringLiteral("--onlyvisible"),
                              QStringLiteral("--pid"),
                              QString::number(pid),
                              QStringLiteral("--name"),
                              pattern};
    // Without a match the status is 1, which is no failure here. A window that goes while all are
    // being looked at makes the look worthless.
    Outcome found;
    do {
        found = run(QStringLiteral("xdotool"), search);
    } while (found.problem.contains(QLatin1String("BadWindow")));
    return found.output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QString waitForWindowId(qint64 pid, const QString& pattern, int seconds)
{
    // The program knows of its window before the X server shows it.
    const QDeadlineTimer deadline(std::chrono::seconds {seconds});
    QStringList found;
    do {
        found = windows(pid, pattern);
    } while (found.size() != 1 && !deadline.hasExpired());
    return found.size() == 1 ? found.first() : QString();
}

bool closeWindow(const QString& id)
{
    return !id.isEmpty() && sendCloseRequest(id.toULong());
}

bool isShown(qint64 pid, const QString& pattern)
{
    return !windows(pid, pattern).isEmpty();
}

void enterSession(char** argv)
{
    if (qEnvironmentVariableIsSet(inSession)) {
        // The windows of this process are nobody's to look at.
        qunsetenv(qPrintable(alwaysOn));
        return;
    }
    qputenv(inSession, "1");
    const QByteArray session = script("with-accessibility").toLocal8Bit();
    QList<QByteArray> words {session};
    for (char** word = argv; *word; ++word)
        words.append(*word);
    QList<char*> pointers;
    for (QByteArray& word : words)
        pointers.append(word.data());
    pointers.append(nullptr);
    ::execv(session.constData(), pointers.data());
    qFatal("%s can't be run.", session.constData());
}

QProcessEnvironment environment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(alwaysOn, QStringLiteral("1"));
    return environment;
}

} // namespace desktop
