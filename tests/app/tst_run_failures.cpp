#include "accounting/order_taxes.h"
#include "tests/app/many_orders.h"
#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

using demo_shop::Fault;
using demo_shop::ShopRequest;

/// Passes that fail: what is put back, what is said, and when the run gives up.
class tst_run_failures : public QObject
{
    Q_OBJECT

public:
    explicit tst_run_failures(const StartFolder& startFolder)
        : folder(startFolder)
    {
    }

private slots:
    void init();
    void cleanup();
    void aFailedFirstPagePutsEverythingBack();
    void aFailedFirstPageReadsTheRatesAnew();
    void aFailedLaterPageKeepsHeaderRatesAndRows();
    void aFailedLastPageIsNotFinished();
    void whatIsLearntAndStoredStays();
    void eachPageHasItsOwnFailures();
    void theThirdFailedPassEndsTheRun();
    void aFailedRunEmptiesTheEarlierPagesToo();
    void aTickBehindTheBoxEndsTheRun();
    void aRunAfterAFailureStartsClean();

private:
    MainWindow& window() const { return *fixture->window; }

    /// Answers to targets that contain \a part are errors until \a passes passes of the page have
    /// failed.
    void failFor(const QByteArray& part, int passes);

    const StartFolder& folder;
    std::unique_ptr<RunFixture> fixture;
};

void tst_run_failures::init()
{
    fixture = std::make_unique<RunFixture>(folder);
    fixture->serveTaxes({QJsonObject {{QStringLiteral("id"), 3}, {QStringLiteral("rate"), "19"}}});
    QJsonArray orders = sample::manyOrders(103);
    orders[1] = sample::order(2, {sample::productLine(2, 20)});
    orders[2] = sample::order(3, {sample::productLine(3, 30)});
    orders[101] = sample::order(102, {sample::productLine(102, 1020)});
    fixture->serveOrders(orders);
    fixture->start();
    window().Reset();
    fixture->keepTicksAway();
}

void tst_run_failures::cleanup()
{
    fixture.reset();
}

void tst_run_failures::failFor(const QByteArray& part, int passes)
{
    fixture->shop.setFaultPlan([this, part, passes](const ShopRequest& request) {
        const bool fails = request.rawTarget.contains(part) && window().iPageRetries < passes;
        return fails ? Fault {Fault::Status, 503} : Fault {};
    });
}

void tst_run_failures::aFailedFirstPagePutsEverythingBack()
{
    failFor("/products/30", 1);
    window().OnTimer();
    QCOMPARE(window().csvHeaders, QStringList());
    QCOMPARE(window().iExportCount, 0);
    QCOMPARE(window().iPage, 1);
    QVERIFY(!window().bFinished);
    QVERIFY(!window().bHeaderWritten);
    QVERIFY(globalTaxRates.empty());
    QCOMPARE(window().iPageRetries, 1);
    QVERIFY(!window().bBusy);
    QVERIFY(!window().bError);
    QVERIFY(window().csErrorText.startsWith(QLatin1String("Netzwerkfehler nach 3 Versuchen: ")));
    QCOMPARE(folder.exported(), QByteArray(""));
    QVERIFY(window().runTimer->isActive());
    QVERIFY(!fixture->startButton()->isEnabled());
    QVERIFY(fixture->showsStatus(QStringLiteral("Netzwerkfehler auf Seite 1, "
                                                "Wiederholung 1/3...")));
}

void tst_run_failures::aFailedFirstPageReadsTheRatesAnew()
{
    failFor("/orders?", 1);
    window().OnTimer();
    QVERIFY(globalTaxRates.empty());
    fixture->shop.clearRequests();
    window().OnTimer();
    QCOMPARE(fixture->countOf(QStringLiteral("/taxes?")), 2);
    QCOMPARE(folder.exportedLines().size(), 2 + 100);
}

void tst_run_failures::aFailedLaterPageKeepsHeaderRatesAndRows()
{
    window().OnTimer();
    const QByteArray firstPage = folder.exported();
    const QStringList headers = window().csvHeaders;
    failFor("/products/1020", 2);
    for (const int failed : {1, 2}) {
        window().OnTimer();
        QCOMPARE(window().iPageRetries, failed);
        QCOMPARE(window().csvHeaders, headers);
        QCOMPARE(window().iExportCount, 100);
        QCOMPARE(window().iPage, 2);
        QVERIFY(window().bHeaderWritten);
        QCOMPARE(globalTaxRates.size(), std::size_t(1));
        QCOMPARE(folder.exported(), firstPage);
        QVERIFY(fixture->showsStatus(
            QStringLiteral("Netzwerkfehler auf Seite 2, Wiederholung %1/3...").arg(failed)));
    }
    window().OnTimer();
    QCOMPARE(window().iPageRetries, 0);
    QCOMPARE(folder.exportedLines().size(), 2 + 103);
    QVERIFY(folder.exported().startsWith(firstPage));
    QCOMPARE(fixture->countOf(QStringLiteral("/taxes?")), 2);
}

void tst_run_failures::aFailedLastPageIsNotFinished()
{
    window().OnTimer();
    bool finished = false;
    fixture->during("/products/1020", [&] { finished = window().bFinished; });
    failFor("/products/1020", 1);
    window().OnTimer();
    QVERIFY(finished);
    QVERIFY(!window().bFinished);
    QVERIFY(window().outFile.isOpen());
}

void tst_run_failures::whatIsLearntAndStoredStays()
{
    const QString href = fixture->shop.baseUrl() + QLatin1String("/file/1");
    const QJsonArray pdf {QJsonObject {{QStringLiteral("href"), href}}};
    const QJsonObject links {{QStringLiteral("pdf"), pdf}};
    fixture->serve(QStringLiteral("/wp-json/wc/v3/orders/1/invoices"),
                   sample::json(QJsonArray {
                       QJsonObject {{QStringLiteral("formatted_number"), QStringLiteral("RE-1")},
                                    {QStringLiteral("_links"), links}}}));
    fixture->serve(QStringLiteral("/file/1"), R"({"file":"JVBERg=="})");
    window().germanized_use = true;
    window().germanized_pdf_folder = folder.pdfFolder();
    window().Reset();
    failFor("/products/30", 1);
    window().OnTimer();
    QCOMPARE(window().iPageRetries, 1);
    QVERIFY(QFile::exists(folder.pdfFolder() + QLatin1String("/RE-1.pdf")));
    QCOMPARE(window().iPdfCount, 1);
    QVERIFY(window().iBytesReceived > 0);
    QCOMPARE(window().productFlags.keys(), QList<int> {20});

    fixture->shop.clearRequests();
    window().OnTimer();
    QCOMPARE(fixture->countOf(QStringLiteral("/products/20")), 0);
    QCOMPARE(fixture->countOf(QStringLiteral("/file/1")), 0);
    QCOMPARE(window().iPdfCount, 1);
}

void tst_run_failures::eachPageHasItsOwnFailures()
{
    // Two failed passes on each of two pages are no failed run.
    failFor("/orders?", 2);
    for (int pass = 0; pass < 6; ++pass)
        window().OnTimer();
    QVERIFY(window().bFinished);
    QVERIFY(!window().bError);
    QCOMPARE(folder.exportedLines().size(), 2 + 103);
    QCOMPARE(fixture->answers.titles(), QStringList());
}

void tst_run_failures::theThirdFailedPassEndsTheRun()
{
    failFor("/orders?", 3);
    for (int pass = 0; pass < 3; ++pass)
        window().OnTimer();
    const QString address = fixture->shop.baseUrl()
        + QLatin1String("/wp-json/wc/v3/orders?per_page=100&status=completed, refunded&page=1"
                        "&orderby=date&order=asc&dates_are_gmt=true");
    const QString error = QLatin1String("Netzwerkfehler nach 3 Versuchen: Error transferring ")
        + address + QLatin1String(" - server replied: Service Unavailable (URL: ") + address
        + QLatin1Char(')');
    QCOMPARE(fixture->answers.seen().size(), 1);
    const auto box = fixture->answers.seen().first();
    QCOMPARE(box.title, QStringLiteral("Fehler:"));
    QCOMPARE(box.text,
             QLatin1String("Export auf Seite 1 nach 3 Versuchen fehlgeschlagen:\n") + error);
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(fixture->countOf(QStringLiteral("/orders?")), 9);
    QVERIFY(window().bFinished);
    QVERIFY(window().bError);
    QCOMPARE(window().csErrorText, error);
    QVERIFY(!window().outFile.isOpen());
    QVERIFY(!folder.exported().isNull());
    QCOMPARE(folder.exported().size(), 0);

    window().OnTimer();
    QVERIFY2(fixture->showsStatus(QLatin1String("Beendet. Fehler: ") + error + QLatin1Char('.')),
             qPrintable(window().statusLabel->text()));
    QCOMPARE(fixture->answers.titles(), QStringList {QStringLiteral("Fehler:")});
    QVERIFY(!window().runTimer->isActive());
    QVERIFY(fixture->startButton()->isEnabled());
    QVERIFY(fixture->okButton()->isEnabled());
}

void tst_run_failures::aFailedRunEmptiesTheEarlierPagesToo()
{
    window().OnTimer();
    QCOMPARE(folder.exportedLines().size(), 2 + 100);
    failFor("/products/1020", 3);
    for (int pass = 0; pass < 3; ++pass)
        window().OnTimer();
    const QString text = fixture->answers.seen().first().text;
    QVERIFY2(
        text.startsWith(QLatin1String("Export auf Seite 2 nach 3 Versuchen fehlgeschlagen:\n")),
        qPrintable(text));
    QVERIFY(!folder.exported().isNull());
    QCOMPARE(folder.exported().size(), 0);
}

void tst_run_failures::aTickBehindTheBoxEndsTheRun()
{
    window().iPageRetries = 2;
    failFor("/taxes", 3);
    bool unlocked = false;
    fixture->answers.whenShown([&](QMessageBox&) {
        window().OnTimer();
        unlocked = fixture->startButton()->isEnabled();
    });
    window().OnTimer();
    QVERIFY(unlocked);
    QCOMPARE(fixture->answers.titles(), QStringList {QStringLiteral("Fehler:")});
    QVERIFY(window().statusLabel->text().startsWith(QLatin1String("<br><b>Beendet. Fehler: ")));
    QVERIFY(!window().runTimer->isActive());
    QVERIFY(!window().outFile.isOpen());
    QVERIFY(!window().bBusy);
    QCOMPARE(folder.exported(), QByteArray(""));
}

void tst_run_failures::aRunAfterAFailureStartsClean()
{
    window().iPageRetries = 2;
    failFor("/taxes", 3);
    window().OnTimer();
    QVERIFY(window().bError);
    fixture->shop.setFaultPlan({});
    fixture->answers.clear();
    fixture->runToEnd();
    QCOMPARE(fixture->answers.titles(), QStringList {QStringLiteral("Beendet:")});
    QVERIFY(fixture->showsStatus(QStringLiteral("Beendet. ")));
    QCOMPARE(folder.exportedLines().size(), 2 + 103);
}

LEDORA_APP_TEST_MAIN(tst_run_failures)

#include "tst_run_failures.moc"
