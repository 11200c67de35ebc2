#include "app/mainwindow.h"

#include "app/globals.h"
#include "app/hostconfig.h"

#include <QCoreApplication>
#include <QMessageBox>

#include <cstdlib>

namespace {

template <typename T>
void assignIfGiven(T& target, const std::optional<T>& value)
{
    if (value)
        target = *value;
}

} // namespace

void MainWindow::takeCommandLine()
{
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() > 1)
        csConfigFileName = arguments.at(1).trimmed().remove(QLatin1Char('"'));
}

void MainWindow::requireHostFile()
{
    if (!csConfigFileName.isEmpty() && QFile::exists(csConfigFileName))
        return;
    QMessageBox::information(this, tr("Fehler:"),
                             tr("Die Konfigurationsdatei wurde nicht gefunden."), QMessageBox::Ok);
    // Status 0 on every path: the host looks at the export alone.
    std::exit(0);
}

void MainWindow::readHostFile()
{
    QFile file(csConfigFileName);
    if (!file.open(QIODevice::ReadOnly))
        return;
    QTextStream text(&file);
    text.setEncoding(QStringConverter::Utf8);
    takeHostConfig(readHostConfig(text));
}

void MainWindow::takeHostConfig(const HostConfig& config)
{
    assignIfGiven(csIniPath, config.iniPath);
    assignIfGiven(nSKRDefault, config.skr);
    assignIfGiven(t_ebay_vr_konto, config.ebayKonto);
    assignIfGiven(t_paypal_konto, config.paypalKonto);
    assignIfGiven(t_woocommerce_konto, config.woocommerceKonto);
    assignIfGiven(outputFilePath, config.outputFile);
    assignIfGiven(bFirmaKU, config.firmaKU);
    assignIfGiven(pdfFolderPath, config.pdfFolder);
}

void MainWindow::removeOldExport()
{
    removeExport();
}

void MainWindow::removeExport()
{
    if (outputFilePath.isEmpty() || !QFile::exists(outputFilePath))
        return;
    QFile file(outputFilePath);
    if (file.remove())
        return;
    QMessageBox::information(this, tr("Fehler:"),
                             tr("Die Datei\r\n%1\r\nkann nicht entfernt werden.\r\n%2")
                                 .arg(outputFilePath, file.errorString()),
                             QMessageBox::Ok);
    // Even a file that can't go must not be taken for an export.
    QFile::resize(outputFilePath, 0);
}
