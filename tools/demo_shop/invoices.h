#pragma once

#include "tools/demo_shop/order_model.h"

#include <optional>

namespace demo_shop {

/// An invoice, or with `isCancellation` the one that takes it back.
struct Invoice
{
    qint64 id = 0;
    qint64 orderId = 0;
    qint64 number = 0;
    QString formattedNumber; ///< "R26-00012"
    bool isCancellation = false;
    qint64 created = 0; ///< seconds since 1970 UTC
    qint64 total = 0; ///< cents
    qint64 totalTax = 0;
};

/// The invoices of an order, the oldest first; empty for orders without.
std::vector<Invoice> invoicesOf(const Order& order);

/// A list of invoices as JSON.
QByteArray invoicesJson(const std::vector<Invoice>& invoices, const QString& baseUrl);

/// The answer with an invoice's file: its PDF in Base64 and its name.
QByteArray invoiceFileJson(const Invoice& invoice);

/// One page of PDF that shows some lines of text, which must be Latin-1.
QByteArray onePagePdf(const QStringList& lines);

} // namespace demo_shop
