#include "tests/tools/shop_questions.h"

#include <QTest>

using namespace shop_questions;

class tst_invented_orders : public QObject
{
    Q_OBJECT

    InventedShop m_shop {500, 7};
    QList<QJsonObject> m_orders;

private slots:
    void initTestCase();
    void totalIsTheSumOfLinesShippingAndFees();
    void taxesAddUpByRate();
    void shippingTaxesAddUp();
    void refundsAddUpToTheirAmount();
    void orderAndRefundListAgree();
    void localDatesAreGermanTime();
    void addressesAreInvented();
};

void tst_invented_orders::initTestCase()
{
    m_orders = ordersOf(m_shop, kListed);
    QCOMPARE(m_orders.size(), 500);
}

void tst_invented_orders::totalIsTheSumOfLinesShippingAndFees()
{
    for (const QJsonObject& order : std::as_const(m_orders)) {
        const QJsonArray lines = order["line_items"].toArray();
        const QJsonArray fees = order["fee_lines"].toArray();
        const QJsonArray shipping = order["shipping_lines"].toArray();
        QCOMPARE(cents(order["cart_tax"]), sumOf(lines, "total_tax") + sumOf(fees, "total_tax"));
        QCOMPARE(cents(order["shipping_total"]), sumOf(shipping, "total"));
        QCOMPARE(cents(order["shipping_tax"]), sumOf(shipping, "total_tax"));
        QCOMPARE(cents(order["total_tax"]),
                 cents(order["cart_tax"]) + cents(order["shipping_tax"]));
        QCOMPARE(cents(order["total"]),
                 sumOf(lines, "total") + sumOf(fees, "total") + sumOf(shipping, "total")
                     + cents(order["total_tax"]));
        QVERIFY(cents(order["total"]) > 0);
        QCOMPARE(sumOf(lines, "subtotal") - sumOf(lines, "total"), cents(order["discount_total"]));
    }
}

void tst_invented_orders::taxesAddUpByRate()
{
    for (const QJsonObject& order : std::as_const(m_orders)) {
        const QJsonArray taxLines = order["tax_lines"].toArray();
        QCOMPARE(sumOf(taxLines, "tax_total"), cents(order["cart_tax"]));
        QCOMPARE(sumOf(taxLines, "shipping_tax_total"), cents(order["shipping_tax"]));
        QSet<int> named;
        for (const QJsonValue line : taxLines) {
            QVERIFY(line["rate_percent"].isDouble());
            named << line["rate_id"].toInt();
        }
        QVERIFY(named.contains(ratesOf(order)));
    }
}

void tst_invented_orders::shippingTaxesAddUp()
{
    for (const QJsonObject& order : std::as_const(m_orders)) {
        const QJsonArray shipping = order["shipping_lines"].toArray();
        for (const QJsonValue line : shipping) {
            if (!line["taxes"].toArray().isEmpty())
                QCOMPARE(sumOf(line["taxes"].toArray(), "total"), cents(line["total_tax"]));
        }
    }
}

void tst_invented_orders::refundsAddUpToTheirAmount()
{
    int withValue = 0;
    int withoutLines = 0;
    int withZeroLines = 0;
    for (const QJsonObject& order : std::as_const(m_orders)) {
        qint64 paidBack = 0;
        const QJsonArray refunds = refundsOf(m_shop, order);
        for (const QJsonValue refund : refunds) {
            const QJsonArray lines = refund["line_items"].toArray();
            const QJsonArray shipping = refund["shipping_lines"].toArray();
            const qint64 amount = cents(refund["amount"]);
            QVERIFY(amount > 0);
            paidBack += amount;
            const qint64 sum = sumOf(lines, "total") + sumOf(lines, "total_tax")
                + sumOf(shipping, "total") + sumOf(shipping, "total_tax");
            if (lines.isEmpty() && shipping.isEmpty()) {
                ++withoutLines;
            } else if (isAllZero(lines) && shipping.isEmpty()) {
                ++withZeroLines;
            } else {
                ++withValue;
                QCOMPARE(-sum, amount);
            }
        }
        QVERIFY(paidBack <= cents(order["total"]));
    }
    QVERIFY(withValue > 0 && withoutLines > 0 && withZeroLines > 0);
}

void tst_invented_orders::orderAndRefundListAgree()
{
    for (const QJsonObject& order : std::as_const(m_orders)) {
        const QJsonArray brief = order["refunds"].toArray();
        const QJsonArray refunds = refundsOf(m_shop, order);
        QCOMPARE(brief.size(), refunds.size());
        for (qsizetype i = 0; i < brief.size(); ++i) {
            QCOMPARE(brief[i]["id"], refunds[i]["id"]);
            QCOMPARE(cents(brief[i]["total"]), -cents(refunds[i]["amount"]));
            QVERIFY(refunds[i]["date_created_gmt"].toString()
                    > order["date_created_gmt"].toString());
            if (i > 0)
                QVERIFY(refunds[i - 1]["date_created_gmt"].toString()
                        > refunds[i]["date_created_gmt"].toString());
        }
    }
}

void tst_invented_orders::localDatesAreGermanTime()
{
    const InventedShop shop(200, 7, QDate(2026, 3, 20));
    const QList<QJsonObject> orders = ordersOf(shop, kListed);
    QSet<qint64> offsets;
    for (const QJsonObject& order : orders) {
        QDateTime utc =
            QDateTime::fromString(order["date_created_gmt"].toString() + 'Z', Qt::ISODate);
        QDateTime local =
            QDateTime::fromString(order["date_created"].toString() + 'Z', Qt::ISODate);
        QVERIFY(utc.isValid() && local.isValid());
        offsets << utc.secsTo(local);
    }
    QCOMPARE(offsets, (QSet<qint64> {3600, 7200}));
}

void tst_invented_orders::addressesAreInvented()
{
    for (const QJsonObject& order : std::as_const(m_orders)) {
        QVERIFY(order["billing"]["email"].toString().endsWith("@example.org"));
        QVERIFY(order["billing"]["phone"].toString().startsWith("030 23125"));
    }
}

QTEST_GUILESS_MAIN(tst_invented_orders)
#include "tst_invented_orders.moc"
