#include "tests/progress/progress_fixture.h"

using namespace mod_progress_qt;

namespace {

using Pointer = ProgressDialog::Pointer;

CustomProgressBar::options withFlags(int flags)
{
    auto opts = ProgressDialog::GetStdProgressInfo(false, "Working");
    opts.flags = flags;
    return opts;
}

/// Counts how often a progress dialog is painted.
class PaintCounter : public QObject
{
public:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && qobject_cast<ProgressDialog*>(object))
            ++count;
        return false;
    }

    int count = 0;
};

constexpr int kPlain = 2;
constexpr int kAbort = 2 | 16;

} // namespace

class tst_non_modal : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void isShownAndOpen();
    void takesAutoValue();
    void holdsWhatStandsBeforeAndAfter();
    void abortButtonStopsAndHides();
    void abortButtonWorksInsideSetValue();
    void escapeStopsAndHidesOnce_data();
    void escapeStopsAndHidesOnce();
    void escapeWithoutAShortcutStopsAndHides();
    void shortcutTellsOfItselfForDebugging();
    void withoutADialogFlagThereIsNoShortcut();
    void withoutAbortThereIsNoShortcut();
    void shortcutGoesWithTheDialog();
    void stoppedDialogIgnoresValues();
    void aSecondDialogClosesTheFirst();
    void aModalDialogIsNotClosed();
    void lastHolderDestroysIt();
    void somebodyElseMayDestroyIt();
    void isPaintedAtOnce();
    void aLoopRunsToItsEnd();

private:
    std::unique_ptr<QMainWindow> m_window;
};

void tst_non_modal::init()
{
    m_window = std::make_unique<QMainWindow>();
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_non_modal::cleanup()
{
    settle();
    m_window.reset();
    settle();
    ProgressDialog::showDebug = false;
    QVERIFY(ProgressDialog::instances.isEmpty());
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_non_modal::isShownAndOpen()
{
    const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kPlain));
    QVERIFY(dialog->isVisible());
    QVERIFY(!dialog->isModal());
    QVERIFY(!dialog->isModalWork());
    QCOMPARE(dialog->windowTitle(), "Working");
    QCOMPARE(dialog->parentWidget(), m_window.get());
    QCOMPARE(theDialog(), dialog.data());
    QVERIFY(!ProgressDialog::isStopped(dialog));
    QVERIFY(!ProgressDialog::hasAutoValue(dialog));
}

void tst_non_modal::takesAutoValue()
{
    QVERIFY(ProgressDialog::hasAutoValue(
        ProgressDialog::createNonModal(m_window.get(), withFlags(kPlain), true)));
}

void tst_non_modal::holdsWhatStandsBeforeAndAfter()
{
    auto* above = new QLabel("above");
    auto* below = new QLabel("below");
    const ProgressDialog::WidgetAndLayout before {above, nullptr};
    const ProgressDialog::WidgetAndLayout after {below, nullptr};
    const Pointer dialog =
        ProgressDialog::createNonModal(m_window.get(), withFlags(kPlain), false, &before, &after);
    QVERIFY(above->isVisible());
    QVERIFY(below->isVisible());
    QVERIFY(above->y() < below->y());
}

void tst_non_modal::abortButtonStopsAndHides()
{
    const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort));
    pressOn(abortButtonOf(*dialog)); // not yet released
    QVERIFY(ProgressDialog::isStopped(dialog));
    QVERIFY(!dialog->isVisible());
    settle();
    QVERIFY(dialog->findChildren<QShortcut*>().isEmpty());
}

void tst_non_modal::abortButtonWorksInsideSetValue()
{
    const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort));
    QTimer::singleShot(0, dialog.data(), [&dialog] { pressOn(abortButtonOf(*dialog)); });
    QVERIFY(soon(
        [&] { return (ProgressDialog::setText(dialog, "a"), ProgressDialog::isStopped(dialog)); }));
}

void tst_non_modal::escapeStopsAndHidesOnce_data()
{
    QTest::addColumn<bool>("focusOnButton");
    QTest::newRow("dialog") << false;
    QTest::newRow("button") << true;
}

void tst_non_modal::escapeStopsAndHidesOnce()
{
    QFETCH(bool, focusOnButton);
    const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort));
    QVERIFY(QTest::qWaitForWindowActive(dialog.data()));
    const auto shortcuts = dialog->findChildren<QShortcut*>();
    QCOMPARE(shortcuts.size(), 1);
    QCOMPARE(shortcuts.first()->key(), QKeySequence(Qt::Key_Escape));
    QCOMPARE(shortcuts.first()->context(), Qt::ApplicationShortcut);
    const QSignalSpy activated(shortcuts.first(), &QShortcut::activated);
    QWidget* receiver =
        focusOnButton ? static_cast<QWidget*>(abortButtonOf(*dialog)) : dialog.data();
    QTest::keyClick(receiver, Qt::Key_Escape);
    QCOMPARE(activated.size(), 1);
    QVERIFY(ProgressDialog::isStopped(dialog));
    QVERIFY(!dialog->isVisible());
    settle();
    QVERIFY(dialog->findChildren<QShortcut*>().isEmpty());
    // A second time it is not there to be stopped.
    ProgressDialog::setStopped(dialog, false);
    QVERIFY(dialog->isVisible());
}

void tst_non_modal::escapeWithoutAShortcutStopsAndHides()
{
    const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort));
    ProgressDialog::clearShortCut(dialog->findChild<QShortcut*>());
    QTest::keyClick(dialog.data(), Qt::Key_Escape);
    QVERIFY(ProgressDialog::isStopped(dialog));
    QVERIFY(!dialog->isVisible());
}

void tst_non_modal::shortcutTellsOfItselfForDebugging()
{
    const Messages messages;
    for (const bool debug : {false, true}) {
        ProgressDialog::showDebug = debug;
        const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort));
        QVERIFY(QTest::qWaitForWindowActive(dialog.data()));
        Messages::clear();
        QTest::keyClick(dialog.data(), Qt::Key_Escape);
        QCOMPARE(Messages::all(), debug ? QStringList("ABORT (SHORTCUT)") : QStringList());
    }
}

void tst_non_modal::withoutADialogFlagThereIsNoShortcut()
{
    const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort | 512));
    QVERIFY(m_window->findChildren<QShortcut*>().isEmpty());
    QVERIFY(dialog->findChildren<QShortcut*>().isEmpty());
    // The key itself still works.
    QTest::keyClick(dialog.data(), Qt::Key_Escape);
    QVERIFY(ProgressDialog::isStopped(dialog));
}

void tst_non_modal::withoutAbortThereIsNoShortcut()
{
    const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kPlain));
    QVERIFY(dialog->findChildren<QShortcut*>().isEmpty());
}

void tst_non_modal::shortcutGoesWithTheDialog()
{
    Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort));
    const QPointer<QShortcut> shortcut = dialog->findChild<QShortcut*>();
    QVERIFY(shortcut);
    dialog.clear();
    settle();
    QVERIFY(shortcut.isNull());
}

void tst_non_modal::stoppedDialogIgnoresValues()
{
    const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort | 1024));
    pressOn(abortButtonOf(*dialog));
    QVERIFY(!ProgressDialog::setValue(dialog, {"a", {}, {}, 100, {}}));
    QCOMPARE(filledSquares(*dialog), 0);
    QCOMPARE(labelsOf(*dialog), QStringList(""));
}

void tst_non_modal::aSecondDialogClosesTheFirst()
{
    const Pointer first = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort));
    const QPointer<QShortcut> shortcut = first->findChild<QShortcut*>();
    const Pointer second = ProgressDialog::createNonModal(m_window.get(), withFlags(kPlain));
    QVERIFY(!first->isVisible());
    QVERIFY(second->isVisible());
    QCOMPARE(theDialog(), second.data());
    QVERIFY(m_window->isEnabled());
    QVERIFY(shortcut.isNull());
    // Its loop goes on.
    QVERIFY(!ProgressDialog::isStopped(first));
    QVERIFY(ProgressDialog::setText(first, "a"));
}

void tst_non_modal::aModalDialogIsNotClosed()
{
    bool stayed = false;
    onceModal([&](ProgressDialog& modal) {
        const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kPlain));
        stayed = modal.isVisible() && ProgressDialog::all().size() == 2;
        ProgressDialog::hasOpenDialogs(nullptr, false, true);
    });
    const auto result =
        ProgressDialog::createModal(m_window.get(), withFlags(kAbort), {}, [](WorkerBase* worker) {
            while (!ProgressDialog::isStopped(worker))
                QThread::yieldCurrentThread();
            return ProgressDialog::finalizeWorker(worker, {}, true);
        });
    QVERIFY(!result.first);
    QVERIFY(stayed);
}

void tst_non_modal::lastHolderDestroysIt()
{
    Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kPlain));
    Pointer copy = dialog;
    const QPointer<ProgressDialog> guard(dialog.data());
    dialog.clear();
    settle();
    QVERIFY(guard);
    copy.clear();
    QVERIFY(guard);
    settle();
    QVERIFY(guard.isNull());
}

void tst_non_modal::somebodyElseMayDestroyIt()
{
    Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort));
    delete dialog.data();
    QVERIFY(m_window->isEnabled());
    dialog.clear();
    settle();
    QVERIFY(ProgressDialog::all().isEmpty());
}

void tst_non_modal::isPaintedAtOnce()
{
    PaintCounter paints;
    qApp->installEventFilter(&paints);
    const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kPlain));
    QVERIFY(paints.count > 0);
}

void tst_non_modal::aLoopRunsToItsEnd()
{
    const QStringList names {"a", "b", "c"};
    const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort));
    int done = 0;
    for (const QString& name : names) {
        if (ProgressDialog::isStopped(dialog))
            break;
        ProgressDialog::setProgress(dialog, name, ++done, names.size());
    }
    QCOMPARE(done, 3);
}

QTEST_MAIN(tst_non_modal)
#include "tst_non_modal.moc"
