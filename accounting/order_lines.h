#pragma once

#include "accounting/order_taxes.h"

#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>

#include <utility>

/// One line of the export. `first` holds the fields of the line item with "tax_rate" and
/// "shipping_part" (texts); `second` the marks "is_refund" (bool), "refund_id" (int, -1 for an
/// order), "refund_date" (local date as text, empty for an order) and, if not 0, "errors" (int).
using LineRecord = std::pair<QMap<QString, QVariant>, QMap<QString, QVariant>>;

/// Makes the line records of an order or a refund.
///
/// The whole shipping part of a rate goes to the first line with this rate; a line without taxes
/// takes the untaxed part. A part whose rate no line has goes to none.
/// \param order     the order, or the refund if `isRefund` is true
/// \param rates     its tax rates
/// \param shipping  its shipping parts, as `GetShippingTax` gives them
/// \param errors    flags to hand on in the records
/// \param records   in/out: the lines of an order replace them, those of a refund are appended
/// \return          the number of line items
int GetLineItems(const QJsonObject& order,
                 const std::map<int, std::tuple<QString, QString, QString>>& rates,
                 const std::map<int, double>& shipping, bool isRefund, int errors,
                 QList<std::pair<QMap<QString, QVariant>, QMap<QString, QVariant>>>& records);
