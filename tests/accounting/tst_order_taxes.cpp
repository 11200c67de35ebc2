#include "accounting/order_taxes.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

class tst_order_taxes : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void readsTheOrdersOwnRates();
    void rateTextsAreAsTheShopSendsThem_data();
    void rateTextsAreAsTheShopSendsThem();
    void emptiesTheRatesFirst();
    void skipsALineWithoutRatePercent();
    void laterLineOfARateReplacesTheEarlier();
    void missingRateIdCountsAsZero();
    void splitsShippingCleanly_data();
    void splitsShippingCleanly();
    void emptiesTheShippingFirst();
    void leavesTheErrorsWithoutShippingLines();
    void unknownRateSetsTheFlagAndGivesNothing();
    void untaxedShippingIsFlaggedAndGross();
    void freeUntaxedShippingIsNotFlagged();
    void flaggedShippingIsGrossUnderTheSmallestRate();
    void flagOfTheCallerMakesItGross();
    void otherBitsOfTheCallerDoNot_data();
    void otherBitsOfTheCallerDoNot();
    void givesNoRateMoreThanIsLeft();
    void refundSharesAreNegative();
    void zeroRateContributesNothing_data();
    void zeroRateContributesNothing();
    void findsTheRateOfALine_data();
    void findsTheRateOfALine();
    void ownRateGoesBeforeTheShopsRate();
    void onlyTheFirstTaxObjectCounts();
    void lineWithoutTaxesLeavesEverythingAlone_data();
    void lineWithoutTaxesLeavesEverythingAlone();
};

namespace {

QJsonObject json(const char* text)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray(text), &error);
    if (!document.isObject())
        qFatal("%s: %s", qPrintable(error.errorString()), text);
    return document.object();
}

const OrderTaxMap usualRates {{1, {"19", "0", "0"}}, {2, {"7", "0", "0"}}, {3, {"0", "0", "0"}}};

} // namespace

void tst_order_taxes::init()
{
    globalTaxRates.clear();
}

void tst_order_taxes::readsTheOrdersOwnRates()
{
    OrderTaxMap rates;
    QVERIFY(GetLocalTaxRates(json(R"({"tax_lines": [
        {"rate_id": 2, "rate_percent": 7, "tax_total": "1.21", "shipping_tax_total": "0.15"},
        {"rate_id": "1", "rate_percent": 19, "tax_total": "3.78", "shipping_tax_total": "0.42"}
        ]})"),
                             rates));
    const OrderTaxMap expected {{1, {"19", "3.78", "0.42"}}, {2, {"7", "1.21", "0.15"}}};
    QVERIFY(rates == expected);
}

void tst_order_taxes::rateTextsAreAsTheShopSendsThem_data()
{
    QTest::addColumn<QString>("sent");
    QTest::addColumn<QString>("text");
    QTest::newRow("integer") << "19"
                             << "19";
    QTest::newRow("whole number with a point") << "19.0"
                                               << "19";
    QTest::newRow("fraction") << "5.50"
                              << "5.5";
    QTest::newRow("text") << "\"19.00\""
                          << "19.00";
    QTest::newRow("null") << "null"
                          << "";
}

void tst_order_taxes::rateTextsAreAsTheShopSendsThem()
{
    QFETCH(QString, sent);
    QFETCH(QString, text);
    const QString line = QStringLiteral(R"({"tax_lines": [{"rate_id": 4, "rate_percent": %1,)"
                                        R"("tax_total": %1}]})")
                             .arg(sent);
    OrderTaxMap rates;
    QVERIFY(GetLocalTaxRates(json(line.toUtf8().constData()), rates));
    QVERIFY(rates == (OrderTaxMap {{4, {text, text, ""}}}));
}

void tst_order_taxes::emptiesTheRatesFirst()
{
    OrderTaxMap rates = usualRates;
    QVERIFY(!GetLocalTaxRates(json("{}"), rates));
    QVERIFY(rates.empty());
    rates = usualRates;
    QVERIFY(!GetLocalTaxRates(json(R"({"tax_lines": []})"), rates));
    QVERIFY(rates.empty());
}

void tst_order_taxes::skipsALineWithoutRatePercent()
{
    OrderTaxMap rates;
    QVERIFY(GetLocalTaxRates(json(R"({"tax_lines": [{"rate_id": 1, "tax_total": "5"}, null, 7,
                               {"rate_id": 2, "rate_percent": 7}]})"),
                             rates));
    QVERIFY(rates == (OrderTaxMap {{2, {"7", "", ""}}}));
}

void tst_order_taxes::laterLineOfARateReplacesTheEarlier()
{
    OrderTaxMap rates;
    GetLocalTaxRates(json(R"({"tax_lines": [{"rate_id": 1, "rate_percent": 16, "tax_total": "1"},
                                            {"rate_id": 1, "rate_percent": 19}]})"),
                     rates);
    QVERIFY(rates == (OrderTaxMap {{1, {"19", "", ""}}}));
}

void tst_order_taxes::missingRateIdCountsAsZero()
{
    OrderTaxMap rates;
    GetLocalTaxRates(json(R"({"tax_lines": [{"rate_percent": 19}]})"), rates);
    QVERIFY(rates == (OrderTaxMap {{0, {"19", "", ""}}}));
}

void tst_order_taxes::splitsShippingCleanly_data()
{
    QTest::addColumn<QString>("lines");
    QTest::addColumn<QList<double>>("parts"); // of the rates 1 and 2, NaN for none
    const double none = qQNaN();
    const auto row = [](const char* name, const char* lines, const QList<double>& parts) {
        QTest::newRow(name) << lines << parts;
    };
    row("one rate",
        R"([{"total": "10.00", "total_tax": "1.90", "taxes": [{"id": 1, "total": "1.90"}]}])",
        {10.0, none});
    row("two rates",
        R"([{"total": "10.00", "total_tax": "1.30",
             "taxes": [{"id": 1, "total": "0.95"}, {"id": 2, "total": "0.35"}]}])",
        {5.0, 5.0});
    row("numbers instead of texts",
        R"([{"total": 10, "total_tax": 1.9, "taxes": [{"id": "1", "total": 1.9}]}])", {10.0, none});
    row("two lines of one rate add up",
        R"([{"total": "10.00", "taxes": [{"id": 1, "total": "1.90"}]},
            {"total": "5.00", "taxes": [{"id": 1, "total": "0.95"}]}])",
        {15.0, none});
    row("two lines of two rates",
        R"([{"total": "10.00", "taxes": [{"id": 1, "total": "1.90"}]},
            {"total": "5.00", "taxes": [{"id": 2, "total": "0.35"}]}])",
        {10.0, 5.0});
    row("free, but taxed", R"([{"total": "0.00", "taxes": [{"id": 1, "total": "0"}]}])",
        {0.0, none});
    row("an unknown rate beside a full one",
        R"([{"total": "10.00", "taxes": [{"id": 9, "total": "5"}, {"id": 1, "total": "1.90"}]}])",
        {10.0, none});
    row("entries that are no objects",
        R"([{"total": "10.00", "taxes": [null, 7, {"id": 1, "total": "1.90"}]}])", {10.0, none});
}

void tst_order_taxes::splitsShippingCleanly()
{
    QFETCH(QString, lines);
    QFETCH(QList<double>, parts);
    const QByteArray order = "{\"shipping_lines\": " + lines.toUtf8() + "}";
    ShippingMap shipping;
    int errors = 0;
    QVERIFY(GetShippingTax(json(order.constData()), usualRates, shipping, errors));
    QCOMPARE(errors, 0);
    ShippingMap expected;
    for (int i = 0; i < parts.size(); ++i) {
        if (!qIsNaN(parts[i]))
            expected[i + 1] = parts[i];
    }
    QVERIFY(shipping == expected);
}

void tst_order_taxes::emptiesTheShippingFirst()
{
    ShippingMap shipping {{5, 1.0}};
    int errors = 0;
    QVERIFY(!GetShippingTax(json("{}"), usualRates, shipping, errors));
    QVERIFY(shipping.empty());
}

void tst_order_taxes::leavesTheErrorsWithoutShippingLines()
{
    ShippingMap shipping;
    for (const int before : {0, 1, 2, -1}) {
        int errors = before;
        QVERIFY(!GetShippingTax(json(R"({"shipping_lines": []})"), usualRates, shipping, errors));
        QCOMPARE(errors, before);
    }
}

void tst_order_taxes::unknownRateSetsTheFlagAndGivesNothing()
{
    ShippingMap shipping;
    int errors = 0;
    QVERIFY(!GetShippingTax(json(R"({"shipping_lines": [{"total": "10.00", "total_tax": "1.90",
                                     "taxes": [{"id": 9, "total": "1.90"}]}]})"),
                            usualRates, shipping, errors));
    QCOMPARE(errors, 1);
    QVERIFY(shipping.empty());
}

void tst_order_taxes::untaxedShippingIsFlaggedAndGross()
{
    ShippingMap shipping;
    int errors = 0;
    QVERIFY(GetShippingTax(json(R"({"shipping_lines": [
        {"total": "4.90", "total_tax": "0.50", "taxes": []}]})"),
                           usualRates, shipping, errors));
    QCOMPARE(errors, 1);
    QVERIFY(shipping == (ShippingMap {{-1, 0.5 + 4.9}}));
}

void tst_order_taxes::freeUntaxedShippingIsNotFlagged()
{
    ShippingMap shipping;
    int errors = 0;
    QVERIFY(GetShippingTax(json(R"({"shipping_lines": [{"total": "0.00", "taxes": []}]})"),
                           usualRates, shipping, errors));
    QCOMPARE(errors, 0);
    QVERIFY(shipping == (ShippingMap {{-1, 0.0}}));
}

void tst_order_taxes::flaggedShippingIsGrossUnderTheSmallestRate()
{
    ShippingMap shipping;
    int errors = 0;
    // The second line's tax implies only 5.00 of its 6.00.
    QVERIFY(GetShippingTax(json(R"({"shipping_lines": [
        {"total": "10.00", "total_tax": "0.70", "taxes": [{"id": 2, "total": "0.70"}]},
        {"total": "6.00", "total_tax": "0.95", "taxes": [{"id": 1, "total": "0.95"}]}]})"),
                           usualRates, shipping, errors));
    QCOMPARE(errors, 1);
    QVERIFY(shipping == (ShippingMap {{1, 0.7 + 0.95 + 16.0}}));
}

void tst_order_taxes::flagOfTheCallerMakesItGross()
{
    ShippingMap shipping;
    int errors = 1;
    QVERIFY(GetShippingTax(json(R"({"shipping_lines": [{"total": "10.00", "total_tax": "1.90",
                                    "taxes": [{"id": 1, "total": "1.90"}]}]})"),
                           usualRates, shipping, errors));
    QCOMPARE(errors, 1);
    QVERIFY(shipping == (ShippingMap {{1, 11.9}}));
}

void tst_order_taxes::otherBitsOfTheCallerDoNot_data()
{
    QTest::addColumn<int>("errors");
    QTest::newRow("bit 1") << 2;
    QTest::newRow("below 0") << -1;
}

void tst_order_taxes::otherBitsOfTheCallerDoNot()
{
    QFETCH(int, errors);
    const int before = errors;
    ShippingMap shipping;
    GetShippingTax(json(R"({"shipping_lines": [{"total": "10.00", "total_tax": "1.90",
                            "taxes": [{"id": 1, "total": "1.90"}]}]})"),
                   usualRates, shipping, errors);
    QCOMPARE(errors, before);
    QVERIFY(shipping == (ShippingMap {{1, 10.0}}));
}

void tst_order_taxes::givesNoRateMoreThanIsLeft()
{
    // The errors are below 0, so that the shares stay to be seen: 0.96 implies 5.05 at 19 %, 0.35
    // implies 5.00 at 7 %, of which 4.95 are left.
    ShippingMap shipping;
    int errors = -2;
    GetShippingTax(json(R"({"shipping_lines": [{"total": "10.00",
                            "taxes": [{"id": 1, "total": "0.96"}, {"id": 2, "total": "0.35"}]}]})"),
                   usualRates, shipping, errors);
    QCOMPARE(errors, -1);
    QCOMPARE(shipping.size(), 2U);
    QCOMPARE(shipping.at(1), 5.05);
    QCOMPARE(shipping.at(2), 4.95);
}

void tst_order_taxes::refundSharesAreNegative()
{
    ShippingMap shipping;
    int errors = 0;
    QVERIFY(GetShippingTax(json(R"({"shipping_lines": [{"total": "-10.00", "total_tax": "-1.30",
        "taxes": [{"id": 1, "total": "-0.95"}, {"id": 2, "total": "-0.35"}]}]})"),
                           usualRates, shipping, errors));
    QCOMPARE(errors, 0);
    QVERIFY(shipping == (ShippingMap {{1, -5.0}, {2, -5.0}}));
}

void tst_order_taxes::zeroRateContributesNothing_data()
{
    QTest::addColumn<QString>("rate");
    QTest::newRow("0") << "0";
    QTest::newRow("0.00") << "0.00";
    QTest::newRow("0.004") << "0.004";
    QTest::newRow("-0.004") << "-0.004";
    QTest::newRow("empty") << "";
    QTest::newRow("no number") << "frei";
}

void tst_order_taxes::zeroRateContributesNothing()
{
    QFETCH(QString, rate);
    ShippingMap shipping;
    int errors = 0;
    QVERIFY(!GetShippingTax(json(R"({"shipping_lines": [{"total": "10.00",
                                     "taxes": [{"id": 3, "total": "1.00"}]}]})"),
                            {{3, {rate, "", ""}}}, shipping, errors));
    QVERIFY(shipping.empty());
    QCOMPARE(errors, 1);
}

void tst_order_taxes::findsTheRateOfALine_data()
{
    QTest::addColumn<QString>("taxes");
    QTest::addColumn<double>("totalTax");
    QTest::addColumn<int>("rateId");
    QTest::addColumn<QString>("rate");
    QTest::newRow("of the order") << R"([{"id": 1}])" << 1.0 << 1 << "19";
    QTest::newRow("of the order, id as text") << R"([{"id": "2"}])" << 1.0 << 2 << "7";
    QTest::newRow("of the shop alone") << R"([{"id": 8}])" << 1.0 << 8 << "20.0000";
    QTest::newRow("unknown, no tax") << R"([{"id": 9}])" << 0.0 << 9 << "0.00";
    QTest::newRow("unknown, tax") << R"([{"id": 9}])" << 1.0 << 9 << "-1";
    QTest::newRow("unknown, negative tax") << R"([{"id": 9}])" << -1.0 << 9 << "-1";
    QTest::newRow("unknown, tax below a cent") << R"([{"id": 9}])" << 0.004 << 9 << "0.00";
    QTest::newRow("without an id") << R"([{"total": "1"}])" << 1.0 << 0 << "-1";
}

void tst_order_taxes::findsTheRateOfALine()
{
    QFETCH(QString, taxes);
    QFETCH(double, totalTax);
    globalTaxRates = {{8, "20.0000"}};
    const QByteArray item = "{\"taxes\": " + taxes.toUtf8() + "}";
    int rateId = -1;
    QString key;
    QVariant value;
    QVERIFY(GetLineItemsTaxes(json(item.constData()), usualRates, totalTax, rateId, key, value));
    QCOMPARE(key, QStringLiteral("tax_rate"));
    QCOMPARE(value.typeId(), int(QMetaType::QString));
    QTEST(rateId, "rateId");
    QTEST(value.toString(), "rate");
}

void tst_order_taxes::ownRateGoesBeforeTheShopsRate()
{
    globalTaxRates = {{1, "16"}};
    int rateId = -1;
    QString key;
    QVariant value;
    QVERIFY(
        GetLineItemsTaxes(json(R"({"taxes": [{"id": 1}]})"), usualRates, 1.0, rateId, key, value));
    QCOMPARE(value.toString(), QStringLiteral("19"));
}

void tst_order_taxes::onlyTheFirstTaxObjectCounts()
{
    int rateId = -1;
    QString key;
    QVariant value;
    QVERIFY(GetLineItemsTaxes(json(R"({"taxes": [{"id": 9}, {"id": 1}]})"), usualRates, 1.0, rateId,
                              key, value));
    QCOMPARE(rateId, 9);
    QCOMPARE(value.toString(), QStringLiteral("-1"));
}

void tst_order_taxes::lineWithoutTaxesLeavesEverythingAlone_data()
{
    QTest::addColumn<QByteArray>("item");
    QTest::newRow("missing") << QByteArray("{}");
    QTest::newRow("empty") << QByteArray(R"({"taxes": []})");
    QTest::newRow("no array") << QByteArray(R"({"taxes": {"id": 1}})");
}

void tst_order_taxes::lineWithoutTaxesLeavesEverythingAlone()
{
    QFETCH(QByteArray, item);
    int rateId = 42;
    QString key = "key";
    QVariant value = 5;
    QVERIFY(!GetLineItemsTaxes(json(item.constData()), usualRates, 1.0, rateId, key, value));
    QCOMPARE(rateId, 42);
    QCOMPARE(key, QStringLiteral("key"));
    QCOMPARE(value, QVariant(5));
}

QTEST_APPLESS_MAIN(tst_order_taxes)
#include "tst_order_taxes.moc"
