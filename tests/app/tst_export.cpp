#include "app/globals.h"
#include "tests/app/debug_lines.h"
#include "tests/app/export_table.h"
#include "tests/app/run_fixture.h"
#include "tests/app/sample_orders.h"
#include "tests/support/app_test.h"

#include <QPlainTextEdit>

#include <optional>

namespace {

QString s(const char* text)
{
    return QString::fromUtf8(text);
}

QStringList columnsOfLineAndTail(bool germanized)
{
    QStringList columns {s("line_items_id"),          s("line_items_shipping_part"),
                         s("line_items_tax_rate"),    s("line_items_total"),
                         s("line_items_total_tax"),   s("line_items_virtual"),
                         s("line_items_downloadable")};
    if (germanized)
        columns << s("gm_number") << s("gm_order_number") << s("gm_formatted_number")
                << s("gm_invoice_filename") << s("gm_invoice_date_created");
    return columns << s("paypal_fee") << s("is_refund") << s("refund_id") << s("refund_date")
                   << s("refund_flags") << s("errors");
}

} // namespace

/// The format of the export, from the first order's columns to the cells of a row.
class tst_export : public QObject
{
    Q_OBJECT

public:
    explicit tst_export(const StartFolder& folder)
        : m_folder(folder)
    {
    }

private slots:
    void init();
    void theFirstLineIsTheOptionString();
    void theSecondLineHoldsAllColumnsInTheirOrder_data();
    void theSecondLineHoldsAllColumnsInTheirOrder();
    void bothHeaderLinesStandOnceInARunOfSeveralPages();
    void bytesAreUtf8WithoutMarkAndWithLineFeeds();
    void anOrderWithoutLinesGivesNoRowButIsCountedAndLogged();
    void aFirstOrderWithoutLinesDropsAllLineFieldsOfTheRun();
    void aSkippedFirstOrderStillSetsTheColumns();
    void fieldsThatTheFirstOrderLacksAreDropped();
    void fieldsThatALaterOrderLacksAreEmpty();
    void aListInTheFirstOrderHasNoColumnInTheWholeRun();
    void anObjectThatIsEmptyInTheFirstOrderHasNoColumns();
    void lineColumnsComeFromTheFirstLineAlone();
    void ofEqualColumnNamesTheFirstIsFilled();
    void cellsAreQuotedOnlyWhereNeeded();
    void linesOfAnOrderShareItsCells();
    void valuesAreWrittenAsTheyCome();
    void ordinaryLinesAreNoRefunds();
    void shippingErrorsStandInEveryLine();
    void shippingOfARateWithoutALineReachesNoRow();
    void refundFlagsAreAColumnThatStaysEmpty();
    void theColumnsOfARunAreForgottenByTheNext();

private:
    /// Runs over \a orders to the end and reads the export.
    ExportTable run(const QJsonArray& orders, const QMap<QString, QVariant>& options = {});

    const StartFolder& m_folder;
    std::optional<RunFixture> m_fixture;
};

void tst_export::init()
{
    m_fixture.reset();
    m_fixture.emplace(m_folder);
}

ExportTable tst_export::run(const QJsonArray& orders, const QMap<QString, QVariant>& options)
{
    m_fixture->serveOrders(orders);
    m_fixture->start(options);
    m_fixture->runToEnd();
    ExportTable table(m_folder.exported());
    if (!table.problem().isEmpty())
        qWarning("%s", qPrintable(table.problem()));
    return table;
}

void tst_export::theFirstLineIsTheOptionString()
{
    run({sample::order(1, {sample::line(11)})}, {{s("def_payment_method_s"), s("a;\"b\"\nc")}});
    const QByteArray first = m_folder.exportedLines().value(0);
    QCOMPARE(QString::fromUtf8(first), m_fixture->window->BuildOptionsString());
    QVERIFY(first.startsWith("export_version|1|"));
    QVERIFY(first.contains("|def_payment_method_s|a;\"b\"~c|"));
}

void tst_export::theSecondLineHoldsAllColumnsInTheirOrder_data()
{
    QTest::addColumn<bool>("germanized");
    QTest::newRow("without invoices") << false;
    QTest::newRow("with invoices") << true;
}

void tst_export::theSecondLineHoldsAllColumnsInTheirOrder()
{
    QFETCH(bool, germanized);
    const QJsonObject order = sample::order(1, {sample::line(11)}, {{s("Zusatz"), 1}});
    run({order}, {{s("germanized_use"), germanized}});
    const QStringList columns =
        QStringList {s("Zusatz"), s("billing_email"),  s("billing_last_name"),    s("date_created"),
                     s("id"),     s("payment_method"), s("payment_method_title"), s("status")}
        + columnsOfLineAndTail(germanized);
    QCOMPARE(QString::fromUtf8(m_folder.exportedLines().value(1)),
             QLatin1Char('"') + columns.join(s("\";\"")) + QLatin1Char('"'));
}

void tst_export::bothHeaderLinesStandOnceInARunOfSeveralPages()
{
    QJsonArray orders;
    for (int id = 1; id <= 101; ++id)
        orders.append(sample::order(id, {sample::line(1000 + id)}));
    const ExportTable table = run(orders);
    QCOMPARE(table.rowCount(), 101);
    QCOMPARE(m_folder.exported().count("export_version|"), 1);
    QCOMPARE(m_folder.exported().count("\"billing_email\""), 1);
    QCOMPARE(m_fixture->window->iExportCount, 101);
}

void tst_export::bytesAreUtf8WithoutMarkAndWithLineFeeds()
{
    run({sample::order(1, {sample::line(11)}, {{s("currency"), s("€ÄÖÜß")}})});
    const QByteArray bytes = m_folder.exported();
    QVERIFY(bytes.startsWith("export_version"));
    QVERIFY(bytes.contains("\xE2\x82\xAC\xC3\x84\xC3\x96\xC3\x9C\xC3\x9F"));
    QVERIFY(!bytes.contains('\r'));
    QVERIFY(bytes.endsWith('\n'));
    QCOMPARE(bytes.count('\n'), 3);
}

void tst_export::anOrderWithoutLinesGivesNoRowButIsCountedAndLogged()
{
    const ExportTable table = run({sample::order(1, {sample::line(11)}), sample::order(2, {})});
    QCOMPARE(table.column(s("id")), QStringList({s("1")}));
    QCOMPARE(m_fixture->window->iExportCount, 2);
    QVERIFY(m_fixture->window->logEdit->toPlainText().contains(s("Zähler: 2, ID: 2,")));
}

void tst_export::aFirstOrderWithoutLinesDropsAllLineFieldsOfTheRun()
{
    const DebugLines debug;
    const ExportTable table =
        run({sample::order(1, {}), sample::order(2, {sample::productLine(21, 5)})});
    QCOMPARE(table.headers().filter(s("line_items_")),
             QStringList({s("line_items_virtual"), s("line_items_downloadable")}));
    QCOMPARE(table.column(s("id")), QStringList({s("2")}));
    QCOMPARE(table.cell(0, s("line_items_virtual")), s("0"));
    for (const char* field :
         {"id", "product_id", "shipping_part", "tax_rate", "total", "total_tax"})
        QCOMPARE(debug.with(s("field not found: \"\\\"line_items_%1\\\"\"").arg(s(field))).size(),
                 1);
}

void tst_export::aSkippedFirstOrderStillSetsTheColumns()
{
    const ExportTable table =
        run({sample::order(1, {sample::line(11, {{s("first_only"), 1}})},
                           {{s("payment_method"), s("ppcp-gateway")}, {s("own"), 1}}),
             sample::order(2, {sample::line(21, {{s("second_only"), 1}})}, {{s("other"), 1}})},
            {{s("paypal_use"), false}});
    QVERIFY(table.headers().contains(s("own")));
    QVERIFY(table.headers().contains(s("line_items_first_only")));
    QVERIFY(!table.headers().contains(s("other")));
    QVERIFY(!table.headers().contains(s("line_items_second_only")));
    QCOMPARE(table.column(s("id")), QStringList({s("2")}));
}

void tst_export::fieldsThatTheFirstOrderLacksAreDropped()
{
    const DebugLines debug;
    const ExportTable table =
        run({sample::order(1, {sample::line(11)}),
             sample::order(2, {sample::line(21)}, {{s("later"), s("lost")}})});
    QVERIFY(!table.headers().contains(s("later")));
    QVERIFY(!m_folder.exported().contains("lost"));
    QCOMPARE(table.row(0).size(), table.row(1).size());
    QCOMPARE(debug.with(s("field not found:")),
             QStringList({s("field not found: \"\\\"later\\\"\"")}));
}

void tst_export::fieldsThatALaterOrderLacksAreEmpty()
{
    const ExportTable table = run(
        {sample::order(1, {sample::line(11, {{s("note"), s("c")}})}, {{s("currency"), s("EUR")}}),
         sample::order(2, {sample::line(21)})});
    QCOMPARE(table.column(s("currency")), QStringList({s("EUR"), s("")}));
    QCOMPARE(table.column(s("line_items_note")), QStringList({s("c"), s("")}));
}

void tst_export::aListInTheFirstOrderHasNoColumnInTheWholeRun()
{
    const ExportTable table =
        run({sample::order(1, {sample::line(11)}, {{s("extra"), QJsonArray()}}),
             sample::order(2, {sample::line(21)}, {{s("extra"), s("text")}})});
    QVERIFY(!table.headers().contains(s("extra")));
    QCOMPARE(table.rowCount(), 2);
}

void tst_export::anObjectThatIsEmptyInTheFirstOrderHasNoColumns()
{
    const ExportTable table =
        run({sample::order(1, {sample::line(11)}, {{s("extra"), QJsonObject()}}),
             sample::order(2, {sample::line(21)}, {{s("extra"), QJsonObject {{s("a"), 1}}}})});
    QVERIFY(table.headers().filter(s("extra")).isEmpty());
}

void tst_export::lineColumnsComeFromTheFirstLineAlone()
{
    const ExportTable table = run({sample::order(
        1,
        {sample::line(11, {{s("Name"), s("a")}, {s("image"), QJsonObject()}, {s("sku"), s("s")}}),
         sample::line(12, {{s("color"), s("red")}})})});
    QCOMPARE(
        table.headers().filter(s("line_items_")),
        QStringList({s("line_items_Name"), s("line_items_id"), s("line_items_shipping_part"),
                     s("line_items_tax_rate"), s("line_items_total"), s("line_items_total_tax"),
                     s("line_items_virtual"), s("line_items_downloadable")}));
    QCOMPARE(table.column(s("line_items_Name")), QStringList({s("a"), s("")}));
}

void tst_export::ofEqualColumnNamesTheFirstIsFilled()
{
    run({sample::order(1, {sample::line(11)}, {{s("line_items_total"), s("own")}})});
    const QList<QByteArray> lines = m_folder.exportedLines();
    QCOMPARE(lines.value(1).count("\"line_items_total\""), 2);
    const QStringList names = QString::fromUtf8(lines.value(1)).split(QLatin1Char(';'));
    const QStringList cells = QString::fromUtf8(lines.value(2)).split(QLatin1Char(';'));
    const qsizetype first = names.indexOf(s("\"line_items_total\""));
    QCOMPARE(cells.value(first), s("10.00"));
    QCOMPARE(cells.value(names.indexOf(s("\"line_items_total\""), first + 1)), s(""));
}

void tst_export::cellsAreQuotedOnlyWhereNeeded()
{
    const ExportTable table = run({sample::order(1, {sample::line(11)},
                                                 {{s("a"), s("a;b")},
                                                  {s("b"), s("say \"hi\"")},
                                                  {s("c"), s("plain, text")},
                                                  {s("d"), s("one\r\ntwo")},
                                                  {s("e"), s("-1.50")}})});
    QVERIFY2(m_folder.exported().contains(
                 "\n\"a;b\";\"say \"\"hi\"\"\";eva@kunde.example;Meier;plain, text;\"one\r\n"
                 "two\";2026-01-05T09:15:00;-1.50;1;bacs;Vorkasse;completed;11;;0.00;10.00;0.00;"),
             m_folder.exported().constData());
    QCOMPARE(table.cell(0, s("d")), s("one\r\ntwo"));
}

void tst_export::linesOfAnOrderShareItsCells()
{
    const ExportTable table =
        run({sample::order(1, {sample::line(11), sample::line(12)}, {{s("currency"), s("EUR")}}),
             sample::order(2, {sample::line(21)}, {{s("currency"), s("CHF")}})});
    QCOMPARE(table.column(s("currency")), QStringList({s("EUR"), s("EUR"), s("CHF")}));
    QCOMPARE(table.column(s("date_created")).first(), s("2026-01-05T09:15:00"));
    QCOMPARE(table.column(s("line_items_id")), QStringList({s("11"), s("12"), s("21")}));
}

void tst_export::valuesAreWrittenAsTheyCome()
{
    const ExportTable table = run({sample::order(1,
                                                 {sample::line(11,
                                                               {{s("total"), s("12.50")},
                                                                {s("price"), 6.6386555},
                                                                {s("on"), true},
                                                                {s("list"), QJsonArray {1}},
                                                                {s("none"), QJsonValue::Null}})},
                                                 {{s("total"), s("1,234.50 €")}})});
    QCOMPARE(table.cell(0, s("total")), s("1,234.50 €"));
    QCOMPARE(table.cell(0, s("line_items_total")), s("12.50"));
    QCOMPARE(table.cell(0, s("line_items_price")), s("6.6386555"));
    QCOMPARE(table.cell(0, s("line_items_on")), s("true"));
    QCOMPARE(table.cell(0, s("line_items_list")), s(""));
    QCOMPARE(table.cell(0, s("line_items_none")), s(""));
}

void tst_export::ordinaryLinesAreNoRefunds()
{
    const ExportTable table = run({sample::order(1, {sample::line(11)})});
    QCOMPARE(table.cell(0, s("is_refund")), s("0"));
    QCOMPARE(table.cell(0, s("refund_id")), s("-1"));
    QCOMPARE(table.cell(0, s("refund_date")), s(""));
    QCOMPARE(table.cell(0, s("errors")), s(""));
}

void tst_export::shippingErrorsStandInEveryLine()
{
    const QJsonObject shipping {
        {s("total"), s("4.90")}, {s("total_tax"), s("0.00")}, {s("taxes"), QJsonArray()}};
    const ExportTable table = run({sample::order(1, {sample::line(11), sample::line(12)},
                                                 {{s("shipping_lines"), QJsonArray {shipping}}})});
    QCOMPARE(table.column(s("errors")), QStringList({s("1"), s("1")}));
    QCOMPARE(table.column(s("line_items_shipping_part")), QStringList({s("4.9"), s("")}));
}

void tst_export::shippingOfARateWithoutALineReachesNoRow()
{
    const QJsonObject tax {{s("id"), 7}, {s("total"), s("1.90")}};
    const QJsonObject shipping {
        {s("total"), s("10.00")}, {s("total_tax"), s("1.90")}, {s("taxes"), QJsonArray {tax}}};
    const QJsonObject rate {{s("rate_id"), 7}, {s("rate_percent"), 19}};
    const ExportTable table = run({sample::order(
        1, {sample::line(11)},
        {{s("shipping_lines"), QJsonArray {shipping}}, {s("tax_lines"), QJsonArray {rate}}})});
    QCOMPARE(table.cell(0, s("line_items_shipping_part")), s(""));
    QCOMPARE(table.cell(0, s("errors")), s(""));
    QVERIFY(table.headers().filter(s("shipping_lines")).isEmpty());
}

void tst_export::refundFlagsAreAColumnThatStaysEmpty()
{
    m_fixture->serve(s("/wp-json/wc/v3/orders/1/refunds"),
                     sample::json({sample::refund(5, {sample::line(51)})}));
    const ExportTable table =
        run({sample::order(1, {sample::line(11)}, {{s("status"), s("refunded")}})});
    QVERIFY(table.headers().contains(s("refund_flags")));
    QCOMPARE(table.column(s("refund_flags")), QStringList({s(""), s("")}));
}

void tst_export::theColumnsOfARunAreForgottenByTheNext()
{
    run({sample::order(1, {sample::line(11)}, {{s("old"), 1}})});
    m_fixture->serveOrders({sample::order(2, {sample::line(21)}, {{s("new"), 1}})});
    m_fixture->runToEnd();
    const ExportTable table(m_folder.exported());
    QVERIFY(table.problem().isEmpty());
    QVERIFY(table.headers().contains(s("new")));
    QVERIFY(!table.headers().contains(s("old")));
    QCOMPARE(table.column(s("id")), QStringList({s("2")}));
}

LEDORA_APP_TEST_MAIN(tst_export)
#include "tst_export.moc"
