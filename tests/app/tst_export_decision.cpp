#include "app/globals.h"
#include "tests/app/export_table.h"
#include "tests/app/run_fixture.h"
#include "tests/app/sample_orders.h"
#include "tests/support/app_test.h"

#include <QPlainTextEdit>
#include <QTextCursor>

#include <optional>

namespace {

QString s(const char* text)
{
    return QString::fromUtf8(text);
}

} // namespace

/// Which orders reach the export, and what the log says of them.
class tst_export_decision : public QObject
{
    Q_OBJECT

public:
    explicit tst_export_decision(const StartFolder& folder)
        : m_folder(folder)
    {
    }

private slots:
    void init();
    void thePaymentDecides_data();
    void thePaymentDecides();
    void aSkippedOrderLeavesNothing();
    void everyOrderHasALogLine_data();
    void everyOrderHasALogLine();
    void theCounterOfTheLogCountsExportedOrders();
    void logLinesAreAppendedWhereverTheCursorStands();
    void theLogIsUpToDateWheneverARequestIsOpen();
    void theTransactionModeIsSwitchedOffByEachPage();
    void paymentTitlesOfAllOrdersAreCollected();
    void theFeeStandsInTheFirstLineOfAnOrder();
    void aFeeOfZeroIsWritten();

private:
    ExportTable run(const QJsonArray& orders, const QMap<QString, QVariant>& options = {});
    QStringList log() const;

    const StartFolder& m_folder;
    std::optional<RunFixture> m_fixture;
};

void tst_export_decision::init()
{
    m_fixture.reset();
    m_fixture.emplace(m_folder);
}

ExportTable tst_export_decision::run(const QJsonArray& orders,
                                     const QMap<QString, QVariant>& options)
{
    m_fixture->serveOrders(orders);
    m_fixture->start(options);
    m_fixture->runToEnd();
    return ExportTable(m_folder.exported());
}

QStringList tst_export_decision::log() const
{
    return m_fixture->window->logEdit->toPlainText().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void tst_export_decision::thePaymentDecides_data()
{
    QTest::addColumn<QJsonObject>("payment");
    QTest::addColumn<bool>("isPaypal");

    const auto paid = [](const char* method, const char* title) {
        return QJsonObject {{s("payment_method"), s(method)},
                            {s("payment_method_title"), s(title)}};
    };
    QTest::newRow("another payment") << paid("bacs", "Vorkasse") << false;
    QTest::newRow("by method") << paid("ppcp-gateway", "Konto") << true;
    QTest::newRow("by title") << paid("card", "Karte (über PayPal)") << true;
    QTest::newRow("by fee") << sample::with(paid("card", "Karte"), sample::fee(s("1.35"))) << true;
    QTest::newRow("by a fee of zero")
        << sample::with(paid("card", "Karte"), sample::fee(0)) << true;
    QTest::newRow("fee without value")
        << sample::with(paid("card", "Karte"), sample::fee(QJsonValue::Null)) << true;
    QTest::newRow("gateway in the middle") << paid("x-ppcp-gateway", "Karte") << false;
}

void tst_export_decision::thePaymentDecides()
{
    QFETCH(QJsonObject, payment);
    QFETCH(bool, isPaypal);
    for (const bool paypalUse : {false, true}) {
        for (const bool woocommerceUse : {false, true}) {
            const ExportTable table =
                run({sample::order(1, {sample::line(11)}, payment)},
                    {{s("paypal_use"), paypalUse}, {s("woocommerce_use"), woocommerceUse}});
            const bool isExported = isPaypal ? paypalUse : woocommerceUse;
            QCOMPARE(table.rowCount(), isExported ? 1 : 0);
            QCOMPARE(m_fixture->window->iExportCount, isExported ? 1 : 0);
            QCOMPARE(log().size(), isExported ? 1 : 0);
            QVERIFY(table.headers().contains(s("payment_method")));
        }
    }
}

void tst_export_decision::aSkippedOrderLeavesNothing()
{
    const ExportTable table = run(
        {sample::order(1, {sample::productLine(11, 5)},
                       {{s("status"), s("refunded")}, {s("payment_method"), s("ppcp-gateway")}}),
         sample::order(2, {sample::line(21)})},
        {{s("paypal_use"), false}});
    QCOMPARE(table.column(s("id")), QStringList({s("2")}));
    QCOMPARE(log().size(), 1);
    QVERIFY(log().first().startsWith(s("Zähler: 1, ID: 2,")));
    QCOMPARE(m_fixture->window->iExportCount, 1);
    QVERIFY(m_fixture->paths().filter(s("/products/")).isEmpty());
    QVERIFY(m_fixture->paths().filter(s("/refunds")).isEmpty());
}

void tst_export_decision::everyOrderHasALogLine_data()
{
    QTest::addColumn<QJsonObject>("fields");
    QTest::addColumn<QString>("expected");

    const auto billing = [](const char* email, const char* name) {
        return QJsonObject {
            {s("billing"), QJsonObject {{s("email"), s(email)}, {s("last_name"), s(name)}}}};
    };
    QTest::newRow("plain") << QJsonObject()
                           << "Zähler: 1, ID: 1, Datum: 05.01.2026:09:15:00, Email: "
                              "eva@kunde.example, Name: Meier, Type: Vorkasse (bacs), Status: "
                              "completed";
    QTest::newRow("percent marks")
        << sample::with(billing("a%1b%2Fc@d.example", "%3 %8 100%"),
                        {{s("payment_method_title"), s("%1 %2F")}, {s("payment_method"), s("%4")}})
        << "Zähler: 1, ID: 1, Datum: 05.01.2026:09:15:00, Email: "
           "a%1b%2Fc@d.example, Name: %3 %8 100%, Type: %1 %2F (%4), "
           "Status: completed";
    QTest::newRow("blanks around")
        << sample::with(billing(" a@b.example ", "\tMeier "), {{s("status"), s(" completed ")}})
        << "Zähler: 1, ID: 1, Datum: 05.01.2026:09:15:00, Email: "
           "a@b.example, Name: Meier, Type: Vorkasse (bacs), Status: "
           "completed";
    QTest::newRow("markup") << billing("a@b.example", "<b>&amp;</b>")
                            << "Zähler: 1, ID: 1, Datum: 05.01.2026:09:15:00, Email: a@b.example, "
                               "Name: <b>&amp;</b>, Type: Vorkasse (bacs), Status: completed";
    QTest::newRow("date that is none")
        << QJsonObject {{s("date_created_gmt"), s("gestern")}}
        << "Zähler: 1, ID: 1, Datum: , Email: eva@kunde.example, Name: Meier, Type: Vorkasse "
           "(bacs), Status: completed";
    QTest::newRow("summer time")
        << QJsonObject {{s("date_created_gmt"), s("2026-07-01T22:30:05")}}
        << "Zähler: 1, ID: 1, Datum: 02.07.2026:00:30:05, Email: eva@kunde.example, Name: Meier, "
           "Type: Vorkasse (bacs), Status: completed";
    QTest::newRow("nothing known")
        << QJsonObject {{s("billing"), QJsonValue::Null},
                        {s("date_created"), QJsonValue::Null},
                        {s("date_created_gmt"), QJsonValue::Null},
                        {s("payment_method"), s("")},
                        {s("payment_method_title"), s("")},
                        {s("status"), QJsonValue::Null}}
        << "Zähler: 1, ID: 1, Datum: , Email: , Name: , Type:  (), Status: ";
}

void tst_export_decision::everyOrderHasALogLine()
{
    QFETCH(QJsonObject, fields);
    QFETCH(QString, expected);
    run({sample::order(1, {sample::line(11)}, fields)});
    QCOMPARE(m_fixture->window->logEdit->toPlainText(), expected);
}

void tst_export_decision::theCounterOfTheLogCountsExportedOrders()
{
    run({sample::order(8, {sample::line(11)}, {{s("payment_method"), s("ppcp-gateway")}}),
         sample::order(9, {sample::line(21)}), sample::order(10, {})},
        {{s("paypal_use"), false}});
    QCOMPARE(log().size(), 2);
    QVERIFY(log().at(0).startsWith(s("Zähler: 1, ID: 9,")));
    QVERIFY(log().at(1).startsWith(s("Zähler: 2, ID: 10,")));
}

void tst_export_decision::logLinesAreAppendedWhereverTheCursorStands()
{
    m_fixture->serveOrders({sample::order(1, {sample::line(11)})});
    m_fixture->start();
    m_fixture->window->logEdit->setPlainText(s("one\ntwo"));
    m_fixture->window->logEdit->moveCursor(QTextCursor::Start);
    m_fixture->runToEnd();
    QCOMPARE(log().size(), 3);
    QCOMPARE(log().mid(0, 2), QStringList({s("one"), s("two")}));
    QVERIFY(log().last().startsWith(s("Zähler: 1, ID: 1,")));
    QVERIFY(m_fixture->window->logEdit->textCursor().position() > 3);
}

void tst_export_decision::theLogIsUpToDateWheneverARequestIsOpen()
{
    QStringList linesSeen;
    m_fixture->shop.setFaultPlan([&](const demo_shop::ShopRequest& request) {
        if (request.path.contains(s("/products/")))
            linesSeen.append(QString::number(log().size()));
        return demo_shop::Fault();
    });
    run({sample::order(1, {sample::productLine(11, 5)}), sample::order(2, {sample::line(21)}),
         sample::order(3, {sample::productLine(31, 6)}),
         sample::order(4, {sample::productLine(41, 7)})});
    QCOMPARE(linesSeen, QStringList({s("0"), s("2"), s("3")}));
}

void tst_export_decision::theTransactionModeIsSwitchedOffByEachPage()
{
    m_fixture->serveOrders({sample::order(1, {sample::line(11)})});
    m_fixture->start();
    m_fixture->window->bTxIdOnly = true;
    m_fixture->runToEnd();
    QCOMPARE(m_fixture->window->bTxIdOnly, QVariant(false));
    QCOMPARE(m_fixture->window->iExportCount, 1);
}

void tst_export_decision::paymentTitlesOfAllOrdersAreCollected()
{
    const auto paidBy = [](int id, const char* title) {
        return sample::order(id, {}, {{s("payment_method_title"), s(title)}});
    };
    run({paidBy(1, "Vorkasse"), paidBy(2, " PayPal "), paidBy(3, "Vorkasse"), paidBy(4, "")},
        {{s("paypal_use"), false}, {s("woocommerce_use"), false}});
    QCOMPARE(payment_title_set, QSet<QString>({s("Vorkasse"), s(" PayPal "), s("")}));
}

void tst_export_decision::theFeeStandsInTheFirstLineOfAnOrder()
{
    const ExportTable table = run({
        sample::order(1, {sample::line(11), sample::line(12), sample::line(13)},
                      sample::fee(s("1.50"))),
        sample::order(2, {sample::line(21), sample::line(22)}),
        sample::order(3, {sample::line(31), sample::line(32)}, sample::fee(s("0.35"))),
    });
    QCOMPARE(table.column(s("paypal_fee")),
             QStringList({s("1.5"), s(""), s(""), s(""), s(""), s("0.35"), s("")}));
}

void tst_export_decision::aFeeOfZeroIsWritten()
{
    const ExportTable table = run({sample::order(1, {sample::line(11)}, sample::fee(s("0.00")))});
    QCOMPARE(table.cell(0, s("paypal_fee")), s("0"));
}

LEDORA_APP_TEST_MAIN(tst_export_decision)
#include "tst_export_decision.moc"
