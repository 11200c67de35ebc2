#include "app/mainwindow.h"

#include "app/globals.h"
#include "app/opendialog.h"
#include "app/optionstring.h"

#include <QComboBox>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTextEdit>
#include <QTimer>

using namespace mod_form_qt;

namespace {

/// A callback that hands its event to the window which the row belongs to. It keeps nothing of a
/// window, since the callbacks are made once and serve every window.
template <void (MainWindow::*handle)(CallbackType)>
int toWindow(const QPointer<QWidget>&, const QPointer<QWidget>&, const QVariant&, CallbackType type,
             const INFO& row, QMap<QString, QVariant>*, QVariant*, const QVariant*)
{
    if (MainWindow* const* window = std::any_cast<MainWindow*>(&row.anyData))
        ((*window)->*handle)(type);
    return 1;
}

} // namespace

MainFormCallbacks MainWindow::formCallbacks()
{
    static const LegacyCallback fnc_start = toWindow<&MainWindow::runStartAction>;
    static const LegacyCallback fnc_stop = toWindow<&MainWindow::runStopAction>;
    // No row has it: the form's own cancel button ends in the same place.
    [[maybe_unused]] static const LegacyCallback fnc_cancel =
        toWindow<&MainWindow::runCancelAction>;
    static const LegacyCallback skr_change = toWindow<&MainWindow::runSkrChange>;
    static const LegacyCallback buchungs_konto_change = toWindow<&MainWindow::runKontoChange>;
    static const LegacyCallback edit_payment_method_sort =
        toWindow<&MainWindow::runEditPaymentMethods>;
    static const LegacyCallback id_cache_del = toWindow<&MainWindow::runDeleteIdCache>;
    return {fnc_start,   fnc_stop, skr_change, buchungs_konto_change, edit_payment_method_sort,
            id_cache_del};
}

StartSettings MainWindow::startSettings() const
{
    StartSettings settings;
    settings.bGermanized = germanized_use.toBool();
    settings.pdfFolder = germanized_pdf_folder.toString();
    settings.bTxIdOnly = bTxIdOnly.toBool();
    settings.outputFilePath = outputFilePath;
    settings.bWooCommerce = woocommerce_use.toBool();
    settings.bPaypal = paypal_use.toBool();
    settings.csPaypalLabel = csPaypalLabel;
    settings.csWooCommerceLabel = csWooCommerceLabel;
    settings.csTxIdOnlyLabel = csTxIdOnlyLabel;
    settings.b2c_handling = selectedValue(optionsMap, QStringLiteral("b2c_handling"));
    settings.belegdatum = selectedValue(optionsMap, QStringLiteral("belegdatum"));
    settings.skr = selectedValue(optionsMap, QStringLiteral("skr"));
    return settings;
}

void MainWindow::runStartAction(CallbackType type)
{
    if (logEdit)
        logEdit->clear();
    // Saving may wait for the secret store. A second click meanwhile must not empty, when its turn
    // comes, what the first one has fetched.
    if (type != kAfterAction || bStarting)
        return;
    const QScopedValueRollback starting(bStarting, true);
    if (const auto failed = firstFailedCheck(startSettings())) {
        QMessageBox::information(this, failed->title, failed->text, QMessageBox::Ok);
        return;
    }
    const QPointer<QWidget> focus = focusWidget();
    SaveConfig(false);
    // Saving takes the focus from the fields; who works by keyboard goes on where he was.
    if (focus && !bGivenUp && !bAccepted)
        focus->setFocus(Qt::OtherFocusReason);
    StartTimer();
}

void MainWindow::runStopAction(CallbackType type)
{
    if (type == kAfterAction)
        StopTimer(CancelStop);
}

void MainWindow::runCancelAction(CallbackType type)
{
    if (type != kAfterAction || bAccepted || bGivenUp)
        return; // what was handed over is the host's; what was given up is gone already
    if (runTimer->isActive()) {
        StopTimer(CancelClose);
        return;
    }
    close();
    if (!bGivenUp)
        return; // another closing is being decided, and a page may still be written behind it
    outFile.close();
    removeExport();
}

void MainWindow::runDeleteIdCache(CallbackType type)
{
    const QString title = tr("ID-Cache löschen");
    if (type != kAfterAction || isDialogOpen(this, title))
        return;
    const auto answer = QMessageBox::question(
        this, title, tr("Sollten die %1 Einträge gelöscht werden?").arg(importHash.size()),
        QMessageBox::Yes | QMessageBox::No);
    if (answer == QMessageBox::Yes)
        importHash.clear();
}

void MainWindow::runEditPaymentMethods(CallbackType type)
{
    const QString title = tr("'Zahlmethode (kurz)' bearbeiten") + QLatin1Char(':');
    if (type != kAfterAction || isDialogOpen(this, title))
        return;
    const QString key = QStringLiteral("def_payment_method_s");
    INFO dialog(E_DIALOG, A_NONE,
                QVariantMap {
                    {INFO::Option::titleKey, title},
                    {INFO::Option::buildKey(INFO::Option::minWidthKey, E_DIALOG), 640},
                });
    QMap<QString, QVariant> values;
    const QPointer<MainWindow> guard(this);
    dialog.callback = ContextCallback([](const CallbackContext& event) {
        auto* text = event.type == kInit ? INFO::textEditByKey(event.map, "value") : nullptr;
        if (text)
            text->setTabChangesFocus(true); // a tab means nothing in a list of names
        return 1;
    });
    const INFO::Result result = INFO::createLayout(
        this, MF_CREATE_WINDOW | MF_EXEC, {}, dialog,
        paymentMethodRows(optionsMap.value(key, defaultPaymentMethods).toString()), &values,
        nullptr);
    if (result.code != 1 || !guard)
        return;
    // The host splits the options at these.
    QString text = INFO::getBaseValue(&values, "value").toString();
    optionsMap.insert(key, withoutFieldMark(text.remove(extParmsLinesSep)));
}

std::optional<MainWindow::KontoCell> MainWindow::selectedCell() const
{
    const QVariant skr = selectedValue(optionsMap, QStringLiteral("skr"));
    const QVariant role = selectedValue(optionsMap, QStringLiteral("buchungs_typ"));
    if (!skr.isValid() || !role.isValid())
        return {};
    return KontoCell {payment_import::KontenTypen(role.toInt()), skr.toInt()};
}

QSpinBox* MainWindow::kontoBox() const
{
    return WIDGET_INFO::widget<QSpinBox>(&optionsMap, "buchungs_konto", E_NUMBER);
}

void MainWindow::showKontoOfSelection()
{
    QSpinBox* box = kontoBox();
    if (!box)
        return;
    const auto cell = selectedCell();
    box->setEnabled(cell.has_value());
    int konto = -1;
    if (cell && getKontoBySKR(cell->role, cell->skr, konto)) {
        // Silently: the box can't show an account that is not set, and its first number must not
        // take the place of that.
        const QSignalBlocker silent(box);
        box->setValue(konto);
    }
}

void MainWindow::storeKontoOfSelection()
{
    QSpinBox* box = kontoBox();
    if (!box)
        return;
    const auto cell = selectedCell();
    if (cell)
        upDateKontoBySKR(cell->role, cell->skr, box->value());
    box->setEnabled(cell.has_value());
}

void MainWindow::runSkrChange(CallbackType type)
{
    if (type == kAfterDataChanged)
        showKontoOfSelection();
}

void MainWindow::runKontoChange(CallbackType type)
{
    if (type == kAfterDataChanged)
        storeKontoOfSelection();
}

void MainWindow::runFormEvent(CallbackType type)
{
    switch (type) {
    case kInit: {
        auto* skr = WIDGET_INFO::widget<QComboBox>(&optionsMap, "skr", E_COMBOBOX);
        if (skr && selectedValue(optionsMap, QStringLiteral("skr")).isValid())
            emit skr->currentIndexChanged(0);
        else if (QSpinBox* box = kontoBox())
            box->setEnabled(false); // until a chart is chosen
        break;
    }
    case kReject:
    case kClose:
        abandonExport();
        break;
    case kAccept:
        acceptForm();
        break;
    default:
        break;
    }
}
