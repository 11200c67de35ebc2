#include "accounting/order_lines.h"
#include "accounting/shopdates.h"

#include <QJsonDocument>
#include <QLoggingCategory>
#include <QTest>

class tst_order_lines : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void copiesTheFieldsOfALine();
    void leavesOutAField_data();
    void leavesOutAField();
    void replacesTaxesByTheRate_data();
    void replacesTaxesByTheRate();
    void rateOfTheTaxesBeatsAFieldOfItsName();
    void firstLineOfARateTakesTheShipping();
    void linesOfTwoRatesTakeTheirParts();
    void lineWithoutTaxesTakesTheUntaxedShipping();
    void shippingOfAnUnusedRateGoesToNoLine();
    void usedRatesAreForgottenInTheNextCall();
    void fieldNamedShippingPartIsReplaced();
    void writesTheShippingAmountWithSixDigits_data();
    void writesTheShippingAmountWithSixDigits();
    void marksTheLinesOfAnOrder();
    void marksTheLinesOfARefund();
    void refundWithoutIdAndDate();
    void handsOnTheErrors_data();
    void handsOnTheErrors();
    void orderReplacesTheRecords();
    void orderWithoutLinesEmptiesTheRecords();
    void refundAppendsToTheRecords();
    void countsTheLines_data();
    void countsTheLines();
    void reportsARefund_data();
    void reportsARefund();
    void reportsNothingOfAnOrder();
    void reportsNothingWithoutDebugOutput();
};

namespace {

QJsonObject json(const QByteArray& text)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (!document.isObject())
        qFatal("%s: %s", qPrintable(error.errorString()), text.constData());
    return document.object();
}

/// An order, or with `head` a refund, with these line items.
QJsonObject withItems(const QByteArray& items, const QByteArray& head = {})
{
    return json("{" + head + "\"line_items\": [" + items + "]}");
}

const OrderTaxMap usualRates {{1, {"19", "0", "0"}}, {2, {"7", "0", "0"}}};

QList<LineRecord> linesOf(const QJsonObject& order, const ShippingMap& shipping = {},
                          int errors = 0)
{
    QList<LineRecord> records;
    GetLineItems(order, usualRates, shipping, false, errors, records);
    return records;
}

QStringList shippingParts(const QList<LineRecord>& records)
{
    QStringList parts;
    for (const LineRecord& record : records) {
        const QVariant part = record.first.value("shipping_part", 0);
        parts.append(part.typeId() == QMetaType::QString ? part.toString() : "no text");
    }
    return parts;
}

QStringList s_messages;

void collectMessage(QtMsgType, const QMessageLogContext&, const QString& text)
{
    s_messages.append(text);
}

QStringList messagesOf(const QJsonObject& object, bool isRefund)
{
    s_messages.clear();
    const QtMessageHandler before = qInstallMessageHandler(collectMessage);
    QList<LineRecord> records;
    GetLineItems(object, usualRates, {}, isRefund, 0, records);
    qInstallMessageHandler(before);
    return s_messages;
}

} // namespace

void tst_order_lines::init()
{
    QLoggingCategory::defaultCategory()->setEnabled(QtDebugMsg, false);
    globalTaxRates.clear();
    bUseUTC = true;
    tzLocal = QTimeZone();
}

void tst_order_lines::copiesTheFieldsOfALine()
{
    const QList<LineRecord> records = linesOf(withItems(R"({
        "id": 8, "name": "Wandkalender \u00e4", "price": 17.28972, "total": "17.29",
        "total_tax": "1.21", "free": false, "note": null, "\u00e4rmel": "x",
        "tags": ["a", 1], "more": {"b": "c"}, "taxes": [{"id": 2, "total": "1.21"}]})"));
    const QMap<QString, QVariant> expected {
        {"id", 8LL},
        {"name", "Wandkalender ä"},
        {"price", 17.28972},
        {"total", "17.29"},
        {"total_tax", "1.21"},
        {"free", false},
        {"note", QVariant::fromValue(nullptr)},
        {"ärmel", "x"},
        {"tags", QVariantList {"a", 1LL}},
        {"more", QVariantMap {{"b", "c"}}},
        {"tax_rate", "7"},
        {"shipping_part", ""},
    };
    QCOMPARE(records.size(), 1);
    const QMap<QString, QVariant>& fields = records.first().first;
    QCOMPARE(fields.keys(), expected.keys());
    for (auto it = expected.begin(); it != expected.end(); ++it) {
        QCOMPARE(fields.value(it.key()), it.value());
        QCOMPARE(fields.value(it.key()).typeId(), it.value().typeId());
    }
}

void tst_order_lines::leavesOutAField_data()
{
    QTest::addColumn<bool>("left");
    for (const char* name :
         {"image", "meta_data", "parent_name", "sku", "tax_class", "variation_id", "taxes"})
        QTest::newRow(name) << true;
    for (const char* name : {"Image", "sku_", "images", "product_id", "global_unique_id", "tax"})
        QTest::newRow(name) << false;
}

void tst_order_lines::leavesOutAField()
{
    QFETCH(bool, left);
    const QByteArray name = QTest::currentDataTag();
    const QList<LineRecord> records = linesOf(withItems("{\"" + name + "\": \"value\"}"));
    QCOMPARE(records.size(), 1);
    QCOMPARE(records.first().first.contains(name), !left);
    QCOMPARE(records.first().first.size(), left ? 2 : 3);
}

void tst_order_lines::replacesTaxesByTheRate_data()
{
    QTest::addColumn<QByteArray>("item");
    QTest::addColumn<QString>("rate");
    const auto row = [](const char* name, const char* item, const char* rate) {
        QTest::newRow(name) << QByteArray(item) << rate;
    };
    row("no taxes", R"({"total_tax": "1"})", "0.00");
    row("empty taxes", R"({"total_tax": "1", "taxes": []})", "0.00");
    row("of the order", R"({"total_tax": "1", "taxes": [{"id": 1}]})", "19");
    row("of the shop alone", R"({"total_tax": "1", "taxes": [{"id": 8}]})", "20.0000");
    row("unknown, no tax", R"({"total_tax": "0", "taxes": [{"id": 9}]})", "0.00");
    row("unknown, tax", R"({"total_tax": "1", "taxes": [{"id": 9}]})", "-1");
    row("unknown, tax as number", R"({"total_tax": 1, "taxes": [{"id": 9}]})", "-1");
    row("unknown, no field for tax", R"({"taxes": [{"id": 9}]})", "0.00");
}

void tst_order_lines::replacesTaxesByTheRate()
{
    QFETCH(QByteArray, item);
    globalTaxRates = {{8, "20.0000"}};
    const QVariant rate = linesOf(withItems(item)).first().first.value("tax_rate");
    QCOMPARE(rate.typeId(), int(QMetaType::QString));
    QTEST(rate.toString(), "rate");
}

void tst_order_lines::rateOfTheTaxesBeatsAFieldOfItsName()
{
    const QList<LineRecord> records =
        linesOf(withItems(R"({"tax_rate": "own", "taxes": [{"id": 1}]}, {"tax_rate": "own"})"));
    QCOMPARE(records[0].first.value("tax_rate").toString(), QStringLiteral("19"));
    QCOMPARE(records[1].first.value("tax_rate").toString(), QStringLiteral("own"));
}

void tst_order_lines::firstLineOfARateTakesTheShipping()
{
    const QByteArray item = R"({"taxes": [{"id": 1}]})";
    QCOMPARE(shippingParts(linesOf(withItems(item + "," + item + "," + item), {{1, 4.12}})),
             QStringList({"4.12", "", ""}));
}

void tst_order_lines::linesOfTwoRatesTakeTheirParts()
{
    const QByteArray normal = R"({"taxes": [{"id": 1}]},)";
    const QByteArray reduced = R"({"taxes": [{"id": 2}]},)";
    QCOMPARE(shippingParts(linesOf(withItems(normal + reduced + normal + reduced + "{}"),
                                   {{1, 2.2}, {2, 2.13}})),
             QStringList({"2.2", "2.13", "", "", ""}));
}

void tst_order_lines::lineWithoutTaxesTakesTheUntaxedShipping()
{
    QCOMPARE(shippingParts(
                 linesOf(withItems(R"({"taxes": [{"id": 1}]}, {"taxes": []}, {})"), {{-1, 4.9}})),
             QStringList({"", "4.9", ""}));
}

void tst_order_lines::shippingOfAnUnusedRateGoesToNoLine()
{
    QCOMPARE(shippingParts(linesOf(withItems(R"({"taxes": [{"id": 1}]}, {})"), {{2, 4.9}})),
             QStringList({"", ""}));
}

void tst_order_lines::usedRatesAreForgottenInTheNextCall()
{
    const QJsonObject order = withItems(R"({"taxes": [{"id": 1}]})");
    QCOMPARE(shippingParts(linesOf(order, {{1, 5.0}})), QStringList("5"));
    QCOMPARE(shippingParts(linesOf(order, {{1, 6.0}})), QStringList("6"));
}

void tst_order_lines::fieldNamedShippingPartIsReplaced()
{
    QCOMPARE(shippingParts(linesOf(withItems(R"({"shipping_part": "9"})"))), QStringList(""));
}

void tst_order_lines::writesTheShippingAmountWithSixDigits_data()
{
    QTest::addColumn<double>("amount");
    QTest::addColumn<QString>("text");
    QTest::newRow("12.5") << 12.5 << "12.5";
    QTest::newRow("1234567.0") << 1234567.0 << "1.23457e+06";
    QTest::newRow("123456.0") << 123456.0 << "123456";
    QTest::newRow("1234.567") << 1234.567 << "1234.57";
    QTest::newRow("0.0") << 0.0 << "0";
    QTest::newRow("-4.9") << -4.9 << "-4.9";
}

void tst_order_lines::writesTheShippingAmountWithSixDigits()
{
    QFETCH(double, amount);
    QFETCH(QString, text);
    QCOMPARE(shippingParts(linesOf(withItems("{}"), {{-1, amount}})), QStringList(text));
}

void tst_order_lines::marksTheLinesOfAnOrder()
{
    const QList<LineRecord> records =
        linesOf(withItems("{}, {}", R"("id": 31, "date_created_gmt": "2026-07-12T10:00:00",)"));
    QCOMPARE(records.size(), 2);
    for (const LineRecord& record : records) {
        const QMap<QString, QVariant>& marks = record.second;
        QCOMPARE(marks.keys(), QStringList({"is_refund", "refund_date", "refund_id"}));
        QCOMPARE(marks["is_refund"].typeId(), int(QMetaType::Bool));
        QCOMPARE(marks["is_refund"].toBool(), false);
        QCOMPARE(marks["refund_id"].typeId(), int(QMetaType::Int));
        QCOMPARE(marks["refund_id"].toInt(), -1);
        QCOMPARE(marks["refund_date"].typeId(), int(QMetaType::QString));
        QCOMPARE(marks["refund_date"].toString(), QString());
    }
}

void tst_order_lines::marksTheLinesOfARefund()
{
    const QJsonObject refund = withItems("{}, {}", R"("id": 48, "refunded_payment": true,
        "date_created": "2026-07-12T11:11:11", "date_created_gmt": "2026-07-12T10:00:00",)");
    QList<LineRecord> records;
    QCOMPARE(GetLineItems(refund, usualRates, {}, true, 0, records), 2);
    for (const LineRecord& record : records) {
        const QMap<QString, QVariant>& marks = record.second;
        QCOMPARE(marks.keys(), QStringList({"is_refund", "refund_date", "refund_id"}));
        QCOMPARE(marks["is_refund"].toBool(), true);
        QCOMPARE(marks["refund_id"].typeId(), int(QMetaType::Int));
        QCOMPARE(marks["refund_id"].toInt(), 48);
        QCOMPARE(marks["refund_date"].toString(), QStringLiteral("2026-07-12T12:00:00"));
    }
}

void tst_order_lines::refundWithoutIdAndDate()
{
    QList<LineRecord> records;
    GetLineItems(withItems("{}"), usualRates, {}, true, 0, records);
    QCOMPARE(records.first().second.value("refund_id", -5).toInt(), 0);
    QCOMPARE(records.first().second.value("refund_date", -5).toString(), QString());
}

void tst_order_lines::handsOnTheErrors_data()
{
    QTest::addColumn<int>("errors");
    QTest::newRow("none") << 0;
    QTest::newRow("unclean split") << 1;
    QTest::newRow("negative") << -1;
}

void tst_order_lines::handsOnTheErrors()
{
    QFETCH(int, errors);
    const QList<LineRecord> records = linesOf(withItems("{}, {}"), {}, errors);
    for (const LineRecord& record : records) {
        QCOMPARE(record.second.contains("errors"), errors != 0);
        QCOMPARE(record.second.value("errors", 0), QVariant(errors));
        QCOMPARE(record.second.value("errors", 0).typeId(), int(QMetaType::Int));
    }
}

void tst_order_lines::orderReplacesTheRecords()
{
    QList<LineRecord> records = linesOf(withItems(R"({"id": 1}, {"id": 2})"));
    QCOMPARE(GetLineItems(withItems(R"({"id": 3})"), usualRates, {}, false, 0, records), 1);
    QCOMPARE(records.size(), 1);
    QCOMPARE(records.first().first.value("id").toInt(), 3);
}

void tst_order_lines::orderWithoutLinesEmptiesTheRecords()
{
    QList<LineRecord> records = linesOf(withItems("{}"));
    QCOMPARE(GetLineItems(json("{}"), usualRates, {}, false, 0, records), 0);
    QVERIFY(records.isEmpty());
}

void tst_order_lines::refundAppendsToTheRecords()
{
    QList<LineRecord> records = linesOf(withItems(R"({"id": 1}, {"id": 2})"));
    QCOMPARE(GetLineItems(withItems(R"({"id": 3})"), usualRates, {}, true, 0, records), 1);
    QCOMPARE(GetLineItems(json("{}"), usualRates, {}, true, 0, records), 0);
    QList<int> ids;
    QList<bool> refunds;
    for (const LineRecord& record : records) {
        ids.append(record.first.value("id").toInt());
        refunds.append(record.second.value("is_refund").toBool());
    }
    QCOMPARE(ids, QList<int>({1, 2, 3}));
    QCOMPARE(refunds, QList<bool>({false, false, true}));
}

void tst_order_lines::countsTheLines_data()
{
    QTest::addColumn<QByteArray>("items");
    QTest::addColumn<int>("count");
    QTest::newRow("none") << QByteArray() << 0;
    QTest::newRow("one") << QByteArray("{}") << 1;
    QTest::newRow("three") << QByteArray("{}, {}, {}") << 3;
}

void tst_order_lines::countsTheLines()
{
    QFETCH(QByteArray, items);
    QFETCH(int, count);
    QList<LineRecord> records;
    QCOMPARE(GetLineItems(withItems(items), usualRates, {}, false, 0, records), count);
    QCOMPARE(int(records.size()), count);
}

void tst_order_lines::reportsARefund_data()
{
    QTest::addColumn<QByteArray>("payment");
    QTest::addColumn<QString>("word");
    QTest::newRow("paid back") << QByteArray("true") << "true";
    QTest::newRow("not paid back") << QByteArray("false") << "false";
    QTest::newRow("null") << QByteArray("null") << "false";
}

void tst_order_lines::reportsARefund()
{
    QFETCH(QByteArray, payment);
    QFETCH(QString, word);
    QLoggingCategory::defaultCategory()->setEnabled(QtDebugMsg, true);
    bUseUTC = false; // no line of the date conversion beside it
    const QJsonObject refund = withItems(
        "{}", R"("id": 48, "date_created": "2026-07-12", "refunded_payment": )" + payment + ",");
    QCOMPARE(messagesOf(refund, true),
             QStringList("refund_id: 48 refunded_payment: " + word
                         + " refund_date_created: \"2026-07-12\""));
}

void tst_order_lines::reportsNothingOfAnOrder()
{
    QLoggingCategory::defaultCategory()->setEnabled(QtDebugMsg, true);
    QVERIFY(messagesOf(withItems("{}", R"("id": 48,)"), false).isEmpty());
    QVERIFY(messagesOf(json(R"({"id": 48, "line_items": []})"), true).isEmpty());
}

void tst_order_lines::reportsNothingWithoutDebugOutput()
{
    QVERIFY(messagesOf(withItems("{}", R"("id": 48,)"), true).isEmpty());
}

QTEST_APPLESS_MAIN(tst_order_lines)
#include "tst_order_lines.moc"
