#include "accounting/shopdates.h"
#include "app/csvrow.h"
#include "app/orderscan.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QScopeGuard>
#include <QtTest>

namespace {

QJsonObject parse(const QByteArray& text)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError)
        qFatal("%s: %s", qPrintable(error.errorString()), text.constData());
    return document.object();
}

OrderScan scan(const QByteArray& text)
{
    return scanOrder(parse(text));
}

/// Column names without their quotes.
QStringList columns(const OrderScan& scan)
{
    QStringList names;
    for (const auto& [text, column] : scan.fields)
        names.append(column.mid(1, column.size() - 2));
    return names;
}

/// Text of a column; null if there is no such column.
QString cell(const OrderScan& scan, const char* name)
{
    for (const auto& [text, column] : scan.fields)
        if (column == quoteHeader(QString::fromUtf8(name)))
            return text.isNull() ? QStringLiteral("") : text;
    return {};
}

} // namespace

class tst_orderscan : public QObject
{
    Q_OBJECT

private slots:
    void columnsStandInOrderOfTheirCodeUnits();
    void excludedKeysGiveNoColumn_data();
    void excludedKeysGiveNoColumn();
    void keysThatAreOnlyLikeExcludedOnesStay();
    void directDebitAsAnObjectGivesColumns();
    void lineItemsAndTaxLinesGiveNoColumn_data();
    void lineItemsAndTaxLinesGiveNoColumn();
    void valuesBecomeText_data();
    void valuesBecomeText();
    void anArrayGivesNoColumn();
    void anObjectGivesAColumnForEachSubkey();
    void anEmptyObjectGivesNoColumn();
    void whatIsNestedDeeperGivesAnEmptyText();
    void titlesOfAddressesAreSkipped();
    void titlesOfOtherObjectsStay();
    void theIdIsReadAsANumber_data();
    void theIdIsReadAsANumber();
    void theLogsEmailAndNameAreTrimmed();
    void theShippingAddressGivesTheLogNothing();
    void datesBecomeLocalTime_data();
    void datesBecomeLocalTime();
    void theLogTakesTheDateOfCreation();
    void withoutAGmtFieldADateIsEmpty();
    void aDateWithoutItsOwnKeyGivesNoColumn();
    void otherDatesStayAsSent();
    void datesStayAsSentIfTheyAreNotMeantAsUtc();
    void statusAndTransactionAreTrimmedInTheCopyOnly();
    void refundsAreNoticedIfThereAreAny_data();
    void refundsAreNoticedIfThereAreAny();
    void anEmptyOrderGivesNothing();
};

void tst_orderscan::columnsStandInOrderOfTheirCodeUnits()
{
    const OrderScan result =
        scan(R"({"total":"1","Zeta":"2","currency":"3","_own":"4","currency2":"5","ärger":"6",
                 "billing":{"b":"7","B":"8","a":"9"},"0":"10"})");
    QCOMPARE(columns(result),
             QStringList({QStringLiteral("0"), QStringLiteral("Zeta"), QStringLiteral("_own"),
                          QStringLiteral("billing_B"), QStringLiteral("billing_a"),
                          QStringLiteral("billing_b"), QStringLiteral("currency"),
                          QStringLiteral("currency2"), QStringLiteral("total"),
                          QStringLiteral("ärger")}));
}

void tst_orderscan::excludedKeysGiveNoColumn_data()
{
    QTest::addColumn<QString>("key");
    for (const char* key : {"_links",
                            "cart_hash",
                            "cart_tax",
                            "created_via",
                            "currency_symbol",
                            "customer_ip_address",
                            "customer_note",
                            "customer_user_agent",
                            "direct_debit_bic",
                            "direct_debit_holder",
                            "direct_debit_iban",
                            "direct_debit_mandate_id",
                            "is_editable",
                            "needs_confirmation",
                            "needs_payment",
                            "needs_processing",
                            "payment_url",
                            "parent_id",
                            "prices_include_tax",
                            "date_completed_gmt",
                            "date_created_gmt",
                            "date_modified_gmt",
                            "date_paid_gmt",
                            "version"})
        QTest::newRow(key) << QString::fromLatin1(key);
}

void tst_orderscan::excludedKeysGiveNoColumn()
{
    QFETCH(QString, key);
    const QJsonObject order {
        {QStringLiteral("id"), 1},
        {key, QStringLiteral("2026-01-01T00:00:00")},
    };
    QCOMPARE(columns(scanOrder(order)), QStringList({QStringLiteral("id")}));
    const QJsonObject nested {{key, QJsonObject {{QStringLiteral("a"), 1}}}};
    QVERIFY(scanOrder(nested).fields.isEmpty());
}

void tst_orderscan::keysThatAreOnlyLikeExcludedOnesStay()
{
    const OrderScan result = scan(
        R"({"Version":"1","cart_discount":"2","currency":"3","customer_id":"4","links":"5",
            "date_shipped_gmt":"6","parent":"7"})");
    QCOMPARE(result.fields.size(), 7);
}

void tst_orderscan::directDebitAsAnObjectGivesColumns()
{
    const OrderScan result = scan(R"({"direct_debit":{"holder":"A","iban":"DE1","bic":"B"}})");
    QCOMPARE(columns(result),
             QStringList({QStringLiteral("direct_debit_bic"), QStringLiteral("direct_debit_holder"),
                          QStringLiteral("direct_debit_iban")}));
}

void tst_orderscan::lineItemsAndTaxLinesGiveNoColumn_data()
{
    QTest::addColumn<QByteArray>("order");
    QTest::newRow("lists") << QByteArray(R"({"line_items":[{"id":1}],"tax_lines":[{"id":1}]})");
    QTest::newRow("objects") << QByteArray(R"({"line_items":{"id":1},"tax_lines":{"id":1}})");
    QTest::newRow("texts") << QByteArray(R"({"line_items":"a","tax_lines":"b"})");
    QTest::newRow("null") << QByteArray(R"({"line_items":null,"tax_lines":null})");
}

void tst_orderscan::lineItemsAndTaxLinesGiveNoColumn()
{
    QFETCH(QByteArray, order);
    QVERIFY(scan(order).fields.isEmpty());
}

void tst_orderscan::valuesBecomeText_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("expected");

    QTest::newRow("text") << QByteArray(R"("12.50")") << "12.50";
    QTest::newRow("text with blanks") << QByteArray(R"(" a ")") << " a ";
    QTest::newRow("integer") << QByteArray("7") << "7";
    QTest::newRow("largest integer") << QByteArray("9223372036854775807") << "9223372036854775807";
    QTest::newRow("whole double") << QByteArray("5.0") << "5";
    QTest::newRow("double") << QByteArray("5.10") << "5.1";
    QTest::newRow("exponent of a whole number") << QByteArray("1e3") << "1000";
    QTest::newRow("large double") << QByteArray("1e21") << "1e+21";
    QTest::newRow("small double") << QByteArray("1.1e-7") << "1.1e-07";
    QTest::newRow("negative zero") << QByteArray("-0.0") << "0";
    QTest::newRow("all digits of a double") << QByteArray("6.6386555") << "6.6386555";
    QTest::newRow("true") << QByteArray("true") << "true";
    QTest::newRow("false") << QByteArray("false") << "false";
    QTest::newRow("null") << QByteArray("null") << "";
    QTest::newRow("line ends stay") << QByteArray(R"("a\r\nb;\"c\"")") << "a\r\nb;\"c\"";
}

void tst_orderscan::valuesBecomeText()
{
    QFETCH(QByteArray, value);
    QFETCH(QString, expected);
    const OrderScan plain = scan("{\"x\":" + value + '}');
    QCOMPARE(columns(plain), QStringList({QStringLiteral("x")}));
    QCOMPARE(cell(plain, "x"), expected);
    const OrderScan nested = scan("{\"x\":{\"y\":" + value + "}}");
    QCOMPARE(columns(nested), QStringList({QStringLiteral("x_y")}));
    QCOMPARE(cell(nested, "x_y"), expected);
}

void tst_orderscan::anArrayGivesNoColumn()
{
    QVERIFY(scan(R"({"coupon_lines":[{"id":1}],"fee_lines":[],"meta_data":[{"key":"a"}]})")
                .fields.isEmpty());
}

void tst_orderscan::anObjectGivesAColumnForEachSubkey()
{
    const OrderScan result =
        scan(R"({"shipping":{"city":"Köln","address_1":"Weg 1","country":"DE"}})");
    QCOMPARE(columns(result),
             QStringList({QStringLiteral("shipping_address_1"), QStringLiteral("shipping_city"),
                          QStringLiteral("shipping_country")}));
    QCOMPARE(cell(result, "shipping_city"), QStringLiteral("Köln"));
}

void tst_orderscan::anEmptyObjectGivesNoColumn()
{
    QVERIFY(scan(R"({"direct_debit":{},"billing":{}})").fields.isEmpty());
}

void tst_orderscan::whatIsNestedDeeperGivesAnEmptyText()
{
    const OrderScan result = scan(R"({"x":{"list":[1,2],"object":{"y":1}}})");
    QCOMPARE(columns(result), QStringList({QStringLiteral("x_list"), QStringLiteral("x_object")}));
    QCOMPARE(cell(result, "x_list"), QStringLiteral(""));
    QCOMPARE(cell(result, "x_object"), QStringLiteral(""));
}

void tst_orderscan::titlesOfAddressesAreSkipped()
{
    const OrderScan result = scan(R"({"billing":{"title":"1","title_formatted":"Herr","titles":"a"},
                 "shipping":{"title":"1","title_formatted":"Frau","Title":"b"}})");
    QCOMPARE(columns(result),
             QStringList({QStringLiteral("billing_titles"), QStringLiteral("shipping_Title")}));
}

void tst_orderscan::titlesOfOtherObjectsStay()
{
    const OrderScan result = scan(R"({"pickup":{"title":"a","title_formatted":"b"},
                                      "Billing":{"title":"c"},"title":"d"})");
    QCOMPARE(columns(result),
             QStringList({QStringLiteral("Billing_title"), QStringLiteral("pickup_title"),
                          QStringLiteral("pickup_title_formatted"), QStringLiteral("title")}));
}

void tst_orderscan::theIdIsReadAsANumber_data()
{
    QTest::addColumn<QByteArray>("order");
    QTest::addColumn<int>("expected");
    QTest::newRow("number") << QByteArray(R"({"id":31})") << 31;
    QTest::newRow("text") << QByteArray(R"({"id":"31"})") << 31;
    QTest::newRow("no number") << QByteArray(R"({"id":"A31"})") << 0;
    QTest::newRow("null") << QByteArray(R"({"id":null})") << 0;
    QTest::newRow("missing") << QByteArray(R"({"number":"31"})") << 0;
}

void tst_orderscan::theIdIsReadAsANumber()
{
    QFETCH(QByteArray, order);
    QTEST(scan(order).id, "expected");
}

void tst_orderscan::theLogsEmailAndNameAreTrimmed()
{
    const OrderScan result =
        scan(R"({"billing":{"email":" a@b.example\t","last_name":" Meier ","first_name":"Eva"}})");
    QCOMPARE(result.email, QStringLiteral("a@b.example"));
    QCOMPARE(result.lastName, QStringLiteral("Meier"));
    QCOMPARE(cell(result, "billing_email"), QStringLiteral(" a@b.example\t"));
    QCOMPARE(cell(result, "billing_last_name"), QStringLiteral(" Meier "));
}

void tst_orderscan::theShippingAddressGivesTheLogNothing()
{
    const OrderScan result = scan(R"({"shipping":{"email":"a@b.example","last_name":"Meier"}})");
    QVERIFY(result.email.isEmpty());
    QVERIFY(result.lastName.isEmpty());
}

void tst_orderscan::datesBecomeLocalTime_data()
{
    QTest::addColumn<QString>("key");
    for (const char* key : {"date_completed", "date_created", "date_modified", "date_paid"})
        QTest::newRow(key) << QString::fromLatin1(key);
}

void tst_orderscan::datesBecomeLocalTime()
{
    QFETCH(QString, key);
    const auto textFor = [&](const QJsonValue& gmt) {
        const OrderScan result = scanOrder(
            {{key, QStringLiteral("1999-09-09T09:09:09")}, {key + QLatin1String("_gmt"), gmt}});
        return cell(result, key.toUtf8().constData());
    };
    QCOMPARE(textFor(QStringLiteral("2026-01-05T10:00:00")), QStringLiteral("2026-01-05T11:00:00"));
    QCOMPARE(textFor(QStringLiteral("2026-07-05T10:00:00")), QStringLiteral("2026-07-05T12:00:00"));
    QCOMPARE(textFor(QStringLiteral("2026-12-31T23:30:00")), QStringLiteral("2027-01-01T00:30:00"));
    QCOMPARE(textFor(QJsonValue::Null), QStringLiteral(""));
    QCOMPARE(textFor(QStringLiteral("soon")), QStringLiteral(""));
}

void tst_orderscan::theLogTakesTheDateOfCreation()
{
    const OrderScan result =
        scan(R"({"date_completed":"x","date_completed_gmt":"2026-01-04T10:00:00",
                 "date_created":"x","date_created_gmt":"2026-01-01T10:00:00",
                 "date_modified":"x","date_modified_gmt":"2026-01-02T10:00:00",
                 "date_paid":"x","date_paid_gmt":"2026-01-03T10:00:00"})");
    QCOMPARE(result.dateCreated, QStringLiteral("2026-01-01T11:00:00"));
}

void tst_orderscan::withoutAGmtFieldADateIsEmpty()
{
    const OrderScan result = scan(R"({"date_created":"2026-01-05T11:00:00"})");
    QCOMPARE(columns(result), QStringList({QStringLiteral("date_created")}));
    QCOMPARE(cell(result, "date_created"), QStringLiteral(""));
    QVERIFY(result.dateCreated.isEmpty());
}

void tst_orderscan::aDateWithoutItsOwnKeyGivesNoColumn()
{
    const OrderScan result = scan(R"({"date_created_gmt":"2026-01-05T10:00:00"})");
    QVERIFY(result.fields.isEmpty());
    QVERIFY(result.dateCreated.isEmpty());
}

void tst_orderscan::otherDatesStayAsSent()
{
    const OrderScan result = scan(R"({"date_shipped":"2026-01-05T11:00:00",
                                      "date_shipped_gmt":"2026-01-05T10:00:00"})");
    QCOMPARE(cell(result, "date_shipped"), QStringLiteral("2026-01-05T11:00:00"));
}

void tst_orderscan::datesStayAsSentIfTheyAreNotMeantAsUtc()
{
    const auto restore = qScopeGuard([] { bUseUTC = true; });
    bUseUTC = false;
    const OrderScan result = scan(R"({"date_created":"2026-01-05T09:00:00",
                                      "date_created_gmt":"2026-01-05T08:00:00"})");
    QCOMPARE(cell(result, "date_created"), QStringLiteral("2026-01-05T09:00:00"));
    QCOMPARE(result.dateCreated, QStringLiteral("2026-01-05T09:00:00"));
}

void tst_orderscan::statusAndTransactionAreTrimmedInTheCopyOnly()
{
    const OrderScan result = scan(R"({"status":" refunded ","transaction_id":"\tT1 "})");
    QCOMPARE(result.status, QStringLiteral("refunded"));
    QCOMPARE(result.transactionId, QStringLiteral("T1"));
    QCOMPARE(cell(result, "status"), QStringLiteral(" refunded "));
    QCOMPARE(cell(result, "transaction_id"), QStringLiteral("\tT1 "));
}

void tst_orderscan::refundsAreNoticedIfThereAreAny_data()
{
    QTest::addColumn<QByteArray>("order");
    QTest::addColumn<bool>("expected");
    QTest::newRow("one") << QByteArray(R"({"refunds":[{"id":5}]})") << true;
    QTest::newRow("none") << QByteArray(R"({"refunds":[]})") << false;
    QTest::newRow("missing") << QByteArray(R"({"id":1})") << false;
    QTest::newRow("no list") << QByteArray(R"({"refunds":{"id":5}})") << false;
}

void tst_orderscan::refundsAreNoticedIfThereAreAny()
{
    QFETCH(QByteArray, order);
    QTEST(scan(order).hasRefunds, "expected");
}

void tst_orderscan::anEmptyOrderGivesNothing()
{
    const OrderScan result = scan("{}");
    QVERIFY(result.fields.isEmpty());
    QCOMPARE(result.id, 0);
    QVERIFY(!result.paypal);
    QVERIFY(!result.paypalFee.isValid());
    QVERIFY(!isPaypalOrder(result));
}

QTEST_APPLESS_MAIN(tst_orderscan)
#include "tst_orderscan.moc"
