#include "tests/app/export_table.h"
#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include "tools/demo_shop/recorded_shop.h"

#include <QDir>
#include <QJsonDocument>
#include <QPlainTextEdit>
#include <QTimer>

#include <optional>

namespace {

QString recordings()
{
    return QStringLiteral(LEDORA_TEST_DATA "/recordings");
}

QJsonDocument recording(const QString& name)
{
    QFile file(recordings() + QLatin1Char('/') + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s can't be read.", qPrintable(file.fileName()));
    return QJsonDocument::fromJson(file.readAll());
}

QJsonArray recordedOrders()
{
    return recording(QStringLiteral("orders/orders-page-1.json")).array();
}

/// Ids of \a orders that have lines, as many times as they have.
QStringList idsByLine(const QJsonArray& orders)
{
    QStringList ids;
    for (const auto order : orders)
        for (qsizetype i = order[QLatin1String("line_items")].toArray().size(); i > 0; --i)
            ids.append(QString::number(order[QLatin1String("id")].toInt()));
    return ids;
}

/// Rows of \a table whose \a column holds \a value.
QList<qsizetype> rowsWith(const ExportTable& table, const QString& column, const QString& value)
{
    QList<qsizetype> rows;
    for (qsizetype row = 0; row < table.rowCount(); ++row)
        if (table.cell(row, column) == value)
            rows.append(row);
    return rows;
}

QString s(const char* text)
{
    return QString::fromUtf8(text);
}

} // namespace

/// Runs against the recorded answers of a real shop.
class tst_recordings : public QObject
{
    Q_OBJECT

public:
    explicit tst_recordings(const StartFolder& folder)
        : m_folder(folder)
    {
    }

private slots:
    void init();
    void everyLineOfEveryOrderIsARow();
    void onlyRecordedRequestsAreMade();
    void everyProductIsAskedForOnce();
    void datesAreThoseOfGermany();
    void aFullRefundByAmountMirrorsItsOrder();
    void aPartRefundByAmountIsOneRow();
    void aFlaggedRefundIsLeftAlone();
    void refundsWithoutLinesGiveNoRow();
    void aNameOverTwoLinesArrivesWhole();
    void allPaymentsAreSplitBetweenTheTwoSwitches();
    void invoicesAreStoredAndNamed();
    void aSecondRunFetchesNoFileAgain();
    void ticksGiveTheSameExportAsPassesByHand();

private:
    ExportTable run(const QMap<QString, QVariant>& options = {});

    const StartFolder& m_folder;
    std::optional<RunFixture> m_fixture;
};

void tst_recordings::init()
{
    m_fixture.reset();
    m_fixture.emplace(m_folder);
    const demo_shop::RecordedShop shop(recordings());
    QVERIFY2(shop.isValid(), qPrintable(shop.errorString()));
    m_fixture->shop.setHandler(shop);
}

ExportTable tst_recordings::run(const QMap<QString, QVariant>& options)
{
    m_fixture->start(options);
    m_fixture->runToEnd();
    return ExportTable(m_folder.exported());
}

void tst_recordings::everyLineOfEveryOrderIsARow()
{
    const ExportTable table = run();
    QVERIFY2(table.problem().isEmpty(), qPrintable(table.problem()));
    QStringList ids;
    for (qsizetype row = 0; row < table.rowCount(); ++row)
        if (table.cell(row, s("is_refund")) == QLatin1String("0"))
            ids.append(table.cell(row, s("id")));
    QCOMPARE(ids, idsByLine(recordedOrders()));
    QCOMPARE(m_fixture->window->iExportCount, recordedOrders().size());
    QCOMPARE(m_fixture->window->logEdit->toPlainText().count(QLatin1Char('\n')) + 1,
             recordedOrders().size());
}

void tst_recordings::onlyRecordedRequestsAreMade()
{
    run({{s("germanized_use"), true}, {s("germanized_pdf_folder"), m_folder.pdfFolder()}});
    const QStringList recorded = demo_shop::RecordedShop(recordings()).requests();
    const QStringList asked = m_fixture->targets();
    for (const QString& target : asked)
        QVERIFY2(recorded.contains(target), qPrintable(target));
    QCOMPARE(m_fixture->answers.titles(), QStringList({s("Beendet:")}));
}

void tst_recordings::everyProductIsAskedForOnce()
{
    run();
    QStringList asked = m_fixture->paths().filter(s("/products/"));
    QSet<QString> expected;
    const QJsonArray orders = recordedOrders();
    for (const auto order : orders) {
        const QJsonArray lines = order[QLatin1String("line_items")].toArray();
        for (const auto line : lines)
            expected.insert(
                s("/wp-json/wc/v3/products/%1").arg(line[QLatin1String("product_id")].toInt()));
    }
    QCOMPARE(asked.size(), expected.size());
    QCOMPARE(QSet<QString>(asked.cbegin(), asked.cend()), expected);
}

void tst_recordings::datesAreThoseOfGermany()
{
    const ExportTable table = run();
    const auto dateOf = [&](const char* id) {
        return table.cell(rowsWith(table, s("id"), s(id)).value(0), s("date_created"));
    };
    QCOMPARE(dateOf("47"), s("2026-02-28T23:59:59"));
    QCOMPARE(dateOf("48"), s("2026-03-01T00:00:00"));
    QCOMPARE(dateOf("67"), s("2026-03-29T01:59:59"));
    QCOMPARE(dateOf("68"), s("2026-03-29T03:00:00"));
    QCOMPARE(dateOf("69"), s("2026-04-01T00:00:00"));
    QCOMPARE(dateOf("82"), s("2026-04-30T23:59:59"));
}

void tst_recordings::aFullRefundByAmountMirrorsItsOrder()
{
    const ExportTable table = run();
    const QList<qsizetype> rows = rowsWith(table, s("id"), s("52"));
    QCOMPARE(rows.size(), 2);
    const auto amounts = [&](qsizetype row) {
        return std::pair(table.cell(row, s("line_items_total")).toDouble(),
                         table.cell(row, s("line_items_total_tax")).toDouble());
    };
    const auto [total, tax] = amounts(rows.first());
    QCOMPARE(qRound((total + tax) * 100), 5500);
    QCOMPARE(amounts(rows.last()), std::pair(-total, -tax));
    QCOMPARE(table.cell(rows.last(), s("is_refund")), s("1"));
    QCOMPARE(table.cell(rows.last(), s("refund_id")), s("55"));
    QCOMPARE(table.cell(rows.last(), s("refund_date")), s("2026-03-11T15:48:52"));
}

void tst_recordings::aPartRefundByAmountIsOneRow()
{
    const ExportTable table = run();
    const QList<qsizetype> rows = rowsWith(table, s("refund_id"), s("57"));
    QCOMPARE(rows.size(), 1);
    QCOMPARE(table.cell(rows.first(), s("id")), s("54"));
    QCOMPARE(table.cell(rows.first(), s("line_items_total")), s("-30"));
    QCOMPARE(table.cell(rows.first(), s("line_items_total_tax")), s("0.00"));
}

void tst_recordings::aFlaggedRefundIsLeftAlone()
{
    // 0.32 of tax at 7 % belong to 4.57 and not to the 4.58 of the shipping line.
    const ExportTable table = run();
    const QList<qsizetype> rows = rowsWith(table, s("refund_id"), s("49"));
    QCOMPARE(rows.size(), 1);
    QCOMPARE(table.cell(rows.first(), s("line_items_total")), s("-34.58"));
    QCOMPARE(table.cell(rows.first(), s("line_items_total_tax")), s("-2.42"));
    QCOMPARE(table.cell(rows.first(), s("errors")), s("1"));
}

void tst_recordings::refundsWithoutLinesGiveNoRow()
{
    const ExportTable table = run();
    for (const char* refund : {"53", "59", "62"})
        QVERIFY(rowsWith(table, s("refund_id"), s(refund)).isEmpty());
    QCOMPARE(rowsWith(table, s("refund_id"), s("60")).size(), 1);
}

void tst_recordings::aNameOverTwoLinesArrivesWhole()
{
    const ExportTable table = run();
    const QList<qsizetype> rows = rowsWith(table, s("id"), s("81"));
    QCOMPARE(rows.size(), 1);
    QCOMPARE(table.cell(rows.first(), s("billing_company")),
             s("Weiß Bürobedarf e. K.\nEinkauf; \"Tor 2\""));
    QVERIFY(m_folder.exported().contains("\"Weiß Bürobedarf e. K.\nEinkauf; \"\"Tor 2\"\"\""));
}

void tst_recordings::allPaymentsAreSplitBetweenTheTwoSwitches()
{
    const QStringList all = run().column(s("id"));
    const QStringList paypal = run({{s("woocommerce_use"), false}}).column(s("id"));
    const QStringList others = run({{s("paypal_use"), false}}).column(s("id"));
    // A card that was paid through the service without its name in the title has its fee.
    QVERIFY(paypal.contains(s("78")));
    QVERIFY(paypal.contains(s("33")));
    QVERIFY(others.contains(s("31")));
    QStringList both = paypal + others;
    QCOMPARE(both.size(), all.size());
    QCOMPARE(QSet<QString>(both.cbegin(), both.cend()), QSet<QString>(all.cbegin(), all.cend()));
    for (const QString& id : paypal)
        QVERIFY2(!others.contains(id), qPrintable(id));
}

void tst_recordings::invoicesAreStoredAndNamed()
{
    const ExportTable table =
        run({{s("germanized_use"), true}, {s("germanized_pdf_folder"), m_folder.pdfFolder()}});
    QVERIFY2(table.problem().isEmpty(), qPrintable(table.problem()));
    QSet<QString> files;
    for (qsizetype row = 0; row < table.rowCount(); ++row) {
        const QString id = table.cell(row, s("id"));
        const QJsonArray invoices = recording(s("invoices/invoices-%1.json").arg(id)).array();
        QStringList paths;
        for (const auto invoice : invoices)
            paths.append(m_folder.pdfFolder() + QLatin1Char('/')
                         + invoice[QLatin1String("formatted_number")].toString()
                         + QLatin1String(".pdf"));
        QCOMPARE(table.cell(row, s("gm_invoice_filename")), paths.join(QLatin1Char('|')));
        const QJsonValue last = invoices.isEmpty() ? QJsonValue() : invoices.last();
        QCOMPARE(table.cell(row, s("gm_formatted_number")),
                 last[QLatin1String("formatted_number")].toString());
        files.unite(QSet<QString>(paths.cbegin(), paths.cend()));
    }
    QCOMPARE(files.size(), 20);
    QCOMPARE(m_fixture->window->iPdfCount, 20);
    for (const QString& path : files) {
        QFile file(path);
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(path));
        QVERIFY2(file.readAll().startsWith("%PDF-"), qPrintable(path));
    }
}

void tst_recordings::aSecondRunFetchesNoFileAgain()
{
    run({{s("germanized_use"), true}, {s("germanized_pdf_folder"), m_folder.pdfFolder()}});
    const QByteArray first = m_folder.exported();
    QCOMPARE(m_fixture->paths().filter(s("/pdf")).size(), 20);
    m_fixture->shop.clearRequests();
    m_fixture->runToEnd();
    QVERIFY(m_fixture->paths().filter(s("/pdf")).isEmpty());
    QVERIFY(m_fixture->paths().filter(s("/products/")).isEmpty());
    QCOMPARE(m_folder.exported(), first);
    QCOMPARE(m_fixture->window->iPdfCount, 0);
}

void tst_recordings::ticksGiveTheSameExportAsPassesByHand()
{
    run();
    const QByteArray byHand = m_folder.exported();
    m_fixture->answers.clear();
    m_fixture->window->StartTimer();
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->answers.titles(), QStringList({s("Beendet:")}), 30000);
    QTRY_VERIFY_WITH_TIMEOUT(!m_fixture->window->runTimer->isActive(), 10000);
    QCOMPARE(m_folder.exported(), byHand);
    QVERIFY(!byHand.isEmpty());
}

LEDORA_APP_TEST_MAIN(tst_recordings)
#include "tst_recordings.moc"
