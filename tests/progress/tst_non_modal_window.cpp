#include "tests/progress/progress_fixture.h"

#include <stdexcept>

using namespace mod_progress_qt;

namespace {

using Pointer = ProgressDialog::Pointer;

CustomProgressBar::options withFlags(int flags)
{
    auto opts = ProgressDialog::GetStdProgressInfo(false, "Working");
    opts.flags = flags;
    return opts;
}

constexpr int kPlain = 2;
constexpr int kAbort = 2 | 16;

/// Notes which windows are raised.
class ZOrderChanges : public QObject
{
public:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == QEvent::ZOrderChange)
            dialogs << object;
        return false;
    }

    QSet<QObject*> dialogs;
};

} // namespace

class tst_non_modal_window : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void withAbortTheMainWindowIsDisabledAndTheDialogIsNot();
    void withoutAbortTheMainWindowStaysEnabled();
    void withoutADialogFlagTheMainWindowStaysEnabled();
    void mainWindowIsEnabledAgainAsItWas_data();
    void mainWindowIsEnabledAgainAsItWas();
    void mainWindowIsEnabledAgainAfterAnException();
    void mainWindowMayGoFirst();
    void parentMayGoFirst();
    void theFirstDialogDoesNotEnableTheWindowOfTheSecond();
    void aRunningModalDialogStaysUsable();
    void comesToTheFrontAndIsActive();

private:
    std::unique_ptr<QMainWindow> m_window;
};

void tst_non_modal_window::init()
{
    m_window = std::make_unique<QMainWindow>();
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_non_modal_window::cleanup()
{
    settle();
    m_window.reset();
    settle();
    ProgressDialog::showDebug = false;
    QVERIFY(ProgressDialog::instances.isEmpty());
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_non_modal_window::withAbortTheMainWindowIsDisabledAndTheDialogIsNot()
{
    const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort));
    QVERIFY(!m_window->isEnabled());
    QVERIFY(dialog->isEnabled());
    QVERIFY(abortButtonOf(*dialog)->isEnabled());
}

void tst_non_modal_window::withoutAbortTheMainWindowStaysEnabled()
{
    const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kPlain));
    QVERIFY(m_window->isEnabled());
}

void tst_non_modal_window::withoutADialogFlagTheMainWindowStaysEnabled()
{
    const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort | 512));
    QVERIFY(m_window->isEnabled());
    QVERIFY(dialog->isVisible()); // as there is no status bar
}

void tst_non_modal_window::mainWindowIsEnabledAgainAsItWas_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<int>("ending");
    for (const bool enabled : {true, false}) {
        const char* was = enabled ? "enabled" : "disabled";
        QTest::addRow("%s, released", was) << enabled << 0;
        QTest::addRow("%s, button", was) << enabled << 1;
        QTest::addRow("%s, escape", was) << enabled << 2;
        QTest::addRow("%s, next dialog", was) << enabled << 3;
        QTest::addRow("%s, all aborted", was) << enabled << 4;
    }
}

void tst_non_modal_window::mainWindowIsEnabledAgainAsItWas()
{
    QFETCH(bool, enabled);
    QFETCH(int, ending);
    m_window->setEnabled(enabled);
    Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort));
    QVERIFY(!m_window->isEnabled());
    if (ending == 1)
        pressOn(abortButtonOf(*dialog));
    else if (ending == 2)
        QTest::keyClick(dialog.data(), Qt::Key_Escape);
    else if (ending == 3)
        dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort));
    else if (ending == 4)
        ProgressDialog::hasOpenDialogs(nullptr, false, true);
    QVERIFY(!m_window->isEnabled());
    dialog.clear();
    settle();
    QCOMPARE(m_window->isEnabled(), enabled);
}

void tst_non_modal_window::mainWindowIsEnabledAgainAfterAnException()
{
    const auto loop = [this] {
        const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort));
        ProgressDialog::setText(dialog, "a");
        throw std::runtime_error("in the caller's loop");
    };
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, loop());
    settle();
    QVERIFY(m_window->isEnabled());
    QVERIFY(ProgressDialog::all().isEmpty());
}

void tst_non_modal_window::mainWindowMayGoFirst()
{
    const Pointer dialog = ProgressDialog::createNonModal(nullptr, withFlags(kAbort));
    m_window.reset();
    ProgressDialog::setText(dialog, "a");
    QVERIFY(!ProgressDialog::isStopped(dialog));
}

void tst_non_modal_window::parentMayGoFirst()
{
    Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort));
    const QPointer<ProgressDialog> guard(dialog.data());
    m_window.reset();
    QVERIFY(guard); // it belongs to its holders
    ProgressDialog::setProgress(dialog, "a", 1, 2);
    QVERIFY(!ProgressDialog::isStopped(dialog));
    const Pointer copy = dialog;
    dialog.clear();
    settle();
    QVERIFY(guard);
}

void tst_non_modal_window::theFirstDialogDoesNotEnableTheWindowOfTheSecond()
{
    Pointer first = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort));
    Pointer second = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort));
    first.clear();
    settle();
    QVERIFY(!m_window->isEnabled());
    QVERIFY(second->isEnabled());
    second.clear();
    settle();
    QVERIFY(m_window->isEnabled());
}

void tst_non_modal_window::aRunningModalDialogStaysUsable()
{
    bool usable = false;
    bool windowEnabled = true;
    onceModal([&](ProgressDialog& modal) {
        QPushButton* const button = abortButtonOf(modal);
        const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort));
        windowEnabled = m_window->isEnabled();
        usable = modal.isEnabled() && button->isEnabled();
        QTest::mouseClick(button, Qt::LeftButton);
        usable = usable && modal.controller()->isAborted();
        ProgressDialog::hasOpenDialogs(nullptr, false, true);
    });
    const auto result =
        ProgressDialog::createModal(m_window.get(), withFlags(kAbort), {}, [](WorkerBase* worker) {
            while (!ProgressDialog::isStopped(worker))
                QThread::yieldCurrentThread();
            return ProgressDialog::finalizeWorker(worker, {}, true);
        });
    QVERIFY(!result.first);
    QVERIFY(!windowEnabled);
    QVERIFY(usable);
    settle();
    QVERIFY(m_window->isEnabled());
}

void tst_non_modal_window::comesToTheFrontAndIsActive()
{
    ZOrderChanges raised;
    qApp->installEventFilter(&raised);
    const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort));
    QVERIFY(raised.dialogs.contains(dialog.data()));
    QVERIFY(dialog->isActiveWindow());
    QVERIFY(!m_window->isActiveWindow());
}

QTEST_MAIN(tst_non_modal_window)
#include "tst_non_modal_window.moc"
