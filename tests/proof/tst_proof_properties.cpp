#include "tests/app/run_fixture.h"
#include "tests/proof/proof_size.h"
#include "tests/proof/property_csv.h"
#include "tests/proof/property_shop.h"
#include "tests/support/app_test.h"

#include <QLoggingCategory>

#include <algorithm>
#include <optional>

using property::Line;
using property::Order;
using property::Refund;

namespace {

/// Six significant digits are all that a repaired amount is written with.
constexpr qint64 sixDigits = 1'000'000;

QString s(const char* text)
{
    return QString::fromUtf8(text);
}

qint64 centsOf(const QString& amount)
{
    return qRound64(amount.toDouble() * 100);
}

/// Rows of an order in the export, as numbers of records.
struct OrderRows
{
    QList<qsizetype> own;
    QHash<int, QList<qsizetype>> ofRefund;
    QList<qsizetype> all;
};

/// Which promise the repair of a refund makes.
enum Promise {
    NoRows, ///< a refund without lines has none
    NotRepaired, ///< flagged shipping: the lines stay as the shop sent them
    NoAmount, ///< there is nothing to add up to
    RealLinesDisagree, ///< the first line takes the amount, the others keep what they hold
    TooLong, ///< an amount of more digits than a repaired one is written with
    CopyOfARefund, ///< mirrors the rows before it, those of a refund too, and so may turn the sign
    AddsUp,
};

constexpr const char* promiseNames[] = {"no_rows",  "flagged",        "without_amount", "disagree",
                                        "too_long", "copy_of_refund", "adds_up"};

bool isOfZeros(const Refund& refund)
{
    return std::ranges::all_of(refund.lines,
                               [](const Line& line) { return line.net == 0 && line.tax == 0; });
}

/// What holds for a refund, told by the shop's answers alone; where that is CopyOfARefund, the rows
/// before it have to be looked at.
Promise promiseFor(const Order& order, const Refund& refund)
{
    if (refund.lines.isEmpty())
        return NoRows;
    if (refund.flagged)
        return NotRepaired;
    if (!refund.amount)
        return NoAmount;
    qint64 net = 0;
    qint64 sum = 0;
    for (const Line& line : refund.lines) {
        net += line.net;
        sum += line.net + line.tax;
    }
    if (qAbs(sum) == *refund.amount)
        return AddsUp;
    if (net != 0 && refund.lines.size() > 1)
        return RealLinesDisagree;
    bool tooLong = *refund.amount >= sixDigits;
    for (const Line& line : order.lines)
        tooLong = tooLong || line.net >= sixDigits || line.tax >= sixDigits;
    if (tooLong)
        return TooLong;
    const bool isFirst = order.refunds.first().id == refund.id;
    return isFirst || net != 0 ? AddsUp : CopyOfARefund;
}

} // namespace

/// Random orders and refunds through a whole run: what comes out is what went in.
class tst_proof_properties : public QObject
{
    Q_OBJECT

public:
    explicit tst_proof_properties(const StartFolder& folder)
        : m_folder(folder)
    {
    }

private slots:
    void initTestCase();
    void theExportKeepsToTheGrammar();
    void anotherReaderSeesTheSameCells();
    void everyLineIsARow();
    void ordersComeThroughCellByCell();
    void linesComeThroughCellByCell();
    void productFlagsStandInEveryRow();
    void feesStandWhereTheyBelong();
    void refundRowsNameTheirRefund();
    void refundsAddUp();
    void anotherRunGivesTheSameBytes();

private:
    QString cell(qsizetype row, const QString& column) const;
    QString place(const Order& order, qsizetype row) const;
    void compareLine(const Order& order, const Line& line, qsizetype row, bool amountsToo);
    qint64 centsOfRow(qsizetype row) const;
    qint64 centsBefore(const OrderRows& rows, const Refund& refund) const;
    void countPromise(Promise promise, bool held);

    const StartFolder& m_folder;
    quint32 m_seed = 0;
    std::optional<property::Shop> m_shop;
    std::optional<RunFixture> m_fixture;
    QList<QStringList> m_records;
    QHash<QString, qsizetype> m_columns;
    QList<OrderRows> m_rows;
    int m_cells = 0;
    int m_sameCells = 0;
    int m_held[AddsUp + 1] = {};
    int m_tried[AddsUp + 1] = {};
};

void tst_proof_properties::initTestCase()
{
    QLoggingCategory::setFilterRules(s("default.debug=false"));
    m_seed = property::seed();
    qInfo("LEDORA_SEED=%u", m_seed);
    m_shop.emplace(m_seed, proof::sized(6000, 250));
    m_fixture.emplace(m_folder);
    m_fixture->shop.setHandler(*m_shop);
    m_fixture->start();
    m_fixture->runToEnd();
    QCOMPARE(m_fixture->answers.titles(), QStringList({s("Beendet:")}));
    QCOMPARE(m_fixture->window->iExportCount, m_shop->orders().size());
}

void tst_proof_properties::theExportKeepsToTheGrammar()
{
    // The first line holds the settings, in a format of its own.
    const QByteArray bytes = m_folder.exported();
    const property::CsvReader reader(bytes.mid(bytes.indexOf('\n') + 1));
    QVERIFY2(reader.problem().isEmpty(), qPrintable(reader.problem()));
    m_records = reader.records();
    QVERIFY(m_records.size() > m_shop->orders().size());
    const QStringList& headers = m_records.first();
    for (qsizetype i = 0; i < headers.size(); ++i) {
        QVERIFY2(!m_columns.contains(headers.at(i)), qPrintable(headers.at(i)));
        m_columns.insert(headers.at(i), i);
    }
    for (const QStringList& record : std::as_const(m_records))
        QCOMPARE(record.size(), headers.size());
}

void tst_proof_properties::anotherReaderSeesTheSameCells()
{
    QString problem;
    const QList<QStringList> records = property::readWithPython(m_folder.exportFile(), 1, problem);
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    QCOMPARE(records.size(), m_records.size());
    for (qsizetype row = 0; row < records.size(); ++row)
        QCOMPARE(records.at(row), m_records.at(row));
}

QString tst_proof_properties::cell(qsizetype row, const QString& column) const
{
    return m_records.at(row).value(m_columns.value(column, -1));
}

QString tst_proof_properties::place(const Order& order, qsizetype row) const
{
    return s("seed %1, order %2, record %3")
        .arg(QString::number(m_seed), QString::number(order.id), QString::number(row));
}

void tst_proof_properties::everyLineIsARow()
{
    qsizetype row = 1;
    for (const Order& order : m_shop->orders()) {
        OrderRows rows;
        const QString id = QString::number(order.id);
        for (; row < m_records.size() && cell(row, s("id")) == id; ++row)
            rows.all.append(row);
        qsizetype next = 0;
        for (const Line& line : order.lines) {
            QVERIFY2(next < rows.all.size(), qPrintable(place(order, row)));
            rows.own.append(rows.all.at(next++));
            QCOMPARE(cell(rows.own.last(), s("line_items_id")), QString::number(line.id));
        }
        // A repair may drop all lines of a refund but the first; none is added or moved.
        for (const Refund& refund : order.refunds) {
            for (const Line& line : refund.lines) {
                if (next < rows.all.size()
                    && cell(rows.all.at(next), s("line_items_id")) == QString::number(line.id))
                    rows.ofRefund[refund.id].append(rows.all.at(next++));
            }
            const qsizetype count = rows.ofRefund.value(refund.id).size();
            QVERIFY2(count == refund.lines.size() || count == 1, qPrintable(place(order, row)));
        }
        QVERIFY2(next == rows.all.size(), qPrintable(place(order, row)));
        m_rows.append(rows);
    }
    QCOMPARE(row, m_records.size());
}

void tst_proof_properties::ordersComeThroughCellByCell()
{
    const QStringList columns = m_shop->orders().first().cells.keys();
    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        const Order& order = m_shop->orders().at(i);
        for (const qsizetype row : m_rows.at(i).all) {
            for (const QString& column : columns) {
                ++m_cells;
                if (cell(row, column) != order.cells.value(column))
                    QCOMPARE(place(order, row) + column + cell(row, column),
                             place(order, row) + column + order.cells.value(column));
                ++m_sameCells;
            }
        }
    }
}

void tst_proof_properties::compareLine(const Order& order, const Line& line, qsizetype row,
                                       bool amountsToo)
{
    const QStringList columns = m_shop->orders().first().lines.first().cells.keys();
    for (const QString& column : columns) {
        if (!amountsToo && column.startsWith(s("total")))
            continue;
        ++m_cells;
        const QString actual = cell(row, s("line_items_") + column);
        if (actual != line.cells.value(column))
            QCOMPARE(place(order, row) + column + actual,
                     place(order, row) + column + line.cells.value(column));
        ++m_sameCells;
    }
}

void tst_proof_properties::linesComeThroughCellByCell()
{
    QVERIFY(m_columns.contains(s("line_items_bonus")));
    QVERIFY(!m_columns.contains(s("line_items_sku")));
    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        const Order& order = m_shop->orders().at(i);
        const OrderRows& rows = m_rows.at(i);
        for (qsizetype line = 0; line < rows.own.size(); ++line)
            // A refund without an amount may mark a free line as refunded, be it of the order or of
            // another refund, and then writes its zeros anew.
            compareLine(order, order.lines.at(line), rows.own.at(line),
                        !order.hasRefundWithoutAmount());
        for (const Refund& refund : order.refunds) {
            const QList<qsizetype> of = rows.ofRefund.value(refund.id);
            for (qsizetype line = 0; line < of.size(); ++line)
                // Their amounts are the business of the repair, unless that keeps off.
                compareLine(order, refund.lines.at(line), of.at(line),
                            promiseFor(order, refund) == NotRepaired
                                && !order.hasRefundWithoutAmount());
        }
        if (QTest::currentTestFailed())
            return;
    }
}

void tst_proof_properties::productFlagsStandInEveryRow()
{
    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        const Order& order = m_shop->orders().at(i);
        QHash<QString, int> products;
        for (const Line& line : order.lines)
            products.insert(QString::number(line.id), line.productId);
        for (const Refund& refund : order.refunds)
            for (const Line& line : refund.lines)
                products.insert(QString::number(line.id), line.productId);
        int product = -1;
        for (const qsizetype row : m_rows.at(i).all) {
            const int named = products.value(cell(row, s("line_items_id")), -1);
            product = named < 0 ? product : named;
            const bool known = product >= 0;
            const auto flag = [known](bool on) { return known ? s(on ? "1" : "0") : QString(); };
            QVERIFY2(cell(row, s("line_items_virtual")) == flag(property::Shop::isVirtual(product))
                         && cell(row, s("line_items_downloadable"))
                             == flag(property::Shop::isDownload(product)),
                     qPrintable(place(order, row)));
        }
    }
}

void tst_proof_properties::feesStandWhereTheyBelong()
{
    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        const Order& order = m_shop->orders().at(i);
        const QList<qsizetype>& rows = m_rows.at(i).all;
        bool refundFeeDone = false;
        for (qsizetype line = 0; line < rows.size(); ++line) {
            QString expected =
                line == 0 && order.fee ? property::shortestText(*order.fee) : QString();
            const bool isRefund = cell(rows.at(line), s("is_refund")) == s("1");
            if ((line > 0 || rows.size() == 1) && isRefund && order.fee && !refundFeeDone) {
                refundFeeDone = true;
                if (*order.fee != 0)
                    expected = property::shortestText(35 - *order.fee);
            }
            QVERIFY2(cell(rows.at(line), s("paypal_fee")) == expected,
                     qPrintable(place(order, rows.at(line))));
        }
    }
}

void tst_proof_properties::refundRowsNameTheirRefund()
{
    const auto compare = [this](const Order& order, qsizetype row, const QStringList& expected) {
        const QStringList actual {cell(row, s("is_refund")), cell(row, s("refund_id")),
                                  cell(row, s("refund_date")), cell(row, s("errors"))};
        if (actual != expected)
            QCOMPARE(place(order, row) + actual.join(u' '),
                     place(order, row) + expected.join(u' '));
    };
    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        const Order& order = m_shop->orders().at(i);
        const OrderRows& rows = m_rows.at(i);
        for (const qsizetype row : rows.own)
            if (!order.hasRefundWithoutAmount())
                compare(order, row, {s("0"), s("-1"), QString(), s(order.flagged ? "1" : "")});
        for (const Refund& refund : order.refunds)
            for (const qsizetype row : rows.ofRefund.value(refund.id))
                if (!order.hasRefundWithoutAmount())
                    compare(order, row,
                            {s("1"), QString::number(refund.id), refund.date,
                             s(refund.flagged ? "1" : "")});
        for (const qsizetype row : rows.all)
            QCOMPARE(cell(row, s("refund_flags")), QString());
    }
}

qint64 tst_proof_properties::centsOfRow(qsizetype row) const
{
    return centsOf(cell(row, s("line_items_total")))
        + centsOf(cell(row, s("line_items_total_tax")));
}

/// What as many rows as a refund has lines come to that stand directly before it; 0 if there are
/// not so many.
qint64 tst_proof_properties::centsBefore(const OrderRows& rows, const Refund& refund) const
{
    const qsizetype end = rows.all.indexOf(rows.ofRefund.value(refund.id).value(0, -1));
    const qsizetype begin = end - refund.lines.size();
    qint64 sum = 0;
    for (qsizetype i = begin; begin >= 0 && i < end; ++i)
        sum += centsOfRow(rows.all.at(i));
    return sum;
}

void tst_proof_properties::countPromise(Promise promise, bool held)
{
    ++m_tried[promise];
    m_held[promise] += held ? 1 : 0;
}

void tst_proof_properties::refundsAddUp()
{
    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        const Order& order = m_shop->orders().at(i);
        for (const Refund& refund : order.refunds) {
            Promise promise = promiseFor(order, refund);
            qint64 sum = 0;
            const QList<qsizetype> rows = m_rows.at(i).ofRefund.value(refund.id);
            for (const qsizetype row : rows)
                sum += centsOfRow(row);
            const qint64 before = centsBefore(m_rows.at(i), refund);
            if (promise == CopyOfARefund && qAbs(before) != *refund.amount)
                promise = AddsUp;
            const bool held = refund.amount && sum == -*refund.amount;
            countPromise(promise, held);
            const QString where = s("%1, refund %2: %3 cents")
                                      .arg(place(order, rows.value(0)), QString::number(refund.id),
                                           QString::number(sum));
            if (promise == AddsUp)
                QVERIFY2(held, qPrintable(where));
            else if (promise == CopyOfARefund)
                QVERIFY2(sum == -before, qPrintable(where));
            // Where one row takes it all, the lines of zeros go.
            if ((promise == AddsUp || promise == CopyOfARefund) && isOfZeros(refund)
                && rows.size() > 1 && *refund.amount > 0)
                QVERIFY2(cell(rows.first(), s("line_items_total_tax")) != s("0.00"),
                         qPrintable(where));
        }
    }
    for (int promise = NoRows; promise <= AddsUp; ++promise) {
        // A sample may lack the rare ones.
        QVERIFY2(m_tried[promise] > 0 || (promise != AddsUp && !proof::isFull()),
                 promiseNames[promise]);
        // Beyond AddsUp nothing is promised, and the figure tells how often it comes out all the
        // same.
        const char* result = promise == AddsUp ? " ok=" : " covered=0 adding_up=";
        proof::report("properties: refund_" + std::string(promiseNames[promise])
                      + " tried=" + std::to_string(m_tried[promise]) + result
                      + std::to_string(m_held[promise]));
    }
    proof::report("properties: cells tried=" + std::to_string(m_cells)
                  + " ok=" + std::to_string(m_sameCells)
                  + " orders=" + std::to_string(m_rows.size()) + " seed=" + std::to_string(m_seed));
}

void tst_proof_properties::anotherRunGivesTheSameBytes()
{
    const QByteArray bytes = m_folder.exported();
    m_fixture->start();
    m_fixture->runToEnd();
    QVERIFY(!bytes.isEmpty());
    QVERIFY(m_folder.exported() == bytes);
}

LEDORA_APP_TEST_MAIN(tst_proof_properties)
#include "tst_proof_properties.moc"
