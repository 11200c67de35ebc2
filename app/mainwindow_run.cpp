#include "app/mainwindow.h"

#include "accounting/order_taxes.h"
#include "app/debuglog.h"

#include <QDebug>
#include <QDir>
#include <QLabel>
#include <QMessageBox>
#include <QNetworkAccessManager>
#include <QPushButton>
#include <QTimer>

using namespace mod_form_qt;

namespace {

const int iTransferTimeoutMs = 60000;

} // namespace

void MainWindow::showStatus(const QString& text)
{
    if (!statusLabel)
        return;
    statusLabel->setText(boldMessage(text));
    // The label's name hides its text from a screen reader, which reads this out then.
    statusLabel->setAccessibleDescription(text);
}

void MainWindow::StartTimer()
{
    // A window that is being closed starts nothing: a run would empty what the host waits for.
    if (bGivenUp || bAccepted || waitTimer->isActive())
        return;
    StopTimer(CancelRestart);
    waitTimer->start(0);
}

void MainWindow::StopTimer(CancelType type)
{
    // An export that was handed over is written to its end.
    if (!bBusy || bAccepted)
        return;
    if (runTimer->isActive()) {
        runTimer->stop();
        showStatus(tr("Anhalten..."));
    }
    iCancelType = type;
}

void MainWindow::OnWaitTimer()
{
    if (bBusy)
        return;
    waitTimer->stop();
    Reset();
    if (!runTimer->isActive()) {
        runTimer->start(iTickMs);
        // The message of a file that could not be opened stays.
        if (outFile.isOpen())
            showStatus(tr("Gestartet."));
    }
}

void MainWindow::resetState()
{
    bBusy = false;
    iPage = 1;
    bFinished = false;
    bHeaderWritten = false;
    iExportCount = 0;
    iPageRetries = 0;
    iCancelType = CancelNone;
    iBytesReceived = 0;
    iPdfCount = 0;
    csvHeaders.clear();
    runClock.start();
}

void MainWindow::Reset()
{
    resetState();
    if (networkManager)
        networkManager->deleteLater();
    networkManager = new QNetworkAccessManager(this);
    networkManager->setTransferTimeout(iTransferTimeoutMs);

    pdfFolderPath = germanized_pdf_folder.toString();
    if (!pdfFolderPath.isEmpty() && !pdfFolderPath.endsWith(QLatin1Char('/'))
        && !pdfFolderPath.endsWith(QLatin1Char('\\')))
        pdfFolderPath += QLatin1Char('/');
    QDir().mkpath(pdfFolderPath);

    outFile.close();
    if (!bGivenUp)
        openExport();
}

void MainWindow::openExport()
{
    outFile.setFileName(outputFilePath);
    if (!attachExport(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text))
        showStatus(tr("Dateifehler:\r\n%1\r\n%2)").arg(outFile.fileName(), outFile.errorString()));
}

bool MainWindow::attachExport(QIODevice::OpenMode mode)
{
    if (!outFile.open(mode))
        return false;
    outStream.setDevice(&outFile);
    outStream.setEncoding(QStringConverter::Utf8);
    return true;
}

void MainWindow::EnableStartButtons(bool enable)
{
    if (auto* button = okButton())
        button->setEnabled(enable);
    if (auto* button = WIDGET_INFO::widget<QPushButton>(&optionsMap, "start_button", E_BUTTON))
        button->setEnabled(enable);
}

QPushButton* MainWindow::okButton() const
{
    return WIDGET_INFO::widget<QPushButton>(&optionsMap, "ok_button", E_OK_BUTTON);
}

void MainWindow::showWaiting()
{
    if (isDebugLogged())
        qDebug() << "Warten";
    showStatus(tr("Warten..."));
}

void MainWindow::endRun()
{
    if (isDebugLogged())
        qDebug() << "Beendet";
    showStatus(tr("Beendet. %1").arg(bError ? tr("Fehler: %1.").arg(csErrorText) : QString()));
    runTimer->stop();
    if (bAccepted)
        return; // the last page was repeated after the hand-over: there is nothing left to ask
    if (!bError) {
        flushLog();
        const auto answer = QMessageBox::question(
            this, tr("Beendet:"),
            tr("Der Vorgang wurde beendet, soll der Dialog geschlossen und der Import gestartet "
               "werden?"),
            QMessageBox::Yes | QMessageBox::No);
        QPushButton* button = okButton();
        if (answer == QMessageBox::Yes && button) {
            // Not click(): the button is disabled now, and a disabled one ignores it.
            emit button->clicked(false);
            if (!bAccepted)
                EnableStartButtons(true); // refused: without this the buttons stay dead
            return;
        }
    }
    EnableStartButtons(true);
}
