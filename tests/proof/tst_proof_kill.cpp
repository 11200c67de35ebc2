#include "tests/e2e/desktop.h"
#include "tests/e2e/run_setup.h"
#include "tests/proof/kill_moment.h"
#include "tests/proof/kill_reference.h"
#include "tests/proof/kill_stand.h"
#include "tests/proof/proof_size.h"
#include "tests/support/app_test.h"

#include "tools/demo_shop/invented_shop.h"

#include <QDir>

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

using proof::Hunter;
using proof::KillMoment;
using proof::RunStand;
using proof::WholeRun;

namespace {

constexpr quint32 seed = 20260105;

/// One kill and the start after it.
class KillTrial
{
public:
    KillTrial(const WholeRun& whole, const demo_shop::ShopServer::Handler& handler)
        : m_whole(whole)
        , m_stand(handler)
    {
        QObject::connect(&m_stand.shop(), &demo_shop::ShopServer::requestSeen, &m_stand.shop(),
                         [this](int number) { onRequest(number); });
    }

    RunStand& stand() { return m_stand; }

    bool begin(const KillMoment& moment);
    /// To be called between the steps of the stand.
    void step();

    bool isOver() const { return m_phase == Over; }

    /// The program ended by itself before the moment came.
    bool isMissed() const { return m_isMissed; }

    QString problem() const { return m_problem; }

    qsizetype pagesLeft() const { return m_pages; }

    bool leftLock() const { return m_leftLock; }

    /// The question came up while the last page was being fetched, which it may: that page is
    /// written once the question is answered.
    bool wasInPass() const { return m_wasInPass; }

    KillMoment moment() const { return m_moment; }

private:
    enum Phase { BeforeKill, NextStart, Over };

    void onRequest(int number);
    void fail(const QString& problem);
    void inspectRemains();
    QString exportProblem(const QByteArray& exported);
    QString optionsProblem();
    void inspectNextRun();

    const WholeRun& m_whole;
    RunStand m_stand;
    KillMoment m_moment;
    std::unique_ptr<Hunter> m_hunter;
    QString m_problem;
    Phase m_phase = Over;
    int m_requests = 0;
    qsizetype m_pages = -1;
    bool m_isMissed = false;
    bool m_leftLock = false;
    bool m_wasInPass = false;
};

bool KillTrial::begin(const KillMoment& moment)
{
    m_moment = moment;
    m_problem.clear();
    m_isMissed = false;
    m_wasInPass = false;
    m_requests = 0;
    m_phase = BeforeKill;
    m_stand.shop().clearRequests();
    if (!m_stand.layDown(m_stand.shop().baseUrl()) || !m_stand.start()) {
        fail(m_stand.problem());
        return false;
    }
    m_hunter = std::make_unique<Hunter>(m_stand.pid());
    if (moment.kind == KillMoment::FileEvent)
        m_hunter->killAtFileEvent(m_stand.folder().path(QStringLiteral(".")), moment.count,
                                  moment.delay);
    return true;
}

void KillTrial::onRequest(int number)
{
    if (m_phase != BeforeKill)
        return;
    m_requests = number;
    if (number != m_moment.count)
        return;
    switch (m_moment.kind) {
    case KillMoment::BeforeAnswer:
        m_hunter->kill();
        break;
    case KillMoment::BehindAnswer:
        m_hunter->killAfter(m_moment.delay);
        break;
    case KillMoment::ExportSize:
        m_hunter->killAtSize(m_stand.folder().exportFile(), m_moment.bytes, m_moment.delay);
        break;
    case KillMoment::Closing:
        m_stand.closeWindow();
        m_hunter->killAfter(m_moment.delay);
        break;
    default:
        break;
    }
}

void KillTrial::fail(const QString& problem)
{
    m_problem =
        QStringLiteral("%1, request %2, %3 bytes, %4 us: %5")
            .arg(QLatin1String(KillMoment::name(m_moment.kind)), QString::number(m_moment.count),
                 QString::number(m_moment.bytes), QString::number(m_moment.delay.count()), problem);
    m_phase = Over;
}

QString KillTrial::exportProblem(const QByteArray& exported)
{
    m_pages = m_whole.pagesIn(exported);
    if (exported.isNull()) {
        m_pages = -1;
        // Before the run has begun, or when the user has given up.
        return m_requests == 0 || m_moment.kind == KillMoment::Closing
            ? QString()
            : QStringLiteral("no export");
    }
    if (m_pages < 0)
        return QStringLiteral("an export of %1 bytes that is cut inside a page")
            .arg(exported.size());
    const qsizetype all = m_whole.pages.size() - 1;
    if (m_moment.kind == KillMoment::Question && !m_wasInPass && m_pages != all)
        return QStringLiteral("%1 of %2 pages at the question").arg(m_pages).arg(all);
    // A page is there once the next one is asked for, and not before its own requests are made.
    const qsizetype next = m_pages + 1;
    if ((m_pages > 0 && m_requests < m_whole.requests.at(m_pages))
        || (next < m_whole.pages.size() && m_requests > m_whole.requests.at(next)))
        return QStringLiteral("%1 pages after %2 requests").arg(m_pages).arg(m_requests);
    return {};
}

QString KillTrial::optionsProblem()
{
    const auto found = m_stand.savedOptions();
    if (found.value(QStringLiteral("mainurl")).toString() != m_stand.shop().baseUrl()
        || found.value(QStringLiteral("germanized_pdf_folder")).toString()
            != m_stand.folder().pdfFolder())
        return QStringLiteral("the options are lost");
    const auto laidDown = RunStand::settings(m_stand.shop().baseUrl(), m_stand.folder());
    if (WholeRun::comparable(found) == m_whole.options || (m_requests == 0 && found == laidDown))
        return {};
    return QStringLiteral("%1 options").arg(found.size());
}

void KillTrial::inspectRemains()
{
    m_leftLock = QFile::exists(m_stand.folder().iniFile() + QStringLiteral(".lock"));
    QString problem = exportProblem(m_stand.exported(m_stand.shop().baseUrl()));
    if (problem.isEmpty())
        problem = optionsProblem();
    if (!problem.isEmpty()) {
        fail(problem);
        return;
    }
    m_stand.shop().clearRequests();
    m_phase = NextStart;
    if (!m_stand.start())
        fail(QStringLiteral("no next start: ") + m_stand.problem());
}

void KillTrial::inspectNextRun()
{
    m_phase = Over;
    if (!m_stand.hasEndedWell()) {
        fail(QStringLiteral("the next run did not end well: ") + m_stand.output());
    } else if (m_stand.exported(m_stand.shop().baseUrl()) != m_whole.pages.constLast()) {
        fail(QStringLiteral("the next run exports something else"));
    } else if (WholeRun::comparable(m_stand.savedOptions()) != m_whole.options) {
        fail(QStringLiteral("the next run saves other options"));
    } else {
        const auto requests = m_stand.shop().requests();
        for (const auto& request : requests) {
            if (request.authorization != run_setup::authorization()) {
                fail(QStringLiteral("the next run has lost the secrets"));
                return;
            }
        }
    }
}

void KillTrial::step()
{
    if (m_phase == Over)
        return;
    if (m_stand.state() == RunStand::Stuck || m_stand.state() == RunStand::Refused) {
        fail(m_stand.problem() + m_stand.box());
    } else if (m_stand.state() == RunStand::Answered && m_phase == BeforeKill
               && m_moment.kind == KillMoment::Question) {
        // Looked at again until it has gone.
        m_wasInPass = m_wasInPass || m_requests < m_whole.requests.constLast();
        m_hunter->killAfter(m_moment.delay);
    } else if (m_stand.state() == RunStand::Ended && m_phase == BeforeKill) {
        m_hunter.reset();
        m_isMissed = !m_stand.wasKilled();
        if (m_isMissed)
            m_phase = Over;
        else
            inspectRemains();
    } else if (m_stand.state() == RunStand::Ended) {
        inspectNextRun();
    }
}

} // namespace

/// A program that is killed at any moment of a run.
class tst_proof_kill : public QObject
{
    Q_OBJECT

public:
    explicit tst_proof_kill(const StartFolder& folder)
        : m_folder(folder)
    {
    }

private slots:
    void initTestCase();
    void leavesWholePagesAndReadableOptions();

private:
    KillMoment moment(int index);
    /// A trial that is over: its figures are noted, and its moment is tried again if it was missed.
    void takeResult(const KillTrial& trial, QList<KillMoment>& waiting);
    void report(int wanted) const;

    const StartFolder& m_folder;
    const demo_shop::ShopServer::Handler m_handler =
        demo_shop::InventedShop(proof::sized(250, 120), seed);
    WholeRun m_whole;
    QRandomGenerator m_random {seed};
    proof::ScreenReader m_reader;
    std::array<int, KillMoment::kinds> m_kills {};
    QMap<qsizetype, int> m_pages;
    QStringList m_problems;
    int m_locks = 0;
    int m_inPass = 0;
    int m_missed = 0;
};

void tst_proof_kill::initTestCase()
{
    QVERIFY(m_reader.connect());
    m_whole = proof::wholeRun(m_folder, m_handler);
    QCOMPARE(m_whole.pages.size(), qsizetype(proof::sized(4, 3)));
    QCOMPARE(m_whole.pages.constFirst(), QByteArray(""));
    for (qsizetype page = 1; page < m_whole.pages.size(); ++page) {
        QVERIFY(m_whole.sizes.at(page) > m_whole.sizes.at(page - 1));
        QVERIFY(m_whole.pages.at(page).startsWith(m_whole.pages.at(page - 1)));
        QVERIFY(m_whole.requests.at(page) > m_whole.requests.at(page - 1));
    }
    QVERIFY(m_whole.options.size() > 30);
    QVERIFY(m_whole.fileEvents > 5);
}

KillMoment tst_proof_kill::moment(int index)
{
    // Of ten kills, three before an answer, three behind one, two by changes in the folder, and one
    // by the size of the export; the last one by turns at the question and while closing.
    constexpr std::array<KillMoment::Kind, 10> turn {
        KillMoment::FileEvent,    KillMoment::ExportSize,   KillMoment::BehindAnswer,
        KillMoment::BeforeAnswer, KillMoment::BehindAnswer, KillMoment::BeforeAnswer,
        KillMoment::BehindAnswer, KillMoment::BeforeAnswer, KillMoment::FileEvent,
        KillMoment::Closing};
    const int total = m_whole.requests.constLast();
    KillMoment moment;
    moment.kind = turn.at(size_t(index) % turn.size());
    if (moment.kind == KillMoment::Closing && index % 20 >= 10)
        moment.kind = KillMoment::Question;
    moment.count = 1 + m_random.bounded(total);
    const auto upTo = [this](int microseconds) {
        return std::chrono::microseconds {m_random.bounded(microseconds)};
    };
    switch (moment.kind) {
    case KillMoment::BehindAnswer:
        moment.delay = upTo(4000);
        break;
    case KillMoment::FileEvent:
        moment.count = 1 + m_random.bounded(m_whole.fileEvents);
        moment.delay = upTo(300);
        break;
    case KillMoment::ExportSize: {
        const qsizetype page = 1 + m_random.bounded(m_whole.pages.size() - 1);
        moment.bytes = m_whole.sizes.at(page);
        moment.count = m_whole.requests.at(page); // the last one before the page is written
        moment.delay = upTo(500);
        break;
    }
    case KillMoment::Question:
        moment.delay = upTo(20000);
        break;
    case KillMoment::Closing:
        moment.delay = upTo(30000);
        break;
    default:
        break;
    }
    return moment;
}

void tst_proof_kill::takeResult(const KillTrial& trial, QList<KillMoment>& waiting)
{
    if (trial.isMissed()) {
        // The program was quicker. Closer to what the moment is told by, it will be there.
        KillMoment again = trial.moment();
        again.delay /= 2;
        if (again.kind == KillMoment::FileEvent)
            again.count = std::max(1, again.count - 1);
        waiting.append(again);
        ++m_missed;
        return;
    }
    if (!trial.problem().isEmpty())
        m_problems.append(trial.problem());
    ++m_kills.at(trial.moment().kind);
    ++m_pages[trial.pagesLeft()];
    m_locks += trial.leftLock() ? 1 : 0;
    m_inPass += trial.wasInPass() ? 1 : 0;
}

void tst_proof_kill::report(int wanted) const
{
    int tried = 0;
    std::string kinds;
    for (size_t kind = 0; kind < m_kills.size(); ++kind) {
        tried += m_kills.at(kind);
        kinds += std::string(" ") + KillMoment::name(KillMoment::Kind(kind)) + "="
            + std::to_string(m_kills.at(kind));
    }
    std::string pages;
    for (auto page = m_pages.cbegin(); page != m_pages.cend(); ++page)
        pages +=
            (page.key() < 0 ? std::string(" no_export") : " pages" + std::to_string(page.key()))
            + "=" + std::to_string(page.value());
    proof::report("kill: moments wanted=" + std::to_string(wanted) + " tried="
                  + std::to_string(tried) + " ok=" + std::to_string(tried - m_problems.size())
                  + kinds + pages + " question_in_a_pass=" + std::to_string(m_inPass)
                  + " lock_files=" + std::to_string(m_locks)
                  + " missed=" + std::to_string(m_missed));
}

void tst_proof_kill::leavesWholePagesAndReadableOptions()
{
    const int wanted = proof::sized(200, 3);
    const int side = proof::sized(8, 3);
    QList<KillMoment> waiting;
    for (int index = 0; index < wanted; ++index)
        waiting.append(moment(index));

    std::vector<std::unique_ptr<KillTrial>> trials;
    QList<RunStand*> stands;
    for (int index = 0; index < side; ++index) {
        trials.push_back(std::make_unique<KillTrial>(m_whole, m_handler));
        stands.append(&trials.back()->stand());
        QVERIFY(trials.back()->begin(waiting.takeFirst()));
    }
    size_t idle = 0;
    const auto isDone = [&] {
        for (const auto& trial : trials) {
            if (trial->isOver())
                continue;
            trial->step();
            if (!trial->isOver())
                continue;
            takeResult(*trial, waiting);
            if (waiting.isEmpty() || m_missed > wanted)
                ++idle;
            else if (!trial->begin(waiting.takeFirst()))
                m_problems.append(trial->problem());
        }
        return idle == trials.size() || m_problems.size() > 10;
    };
    const bool isInTime = proof::stepUntil(stands, m_reader, isDone, proof::sized(3000, 90));
    report(wanted);
    QVERIFY2(m_problems.isEmpty(), qPrintable(m_problems.join(QLatin1Char('\n'))));
    QVERIFY(isInTime);
    int tried = 0;
    for (const int kills : m_kills)
        tried += kills;
    QCOMPARE(tried, wanted);
}

int main(int argc, char** argv)
{
    desktop::enterSession(argv);
    return runAppTest<tst_proof_kill>(argc, argv);
}

#include "tst_proof_kill.moc"
