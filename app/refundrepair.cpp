#include "app/refundrepair.h"

#include "accounting/rounding.h"
#include "app/debuglog.h"

#include <QDebug>

#include <cmath>

namespace {

const QString keyTotal = QStringLiteral("total");
const QString keyTotalTax = QStringLiteral("total_tax");

bool equalMoney(double a, double b)
{
    return Round(a, 2) == Round(b, 2);
}

double numberOf(const LineRecord& line, const QString& key)
{
    return line.first.value(key).toDouble();
}

struct Amounts
{
    double total = 0;
    double tax = 0;
};

Amounts amountsOf(const LineRecord& line)
{
    return {numberOf(line, keyTotal), numberOf(line, keyTotalTax)};
}

void setTexts(LineRecord& line, const QString& total, const QString& tax)
{
    line.first.insert(keyTotal, total);
    line.first.insert(keyTotalTax, tax);
}

Amounts sumOf(const QList<LineRecord>& lines, qsizetype from, qsizetype to)
{
    Amounts sum;
    for (qsizetype i = from; i < to; ++i) {
        const Amounts amounts = amountsOf(lines.at(i));
        sum.total += amounts.total;
        sum.tax += amounts.tax;
    }
    return sum;
}

/// A refund without an amount: a line that came to nothing is marked as the refund itself.
void repairWithoutAmount(const RefundLines& place, QList<LineRecord>& lines, int cursor)
{
    if (cursor >= lines.size())
        return;
    LineRecord& line = lines[cursor];
    const Amounts amounts = amountsOf(line);
    if (!equalMoney(0, amounts.total + amounts.tax))
        return;
    line.first.insert(keyTotal, -amounts.total);
    line.first.insert(keyTotalTax, -amounts.tax);
    line.second.insert(QStringLiteral("is_refund"), true);
    line.second.insert(QStringLiteral("refund_id"), line.first.value(QStringLiteral("id")));
    line.second.insert(QStringLiteral("refund_date"), place.date);
}

void repairWithAmount(double amount, const RefundLines& place, QList<LineRecord>& lines)
{
    const qsizetype before = place.before;
    const Amounts own = sumOf(lines, before, lines.size());
    if (equalMoney(std::abs(own.total + own.tax), amount))
        return;

    if (isDebugLogged())
        qDebug() << "refund lines:" << lines;
    // Six significant digits, here and below: the host's format has no more.
    setTexts(lines[before], QString::number(-amount), QStringLiteral("0.00"));
    if (!equalMoney(own.total, 0))
        return; // real values that disagree: the first line carries it all

    // A refund by amount has lines of zero. What it paid back may be the lines just before it.
    if (before < place.added)
        return;
    const qsizetype first = before - place.added;
    const Amounts earlier = sumOf(lines, first, before);
    if (equalMoney(std::abs(earlier.total + earlier.tax), amount)) {
        for (qsizetype i = 0; i < place.added && before + i < lines.size(); ++i) {
            const Amounts mirrored = amountsOf(lines.at(first + i));
            setTexts(lines[before + i], QString::number(-mirrored.total),
                     QString::number(-mirrored.tax));
        }
        return;
    }
    lines.resize(before + 1);
    if (isDebugLogged())
        qDebug() << "line_items.size:" << lines.size();
}

} // namespace

void repairRefund(const QJsonObject& refund, const RefundLines& place, QList<LineRecord>& lines,
                  int& cursor)
{
    // Flagged shipping makes every sum unsafe, so such lines stay as they came.
    if (place.errors > 0 || place.added <= 0)
        return;
    const auto amount = refund.constFind(QLatin1String("amount"));
    if (amount == refund.constEnd())
        repairWithoutAmount(place, lines, cursor);
    else
        repairWithAmount(std::abs(amount->toVariant().toDouble()), place, lines);
    cursor += place.added;
}

std::optional<QString> refundFee(bool isRefund, const QVariant& fee, bool& feeDone)
{
    // What the payment service keeps of its fee when a payment is returned.
    const double fixedPart = 0.35;

    if (!isRefund || feeDone || !fee.isValid())
        return std::nullopt;
    const QString text = fee.toString();
    if (text.isEmpty())
        return std::nullopt;
    feeDone = true;
    const double value = text.toDouble();
    if (equalMoney(value, 0))
        return std::nullopt;
    return QString::number(fixedPart - value);
}
