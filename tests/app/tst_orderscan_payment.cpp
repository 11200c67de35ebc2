#include "app/orderscan.h"

#include <QJsonDocument>
#include <QtTest>

namespace {

/// An order whose meta data is \a metaData, in JSON.
OrderScan scan(const QByteArray& metaData)
{
    QJsonParseError error;
    const QJsonDocument order = QJsonDocument::fromJson(
        "{\"payment_method\":\"bacs\",\"meta_data\":" + metaData + '}', &error);
    if (error.error != QJsonParseError::NoError)
        qFatal("%s: %s", qPrintable(error.errorString()), metaData.constData());
    return scanOrder(order.object());
}

QByteArray element(const QByteArray& value)
{
    return R"({"key":"_ppcp_paypal_fees","value":)" + value + '}';
}

QByteArray fee(const QByteArray& value)
{
    return element(R"({"paypal_fee":{"currency_code":"EUR","value":)" + value + "}}");
}

} // namespace

class tst_orderscan_payment : public QObject
{
    Q_OBJECT

private slots:
    void thePaymentMethodIsTestedByItsStart_data();
    void thePaymentMethodIsTestedByItsStart();
    void thePaymentTitleIsTestedAnywhere_data();
    void thePaymentTitleIsTestedAnywhere();
    void paymentTextsAreKeptAsSent();
    void theFeeIsRead_data();
    void theFeeIsRead();
    void otherMetaDataHoldNoFee_data();
    void otherMetaDataHoldNoFee();
    void anyFeeMakesAPaypalOrder();
};

void tst_orderscan_payment::thePaymentMethodIsTestedByItsStart_data()
{
    QTest::addColumn<QString>("method");
    QTest::addColumn<bool>("expected");
    QTest::newRow("the gateway") << "ppcp-gateway" << true;
    QTest::newRow("upper case") << "PPCP-Gateway" << true;
    QTest::newRow("one that begins like it") << "ppcp-gateway-later" << true;
    QTest::newRow("not at the start") << "my-ppcp-gateway" << false;
    QTest::newRow("a blank before") << " ppcp-gateway" << false;
    QTest::newRow("cards through PayPal") << "ppcp-credit-card-gateway" << false;
    QTest::newRow("paypal in the method") << "paypal" << false;
    QTest::newRow("another") << "bacs" << false;
    QTest::newRow("none") << "" << false;
}

void tst_orderscan_payment::thePaymentMethodIsTestedByItsStart()
{
    QFETCH(QString, method);
    const OrderScan result = scanOrder({{QStringLiteral("payment_method"), method}});
    QTEST(result.paypal, "expected");
    QTEST(isPaypalOrder(result), "expected");
}

void tst_orderscan_payment::thePaymentTitleIsTestedAnywhere_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<bool>("expected");
    QTest::newRow("alone") << "PayPal" << true;
    QTest::newRow("inside") << QStringLiteral("Kreditkarte (über PayPal)") << true;
    QTest::newRow("upper case") << "PAYPAL" << true;
    QTest::newRow("inside a word") << "mypaypals" << true;
    QTest::newRow("two words") << "Pay Pal" << false;
    QTest::newRow("the gateway's name") << "ppcp-gateway" << false;
    QTest::newRow("another") << "Rechnung" << false;
    QTest::newRow("none") << "" << false;
}

void tst_orderscan_payment::thePaymentTitleIsTestedAnywhere()
{
    QFETCH(QString, title);
    const OrderScan result = scanOrder({{QStringLiteral("payment_method"), QStringLiteral("bacs")},
                                        {QStringLiteral("payment_method_title"), title}});
    QTEST(result.paypal, "expected");
    QTEST(isPaypalOrder(result), "expected");
}

void tst_orderscan_payment::paymentTextsAreKeptAsSent()
{
    const QString method = QStringLiteral(" bacs ");
    const QString title = QStringLiteral(" Vorkasse ");
    const OrderScan result = scanOrder({{QStringLiteral("payment_method"), method},
                                        {QStringLiteral("payment_method_title"), title}});
    QCOMPARE(result.paymentMethod, method);
    QCOMPARE(result.paymentTitle, title);
    QCOMPARE(result.fields.at(0).first, method);
    QCOMPARE(result.fields.at(1).first, title);
}

void tst_orderscan_payment::theFeeIsRead_data()
{
    QTest::addColumn<QByteArray>("metaData");
    QTest::addColumn<double>("expected");
    QTest::addColumn<QString>("text");

    const auto list = [](const QByteArray& a, const QByteArray& b = {}, const QByteArray& c = {}) {
        QByteArrayList parts {a};
        for (const QByteArray& part : {b, c})
            if (!part.isEmpty())
                parts.append(part);
        return '[' + parts.join(',') + ']';
    };
    QTest::newRow("text") << list(fee(R"("1.35")")) << 1.35 << "1.35";
    QTest::newRow("text with a last zero") << list(fee(R"("1.50")")) << 1.5 << "1.5";
    QTest::newRow("number") << list(fee("0.35")) << 0.35 << "0.35";
    QTest::newRow("whole number") << list(fee("2")) << 2.0 << "2";
    QTest::newRow("negative") << list(fee(R"("-0.35")")) << -0.35 << "-0.35";
    QTest::newRow("more than six digits")
        << list(fee(R"("12345.678")")) << 12345.678 << "12345.678";
    QTest::newRow("text that is no number") << list(fee(R"("1,35")")) << 0.0 << "0";
    QTest::newRow("null") << list(fee("null")) << 0.0 << "0";
    QTest::newRow("no value") << list(element(R"({"paypal_fee":{"currency_code":"EUR"}})")) << 0.0
                              << "0";
    QTest::newRow("of several the last") << list(fee("1"), fee("2"), fee("3")) << 3.0 << "3";
    QTest::newRow("a later one without a fee") << list(fee("1"), element("{}")) << 1.0 << "1";
    QTest::newRow("a later one with an empty fee")
        << list(fee("1"), element(R"({"paypal_fee":{}})")) << 1.0 << "1";
    QTest::newRow("among other elements")
        << list(R"({"key":"a","value":"b"})", "7", fee("1")) << 1.0 << "1";
}

void tst_orderscan_payment::theFeeIsRead()
{
    QFETCH(QByteArray, metaData);
    const OrderScan result = scan(metaData);
    QVERIFY(result.paypalFee.isValid());
    QTEST(result.paypalFee.toDouble(), "expected");
    QTEST(result.paypalFee.toString(), "text");
}

void tst_orderscan_payment::otherMetaDataHoldNoFee_data()
{
    QTest::addColumn<QByteArray>("metaData");
    const QByteArray value = R"({"paypal_fee":{"value":"1.35"}})";

    QTest::newRow("empty list") << QByteArray("[]");
    QTest::newRow("no list") << fee("1");
    QTest::newRow("null") << QByteArray("null");
    QTest::newRow("text") << QByteArray(R"("_ppcp_paypal_fees")");
    QTest::newRow("another key") << QByteArray(R"([{"key":"_fees","value":)" + value + "}]");
    QTest::newRow("key in another case")
        << QByteArray(R"([{"key":"_PPCP_paypal_fees","value":)" + value + "}]");
    QTest::newRow("key that begins like it")
        << QByteArray(R"([{"key":"_ppcp_paypal_fees_x","value":)" + value + "}]");
    QTest::newRow("no key") << QByteArray(R"([{"value":)" + value + "}]");
    QTest::newRow("no value") << QByteArray(R"([{"key":"_ppcp_paypal_fees"}])");
    QTest::newRow("value is text") << '[' + element(R"("1.35")") + ']';
    QTest::newRow("value is a list") << '[' + element('[' + value + ']') + ']';
    QTest::newRow("value is a number") << '[' + element("1.35") + ']';
    QTest::newRow("value is null") << '[' + element("null") + ']';
    QTest::newRow("value without a fee") << '[' + element(R"({"gross":{"value":"1"}})") + ']';
    QTest::newRow("empty fee") << '[' + element(R"({"paypal_fee":{}})") + ']';
    QTest::newRow("fee is text") << '[' + element(R"({"paypal_fee":"1.35"})") + ']';
    QTest::newRow("fee is null") << '[' + element(R"({"paypal_fee":null})") + ']';
    QTest::newRow("element is a list") << QByteArray("[[" + fee("1") + "]]");
}

void tst_orderscan_payment::otherMetaDataHoldNoFee()
{
    QFETCH(QByteArray, metaData);
    const OrderScan result = scan(metaData);
    QVERIFY(!result.paypalFee.isValid());
    QVERIFY(!isPaypalOrder(result));
}

void tst_orderscan_payment::anyFeeMakesAPaypalOrder()
{
    const OrderScan withFee = scan('[' + fee(R"("1.35")") + ']');
    QVERIFY(!withFee.paypal);
    QVERIFY(isPaypalOrder(withFee));
    QVERIFY(isPaypalOrder(scan('[' + fee("0") + ']')));
    QVERIFY(!isPaypalOrder(scan("[]")));
}

QTEST_APPLESS_MAIN(tst_orderscan_payment)
#include "tst_orderscan_payment.moc"
