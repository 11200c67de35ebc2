#include "app/mainwindow.h"

#include "accounting/order_taxes.h"
#include "app/debuglog.h"
#include "app/globals.h"
#include "app/refundrepair.h"
#include "app/shopurls.h"

#include <QDateTime>
#include <QDebug>
#include <QJsonObject>
#include <QPlainTextEdit>
#include <QTextCursor>

namespace {

QString textOf(const QMap<QString, QVariant>& values, const QString& key,
               const QString& defaultText = {})
{
    const auto it = values.constFind(key);
    return it == values.constEnd() ? defaultText : it->toString();
}

QString switchText(bool on)
{
    return on ? QStringLiteral("1") : QStringLiteral("0");
}

} // namespace

void MainWindow::exportOrder(const QJsonObject& order, QTextStream& pageBuffer)
{
    payment_title_set.insert(
        order.value(QLatin1String("payment_method_title")).toVariant().toString());

    // Asked for each order and put to no use: there is no cache yet.
    [[maybe_unused]] const bool bIdCache = id_cache_use.toBool();

    OrderWork work;
    OrderTaxMap rates;
    ShippingMap shipping;
    int errors = 0;
    GetLocalTaxRates(order, rates);
    GetShippingTax(order, rates, shipping, errors);
    GetLineItems(order, rates, shipping, false, errors, work.lineList);

    work.scan = scanOrder(order);
    if (!bHeaderWritten)
        addHeaderColumns(work);
    // Before the decision on export: a skipped order's invoices are wanted all the same.
    if (germanized_use.toBool())
        work.invoices = fetchInvoices(work.scan.id);
    if (!bHeaderWritten)
        writeHeader(pageBuffer);
    if (!isExported(work.scan))
        return;

    if (work.scan.hasRefunds
        || work.scan.status.compare(QLatin1String("refunded"), Qt::CaseInsensitive) == 0)
        addRefunds(work);
    writeRows(work, pageBuffer);
    ++iExportCount;
    logOrder(work.scan);
}

void MainWindow::addHeaderColumns(const OrderWork& work)
{
    for (const auto& [text, column] : work.scan.fields)
        csvHeaders.append(column);
    const QString line = QStringLiteral("line_items_");
    if (!work.lineList.isEmpty()) {
        const auto& first = work.lineList.first().first;
        for (auto it = first.constBegin(); it != first.constEnd(); ++it)
            csvHeaders.append(quoteHeader(line, it.key()));
    }
    csvHeaders << quoteHeader(line, QStringLiteral("virtual"))
               << quoteHeader(line, QStringLiteral("downloadable"));
    if (germanized_use.toBool())
        csvHeaders << quoteHeader(QStringLiteral("gm_number"))
                   << quoteHeader(QStringLiteral("gm_order_number"))
                   << quoteHeader(QStringLiteral("gm_formatted_number"))
                   << quoteHeader(QStringLiteral("gm_invoice_filename"))
                   << quoteHeader(QStringLiteral("gm_invoice_date_created"));
}

void MainWindow::writeHeader(QTextStream& pageBuffer)
{
    // refund_flags belongs to the host's format; no row fills it.
    for (const char* name :
         {"paypal_fee", "is_refund", "refund_id", "refund_date", "refund_flags", "errors"})
        csvHeaders.append(quoteHeader(QString::fromLatin1(name)));
    pageBuffer << BuildOptionsString() << '\n' << csvHeaders.join(csvSeparator) << '\n';
    bHeaderWritten = true;
}

bool MainWindow::isExported(const OrderScan& scan) const
{
    return isPaypalOrder(scan) ? paypal_use.toBool() : woocommerce_use.toBool();
}

void MainWindow::setField(const QString& value, QStringList& row, const QString& column)
{
    row.resize(csvHeaders.size());
    const qsizetype position = columnLookup.indexOf(csvHeaders, column);
    if (position >= 0)
        row[position] = csvCell(value, csvSeparator);
    else if (isDebugLogged())
        qDebug() << "field not found:" << column;
}

void MainWindow::writeRows(OrderWork& work, QTextStream& pageBuffer)
{
    QStringList baseRow;
    for (const auto& [text, column] : work.scan.fields)
        setField(text, baseRow, column);
    // Carries over from line to line: one without a product shows the flags of the one before.
    int productId = -1;
    for (qsizetype line = 0; line < work.lineList.size(); ++line)
        pageBuffer << lineRow(baseRow, work, line, productId).join(csvSeparator) << '\n';
}

QStringList MainWindow::lineRow(const QStringList& baseRow, OrderWork& work, qsizetype line,
                                int& productId)
{
    const LineRecord& record = work.lineList.at(line);
    QStringList row = baseRow;
    for (auto it = record.first.constBegin(); it != record.first.constEnd(); ++it) {
        setField(it->toString(), row, quoteHeader(QStringLiteral("line_items_"), it.key()));
        if (it.key() == QLatin1String("product_id"))
            productId = it->toInt();
    }
    if (productId >= 0) {
        const auto [isVirtual, isDownloadable] = flagsOfProduct(productId);
        setField(switchText(isVirtual), row, QStringLiteral("\"line_items_virtual\""));
        setField(switchText(isDownloadable), row, QStringLiteral("\"line_items_downloadable\""));
    }

    const QString feeColumn = QStringLiteral("\"paypal_fee\"");
    const QVariant& fee = work.scan.paypalFee;
    setField(line == 0 && fee.isValid() ? fee.toString() : QString(), row, feeColumn);
    if (line > 0 || work.lineList.size() == 1) {
        const bool isRefund = record.second.value(QStringLiteral("is_refund")).toBool();
        if (const auto text = refundFee(isRefund, fee, work.feeDone))
            setField(*text, row, feeColumn);
    }

    setRefundFields(row, record);
    if (germanized_use.toBool())
        setInvoiceFields(row, work.invoices);
    return row;
}

void MainWindow::setRefundFields(QStringList& row, const LineRecord& record)
{
    const auto& context = record.second;
    setField(switchText(context.value(QStringLiteral("is_refund")).toBool()), row,
             QStringLiteral("\"is_refund\""));
    setField(textOf(context, QStringLiteral("refund_id"), QStringLiteral("-1")), row,
             QStringLiteral("\"refund_id\""));
    setField(textOf(context, QStringLiteral("refund_date")), row,
             QStringLiteral("\"refund_date\""));
    setField(textOf(context, QStringLiteral("errors")), row, QStringLiteral("\"errors\""));
}

void MainWindow::setInvoiceFields(QStringList& row, const InvoiceCells& cells)
{
    setField(cells.number, row, QStringLiteral("\"gm_number\""));
    setField(cells.orderNumber, row, QStringLiteral("\"gm_order_number\""));
    setField(cells.formattedNumber, row, QStringLiteral("\"gm_formatted_number\""));
    setField(cells.fileNames, row, QStringLiteral("\"gm_invoice_filename\""));
    setField(cells.dateCreated, row, QStringLiteral("\"gm_invoice_date_created\""));
}

std::pair<bool, bool> MainWindow::flagsOfProduct(int productId)
{
    const auto known = productFlags.constFind(productId);
    if (known != productFlags.constEnd())
        return *known;
    QJsonDocument answer;
    executeRequest(productUrl(csBaseUrl, productId), &answer, iRequestRetries);
    const QJsonObject product = answer.object();
    const std::pair flags {product.value(QLatin1String("virtual")).toVariant().toBool(),
                           product.value(QLatin1String("downloadable")).toVariant().toBool()};
    productFlags.insert(productId, flags);
    return flags;
}

void MainWindow::logOrder(const OrderScan& scan)
{
    const QString date = QDateTime::fromString(scan.dateCreated, Qt::ISODate)
                             .toString(QStringLiteral("dd.MM.yyyy:hh:mm:ss"));
    if (!csPendingLog.isEmpty())
        csPendingLog += QLatin1Char('\n');
    csPendingLog +=
        tr("Zähler: %1, ID: %2, Datum: %3, Email: %4, Name: %5, Type: %6 (%7), Status: %8")
            .arg(QString::number(iExportCount), QString::number(scan.id), date, scan.email,
                 scan.lastName, scan.paymentTitle, scan.paymentMethod, scan.status);
}

void MainWindow::flushLog()
{
    if (csPendingLog.isEmpty())
        return;
    if (logEdit) {
        // Moving it lays the text out, so only if the user has put it elsewhere.
        if (!logEdit->textCursor().atEnd())
            logEdit->moveCursor(QTextCursor::End);
        logEdit->appendPlainText(csPendingLog);
    }
    csPendingLog.clear();
}
