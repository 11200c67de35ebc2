#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

/// One invoice of the Germanized extension.
struct InvoiceData
{
    QString number;
    QString orderNumber;
    QString formattedNumber;
    /// Local ISO date; empty if unknown.
    QString dateCreated;
    /// Addresses of its files, as sent; may hold empty ones.
    QStringList hrefs;
};

/// Reads one element of the invoice list. Missing fields read as empty text.
InvoiceData readInvoice(const QJsonObject& invoice);

/// Path of an invoice's file. \a folder ends in a slash. The number comes from the shop and is used
/// as it is, a path separator in it included.
QString invoicePath(const QString& folder, const InvoiceData& invoice);

/// The bytes of an answer that holds a file in Base64; empty if it holds none.
QByteArray readInvoiceFile(const QJsonObject& answer);
