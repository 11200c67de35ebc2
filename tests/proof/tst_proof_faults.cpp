#include "tests/app/secret_search.h"
#include "tests/e2e/desktop.h"
#include "tests/e2e/run_setup.h"
#include "tests/proof/fault_shop.h"
#include "tests/proof/fault_trial.h"
#include "tests/proof/proof_size.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <QtTest>

#include <algorithm>
#include <list>
#include <map>
#include <memory>

using proof::FaultPhase;
using proof::FaultRow;
using proof::FaultServer;
using proof::FaultTrial;
using proof::Leavings;
using proof::WireRequest;

/// What a bad network and a bad shop do to runs of the real program, many of them side by side.
/// With LEDORA_PROOF_ROWS set, the full size goes through the rows alone whose name holds that
/// text.
class tst_proof_faults : public QObject
{
    Q_OBJECT

private slots:
    void everyRunEndsWholeOrEmptyWithTheBox();

private:
    using Outcome = FaultTrial::Outcome;

    struct Cell
    {
        Outcome transient = FaultTrial::Open;
        Outcome permanent = FaultTrial::Open;
    };

    struct Counts
    {
        int tried = 0;
        int ok = 0;
        int requests = 0;
        int wrongAuthorizations = 0;
        int leaks = 0;
        std::map<Outcome, int> outcomes;
    };

    void makePlans();
    void addRow(const FaultRow& row);
    void look();
    void startSome();
    bool hasRoomFor(const FaultTrial::Plan& plan) const;
    void take(const FaultTrial& trial);
    static Outcome expected(const FaultTrial::Plan& plan);
    static QByteArray nameOf(Outcome outcome);
    static QByteArray nameOf(const FaultTrial::Plan& plan);
    static bool holdsSecrets(const QByteArray& bytes);
    void report(const FaultServer& other) const;

    proof::ScreenReader m_reader;
    QByteArray m_other;
    Leavings m_reference;
    FaultTrial::Addresses m_addresses;
    std::list<FaultTrial::Plan> m_plans;
    std::list<std::unique_ptr<FaultTrial>> m_open;
    std::map<std::pair<const FaultRow*, const FaultPhase*>, Cell> m_cells;
    Counts m_counts;
    QStringList m_problems;
    bool m_isLooking = false;
    bool m_isHopeless = false; ///< the run without faults has failed
};

void tst_proof_faults::addRow(const FaultRow& row)
{
    int column = 0;
    for (const FaultPhase& phase : proof::faultPhases()) {
        ++column;
        for (const bool isPermanent : {true, false}) {
            // Who closes the window has no use for a second request.
            if (row.closedAfterSeconds >= 0 && !isPermanent)
                continue;
            m_plans.push_back(
                {&row, &phase, isPermanent, (column + (isPermanent ? 1 : 0)) % 2 == 0});
        }
    }
}

void tst_proof_faults::makePlans()
{
    static const FaultRow none {.name = "none", .kind = proof::FaultKind::None};
    m_plans.push_back({&none, nullptr, false, true});
    const auto& rows = proof::faultRows();
    const auto& phases = proof::faultPhases();
    const auto rowOf = [&](proof::FaultKind kind) {
        return &*std::ranges::find(rows, kind, &FaultRow::kind);
    };
    if (!proof::isFull()) {
        m_plans.push_back({rowOf(proof::FaultKind::RedirectOther), &phases[5], true, false});
        m_plans.push_back({rowOf(proof::FaultKind::ResetInsideBody), &phases[6], false, true});
        return;
    }
    const QString wanted = qEnvironmentVariable("LEDORA_PROOF_ROWS");
    for (const FaultRow& row : rows) {
        if (QLatin1String(row.name).contains(wanted))
            addRow(row);
    }
}

tst_proof_faults::Outcome tst_proof_faults::expected(const FaultTrial::Plan& plan)
{
    if (plan.fault->closedAfterSeconds >= 0)
        return FaultTrial::Closed;
    return plan.isPermanent && !plan.fault->isHarmless ? FaultTrial::Emptied : FaultTrial::Whole;
}

QByteArray tst_proof_faults::nameOf(Outcome outcome)
{
    switch (outcome) {
    case FaultTrial::Whole:
        return "whole";
    case FaultTrial::Emptied:
        return "empty";
    case FaultTrial::Closed:
        return "closed";
    case FaultTrial::Failed:
        return "FAILED";
    case FaultTrial::Open:
        break;
    }
    return "-";
}

QByteArray tst_proof_faults::nameOf(const FaultTrial::Plan& plan)
{
    return QByteArray(plan.fault->name) + ", " + (plan.phase ? plan.phase->name : "no phase")
        + (plan.isPermanent ? ", permanent" : ", transient")
        + (plan.isAccepted ? ", answered Yes" : ", answered No");
}

bool tst_proof_faults::holdsSecrets(const QByteArray& bytes)
{
    if (bytes.toLower().contains("authorization")
        || bytes.contains(run_setup::authorization().mid(qstrlen("Basic "))))
        return true;
    return std::ranges::any_of(
        QStringList {run_setup::apiKey, run_setup::apiSecret},
        [&](const QString& secret) { return !waysToRead(secret, bytes).isEmpty(); });
}

bool tst_proof_faults::hasRoomFor(const FaultTrial::Plan& plan) const
{
    constexpr int mostStarting = 6;
    constexpr int mostUsual = 24;
    constexpr int mostHuge = 2;
    if (std::ranges::count_if(m_open, [](const auto& open) { return open->isStarting(); })
        >= mostStarting)
        return false;
    // Those that wait for a silent shop cost nothing but memory.
    const auto isSlow = [](const FaultRow& row) { return row.secondsARequest > 0; };
    if (isSlow(*plan.fault))
        return true;
    const auto countOf = [this](auto wanted) {
        return std::ranges::count_if(m_open,
                                     [&](const auto& open) { return wanted(*open->plan().fault); });
    };
    if (plan.fault->isHuge)
        return countOf([](const FaultRow& row) { return row.isHuge; }) < mostHuge;
    return countOf([&](const FaultRow& row) { return !isSlow(row) && !row.isHuge; }) < mostUsual;
}

void tst_proof_faults::startSome()
{
    for (auto next = m_plans.begin(); next != m_plans.end();) {
        if (!hasRoomFor(*next)) {
            ++next;
            continue;
        }
        auto trial = std::make_unique<FaultTrial>(*next, m_other, &m_reference);
        trial->start(m_addresses);
        m_open.push_back(std::move(trial));
        next = m_plans.erase(next);
    }
}

void tst_proof_faults::take(const FaultTrial& trial)
{
    const FaultTrial::Plan& plan = trial.plan();
    ++m_counts.tried;
    ++m_counts.outcomes[trial.outcome()];
    const auto requests = trial.requests();
    m_counts.requests += int(requests.size());
    const auto wrong = std::ranges::count_if(requests, [](const WireRequest& request) {
        return request.authorization != run_setup::authorization();
    });
    m_counts.wrongAuthorizations += int(wrong);
    const bool isLeak = holdsSecrets(trial.garbage())
        || std::ranges::any_of(requests, [](const WireRequest& request) {
                            return holdsSecrets(request.rest);
                        });
    m_counts.leaks += isLeak ? 1 : 0;
    if (!plan.phase) {
        m_reference = trial.leavings();
        m_isHopeless = trial.outcome() != FaultTrial::Whole;
    } else {
        (plan.isPermanent ? m_cells[{plan.fault, plan.phase}].permanent
                          : m_cells[{plan.fault, plan.phase}].transient) = trial.outcome();
    }

    const bool isAsItShould = trial.outcome() == (plan.phase ? expected(plan) : FaultTrial::Whole)
        && (!plan.phase || trial.hasBefallen()) && wrong == 0 && !isLeak;
    if (isAsItShould) {
        ++m_counts.ok;
        return;
    }
    m_problems.append(QString::fromUtf8(nameOf(plan) + ": " + nameOf(trial.outcome()) + "; ")
                      + trial.problem());
    qWarning("%s", qPrintable(m_problems.last()));
}

void tst_proof_faults::look()
{
    // Storing a secret waits in a loop of its own.
    if (m_isLooking)
        return;
    const QScopedValueRollback looking(m_isLooking, true);
    startSome();
    const auto shown = proof::screenWindows();
    for (const auto& trial : m_open)
        trial->step(shown, m_reader);
    std::erase_if(m_open, [this](const auto& trial) {
        if (trial->outcome() == FaultTrial::Open)
            return false;
        take(*trial);
        if (trial->port() != 0)
            m_addresses.ports.append(trial->port());
        return true;
    });
    if (m_isHopeless) {
        // The others would wait for what they are measured with until their time is up.
        m_plans.clear();
        m_open.clear();
    }
}

void tst_proof_faults::report(const FaultServer& other) const
{
    std::string heads = "| fault |";
    std::string lines = "|---|";
    for (const FaultPhase& phase : proof::faultPhases()) {
        heads += std::string(" ") + phase.name + " |";
        lines += "---|";
    }
    proof::report("faults: table " + heads);
    proof::report("faults: table " + lines);
    for (const FaultRow& row : proof::faultRows()) {
        std::string line = std::string("| ") + row.name + " |";
        bool isTried = false;
        for (const FaultPhase& phase : proof::faultPhases()) {
            const auto cell = m_cells.find({&row, &phase});
            const Cell found = cell == m_cells.end() ? Cell() : cell->second;
            isTried = isTried || cell != m_cells.end();
            line += " " + (nameOf(found.transient) + " / " + nameOf(found.permanent)).toStdString()
                + " |";
        }
        if (isTried)
            proof::report("faults: table " + line);
    }
    const auto countOf = [this](Outcome outcome) {
        const auto found = m_counts.outcomes.find(outcome);
        return std::to_string(found == m_counts.outcomes.end() ? 0 : found->second);
    };
    proof::report("faults: runs tried=" + std::to_string(m_counts.tried)
                  + " ok=" + std::to_string(m_counts.ok) + " whole=" + countOf(FaultTrial::Whole)
                  + " empty=" + countOf(FaultTrial::Emptied) + " closed="
                  + countOf(FaultTrial::Closed) + " failed=" + countOf(FaultTrial::Failed));
    proof::report("faults: requests to the shop tried=" + std::to_string(m_counts.requests)
                  + " wrong_authorization=" + std::to_string(m_counts.wrongAuthorizations)
                  + " leaks_in_plain_text=" + std::to_string(m_counts.leaks));
    proof::report("faults: another host connections=" + std::to_string(other.connections())
                  + " requests=" + std::to_string(other.requests().size()));
}

void tst_proof_faults::everyRunEndsWholeOrEmptyWithTheBox()
{
    QVERIFY(m_reader.connect());
    // It would answer as the shop does, so that nothing but the program's own care keeps it out.
    FaultServer other([this](const WireRequest& request) {
        return proof::wholeAnswer(proof::shopAnswer(request.target, m_other));
    });
    QVERIFY(other.listen(QHostAddress(QStringLiteral("127.0.0.2"))));
    m_other = "http://127.0.0.2:" + QByteArray::number(other.port());
    makePlans();

    QEventLoop loop;
    QTimer looks;
    connect(&looks, &QTimer::timeout, this, [&] {
        look();
        if (m_plans.empty() && m_open.empty())
            loop.quit();
    });
    using namespace std::chrono_literals;
    looks.start(150ms);
    loop.exec();

    report(other);
    QVERIFY2(m_problems.isEmpty(), qPrintable(m_problems.join(QLatin1Char('\n'))));
    QCOMPARE(m_reference.exported.count('\n'), 2 + 104 + 1);
    QCOMPARE(m_reference.invoices.size(), 2);
    QCOMPARE(other.connections(), 0);
}

int main(int argc, char** argv)
{
    desktop::enterSession(argv);
    // The whole table takes longer than a function of a test may by default.
    constexpr char limit[] = "QTEST_FUNCTION_TIMEOUT";
    if (!qEnvironmentVariableIsSet(limit))
        qputenv(limit, "3600000");
    qunsetenv("QT_NO_GLIB");
    const QCoreApplication application(argc, argv);
    tst_proof_faults test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_proof_faults.moc"
