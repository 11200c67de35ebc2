#include "tests/app/export_table.h"
#include "tests/app/run_fixture.h"
#include "tests/app/sample_orders.h"
#include "tests/support/app_test.h"

#include <QDir>

#include <optional>

namespace {

QString s(const char* text)
{
    return QString::fromUtf8(text);
}

QByteArray fileAnswer(const QByteArray& content)
{
    return R"({"file":")" + content.toBase64() + R"("})";
}

} // namespace

/// Invoices of the Germanized extension: their files and their columns.
class tst_invoices : public QObject
{
    Q_OBJECT

public:
    explicit tst_invoices(const StartFolder& folder)
        : m_folder(folder)
    {
    }

private slots:
    void init();
    void withoutTheExtensionNothingIsAsked();
    void anOrderWithoutInvoicesHasEmptyCells();
    void anInvoiceIsStoredAndNamed();
    void numbersOfAnyTypeGiveTheSameCells();
    void twoInvoicesGiveBothPathsAndTheLastNumbers();
    void invoicesStandInEveryRowOfTheirOrder();
    void theFirstOrderOfTheRunMayBeWithoutInvoices();
    void skippedOrdersGetTheirFiles();
    void filesAreAskedForWithTheAddressAsSent();
    void filesAreFetchedWithTheLoginFromWhereTheShopSays();
    void aSecondRunMakesNoRequestsForExistingFiles();
    void withOverwritingEveryRunStoresAnew();
    void ofSeveralLinksTheFirstWins();
    void withOverwritingTheLastLinkWins();
    void emptyLinksArePassedOver();
    void anAnswerWithoutFileStoresNothing_data();
    void anAnswerWithoutFileStoresNothing();
    void aLaterLinkMayHoldTheFile();
    void aFileThatComesUpDuringTheRequestIsKept();
    void withOverwritingSuchAFileIsReplaced();
    void aFileThatCantBeOpenedIsLostSilently();
    void aPathInTheNumberReachesTheFileSystem();
    void aLongerFileIsReplacedWhole();
    void aFailedRequestDropsThePageAndKeepsTheFiles();

private:
    /// An invoice whose files lie at \a paths of the shop.
    QJsonObject invoice(const QString& number, const QStringList& paths,
                        const QJsonObject& more = {}) const;
    void serveInvoices(int order, const QJsonArray& invoices);
    MainWindow& start(const QMap<QString, QVariant>& options = {});
    ExportTable run(const QMap<QString, QVariant>& options = {});
    QStringList fileRequests() const;
    QString pdfPath(const QString& name) const;
    QByteArray content(const QString& name) const;
    void write(const QString& name, const QByteArray& bytes) const;

    const StartFolder& m_folder;
    std::optional<RunFixture> m_fixture;
};

void tst_invoices::init()
{
    m_fixture.reset();
    m_fixture.emplace(m_folder);
    m_fixture->serveOrders({sample::order(1, {sample::line(11)})});
}

QJsonObject tst_invoices::invoice(const QString& number, const QStringList& paths,
                                  const QJsonObject& more) const
{
    QJsonArray links;
    for (const QString& path : paths)
        links.append(QJsonObject {
            {s("href"), path.isEmpty() ? QString() : m_fixture->shop.baseUrl() + path}});
    return sample::with({{s("number"), s("17")},
                         {s("order_number"), s("4711")},
                         {s("formatted_number"), number},
                         {s("date_created"), s("2026-01-06T09:00:00")},
                         {s("date_created_gmt"), s("2026-01-06T08:00:00")},
                         {s("_links"), QJsonObject {{s("pdf"), links}}}},
                        more);
}

void tst_invoices::serveInvoices(int order, const QJsonArray& invoices)
{
    m_fixture->serve(s("/wp-json/wc/v3/orders/%1/invoices").arg(order), sample::json(invoices));
}

MainWindow& tst_invoices::start(const QMap<QString, QVariant>& options)
{
    QMap<QString, QVariant> all {{s("germanized_use"), true},
                                 {s("germanized_pdf_folder"), m_folder.pdfFolder()}};
    all.insert(options);
    return m_fixture->start(all);
}

ExportTable tst_invoices::run(const QMap<QString, QVariant>& options)
{
    start(options);
    m_fixture->runToEnd();
    return ExportTable(m_folder.exported());
}

QStringList tst_invoices::fileRequests() const
{
    return m_fixture->targets().filter(s("/file"));
}

QString tst_invoices::pdfPath(const QString& name) const
{
    return m_folder.pdfFolder() + QLatin1Char('/') + name;
}

QByteArray tst_invoices::content(const QString& name) const
{
    QFile file(pdfPath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void tst_invoices::write(const QString& name, const QByteArray& bytes) const
{
    QFile file(pdfPath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

void tst_invoices::withoutTheExtensionNothingIsAsked()
{
    serveInvoices(1, {invoice(s("RE-1"), {s("/file/1")})});
    const ExportTable table = run({{s("germanized_use"), false}});
    QVERIFY(m_fixture->paths().filter(s("invoices")).isEmpty());
    QVERIFY(fileRequests().isEmpty());
    QVERIFY(table.headers().filter(s("gm_")).isEmpty());
}

void tst_invoices::anOrderWithoutInvoicesHasEmptyCells()
{
    serveInvoices(1, {});
    const ExportTable table = run();
    QCOMPARE(m_fixture->targets().filter(s("invoices")),
             QStringList({s("/wp-json/wc/v3/orders/1/invoices")}));
    const QStringList columns = table.headers().filter(s("gm_"));
    QCOMPARE(columns,
             QStringList({s("gm_number"), s("gm_order_number"), s("gm_formatted_number"),
                          s("gm_invoice_filename"), s("gm_invoice_date_created")}));
    for (const QString& column : columns)
        QCOMPARE(table.cell(0, column), s(""));
}

void tst_invoices::anInvoiceIsStoredAndNamed()
{
    const QByteArray bytes("%PDF-1.4\n\0\xff\r\n;", 14);
    m_fixture->serve(s("/file/1"), fileAnswer(bytes));
    serveInvoices(1, {invoice(s("RE-1"), {s("/file/1")})});
    const ExportTable table = run();
    QCOMPARE(content(s("RE-1.pdf")), bytes);
    QCOMPARE(m_fixture->window->iPdfCount, 1);
    QCOMPARE(table.cell(0, s("gm_number")), s("17"));
    QCOMPARE(table.cell(0, s("gm_order_number")), s("4711"));
    QCOMPARE(table.cell(0, s("gm_formatted_number")), s("RE-1"));
    QCOMPARE(table.cell(0, s("gm_invoice_filename")), pdfPath(s("RE-1.pdf")));
    QCOMPARE(table.cell(0, s("gm_invoice_date_created")), s("2026-01-06T09:00:00"));
}

void tst_invoices::numbersOfAnyTypeGiveTheSameCells()
{
    serveInvoices(
        1,
        {invoice(s("x"), {},
                 {{s("number"), 17}, {s("order_number"), 4711}, {s("formatted_number"), 2026}})});
    const ExportTable table = run();
    QCOMPARE(table.cell(0, s("gm_number")), s("17"));
    QCOMPARE(table.cell(0, s("gm_order_number")), s("4711"));
    QCOMPARE(table.cell(0, s("gm_invoice_filename")), pdfPath(s("2026.pdf")));
}

void tst_invoices::twoInvoicesGiveBothPathsAndTheLastNumbers()
{
    m_fixture->serve(s("/file/1"), fileAnswer("one"));
    m_fixture->serve(s("/file/2"), fileAnswer("two"));
    serveInvoices(1,
                  {invoice(s("RE-1"), {s("/file/1")}),
                   invoice(s("ST-2"), {s("/file/2")},
                           {{s("number"), s("18")},
                            {s("order_number"), s("4712")},
                            {s("date_created_gmt"), s("2026-07-06T08:00:00")}})});
    const ExportTable table = run();
    QCOMPARE(table.cell(0, s("gm_invoice_filename")),
             pdfPath(s("RE-1.pdf")) + QLatin1Char('|') + pdfPath(s("ST-2.pdf")));
    QCOMPARE(table.cell(0, s("gm_number")), s("18"));
    QCOMPARE(table.cell(0, s("gm_order_number")), s("4712"));
    QCOMPARE(table.cell(0, s("gm_formatted_number")), s("ST-2"));
    QCOMPARE(table.cell(0, s("gm_invoice_date_created")), s("2026-07-06T10:00:00"));
    QCOMPARE(content(s("RE-1.pdf")), QByteArray("one"));
    QCOMPARE(content(s("ST-2.pdf")), QByteArray("two"));
    QCOMPARE(m_fixture->window->iPdfCount, 2);
}

void tst_invoices::invoicesStandInEveryRowOfTheirOrder()
{
    m_fixture->serveOrders({sample::order(1, {sample::line(11), sample::line(12)}),
                            sample::order(2, {sample::line(21)})});
    serveInvoices(1, {invoice(s("RE-1"), {})});
    QCOMPARE(run().column(s("gm_formatted_number")), QStringList({s("RE-1"), s("RE-1"), s("")}));
}

void tst_invoices::theFirstOrderOfTheRunMayBeWithoutInvoices()
{
    m_fixture->serveOrders(
        {sample::order(1, {sample::line(11)}), sample::order(2, {sample::line(21)})});
    serveInvoices(2, {invoice(s("RE-2"), {})});
    QCOMPARE(run().column(s("gm_formatted_number")), QStringList({s(""), s("RE-2")}));
}

void tst_invoices::skippedOrdersGetTheirFiles()
{
    m_fixture->serve(s("/file/1"), fileAnswer("one"));
    serveInvoices(1, {invoice(s("RE-1"), {s("/file/1")})});
    const ExportTable table = run({{s("woocommerce_use"), false}});
    QCOMPARE(table.rowCount(), 0);
    QCOMPARE(content(s("RE-1.pdf")), QByteArray("one"));
    QCOMPARE(m_fixture->window->iPdfCount, 1);
}

void tst_invoices::filesAreAskedForWithTheAddressAsSent()
{
    m_fixture->serve(s("/file/1"), fileAnswer("one"));
    serveInvoices(1, {invoice(s("RE-1"), {s("/file/1?a=1&b=%2F")})});
    start();
    m_fixture->window->apiKey = s("ck_1");
    m_fixture->window->apiSecret = s("cs_2");
    m_fixture->runToEnd();
    QCOMPARE(fileRequests(), QStringList({s("/file/1?a=1&b=%2F")}));
    QCOMPARE(m_fixture->shop.requests().last().authorization,
             "Basic " + QByteArray("ck_1:cs_2").toBase64());
    QCOMPARE(content(s("RE-1.pdf")), QByteArray("one"));
}

void tst_invoices::filesAreFetchedWithTheLoginFromWhereTheShopSays()
{
    // Invoices may be kept by a service of its own, to which the shop has sent the program.
    demo_shop::ShopServer other([](const demo_shop::ShopRequest&) {
        demo_shop::ShopAnswer answer;
        answer.body = fileAnswer("elsewhere");
        return answer;
    });
    QVERIFY(other.listen());
    QJsonObject sent = invoice(s("RE-1"), {});
    sent[s("_links")] = QJsonObject {
        {s("pdf"), QJsonArray {QJsonObject {{s("href"), other.baseUrl() + s("/file/1")}}}}};
    serveInvoices(1, {sent});
    start();
    m_fixture->window->apiKey = s("ck_1");
    m_fixture->window->apiSecret = s("cs_2");
    m_fixture->runToEnd();
    QCOMPARE(content(s("RE-1.pdf")), QByteArray("elsewhere"));
    QCOMPARE(other.requests().size(), 1);
    QCOMPARE(other.requests().first().authorization, "Basic " + QByteArray("ck_1:cs_2").toBase64());
}

void tst_invoices::aSecondRunMakesNoRequestsForExistingFiles()
{
    m_fixture->serve(s("/file/1"), fileAnswer("one"));
    serveInvoices(1, {invoice(s("RE-1"), {s("/file/1")})});
    run();
    QCOMPARE(fileRequests().size(), 1);
    m_fixture->serve(s("/file/1"), fileAnswer("changed"));
    m_fixture->shop.clearRequests();
    m_fixture->runToEnd();
    QVERIFY(fileRequests().isEmpty());
    QCOMPARE(content(s("RE-1.pdf")), QByteArray("one"));
    QCOMPARE(m_fixture->window->iPdfCount, 0);
    QCOMPARE(ExportTable(m_folder.exported()).cell(0, s("gm_invoice_filename")),
             pdfPath(s("RE-1.pdf")));
}

void tst_invoices::withOverwritingEveryRunStoresAnew()
{
    m_fixture->serve(s("/file/1"), fileAnswer("one"));
    serveInvoices(1, {invoice(s("RE-1"), {s("/file/1")})});
    run({{s("germanized_overwrite_pdf"), true}});
    m_fixture->serve(s("/file/1"), fileAnswer("changed"));
    m_fixture->runToEnd();
    QCOMPARE(fileRequests().size(), 2);
    QCOMPARE(content(s("RE-1.pdf")), QByteArray("changed"));
    QCOMPARE(m_fixture->window->iPdfCount, 1);
}

void tst_invoices::ofSeveralLinksTheFirstWins()
{
    m_fixture->serve(s("/file/1"), fileAnswer("one"));
    m_fixture->serve(s("/file/2"), fileAnswer("two"));
    serveInvoices(1, {invoice(s("RE-1"), {s("/file/1"), s("/file/2")})});
    const ExportTable table = run();
    QCOMPARE(fileRequests(), QStringList({s("/file/1")}));
    QCOMPARE(content(s("RE-1.pdf")), QByteArray("one"));
    QCOMPARE(table.cell(0, s("gm_invoice_filename")), pdfPath(s("RE-1.pdf")));
    QCOMPARE(m_fixture->window->iPdfCount, 1);
}

void tst_invoices::withOverwritingTheLastLinkWins()
{
    m_fixture->serve(s("/file/1"), fileAnswer("one"));
    m_fixture->serve(s("/file/2"), fileAnswer("two"));
    serveInvoices(1, {invoice(s("RE-1"), {s("/file/1"), s("/file/2")})});
    run({{s("germanized_overwrite_pdf"), true}});
    QCOMPARE(fileRequests(), QStringList({s("/file/1"), s("/file/2")}));
    QCOMPARE(content(s("RE-1.pdf")), QByteArray("two"));
    QCOMPARE(m_fixture->window->iPdfCount, 2);
}

void tst_invoices::emptyLinksArePassedOver()
{
    m_fixture->serve(s("/file/2"), fileAnswer("two"));
    serveInvoices(1, {invoice(s("RE-1"), {s(""), s("/file/2")}), invoice(s("RE-2"), {})});
    const ExportTable table = run();
    QCOMPARE(fileRequests(), QStringList({s("/file/2")}));
    QCOMPARE(content(s("RE-1.pdf")), QByteArray("two"));
    QVERIFY(!QFile::exists(pdfPath(s("RE-2.pdf"))));
    QCOMPARE(table.cell(0, s("gm_invoice_filename")),
             pdfPath(s("RE-1.pdf")) + QLatin1Char('|') + pdfPath(s("RE-2.pdf")));
}

void tst_invoices::anAnswerWithoutFileStoresNothing_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("no file") << QByteArray("{}");
    QTest::newRow("empty file") << QByteArray(R"({"file":""})");
    QTest::newRow("null") << QByteArray(R"({"file":null})");
    QTest::newRow("no Base64") << QByteArray(R"({"file":"---"})");
    QTest::newRow("a list") << QByteArray(R"([{"file":"YQ=="}])");
}

void tst_invoices::anAnswerWithoutFileStoresNothing()
{
    QFETCH(QByteArray, answer);
    m_fixture->serve(s("/file/1"), answer);
    serveInvoices(1, {invoice(s("RE-1"), {s("/file/1")})});
    const ExportTable table = run({{s("germanized_overwrite_pdf"), true}});
    QCOMPARE(fileRequests().size(), 1);
    QVERIFY(!QFile::exists(pdfPath(s("RE-1.pdf"))));
    QCOMPARE(m_fixture->window->iPdfCount, 0);
    QCOMPARE(m_fixture->answers.titles(), QStringList({s("Beendet:")}));
    QCOMPARE(table.cell(0, s("gm_invoice_filename")), pdfPath(s("RE-1.pdf")));
}

void tst_invoices::aLaterLinkMayHoldTheFile()
{
    m_fixture->serve(s("/file/1"), "{}");
    m_fixture->serve(s("/file/2"), fileAnswer("two"));
    serveInvoices(1, {invoice(s("RE-1"), {s("/file/1"), s("/file/2")})});
    run();
    QCOMPARE(content(s("RE-1.pdf")), QByteArray("two"));
}

void tst_invoices::aFileThatComesUpDuringTheRequestIsKept()
{
    m_fixture->serve(s("/file/1"), fileAnswer("one"));
    serveInvoices(1, {invoice(s("RE-1"), {s("/file/1")})});
    m_fixture->shop.setFaultPlan([this](const demo_shop::ShopRequest& request) {
        if (request.path == QLatin1String("/file/1"))
            write(s("RE-1.pdf"), "from elsewhere");
        return demo_shop::Fault();
    });
    run();
    QCOMPARE(fileRequests().size(), 1);
    QCOMPARE(content(s("RE-1.pdf")), QByteArray("from elsewhere"));
    QCOMPARE(m_fixture->window->iPdfCount, 0);
}

void tst_invoices::withOverwritingSuchAFileIsReplaced()
{
    m_fixture->serve(s("/file/1"), fileAnswer("one"));
    serveInvoices(1, {invoice(s("RE-1"), {s("/file/1")})});
    m_fixture->shop.setFaultPlan([this](const demo_shop::ShopRequest& request) {
        if (request.path == QLatin1String("/file/1"))
            write(s("RE-1.pdf"), "from elsewhere");
        return demo_shop::Fault();
    });
    run({{s("germanized_overwrite_pdf"), true}});
    QCOMPARE(content(s("RE-1.pdf")), QByteArray("one"));
    QCOMPARE(m_fixture->window->iPdfCount, 1);
}

void tst_invoices::aFileThatCantBeOpenedIsLostSilently()
{
    m_fixture->serve(s("/file/1"), fileAnswer("one"));
    serveInvoices(1, {invoice(s("2026/15"), {s("/file/1")})});
    const ExportTable table = run();
    QVERIFY(QDir(m_folder.pdfFolder()).isEmpty());
    QCOMPARE(m_fixture->answers.titles(), QStringList({s("Beendet:")}));
    QCOMPARE(table.rowCount(), 1);
    QCOMPARE(table.cell(0, s("gm_invoice_filename")), pdfPath(s("2026/15.pdf")));
    // The counter counts the attempt.
    QCOMPARE(m_fixture->window->iPdfCount, 1);
}

void tst_invoices::aPathInTheNumberReachesTheFileSystem()
{
    m_fixture->serve(s("/file/1"), fileAnswer("one"));
    serveInvoices(1, {invoice(s("2026/15"), {s("/file/1")})});
    start();
    QVERIFY(QDir().mkpath(pdfPath(s("2026"))));
    m_fixture->runToEnd();
    QCOMPARE(content(s("2026/15.pdf")), QByteArray("one"));
}

void tst_invoices::aLongerFileIsReplacedWhole()
{
    m_fixture->serve(s("/file/1"), fileAnswer("new"));
    serveInvoices(1, {invoice(s("RE-1"), {s("/file/1")})});
    start({{s("germanized_overwrite_pdf"), true}});
    QVERIFY(QDir().mkpath(m_folder.pdfFolder()));
    write(s("RE-1.pdf"), "something much longer");
    m_fixture->runToEnd();
    QCOMPARE(content(s("RE-1.pdf")), QByteArray("new"));
}

void tst_invoices::aFailedRequestDropsThePageAndKeepsTheFiles()
{
    m_fixture->serve(s("/file/1"), fileAnswer("one"));
    m_fixture->serve(s("/file/2"), "{}", 404);
    serveInvoices(1, {invoice(s("RE-1"), {s("/file/1")}), invoice(s("RE-2"), {s("/file/2")})});
    MainWindow& window = start();
    m_fixture->runOnePass();
    QCOMPARE(m_folder.exported(), QByteArray(""));
    QCOMPARE(window.iPageRetries, 1);
    QVERIFY(!window.bHeaderWritten);
    QVERIFY(window.csvHeaders.isEmpty());
    QCOMPARE(content(s("RE-1.pdf")), QByteArray("one"));
    QCOMPARE(window.iPdfCount, 1);

    m_fixture->serve(s("/file/2"), fileAnswer("two"));
    m_fixture->shop.clearRequests();
    window.OnTimer();
    QCOMPARE(fileRequests(), QStringList({s("/file/2")}));
    QCOMPARE(window.iPdfCount, 2);
    QCOMPARE(ExportTable(m_folder.exported()).rowCount(), 1);
}

LEDORA_APP_TEST_MAIN(tst_invoices)
#include "tst_invoices.moc"
