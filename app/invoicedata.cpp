#include "app/invoicedata.h"

#include "accounting/shopdates.h"

#include <QJsonArray>

namespace {

QString textOf(const QJsonObject& object, QLatin1String key)
{
    return object.value(key).toVariant().toString();
}

} // namespace

InvoiceData readInvoice(const QJsonObject& invoice)
{
    InvoiceData data;
    data.number = textOf(invoice, QLatin1String("number"));
    data.orderNumber = textOf(invoice, QLatin1String("order_number"));
    data.formattedNumber = textOf(invoice, QLatin1String("formatted_number"));
    data.dateCreated = ConvertUTCDateToLocalDate(invoice, QStringLiteral("date_created"));
    const QJsonArray links =
        invoice.value(QLatin1String("_links")).toObject().value(QLatin1String("pdf")).toArray();
    for (const auto link : links)
        data.hrefs.append(textOf(link.toObject(), QLatin1String("href")));
    return data;
}

QString invoicePath(const QString& folder, const InvoiceData& invoice)
{
    return folder + invoice.formattedNumber + QLatin1String(".pdf");
}

QByteArray readInvoiceFile(const QJsonObject& answer)
{
    return QByteArray::fromBase64(textOf(answer, QLatin1String("file")).toUtf8());
}
