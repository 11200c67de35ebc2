#include "app/shopurls.h"

#include <QtTest>

class tst_shopurls : public QObject
{
    Q_OBJECT

private slots:
    void taxPages_data();
    void taxPages();
    void orderPageOnTheWire();
    void orderPageAsTextShowsTheBlank();
    void datesBoundTheOrders_data();
    void datesBoundTheOrders();
    void addressesOfOneThing();
    void baseAddressIsTakenAsItIs_data();
    void baseAddressIsTakenAsItIs();
    void credentialsFollowARedirectOnlyToTheSameHost_data();
    void credentialsFollowARedirectOnlyToTheSameHost();
};

namespace {

const QString base = QStringLiteral("https://shop.example");
const QByteArray orderQuery = "per_page=100&status=completed,%20refunded&page=1&orderby=date"
                              "&order=asc&dates_are_gmt=true";

} // namespace

void tst_shopurls::taxPages_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("first") << 1
                           << QByteArray("https://shop.example/wp-json/wc/v3/taxes"
                                         "?per_page=100&page=1&orderby=id&order=asc");
    QTest::newRow("twelfth") << 12
                             << QByteArray("https://shop.example/wp-json/wc/v3/taxes"
                                           "?per_page=100&page=12&orderby=id&order=asc");
}

void tst_shopurls::taxPages()
{
    QFETCH(int, page);
    QTEST(taxesUrl(base, page).toEncoded(), "expected");
}

void tst_shopurls::orderPageOnTheWire()
{
    QCOMPARE(ordersUrl(base, 1, {}).toEncoded(),
             "https://shop.example/wp-json/wc/v3/orders?" + orderQuery);
}

void tst_shopurls::orderPageAsTextShowsTheBlank()
{
    QVERIFY(ordersUrl(base, 1, {})
                .toString()
                .contains(QStringLiteral("status=completed, refunded&page=1")));
}

void tst_shopurls::datesBoundTheOrders_data()
{
    QTest::addColumn<QDate>("after");
    QTest::addColumn<QDate>("before");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("none") << QDate() << QDate() << QByteArray();
    QTest::newRow("from a day on")
        << QDate(2024, 2, 1) << QDate() << QByteArray("&after=2024-02-01T00:00:00Z");
    QTest::newRow("to a day, that day included")
        << QDate() << QDate(2024, 2, 28) << QByteArray("&before=2024-02-29T00:00:00Z");
    QTest::newRow("both, after first")
        << QDate(2023, 12, 31) << QDate(2023, 12, 31)
        << QByteArray("&after=2023-12-31T00:00:00Z&before=2024-01-01T00:00:00Z");
}

void tst_shopurls::datesBoundTheOrders()
{
    QCOMPARE(QDateTime(QDate(2024, 7, 1), QTime(0, 0)).offsetFromUtc(), 0);
    QFETCH(QDate, after);
    QFETCH(QDate, before);
    QFETCH(QByteArray, expected);
    OrderWindow window;
    if (after.isValid())
        window.after = after;
    if (before.isValid())
        window.before = before;
    QCOMPARE(ordersUrl(base, 1, window).query(QUrl::FullyEncoded).toLatin1(),
             orderQuery + expected);
}

void tst_shopurls::addressesOfOneThing()
{
    QCOMPARE(productUrl(base, 12).toEncoded(),
             QByteArray("https://shop.example/wp-json/wc/v3/products/12"));
    QCOMPARE(productUrl(base, 0).toEncoded(),
             QByteArray("https://shop.example/wp-json/wc/v3/products/0"));
    QCOMPARE(refundsUrl(base, 34).toEncoded(),
             QByteArray("https://shop.example/wp-json/wc/v3/orders/34/refunds"));
    QCOMPARE(invoicesUrl(base, 56).toEncoded(),
             QByteArray("https://shop.example/wp-json/wc/v3/orders/56/invoices"));
}

void tst_shopurls::baseAddressIsTakenAsItIs_data()
{
    QTest::addColumn<QString>("baseUrl");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("with a path") << "https://shop.example/laden"
                                 << QByteArray(
                                        "https://shop.example/laden/wp-json/wc/v3/products/1");
    QTest::newRow("no slash is cut off")
        << "https://shop.example/" << QByteArray("https://shop.example//wp-json/wc/v3/products/1");
    QTest::newRow("no scheme is added")
        << "shop.example" << QByteArray("shop.example/wp-json/wc/v3/products/1");
    QTest::newRow("with a port") << "http://127.0.0.1:8080"
                                 << QByteArray("http://127.0.0.1:8080/wp-json/wc/v3/products/1");
}

void tst_shopurls::baseAddressIsTakenAsItIs()
{
    QFETCH(QString, baseUrl);
    QTEST(productUrl(baseUrl, 1).toEncoded(), "expected");
}

void tst_shopurls::credentialsFollowARedirectOnlyToTheSameHost_data()
{
    QTest::addColumn<QUrl>("origin");
    QTest::addColumn<QUrl>("current");
    QTest::addColumn<QUrl>("target");
    QTest::addColumn<bool>("allowed");
    const auto row = [](const char* name, const char* origin, const char* current,
                        const char* target, bool allowed) {
        QTest::newRow(name) << QUrl(QString::fromLatin1(origin))
                            << QUrl(QString::fromLatin1(current))
                            << QUrl(QString::fromLatin1(target)) << allowed;
    };
    const char* const shop = "https://shop.example/a";
    row("other path", shop, shop, "https://shop.example/b", true);
    row("www. is added", shop, shop, "https://www.shop.example/a", true);
    row("www. is dropped", "https://www.shop.example/a", "https://www.shop.example/a", shop, true);
    row("other letter case", shop, shop, "https://SHOP.example/a", true);
    row("http to https", "http://shop.example/a", "http://shop.example/a", shop, true);
    row("http stays http", "http://shop.example/a", "http://shop.example/a",
        "http://shop.example/b", true);
    row("https to http", shop, shop, "http://shop.example/a", false);
    row("back to http at the second step", "http://shop.example/a", "https://shop.example/a",
        "http://shop.example/a", false);
    row("other host", shop, shop, "https://other.example/a", false);
    row("other host at the second step", shop, "https://www.shop.example/a",
        "https://other.example/a", false);
    row("subdomain", shop, shop, "https://m.shop.example/a", false);
    row("www. twice", shop, shop, "https://www.www.shop.example/a", false);
    row("www in front without a dot", shop, shop, "https://wwwshop.example/a", false);
    row("host as part of another", shop, shop, "https://shop.example.other.example/a", false);
    row("host as a user name", shop, shop, "https://shop.example@other.example/a", false);
    row("name and number of one machine", "http://127.0.0.1:1/a", "http://127.0.0.1:1/a",
        "http://localhost:1/a", false);
}

void tst_shopurls::credentialsFollowARedirectOnlyToTheSameHost()
{
    QFETCH(QUrl, origin);
    QFETCH(QUrl, current);
    QFETCH(QUrl, target);
    QTEST(isRedirectAllowed(origin, current, target), "allowed");
}

QTEST_GUILESS_MAIN(tst_shopurls)

#include "tst_shopurls.moc"
