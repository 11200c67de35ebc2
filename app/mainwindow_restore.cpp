#include "app/mainwindow.h"

#include "accounting/konten_saved.h"
#include "app/globals.h"
#include "credentials/keychain_class.h"
#include "credentials/keychain_key.h"
#include "form/mod_form_qt.h"

#include <QFileInfo>
#include <QMessageBox>

void MainWindow::restoreSavedState()
{
    payment_import::InitDefaultKonten(kontenMap, 0, bFirmaKU, t_ebay_vr_konto, t_paypal_konto,
                                      t_woocommerce_konto);
    csPaypalLabel = tr("paypal importieren");
    csWooCommerceLabel = tr("WooCommerce importieren");
    csTxIdOnlyLabel = tr("Nur paypal-TX-ID exportieren");

    mod_form_qt::INFO::loadMapFromIniFile(&optionsMap, csIniPath, QStringLiteral("options"), false,
                                          QString());
    restoreSecrets();
    // After the defaults, so that a saved account beats the host's three lines.
    payment_import::restoreKonten(optionsMap.value(QStringLiteral("buchungs_konten")), kontenMap);
    takeHostFolder();
}

void MainWindow::restoreSecrets()
{
    for (const QString& keyName : {keyNameAPI, keyNameSECRET}) {
        const QString url = optionsMap.value(QStringLiteral("mainurl")).toString().trimmed();
        if (url.isEmpty())
            continue;
        QString value;
        QString error;
        if (keyChain->readKeySync(makeRestKeychainKey(url, keyName), value, error))
            optionsMap.insert(keyName, value);
        else
            QMessageBox::information(this, tr("Fehler beim Entschlüsseln:"), error,
                                     QMessageBox::Ok);
    }
}

void MainWindow::takeHostFolder()
{
    bHostFolder = !pdfFolderPath.isEmpty() && QFileInfo(pdfFolderPath).isDir();
    if (bHostFolder)
        optionsMap.insert(QStringLiteral("germanized_pdf_folder"), pdfFolderPath);
}
