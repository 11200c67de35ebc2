#include "app/refundrepair.h"

#include <QtTest>

namespace {

const QString keyTotal = QStringLiteral("total");
const QString keyTax = QStringLiteral("total_tax");

LineRecord line(const QVariant& total, const QVariant& tax, int id = 0)
{
    return {{{QStringLiteral("id"), id}, {keyTotal, total}, {keyTax, tax}},
            {{QStringLiteral("is_refund"), false}, {QStringLiteral("refund_id"), -1}}};
}

QJsonObject refundOf(const QJsonValue& amount)
{
    return {{QStringLiteral("amount"), amount}};
}

RefundLines at(qsizetype before, int added, int errors = 0)
{
    return {before, added, errors, QStringLiteral("2026-03-01T12:00:00")};
}

/// "total total_tax" of each line.
QStringList amounts(const QList<LineRecord>& lines)
{
    QStringList texts;
    for (const LineRecord& record : lines)
        texts.append(record.first.value(keyTotal).toString() + QLatin1Char(' ')
                     + record.first.value(keyTax).toString());
    return texts;
}

/// The amounts after a repair, from the position \a place.before on.
QStringList repaired(const QJsonValue& amount, QList<LineRecord> lines, const RefundLines& place)
{
    int cursor = 0;
    repairRefund(refundOf(amount), place, lines, cursor);
    return amounts(lines.mid(place.before));
}

using Texts = QStringList;

QString s(const char* text)
{
    return QString::fromLatin1(text);
}

} // namespace

class tst_refundrepair : public QObject
{
    Q_OBJECT

private slots:
    void linesThatAddUpStay_data();
    void linesThatAddUpStay();
    void theFirstLineTakesTheWholeAmount();
    void aRepairedAmountHasSixDigits_data();
    void aRepairedAmountHasSixDigits();
    void realTotalsKeepTheOtherLines();
    void totalsThatRoundToZeroCountAsZero();
    void taxAloneCountsAsZeroTotals();
    void withTooFewEarlierLinesNoneIsMirrored();
    void aFullRefundMirrorsTheLinesBefore();
    void mirroredAmountsHaveSixDigits();
    void aMirroredZeroHasNoSign();
    void theLinesDirectlyBeforeMayBelongToAnotherRefund();
    void onlyTheLastLinesBeforeAreMirrored();
    void anAmountThatFitsNoLinesCollapsesTheRefund();
    void nullAsAmountIsAnAmountOfZero();
    void flaggedShippingLeavesTheLinesAlone();
    void aRefundWithoutLinesIsPassedOver_data();
    void aRefundWithoutLinesIsPassedOver();
    void theCursorGrowsByTheLinesAdded();
    void theCursorGrowsPastACollapsedList();
    void withoutAmountAZeroLineBecomesTheRefund();
    void withoutAmountOpposedAmountsAreNegated();
    void withoutAmountALineWithAValueStays();
    void withoutAmountTheCursorMayBeBeyondTheList();
    void theRefundFee_data();
    void theRefundFee();
    void theRefundFeeIsWrittenOnce();
};

void tst_refundrepair::linesThatAddUpStay_data()
{
    QTest::addColumn<QJsonValue>("amount");
    QTest::addColumn<QVariant>("total");
    QTest::addColumn<QVariant>("tax");
    QTest::newRow("negative texts")
        << QJsonValue("11.90") << QVariant("-10.00") << QVariant("-1.90");
    QTest::newRow("positive texts") << QJsonValue("11.90") << QVariant("10.00") << QVariant("1.90");
    QTest::newRow("numbers") << QJsonValue(11.9) << QVariant(-10) << QVariant(-1.9);
    QTest::newRow("negative amount")
        << QJsonValue("-11.90") << QVariant("-10.00") << QVariant("-1.90");
    QTest::newRow("equal once rounded")
        << QJsonValue("11.90") << QVariant("-10.001") << QVariant("-1.902");
    QTest::newRow("nothing paid back")
        << QJsonValue("0.00") << QVariant("0.00") << QVariant("0.00");
}

void tst_refundrepair::linesThatAddUpStay()
{
    QFETCH(QJsonValue, amount);
    QFETCH(QVariant, total);
    QFETCH(QVariant, tax);
    QList<LineRecord> lines {line("5.00", "0.95"), line(total, tax)};
    const QList<LineRecord> unchanged = lines;
    int cursor = 0;
    repairRefund(refundOf(amount), at(1, 1), lines, cursor);
    QCOMPARE(lines, unchanged);
}

void tst_refundrepair::theFirstLineTakesTheWholeAmount()
{
    QList<LineRecord> lines {line("20.00", "3.80", 1), line("-10.00", "-1.90", 2)};
    const LineRecord own = lines.first();
    int cursor = 0;
    repairRefund(refundOf(s("15.00")), at(1, 1), lines, cursor);
    QCOMPARE(lines.first(), own);
    QCOMPARE(lines.at(1).first.value(keyTotal), QVariant(s("-15")));
    QCOMPARE(lines.at(1).first.value(keyTotal).typeId(), QMetaType::QString);
    QCOMPARE(lines.at(1).first.value(keyTax), QVariant(s("0.00")));
    QCOMPARE(lines.at(1).first.value(keyTax).toString(), s("0.00"));
    QCOMPARE(lines.at(1).first.value(s("id")).toInt(), 2);
}

void tst_refundrepair::aRepairedAmountHasSixDigits_data()
{
    QTest::addColumn<QJsonValue>("amount");
    QTest::addColumn<QString>("expected");
    QTest::newRow("no decimals") << QJsonValue("5.00") << "-5";
    QTest::newRow("two decimals") << QJsonValue("1234.56") << "-1234.56";
    QTest::newRow("12345.67") << QJsonValue("12345.67") << "-12345.7";
    QTest::newRow("six digits") << QJsonValue("123456.00") << "-123456";
    QTest::newRow("millions") << QJsonValue("1234567.89") << "-1.23457e+06";
    QTest::newRow("a number") << QJsonValue(12345.67) << "-12345.7";
    QTest::newRow("a negative amount") << QJsonValue("-7.50") << "-7.5";
}

void tst_refundrepair::aRepairedAmountHasSixDigits()
{
    QFETCH(QJsonValue, amount);
    QFETCH(QString, expected);
    QCOMPARE(repaired(amount, {line("-1.00", "0.00")}, at(0, 1)),
             Texts({expected + QStringLiteral(" 0.00")}));
}

void tst_refundrepair::realTotalsKeepTheOtherLines()
{
    QCOMPARE(repaired(s("15.00"),
                      {line("15.00", "0.00"), line("-4.00", "-0.76"), line("-5.00", "-0.95")},
                      at(1, 2)),
             Texts({s("-15 0.00"), s("-5.00 -0.95")}));
}

void tst_refundrepair::totalsThatRoundToZeroCountAsZero()
{
    // 0.004 is nothing: the order's line is mirrored. 0.005 rounds up: the first line takes it all.
    QCOMPARE(repaired(s("11.90"), {line("10.00", "1.90"), line("0.004", "0.00")}, at(1, 1)),
             Texts({s("-10 -1.9")}));
    QCOMPARE(repaired(s("11.90"), {line("10.00", "1.90"), line("0.0051", "0.00")}, at(1, 1)),
             Texts({s("-11.9 0.00")}));
}

void tst_refundrepair::taxAloneCountsAsZeroTotals()
{
    QCOMPARE(repaired(s("11.90"), {line("10.00", "1.90"), line("0.00", "-1.90")}, at(1, 1)),
             Texts({s("-10 -1.9")}));
}

void tst_refundrepair::withTooFewEarlierLinesNoneIsMirrored()
{
    QCOMPARE(repaired(s("11.90"),
                      {line("10.00", "1.90"), line("0.00", "0.00"), line("0.00", "0.00")},
                      at(1, 2)),
             Texts({s("-11.9 0.00"), s("0.00 0.00")}));
}

void tst_refundrepair::aFullRefundMirrorsTheLinesBefore()
{
    QList<LineRecord> lines {line("10.00", "1.90", 1), line("20.50", "3.90", 2),
                             line("0.00", "0.00", 3), line("0.00", "0.00", 4)};
    int cursor = 0;
    repairRefund(refundOf(s("36.30")), at(2, 2), lines, cursor);
    QCOMPARE(amounts(lines),
             Texts({s("10.00 1.90"), s("20.50 3.90"), s("-10 -1.9"), s("-20.5 -3.9")}));
    QCOMPARE(lines.at(2).first.value(s("id")).toInt(), 3);
    QCOMPARE(lines.at(2).first.value(keyTax).typeId(), QMetaType::QString);
}

void tst_refundrepair::mirroredAmountsHaveSixDigits()
{
    QCOMPARE(repaired(s("14691.35"), {line("12345.67", "2345.68"), line("0", "0")}, at(1, 1)),
             Texts({s("-12345.7 -2345.68")}));
}

void tst_refundrepair::aMirroredZeroHasNoSign()
{
    QCOMPARE(repaired(s("10.00"), {line("10.00", "0.00"), line("0.00", "0.00")}, at(1, 1)),
             Texts({s("-10 0")}));
}

void tst_refundrepair::theLinesDirectlyBeforeMayBelongToAnotherRefund()
{
    QCOMPARE(repaired(s("5.00"),
                      {line("10.00", "1.90"), line("-5.00", "0.00"), line("0.00", "0.00")},
                      at(2, 1)),
             Texts({s("5 0")}));
}

void tst_refundrepair::onlyTheLastLinesBeforeAreMirrored()
{
    QCOMPARE(repaired(s("11.90"),
                      {line("11.90", "0.00"), line("10.00", "1.90"), line("0.00", "0.00")},
                      at(2, 1)),
             Texts({s("-10 -1.9")}));
}

void tst_refundrepair::anAmountThatFitsNoLinesCollapsesTheRefund()
{
    QList<LineRecord> lines {line("10.00", "1.90"), line("20.00", "3.80"), line("0.00", "0.00", 3),
                             line("0.00", "0.00", 4)};
    int cursor = 0;
    repairRefund(refundOf(s("30.00")), at(2, 2), lines, cursor);
    QCOMPARE(amounts(lines), Texts({s("10.00 1.90"), s("20.00 3.80"), s("-30 0.00")}));
    QCOMPARE(lines.last().first.value(s("id")).toInt(), 3);
}

void tst_refundrepair::nullAsAmountIsAnAmountOfZero()
{
    QCOMPARE(repaired(QJsonValue::Null, {line("0.00", "0.00")}, at(0, 1)), Texts({s("0.00 0.00")}));
    QCOMPARE(repaired(QJsonValue::Null, {line("-5.00", "0.00")}, at(0, 1)), Texts({s("0 0.00")}));
}

void tst_refundrepair::flaggedShippingLeavesTheLinesAlone()
{
    QList<LineRecord> lines {line("10.00", "1.90"), line("0.00", "0.00")};
    const QList<LineRecord> unchanged = lines;
    int cursor = 1;
    repairRefund(refundOf(s("11.90")), at(1, 1, 1), lines, cursor);
    QCOMPARE(lines, unchanged);
    QCOMPARE(cursor, 1);
    repairRefund({}, at(1, 1, 1), lines, cursor);
    QCOMPARE(lines, unchanged);
    QCOMPARE(cursor, 1);
}

void tst_refundrepair::aRefundWithoutLinesIsPassedOver_data()
{
    QTest::addColumn<QJsonObject>("refund");
    QTest::newRow("with an amount") << refundOf(s("5.00"));
    QTest::newRow("without an amount") << QJsonObject();
}

void tst_refundrepair::aRefundWithoutLinesIsPassedOver()
{
    QFETCH(QJsonObject, refund);
    QList<LineRecord> lines {line("0.00", "0.00")};
    const QList<LineRecord> unchanged = lines;
    int cursor = 0;
    repairRefund(refund, at(1, 0), lines, cursor);
    QCOMPARE(lines, unchanged);
    QCOMPARE(cursor, 0);
}

void tst_refundrepair::theCursorGrowsByTheLinesAdded()
{
    QList<LineRecord> lines {line("10.00", "1.90"), line("-5.00", "0.00"), line("-6.90", "0.00")};
    int cursor = 0;
    repairRefund(refundOf(s("11.90")), at(1, 2), lines, cursor);
    QCOMPARE(cursor, 2);
    repairRefund({}, at(1, 2), lines, cursor);
    QCOMPARE(cursor, 4);
}

void tst_refundrepair::theCursorGrowsPastACollapsedList()
{
    QList<LineRecord> lines {line("10.00", "1.90"), line("10.00", "1.90"), line("0.00", "0.00"),
                             line("0.00", "0.00")};
    int cursor = 0;
    repairRefund(refundOf(s("5.00")), at(2, 2), lines, cursor);
    QCOMPARE(lines.size(), 3);
    QCOMPARE(cursor, 2);

    // The next refund's line is looked for one place further on than its own.
    lines.append(line("0.00", "0.00", 9));
    cursor = 4;
    const QList<LineRecord> unchanged = lines;
    repairRefund({}, at(3, 1), lines, cursor);
    QCOMPARE(lines, unchanged);
    QCOMPARE(cursor, 5);
}

void tst_refundrepair::withoutAmountAZeroLineBecomesTheRefund()
{
    QList<LineRecord> lines {line("0.00", "0.00", 11), line("0.00", "0.00", 12)};
    const LineRecord second = lines.at(1);
    int cursor = 0;
    repairRefund({}, at(1, 1), lines, cursor);
    QCOMPARE(lines.at(1), second);
    const auto& [fields, marks] = lines.first();
    QCOMPARE(fields.value(keyTotal).typeId(), QMetaType::Double);
    QCOMPARE(fields.value(keyTotal).toDouble(), 0.0);
    QCOMPARE(fields.value(keyTotal).toString(), s("0"));
    QCOMPARE(fields.value(keyTax).toString(), s("0"));
    QCOMPARE(marks.value(s("is_refund")), QVariant(true));
    QCOMPARE(marks.value(s("refund_id")).toInt(), 11);
    QCOMPARE(marks.value(s("refund_date")).toString(), s("2026-03-01T12:00:00"));
}

void tst_refundrepair::withoutAmountOpposedAmountsAreNegated()
{
    QList<LineRecord> lines {line("12345.67", "-12345.671")};
    int cursor = 0;
    repairRefund({}, at(0, 1), lines, cursor);
    // Kept as numbers, which print in full.
    QCOMPARE(amounts(lines), Texts({s("-12345.67 12345.671")}));
    QVERIFY(lines.first().second.value(s("is_refund")).toBool());
}

void tst_refundrepair::withoutAmountALineWithAValueStays()
{
    QList<LineRecord> lines {line("10.00", "1.90"), line("0.00", "0.00")};
    const QList<LineRecord> unchanged = lines;
    int cursor = 0;
    repairRefund({}, at(1, 1), lines, cursor);
    QCOMPARE(lines, unchanged);
    QCOMPARE(cursor, 1);
}

void tst_refundrepair::withoutAmountTheCursorMayBeBeyondTheList()
{
    QList<LineRecord> lines {line("0.00", "0.00")};
    const QList<LineRecord> unchanged = lines;
    int cursor = 1;
    repairRefund({}, at(0, 1), lines, cursor);
    QCOMPARE(lines, unchanged);
    QCOMPARE(cursor, 2);
}

void tst_refundrepair::theRefundFee_data()
{
    QTest::addColumn<bool>("isRefund");
    QTest::addColumn<QVariant>("fee");
    QTest::addColumn<bool>("wasDone");
    QTest::addColumn<QString>("expected"); // null: the cell stays
    QTest::addColumn<bool>("isDone");

    const QString stays;
    QTest::newRow("no refund") << false << QVariant(1.0) << false << stays << false;
    QTest::newRow("written before") << true << QVariant(1.0) << true << stays << true;
    QTest::newRow("no fee") << true << QVariant() << false << stays << false;
    QTest::newRow("empty fee") << true << QVariant(s("")) << false << stays << false;
    QTest::newRow("fee of zero") << true << QVariant(0.0) << false << stays << true;
    QTest::newRow("fee that rounds to zero") << true << QVariant(0.004) << false << stays << true;
    QTest::newRow("fee that is no number") << true << QVariant(s("x")) << false << stays << true;
    QTest::newRow("smallest fee") << true << QVariant(0.01) << false << "0.34" << true;
    QTest::newRow("fee of the fixed part") << true << QVariant(0.35) << false << "0" << true;
    QTest::newRow("fee") << true << QVariant(1.35) << false << "-1" << true;
    QTest::newRow("fee as text") << true << QVariant(s("2.10")) << false << "-1.75" << true;
    QTest::newRow("negative fee") << true << QVariant(-1.0) << false << "1.35" << true;
    QTest::newRow("six digits") << true << QVariant(12345.67) << false << "-12345.3" << true;
}

void tst_refundrepair::theRefundFee()
{
    QFETCH(bool, isRefund);
    QFETCH(QVariant, fee);
    QFETCH(bool, wasDone);
    QFETCH(QString, expected);
    bool feeDone = wasDone;
    const std::optional<QString> text = refundFee(isRefund, fee, feeDone);
    QCOMPARE(text.has_value(), !expected.isNull());
    QCOMPARE(text.value_or(QString()), expected);
    QTEST(feeDone, "isDone");
}

void tst_refundrepair::theRefundFeeIsWrittenOnce()
{
    bool feeDone = false;
    QVERIFY(!refundFee(false, 1.35, feeDone));
    QCOMPARE(refundFee(true, 1.35, feeDone), std::optional(s("-1")));
    QVERIFY(!refundFee(true, 1.35, feeDone));
}

QTEST_APPLESS_MAIN(tst_refundrepair)
#include "tst_refundrepair.moc"
