#include "accounting/order_taxes.h"
#include "tests/app/many_orders.h"
#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include <QLabel>
#include <QTimer>

/// Which pages a run asks for, and how they reach the export.
class tst_run_pages : public QObject
{
    Q_OBJECT

public:
    explicit tst_run_pages(const StartFolder& startFolder)
        : folder(startFolder)
    {
    }

private slots:
    void init();
    void cleanup();
    void taxRatesComeBeforeTheFirstPageOnly();
    void taxPagesEndWithAnEmptyOne();
    void taxRatesAreReadAsNumberAndText();
    void aShopWithoutRatesIsAskedOnEachPage();
    void ratesServeLaterRuns();
    void aFullPageCostsAFurtherOne_data();
    void aFullPageCostsAFurtherOne();
    void theNextPageIsCountedBeforeTheRequest();
    void dateFilterReachesTheRequest_data();
    void dateFilterReachesTheRequest();
    void anAddressChangedBetweenPassesCounts();
    void anAnswerThatIsNoArrayEndsTheRun();
    void withoutOrdersTheExportStaysEmpty();
    void aPageReachesTheFileWhole();
    void aWrittenPageClearsItsFailures();
    void aRunNeedsOneConnection();

private:
    MainWindow& window() const { return *fixture->window; }

    /// Targets of the order pages asked for.
    QStringList orderTargets() const;

    const StartFolder& folder;
    std::unique_ptr<RunFixture> fixture;
};

namespace {

QJsonArray rates(int count)
{
    QJsonArray list;
    for (int id = 1; id <= count; ++id)
        list.append(QJsonObject {{QStringLiteral("id"), id},
                                 {QStringLiteral("rate"), QString::number(id) + ".0000"}});
    return list;
}

QString taxTarget(int page)
{
    return QStringLiteral("/wp-json/wc/v3/taxes?per_page=100&page=%1&orderby=id&order=asc")
        .arg(page);
}

QString orderTarget(int page)
{
    return QStringLiteral("/wp-json/wc/v3/orders?per_page=100&status=completed,%20refunded")
        + QStringLiteral("&page=%1&orderby=date&order=asc&dates_are_gmt=true").arg(page);
}

} // namespace

void tst_run_pages::init()
{
    fixture = std::make_unique<RunFixture>(folder);
    fixture->serveTaxes(rates(1));
    fixture->start();
}

void tst_run_pages::cleanup()
{
    fixture.reset();
}

QStringList tst_run_pages::orderTargets() const
{
    return fixture->targets().filter(QStringLiteral("/orders?"));
}

void tst_run_pages::taxRatesComeBeforeTheFirstPageOnly()
{
    fixture->serveOrders(sample::manyOrders(250));
    fixture->runToEnd();
    QCOMPARE(
        fixture->targets(),
        QStringList({taxTarget(1), taxTarget(2), orderTarget(1), orderTarget(2), orderTarget(3)}));
    QCOMPARE(folder.exportedLines().size(), 2 + 250);
    QCOMPARE(window().iExportCount, 250);
}

void tst_run_pages::taxPagesEndWithAnEmptyOne()
{
    fixture->serveTaxes(rates(150));
    fixture->runOnePass();
    QCOMPARE(fixture->targets().mid(0, 4),
             QStringList({taxTarget(1), taxTarget(2), taxTarget(3), orderTarget(1)}));
    QCOMPARE(globalTaxRates.size(), std::size_t(150));
    QCOMPARE(globalTaxRates.at(150), QStringLiteral("150.0000"));
}

void tst_run_pages::taxRatesAreReadAsNumberAndText()
{
    const auto rate = [](const QJsonValue& id, const QJsonValue& value) {
        return QJsonObject {{QStringLiteral("id"), id}, {QStringLiteral("rate"), value}};
    };
    fixture->serveTaxes({rate(3, "19.0000"), rate("5", "7.0000"), rate(6, 7), rate(7, 5.5),
                         rate(3, "16.0000"), rate(8, QJsonValue())});
    fixture->runOnePass();
    const std::map<int, QString> expected {{3, QStringLiteral("16.0000")},
                                           {5, QStringLiteral("7.0000")},
                                           {6, QStringLiteral("7")},
                                           {7, QStringLiteral("5.5")},
                                           {8, QString()}};
    QVERIFY(globalTaxRates == expected);
}

void tst_run_pages::aShopWithoutRatesIsAskedOnEachPage()
{
    fixture->serveTaxes({});
    fixture->serveOrders(sample::manyOrders(101));
    fixture->runToEnd();
    QCOMPARE(fixture->targets(),
             QStringList({taxTarget(1), orderTarget(1), taxTarget(1), orderTarget(2)}));
    QVERIFY(globalTaxRates.empty());
}

void tst_run_pages::ratesServeLaterRuns()
{
    fixture->runToEnd();
    fixture->shop.clearRequests();
    fixture->runToEnd();
    QCOMPARE(fixture->targets(), QStringList({orderTarget(1)}));
}

void tst_run_pages::aFullPageCostsAFurtherOne_data()
{
    QTest::addColumn<int>("orders");
    QTest::addColumn<int>("pages");
    QTest::newRow("none") << 0 << 1;
    QTest::newRow("99") << 99 << 1;
    QTest::newRow("100") << 100 << 2;
    QTest::newRow("101") << 101 << 2;
    QTest::newRow("200") << 200 << 3;
}

void tst_run_pages::aFullPageCostsAFurtherOne()
{
    QFETCH(int, orders);
    QFETCH(int, pages);
    fixture->serveOrders(sample::manyOrders(orders));
    fixture->runToEnd();
    QStringList expected;
    for (int page = 1; page <= pages; ++page)
        expected.append(orderTarget(page));
    QCOMPARE(orderTargets(), expected);
    QCOMPARE(folder.exportedLines().size(), orders == 0 ? 0 : 2 + orders);
}

void tst_run_pages::theNextPageIsCountedBeforeTheRequest()
{
    fixture->serveOrders(sample::manyOrders(101));
    QList<int> counted;
    for (const int page : {1, 2})
        fixture->during("/orders?per_page=100&status=completed,%20refunded&page="
                            + QByteArray::number(page),
                        [&] { counted.append(window().iPage); });
    fixture->runToEnd();
    QCOMPARE(counted, QList<int>({2, 3}));
}

void tst_run_pages::dateFilterReachesTheRequest_data()
{
    QTest::addColumn<bool>("use");
    QTest::addColumn<QVariant>("after");
    QTest::addColumn<QVariant>("before");
    QTest::addColumn<QString>("added");
    const QVariant first(QDate(2024, 1, 31));
    const QVariant last(QDate(2024, 2, 29));
    const QString from = QStringLiteral("&after=2024-01-31T00:00:00Z");
    const QString to = QStringLiteral("&before=2024-03-01T00:00:00Z");
    QTest::newRow("not used") << false << first << last << QString();
    QTest::newRow("both") << true << first << last << from + to;
    QTest::newRow("no end") << true << first << QVariant() << from;
    QTest::newRow("no beginning") << true << QVariant(QDate()) << last << to;
    QTest::newRow("dates as text") << true << QVariant(QStringLiteral("2024-01-31"))
                                   << QVariant(QStringLiteral("29.02.")) << from;
    QTest::newRow("neither") << true << QVariant() << QVariant() << QString();
}

void tst_run_pages::dateFilterReachesTheRequest()
{
    QFETCH(bool, use);
    QFETCH(QVariant, after);
    QFETCH(QVariant, before);
    QFETCH(QString, added);
    window().date_filter_use = use;
    window().date_filter_after = after;
    window().date_filter_before = before;
    fixture->runOnePass();
    QCOMPARE(orderTargets(), QStringList({orderTarget(1) + added}));
}

void tst_run_pages::anAddressChangedBetweenPassesCounts()
{
    fixture->serveOrders(sample::manyOrders(100));
    fixture->runOnePass();
    window().mainurl = fixture->shop.baseUrl() + QLatin1String("/laden");
    window().OnTimer();
    QCOMPARE(fixture->targets().last(), QLatin1String("/laden") + orderTarget(2));
}

void tst_run_pages::anAnswerThatIsNoArrayEndsTheRun()
{
    fixture->serve(QStringLiteral("/wp-json/wc/v3/orders"),
                   R"({"code":"rest_forbidden","message":"Nein"})");
    fixture->runToEnd();
    QCOMPARE(orderTargets().size(), 1);
    QCOMPARE(fixture->answers.titles(), QStringList {QStringLiteral("Beendet:")});
    QVERIFY(fixture->showsStatus(QStringLiteral("Beendet. ")));
    QCOMPARE(folder.exported(), QByteArray(""));
}

void tst_run_pages::withoutOrdersTheExportStaysEmpty()
{
    fixture->runOnePass();
    QVERIFY(window().bFinished);
    QVERIFY(!window().bHeaderWritten);
    QVERIFY(!window().outFile.isOpen());
    window().OnTimer();
    QCOMPARE(fixture->answers.titles(), QStringList {QStringLiteral("Beendet:")});
    QVERIFY(!folder.exported().isNull());
    QCOMPARE(folder.exported().size(), 0);
}

void tst_run_pages::aPageReachesTheFileWhole()
{
    // Each page has a product of its own, so that each has a request after its first rows.
    QJsonArray orders = sample::manyOrders(102);
    orders[99] = sample::order(100, {sample::productLine(100, 1)});
    orders[101] = sample::order(102, {sample::productLine(102, 2)});
    fixture->serveOrders(orders);
    QList<qsizetype> lines;
    for (const char* product : {"/products/1", "/products/2"})
        fixture->during(product, [&] { lines.append(folder.exportedLines().size()); });
    fixture->runOnePass();
    QCOMPARE(folder.exportedLines().size(), 2 + 100);
    window().OnTimer();
    QCOMPARE(lines, QList<qsizetype>({0, 102}));
    QCOMPARE(folder.exportedLines().size(), 2 + 102);
}

void tst_run_pages::aWrittenPageClearsItsFailures()
{
    fixture->serveOrders(sample::manyOrders(100));
    window().Reset();
    window().iPageRetries = 2;
    window().OnTimer();
    QCOMPARE(window().iPageRetries, 0);
}

void tst_run_pages::aRunNeedsOneConnection()
{
    fixture->serveOrders(sample::manyOrders(250, 4));
    fixture->runToEnd();
    QCOMPARE(fixture->countOf(QStringLiteral("/products/4")), 1);
    QCOMPARE(fixture->shop.connectionCount(), 1);
}

LEDORA_APP_TEST_MAIN(tst_run_pages)

#include "tst_run_pages.moc"
