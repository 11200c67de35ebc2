#include "tests/tools/shop_questions.h"

#include <QTest>
#include <QTimeZone>

#include <type_traits>

using namespace shop_questions;

class tst_invented_shop : public QObject
{
    Q_OBJECT

    InventedShop m_shop {500, 7};
    QList<QJsonObject> m_orders;

private slots:
    void initTestCase();
    void equalShopsAnswerEqualBytes();
    void anotherSeedAnswersOtherBytes();
    void pagesHoldEveryOrderOnce_data();
    void pagesHoldEveryOrderOnce();
    void datesAscendWithTheOrder();
    void descendingIsAscendingReversed();
    void listsTheNewestFirstUnlessAsked();
    void pageBeyondTheLastIsEmpty();
    void shopWithoutOrdersAnswersAnEmptyPage();
    void tellsTotalsInHeaders();
    void takesTenAPageUnlessAsked();
    void refusesImpossibleParameters_data();
    void refusesImpossibleParameters();
    void splitsStatesAtCommasAndBlanks_data();
    void splitsStatesAtCommasAndBlanks();
    void otherStatesAreNotListed();
    void windowExcludesItsBounds();
    void windowCutsAnywhereLikeAFilter();
    void windowWithoutGmtIsInGermanTime();
    void answersTheLastPageOfAMillion();
    void unknownThingsAre404_data();
    void unknownThingsAre404();
    void otherMethodsAre404();
    void tellsVirtualAndDownloadableProducts();
    void everyProductOfALineIsKnown();
    void deletedProductsAreAskedForByChoice();
    void listsTaxRates();
};

void tst_invented_shop::initTestCase()
{
    m_orders = ordersOf(m_shop, kListed);
    QCOMPARE(m_orders.size(), 500);
}

void tst_invented_shop::equalShopsAnswerEqualBytes()
{
    const QStringList targets {QStringLiteral("orders?per_page=50&page=3&%1").arg(kListed),
                               "orders/1000", "orders/1000/invoices", "products/24",
                               "taxes?per_page=100"};
    for (const QString& target : targets) {
        const ShopAnswer first = askApi(InventedShop(500, 7), target);
        QCOMPARE(first.status, 200);
        QCOMPARE(askApi(m_shop, target).body, first.body);
    }
}

void tst_invented_shop::anotherSeedAnswersOtherBytes()
{
    const QString target = QStringLiteral("orders?per_page=50&%1").arg(kListed);
    QVERIFY(askApi(m_shop, target).body != askApi(InventedShop(500, 8), target).body);
}

void tst_invented_shop::pagesHoldEveryOrderOnce_data()
{
    QTest::addColumn<int>("orders");
    QTest::addColumn<int>("perPage");
    QTest::newRow("one") << 1 << 100;
    QTest::newRow("less than a page") << 99 << 100;
    QTest::newRow("a full page") << 100 << 100;
    QTest::newRow("one more") << 101 << 100;
    QTest::newRow("odd pages") << 157 << 7;
    QTest::newRow("pages of one") << 60 << 1;
}

void tst_invented_shop::pagesHoldEveryOrderOnce()
{
    QFETCH(int, orders);
    QFETCH(int, perPage);
    const QList<QJsonObject> all = ordersOf(InventedShop(orders, 3), kListed, perPage);
    QCOMPARE(all.size(), orders);
    QSet<qint64> ids;
    for (const QJsonObject& order : all)
        ids << order["id"].toInteger();
    QCOMPARE(ids.size(), orders);
}

void tst_invented_shop::datesAscendWithTheOrder()
{
    for (qsizetype i = 1; i < m_orders.size(); ++i) {
        QVERIFY(m_orders[i - 1]["date_created_gmt"].toString()
                < m_orders[i]["date_created_gmt"].toString());
        QVERIFY(m_orders[i - 1]["id"].toInteger() < m_orders[i]["id"].toInteger());
    }
}

void tst_invented_shop::descendingIsAscendingReversed()
{
    QList<QJsonObject> reversed = ordersOf(m_shop, QString(kListed).replace("=asc", "=desc"), 33);
    std::reverse(reversed.begin(), reversed.end());
    QCOMPARE(reversed, m_orders);
}

void tst_invented_shop::listsTheNewestFirstUnlessAsked()
{
    const QJsonArray page =
        parsed(askApi(m_shop, "orders?per_page=1&status=completed,refunded")).array();
    QCOMPARE(page.first().toObject(), m_orders.last());
}

void tst_invented_shop::pageBeyondTheLastIsEmpty()
{
    const ShopAnswer answer =
        askApi(m_shop, QStringLiteral("orders?per_page=100&page=6&%1").arg(kListed));
    QCOMPARE(answer.status, 200);
    QCOMPARE(answer.body, "[]");
    QCOMPARE(header(answer, "X-WP-Total"), "500");
}

void tst_invented_shop::shopWithoutOrdersAnswersAnEmptyPage()
{
    const ShopAnswer answer =
        askApi(InventedShop(0), QStringLiteral("orders?per_page=100&%1").arg(kListed));
    QCOMPARE(answer.body, "[]");
    QCOMPARE(header(answer, "X-WP-Total"), "0");
    QCOMPARE(header(answer, "X-WP-TotalPages"), "0");
}

void tst_invented_shop::tellsTotalsInHeaders()
{
    const ShopAnswer answer = askApi(m_shop, QStringLiteral("orders?per_page=99&%1").arg(kListed));
    QCOMPARE(header(answer, "X-WP-Total"), "500");
    QCOMPARE(header(answer, "X-WP-TotalPages"), "6");
}

void tst_invented_shop::takesTenAPageUnlessAsked()
{
    QCOMPARE(parsed(askApi(m_shop, "orders")).array().size(), 10);
}

void tst_invented_shop::refusesImpossibleParameters_data()
{
    QTest::addColumn<QString>("query");
    QTest::newRow("per_page 0") << "per_page=0";
    QTest::newRow("per_page 101") << "per_page=101";
    QTest::newRow("per_page text") << "per_page=many";
    QTest::newRow("page 0") << "page=0";
    QTest::newRow("unknown status") << "status=completed,sold";
    QTest::newRow("no date") << "after=yesterday";
    QTest::newRow("no date either") << "before=2026-13-01T00:00:00Z";
}

void tst_invented_shop::refusesImpossibleParameters()
{
    QFETCH(QString, query);
    const ShopAnswer answer = askApi(m_shop, "orders?" + query);
    QCOMPARE(answer.status, 400);
    QCOMPARE(parsed(answer)["code"].toString(), "rest_invalid_param");
}

void tst_invented_shop::splitsStatesAtCommasAndBlanks_data()
{
    QTest::addColumn<QString>("status");
    QTest::addColumn<QStringList>("expected");
    const QStringList both {"completed", "refunded"};
    QTest::newRow("comma and blank") << "completed,%20refunded" << both;
    QTest::newRow("comma") << "completed,refunded" << both;
    QTest::newRow("blank") << "completed%20refunded" << both;
    QTest::newRow("one") << "refunded" << QStringList {"refunded"};
    QTest::newRow("another") << "processing" << QStringList {"processing"};
    QTest::newRow("none of this state") << "on-hold" << QStringList {};
    QTest::newRow("any") << "any"
                         << QStringList {"cancelled", "completed", "pending", "processing",
                                         "refunded"};
}

void tst_invented_shop::splitsStatesAtCommasAndBlanks()
{
    QFETCH(QString, status);
    const QList<QJsonObject> orders = ordersOf(InventedShop(120, 7), "status=" + status);
    QSet<QString> seen;
    for (const QJsonObject& order : orders)
        seen << order["status"].toString();
    QStringList states = seen.values();
    states.sort();
    QTEST(states, "expected");
}

void tst_invented_shop::otherStatesAreNotListed()
{
    QCOMPARE(ordersOf(m_shop, "status=any").size(), 500 + 30);
    QCOMPARE(ordersOf(m_shop, "status=pending").size(), 10);
    QCOMPARE(ordersOf(m_shop, "status=refunded").size(), 30);
    const QJsonObject pending = ordersOf(m_shop, "status=pending").first();
    QVERIFY(pending["date_paid"].isNull());
    QVERIFY(pending["needs_payment"].toBool());
}

void tst_invented_shop::windowExcludesItsBounds()
{
    const QString after = m_orders[99]["date_created_gmt"].toString();
    const QString before = m_orders[200]["date_created_gmt"].toString();
    const QList<QJsonObject> inside =
        ordersOf(m_shop, QStringLiteral("%1&after=%2Z&before=%3Z").arg(kListed, after, before), 17);
    QCOMPARE(inside, m_orders.mid(100, 100));
}

void tst_invented_shop::windowCutsAnywhereLikeAFilter()
{
    // Every quarter of a day through the shop's first weeks, compared with a plain filter.
    QDateTime moment(QDate(2026, 1, 4), QTime(22, 0), QTimeZone::utc());
    for (int i = 0; i < 60; ++i) {
        moment = moment.addSecs(6 * 3600 + 17);
        const QString text = moment.toString("yyyy-MM-dd'T'HH:mm:ss");
        const auto later = [&](const QJsonObject& order) {
            return order["date_created_gmt"].toString() > text;
        };
        const auto earlier = [&](const QJsonObject& order) {
            return order["date_created_gmt"].toString() < text;
        };
        const auto total = [&](const char* key) {
            return header(askApi(m_shop,
                                 QStringLiteral("orders?per_page=1&%1&%2=%3Z")
                                     .arg(kListed, QLatin1String(key), text)),
                          "X-WP-Total")
                .toLongLong();
        };
        QCOMPARE(total("after"), std::count_if(m_orders.begin(), m_orders.end(), later));
        QCOMPARE(total("before"), std::count_if(m_orders.begin(), m_orders.end(), earlier));
    }
}

void tst_invented_shop::windowWithoutGmtIsInGermanTime()
{
    const QString query = QString(kListed).remove("&dates_are_gmt=true");
    const QString after = m_orders[9]["date_created"].toString();
    QCOMPARE(ordersOf(m_shop, query + "&after=" + after).first(), m_orders[10]);
}

void tst_invented_shop::answersTheLastPageOfAMillion()
{
    const InventedShop shop(1000000, 5);
    const ShopAnswer answer =
        askApi(shop, QStringLiteral("orders?per_page=100&page=10000&%1").arg(kListed));
    QCOMPARE(header(answer, "X-WP-Total"), "1000000");
    const QJsonArray orders = parsed(answer).array();
    QCOMPARE(orders.size(), 100);
    const QJsonObject last = orders.last().toObject();
    QCOMPARE(parsed(askApi(shop, QStringLiteral("orders/%1").arg(last["id"].toInteger()))).object(),
             last);
    QCOMPARE(askApi(shop, QStringLiteral("orders?per_page=100&page=10001&%1").arg(kListed)).body,
             "[]");
    // Nothing of the orders is held: a shop of a million is no larger than an empty one.
    static_assert(std::is_trivially_copyable_v<InventedShop>);
}

void tst_invented_shop::unknownThingsAre404_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("code");
    const char product[] = "woocommerce_rest_product_invalid_id";
    QTest::newRow("product 0") << "/wp-json/wc/v3/products/0" << product;
    QTest::newRow("product") << "/wp-json/wc/v3/products/999999" << product;
    QTest::newRow("product beyond an int") << "/wp-json/wc/v3/products/99999999999" << product;
    const char order[] = "woocommerce_rest_shop_order_invalid_id";
    QTest::newRow("order before the first") << "/wp-json/wc/v3/orders/995" << order;
    QTest::newRow("order after the last") << "/wp-json/wc/v3/orders/9999999" << order;
    QTest::newRow("order by another post's id") << "/wp-json/wc/v3/orders/1001" << order;
    QTest::newRow("invoices of no order") << "/wp-json/wc/v3/orders/1/invoices" << order;
    QTest::newRow("refunds of no order") << "/wp-json/wc/v3/orders/1/refunds"
                                         << "woocommerce_rest_invalid_order_id";
    QTest::newRow("file of no invoice") << "/wp-json/wc/v3/invoices/1000/pdf"
                                        << "woocommerce_rest_invoice_invalid_id";
    QTest::newRow("no list") << "/wp-json/wc/v3/coupons"
                             << "rest_no_route";
    QTest::newRow("list without an id") << "/wp-json/wc/v3/invoices"
                                        << "rest_no_route";
    QTest::newRow("no part") << "/wp-json/wc/v3/orders/1000/notes"
                             << "rest_no_route";
    QTest::newRow("elsewhere") << "/"
                               << "rest_no_route";
}

void tst_invented_shop::unknownThingsAre404()
{
    QFETCH(QString, path);
    const ShopAnswer answer = ask(m_shop, path);
    QCOMPARE(answer.status, 404);
    QTEST(parsed(answer)["code"].toString(), "code");
    QCOMPARE(parsed(answer)["data"]["status"].toInt(), 404);
}

void tst_invented_shop::otherMethodsAre404()
{
    QCOMPARE(ask(m_shop, "/wp-json/wc/v3/orders", "POST").status, 404);
}

void tst_invented_shop::tellsVirtualAndDownloadableProducts()
{
    const auto flags = [this](int id) {
        const QJsonDocument product = parsed(askApi(m_shop, QStringLiteral("products/%1").arg(id)));
        return std::pair(product["virtual"].toBool(), product["downloadable"].toBool());
    };
    QCOMPARE(flags(14), std::pair(false, false));
    QCOMPARE(flags(19), std::pair(true, false));
    QCOMPARE(flags(20), std::pair(true, true));
}

void tst_invented_shop::everyProductOfALineIsKnown()
{
    QSet<int> ids;
    for (const QJsonObject& order : std::as_const(m_orders)) {
        const QJsonArray lines = order["line_items"].toArray();
        for (const QJsonValue line : lines)
            ids << line["product_id"].toInt();
    }
    QVERIFY(ids.size() > 5);
    for (const int id : ids) {
        const ShopAnswer answer = askApi(m_shop, QStringLiteral("products/%1").arg(id));
        QCOMPARE(answer.status, 200);
        QCOMPARE(parsed(answer)["id"].toInt(), id);
    }
}

void tst_invented_shop::deletedProductsAreAskedForByChoice()
{
    const auto withoutProduct = [](const QList<QJsonObject>& orders) {
        return std::count_if(orders.begin(), orders.end(), [](const QJsonObject& order) {
            const QJsonArray lines = order["line_items"].toArray();
            return !lines.isEmpty() && lines[0]["product_id"].toInt() == 0;
        });
    };
    QCOMPARE(withoutProduct(m_orders), 0);
    InventedShop shop(100, 7);
    shop.setDeletedProducts(true);
    const auto count = withoutProduct(ordersOf(shop, kListed));
    QVERIFY(count > 0);
    QVERIFY(count < 20);
}

void tst_invented_shop::listsTaxRates()
{
    const ShopAnswer answer = askApi(m_shop, "taxes?per_page=100&page=1&orderby=id&order=asc");
    const QJsonArray rates = parsed(answer).array();
    QCOMPARE(rates.size(), 8);
    QCOMPARE(header(answer, "X-WP-Total"), "8");
    QCOMPARE(rates[0]["rate"].toString(), "19.0000");
    QCOMPARE(rates[6]["rate"].toString(), "5.5000");
    QCOMPARE(askApi(m_shop, "taxes?per_page=100&page=2&orderby=id&order=asc").body, "[]");
    QCOMPARE(parsed(askApi(m_shop, "taxes?per_page=3&page=3")).array().size(), 2);
}

QTEST_GUILESS_MAIN(tst_invented_shop)
#include "tst_invented_shop.moc"
