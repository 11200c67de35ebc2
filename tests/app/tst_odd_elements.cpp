#include "tests/app/export_table.h"
#include "tests/app/run_fixture.h"
#include "tests/app/sample_orders.h"
#include "tests/support/app_test.h"

#include <QRegularExpression>

namespace {

QString s(const char* text)
{
    return QString::fromUtf8(text);
}

QJsonObject line(int id, const char* total)
{
    return sample::line(id, {{s("total"), s(total)}});
}

} // namespace

/// Elements of lists that are not what their list is made of.
class tst_odd_elements : public QObject
{
    Q_OBJECT

public:
    explicit tst_odd_elements(const StartFolder& startFolder)
        : folder(startFolder)
    {
    }

private slots:
    void init();
    void cleanup();
    void oddOrderFieldsLeaveTheOtherOrdersAlone_data();
    void oddOrderFieldsLeaveTheOtherOrdersAlone();
    void aNullAmongOrdersLeavesTheOthersAlone();
    void aNullAmongRefundsLeavesTheOthersAlone();
    void aNullAmongInvoicesLeavesTheOthersAlone();
    void invoicesThatAreAnObjectAreNone();
    void aCollapsedRefundStillMovesTheCursorByAllItsLines();
    void aPassClearsTheTransactionMode();

private:
    MainWindow& window() const { return *fixture->window; }

    ExportTable run(const QJsonArray& orders, const QMap<QString, QVariant>& options = {});
    /// "id total is_refund refund_id" of each row.
    static QStringList rows(const ExportTable& table);

    const StartFolder& folder;
    std::unique_ptr<RunFixture> fixture;
};

void tst_odd_elements::init()
{
    fixture = std::make_unique<RunFixture>(folder);
}

void tst_odd_elements::cleanup()
{
    fixture.reset();
}

ExportTable tst_odd_elements::run(const QJsonArray& orders, const QMap<QString, QVariant>& options)
{
    fixture->serveOrders(orders);
    fixture->start(options);
    fixture->runToEnd();
    return ExportTable(folder.exported());
}

QStringList tst_odd_elements::rows(const ExportTable& table)
{
    QStringList texts;
    for (qsizetype row = 0; row < table.rowCount(); ++row) {
        QStringList cells;
        for (const char* column : {"id", "line_items_total", "is_refund", "refund_id"})
            cells.append(table.cell(row, s(column)));
        texts.append(cells.join(QLatin1Char(' ')));
    }
    return texts;
}

void tst_odd_elements::oddOrderFieldsLeaveTheOtherOrdersAlone_data()
{
    QTest::addColumn<QJsonObject>("odd");
    QTest::newRow("lines") << QJsonObject {{s("line_items"), QJsonArray {QJsonValue(), 7, s("x")}}};
    QTest::newRow("shipping") << QJsonObject {{s("shipping_lines"), QJsonArray {QJsonValue()}}};
}

void tst_odd_elements::oddOrderFieldsLeaveTheOtherOrdersAlone()
{
    QFETCH(QJsonObject, odd);
    const ExportTable table =
        run({sample::order(1, {line(11, "1.00")}), sample::order(2, {line(21, "2.00")}, odd),
             sample::order(3, {line(31, "3.00")})});
    QCOMPARE(table.problem(), QString());
    QVERIFY(!window().bError);
    QCOMPARE(window().iExportCount, 3);
    const QStringList all = rows(table);
    QCOMPARE(all.first(), s("1 1.00 0 -1"));
    QCOMPARE(all.last(), s("3 3.00 0 -1"));
    QCOMPARE(all.filter(QRegularExpression(s("^2 2.00 0 -1$"))).size(),
             odd.contains(s("line_items")) ? 0 : 1);
}

void tst_odd_elements::aNullAmongOrdersLeavesTheOthersAlone()
{
    const ExportTable table = run(
        {sample::order(1, {line(11, "1.00")}), QJsonValue(), sample::order(3, {line(31, "3.00")})});
    QCOMPARE(table.problem(), QString());
    QVERIFY(!window().bError);
    QCOMPARE(rows(table), QStringList({s("1 1.00 0 -1"), s("3 3.00 0 -1")}));
}

void tst_odd_elements::aNullAmongRefundsLeavesTheOthersAlone()
{
    const QJsonObject refund = sample::refund(5, {line(51, "-2.00")}, {{s("amount"), s("2.00")}});
    fixture->serve(s("/wp-json/wc/v3/orders/1/refunds"),
                   sample::json(QJsonArray {QJsonValue(), refund}));
    const ExportTable table =
        run({sample::order(1, {line(11, "7.00")}, {{s("status"), s("refunded")}})});
    QVERIFY(!window().bError);
    QCOMPARE(rows(table), QStringList({s("1 7.00 0 -1"), s("1 -2.00 1 5")}));
}

void tst_odd_elements::aNullAmongInvoicesLeavesTheOthersAlone()
{
    const QJsonObject invoice {{s("formatted_number"), s("RE-1")}};
    fixture->serve(s("/wp-json/wc/v3/orders/1/invoices"),
                   sample::json(QJsonArray {QJsonValue(), invoice}));
    const ExportTable table =
        run({sample::order(1, {line(11, "7.00")})}, {{s("germanized_use"), true}});
    QVERIFY(!window().bError);
    QCOMPARE(table.column(s("gm_formatted_number")), QStringList {s("RE-1")});
}

void tst_odd_elements::invoicesThatAreAnObjectAreNone()
{
    fixture->serve(s("/wp-json/wc/v3/orders/1/invoices"), R"({"formatted_number":"RE-1"})");
    const ExportTable table =
        run({sample::order(1, {line(11, "7.00")})}, {{s("germanized_use"), true}});
    QVERIFY(!window().bError);
    QCOMPARE(rows(table), QStringList {s("1 7.00 0 -1")});
    QCOMPARE(table.cell(0, s("gm_formatted_number")), QString());
    QCOMPARE(table.cell(0, s("gm_invoice_filename")), QString());
}

void tst_odd_elements::aCollapsedRefundStillMovesTheCursorByAllItsLines()
{
    const QJsonObject byAmount =
        sample::refund(6, {line(61, "0.00"), line(62, "0.00")}, {{s("amount"), s("1.00")}});
    fixture->serve(s("/wp-json/wc/v3/orders/1/refunds"),
                   sample::json(QJsonArray {byAmount, sample::refund(5, {line(51, "-2.00")})}));
    const ExportTable table = run(
        {sample::order(1, {line(11, "0.00"), line(12, "0.00")}, {{s("status"), s("refunded")}})});
    QCOMPARE(rows(table),
             QStringList({s("1 0.00 0 -1"), s("1 0.00 0 -1"), s("1 -1 1 6"), s("1 -2.00 1 5")}));
}

void tst_odd_elements::aPassClearsTheTransactionMode()
{
    fixture->serveOrders({sample::order(1, {line(11, "1.00")})});
    fixture->start();
    window().bTxIdOnly = true;
    fixture->runOnePass();
    QCOMPARE(window().bTxIdOnly, QVariant(false));
    QCOMPARE(folder.exportedLines().size(), 2 + 1);
}

LEDORA_APP_TEST_MAIN(tst_odd_elements)

#include "tst_odd_elements.moc"
