#include "tests/app/many_orders.h"
#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include <QLabel>
#include <QPushButton>
#include <QTimer>

using demo_shop::Fault;
using demo_shop::ShopRequest;

/// The question at the end of a run when it comes up over a last page that is still being read.
class tst_run_question : public QObject
{
    Q_OBJECT

public:
    explicit tst_run_question(const StartFolder& startFolder)
        : folder(startFolder)
    {
    }

private slots:
    void init();
    void cleanup();
    void aSlowLastPageIsAskedAboutBeforeItIsWritten();
    void afterEitherAnswerThePageIsWritten_data();
    void afterEitherAnswerThePageIsWritten();
    void aFailedPassBehindTheQuestionIsRepeated();
    void aFailedPassBehindYesIsRepeatedWithoutASecondQuestion();
    void aFailedPassWithAStopPendingIsNotRepeated();
    void aRunThatFailsBehindYesLeavesAnEmptyExport();

private:
    MainWindow& window() const { return *fixture->window; }

    /// Lets a tick fall into the first product request, which is the last page's.
    void tickInsideThePage();
    /// The last order's request fails until \a passes passes of the page have failed.
    void failFor(int passes);

    const StartFolder& folder;
    std::unique_ptr<RunFixture> fixture;
};

void tst_run_question::init()
{
    fixture = std::make_unique<RunFixture>(folder);
    fixture->serveOrders({sample::order(1, {sample::productLine(1, 10)}),
                          sample::order(2, {sample::productLine(2, 20)}),
                          sample::order(3, {sample::line(3)})});
    fixture->start();
    window().show();
    window().Reset();
    fixture->keepTicksAway();
}

void tst_run_question::cleanup()
{
    fixture.reset();
}

void tst_run_question::tickInsideThePage()
{
    fixture->during("/products/10", [this] { window().OnTimer(); });
}

void tst_run_question::failFor(int passes)
{
    fixture->shop.setFaultPlan([this, passes](const ShopRequest& request) {
        const bool fails =
            request.rawTarget.contains("/products/20") && window().iPageRetries < passes;
        return fails ? Fault {Fault::EmptyBody} : Fault {};
    });
}

void tst_run_question::aSlowLastPageIsAskedAboutBeforeItIsWritten()
{
    // By the timer itself: the product request stays open until the question is on screen.
    window().Reset();
    window().runTimer->start(1000);
    bool unfinished = false;
    fixture->answers.whenShown(
        [&](QMessageBox&) { unfinished = window().bBusy && folder.exported().isEmpty(); });
    fixture->during("/products/10", [this] {
        QVERIFY(QTest::qWaitFor([this] { return !fixture->answers.seen().isEmpty(); }, 30000));
    });
    QTRY_VERIFY_WITH_TIMEOUT(!fixture->answers.seen().isEmpty() && !window().bBusy, 60000);
    QVERIFY(unfinished);
    QCOMPARE(fixture->answers.titles(), QStringList {QStringLiteral("Beendet:")});
    QCOMPARE(folder.exportedLines().size(), 2 + 3);
    QVERIFY(!window().runTimer->isActive());
    QVERIFY(!window().outFile.isOpen());
}

void tst_run_question::afterEitherAnswerThePageIsWritten_data()
{
    QTest::addColumn<int>("button");
    QTest::newRow("No") << int(QMessageBox::No);
    QTest::newRow("Yes") << int(QMessageBox::Yes);
}

void tst_run_question::afterEitherAnswerThePageIsWritten()
{
    QFETCH(int, button);
    const bool yes = button == QMessageBox::Yes;
    fixture->enterCredentials();
    fixture->answers.answer(QStringLiteral("Beendet:"), QMessageBox::StandardButton(button));
    tickInsideThePage();
    bool closedMeanwhile = false;
    fixture->during("/products/20", [&] {
        closedMeanwhile =
            yes ? QTest::qWaitFor([this] { return !window().isVisible(); }) : !window().isVisible();
    });
    window().OnTimer();
    QCOMPARE(closedMeanwhile, yes);
    QCOMPARE(fixture->answers.titles(), QStringList {QStringLiteral("Beendet:")});
    QCOMPARE(folder.exportedLines().size(), 2 + 3);
    QVERIFY(!window().outFile.isOpen());
    QVERIFY(!window().bBusy);
    QVERIFY(!window().runTimer->isActive());
    QCoreApplication::processEvents();
    QCOMPARE(folder.exportedLines().size(), 2 + 3);
    QCOMPARE(fixture->okButton()->isEnabled(), !yes);
}

void tst_run_question::aFailedPassBehindTheQuestionIsRepeated()
{
    tickInsideThePage();
    failFor(1);
    window().OnTimer();
    QVERIFY(fixture->showsStatus(QStringLiteral("Netzwerkfehler auf Seite 1, "
                                                "Wiederholung 1/3...")));
    QVERIFY(window().runTimer->isActive());
    QVERIFY(!window().bFinished);
    // The question has freed the buttons, but the run goes on.
    QVERIFY(!fixture->startButton()->isEnabled());
    QCOMPARE(folder.exported(), QByteArray(""));
    fixture->tickToEnd();
    QCOMPARE(folder.exportedLines().size(), 2 + 3);
    QCOMPARE(fixture->answers.titles(),
             QStringList({QStringLiteral("Beendet:"), QStringLiteral("Beendet:")}));
}

void tst_run_question::aFailedPassBehindYesIsRepeatedWithoutASecondQuestion()
{
    fixture->enterCredentials();
    fixture->answers.answer(QStringLiteral("Beendet:"), QMessageBox::Yes);
    tickInsideThePage();
    failFor(1);
    window().OnTimer();
    QTRY_VERIFY(!window().isVisible());
    QVERIFY(window().runTimer->isActive());
    QVERIFY(!window().bFinished);
    fixture->tickToEnd();
    QCOMPARE(folder.exportedLines().size(), 2 + 3);
    QVERIFY(!window().outFile.isOpen());
    QCOMPARE(fixture->answers.titles(), QStringList {QStringLiteral("Beendet:")});
    QVERIFY(!window().runTimer->isActive());
}

void tst_run_question::aFailedPassWithAStopPendingIsNotRepeated()
{
    tickInsideThePage();
    failFor(1);
    fixture->during("/products/20", [this] { window().StopTimer(CancelStop); });
    window().OnTimer();
    QVERIFY(!window().runTimer->isActive());
    QVERIFY(fixture->showsStatus(QStringLiteral("Angehalten.")));
    QCOMPARE(folder.exported(), QByteArray(""));
}

void tst_run_question::aRunThatFailsBehindYesLeavesAnEmptyExport()
{
    fixture->enterCredentials();
    fixture->answers.answer(QStringLiteral("Beendet:"), QMessageBox::Yes);
    tickInsideThePage();
    failFor(3);
    for (int pass = 0; pass < 3; ++pass)
        window().OnTimer();
    QCOMPARE(fixture->answers.titles(),
             QStringList({QStringLiteral("Beendet:"), QStringLiteral("Fehler:")}));
    QVERIFY(window().bError);
    QVERIFY(!window().outFile.isOpen());
    QVERIFY(!folder.exported().isNull());
    QCOMPARE(folder.exported().size(), 0);
}

LEDORA_APP_TEST_MAIN(tst_run_question)

#include "tst_run_question.moc"
