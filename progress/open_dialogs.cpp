#include "progress/controller.h"
#include "progress/progress_dialog.h"

#include <QApplication>
#include <QMainWindow>
#include <QMessageBox>
#include <QMutexLocker>

namespace mod_progress_qt {

namespace {

/// Milliseconds, at most, for dialogs that are going away to go.
constexpr int goAwayMs = 10;

} // namespace

void ProgressDialog::registerInstance(ProgressDialog* dialog)
{
    const QMutexLocker lock(&instancesMutex);
    instances.append(dialog);
}

void ProgressDialog::unregisterInstance(ProgressDialog* dialog)
{
    const QMutexLocker lock(&instancesMutex);
    instances.removeAll(dialog);
}

QList<QPointer<ProgressDialog>> ProgressDialog::all()
{
    const QMutexLocker lock(&instancesMutex);
    return instances;
}

bool ProgressDialog::hasOpenDialogs(QWidget* parent, bool warn, bool abortAll)
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents(QEventLoop::AllEvents, goAwayMs);

    const QList<QPointer<ProgressDialog>> open = all();
    for (const QPointer<ProgressDialog>& dialog : open) {
        if (!abortAll || !canAbort(dialog))
            continue;
        if (!dialog->m_modal)
            dialog->stop();
        else if (dialog->m_controller)
            dialog->m_controller->abort();
    }
    if (all().isEmpty())
        return false;
    if (warn)
        QMessageBox::information(parent, tr("Info:"), tr("There are active processes running...."),
                                 QMessageBox::Ok);
    return true;
}

QWidget* ProgressDialog::getMainWindow()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* const window : windows) {
        if (qobject_cast<QMainWindow*>(window))
            return window;
    }
    for (QWidget* const window : windows) {
        // A display is no window that it could be shown for.
        if (qobject_cast<QDialog*>(window) && !qobject_cast<ProgressDialog*>(window))
            return window;
    }
    return nullptr;
}

} // namespace mod_progress_qt
