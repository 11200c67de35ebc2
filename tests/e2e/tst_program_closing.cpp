#include "tests/e2e/desktop.h"
#include "tests/e2e/ledora_process.h"
#include "tests/e2e/run_setup.h"
#include "tests/support/app_test.h"

#include <QElapsedTimer>
#include <QRandomGenerator>

using demo_shop::Fault;
using demo_shop::ShopRequest;

namespace {

const int iMoments = 25;
/// Longer than every pause of the program, which sleeps up to a second between two attempts, and
/// shorter than its patience with a silent shop.
const int iSecondsToEnd = 15;
const QString mainWindow = QStringLiteral("^MainWindow$");
const QString question = QStringLiteral("^Beendet:$");

/// A slow answer, or one that never comes to its end.
Fault faultOfKind(int kind)
{
    Fault fault;
    switch (kind) {
    case 0:
        fault.kind = Fault::Silence;
        break;
    case 1:
        fault.kind = Fault::StallInsideBody;
        break;
    case 2:
        fault.kind = Fault::Status;
        break;
    default:
        fault.kind = Fault::Trickle;
        fault.pieces = 50;
        fault.pauseMs = 20;
        break;
    }
    return fault;
}

Fault slowness(int pieces)
{
    Fault fault;
    fault.kind = Fault::Trickle;
    fault.pieces = pieces;
    fault.pauseMs = 10;
    return fault;
}

} // namespace

/// The window is closed at any moment of a run: the process must end and leave no export.
class tst_program_closing : public QObject
{
    Q_OBJECT

public:
    explicit tst_program_closing(const StartFolder& folder)
        : m_folder(folder)
        , m_fixture(folder)
    {
    }

private slots:
    void endsAtAnyMomentOfARun_data();
    void endsAtAnyMomentOfARun();

private:
    bool isAsking(const LedoraProcess& program);
    void waitForMoment(const LedoraProcess& program, int request);
    bool closeAndWait(LedoraProcess& program, const QString& window);

    const StartFolder& m_folder;
    RunFixture m_fixture;
};

void tst_program_closing::endsAtAnyMomentOfARun_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<int>("request");
    // Two requests for taxes, two pages of orders, 12 products, 13 refunds.
    const int requests = 29;
    for (int i = 0; i < iMoments; ++i)
        QTest::addRow("request %d", 1 + i * requests / iMoments)
            << quint32(i + 1) << 1 + i * requests / iMoments;
}

bool tst_program_closing::isAsking(const LedoraProcess& program)
{
    return desktop::isShown(program.pid(), question);
}

void tst_program_closing::waitForMoment(const LedoraProcess& program, int request)
{
    // A question over the last page holds the run up, so that no further request may come.
    QElapsedTimer sinceLook;
    sinceLook.start();
    bool asking = false;
    QTRY_VERIFY_WITH_TIMEOUT(
        m_fixture.shop.requests().size() >= request
            || (sinceLook.elapsed() > 1000 && (sinceLook.restart(), asking = isAsking(program))),
        60000);
}

bool tst_program_closing::closeAndWait(LedoraProcess& program, const QString& window)
{
    // Behind the question the window takes no closing; it has to be answered first.
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (isAsking(program)) {
            desktop::key(desktop::waitForWindowId(program.pid(), question),
                         QStringLiteral("Escape"));
            if (!QTest::qWaitFor([&] { return !isAsking(program); }, 20000))
                return false;
        }
        if (!desktop::closeWindow(window))
            return false;
        if (program.waitForEnd(iSecondsToEnd))
            return true;
        if (!isAsking(program))
            return false;
    }
    return false;
}

void tst_program_closing::endsAtAnyMomentOfARun()
{
    QFETCH(quint32, seed);
    QFETCH(int, request);
    QRandomGenerator random(seed);
    const Fault atTheMoment = faultOfKind(random.bounded(5));
    const int pieces = random.bounded(2, 8);
    const int delay = random.bounded(120);
    m_fixture.shop.clearRequests();
    m_fixture.shop.setFaultPlan([=](const ShopRequest& asked) {
        return asked.number == request ? atTheMoment : slowness(pieces);
    });
    run_setup::serve(m_fixture, run_setup::orders(130, 10));
    QFile::remove(m_folder.iniFile());
    m_folder.writeHostFile();
    m_folder.saveOptions(run_setup::completeOptions(m_fixture.shop.baseUrl()));
    QVERIFY(run_setup::storeSecrets(m_fixture.shop.baseUrl()));

    LedoraProcess program;
    QVERIFY(program.start({m_folder.hostFile()}));
    QCOMPARE(desktop::waitForWindow(
                 program.pid(),
                 {QStringLiteral("MainWindow"), QStringLiteral("Fehler beim Entschlüsseln:")}),
             QStringLiteral("MainWindow"));
    const QString window = desktop::waitForWindowId(program.pid(), mainWindow);
    QVERIFY(!window.isEmpty());
    QVERIFY(desktop::click(program.pid(), QStringLiteral("Daten vom Server abrufen")));
    waitForMoment(program, request);
    if (QTest::currentTestFailed())
        return;
    QTest::qWait(delay); // no waiting for anything: it is the moment that is drawn

    const bool ended = closeAndWait(program, window);
    QVERIFY2(ended, qPrintable(program.output()));
    QVERIFY(program.hasEndedWell());
    QVERIFY(!QFile::exists(m_folder.exportFile()));
    const auto saved = run_setup::optionsInTheFile(m_folder);
    QCOMPARE(saved.value(QStringLiteral("buchungs_konten")).toList().size(), 36);
}

int main(int argc, char** argv)
{
    desktop::enterSession(argv);
    return runAppTest<tst_program_closing>(argc, argv);
}

#include "tst_program_closing.moc"
