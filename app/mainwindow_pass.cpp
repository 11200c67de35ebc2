#include "app/mainwindow.h"

#include "accounting/order_taxes.h"
#include "app/debuglog.h"
#include "app/networkerror.h"
#include "app/shopurls.h"

#include <QCoreApplication>
#include <QDebug>
#include <QJsonObject>
#include <QMessageBox>
#include <QTimer>

namespace {

const int iOrdersPerPage = 100;

std::optional<QDate> validDate(const QVariant& value)
{
    const QDate date = value.toDate();
    return date.isValid() ? std::optional(date) : std::nullopt;
}

} // namespace

void MainWindow::OnTimer()
{
    // Before bBusy: a tick inside a request of the last page ends the run at once, and the open
    // pass goes on behind the question.
    if (bFinished) {
        endRun();
        return;
    }
    if (!takeBaseUrl() || !outFile.isOpen())
        return; // keeps ticking, shows nothing
    if (bBusy) {
        showWaiting();
        return;
    }
    const PageState before = beginPass();
    try {
        QString page;
        QTextStream pageBuffer(&page);
        loadTaxRates();
        exportOrders(fetchOrders(), pageBuffer);
        pageBuffer.flush();
        commitPage(page);
    } catch (const std::runtime_error& failure) {
        rollBack(before, failure);
    }
    endPass();
}

bool MainWindow::takeBaseUrl()
{
    csBaseUrl = mainUrlText();
    return !csBaseUrl.isEmpty();
}

PageState MainWindow::beginPass()
{
    bBusy = true;
    bError = false;
    csErrorText.clear();
    EnableStartButtons(false);
    outStream.flush();
    return {csvHeaders, bFinished, bHeaderWritten, iExportCount, iPage};
}

void MainWindow::loadTaxRates()
{
    if (!globalTaxRates.empty())
        return;
    for (int page = 1;; ++page) {
        QJsonDocument answer;
        executeRequest(taxesUrl(csBaseUrl, page), &answer, iRequestRetries);
        if (isDebugLogged())
            qDebug() << "tax-page:" << page + 1;
        const QJsonArray rates = answer.array();
        if (rates.isEmpty())
            return;
        for (const auto entry : rates) {
            const QJsonObject rate = entry.toObject();
            globalTaxRates[rate.value(QLatin1String("id")).toVariant().toInt()] =
                rate.value(QLatin1String("rate")).toVariant().toString();
        }
    }
}

QJsonArray MainWindow::fetchOrders()
{
    OrderWindow window;
    if (date_filter_use.toBool()) {
        window.after = validDate(date_filter_after);
        window.before = validDate(date_filter_before);
    }
    const QUrl url = ordersUrl(csBaseUrl, iPage, window);
    ++iPage;
    QJsonDocument answer;
    executeRequest(url, &answer, iRequestRetries);
    QJsonArray orders = answer.array();
    bFinished = orders.size() < iOrdersPerPage;
    return orders;
}

bool MainWindow::isStopWanted() const
{
    // A window that was closed without an export needs no further order; one that was closed after
    // the hand-over still wants its page whole.
    return iCancelType != CancelNone || bGivenUp;
}

void MainWindow::exportOrders(const QJsonArray& orders, QTextStream& pageBuffer)
{
    bTxIdOnly = false;
    for (const auto order : orders) {
        exportOrder(order.toObject(), pageBuffer);
        if (isStopWanted())
            return;
    }
}

void MainWindow::commitPage(const QString& page)
{
    if (!bGivenUp)
        writeWhole(page);
    iPageRetries = 0;
}

void MainWindow::writeWhole(const QString& page)
{
    const qint64 size = outFile.size();
    outStream << page;
    outStream.flush();
    if (outStream.status() == QTextStream::Ok && outFile.error() == QFileDevice::NoError)
        return;
    // A full disk. The host must not import half a page, so the part that was written goes again,
    // and what the file still holds back goes with the file's closing.
    const QString error =
        tr("Dateifehler:\r\n%1\r\n%2)").arg(outFile.fileName(), outFile.errorString());
    outFile.close();
    QFile::resize(outFile.fileName(), size);
    attachExport(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text);
    throw std::runtime_error(error.toStdString());
}

void MainWindow::rollBack(const PageState& before, const std::runtime_error& failure)
{
    csvHeaders = before.csvHeaders;
    iExportCount = before.iExportCount;
    iPage = before.iPage;
    bFinished = before.bFinished;
    bHeaderWritten = before.bHeaderWritten;
    if (!bHeaderWritten)
        globalTaxRates.clear();
    csErrorText = QString::fromUtf8(failure.what());
    ++iPageRetries;
    if (bGivenUp)
        return; // nobody is left to tell

    if (isPageRepeated(iPageRetries)) {
        showStatus(tr("Netzwerkfehler auf Seite %1, Wiederholung %2/%3...")
                       .arg(QString::number(iPage), QString::number(iPageRetries),
                            QString::number(iPassesPerPage)));
        if (iCancelType != CancelNone)
            return;
        // The question over the last page has stopped the timer and freed the buttons, and the page
        // is not written yet.
        EnableStartButtons(false);
        if (!runTimer->isActive())
            runTimer->start();
        return;
    }
    bFinished = true;
    bError = true;
    flushLog();
    QMessageBox::information(
        this, tr("Fehler:"),
        tr("Export auf Seite %1 nach %2 Versuchen fehlgeschlagen:\n%3")
            .arg(QString::number(iPage), QString::number(iPassesPerPage), csErrorText),
        QMessageBox::Ok);
}

void MainWindow::endPass()
{
    flushLog();
    // A copy, since Reset clears the request.
    const CancelType cancel = iCancelType;
    if (cancel != CancelNone) {
        if (cancel == CancelRestart || cancel == CancelClose || !bHeaderWritten)
            Reset();
        showStatus(tr("Angehalten."));
        EnableStartButtons(true);
        if (cancel == CancelClose) {
            close();
            endOfClosedPass();
            return;
        }
    }
    bBusy = false;
    iCancelType = CancelNone;
    if (bFinished) {
        if (bError)
            outFile.resize(0);
        outFile.close();
    }
    endOfClosedPass();
}

void MainWindow::endOfClosedPass()
{
    if (!bClosedInPass && !pageGuard)
        return;
    // Handed over, but not yet whole: a failed page is repeated behind the closed window.
    if (bAccepted && !bFinished && runTimer->isActive())
        return;
    pageGuard.reset();
    // The quit that closing the window posted may have got lost in an event loop that was entered
    // since; without another one the process would live on with no window.
    QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
}
