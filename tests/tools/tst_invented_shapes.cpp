#include "tests/tools/shop_questions.h"

#include <QTest>

#include <functional>

using namespace shop_questions;

using Finds = std::function<bool(const InventedShop&, const QJsonObject&)>;
Q_DECLARE_METATYPE(Finds)

namespace {

Finds firstRefund(const std::function<bool(const QJsonObject&, const QJsonObject&)>& finds)
{
    return [finds](const InventedShop& shop, const QJsonObject& order) {
        const QJsonArray refunds = refundsOf(shop, order);
        return refunds.size() == 1 && finds(order, refunds.first().toObject());
    };
}

Finds shippingLine(const std::function<bool(const QJsonObject&)>& finds)
{
    return [finds](const InventedShop&, const QJsonObject& order) {
        const QJsonArray lines = order["shipping_lines"].toArray();
        return std::any_of(lines.begin(), lines.end(),
                           [&](const QJsonValue& line) { return finds(line.toObject()); });
    };
}

Finds order(const std::function<bool(const QJsonObject&)>& finds)
{
    return [finds](const InventedShop&, const QJsonObject& order) { return finds(order); };
}

void addRefundRows()
{
    const auto row = [](const char* name, const Finds& finds) { QTest::newRow(name) << finds; };
    row("refund of all lines and shipping", firstRefund([](const auto& order, const auto& refund) {
            return order["status"].toString() == u"refunded" && order["total"] == refund["amount"]
                && !refund["shipping_lines"].toArray().isEmpty();
        }));
    row("refund of the first line only", firstRefund([](const auto& order, const auto& refund) {
            const QJsonArray lines = order["line_items"].toArray();
            const QJsonArray back = refund["line_items"].toArray();
            return lines.size() > 1 && back.size() == 1
                && cents(back[0]["total"]) == -cents(lines[0]["total"])
                && back[0]["meta_data"][0]["value"].toString()
                == QString::number(lines[0]["id"].toInteger());
        }));
    row("refund of one piece of several", firstRefund([](const auto& order, const auto& refund) {
            return refund["line_items"].toArray().size() == 1
                && refund["line_items"][0]["quantity"].toInt() == -1
                && order["line_items"][0]["quantity"].toInt() == 3;
        }));
    row("refund by amount without lines", firstRefund([](const auto&, const auto& refund) {
            return refund["line_items"].toArray().isEmpty()
                && refund["shipping_lines"].toArray().isEmpty();
        }));
    row("full refund by amount with lines of zero",
        firstRefund([](const auto& order, const auto& refund) {
            const QJsonArray back = refund["line_items"].toArray();
            return back.size() == order["line_items"].toArray().size() && isAllZero(back)
                && order["total"] == refund["amount"] && back[0]["taxes"].toArray().isEmpty();
        }));
    row("partial refund by amount with lines of zero",
        firstRefund([](const auto& order, const auto& refund) {
            const QJsonArray back = refund["line_items"].toArray();
            return back.size() > 1 && isAllZero(back) && order["total"] != refund["amount"];
        }));
    row("refund of more than six digits", firstRefund([](const auto&, const auto& refund) {
            return refund["amount"].toString() == u"12345.67";
        }));
    row("refund of the shipping only", firstRefund([](const auto&, const auto& refund) {
            const QJsonArray shipping = refund["shipping_lines"].toArray();
            return refund["line_items"].toArray().isEmpty() && !shipping.isEmpty()
                && cents(shipping[0]["total"]) < 0;
        }));
    row("two refunds", [](const InventedShop& shop, const QJsonObject& order) {
        return refundsOf(shop, order).size() == 2;
    });
}

void addOrderRows()
{
    const auto row = [](const char* name, const Finds& finds) { QTest::newRow(name) << finds; };
    row("7 % only", order([](const auto& order) { return ratesOf(order) == QSet<int> {2}; }));
    row("19 % only", order([](const auto& order) { return ratesOf(order) == QSet<int> {1}; }));
    row("19 % and 7 %", order([](const auto& order) {
            return ratesOf(order) == QSet<int> {1, 2};
        }));
    row("0 % as a rate", order([](const auto& order) { return ratesOf(order).contains(3); }));
    row("20 % of Austria", order([](const auto& order) {
            return ratesOf(order).contains(4) && order["billing"]["country"].toString() == u"AT";
        }));
    row("5.5 % of France", order([](const auto& order) {
            const QJsonArray lines = order["tax_lines"].toArray();
            return std::any_of(lines.begin(), lines.end(), [](const QJsonValue& line) {
                return line["rate_percent"].toDouble() == 5.5;
            });
        }));
    row("export without tax", order([](const auto& order) {
            return order["billing"]["country"].toString() == u"CH" && cents(order["total_tax"]) == 0
                && order["tax_lines"].toArray().isEmpty();
        }));
    row("no line items", order([](const auto& order) {
            return order["line_items"].toArray().isEmpty()
                && order["fee_lines"].toArray().size() == 1;
        }));
    row("fee", order([](const auto& order) {
            return cents(order["fee_lines"][0]["total"].isString() ? order["fee_lines"][0]["total"]
                                                                   : QJsonValue("0.00"))
                > 0;
        }));
    row("negative fee", order([](const auto& order) {
            const QJsonArray fees = order["fee_lines"].toArray();
            return !fees.isEmpty() && cents(fees[0]["total"]) < 0;
        }));
    row("coupon", order([](const auto& order) {
            return order["coupon_lines"].toArray().size() == 1
                && cents(order["discount_total"]) > 0;
        }));
    row("free item", order([](const auto& order) {
            return order["line_items"].toArray().size() > 1
                && cents(order["line_items"].toArray().last()["total"]) == 0;
        }));
    row("six lines",
        order([](const auto& order) { return order["line_items"].toArray().size() == 6; }));
    row("variation", order([](const auto& order) {
            return order["line_items"][0]["variation_id"].toInt() == 25
                && order["line_items"][0]["product_id"].toInt() == 24
                && order["line_items"][0]["parent_name"].isString();
        }));
    row("virtual product", order([](const auto& order) {
            return order["line_items"][0]["product_id"].toInt() == 19
                && order["shipping_lines"].toArray().isEmpty();
        }));
    row("download", order([](const auto& order) {
            return order["line_items"][0]["product_id"].toInt() == 20;
        }));
    row("paid date missing", order([](const auto& order) {
            return order["date_paid"].isNull() && order["date_paid_gmt"].isNull();
        }));
    row("completion date missing",
        order([](const auto& order) { return order["date_completed"].isNull(); }));
}

void addShippingRows()
{
    const auto row = [](const char* name, const Finds& finds) { QTest::newRow(name) << finds; };
    row("shipping of one rate",
        shippingLine([](const auto& line) { return line["taxes"].toArray().size() == 1; }));
    row("shipping split over rates",
        shippingLine([](const auto& line) { return line["taxes"].toArray().size() == 2; }));
    row("shipping whose tax explains it", shippingLine([](const auto& line) {
            return line["total"].toString() == u"5.00" && line["total_tax"].toString() == u"0.95";
        }));
    row("free shipping", shippingLine([](const auto& line) {
            return line["method_id"].toString() == u"free_shipping" && cents(line["total"]) == 0
                && line["taxes"].toArray().size() == 1;
        }));
    row("pick-up", shippingLine([](const auto& line) {
            return line["method_id"].toString() == u"local_pickup";
        }));
    row("shipping without taxes", shippingLine([](const auto& line) {
            return line["taxes"].toArray().isEmpty() && cents(line["total"]) > 0
                && line["tax_status"].toString() == u"none";
        }));
    row("two shipping lines",
        order([](const auto& order) { return order["shipping_lines"].toArray().size() == 2; }));
    row("other shipping address", order([](const auto& order) {
            return order["shipping"]["address_1"] != order["billing"]["address_1"]
                && !order["shipping"]["city"].toString().isEmpty();
        }));
}

void addPaymentAndTextRows()
{
    const auto row = [](const char* name, const Finds& finds) { QTest::newRow(name) << finds; };
    row("PayPal with its fee", order([](const auto& order) {
            const QJsonValue fees = metaValue(order, "_ppcp_paypal_fees");
            return order["payment_method"].toString() == u"ppcp-gateway"
                && cents(fees["paypal_fee"]["value"]) > 0
                && cents(fees["gross_amount"]["value"]) == cents(order["total"])
                && cents(fees["net_amount"]["value"]) < cents(order["total"]);
        }));
    row("PayPal without a fee", order([](const auto& order) {
            return order["payment_method"].toString() == u"ppcp-gateway"
                && metaValue(order, "_ppcp_paypal_fees").isUndefined();
        }));
    row("card through PayPal", order([](const auto& order) {
            return order["payment_method_title"].toString() == u"Kreditkarte (über PayPal)";
        }));
    row("card through PayPal without the name", order([](const auto& order) {
            return order["payment_method"].toString() == u"ppcp-credit-card-gateway"
                && order["payment_method_title"].toString() == u"Kreditkarte";
        }));
    for (const char* method : {"bacs", "stripe", "invoice", "cod", "direct-debit"})
        QTest::addRow("payment by %s", method) << order([method](const QJsonObject& order) {
            return order["payment_method"].toString() == QLatin1String(method);
        });
    row("direct debit with an account", order([](const auto& order) {
            return order["direct_debit"]["iban"].toString().startsWith("DE00");
        }));
    row("name with an umlaut", order([](const auto& order) {
            return order["billing"]["last_name"].toString().contains(QChar(u'Ö'));
        }));
    row("company with quotes, semicolon and line break", order([](const auto& order) {
            const QString company = order["billing"]["company"].toString();
            return company.contains(u'"') && company.contains(u';') && company.contains(u'\n');
        }));
    row("note with line breaks", order([](const auto& order) {
            return order["customer_note"].toString().contains("\r\n");
        }));
    row("product name with a quote", order([](const auto& order) {
            const QJsonArray lines = order["line_items"].toArray();
            return std::any_of(lines.begin(), lines.end(), [](const QJsonValue& line) {
                return line["name"].toString().contains(u'"');
            });
        }));
    row("order of a registered customer",
        order([](const auto& order) { return order["_links"]["customer"].isArray(); }));
    row("order from the back office",
        order([](const auto& order) { return order["created_via"].toString() == u"admin"; }));
}

} // namespace

class tst_invented_shapes : public QObject
{
    Q_OBJECT

    InventedShop m_shop {500, 7};
    QList<QJsonObject> m_orders;

private slots:
    void initTestCase();
    void shapesOccurWithinFiveHundredOrders_data();
    void shapesOccurWithinFiveHundredOrders();
};

void tst_invented_shapes::initTestCase()
{
    m_orders = ordersOf(m_shop, kListed);
    QCOMPARE(m_orders.size(), 500);
}

void tst_invented_shapes::shapesOccurWithinFiveHundredOrders_data()
{
    QTest::addColumn<Finds>("finds");
    addRefundRows();
    addOrderRows();
    addShippingRows();
    addPaymentAndTextRows();
}

void tst_invented_shapes::shapesOccurWithinFiveHundredOrders()
{
    QFETCH(Finds, finds);
    const auto found = [&](const QJsonObject& order) { return finds(m_shop, order); };
    QVERIFY(std::any_of(m_orders.cbegin(), m_orders.cend(), found));
    QVERIFY(!std::all_of(m_orders.cbegin(), m_orders.cend(), found));
}

QTEST_GUILESS_MAIN(tst_invented_shapes)
#include "tst_invented_shapes.moc"
