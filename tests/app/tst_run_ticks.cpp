#include "tests/app/many_orders.h"
#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>

using demo_shop::Fault;
using demo_shop::ShopRequest;

/// What one tick does before and after a pass: the order of its tests, and the end of a run.
class tst_run_ticks : public QObject
{
    Q_OBJECT

public:
    explicit tst_run_ticks(const StartFolder& startFolder)
        : folder(startFolder)
    {
    }

private slots:
    void init();
    void cleanup();
    void theEndComesBeforeEveryOtherTest_data();
    void theEndComesBeforeEveryOtherTest();
    void inAPassATickSaysThatItWaits();
    void inAPassATickWithoutAddressOrExportIsSilent_data();
    void inAPassATickWithoutAddressOrExportIsSilent();
    void aTickByTheTimerArrivesInsideARequest();
    void theAddressIsTrimmedAtEachTick();
    void aPassClearsTheErrorAndLocksTheButtons();
    void theEndAsksWhetherToImport();
    void noLeavesTheWindowOpenForAnotherStart();
    void yesClicksTheButtonAndLeavesBothAsTheyAre();
    void aRefusedYesUnlocksTheButtons();
    void anErrorIsToldAndNothingAsked();

private:
    MainWindow& window() const { return *fixture->window; }

    const StartFolder& folder;
    std::unique_ptr<RunFixture> fixture;
};

void tst_run_ticks::init()
{
    fixture = std::make_unique<RunFixture>(folder);
    fixture->start();
    window().Reset();
    window().statusLabel->setText(QStringLiteral("untouched"));
}

void tst_run_ticks::cleanup()
{
    fixture.reset();
}

void tst_run_ticks::theEndComesBeforeEveryOtherTest_data()
{
    QTest::addColumn<bool>("noAddress");
    QTest::addColumn<bool>("noExport");
    QTest::addColumn<bool>("busy");
    QTest::newRow("no address") << true << false << false;
    QTest::newRow("no export") << false << true << false;
    QTest::newRow("in a pass") << false << false << true;
}

void tst_run_ticks::theEndComesBeforeEveryOtherTest()
{
    QFETCH(bool, noAddress);
    QFETCH(bool, noExport);
    QFETCH(bool, busy);
    if (noAddress)
        window().mainurl = QString();
    if (noExport)
        window().outFile.close();
    window().bBusy = busy;
    window().bFinished = true;
    window().runTimer->start(60000);
    window().OnTimer();
    window().bBusy = false;
    QVERIFY(!window().runTimer->isActive());
    QVERIFY(fixture->showsStatus(QStringLiteral("Beendet. ")));
    QCOMPARE(fixture->answers.titles(), QStringList {QStringLiteral("Beendet:")});
}

void tst_run_ticks::inAPassATickSaysThatItWaits()
{
    window().bBusy = true;
    window().OnTimer();
    QVERIFY(window().bBusy);
    window().bBusy = false;
    QVERIFY(fixture->showsStatus(QStringLiteral("Warten...")));
    QCOMPARE(fixture->targets(), QStringList());
}

void tst_run_ticks::inAPassATickWithoutAddressOrExportIsSilent_data()
{
    QTest::addColumn<bool>("noAddress");
    QTest::newRow("no address") << true;
    QTest::newRow("no export") << false;
}

void tst_run_ticks::inAPassATickWithoutAddressOrExportIsSilent()
{
    QFETCH(bool, noAddress);
    if (noAddress)
        window().mainurl = QStringLiteral("  ");
    else
        window().outFile.close();
    window().bBusy = true;
    window().OnTimer();
    window().bBusy = false;
    QCOMPARE(window().statusLabel->text(), QStringLiteral("untouched"));
    QCOMPARE(fixture->targets(), QStringList());
}

void tst_run_ticks::aTickByTheTimerArrivesInsideARequest()
{
    bool waited = false;
    QSignalSpy ticks(window().runTimer, &QTimer::timeout);
    fixture->during("/taxes", [&] {
        // The pass stands in its request; only its event loop can let a tick through.
        waited = QTest::qWaitFor(
            [this] { return fixture->showsStatus(QStringLiteral("Warten...")); }, 30000);
    });
    window().runTimer->start(50);
    QTRY_VERIFY_WITH_TIMEOUT(fixture->answers.titles().contains(QStringLiteral("Beendet:")), 30000);
    QVERIFY(waited);
    QVERIFY(ticks.size() >= 2);
    QCOMPARE(fixture->countOf(QStringLiteral("/orders?")), 1);
}

void tst_run_ticks::theAddressIsTrimmedAtEachTick()
{
    window().mainurl = QStringLiteral(" \n") + fixture->shop.baseUrl() + QStringLiteral("\t ");
    window().OnTimer();
    QCOMPARE(window().csBaseUrl, fixture->shop.baseUrl());
    QVERIFY(window().bFinished);
}

void tst_run_ticks::aPassClearsTheErrorAndLocksTheButtons()
{
    window().bError = true;
    window().csErrorText = QStringLiteral("of the last run");
    bool checked = false;
    fixture->during("/taxes", [&] {
        checked = window().bBusy && !window().bError && window().csErrorText.isEmpty()
            && !fixture->okButton()->isEnabled() && !fixture->startButton()->isEnabled();
    });
    window().OnTimer();
    QVERIFY(checked);
    QVERIFY(!window().bBusy);
    // The buttons stay locked until the run has ended.
    QVERIFY(!fixture->okButton()->isEnabled());
}

void tst_run_ticks::theEndAsksWhetherToImport()
{
    fixture->tickToEnd();
    QCOMPARE(fixture->answers.seen().size(), 1);
    const auto box = fixture->answers.seen().first();
    QCOMPARE(box.title, QStringLiteral("Beendet:"));
    QCOMPARE(box.text,
             QStringLiteral("Der Vorgang wurde beendet, soll der Dialog geschlossen und der Import "
                            "gestartet werden?"));
    QCOMPARE(box.icon, QMessageBox::Question);
    QCOMPARE(box.buttons, QMessageBox::Yes | QMessageBox::No);
}

void tst_run_ticks::noLeavesTheWindowOpenForAnotherStart()
{
    window().show();
    QSignalSpy clicks(fixture->okButton(), &QPushButton::clicked);
    fixture->answers.answer(QStringLiteral("Beendet:"), QMessageBox::No);
    bool closedBeforeTheQuestion = false;
    fixture->answers.whenShown(
        [&](QMessageBox&) { closedBeforeTheQuestion = !window().outFile.isOpen(); });
    fixture->tickToEnd();
    QVERIFY(closedBeforeTheQuestion);
    QCOMPARE(clicks.size(), 0);
    QVERIFY(window().isVisible());
    QVERIFY(fixture->startButton()->isEnabled());
    QVERIFY(fixture->okButton()->isEnabled());
}

void tst_run_ticks::yesClicksTheButtonAndLeavesBothAsTheyAre()
{
    window().show();
    fixture->serveOrders(sample::manyOrders(2));
    fixture->enterCredentials();
    QSignalSpy clicks(fixture->okButton(), &QPushButton::clicked);
    fixture->answers.answer(QStringLiteral("Beendet:"), QMessageBox::Yes);
    fixture->tickToEnd();
    QCOMPARE(clicks.size(), 1);
    QCOMPARE(clicks.first(), QVariantList {false});
    QVERIFY(!fixture->startButton()->isEnabled());
    QVERIFY(!fixture->okButton()->isEnabled());
    QTRY_VERIFY(!window().isVisible());
    QCOMPARE(folder.exportedLines().size(), 4);
}

void tst_run_ticks::aRefusedYesUnlocksTheButtons()
{
    window().show();
    QObject::disconnect(fixture->okButton(), &QPushButton::clicked, nullptr, nullptr);
    fixture->answers.answer(QStringLiteral("Beendet:"), QMessageBox::Yes);
    fixture->tickToEnd();
    QVERIFY(fixture->startButton()->isEnabled());
    QVERIFY(fixture->okButton()->isEnabled());
    QVERIFY(window().isVisible());
}

void tst_run_ticks::anErrorIsToldAndNothingAsked()
{
    window().bFinished = true;
    window().bError = true;
    window().csErrorText = QStringLiteral("a%2Fb %1 nicht da");
    window().EnableStartButtons(false);
    window().runTimer->start(60000);
    window().OnTimer();
    QVERIFY(fixture->showsStatus(QStringLiteral("Beendet. Fehler: a%2Fb %1 nicht da.")));
    QVERIFY(!window().runTimer->isActive());
    QCOMPARE(fixture->answers.titles(), QStringList());
    QVERIFY(fixture->startButton()->isEnabled());
    QVERIFY(fixture->okButton()->isEnabled());
}

LEDORA_APP_TEST_MAIN(tst_run_ticks)

#include "tst_run_ticks.moc"
