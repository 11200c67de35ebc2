#include "tests/app/export_table.h"
#include "tests/app/run_fixture.h"
#include "tests/app/sample_orders.h"
#include "tests/support/app_test.h"

#include <optional>

namespace {

QString s(const char* text)
{
    return QString::fromUtf8(text);
}

QString productPath(int id)
{
    return s("/wp-json/wc/v3/products/%1").arg(id);
}

} // namespace

/// The two columns that come from a line's product.
class tst_product_flags : public QObject
{
    Q_OBJECT

public:
    explicit tst_product_flags(const StartFolder& folder)
        : m_folder(folder)
    {
    }

private slots:
    void init();
    void theFlagsOfTheProductAreWritten_data();
    void theFlagsOfTheProductAreWritten();
    void aProductIsAskedForWithoutAQuery();
    void aProductIsAskedForOnceInARun();
    void aProductIsAskedForOnceInTheLifeOfAWindow();
    void aLineWithoutProductTakesTheFlagsOfTheOneBefore();
    void aFirstLineWithoutProductHasNoFlags();
    void theProductOfAnEarlierOrderIsNotTaken();
    void aProductIdIsReadAsANumber_data();
    void aProductIdIsReadAsANumber();
    void aNegativeProductIsNotAskedFor();
    void aMissingProductDropsThePageButNotWhatWasLearned();

private:
    ExportTable run(const QJsonArray& orders);
    QStringList askedProducts() const;

    const StartFolder& m_folder;
    std::optional<RunFixture> m_fixture;
};

void tst_product_flags::init()
{
    m_fixture.reset();
    m_fixture.emplace(m_folder);
}

ExportTable tst_product_flags::run(const QJsonArray& orders)
{
    m_fixture->serveOrders(orders);
    m_fixture->start();
    m_fixture->runToEnd();
    return ExportTable(m_folder.exported());
}

QStringList tst_product_flags::askedProducts() const
{
    return m_fixture->targets().filter(s("/products/"));
}

void tst_product_flags::theFlagsOfTheProductAreWritten_data()
{
    QTest::addColumn<QByteArray>("product");
    QTest::addColumn<QString>("isVirtual");
    QTest::addColumn<QString>("isDownloadable");
    QTest::newRow("goods") << QByteArray(R"({"virtual":false,"downloadable":false})") << "0"
                           << "0";
    QTest::newRow("virtual") << QByteArray(R"({"virtual":true,"downloadable":false})") << "1"
                             << "0";
    QTest::newRow("download") << QByteArray(R"({"virtual":false,"downloadable":true})") << "0"
                              << "1";
    QTest::newRow("both") << QByteArray(R"({"virtual":true,"downloadable":true})") << "1"
                          << "1";
    QTest::newRow("missing") << QByteArray(R"({"id":5})") << "0"
                             << "0";
    QTest::newRow("null") << QByteArray(R"({"virtual":null,"downloadable":null})") << "0"
                          << "0";
    QTest::newRow("texts") << QByteArray(R"({"virtual":"true","downloadable":"false"})") << "1"
                           << "0";
    QTest::newRow("numbers") << QByteArray(R"({"virtual":0,"downloadable":1})") << "0"
                             << "1";
    QTest::newRow("no object") << QByteArray("[]") << "0"
                               << "0";
}

void tst_product_flags::theFlagsOfTheProductAreWritten()
{
    QFETCH(QByteArray, product);
    m_fixture->serve(productPath(5), product);
    const ExportTable table = run({sample::order(1, {sample::productLine(11, 5)})});
    QTEST(table.cell(0, s("line_items_virtual")), "isVirtual");
    QTEST(table.cell(0, s("line_items_downloadable")), "isDownloadable");
}

void tst_product_flags::aProductIsAskedForWithoutAQuery()
{
    run({sample::order(1, {sample::productLine(11, 5)})});
    QCOMPARE(askedProducts(), QStringList({productPath(5)}));
}

void tst_product_flags::aProductIsAskedForOnceInARun()
{
    m_fixture->serve(productPath(5), R"({"virtual":true})");
    QJsonArray orders {sample::order(0, {sample::productLine(1, 5), sample::productLine(2, 6)})};
    for (int id = 1; id <= 100; ++id) // into a second page
        orders.append(sample::order(id, {sample::productLine(10 * id, 5)}));
    const ExportTable table = run(orders);
    QCOMPARE(askedProducts(), QStringList({productPath(5), productPath(6)}));
    QCOMPARE(table.column(s("line_items_virtual")).count(s("1")), 101);
}

void tst_product_flags::aProductIsAskedForOnceInTheLifeOfAWindow()
{
    m_fixture->serve(productPath(5), R"({"virtual":true})");
    run({sample::order(1, {sample::productLine(11, 5)})});
    m_fixture->serve(productPath(5), R"({"virtual":false})");
    m_fixture->runToEnd();
    QCOMPARE(askedProducts().size(), 1);
    QCOMPARE(ExportTable(m_folder.exported()).cell(0, s("line_items_virtual")), s("1"));

    m_fixture->restart();
    m_fixture->window->mainurl = m_fixture->shop.baseUrl();
    m_fixture->runToEnd();
    QCOMPARE(askedProducts().size(), 2);
    QCOMPARE(ExportTable(m_folder.exported()).cell(0, s("line_items_virtual")), s("0"));
}

void tst_product_flags::aLineWithoutProductTakesTheFlagsOfTheOneBefore()
{
    m_fixture->serve(productPath(5), R"({"virtual":true})");
    m_fixture->serve(productPath(6), R"({"downloadable":true})");
    const ExportTable table = run({sample::order(1,
                                                 {sample::productLine(11, 5), sample::line(12),
                                                  sample::productLine(13, 6), sample::line(14)})});
    QCOMPARE(table.column(s("line_items_virtual")), QStringList({s("1"), s("1"), s("0"), s("0")}));
    QCOMPARE(table.column(s("line_items_downloadable")),
             QStringList({s("0"), s("0"), s("1"), s("1")}));
    QCOMPARE(askedProducts().size(), 2);
}

void tst_product_flags::aFirstLineWithoutProductHasNoFlags()
{
    const ExportTable table = run({sample::order(1, {sample::line(11)})});
    QCOMPARE(table.cell(0, s("line_items_virtual")), s(""));
    QCOMPARE(table.cell(0, s("line_items_downloadable")), s(""));
    QVERIFY(askedProducts().isEmpty());
}

void tst_product_flags::theProductOfAnEarlierOrderIsNotTaken()
{
    const ExportTable table =
        run({sample::order(1, {sample::productLine(11, 5)}), sample::order(2, {sample::line(21)})});
    QCOMPARE(table.column(s("line_items_virtual")), QStringList({s("0"), s("")}));
}

void tst_product_flags::aProductIdIsReadAsANumber_data()
{
    QTest::addColumn<QJsonValue>("id");
    QTest::addColumn<int>("expected");
    QTest::newRow("number") << QJsonValue(5) << 5;
    QTest::newRow("text") << QJsonValue("5") << 5;
    QTest::newRow("zero") << QJsonValue(0) << 0;
    QTest::newRow("text that is no number") << QJsonValue("A5") << 0;
    QTest::newRow("empty text") << QJsonValue("") << 0;
    QTest::newRow("null") << QJsonValue(QJsonValue::Null) << 0;
}

void tst_product_flags::aProductIdIsReadAsANumber()
{
    QFETCH(QJsonValue, id);
    QFETCH(int, expected);
    const ExportTable table = run({sample::order(1, {sample::productLine(11, id)})});
    QCOMPARE(askedProducts(), QStringList({productPath(expected)}));
    QCOMPARE(table.cell(0, s("line_items_product_id")), id.toVariant().toString());
}

void tst_product_flags::aNegativeProductIsNotAskedFor()
{
    const ExportTable table = run({sample::order(1, {sample::productLine(11, -2)})});
    QVERIFY(askedProducts().isEmpty());
    QCOMPARE(table.cell(0, s("line_items_virtual")), s(""));
    QCOMPARE(table.cell(0, s("line_items_product_id")), s("-2"));
}

void tst_product_flags::aMissingProductDropsThePageButNotWhatWasLearned()
{
    m_fixture->serve(productPath(5), R"({"virtual":true})");
    m_fixture->serve(productPath(0), R"({"code":"woocommerce_rest_product_invalid_id"})", 404);
    m_fixture->serveOrders({sample::order(1, {sample::productLine(11, 5)}),
                            sample::order(2, {sample::productLine(21, 0)})});
    MainWindow& window = m_fixture->start();
    m_fixture->runOnePass();
    QCOMPARE(m_folder.exported(), QByteArray(""));
    QVERIFY(window.csvHeaders.isEmpty());
    QVERIFY(!window.bHeaderWritten);
    QCOMPARE(window.iExportCount, 0);
    QCOMPARE(window.iPageRetries, 1);
    QCOMPARE(askedProducts(),
             QStringList({productPath(5), productPath(0), productPath(0), productPath(0)}));

    m_fixture->serve(productPath(0), R"({"virtual":false})");
    m_fixture->shop.clearRequests();
    window.OnTimer();
    QCOMPARE(askedProducts(), QStringList({productPath(0)}));
    const ExportTable table(m_folder.exported());
    QVERIFY(table.problem().isEmpty());
    QCOMPARE(table.column(s("line_items_virtual")), QStringList({s("1"), s("0")}));
}

LEDORA_APP_TEST_MAIN(tst_product_flags)
#include "tst_product_flags.moc"
