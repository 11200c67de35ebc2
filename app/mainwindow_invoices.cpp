#include "app/mainwindow.h"

#include "app/invoicedata.h"
#include "app/shopurls.h"

MainWindow::InvoiceCells MainWindow::fetchInvoices(int orderId)
{
    InvoiceCells cells;
    QJsonDocument answer;
    executeRequest(invoicesUrl(csBaseUrl, orderId), &answer, iRequestRetries);
    const QJsonArray invoices = answer.array();
    for (const auto element : invoices) {
        const InvoiceData invoice = readInvoice(element.toObject());
        const QString path = invoicePath(pdfFolderPath, invoice);
        cells.number = invoice.number;
        cells.orderNumber = invoice.orderNumber;
        cells.formattedNumber = invoice.formattedNumber;
        cells.dateCreated = invoice.dateCreated;
        if (!cells.fileNames.isEmpty())
            cells.fileNames += QLatin1Char('|');
        // Whether or not a file is written: the column also names those that exist already.
        cells.fileNames += path;
        for (const QString& href : invoice.hrefs)
            fetchInvoiceFile(href, path);
    }
    return cells;
}

void MainWindow::fetchInvoiceFile(const QString& href, const QString& path)
{
    const auto isKept = [&] { return !germanized_overwrite_pdf.toBool() && QFile::exists(path); };
    if (href.isEmpty() || isKept())
        return;
    QJsonDocument answer;
    executeRequest(QUrl(href), &answer, iRequestRetries);
    const QByteArray bytes = readInvoiceFile(answer.object());
    // Asked again: the file can have come up while the request was open.
    if (bytes.isEmpty() || isKept())
        return;
    QFile file(path);
    if (file.open(QIODevice::ReadWrite | QIODevice::Truncate)
        && (file.write(bytes) != bytes.size() || !file.flush())) {
        // A full disk. A part of the file would be taken for the invoice, by people and by the next
        // run. The file's own remove() refuses while there is something that it can't write.
        file.close();
        QFile::remove(path);
    }
    ++iPdfCount;
}
