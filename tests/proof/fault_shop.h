#pragma once

#include <QByteArray>

namespace proof {

/// The answer of a small shop with two pages of orders, a refund, a product and two invoices.
/// \param target  path and query as they came over the wire
/// \param base    address of the shop, for the links to the invoice files
QByteArray shopAnswer(const QByteArray& target, const QByteArray& base);

} // namespace proof
