#include "app/mainwindow.h"

#include "accounting/konten_saved.h"
#include "app/debuglog.h"
#include "app/globals.h"
#include "app/opendialog.h"
#include "app/optionstring.h"
#include "credentials/keychain_class.h"
#include "credentials/keychain_key.h"
#include "form/mod_form_qt.h"

#include <QCoreApplication>
#include <QDebug>
#include <QMessageBox>

QString MainWindow::mainUrlText() const
{
    return mainurl.toString().trimmed();
}

QString MainWindow::BuildOptionsString()
{
    if (isDebugLogged())
        qDebug() << shownOptions(optionsMap);
    return optionsToHostText(optionsMap, kontenMap);
}

void MainWindow::SaveConfig(bool stop)
{
    if (stop)
        StopTimer(CancelStop);
    // A field that still holds the focus gives up its text to the options.
    setFocus(Qt::OtherFocusReason);

    const std::pair<const QVariant*, QString> secrets[] = {
        {&apiKey, keyNameAPI},
        {&apiSecret, keyNameSECRET},
    };
    for (const auto& [option, keyName] : secrets) {
        // Read only now: the field can be edited while the secret before it is being stored.
        const QString text = option->toString();
        if (text.isEmpty())
            continue;
        optionsMap.insert(keyName, QString());
        const QString url = mainUrlText();
        if (url.isEmpty())
            continue;
        QString error;
        const QString title = tr("Fehler beim Verschlüsseln:");
        if (!keyChain->writeKeySync(makeRestKeychainKey(url, keyName), text, error)
            && !isDialogOpen(this, title))
            QMessageBox::information(this, title, error, QMessageBox::Ok);
    }

    optionsMap.insert(QStringLiteral("buchungs_konten"),
                      payment_import::kontenToSavedList(kontenMap));
    // A copy without them: an edit made during the waits above is in the options again.
    const QMap<QString, QVariant> saved = withoutSecrets(optionsMap);
    mod_form_qt::INFO::saveMapToIniFile(&saved, csIniPath, QStringLiteral("options"), false,
                                        nullptr, QString());

    // The window may have been closed while a secret was being stored. The quit that this posted
    // got lost when the loop of the next secret was entered. Where a page is still being written
    // for the host, the end of its pass quits.
    if ((bGivenUp || bAccepted) && !bClosing && !pageGuard && !isVisible())
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
}
