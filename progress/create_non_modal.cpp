#include "progress/progress_dialog.h"

#include <QCoreApplication>

namespace mod_progress_qt {

namespace {

/// Milliseconds, at most, that a new dialog gets to appear.
constexpr int firstEventsMs = 150;

} // namespace

ProgressDialog::Pointer ProgressDialog::createNonModal(QWidget* parent, const options& opts,
                                                       bool autoValue,
                                                       const WidgetAndLayout* before,
                                                       const WidgetAndLayout* after)
{
    closeFirstNonModal();
    Pointer dialog = make(parent, opts);
    dialog->m_modal = false;
    dialog->m_autoValue = autoValue;
    if (!dialog->usesStatusBar()) {
        if (QPushButton* const abortButton = createLayout(dialog, opts, before, after)) {
            connect(abortButton, &QPushButton::pressed, dialog.data(), [shown = dialog.data()] {
                shown->clearOwnShortcut();
                shown->stop();
            });
        }
    }
    if (dialog->hasFlag(CustomProgressBar::kCanAbort)
        && !dialog->hasFlag(CustomProgressBar::kNoDialog))
        dialog->disableMainWindow();
    QWidget* const shortcutParent = dialog->showNonModal();
    if (dialog->hasFlag(CustomProgressBar::kCanAbort))
        dialog->makeStopShortcut(shortcutParent);
    QCoreApplication::processEvents(
        QEventLoop::ExcludeSocketNotifiers | QEventLoop::WaitForMoreEvents, firstEventsMs);
    return dialog;
}

void ProgressDialog::closeFirstNonModal()
{
    const QList<QPointer<ProgressDialog>> open = all();
    for (const QPointer<ProgressDialog>& dialog : open) {
        // Work on a thread keeps its dialog, which could not be aborted otherwise.
        if (!dialog || dialog->m_modal)
            continue;
        unregisterInstance(dialog);
        dialog->restoreUiState(-1);
        dialog->close();
        dialog->hide(); // as it refuses to close
        break;
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void ProgressDialog::disableMainWindow()
{
    if (!m_mainWindow)
        return;
    // With a window its dialogs are disabled, too. Work that is waited for has to be abortable.
    QList<QWidget*> usable;
    const QList<QPointer<ProgressDialog>> open = all();
    for (const QPointer<ProgressDialog>& dialog : open) {
        if (dialog && dialog->m_modal && dialog->isEnabled())
            usable.append(dialog);
    }
    m_mainWindowWasEnabled = m_mainWindow->isEnabled();
    m_mainWindow->setEnabled(false);
    m_reenablesMainWindow = true;
    for (QWidget* const dialog : std::as_const(usable))
        dialog->setEnabled(true);
}

QWidget* ProgressDialog::showNonModal()
{
    const bool noDialog = hasFlag(CustomProgressBar::kNoDialog);
    if (usesStatusBar() && noDialog) {
        setVisible(false);
        return m_mainWindow;
    }
    if (usesStatusBar()) {
        createHiddenLikeDialog(this);
        show();
        // A disabled window disables its dialogs, and with them their shortcuts.
        setEnabled(true);
        return this;
    }
    show();
    raise();
    activateWindow();
    if (noDialog)
        return nullptr;
    setEnabled(true);
    return this;
}

void ProgressDialog::makeStopShortcut(QWidget* parent)
{
    makeShortcut(parent, [this] {
        stop();
        clearStatusBar();
    });
}

} // namespace mod_progress_qt
