#pragma once

#include "tests/progress/progress_fixture.h"

#include <memory>

constexpr int kAbort = 16;
constexpr int kNoDialog = 512;

inline mod_progress_qt::CustomProgressBar::options withFlags(int flags)
{
    auto opts = mod_progress_qt::ProgressDialog::GetStdProgressInfo(false, "Working");
    opts.flags = flags;
    opts.text = "at first";
    return opts;
}

/// Rows for the invisible dialog and for none.
inline void bothWays()
{
    QTest::addColumn<int>("flags");
    QTest::newRow("invisible dialog") << kAbort;
    QTest::newRow("no dialog") << (kAbort | kNoDialog);
}

inline int waitForAbort(mod_progress_qt::WorkerBase* worker)
{
    using mod_progress_qt::ProgressDialog;
    while (!ProgressDialog::isStopped(worker))
        QThread::yieldCurrentThread();
    return ProgressDialog::finalizeWorker(worker, QString("aborted"), true);
}

inline void openWindow(std::unique_ptr<StatusWindow>& window)
{
    window = std::make_unique<StatusWindow>();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
}

/// Closes the window and checks that nothing of a dialog is left.
inline void closeWindow(std::unique_ptr<StatusWindow>& window)
{
    using mod_progress_qt::ProgressDialog;
    settle();
    window.reset();
    settle();
    ProgressDialog::showDebug = false;
    ProgressDialog::hardInterruptTimeMs = -1;
    QVERIFY(ProgressDialog::instances.isEmpty());
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
}
