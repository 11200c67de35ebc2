#include "tests/proof/reentrancy_road.h"

#include "app/globals.h"
#include "credentials/keychain_class.h"
#include "credentials/keychain_key.h"
#include "form/mod_form_qt.h"
#include "tests/proof/reentrancy_journal.h"

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QMessageBox>
#include <QThread>
#include <QTimer>

using mod_form_qt::INFO;

namespace proof {

namespace {

const int iNeverMs = 3600000;
const int iMostTicks = 300;
const int iMostLeaves = 8;

int level()
{
    return QThread::currentThread()->loopLevel();
}

QString nameOfRequest(const demo_shop::ShopRequest& request)
{
    const QString page = request.queryValue(QStringLiteral("page"));
    if (request.path.endsWith(QLatin1String("/taxes")))
        return QStringLiteral("request of taxes");
    if (request.path.endsWith(QLatin1String("/v3/orders")))
        return QLatin1String("request of orders, page ") + page;
    if (request.path.endsWith(QLatin1String("/invoices")))
        return QStringLiteral("request of invoices");
    if (request.path.endsWith(QLatin1String("/refunds")))
        return QStringLiteral("request of refunds");
    if (request.path.contains(QLatin1String("/products/")))
        return QStringLiteral("request of a product");
    return QStringLiteral("request of an invoice file");
}

/// Boxes of one title can tell different things.
QString nameOfDialog(const QDialog& dialog)
{
    const auto* box = qobject_cast<const QMessageBox*>(&dialog);
    if (!box)
        return QLatin1String("dialog ") + dialog.windowTitle();
    const QString title = box->windowTitle();
    if (title != QLatin1String("Fehler:"))
        return QLatin1String("box ") + title;
    const QString text = box->text();
    if (text.startsWith(QLatin1String("Export auf")))
        return QStringLiteral("box Fehler: failed run");
    return text.startsWith(QLatin1String("Die Datei"))
        ? QStringLiteral("box Fehler: file stays")
        : QStringLiteral("box Fehler: unfinished form");
}

} // namespace

Road::Road(FaultRun& run, const ReferenceExport& reference, Tally& tally, quint32 seed)
    : m_run(run)
    , m_reference(reference)
    , m_tally(tally)
    , m_dice(seed)
    , m_user(run.fixture, m_dice)
{
    Journal::begin(seed);
    qApp->installEventFilter(this);
    m_run.fixture.answers.whenShown(
        [this](QMessageBox& box) { m_run.fixture.answers.hold(box.windowTitle()); });
}

Road::~Road()
{
    m_run.fixture.answers.whenShown(nullptr);
    m_run.fixture.answers.release();
    m_run.fixture.shop.setFaultPlan({});
    m_run.fixture.window.reset();
    QDir(m_run.fixture.folder.exportFile()).removeRecursively();
    Journal::end();
}

RoadStart Road::draw(bool canFailForGood)
{
    RoadStart start;
    start.savedAddress = m_dice.chance(50);
    start.forgetSecrets = m_dice.chance(30);
    start.credentials = m_dice.chance(80);
    start.b2c = m_dice.chance(85);
    start.blockedExport = m_dice.chance(7);
    const int phase = m_dice.below(int(FaultRun::phases().size()));
    const int roll = m_dice.below(100);
    if (roll < 12) {
        start.faultPhase = phase;
        start.faults = 1;
    } else if (roll < 24 && canFailForGood) {
        start.faultPhase = phase;
        // All three passes fail, or the last of them only.
        start.failedPasses = m_dice.chance(70) ? 2 : 0;
        start.faults = 3 * (3 - start.failedPasses);
    }
    m_steps = 8 + m_dice.below(10);
    return start;
}

void Road::prepare(const RoadStart& start)
{
    RunFixture& fixture = m_run.fixture;
    fixture.answers.clear();
    fixture.shop.clearRequests();
    const QString url = fixture.shop.baseUrl();
    if (start.savedAddress && start.forgetSecrets) {
        KeyChainClass store(QStringLiteral("halverin_software.ledora.RestApi"), nullptr);
        QString error;
        for (const QString& key : {keyNameAPI, keyNameSECRET})
            store.deleteKeySync(makeRestKeychainKey(url, key), error);
    }
    QFile::remove(fixture.folder.exportFile());
    if (start.blockedExport)
        QDir().mkpath(fixture.folder.exportFile() + QStringLiteral("/besetzt"));
    QMap<QString, QVariant> options {
        {QStringLiteral("germanized_use"), true},
        {QStringLiteral("germanized_pdf_folder"), fixture.folder.pdfFolder()}};
    if (start.b2c)
        options.insert(QStringLiteral("b2c_handling"), QVariantList {1});
    if (start.savedAddress)
        options.insert(QStringLiteral("mainurl"), url);
    m_walking = true;
    // They fall into the loops in which the start waits for the secret store and shows its boxes.
    if (start.savedAddress && m_dice.chance(60))
        stepSoon();
    fixture.start(options);
    m_loops.clear();
    QDir().mkpath(fixture.folder.pdfFolder());
    if (start.credentials)
        fixture.enterCredentials();
    fixture.shop.setFaultPlan(
        [this](const demo_shop::ShopRequest& request) { return onRequest(request); });
}

QString Road::walk(bool canFailForGood)
{
    m_start = draw(canFailForGood);
    Journal::add(QStringLiteral("start: address %1, forget %2, credentials %3, b2c %4, blocked %5, "
                                "fault %6 x %7")
                     .arg(int(m_start.savedAddress))
                     .arg(int(m_start.forgetSecrets))
                     .arg(int(m_start.credentials))
                     .arg(int(m_start.b2c))
                     .arg(int(m_start.blockedExport))
                     .arg(m_start.faultPhase)
                     .arg(m_start.faults));
    prepare(m_start);
    // From here on as the program itself: one main loop, which its last window ends.
    QGuiApplication::setQuitOnLastWindowClosed(true);
    window()->show();
    observe();
    post([this] { drive(); });
    QApplication::exec();
    // Where the program would be gone by now, a second word to quit would end the next road.
    QCoreApplication::removePostedEvents(qApp, QEvent::MetaCall);
    QCoreApplication::removePostedEvents(qApp, QEvent::Quit);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    m_walking = false;
    checkEnd();
    ++m_tally.roads;
    return m_failure;
}

void Road::post(std::function<void()> action)
{
    QTimer::singleShot(0, this, std::move(action));
}

// --------------------------------------------------------------------------- the way

void Road::drive()
{
    if (!m_walking)
        return;
    post([this] { drive(); });
    // A second is long here; the ticks come by hand.
    if (window()->runTimer->isActive() && window()->runTimer->interval() != iNeverMs)
        window()->runTimer->setInterval(iNeverMs);
    if (level() > 1 || m_posted > 0 || window()->bBusy || window()->waitTimer->isActive())
        return;
    const bool ticksAreIdle = !window()->outFile.isOpen() && !window()->bFinished;
    if (window()->runTimer->isActive() && !ticksAreIdle
        && !window()->mainurl.toString().trimmed().isEmpty()) {
        if (m_steps > 0 && m_dice.chance(15)) {
            step();
            return;
        }
        if (++m_ticks > iMostTicks) {
            fail(QStringLiteral("the run does not end"));
            QCoreApplication::exit(1);
            return;
        }
        m_user.perform(Step::RunTick);
        return;
    }
    if (window()->isVisible())
        driveIdle();
}

void Road::driveIdle()
{
    if (m_accepted)
        return; // the window is about to close
    if (window()->mainurl.toString().trimmed().isEmpty() && m_dice.chance(60)) {
        Journal::add(QStringLiteral("address mended"));
        m_user.mendAddress();
        observe();
        return;
    }
    if (m_steps <= 0) {
        leave();
        return;
    }
    const bool first = m_runs == 0;
    if (first && !m_start.b2c
        && m_run.fixture.answers.titles().contains(QStringLiteral("B2C-Einstellung:"))) {
        m_user.chooseB2c();
        observe();
    }
    if (m_dice.chance(first ? 80 : 40) && m_user.can(Step::StartButton)) {
        // They fall into the loop in which saving waits for the secret store.
        if (m_dice.chance(60))
            stepSoon();
        if (m_dice.chance(30))
            stepSoon();
        stepAs(Step::StartButton);
    } else {
        step();
    }
}

void Road::leave()
{
    if (++m_leaves > iMostLeaves) {
        fail(QStringLiteral("the window can't be closed"));
        QCoreApplication::exit(1);
        return;
    }
    static constexpr Step ways[] = {Step::OkButton,     Step::OkButton, Step::OkButton,
                                    Step::CancelButton, Step::Escape,   Step::CloseWindow,
                                    Step::SessionEnd};
    Step way = ways[m_dice.below(int(std::size(ways)))];
    if (m_leaves > 3)
        way = Step::CloseWindow;
    if (m_dice.chance(50)) {
        ++m_steps;
        stepSoon(); // while the closing waits for the secret store
    }
    if (m_dice.chance(60))
        ++m_steps; // in a box that says what is missing
    if (m_user.can(way)) {
        ++m_steps;
        stepAs(way);
    }
}

demo_shop::Fault Road::onRequest(const demo_shop::ShopRequest& request)
{
    while (!m_loops.empty() && m_loops.back().level >= level())
        m_loops.pop_back();
    const QString name = nameOfRequest(request);
    m_loops.push_back({level(), name, true});
    if (name.endsWith(QLatin1String("page 1"))) {
        if (window()->iPageRetries == 0)
            ++m_runs;
        m_stopAsked = false;
    }
    observe();

    // Most requests ask for the invoices of one more order, and few runs get as far as the last
    // page.
    const bool many = name == QLatin1String("request of invoices");
    const bool late =
        name.endsWith(QLatin1String("page 2")) || name == QLatin1String("request of refunds");
    if (m_steps > 0 && m_dice.chance(many ? 2 : late ? 70 : 35)) {
        for (int count = 1 + m_dice.below(2); count > 0; --count) {
            if (m_dice.chance(50))
                step(); // while the answer is still to come
            else
                stepSoon(); // beside the answer
        }
    }
    // The question over a last page that is still being read.
    if (window()->bFinished && m_steps > 0 && m_user.can(Step::RunTick) && m_dice.chance(20))
        stepAs(Step::RunTick);
    if (m_start.faults > 0
        && request.rawTarget.contains(FaultRun::phases()[m_start.faultPhase].part)) {
        --m_start.faults;
        if (m_start.failedPasses > 0)
            window()->iPageRetries = std::exchange(m_start.failedPasses, 0);
        Journal::add(QLatin1String("fault at ") + name);
        demo_shop::Fault fault;
        fault.kind = demo_shop::Fault::Status;
        return fault;
    }
    return {};
}

bool Road::eventFilter(QObject* watched, QEvent* event)
{
    if (!m_walking)
        return false;
    if (event->type() == QEvent::Show) {
        if (auto* dialog = qobject_cast<QDialog*>(watched))
            onDialogShown(dialog);
    } else if (event->type() == QEvent::Quit && watched == qApp) {
        Journal::add(QStringLiteral("the program is asked to end"));
    } else if (event->type() == QEvent::DynamicPropertyChange && watched == window()) {
        noteDecision();
    }
    return false;
}

void Road::onDialogShown(QDialog* dialog)
{
    const QString name = nameOfDialog(*dialog);
    Journal::add(QLatin1String("shown: ") + name);
    for (const QWidget* other : QApplication::topLevelWidgets()) {
        const auto* open = qobject_cast<const QDialog*>(other);
        if (open && open != dialog && open->isVisible() && nameOfDialog(*open) == name)
            fail(QLatin1String("open twice: ") + name);
    }
    if (name == QLatin1String("box Beendet:"))
        onQuestion();
    post([this, guard = QPointer<QDialog>(dialog)] { enterDialog(guard); });
}

void Road::onQuestion()
{
    ++m_tally.questions;
    // By then most roads have no step left.
    if (m_askedAt.first < 0)
        m_steps += m_dice.below(3);
    const QPair<int, int> now {m_runs, window()->iPageRetries};
    if (m_askedAt == now)
        fail(QStringLiteral("asked twice about one run"));
    m_askedAt = now;
    if (m_accepted)
        fail(QStringLiteral("asked after the window's end was decided"));
    // Over a pass that is under way the last page is still to be written.
    if (!window()->bBusy
        && m_reference.stateOf(exported(), m_optionTexts) != ReferenceExport::Whole)
        fail(QStringLiteral("asked about an export that is not whole"));
}

void Road::enterDialog(const QPointer<QDialog>& dialog)
{
    if (!dialog || !dialog->isVisible())
        return;
    while (!m_loops.empty() && m_loops.back().level >= level())
        m_loops.pop_back();
    m_loops.push_back({level(), nameOfDialog(*dialog), false});
    const bool rare = m_loops.back().name.startsWith(QLatin1String("box Fehler:"));
    const int steps = rare ? 1 + m_dice.below(3) : m_dice.below(4);
    turnOf(dialog, m_steps > 0 ? steps : 0);
}

void Road::turnOf(const QPointer<QDialog>& dialog, int steps)
{
    if (!dialog || !dialog->isVisible())
        return;
    const bool covered = QApplication::activeModalWidget() != dialog;
    if (!covered && steps <= 0) {
        Journal::add(QLatin1String("answer to ") + nameOfDialog(*dialog));
        const QString answer = m_user.answer(*dialog);
        Journal::add(QLatin1String("  was ") + answer);
        observe();
        if (dialog && dialog->isVisible() && !dialog->isEnabled()) {
            fail(QLatin1String("can't be answered: ") + nameOfDialog(*dialog));
            dialog->setEnabled(true);
        }
        // What can't be chosen is told in a box, and the dialog stays.
        if (dialog && dialog->isVisible())
            post([this, dialog] { turnOf(dialog, 0); });
        return;
    }
    if (!covered)
        step();
    post([this, dialog, left = covered ? steps : steps - 1] { turnOf(dialog, left); });
}

void Road::stepSoon()
{
    ++m_posted;
    post([this] {
        --m_posted;
        step();
    });
}

void Road::step()
{
    if (!m_walking || m_steps <= 0)
        return;
    // What can't be done at the moment is no step. Before there is a window that is nearly all.
    const int attempts = window() ? 20 : 100;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const Step kind = m_user.draw();
        // Some at least are to see the end of a run.
        if (m_steps > 3 && endsTheProgram(kind) && m_dice.chance(60))
            continue;
        if (m_user.can(kind)) {
            stepAs(kind);
            return;
        }
    }
}

void Road::stepAs(Step kind)
{
    --m_steps;
    ++m_tally.steps;
    const QString where = place();
    const QString name = QString::fromLatin1(nameOf(kind));
    ++m_tally.places[where];
    ++m_tally.kinds[name];
    ++m_tally.pairs[{where, name}];
    Journal::add(QStringLiteral("%1 in %2").arg(name, where));
    m_stepLevels.push_back(level());
    m_user.perform(kind);
    m_stepLevels.pop_back();
    observe();
}

QString Road::place()
{
    while (!m_loops.empty()
           && (m_loops.back().level > level()
               || (m_loops.back().isRequest && window() && !window()->bBusy)))
        m_loops.pop_back();
    if (!m_loops.empty() && m_loops.back().level == level())
        return m_loops.back().name;
    if (!window())
        return QStringLiteral("secret store, restoring");
    // The innermost loop has not reported itself, and a step has entered it.
    if (!m_stepLevels.empty() && m_stepLevels.back() == level() - 1)
        return QStringLiteral("secret store, saving");
    if (level() <= 1)
        return QStringLiteral("main loop");
    return window()->bBusy ? QStringLiteral("request on its way")
                           : QStringLiteral("loop that ends");
}

// --------------------------------------------------------------------------- what must hold

void Road::fail(const QString& what)
{
    Journal::add(QLatin1String("FAILED: ") + what);
    if (m_failure.isEmpty())
        m_failure = what;
}

void Road::observe()
{
    if (!window())
        return;
    m_optionTexts.insert(window()->BuildOptionsString().toUtf8());
    m_stopAsked = m_stopAsked || window()->iCancelType == CancelStop;
    checkFile();
}

void Road::checkFile()
{
    if (m_start.blockedExport)
        return;
    const QByteArray bytes = exported();
    const ReferenceExport::State state = m_reference.stateOf(bytes, m_optionTexts);
    if (state == ReferenceExport::Torn || (state == ReferenceExport::Part && !m_stopAsked))
        fail(QStringLiteral("the export is ") + ReferenceExport::name(state));
    if (m_accepted == false && state != ReferenceExport::Gone)
        fail(QStringLiteral("an export that was given up is ") + ReferenceExport::name(state));
}

void Road::noteDecision()
{
    const QVariant code = window()->property(INFO::mainWndExitCodeKeyName.toUtf8().constData());
    if (!code.isValid())
        return;
    if (m_accepted)
        fail(QStringLiteral("the window's end is decided twice"));
    m_accepted = code.toInt() == 1;
    Journal::add(*m_accepted ? QStringLiteral("handed over") : QStringLiteral("given up"));
    observe();
    m_handOver = {exported(), window()->bBusy, m_stopAsked};
}

void Road::checkEnd()
{
    if (!m_accepted)
        fail(QStringLiteral("the program ended, but nobody had closed the window"));
    if (window()->isVisible())
        fail(QStringLiteral("the program ended with its window open"));
    if (window()->bBusy)
        fail(QStringLiteral("the program ended in the middle of a pass"));
    const bool failedRun = window()->bError;
    m_run.fixture.window.reset();
    checkNothingLeft();
    if (m_start.blockedExport) {
        ++m_tally.ends[QStringLiteral("blocked")];
        return;
    }
    const QByteArray bytes = exported();
    const ReferenceExport::State state = m_reference.stateOf(bytes, m_optionTexts);
    const bool accepted = m_accepted.value_or(false);
    const QString end = !m_accepted ? QStringLiteral("undecided, ")
        : accepted                  ? QStringLiteral("handed over, ")
                                    : QStringLiteral("given up, ");
    ++m_tally.ends[end + ReferenceExport::name(state)];
    if (!accepted) {
        if (state != ReferenceExport::Gone)
            fail(QStringLiteral("given up, and the export is ") + ReferenceExport::name(state));
    } else if (!m_handOver.inPass) {
        if (bytes != m_handOver.bytes || bytes.isNull() != m_handOver.bytes.isNull())
            fail(QStringLiteral("the export has changed since it was handed over"));
        if (state == ReferenceExport::FirstPage && !m_handOver.stopped)
            fail(QStringLiteral("handed over without its second page"));
    } else {
        // The pass that was under way still writes its page, which is the last one.
        const bool asItShould = failedRun ? state == ReferenceExport::Empty
            : m_handOver.stopped          ? state != ReferenceExport::Torn
                                          : state == ReferenceExport::Whole;
        if (!asItShould)
            fail(QStringLiteral("handed over during a pass, and the export is ")
                 + ReferenceExport::name(state));
    }
}

void Road::checkNothingLeft()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    for (const QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() || qobject_cast<const QDialog*>(widget)
            || qobject_cast<const QMainWindow*>(widget))
            fail(QStringLiteral("left behind: %1 '%2'")
                     .arg(QString::fromLatin1(widget->metaObject()->className()),
                          widget->windowTitle()));
    }
}

} // namespace proof
