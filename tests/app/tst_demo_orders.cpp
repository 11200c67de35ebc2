#include "tests/app/export_table.h"
#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include "tools/demo_shop/invented_shop.h"

#include <QDir>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QScopeGuard>

#include <optional>

namespace {

QString s(const char* text)
{
    return QString::fromUtf8(text);
}

qint64 centsOf(const QString& amount)
{
    return qRound64(amount.toDouble() * 100);
}

/// The answer of \a shop to a request by path and query, as a list.
QJsonArray listOf(const demo_shop::InventedShop& shop, const QString& path,
                  const QString& query = {})
{
    demo_shop::ShopRequest request;
    request.path = path;
    request.query = QUrlQuery(query);
    request.baseUrl = s("http://127.0.0.1");
    return QJsonDocument::fromJson(shop(request).body).array();
}

/// All orders that a run has to see, in their order.
QJsonArray ordersOf(const demo_shop::InventedShop& shop)
{
    QJsonArray all;
    for (int page = 1;; ++page) {
        const QJsonArray part = listOf(
            shop, s("/wp-json/wc/v3/orders"),
            s("per_page=100&status=completed,refunded&orderby=date&order=asc&page=%1").arg(page));
        if (part.isEmpty())
            return all;
        for (const auto order : part)
            all.append(order);
    }
}

QJsonArray linesOf(const QJsonValue& order)
{
    return order[QLatin1String("line_items")].toArray();
}

bool hasRefunds(const QJsonValue& order)
{
    return !order[QLatin1String("refunds")].toArray().isEmpty();
}

QString idOf(const QJsonValue& value)
{
    return QString::number(value[QLatin1String("id")].toInt());
}

} // namespace

/// A long run over invented orders of every kind, held against what the shop itself says.
class tst_demo_orders : public QObject
{
    Q_OBJECT

public:
    explicit tst_demo_orders(const StartFolder& folder)
        : m_folder(folder)
    {
    }

private slots:
    void initTestCase();
    void theRunEndsWithAQuestion();
    void theExportFollowsItsFormat();
    void everyLineIsARowInTheShopsOrder();
    void theRowsAddUpToTheShopsLines();
    void shippingIsAttachedOnceARate();
    void everyRefundAddsUp();
    void feesStandInOneRowAnOrder();
    void everyOrderIsLogged();
    void onlyTheInterfaceIsAsked();
    void pagesProductsAndRefundsAreAskedForOnce();
    void theWholeRunTakesOneConnection();
    void invoicesOfAShorterRunAreStored();
    void productsThatAreGoneFailTheRun();

private:
    bool addsUp(const QJsonValue& refund, const QList<qsizetype>& rows) const;

    const StartFolder& m_folder;
    std::optional<RunFixture> m_fixture;
    const demo_shop::InventedShop m_shop {2000};
    QJsonArray m_orders;
    std::optional<ExportTable> m_table;
};

void tst_demo_orders::initTestCase()
{
    // A line for each date and each unknown field would drown everything else.
    QLoggingCategory::setFilterRules(s("default.debug=false"));
    m_orders = ordersOf(m_shop);
    QCOMPARE(m_orders.size(), 2000);
    m_fixture.emplace(m_folder);
    m_fixture->shop.setHandler(m_shop);
    m_fixture->start();
    m_fixture->runToEnd();
    m_table.emplace(m_folder.exported());
}

void tst_demo_orders::theRunEndsWithAQuestion()
{
    QCOMPARE(m_fixture->answers.titles(), QStringList({s("Beendet:")}));
    QVERIFY(!m_fixture->window->bError);
    QCOMPARE(m_fixture->window->iExportCount, 2000);
}

void tst_demo_orders::theExportFollowsItsFormat()
{
    QVERIFY2(m_table->problem().isEmpty(), qPrintable(m_table->problem()));
    QCOMPARE(m_table->options(), m_fixture->window->BuildOptionsString());
    QCOMPARE(m_table->headers().size(),
             QSet<QString>(m_table->headers().cbegin(), m_table->headers().cend()).size());
    for (const QString& cell : m_table->column(s("refund_flags")))
        QVERIFY(cell.isEmpty());
}

void tst_demo_orders::everyLineIsARowInTheShopsOrder()
{
    QStringList expected;
    for (const auto order : std::as_const(m_orders))
        for (const auto line : linesOf(order))
            expected.append(idOf(order) + QLatin1Char(' ') + idOf(line));
    QStringList actual;
    QString lastId = s("0");
    for (qsizetype row = 0; row < m_table->rowCount(); ++row) {
        const QString id = m_table->cell(row, s("id"));
        QVERIFY2(id.toInt() >= lastId.toInt(), qPrintable(id));
        lastId = id;
        if (m_table->cell(row, s("is_refund")) == QLatin1String("0"))
            actual.append(id + QLatin1Char(' ') + m_table->cell(row, s("line_items_id")));
    }
    QCOMPARE(actual.size(), expected.size());
    QCOMPARE(actual, expected);
}

void tst_demo_orders::theRowsAddUpToTheShopsLines()
{
    qint64 expected = 0;
    for (const auto order : std::as_const(m_orders))
        for (const auto line : linesOf(order))
            expected += centsOf(line[QLatin1String("total")].toString())
                + centsOf(line[QLatin1String("total_tax")].toString());
    qint64 actual = 0;
    for (qsizetype row = 0; row < m_table->rowCount(); ++row)
        if (m_table->cell(row, s("is_refund")) == QLatin1String("0"))
            actual += centsOf(m_table->cell(row, s("line_items_total")))
                + centsOf(m_table->cell(row, s("line_items_total_tax")));
    QVERIFY(expected > 0);
    QCOMPARE(actual, expected);
}

void tst_demo_orders::shippingIsAttachedOnceARate()
{
    QSet<QString> seen;
    int parts = 0;
    for (qsizetype row = 0; row < m_table->rowCount(); ++row) {
        if (m_table->cell(row, s("line_items_shipping_part")).isEmpty())
            continue;
        const QString place = m_table->cell(row, s("id")) + QLatin1Char(' ')
            + m_table->cell(row, s("refund_id")) + QLatin1Char(' ')
            + m_table->cell(row, s("line_items_tax_rate"));
        QVERIFY2(!seen.contains(place), qPrintable(place));
        seen.insert(place);
        ++parts;
    }
    QVERIFY(parts > 1000);
}

void tst_demo_orders::everyRefundAddsUp()
{
    QHash<QString, QList<qsizetype>> rowsOfRefund;
    for (qsizetype row = 0; row < m_table->rowCount(); ++row)
        if (m_table->cell(row, s("is_refund")) == QLatin1String("1"))
            rowsOfRefund[m_table->cell(row, s("refund_id"))].append(row);

    int checked = 0;
    qsizetype refundsWithLines = 0;
    for (const auto order : std::as_const(m_orders)) {
        if (!hasRefunds(order))
            continue;
        const QJsonArray refunds =
            listOf(m_shop, s("/wp-json/wc/v3/orders/%1/refunds").arg(idOf(order)));
        for (const auto refund : refunds) {
            const QList<qsizetype> rows = rowsOfRefund.value(idOf(refund));
            QCOMPARE(rows.isEmpty(), linesOf(refund).isEmpty());
            if (rows.isEmpty())
                continue;
            ++refundsWithLines;
            QCOMPARE(m_table->cell(rows.first(), s("id")), idOf(order));
            // Lines with a flag are left as the shop sent them.
            if (!m_table->cell(rows.first(), s("errors")).isEmpty())
                continue;
            QVERIFY2(addsUp(refund, rows), qPrintable(idOf(refund)));
            ++checked;
        }
    }
    QCOMPARE(rowsOfRefund.size(), refundsWithLines);
    QVERIFY(checked > 100);
}

bool tst_demo_orders::addsUp(const QJsonValue& refund, const QList<qsizetype>& rows) const
{
    const QString amount = refund[QLatin1String("amount")].toString();
    qint64 sum = 0;
    for (const qsizetype row : rows)
        sum += centsOf(m_table->cell(row, s("line_items_total")))
            + centsOf(m_table->cell(row, s("line_items_total_tax")));
    if (sum == -centsOf(amount))
        return true;
    // Or the first row was made to hold it all, with the six digits that a repair writes.
    return m_table->cell(rows.first(), s("line_items_total"))
        == QString::number(-amount.toDouble(), 'g', 6)
        && m_table->cell(rows.first(), s("line_items_total_tax")) == QLatin1String("0.00");
}

void tst_demo_orders::feesStandInOneRowAnOrder()
{
    QSet<QString> orders;
    QSet<QString> refundedOrders;
    for (qsizetype row = 0; row < m_table->rowCount(); ++row) {
        if (m_table->cell(row, s("paypal_fee")).isEmpty())
            continue;
        const bool isRefund = m_table->cell(row, s("is_refund")) == QLatin1String("1");
        QSet<QString>& seen = isRefund ? refundedOrders : orders;
        const QString id = m_table->cell(row, s("id"));
        QVERIFY2(!seen.contains(id), qPrintable(id));
        seen.insert(id);
    }
    QVERIFY(orders.size() > 300);
    QVERIFY(!refundedOrders.isEmpty());
    QVERIFY(orders.contains(refundedOrders));
}

void tst_demo_orders::everyOrderIsLogged()
{
    const QStringList lines = m_fixture->window->logEdit->toPlainText().split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), m_orders.size());
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString start =
            s("Zähler: %1, ID: %2, Datum: ").arg(QString::number(i + 1), idOf(m_orders.at(i)));
        QVERIFY2(lines.at(i).startsWith(start), qPrintable(lines.at(i)));
    }
}

void tst_demo_orders::onlyTheInterfaceIsAsked()
{
    static const QRegularExpression interface(
        s("^/wp-json/wc/v3/(taxes\\?per_page=100&page=\\d+&orderby=id&order=asc"
          "|orders\\?per_page=100&status=completed,%20refunded&page=\\d+&orderby=date&order=asc"
          "&dates_are_gmt=true|products/\\d+|orders/\\d+/refunds)$"));
    for (const demo_shop::ShopRequest& request : m_fixture->shop.requests()) {
        QVERIFY2(interface.match(QString::fromLatin1(request.rawTarget)).hasMatch(),
                 request.rawTarget.constData());
        QCOMPARE(request.method, QByteArray("GET"));
        QVERIFY(request.authorization.startsWith("Basic "));
    }
}

void tst_demo_orders::pagesProductsAndRefundsAreAskedForOnce()
{
    QSet<QString> products;
    QSet<QString> refunds;
    for (const auto order : std::as_const(m_orders)) {
        for (const auto line : linesOf(order))
            products.insert(QString::number(line[QLatin1String("product_id")].toInt()));
        if (hasRefunds(order)
            || order[QLatin1String("status")].toString() == QLatin1String("refunded"))
            refunds.insert(idOf(order));
    }
    const QStringList paths = m_fixture->paths();
    const auto askedFor = [&](const QString& pattern) {
        const QRegularExpression expression(pattern);
        QStringList asked;
        for (const QString& path : paths) {
            const QRegularExpressionMatch match = expression.match(path);
            if (match.hasMatch())
                asked.append(match.captured(1));
        }
        return asked;
    };
    const QStringList askedProducts = askedFor(s("/products/(\\d+)$"));
    QCOMPARE(askedProducts.size(), products.size());
    QCOMPARE(QSet<QString>(askedProducts.cbegin(), askedProducts.cend()), products);
    const QStringList askedRefunds = askedFor(s("/orders/(\\d+)/refunds$"));
    QCOMPARE(askedRefunds.size(), refunds.size());
    QCOMPARE(QSet<QString>(askedRefunds.cbegin(), askedRefunds.cend()), refunds);
    QCOMPARE(paths.count(s("/wp-json/wc/v3/taxes")), 2);
    // Twenty full pages, and the empty one that tells that they were all.
    QCOMPARE(paths.count(s("/wp-json/wc/v3/orders")), 21);
}

void tst_demo_orders::theWholeRunTakesOneConnection()
{
    QCOMPARE(m_fixture->shop.connectionCount(), 1);
}

void tst_demo_orders::invoicesOfAShorterRunAreStored()
{
    const demo_shop::InventedShop shop(150, 7);
    const QJsonArray orders = ordersOf(shop);
    RunFixture fixture(m_folder);
    fixture.shop.setHandler(shop);
    fixture.start(
        {{s("germanized_use"), true}, {s("germanized_pdf_folder"), m_folder.pdfFolder()}});
    fixture.runToEnd();
    QCOMPARE(fixture.answers.titles(), QStringList({s("Beendet:")}));

    const ExportTable table(m_folder.exported());
    QVERIFY2(table.problem().isEmpty(), qPrintable(table.problem()));
    QStringList expected;
    for (const auto order : orders) {
        const QJsonArray invoices =
            listOf(shop, s("/wp-json/wc/v3/orders/%1/invoices").arg(idOf(order)));
        for (const auto invoice : invoices)
            expected.append(invoice[QLatin1String("formatted_number")].toString() + s(".pdf"));
    }
    expected.sort();
    QVERIFY(!expected.isEmpty());
    QCOMPARE(QDir(m_folder.pdfFolder()).entryList(QDir::Files, QDir::Name), expected);
    QCOMPARE(fixture.window->iPdfCount, expected.size());
    for (const QString& cell : table.column(s("gm_invoice_filename")))
        for (const QString& path : cell.split(QLatin1Char('|'), Qt::SkipEmptyParts))
            QVERIFY2(QFileInfo(path).size() > 0, qPrintable(path));
}

void tst_demo_orders::productsThatAreGoneFailTheRun()
{
    demo_shop::InventedShop shop(100);
    shop.setDeletedProducts(true);
    RunFixture fixture(m_folder);
    fixture.shop.setHandler(shop);
    fixture.start();
    fixture.runToEnd();
    QCOMPARE(fixture.answers.titles(), QStringList({s("Fehler:")}));
    QVERIFY(fixture.answers.seen().first().text.contains(s("/wp-json/wc/v3/products/0")));
    QCOMPARE(m_folder.exported(), QByteArray(""));
    QCOMPARE(fixture.paths().filter(s("/products/0")).size(), 9);
}

LEDORA_APP_TEST_MAIN(tst_demo_orders)
#include "tst_demo_orders.moc"
