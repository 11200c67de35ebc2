#include "tests/proof/fault_trial.h"

#include "tests/e2e/close_request.h"
#include "tests/e2e/run_setup.h"
#include "tests/proof/fault_shop.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

namespace proof {

using namespace std::chrono_literals;

namespace {

constexpr int kAttempts = 9;
// The page after it is asked for with the next tick, up to a second later. The attempts of a page
// last longer than either.
constexpr auto kOutage = 2000ms;
// The first tick comes a second after the click.
constexpr auto kOutageFromTheStart = 4000ms;
const QString kMainWindow = QStringLiteral("MainWindow");
const QString kQuestion = QStringLiteral("Beendet:");
const QString kError = QStringLiteral("Fehler:");

} // namespace

FaultTrial::FaultTrial(const Plan& plan, QByteArray other, const Leavings* reference)
    : m_plan(plan)
    , m_other(std::move(other))
    , m_reference(reference)
    , m_server([this](const WireRequest& request) { return answer(request); })
{
}

bool FaultTrial::byName() const
{
    return m_plan.fault->kind == FaultKind::RedirectWww;
}

QString FaultTrial::address() const
{
    // A name with and without www can't be had on loopback, but from a proxy.
    return byName() ? QStringLiteral("http://laden.example")
                    : QStringLiteral("http://127.0.0.1:%1").arg(m_server.port());
}

QByteArray FaultTrial::location(const QByteArray& target) const
{
    switch (m_plan.fault->kind) {
    case FaultKind::RedirectWww:
        return "http://www.laden.example" + target;
    case FaultKind::RedirectHttps:
        return address().replace(QLatin1String("http:"), QLatin1String("https:")).toUtf8() + target;
    case FaultKind::RedirectOther:
        return m_other + target;
    default:
        return address().toUtf8() + "/moved" + target;
    }
}

bool FaultTrial::befalls(const WireRequest& request)
{
    // Where a redirect has led to is not spoilt again.
    if (!m_plan.phase || request.host.startsWith("www.") || request.target.startsWith("/moved")
        || !request.target.contains(m_plan.phase->part))
        return false;
    return m_plan.isPermanent || !m_isBefallen;
}

void FaultTrial::leave(std::chrono::milliseconds outage)
{
    m_isBefallen = true;
    m_server.goAway();
    if (!m_plan.isPermanent)
        QTimer::singleShot(outage, &m_server, [this] {
            if (!m_server.comeBack())
                fail(QStringLiteral("The shop's port has been taken."));
        });
}

WireAnswer FaultTrial::answer(const WireRequest& request)
{
    const QByteArray body = shopAnswer(request.target, address().toUtf8());
    if (m_plan.phase && m_plan.fault->kind == FaultKind::Refused) {
        const QByteArray before = m_plan.phase->before;
        if (!before.isEmpty() && !m_isBefallen && request.target.contains(before))
            leave(kOutage);
        return wholeAnswer(body);
    }
    if (!befalls(request))
        return wholeAnswer(body);
    m_isBefallen = true;
    if (m_plan.fault->closedAfterSeconds >= 0 && m_untilClose.isForever())
        m_untilClose = QDeadlineTimer(std::chrono::seconds {m_plan.fault->closedAfterSeconds});
    return spoiltAnswer(*m_plan.fault, body, location(request.target));
}

bool FaultTrial::listen(Addresses& addresses)
{
    // Meanwhile somebody else may have got it.
    return (!addresses.ports.isEmpty()
            && m_server.listen(QHostAddress::LocalHost, addresses.ports.takeFirst()))
        || m_server.listen();
}

bool FaultTrial::storeSecrets(Addresses& addresses) const
{
    if (addresses.stored.contains(address()))
        return true;
    addresses.stored.insert(address());
    return run_setup::storeSecrets(address());
}

void FaultTrial::giveTime()
{
    // The usual, many times over, since the machine may be busy with others.
    constexpr auto usual = 180s;
    const int times = m_plan.isPermanent ? kAttempts + 1 : 1;
    m_limit =
        QDeadlineTimer(usual
                       + std::chrono::seconds {m_plan.fault->secondsARequest * times
                                               + std::max(0, m_plan.fault->closedAfterSeconds)});
}

bool FaultTrial::start(Addresses& addresses)
{
    giveTime();
    if (!listen(addresses) || !storeSecrets(addresses) || !startProgram()) {
        fail(QStringLiteral("The shop or the program does not start."));
        return false;
    }
    return true;
}

bool FaultTrial::startProgram()
{
    auto options = run_setup::completeOptions(address());
    options.insert(QStringLiteral("germanized_use"), true);
    options.insert(QStringLiteral("germanized_pdf_folder"), m_folder.pdfFolder());
    QDir().mkpath(m_folder.pdfFolder());
    m_folder.writeHostFile();
    m_folder.saveOptions(options);
    const QString home = m_folder.path(QStringLiteral("home"));
    QDir().mkpath(home);
    m_program.setFolder(home);
    m_program.setVariable(QStringLiteral("HOME"), home);
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
        m_program.setVariable(QLatin1String(name), home);
    m_program.setVariable(QStringLiteral("http_proxy"),
                          byName() ? QStringLiteral("http://127.0.0.1:%1").arg(port()) : QString());
    return m_program.start({m_folder.hostFile()});
}

void FaultTrial::step(const QList<ScreenWindow>& shown, ScreenReader& reader)
{
    if (m_outcome != Open)
        return;
    if (!m_program.isRunning()) {
        end();
        return;
    }
    if (m_limit.hasExpired()) {
        fail(QStringLiteral("It did not end in time."));
        return;
    }
    std::optional<ScreenWindow> main;
    for (const ScreenWindow& window : shown) {
        if (window.pid != m_program.pid())
            continue;
        if (window.title != kMainWindow) {
            if (!answerBox(window, reader))
                fail(QStringLiteral("An unexpected box: ") + window.title);
            return;
        }
        main = window;
    }
    if (!main)
        return;
    if (!m_isPressed)
        begin(*main, reader);
    else if (isDone() || m_untilClose.hasExpired())
        close(*main);
}

bool FaultTrial::answerBox(const ScreenWindow& box, ScreenReader& reader)
{
    if (box.title != kQuestion && box.title != kError)
        return false;
    // A pressed button is not let go at once, so the box may still be seen when it is answered.
    QDeadlineTimer& touched = m_touched[box.id];
    if (!touched.hasExpired())
        return true;
    const bool isError = box.title == kError;
    if (isError && !readError(reader))
        return true;
    const bool isYes = m_plan.isAccepted && m_untilClose.isForever();
    const QString button = isError ? QStringLiteral("OK")
        : isYes                    ? QStringLiteral("Yes")
                                   : QStringLiteral("No");
    if (reader.press(m_program.pid(), box.title, {button, QLatin1Char('&') + button})) {
        touched = QDeadlineTimer(3s);
        ++(isError ? m_boxes : m_questions);
    }
    return true;
}

/// \return  true if the box tells what it has to; false too if its text is not there yet
bool FaultTrial::readError(ScreenReader& reader)
{
    const QString said =
        reader.text(m_program.pid(), kError, QStringLiteral("nach 3 Versuchen fehlgeschlagen"));
    if (said.isEmpty())
        return false;
    const int page = m_plan.phase ? m_plan.phase->page : 0;
    if (said.contains(
            QStringLiteral("Export auf Seite %1 nach 3 Versuchen fehlgeschlagen").arg(page)))
        return true;
    fail(QStringLiteral("The box says: ") + said);
    return false;
}

void FaultTrial::begin(const ScreenWindow& main, ScreenReader& reader)
{
    QDeadlineTimer& touched = m_touched[main.id];
    if (!touched.hasExpired())
        return;
    touched = QDeadlineTimer(500ms);
    if (!reader.press(m_program.pid(), kMainWindow, {QStringLiteral("Daten vom Server abrufen")}))
        return;
    m_isPressed = true;
    if (!m_plan.phase || m_plan.fault->kind != FaultKind::Refused || *m_plan.phase->before)
        return;
    leave(kOutageFromTheStart);
}

/// True if the user sees the run at its end and has nothing left but to close the window.
bool FaultTrial::isDone() const
{
    if (m_boxes > 0)
        return QFile::exists(m_folder.exportFile()) && m_folder.exported().isEmpty();
    return m_questions > 0 && !m_plan.isAccepted && !m_reference->exported.isEmpty()
        && leavings().exported == m_reference->exported;
}

void FaultTrial::close(const ScreenWindow& main)
{
    m_wasDone = m_wasDone || isDone();
    // A box that comes up in between swallows the request.
    if (!m_untilCloseAgain.hasExpired())
        return;
    m_untilCloseAgain = QDeadlineTimer(5s);
    sendCloseRequest(main.id);
}

Leavings FaultTrial::leavings() const
{
    Leavings left;
    left.exported = m_folder.exported();
    left.exported.replace(address().toUtf8(), "SHOP")
        .replace(m_folder.pdfFolder().toUtf8(), "PDF_FOLDER");
    const QDir folder(m_folder.pdfFolder());
    const QStringList names = folder.entryList(QDir::Files);
    for (const QString& name : names) {
        QFile file(folder.filePath(name));
        if (file.open(QIODevice::ReadOnly))
            left.invoices.insert(name, file.readAll());
    }
    return left;
}

bool FaultTrial::areInvoicesWhole(bool all) const
{
    const QMap<QString, QByteArray> files = leavings().invoices;
    if (all)
        return files == m_reference->invoices;
    for (auto it = files.cbegin(); it != files.cend(); ++it) {
        if (m_reference->invoices.value(it.key()) != it.value())
            return false;
    }
    return true;
}

FaultTrial::Outcome FaultTrial::result()
{
    const bool isThere = QFile::exists(m_folder.exportFile());
    const bool isHandedOver = m_plan.isAccepted && m_questions > 0;
    if (!m_untilClose.isForever())
        return !isThere && areInvoicesWhole(false) ? Closed : Failed;
    if (m_boxes > 0) {
        // Handed over, the file is the host's; closed, it is removed.
        const bool isLeftEmpty =
            isHandedOver ? isThere && m_folder.exported().isEmpty() : m_wasDone && !isThere;
        return m_boxes == 1 && isLeftEmpty && areInvoicesWhole(false) ? Emptied : Failed;
    }
    const bool isWhole =
        isHandedOver ? leavings().exported == m_reference->exported : m_wasDone && !isThere;
    return m_questions > 0 && isWhole && areInvoicesWhole(true) ? Whole : Failed;
}

void FaultTrial::end()
{
    if (!m_plan.phase) {
        m_outcome = m_program.hasEndedWell() && m_questions == 1 && m_boxes == 0 ? Whole : Failed;
        return;
    }
    if (m_reference->exported.isEmpty())
        return; // not known yet
    if (!m_program.hasEndedWell()) {
        fail(QStringLiteral("The program ended badly: ") + m_program.output());
        return;
    }
    m_outcome = result();
    if (m_outcome == Failed)
        fail(QStringLiteral("%1 questions, %2 boxes, export of %3 bytes, seen at its end: %4")
                 .arg(m_questions)
                 .arg(m_boxes)
                 .arg(QFile::exists(m_folder.exportFile()) ? m_folder.exported().size() : -1)
                 .arg(m_wasDone));
}

void FaultTrial::fail(const QString& problem)
{
    m_outcome = Failed;
    m_problem = problem;
}

} // namespace proof
