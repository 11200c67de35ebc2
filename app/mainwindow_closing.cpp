#include "app/mainwindow.h"

#include <QScopedValueRollback>
#include <QTimer>

void MainWindow::acceptForm()
{
    if (bAccepted || bGivenUp)
        return;
    bAccepted = true;
    if (bBusy) {
        pageGuard.emplace();
        // A restart that was asked for before would empty what is handed over now.
        waitTimer->stop();
        if (iCancelType == CancelRestart)
            iCancelType = CancelNone;
    } else {
        // No pass may begin between here and the closing: it would be cut off half way.
        runTimer->stop();
        waitTimer->stop();
    }
}

void MainWindow::abandonExport()
{
    if (bGivenUp)
        return;
    // First of all: saving waits for the secret store, and a tick meanwhile would bring the removed
    // file back.
    bGivenUp = true;
    runTimer->stop();
    waitTimer->stop();
    const QScopedValueRollback closing(bClosing, true);
    outFile.close();
    removeExport();
    SaveConfig(false);
}
