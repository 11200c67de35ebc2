#include "tests/proof/kill_stand.h"

#include "form/mod_form_qt.h"
#include "tests/e2e/desktop.h"
#include "tests/e2e/run_setup.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <csignal>
#include <utility>

namespace proof {

namespace {

const QString mainTitle = QStringLiteral("MainWindow");
const QString questionTitle = QStringLiteral("Beendet:");
const QString errorTitle = QStringLiteral("Fehler:");

} // namespace

RunStand::RunStand(demo_shop::ShopServer::Handler handler)
    : m_shop(std::move(handler))
{
    if (!m_shop.listen())
        qFatal("The shop can't listen.");
    m_process.setProcessEnvironment(desktop::environment());
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    QObject::connect(&m_process, &QProcess::readyRead, &m_process,
                     [this] { m_output += m_process.readAll(); });
    QObject::connect(&m_process, &QProcess::finished, &m_process, [this] {
        // Killed while the start button is being pressed, it is still one that starts.
        if (m_state == Starting && !wasKilled()) {
            m_state = Stuck;
            m_problem = QStringLiteral("ended before its window came up: ") + output();
        } else if (m_state != Stuck) {
            m_state = Ended;
        }
    });
}

RunStand::~RunStand()
{
    m_process.disconnect();
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished();
}

QMap<QString, QVariant> RunStand::settings(const QString& address, const StartFolder& folder)
{
    auto options = run_setup::completeOptions(address);
    options.insert(QStringLiteral("germanized_use"), true);
    // Else a run after another asks the shop for less.
    options.insert(QStringLiteral("germanized_overwrite_pdf"), true);
    options.insert(QStringLiteral("germanized_pdf_folder"), folder.pdfFolder());
    return options;
}

bool RunStand::layDown(const QString& address)
{
    m_problem = QStringLiteral("the secret store refuses");
    const QDir dir(m_folder.path(QStringLiteral(".")));
    const QStringList left = dir.entryList(QDir::Files | QDir::Hidden);
    for (const QString& name : left)
        QFile::remove(dir.filePath(name));
    QDir(m_folder.pdfFolder()).removeRecursively();
    QDir().mkpath(m_folder.pdfFolder());
    m_folder.writeHostFile();
    m_folder.saveOptions(settings(address, m_folder));
    return run_setup::storeSecrets(address);
}

bool RunStand::start()
{
    m_output.clear();
    m_problem.clear();
    m_box.clear();
    m_window = 0;
    m_state = Starting;
    QStringList words = m_wrapper;
    words << QStringLiteral(LEDORA_BIN_DIR "/ledora") << m_folder.hostFile();
    m_process.setProgram(words.takeFirst());
    m_process.setArguments(words);
    m_process.start(QIODevice::ReadOnly);
    if (m_process.waitForStarted())
        return true;
    m_problem = QStringLiteral("can't be started: ") + m_process.errorString();
    m_state = Stuck;
    return false;
}

bool RunStand::hasEndedWell() const
{
    return m_state == Ended && m_process.exitStatus() == QProcess::NormalExit
        && m_process.exitCode() == 0;
}

bool RunStand::wasKilled() const
{
    return m_process.state() == QProcess::NotRunning
        && m_process.exitStatus() == QProcess::CrashExit && m_process.exitCode() == SIGKILL;
}

void RunStand::closeWindow()
{
    desktop::closeWindow(QString::number(m_window));
}

void RunStand::takeBox(const QString& title, ScreenReader& reader)
{
    if (title == questionTitle) {
        if (reader.press(pid(), title, {QStringLiteral("Yes"), QStringLiteral("&Yes")})
            && m_state == Running)
            m_state = Answered;
    } else if (title == errorTitle && m_state == Running) {
        if (m_box.isEmpty())
            m_box = reader.text(pid(), title, QStringLiteral("Export auf Seite"));
        if (!m_box.isEmpty()
            && reader.press(pid(), title, {QStringLiteral("OK"), QStringLiteral("&OK")}))
            m_state = Refused;
    } else if (m_state == Starting || m_state == Running) {
        m_problem = QStringLiteral("shows ") + title;
        m_state = Stuck;
    }
}

void RunStand::step(const QList<ScreenWindow>& shown, ScreenReader& reader)
{
    if (m_state != Starting && m_state != Running)
        return;
    for (const ScreenWindow& window : shown) {
        if (window.pid != pid() || window.title == mainTitle)
            continue;
        takeBox(window.title, reader);
        return;
    }
    for (const ScreenWindow& window : shown) {
        if (m_state != Starting || window.pid != pid())
            continue;
        m_window = window.id;
        if (reader.press(pid(), mainTitle, {QStringLiteral("Daten vom Server abrufen")})
            && m_state == Starting)
            m_state = Running;
    }
}

QByteArray RunStand::anonymous(QByteArray exported, const QString& address,
                               const StartFolder& folder)
{
    const bool isNull = exported.isNull();
    exported.replace(folder.path(QStringLiteral(".")).chopped(1).toUtf8(), "@FOLDER@/");
    exported.replace(address.toUtf8(), "@SHOP@");
    return isNull ? QByteArray() : exported.isNull() ? QByteArray("") : exported;
}

QByteArray RunStand::exported(const QString& address) const
{
    return anonymous(m_folder.exported(), address, m_folder);
}

QMap<QString, QVariant> RunStand::savedOptions()
{
    // A copy, since this process remembers what it has written under the file's own name.
    const QString copy = m_folder.path(QStringLiteral("seen%1").arg(++m_copies));
    QFile::copy(m_folder.iniFile(), copy);
    QMap<QString, QVariant> options;
    mod_form_qt::INFO::loadMapFromIniFile(&options, copy, QStringLiteral("options"), false,
                                          QString());
    QFile::remove(copy);
    return options;
}

bool stepUntil(const QList<RunStand*>& stands, ScreenReader& reader,
               const std::function<bool()>& done, int seconds)
{
    const QDeadlineTimer deadline(std::chrono::seconds {seconds});
    while (!done()) {
        if (deadline.hasExpired())
            return false;
        QEventLoop loop;
        QTimer::singleShot(std::chrono::milliseconds {30}, &loop, &QEventLoop::quit);
        loop.exec();
        const QList<ScreenWindow> shown = screenWindows();
        for (RunStand* stand : stands)
            stand->step(shown, reader);
    }
    return true;
}

} // namespace proof
