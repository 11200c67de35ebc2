#include "tests/app/many_orders.h"
#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>

/// The two timers of a run and the requests to start and stop.
class tst_run_states : public QObject
{
    Q_OBJECT

public:
    explicit tst_run_states(const StartFolder& startFolder)
        : folder(startFolder)
    {
    }

private slots:
    void init();
    void cleanup();
    void aStartWaitsWithoutAnInterval();
    void aStartWhileWaitingDoesNothing();
    void aStartInAPassAsksItToRestart();
    void aStopBetweenPassesIsDropped_data();
    void aStopBetweenPassesIsDropped();
    void aStopInAPassStopsTheTicksAndSaysSo_data();
    void aStopInAPassStopsTheTicksAndSaysSo();
    void aStopInAPassWithoutTicksIsOnlyNoted();
    void waitingGoesOnWhileAPassRuns();
    void waitingEndsWithTheStart();
    void aRunningTickIsNotStartedTwice();
    void aSecondStartBeforeTheFirstPassSaysNothing();
    void buttonsAreSwitchedTogether();
    void aRunByTicksReachesTheQuestion();
    void anEmptyAddressTicksWithoutEffect();
    void anUnopenedExportTicksWithoutEffect();
    void aStartWithoutAnExportKeepsTheMessage();

private:
    MainWindow& window() const { return *fixture->window; }

    const StartFolder& folder;
    std::unique_ptr<RunFixture> fixture;
};

void tst_run_states::init()
{
    fixture = std::make_unique<RunFixture>(folder);
    fixture->start();
    window().statusLabel->setText(QStringLiteral("untouched"));
}

void tst_run_states::cleanup()
{
    fixture.reset();
}

void tst_run_states::aStartWaitsWithoutAnInterval()
{
    QVERIFY(!window().waitTimer->isActive());
    window().StartTimer();
    QVERIFY(window().waitTimer->isActive());
    QCOMPARE(window().waitTimer->interval(), 0);
    QVERIFY(!window().runTimer->isActive());
}

void tst_run_states::aStartWhileWaitingDoesNothing()
{
    window().waitTimer->start(0);
    window().runTimer->start(60000);
    window().bBusy = true;
    window().StartTimer();
    QCOMPARE(window().iCancelType, CancelNone);
    QVERIFY(window().runTimer->isActive());
    window().bBusy = false;
}

void tst_run_states::aStartInAPassAsksItToRestart()
{
    window().runTimer->start(60000);
    window().bBusy = true;
    window().StartTimer();
    QCOMPARE(window().iCancelType, CancelRestart);
    QVERIFY(!window().runTimer->isActive());
    QVERIFY(window().waitTimer->isActive());
    QVERIFY(fixture->showsStatus(QStringLiteral("Anhalten...")));
    window().bBusy = false;
}

void tst_run_states::aStopBetweenPassesIsDropped_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("stop") << int(CancelStop);
    QTest::newRow("restart") << int(CancelRestart);
    QTest::newRow("close") << int(CancelClose);
}

void tst_run_states::aStopBetweenPassesIsDropped()
{
    QFETCH(int, type);
    window().runTimer->start(60000);
    window().StopTimer(CancelType(type));
    QCOMPARE(window().iCancelType, CancelNone);
    QVERIFY(window().runTimer->isActive());
    QCOMPARE(window().statusLabel->text(), QStringLiteral("untouched"));
}

void tst_run_states::aStopInAPassStopsTheTicksAndSaysSo_data()
{
    aStopBetweenPassesIsDropped_data();
}

void tst_run_states::aStopInAPassStopsTheTicksAndSaysSo()
{
    QFETCH(int, type);
    window().runTimer->start(60000);
    window().bBusy = true;
    window().StopTimer(CancelType(type));
    QCOMPARE(int(window().iCancelType), type);
    QVERIFY(!window().runTimer->isActive());
    QVERIFY(fixture->showsStatus(QStringLiteral("Anhalten...")));
    window().bBusy = false;
}

void tst_run_states::aStopInAPassWithoutTicksIsOnlyNoted()
{
    window().bBusy = true;
    window().StopTimer(CancelStop);
    QCOMPARE(window().iCancelType, CancelStop);
    QCOMPARE(window().statusLabel->text(), QStringLiteral("untouched"));
    window().bBusy = false;
}

void tst_run_states::waitingGoesOnWhileAPassRuns()
{
    window().bBusy = true;
    window().iPage = 7;
    window().waitTimer->start(0);
    window().OnWaitTimer();
    QVERIFY(window().waitTimer->isActive());
    QVERIFY(!window().runTimer->isActive());
    QCOMPARE(window().iPage, 7);
    window().bBusy = false;
}

void tst_run_states::waitingEndsWithTheStart()
{
    window().iPage = 7;
    window().waitTimer->start(0);
    window().OnWaitTimer();
    QVERIFY(!window().waitTimer->isActive());
    QVERIFY(window().runTimer->isActive());
    QCOMPARE(window().runTimer->interval(), 1000);
    QCOMPARE(window().iPage, 1);
    QVERIFY(window().outFile.isOpen());
    QVERIFY(fixture->showsStatus(QStringLiteral("Gestartet.")));
}

void tst_run_states::aRunningTickIsNotStartedTwice()
{
    window().runTimer->start(60000);
    window().iPage = 7;
    window().OnWaitTimer();
    QCOMPARE(window().iPage, 1);
    QVERIFY(window().runTimer->isActive());
    QCOMPARE(window().runTimer->interval(), 60000);
    QCOMPARE(window().statusLabel->text(), QStringLiteral("untouched"));
}

void tst_run_states::aSecondStartBeforeTheFirstPassSaysNothing()
{
    window().StartTimer();
    QTRY_VERIFY(fixture->showsStatus(QStringLiteral("Gestartet.")));
    window().statusLabel->setText(QStringLiteral("untouched"));
    window().iPage = 7;
    window().StartTimer();
    QTRY_VERIFY(!window().waitTimer->isActive());
    QCOMPARE(window().iPage, 1);
    QVERIFY(window().runTimer->isActive());
    QCOMPARE(window().statusLabel->text(), QStringLiteral("untouched"));
}

void tst_run_states::buttonsAreSwitchedTogether()
{
    QVERIFY(fixture->startButton());
    QVERIFY(fixture->okButton());
    for (const bool enable : {false, true, false}) {
        window().EnableStartButtons(enable);
        QCOMPARE(fixture->startButton()->isEnabled(), enable);
        QCOMPARE(fixture->okButton()->isEnabled(), enable);
    }
}

void tst_run_states::aRunByTicksReachesTheQuestion()
{
    fixture->serveOrders(sample::manyOrders(101));
    window().StartTimer();
    QTRY_COMPARE_WITH_TIMEOUT(fixture->answers.titles(), QStringList {QStringLiteral("Beendet:")},
                              30000);
    QTRY_VERIFY(fixture->okButton()->isEnabled());
    QVERIFY(fixture->startButton()->isEnabled());
    QVERIFY(!window().runTimer->isActive());
    QVERIFY(!window().outFile.isOpen());
    QVERIFY(fixture->showsStatus(QStringLiteral("Beendet. ")));
    QCOMPARE(folder.exportedLines().size(), 2 + 101);
}

void tst_run_states::anEmptyAddressTicksWithoutEffect()
{
    window().mainurl = QStringLiteral(" \t");
    window().StartTimer();
    QTRY_VERIFY(fixture->showsStatus(QStringLiteral("Gestartet.")));
    QSignalSpy ticks(window().runTimer, &QTimer::timeout);
    QTRY_VERIFY_WITH_TIMEOUT(ticks.size() >= 2, 30000);
    QCoreApplication::processEvents();
    QVERIFY(window().runTimer->isActive());
    QVERIFY(fixture->showsStatus(QStringLiteral("Gestartet.")));
    QVERIFY(fixture->startButton()->isEnabled());
    QVERIFY(!window().bBusy);
    QCOMPARE(fixture->targets(), QStringList());
    QCOMPARE(fixture->answers.titles(), QStringList());
}

void tst_run_states::anUnopenedExportTicksWithoutEffect()
{
    window().outputFilePath = folder.path(QStringLiteral("no such folder/output.csv"));
    window().Reset();
    const QString reported = window().statusLabel->text();
    QVERIFY(reported.contains(QLatin1String("Dateifehler:")));
    window().runTimer->start(1);
    QSignalSpy ticks(window().runTimer, &QTimer::timeout);
    QTRY_VERIFY(ticks.size() >= 3);
    QCoreApplication::processEvents();
    QVERIFY(window().runTimer->isActive());
    QCOMPARE(window().statusLabel->text(), reported);
    QVERIFY(fixture->startButton()->isEnabled());
    QCOMPARE(fixture->targets(), QStringList());
}

void tst_run_states::aStartWithoutAnExportKeepsTheMessage()
{
    window().outputFilePath = folder.path(QStringLiteral("no such folder/output.csv"));
    window().StartTimer();
    QTRY_VERIFY(window().runTimer->isActive());
    QVERIFY(window().statusLabel->text().startsWith(QLatin1String("<br><b>Dateifehler:\r\n")));
}

LEDORA_APP_TEST_MAIN(tst_run_states)

#include "tst_run_states.moc"
