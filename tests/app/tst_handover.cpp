#include "tests/app/run_fixture.h"
#include "tests/app/sample_orders.h"
#include "tests/support/app_test.h"

#include <QNetworkAccessManager>
#include <QPushButton>
#include <QTimer>

using demo_shop::Fault;
using demo_shop::ShopRequest;

/// An export that is handed over while its last page is still on its way.
class tst_handover : public QObject
{
    Q_OBJECT

public:
    explicit tst_handover(const StartFolder& startFolder)
        : folder(startFolder)
    {
    }

private slots:
    void init();
    void cleanup();
    void yesOnceTheReplyIsThereWritesThePageAndEndsTheProgram();
    void yesOverAnOpenReplyWritesThePageAndEndsTheProgram();
    void noBeforeAFailedPassLocksTheButtonsUntilTheRepeat();
    void aPendingRestartDoesNotEmptyWhatIsHandedOver();
    void aPageThatFailsOnceIsRepeatedBehindTheClosedWindow();
    void aPageThatFailsForGoodLeavesAnEmptyExport();

private:
    MainWindow& window() const { return *fixture->window; }

    /// The last order's request fails until \a passes passes of the page have failed.
    void failFor(int passes);
    /// Lets a tick, and so the question, fall into the first request of the page.
    void tickInsideThePage();
    /// Makes a pass in the program's own event loop. \return true if the program ended by itself
    bool endsByItself();

    const StartFolder& folder;
    std::unique_ptr<RunFixture> fixture;
};

void tst_handover::init()
{
    fixture = std::make_unique<RunFixture>(folder);
    fixture->serveOrders({sample::order(1, {sample::productLine(1, 10)}),
                          sample::order(2, {sample::productLine(2, 20)}),
                          sample::order(3, {sample::line(3)})});
    fixture->start({{QStringLiteral("b2c_handling"), QVariantList {1}}});
    fixture->enterCredentials();
    window().show();
    window().Reset();
    // The pace of repeated passes.
    window().runTimer->setInterval(50);
}

void tst_handover::cleanup()
{
    fixture.reset();
}

void tst_handover::failFor(int passes)
{
    fixture->shop.setFaultPlan([this, passes](const ShopRequest& request) {
        const bool fails =
            request.rawTarget.contains("/products/20") && window().iPageRetries < passes;
        return fails ? Fault {Fault::EmptyBody} : Fault {};
    });
}

void tst_handover::tickInsideThePage()
{
    fixture->during("/products/10", [this] { window().OnTimer(); });
}

bool tst_handover::endsByItself()
{
    QGuiApplication::setQuitOnLastWindowClosed(true);
    QTimer bound;
    connect(&bound, &QTimer::timeout, this, [] { QCoreApplication::exit(1); });
    bound.start(20000);
    QTimer::singleShot(0, &window(), &MainWindow::OnTimer);
    const int status = QCoreApplication::exec();
    QGuiApplication::setQuitOnLastWindowClosed(false);
    return status == 0;
}

void tst_handover::yesOnceTheReplyIsThereWritesThePageAndEndsTheProgram()
{
    const QString title = QStringLiteral("Beendet:");
    fixture->answers.answer(title, QMessageBox::Yes);
    fixture->answers.hold(title);
    bool replied = false;
    bool unwritten = false;
    QTimer release;
    connect(&release, &QTimer::timeout, this, [&] {
        if (!replied || !fixture->answers.isHolding())
            return;
        release.stop();
        unwritten = window().bBusy && folder.exported().isEmpty();
        fixture->answers.release();
    });
    // The last request of the page: its handler returns before the question comes up.
    fixture->during("/products/20", [&] {
        connect(window().networkManager, &QNetworkAccessManager::finished, this,
                [&replied] { replied = true; });
        QTimer::singleShot(0, &window(), &MainWindow::OnTimer);
        release.start(10);
    });
    QVERIFY(endsByItself());
    QVERIFY(unwritten);
    QCOMPARE(folder.exportedLines().size(), 2 + 3);
    QVERIFY(!window().isVisible());
    QVERIFY(!window().outFile.isOpen());
    // Nothing of the hand-over is left that would take the export away with the window.
    fixture->window.reset();
    QCOMPARE(folder.exportedLines().size(), 2 + 3);
}

void tst_handover::yesOverAnOpenReplyWritesThePageAndEndsTheProgram()
{
    fixture->answers.answer(QStringLiteral("Beendet:"), QMessageBox::Yes);
    tickInsideThePage();
    QVERIFY(endsByItself());
    QVERIFY(!window().isVisible());
    fixture->window.reset();
    QCOMPARE(folder.exportedLines().size(), 2 + 3);
}

void tst_handover::noBeforeAFailedPassLocksTheButtonsUntilTheRepeat()
{
    fixture->keepTicksAway();
    tickInsideThePage();
    failFor(1);
    bool unlocked = false;
    fixture->during("/products/20", [&] { unlocked = fixture->okButton()->isEnabled(); });
    window().OnTimer();
    QVERIFY(unlocked);
    QCOMPARE(window().iPageRetries, 1);
    QVERIFY(!fixture->okButton()->isEnabled());
    QVERIFY(!fixture->startButton()->isEnabled());
    fixture->tickToEnd();
    QCOMPARE(folder.exportedLines().size(), 2 + 3);
    QVERIFY(fixture->okButton()->isEnabled());
    QVERIFY(fixture->startButton()->isEnabled());
}

void tst_handover::aPendingRestartDoesNotEmptyWhatIsHandedOver()
{
    bool pending = false;
    fixture->during("/products/10", [&] {
        window().OnTimer();
        fixture->startButton()->click();
        pending = window().waitTimer->isActive();
        fixture->okButton()->click();
    });
    QVERIFY(endsByItself());
    QVERIFY(pending);
    QVERIFY(!window().isVisible());
    QCOMPARE(folder.exportedLines().size(), 2 + 3);
}

void tst_handover::aPageThatFailsOnceIsRepeatedBehindTheClosedWindow()
{
    fixture->answers.answer(QStringLiteral("Beendet:"), QMessageBox::Yes);
    tickInsideThePage();
    failFor(1);
    QVERIFY(endsByItself());
    QCOMPARE(fixture->countOf(QStringLiteral("/v3/orders?")), 2);
    QCOMPARE(fixture->answers.titles(), QStringList {QStringLiteral("Beendet:")});
    QVERIFY(!window().isVisible());
    QCOMPARE(folder.exportedLines().size(), 2 + 3);
}

void tst_handover::aPageThatFailsForGoodLeavesAnEmptyExport()
{
    fixture->answers.answer(QStringLiteral("Beendet:"), QMessageBox::Yes);
    tickInsideThePage();
    failFor(3);
    QVERIFY(endsByItself());
    QCOMPARE(fixture->answers.titles(),
             QStringList({QStringLiteral("Beendet:"), QStringLiteral("Fehler:")}));
    QVERIFY(!folder.exported().isNull());
    QCOMPARE(folder.exported().size(), 0);
}

LEDORA_APP_TEST_MAIN(tst_handover)

#include "tst_handover.moc"
