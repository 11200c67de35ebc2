#include "tools/demo_shop/invoices.h"

#include "tools/demo_shop/json_writer.h"
#include "tools/demo_shop/shop_time.h"

namespace demo_shop {

namespace {

Invoice makeInvoice(const Order& order, PostOffset post, qint64 number, qint64 created)
{
    Invoice invoice;
    invoice.id = order.postId(post);
    invoice.orderId = order.id;
    invoice.number = number;
    invoice.isCancellation = post == CancellationPost;
    invoice.created = created;
    invoice.total = order.total;
    invoice.totalTax = order.cartTax + order.shippingTax;
    // Two digits of the year of the date, which the shop takes in its own time.
    invoice.formattedNumber =
        QStringLiteral("R%1-%2").arg(localText(created).mid(2, 2)).arg(number, 5, 10, QChar(u'0'));
    return invoice;
}

void writeLink(JsonWriter& json, const char* key, const QString& href)
{
    json.array(key);
    json.object();
    json.text("href", href);
    json.end();
    json.end();
}

void writeInvoice(JsonWriter& json, const Invoice& invoice, const QString& baseUrl)
{
    const QString api = baseUrl + "/wp-json/wc/v3/";
    const QString self = api + "invoices/" + QString::number(invoice.id);
    json.object();
    json.number("id", invoice.id);
    json.text("type", invoice.isCancellation ? "invoice_cancellation" : "invoice");
    json.number("order_id", invoice.orderId);
    json.text("order_number", QString::number(invoice.orderId));
    json.text("number", QString::number(invoice.number));
    json.text("formatted_number", invoice.formattedNumber);
    json.text("date_created", localText(invoice.created));
    json.text("date_created_gmt", gmtText(invoice.created));
    json.text("status", "closed");
    json.text("payment_status", "complete");
    json.text("currency", "EUR");
    json.amount("total", invoice.total);
    json.amount("total_tax", invoice.totalTax);
    json.object("_links");
    writeLink(json, "self", self);
    writeLink(json, "collection", api + "invoices");
    writeLink(json, "order", api + "orders/" + QString::number(invoice.orderId));
    writeLink(json, "pdf", self + "/pdf");
    json.end();
    json.end();
}

} // namespace

std::vector<Invoice> invoicesOf(const Order& order)
{
    if (!order.hasInvoice)
        return {};
    // Each order has two numbers, so that a number follows from the order alone.
    const qint64 number = 2 * order.index + 1;
    std::vector<Invoice> invoices;
    invoices.push_back(makeInvoice(order, InvoicePost, number, *order.completed));
    if (order.status == u"refunded")
        invoices.push_back(
            makeInvoice(order, CancellationPost, number + 1, order.refunds.front().created));
    return invoices;
}

QByteArray invoicesJson(const std::vector<Invoice>& invoices, const QString& baseUrl)
{
    JsonWriter json;
    json.array();
    for (const Invoice& invoice : invoices)
        writeInvoice(json, invoice, baseUrl);
    json.end();
    return json.bytes();
}

QByteArray invoiceFileJson(const Invoice& invoice)
{
    const QString title =
        invoice.isCancellation ? QStringLiteral("Storno") : QStringLiteral("Rechnung");
    const QString amount =
        QString::fromLatin1(amountText(invoice.total)).replace(QLatin1Char('.'), QLatin1Char(','));
    const QByteArray pdf =
        onePagePdf({QStringLiteral("%1 %2").arg(title, invoice.formattedNumber),
                    QStringLiteral("Bestellung %1").arg(invoice.orderId),
                    QStringLiteral("Gesamtbetrag %1 EUR").arg(amount),
                    QStringLiteral("Erfundener Beleg für Vorführungen (ungültig)")});
    JsonWriter json;
    json.object();
    json.text("file", QString::fromLatin1(pdf.toBase64()));
    json.text("filename", invoice.formattedNumber + ".pdf");
    json.end();
    return json.bytes();
}

} // namespace demo_shop
