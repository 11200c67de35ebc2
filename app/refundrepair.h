#pragma once

#include "accounting/order_lines.h"

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QVariant>

#include <optional>

/// One refund's place in an order's line list.
struct RefundLines
{
    qsizetype before = 0; ///< size of the list before the refund's lines were added
    int added = 0; ///< lines that the refund added
    int errors = 0; ///< flags of its shipping split
    QString date; ///< local ISO date of the refund
};

/// Makes a refund's lines in \a lines add up to what the shop paid back.
/// \param cursor  in/out: position that a refund without an amount looks at; starts at 0 for an
///                order and counts from the start of the list, the order's own lines first
void repairRefund(const QJsonObject& refund, const RefundLines& place, QList<LineRecord>& lines,
                  int& cursor);

/// Fee cell of a refund row: 0.35 less the fee, in the order's currency.
/// \param fee      the order's fee, invalid if it has none
/// \param feeDone  in/out: set once the order's refund fee has been dealt with
/// \return         the cell's text, or nothing if the cell stays as it is
std::optional<QString> refundFee(bool isRefund, const QVariant& fee, bool& feeDone);
