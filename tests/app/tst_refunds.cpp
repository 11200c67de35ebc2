#include "tests/app/debug_lines.h"
#include "tests/app/export_table.h"
#include "tests/app/run_fixture.h"
#include "tests/app/sample_orders.h"
#include "tests/support/app_test.h"

#include <optional>

namespace {

QString s(const char* text)
{
    return QString::fromUtf8(text);
}

QJsonObject amount(const QJsonValue& value)
{
    return {{s("amount"), value}};
}

/// A line with these amounts.
QJsonObject line(int id, const char* total, const char* tax)
{
    return sample::line(id, {{s("total"), s(total)}, {s("total_tax"), s(tax)}});
}

QJsonObject refundedOrder(int id, const QJsonArray& lines, const QJsonObject& more = {})
{
    return sample::order(id, lines, sample::with({{s("status"), s("refunded")}}, more));
}

/// A shipping line that splits cleanly or, with taxes of an unknown rate, does not.
QJsonObject flaggedShipping()
{
    return {{s("shipping_lines"),
             QJsonArray {QJsonObject {{s("total"), s("-4.90")}, {s("taxes"), QJsonArray()}}}}};
}

} // namespace

/// The rows that refunds add to an export.
class tst_refunds : public QObject
{
    Q_OBJECT

public:
    explicit tst_refunds(const StartFolder& folder)
        : m_folder(folder)
    {
    }

private slots:
    void init();
    void refundsAreAskedForWhereThereMayBeSome_data();
    void refundsAreAskedForWhereThereMayBeSome();
    void aRefundsLinesFollowTheOrdersOwn();
    void aRefundsLinesAreMarked();
    void anEmptyRefundListAddsNoRows();
    void anAnswerThatIsNoListAddsNoRows();
    void aRefundWithFlaggedShippingIsLeftAlone();
    void aPartRefundByAmountCollapsesToOneRow();
    void aFullRefundByAmountMirrorsTheOrder();
    void aRepairedAmountHasSixDigits();
    void linesThatDisagreeGiveTheFirstTheAmount();
    void aRefundOfARefundedOrderWithoutLines();
    void aSecondRefundMayMirrorTheFirst();
    void aRefundWithoutAmountTurnsTheOrdersZeroLine();
    void theNextRefundWithoutAmountLooksOneFurther();
    void aFlaggedRefundDoesNotMoveTheCursor();
    void afterACollapseTheCursorIsPastTheList();
    void onlyTheFirstRefundRowHasAFee_data();
    void onlyTheFirstRefundRowHasAFee();
    void theFeeOfASingleRefundLineReplacesTheOrders();
    void theFirstOfSeveralLinesKeepsTheOrdersFee();
    void aTurnedOrderLineCanCarryTheRefundFee();
    void figuresOfEachRefundAreLogged();
    void aFailedRequestDropsThePage();

private:
    void serveRefunds(int order, const QJsonArray& refunds);
    ExportTable run(const QJsonArray& orders);
    /// "total total_tax is_refund refund_id" of each row.
    static QStringList rows(const ExportTable& table);

    const StartFolder& m_folder;
    std::optional<RunFixture> m_fixture;
};

void tst_refunds::init()
{
    m_fixture.reset();
    m_fixture.emplace(m_folder);
}

void tst_refunds::serveRefunds(int order, const QJsonArray& refunds)
{
    m_fixture->serve(s("/wp-json/wc/v3/orders/%1/refunds").arg(order), sample::json(refunds));
}

ExportTable tst_refunds::run(const QJsonArray& orders)
{
    m_fixture->serveOrders(orders);
    m_fixture->start();
    m_fixture->runToEnd();
    ExportTable table(m_folder.exported());
    if (!table.problem().isEmpty())
        qWarning("%s", qPrintable(table.problem()));
    return table;
}

QStringList tst_refunds::rows(const ExportTable& table)
{
    QStringList texts;
    for (qsizetype row = 0; row < table.rowCount(); ++row) {
        QStringList cells;
        for (const char* column :
             {"line_items_total", "line_items_total_tax", "is_refund", "refund_id"})
            cells.append(table.cell(row, s(column)));
        texts.append(cells.join(QLatin1Char(' ')));
    }
    return texts;
}

void tst_refunds::refundsAreAskedForWhereThereMayBeSome_data()
{
    QTest::addColumn<QJsonObject>("fields");
    QTest::addColumn<bool>("expected");
    const auto status = [](const char* text) { return QJsonObject {{s("status"), s(text)}}; };
    const QJsonObject listed {{s("refunds"), QJsonArray {QJsonObject {{s("id"), 5}}}}};
    QTest::newRow("refunded") << status("refunded") << true;
    QTest::newRow("refunded in another case") << status("ReFunded") << true;
    QTest::newRow("refunded with blanks") << status(" refunded ") << true;
    QTest::newRow("completed with refunds") << sample::with(status("completed"), listed) << true;
    QTest::newRow("refunded with refunds") << sample::with(status("refunded"), listed) << true;
    QTest::newRow("completed") << status("completed") << false;
    QTest::newRow("completed without refunds")
        << sample::with(status("completed"), {{s("refunds"), QJsonArray()}}) << false;
    QTest::newRow("refunded and more") << status("refunded-later") << false;
}

void tst_refunds::refundsAreAskedForWhereThereMayBeSome()
{
    QFETCH(QJsonObject, fields);
    QFETCH(bool, expected);
    run({sample::order(7, {sample::line(11)}, fields)});
    QCOMPARE(m_fixture->targets().filter(s("refunds")),
             expected ? QStringList({s("/wp-json/wc/v3/orders/7/refunds")}) : QStringList());
}

void tst_refunds::aRefundsLinesFollowTheOrdersOwn()
{
    serveRefunds(1,
                 {sample::refund(6, {line(61, "-2.00", "-0.38")}, amount(s("2.38"))),
                  sample::refund(5, {line(51, "-1.00", "-0.19")}, amount(s("1.19")))});
    const ExportTable table =
        run({refundedOrder(1, {line(11, "10.00", "1.90"), line(12, "20.00", "3.80")}),
             sample::order(2, {sample::line(21)})});
    QCOMPARE(table.column(s("line_items_id")),
             QStringList({s("11"), s("12"), s("61"), s("51"), s("21")}));
    QCOMPARE(table.column(s("id")), QStringList({s("1"), s("1"), s("1"), s("1"), s("2")}));
    QCOMPARE(rows(table).mid(2, 2), QStringList({s("-2.00 -0.38 1 6"), s("-1.00 -0.19 1 5")}));
    QCOMPARE(m_fixture->window->iExportCount, 2);
}

void tst_refunds::aRefundsLinesAreMarked()
{
    serveRefunds(1, {sample::refund(5, {line(51, "-10.00", "0.00")}, amount(s("10.00")))});
    const ExportTable table = run({refundedOrder(1, {sample::line(11)})});
    QCOMPARE(table.column(s("is_refund")), QStringList({s("0"), s("1")}));
    QCOMPARE(table.column(s("refund_id")), QStringList({s("-1"), s("5")}));
    QCOMPARE(table.column(s("refund_date")), QStringList({s(""), s("2026-02-01T11:00:00")}));
    QCOMPARE(table.column(s("errors")), QStringList({s(""), s("")}));
}

void tst_refunds::anEmptyRefundListAddsNoRows()
{
    serveRefunds(1, {});
    QCOMPARE(rows(run({refundedOrder(1, {sample::line(11)})})),
             QStringList({s("10.00 0.00 0 -1")}));
    QCOMPARE(m_fixture->answers.titles(), QStringList({s("Beendet:")}));
}

void tst_refunds::anAnswerThatIsNoListAddsNoRows()
{
    m_fixture->serve(s("/wp-json/wc/v3/orders/1/refunds"), R"({"id":5,"amount":"1.00"})");
    QCOMPARE(rows(run({refundedOrder(1, {sample::line(11)})})),
             QStringList({s("10.00 0.00 0 -1")}));
}

void tst_refunds::aRefundWithFlaggedShippingIsLeftAlone()
{
    serveRefunds(1,
                 {sample::refund(5, {line(51, "0.00", "0.00")},
                                 sample::with(amount(s("10.00")), flaggedShipping()))});
    const ExportTable table = run({refundedOrder(1, {sample::line(11)})});
    QCOMPARE(rows(table), QStringList({s("10.00 0.00 0 -1"), s("0.00 0.00 1 5")}));
    QCOMPARE(table.column(s("errors")), QStringList({s(""), s("1")}));
}

void tst_refunds::aPartRefundByAmountCollapsesToOneRow()
{
    serveRefunds(1,
                 {sample::refund(5, {line(51, "0.00", "0.00"), line(52, "0.00", "0.00")},
                                 amount(s("30.00")))});
    const ExportTable table =
        run({refundedOrder(1, {line(11, "20.00", "3.80"), line(12, "10.00", "1.90")})});
    QCOMPARE(rows(table),
             QStringList({s("20.00 3.80 0 -1"), s("10.00 1.90 0 -1"), s("-30 0.00 1 5")}));
    QCOMPARE(table.cell(2, s("line_items_id")), s("51"));
}

void tst_refunds::aFullRefundByAmountMirrorsTheOrder()
{
    serveRefunds(1,
                 {sample::refund(5, {line(51, "0.00", "0.00"), line(52, "0.00", "0.00")},
                                 amount(s("35.70")))});
    QCOMPARE(rows(run({refundedOrder(1, {line(11, "20.00", "3.80"), line(12, "10.00", "1.90")})})),
             QStringList({s("20.00 3.80 0 -1"), s("10.00 1.90 0 -1"), s("-20 -3.8 1 5"),
                          s("-10 -1.9 1 5")}));
}

void tst_refunds::aRepairedAmountHasSixDigits()
{
    serveRefunds(1, {sample::refund(5, {line(51, "-1.00", "0.00")}, amount(s("12345.67")))});
    QCOMPARE(rows(run({refundedOrder(1, {sample::line(11)})})).last(), s("-12345.7 0.00 1 5"));
}

void tst_refunds::linesThatDisagreeGiveTheFirstTheAmount()
{
    serveRefunds(1,
                 {sample::refund(5, {line(51, "-4.00", "-0.76"), line(52, "-5.00", "-0.95")},
                                 amount(s("15.00")))});
    QCOMPARE(rows(run({refundedOrder(1, {sample::line(11)})})).mid(1),
             QStringList({s("-15 0.00 1 5"), s("-5.00 -0.95 1 5")}));
}

void tst_refunds::aRefundOfARefundedOrderWithoutLines()
{
    serveRefunds(1, {sample::refund(5, {}, amount(s("15.00")))});
    QCOMPARE(rows(run({refundedOrder(1, {sample::line(11)})})),
             QStringList({s("10.00 0.00 0 -1")}));
}

void tst_refunds::aSecondRefundMayMirrorTheFirst()
{
    serveRefunds(1,
                 {sample::refund(6, {line(61, "-4.00", "0.00")}, amount(s("4.00"))),
                  sample::refund(5, {line(51, "0.00", "0.00")}, amount(s("4.00")))});
    QCOMPARE(rows(run({refundedOrder(1, {sample::line(11)})})).mid(1),
             QStringList({s("-4.00 0.00 1 6"), s("4 0 1 5")}));
}

void tst_refunds::aRefundWithoutAmountTurnsTheOrdersZeroLine()
{
    serveRefunds(1, {sample::refund(5, {line(51, "-3.00", "0.00")})});
    const ExportTable table = run({refundedOrder(1, {line(11, "0.00", "0.00")})});
    QCOMPARE(rows(table), QStringList({s("0 0 1 11"), s("-3.00 0.00 1 5")}));
    QCOMPARE(table.cell(0, s("refund_date")), s("2026-02-01T11:00:00"));
}

void tst_refunds::theNextRefundWithoutAmountLooksOneFurther()
{
    serveRefunds(1,
                 {sample::refund(6, {line(61, "-3.00", "0.00")}),
                  sample::refund(5, {line(51, "-2.00", "0.00")})});
    QCOMPARE(
        rows(run({refundedOrder(
            1, {line(11, "7.00", "0.00"), line(12, "0.00", "0.00"), line(13, "0.00", "0.00")})})),
        QStringList({s("7.00 0.00 0 -1"), s("0 0 1 12"), s("0.00 0.00 0 -1"), s("-3.00 0.00 1 6"),
                     s("-2.00 0.00 1 5")}));
}

void tst_refunds::aFlaggedRefundDoesNotMoveTheCursor()
{
    serveRefunds(1,
                 {sample::refund(6, {line(61, "-3.00", "0.00")}, flaggedShipping()),
                  sample::refund(5, {line(51, "-2.00", "0.00")})});
    QCOMPARE(rows(run({refundedOrder(1, {line(11, "0.00", "0.00"), line(12, "0.00", "0.00")})})),
             QStringList(
                 {s("0 0 1 11"), s("0.00 0.00 0 -1"), s("-3.00 0.00 1 6"), s("-2.00 0.00 1 5")}));
}

void tst_refunds::afterACollapseTheCursorIsPastTheList()
{
    // The first refund adds two lines and loses one; the second, without an amount, is then looked
    // for at the third line and not at its own.
    serveRefunds(
        1,
        {sample::refund(6, {line(61, "0.00", "0.00"), line(62, "0.00", "0.00")}, amount(s("1.00"))),
         sample::refund(5, {line(51, "0.00", "0.00")})});
    QCOMPARE(rows(run({refundedOrder(1, {line(11, "7.00", "0.00"), line(12, "8.00", "0.00")})})),
             QStringList(
                 {s("7.00 0.00 0 -1"), s("8.00 0.00 0 -1"), s("-1 0.00 1 6"), s("0.00 0.00 1 5")}));
}

void tst_refunds::onlyTheFirstRefundRowHasAFee_data()
{
    QTest::addColumn<QJsonValue>("fee");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("a fee") << QJsonValue("1.50")
                           << QStringList {s("1.5"), s(""), s("-1.15"), s(""), s("")};
    QTest::newRow("below the fixed part")
        << QJsonValue("0.10") << QStringList {s("0.1"), s(""), s("0.25"), s(""), s("")};
    QTest::newRow("no fee at all")
        << QJsonValue("0.00") << QStringList {s("0"), s(""), s(""), s(""), s("")};
    QTest::newRow("six digits") << QJsonValue("12345.67")
                                << QStringList {s("12345.67"), s(""), s("-12345.3"), s(""), s("")};
}

void tst_refunds::onlyTheFirstRefundRowHasAFee()
{
    QFETCH(QJsonValue, fee);
    serveRefunds(1,
                 {sample::refund(6, {line(61, "-2.00", "0.00"), line(62, "-3.00", "0.00")},
                                 amount(s("5.00"))),
                  sample::refund(5, {line(51, "-1.00", "0.00")}, amount(s("1.00")))});
    const ExportTable table =
        run({refundedOrder(1, {sample::line(11), sample::line(12)}, sample::fee(fee)),
             refundedOrder(2, {sample::line(21)})});
    QTEST(table.column(s("paypal_fee")).mid(0, 5), "expected");
    QCOMPARE(table.cell(5, s("paypal_fee")), s(""));
}

void tst_refunds::theFeeOfASingleRefundLineReplacesTheOrders()
{
    serveRefunds(1, {sample::refund(5, {line(51, "-1.00", "0.00")}, amount(s("1.00")))});
    const ExportTable table =
        run({sample::order(9, {sample::line(91)}), refundedOrder(1, {}, sample::fee(s("1.50")))});
    QCOMPARE(table.column(s("paypal_fee")), QStringList({s(""), s("-1.15")}));
}

void tst_refunds::theFirstOfSeveralLinesKeepsTheOrdersFee()
{
    serveRefunds(1,
                 {sample::refund(5, {line(51, "-1.00", "0.00"), line(52, "-2.00", "0.00")},
                                 amount(s("3.00")))});
    const ExportTable table =
        run({sample::order(9, {sample::line(91)}), refundedOrder(1, {}, sample::fee(s("1.50")))});
    QCOMPARE(table.column(s("paypal_fee")), QStringList({s(""), s("1.5"), s("-1.15")}));
}

void tst_refunds::aTurnedOrderLineCanCarryTheRefundFee()
{
    serveRefunds(1,
                 {sample::refund(6, {line(61, "-3.00", "0.00")}),
                  sample::refund(5, {line(51, "-2.00", "0.00")})});
    const ExportTable table = run({refundedOrder(
        1, {line(11, "7.00", "0.00"), line(12, "0.00", "0.00")}, sample::fee(s("1.35")))});
    QCOMPARE(table.column(s("is_refund")), QStringList({s("0"), s("1"), s("1"), s("1")}));
    QCOMPARE(table.column(s("paypal_fee")), QStringList({s("1.35"), s("-1"), s(""), s("")}));
}

void tst_refunds::figuresOfEachRefundAreLogged()
{
    const DebugLines debug;
    serveRefunds(
        1,
        {sample::refund(6, {line(61, "0.00", "0.00"), line(62, "0.00", "0.00")}, amount(s("1.00"))),
         sample::refund(5, {line(51, "-4.00", "0.00")}, amount(s("4.00")))});
    run({sample::order(1, {sample::line(11), sample::line(12)},
                       {{s("refunds"), QJsonArray {QJsonObject {{s("id"), 6}}}}})});
    QCOMPARE(
        debug.with(s("has_refunds:")),
        QStringList({s("has_refunds: true refund_cnt: 2 line_items.size: 4 refund_lines: 2"),
                     s("has_refunds: true refund_cnt: 2 line_items.size: 4 refund_lines: 1")}));
    // The list before its repair, and its size after the collapse.
    QCOMPARE(debug.with(s("\"total\", QVariant(QString, \"10.00\")")).size(), 1);
    QCOMPARE(debug.all().count(s("line_items.size: 3")), 1);
}

void tst_refunds::aFailedRequestDropsThePage()
{
    m_fixture->serve(s("/wp-json/wc/v3/orders/2/refunds"), "[]", 500);
    m_fixture->serveOrders(
        {sample::order(1, {sample::line(11)}), refundedOrder(2, {sample::line(21)})});
    MainWindow& window = m_fixture->start();
    m_fixture->runOnePass();
    QCOMPARE(m_folder.exported(), QByteArray(""));
    QCOMPARE(window.iExportCount, 0);
    QCOMPARE(window.iPageRetries, 1);
    QVERIFY(window.csErrorText.contains(s("/wp-json/wc/v3/orders/2/refunds")));
}

LEDORA_APP_TEST_MAIN(tst_refunds)
#include "tst_refunds.moc"
