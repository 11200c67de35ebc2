#include "tests/app/many_orders.h"
#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include <QLabel>
#include <QPushButton>
#include <QTimer>

/// Stop requests that arrive while a pass is under way.
class tst_run_stop : public QObject
{
    Q_OBJECT

public:
    explicit tst_run_stop(const StartFolder& startFolder)
        : folder(startFolder)
    {
    }

private slots:
    void init();
    void cleanup();
    void aStopBetweenPassesLetsTheRunGoOn();
    void aStopAfterTheHeaderKeepsTheRows();
    void aStopWhileTaxesAreReadStillTakesTheFirstOrder();
    void aStopBeforeTheHeaderEmptiesTheExport();
    void aStopInAFailingPassEmptiesTheExport();
    void aStopInALaterFailingPassKeepsTheEarlierPages();
    void aStopOnTheLastPageAsksNothing();
    void aSavedStopEndsThePass();
    void aRestartInAPassBeginsAfresh();
    void aCloseRequestInAPassClosesTheWindow();
    void aStoppedRunCanBeStartedAgain();

private:
    MainWindow& window() const { return *fixture->window; }

    /// A run whose ticks are far apart, so that only the test makes passes.
    void startSlowly();
    void stopDuring(const QByteArray& part, CancelType type);

    const StartFolder& folder;
    std::unique_ptr<RunFixture> fixture;
};

void tst_run_stop::init()
{
    fixture = std::make_unique<RunFixture>(folder);
    // The third order asks for a product: by then two have rows.
    QJsonArray orders = sample::manyOrders(150);
    orders[2] = sample::order(3, {sample::productLine(3, 33)});
    fixture->serveOrders(orders);
    fixture->start();
    window().show();
}

void tst_run_stop::cleanup()
{
    fixture.reset();
}

void tst_run_stop::startSlowly()
{
    window().Reset();
    fixture->keepTicksAway();
}

void tst_run_stop::stopDuring(const QByteArray& part, CancelType type)
{
    fixture->during(part, [this, type] { window().StopTimer(type); });
}

void tst_run_stop::aStopBetweenPassesLetsTheRunGoOn()
{
    startSlowly();
    window().OnTimer();
    window().StopTimer(CancelStop);
    QVERIFY(window().runTimer->isActive());
    fixture->tickToEnd();
    QCOMPARE(folder.exportedLines().size(), 2 + 150);
    QCOMPARE(fixture->answers.titles(), QStringList {QStringLiteral("Beendet:")});
}

void tst_run_stop::aStopAfterTheHeaderKeepsTheRows()
{
    startSlowly();
    bool said = false;
    fixture->during("/products/33", [&] {
        window().StopTimer(CancelStop);
        said = fixture->showsStatus(QStringLiteral("Anhalten..."));
    });
    window().OnTimer();
    QVERIFY(said);
    QVERIFY(fixture->showsStatus(QStringLiteral("Angehalten.")));
    // The order that was under way is still finished.
    QCOMPARE(folder.exportedLines().size(), 2 + 3);
    QCOMPARE(window().iExportCount, 3);
    QVERIFY(!window().runTimer->isActive());
    QVERIFY(!window().bBusy);
    QCOMPARE(window().iCancelType, CancelNone);
    QVERIFY(fixture->startButton()->isEnabled());
    QVERIFY(fixture->okButton()->isEnabled());
    QCOMPARE(fixture->answers.titles(), QStringList());
}

void tst_run_stop::aStopWhileTaxesAreReadStillTakesTheFirstOrder()
{
    startSlowly();
    stopDuring("/taxes", CancelStop);
    window().OnTimer();
    QCOMPARE(folder.exportedLines().size(), 2 + 1);
    QVERIFY(fixture->showsStatus(QStringLiteral("Angehalten.")));
}

void tst_run_stop::aStopBeforeTheHeaderEmptiesTheExport()
{
    fixture->serveOrders({});
    startSlowly();
    window().iPdfCount = 7;
    stopDuring("/orders?", CancelStop);
    window().OnTimer();
    QCOMPARE(folder.exported().size(), 0);
    QVERIFY(!folder.exported().isNull());
    // Back at the beginning, so not finished either.
    QCOMPARE(window().iPdfCount, 0);
    QCOMPARE(window().iPage, 1);
    QVERIFY(!window().bFinished);
    QVERIFY(window().outFile.isOpen());
    QVERIFY(fixture->showsStatus(QStringLiteral("Angehalten.")));
    QVERIFY(fixture->startButton()->isEnabled());
    QVERIFY(!window().runTimer->isActive());
}

void tst_run_stop::aStopInAFailingPassEmptiesTheExport()
{
    fixture->serve(QStringLiteral("/wp-json/wc/v3/products/33"), "{}", 500);
    startSlowly();
    stopDuring("/products/33", CancelStop);
    window().OnTimer();
    QCOMPARE(folder.exported().size(), 0);
    QVERIFY(fixture->showsStatus(QStringLiteral("Angehalten.")));
    QVERIFY(!window().runTimer->isActive());
    QCOMPARE(window().iPageRetries, 0);
    QVERIFY(fixture->startButton()->isEnabled());
}

void tst_run_stop::aStopInALaterFailingPassKeepsTheEarlierPages()
{
    startSlowly();
    window().OnTimer();
    fixture->serve(QStringLiteral("/wp-json/wc/v3/orders"), "{}", 500);
    stopDuring("/orders?", CancelStop);
    window().OnTimer();
    QCOMPARE(folder.exportedLines().size(), 2 + 100);
    QVERIFY(fixture->showsStatus(QStringLiteral("Angehalten.")));
    QVERIFY(!window().runTimer->isActive());
    QVERIFY(!window().bFinished);
}

void tst_run_stop::aStopOnTheLastPageAsksNothing()
{
    fixture->serveOrders({sample::order(1, {sample::line(1)}),
                          sample::order(2, {sample::productLine(2, 44)}),
                          sample::order(3, {sample::line(3)})});
    startSlowly();
    stopDuring("/products/44", CancelStop);
    window().OnTimer();
    QVERIFY(window().bFinished);
    QVERIFY(!window().outFile.isOpen());
    QVERIFY(!window().runTimer->isActive());
    QVERIFY(fixture->showsStatus(QStringLiteral("Angehalten.")));
    QCoreApplication::processEvents();
    QCOMPARE(fixture->answers.titles(), QStringList());
    QCOMPARE(folder.exportedLines().size(), 2 + 2);
}

void tst_run_stop::aSavedStopEndsThePass()
{
    startSlowly();
    fixture->during("/products/33", [this] { window().SaveConfig(true); });
    window().OnTimer();
    QVERIFY(fixture->showsStatus(QStringLiteral("Angehalten.")));
    QCOMPARE(folder.exportedLines().size(), 2 + 3);
}

void tst_run_stop::aRestartInAPassBeginsAfresh()
{
    startSlowly();
    fixture->during("/products/33", [this] { window().StartTimer(); });
    window().OnTimer();
    QVERIFY(fixture->showsStatus(QStringLiteral("Angehalten.")));
    QVERIFY(fixture->startButton()->isEnabled());
    QCOMPARE(folder.exported().size(), 0);
    QCOMPARE(window().iPage, 1);
    QVERIFY(window().waitTimer->isActive());
    QVERIFY(!window().runTimer->isActive());

    QTRY_VERIFY(fixture->showsStatus(QStringLiteral("Gestartet.")));
    QVERIFY(!window().waitTimer->isActive());
    QVERIFY(window().runTimer->isActive());
    window().runTimer->stop();
    fixture->tickToEnd();
    QCOMPARE(folder.exportedLines().size(), 2 + 150);
}

void tst_run_stop::aCloseRequestInAPassClosesTheWindow()
{
    startSlowly();
    stopDuring("/products/33", CancelClose);
    window().OnTimer();
    QVERIFY(fixture->showsStatus(QStringLiteral("Angehalten.")));
    QTRY_VERIFY(!window().isVisible());
    QVERIFY(folder.exported().isNull());
    QVERIFY(!window().runTimer->isActive());
    QCOMPARE(fixture->answers.titles(), QStringList());
}

void tst_run_stop::aStoppedRunCanBeStartedAgain()
{
    startSlowly();
    stopDuring("/products/33", CancelStop);
    window().OnTimer();
    window().StartTimer();
    QTRY_VERIFY(fixture->showsStatus(QStringLiteral("Gestartet.")));
    QCOMPARE(folder.exported().size(), 0);
    window().runTimer->stop();
    fixture->tickToEnd();
    QCOMPARE(folder.exportedLines().size(), 2 + 150);
}

LEDORA_APP_TEST_MAIN(tst_run_stop)

#include "tst_run_stop.moc"
