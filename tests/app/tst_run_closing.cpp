#include "tests/app/many_orders.h"
#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

/// A window that is closed without an export, at every stage of a run: no file comes back.
class tst_run_closing : public QObject
{
    Q_OBJECT

public:
    explicit tst_run_closing(const StartFolder& startFolder)
        : folder(startFolder)
    {
    }

private slots:
    void init();
    void cleanup();
    void closingBetweenPassesRemovesTheExport();
    void closingInsideARequestNeverBringsTheExportBack_data();
    void closingInsideARequestNeverBringsTheExportBack();
    void closingInsideAFailingRequestEndsThePass();
    void closingWhileARestartWaitsStartsNothing();
    void closingOverTheQuestionWritesNothing();
    void aWindowClosedInAPassEndsTheProgram_data();
    void aWindowClosedInAPassEndsTheProgram();
    void afterClosingNoRunCanBegin();
    void afterTheHandOverNoRunCanBegin();
    void aStopAfterTheHandOverIsDropped_data();
    void aStopAfterTheHandOverIsDropped();
    void theHandOverOverrulesARestart();

private:
    MainWindow& window() const { return *fixture->window; }

    const StartFolder& folder;
    std::unique_ptr<RunFixture> fixture;
};

void tst_run_closing::init()
{
    fixture = std::make_unique<RunFixture>(folder);
    fixture->serveTaxes({QJsonObject {{QStringLiteral("id"), 3}, {QStringLiteral("rate"), "19"}}});
    QJsonArray orders = sample::manyOrders(102);
    orders[1] = sample::order(2, {sample::productLine(2, 20)},
                              {{QStringLiteral("status"), QStringLiteral("refunded")}});
    orders[101] = sample::order(102, {sample::productLine(102, 1020)});
    fixture->serveOrders(orders);
    const QString href = fixture->shop.baseUrl() + QLatin1String("/file/3");
    const QJsonArray pdf {QJsonObject {{QStringLiteral("href"), href}}};
    fixture->serve(QStringLiteral("/wp-json/wc/v3/orders/3/invoices"),
                   sample::json(QJsonArray {QJsonObject {
                       {QStringLiteral("formatted_number"), QStringLiteral("RE-3")},
                       {QStringLiteral("_links"), QJsonObject {{QStringLiteral("pdf"), pdf}}}}}));
    fixture->serve(QStringLiteral("/file/3"), R"({"file":"JVBERg=="})");
    fixture->start({{QStringLiteral("germanized_use"), true},
                    {QStringLiteral("germanized_pdf_folder"), folder.pdfFolder()}});
    window().show();
    window().Reset();
    fixture->keepTicksAway();
}

void tst_run_closing::cleanup()
{
    fixture.reset();
}

void tst_run_closing::closingBetweenPassesRemovesTheExport()
{
    window().OnTimer();
    QVERIFY(!folder.exported().isEmpty());
    window().close();
    QTRY_VERIFY(!window().isVisible());
    QVERIFY(folder.exported().isNull());
    QVERIFY(!window().runTimer->isActive());
    QVERIFY(!window().waitTimer->isActive());
}

void tst_run_closing::closingInsideARequestNeverBringsTheExportBack_data()
{
    QTest::addColumn<QByteArray>("part");
    QTest::newRow("tax rates") << QByteArray("/taxes?per_page=100&page=1");
    QTest::newRow("tax rates, the empty page") << QByteArray("/taxes?per_page=100&page=2");
    QTest::newRow("first page") << QByteArray("refunded&page=1&");
    QTest::newRow("invoices") << QByteArray("/orders/1/invoices");
    QTest::newRow("invoice file") << QByteArray("/file/3");
    QTest::newRow("refunds") << QByteArray("/orders/2/refunds");
    QTest::newRow("product") << QByteArray("/products/20");
    QTest::newRow("second page") << QByteArray("refunded&page=2&");
    QTest::newRow("product of the last page") << QByteArray("/products/1020");
}

void tst_run_closing::closingInsideARequestNeverBringsTheExportBack()
{
    QFETCH(QByteArray, part);
    bool closed = false;
    bool removed = false;
    int requests = 0;
    fixture->during(part, [&] {
        window().close();
        closed = true;
        removed = folder.exported().isNull();
        requests = int(fixture->shop.requests().size());
    });
    for (int pass = 0; pass < 2 && !closed; ++pass)
        window().OnTimer();
    QVERIFY(closed);
    QTRY_VERIFY(!window().isVisible());
    QVERIFY(removed);
    QVERIFY(folder.exported().isNull());
    QVERIFY(!window().bBusy);
    QVERIFY(!window().outFile.isOpen());
    QVERIFY(!window().runTimer->isActive());
    QCOMPARE(fixture->shop.requests().size(), requests);
    window().Reset();
    QCoreApplication::processEvents();
    QVERIFY(folder.exported().isNull());
    QCOMPARE(fixture->shop.requests().size(), requests);
    QCOMPARE(fixture->answers.titles(), QStringList());
}

void tst_run_closing::closingInsideAFailingRequestEndsThePass()
{
    fixture->serve(QStringLiteral("/wp-json/wc/v3/products/20"), "{}", 500);
    fixture->during("/products/20", [this] { window().close(); });
    window().OnTimer();
    QCOMPARE(fixture->countOf(QStringLiteral("/products/20")), 1);
    QVERIFY(folder.exported().isNull());
    QVERIFY(!window().runTimer->isActive());
    QCOMPARE(fixture->answers.titles(), QStringList());
}

void tst_run_closing::closingWhileARestartWaitsStartsNothing()
{
    fixture->during("/products/20", [this] {
        window().StartTimer();
        window().close();
    });
    window().OnTimer();
    QVERIFY(!window().waitTimer->isActive());
    QCoreApplication::processEvents();
    QVERIFY(!window().runTimer->isActive());
    QVERIFY(folder.exported().isNull());
}

void tst_run_closing::closingOverTheQuestionWritesNothing()
{
    window().OnTimer();
    fixture->answers.whenShown([this](QMessageBox&) { window().close(); });
    fixture->during("/products/1020", [this] { window().OnTimer(); });
    window().OnTimer();
    QCOMPARE(fixture->answers.titles(), QStringList {QStringLiteral("Beendet:")});
    QTRY_VERIFY(!window().isVisible());
    QVERIFY(folder.exported().isNull());
}

void tst_run_closing::aWindowClosedInAPassEndsTheProgram_data()
{
    QTest::addColumn<bool>("accepted");
    QTest::newRow("given up") << false;
    QTest::newRow("handed over") << true;
}

void tst_run_closing::aWindowClosedInAPassEndsTheProgram()
{
    QFETCH(bool, accepted);
    if (accepted)
        fixture->enterCredentials();
    window().OnTimer();
    fixture->during("/products/1020", [&] {
        if (accepted)
            emit fixture->okButton()->clicked(false);
        else
            window().close();
    });
    window().OnTimer();
    QVERIFY(!window().bBusy);
    // The end of the program is asked for by the pass, not by its last window, which is the test's.
    bool asked = true;
    QTimer tooLate;
    tooLate.setSingleShot(true);
    connect(&tooLate, &QTimer::timeout, this, [&] {
        asked = false;
        QCoreApplication::quit();
    });
    tooLate.start(20000);
    QCOMPARE(QCoreApplication::exec(), 0);
    QVERIFY(asked);
    QVERIFY(!window().isVisible());
    QCOMPARE(folder.exportedLines().size(), accepted ? 2 + 102 : 0);
}

void tst_run_closing::afterClosingNoRunCanBegin()
{
    window().close();
    window().StartTimer();
    QVERIFY(!window().waitTimer->isActive());
    window().Reset();
    window().OnTimer();
    QVERIFY(!window().outFile.isOpen());
    QVERIFY(folder.exported().isNull());
    QCOMPARE(fixture->targets(), QStringList());
}

void tst_run_closing::afterTheHandOverNoRunCanBegin()
{
    window().OnTimer();
    const QByteArray handedOver = folder.exported();
    fixture->enterCredentials();
    emit fixture->okButton()->clicked(false);
    window().StartTimer();
    QVERIFY(!window().waitTimer->isActive());
    QTRY_VERIFY(!window().isVisible());
    QVERIFY(!window().runTimer->isActive());
    QCOMPARE(folder.exported(), handedOver);
}

void tst_run_closing::aStopAfterTheHandOverIsDropped_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("stop") << int(CancelStop);
    QTest::newRow("restart") << int(CancelRestart);
    QTest::newRow("close") << int(CancelClose);
}

void tst_run_closing::aStopAfterTheHandOverIsDropped()
{
    QFETCH(int, type);
    fixture->serveOrders(
        {sample::order(1, {sample::productLine(1, 1020)}), sample::order(2, {sample::line(2)})});
    fixture->enterCredentials();
    fixture->during("/products/1020", [this, type] {
        emit fixture->okButton()->clicked(false);
        window().StopTimer(CancelType(type));
    });
    window().OnTimer();
    QCOMPARE(folder.exportedLines().size(), 2 + 2);
}

void tst_run_closing::theHandOverOverrulesARestart()
{
    window().OnTimer();
    fixture->enterCredentials();
    fixture->during("/products/1020", [this] {
        window().StartTimer();
        emit fixture->okButton()->clicked(false);
    });
    window().OnTimer();
    QTRY_VERIFY(!window().isVisible());
    QVERIFY(!window().waitTimer->isActive());
    QCOMPARE(folder.exportedLines().size(), 2 + 102);
}

LEDORA_APP_TEST_MAIN(tst_run_closing)

#include "tst_run_closing.moc"
