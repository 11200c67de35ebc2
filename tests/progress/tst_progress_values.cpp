#include "tests/progress/progress_fixture.h"

using namespace mod_progress_qt;

namespace {

using Pointer = ProgressDialog::Pointer;

CustomProgressBar::options withFlags(int flags)
{
    CustomProgressBar::options opts;
    opts.flags = flags;
    opts.repaintDelayMs = kForEver;
    return opts;
}

/// A dialog with a display that is not shown.
Pointer dialogWith(int flags)
{
    Pointer dialog(new ProgressDialog);
    ProgressDialog::createLayout(dialog, withFlags(flags));
    return dialog;
}

} // namespace

class tst_progress_values : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void setValueShowsItsTexts();
    void setProgressShowsTextAndNumbers();
    void setPercentShowsNumbersOnly();
    void setProgressWithoutValuesStepsEvenWithoutAutoValue();
    void counterGoesFrom100To1();
    void autoValueCountsInsteadOfShowingNumbers();
    void setAutoValueStartsAt0();
    void aStoppedDialogIgnoresEverything();
    void eventsAreProcessedIfSomethingWasDue();
    void eventsAreNotProcessedInsideTheDelay();
    void userInputIsProcessedWithFlag_data();
    void userInputIsProcessedWithFlag();
    void slotShowsWithoutProcessingEvents();
    void slotStepsIfNothingIsValid();
    void slotCountsWithAutoValue();
    void slotIgnoresAStoppedDialog();
    void eventsThatBringEventsAreProcessedForAWhile();
    void eventsWithoutEndAreProcessedForAWhileOnly();
};

void tst_progress_values::cleanup()
{
    settle();
    QVERIFY(ProgressDialog::instances.isEmpty());
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
    ProgressDialog::globalHide = false;
    ProgressDialog::showDebug = false;
}

void tst_progress_values::setValueShowsItsTexts()
{
    const Pointer dialog = dialogWith(14);
    QVERIFY(ProgressDialog::setText(dialog, "a", "b", "c"));
    QCOMPARE(labelsOf(*dialog), (QStringList {"a", "b", "c"}));
}

void tst_progress_values::setProgressShowsTextAndNumbers()
{
    const Pointer dialog = dialogWith(1038);
    QVERIFY(ProgressDialog::setProgress(dialog, "a", 1, 4));
    QCOMPARE(labelsOf(*dialog), (QStringList {"a", "", ""}));
    QCOMPARE(filledSquares(*dialog), 5);
}

void tst_progress_values::setPercentShowsNumbersOnly()
{
    const Pointer dialog = dialogWith(1026);
    QVERIFY(ProgressDialog::setPercent(dialog, 1, 4));
    QCOMPARE(labelsOf(*dialog), QStringList(""));
    QCOMPARE(filledSquares(*dialog), 5);
}

void tst_progress_values::setProgressWithoutValuesStepsEvenWithoutAutoValue()
{
    auto opts = withFlags(1024);
    opts.buttons = 100; // one a step
    const Pointer dialog(new ProgressDialog);
    opts.repaintDelayMs = 0;
    ProgressDialog::createLayout(dialog, opts);
    QVERIFY(!ProgressDialog::hasAutoValue(dialog));
    QVERIFY(ProgressDialog::setProgress(dialog));
    QCOMPARE(filledSquares(*dialog), 1);
    for (int step = 2; step <= 9; ++step)
        ProgressDialog::setProgress(dialog);
    // Steps inside the delay count, too.
    int step = 9;
    QVERIFY(soon([&] { return (++step, ProgressDialog::setProgress(dialog)); }));
    QCOMPARE(filledSquares(*dialog), (step - 1) % 100 + 1);
}

void tst_progress_values::counterGoesFrom100To1()
{
    auto opts = withFlags(1024);
    opts.buttons = 100;
    opts.repaintDelayMs = 0;
    const Pointer dialog(new ProgressDialog);
    ProgressDialog::createLayout(dialog, opts);
    QVERIFY(ProgressDialog::setAutoValue(dialog, true));
    int steps = 0;
    QList<int> seen;
    // Whenever the squares are due, they show how many steps there were, modulo 100.
    while (seen.size() < 4) {
        if (++steps; ProgressDialog::setProgress(dialog)) {
            QCOMPARE(filledSquares(*dialog), (steps - 1) % 100 + 1);
            seen << steps;
        }
    }
    QVERIFY(steps > 100);
}

void tst_progress_values::autoValueCountsInsteadOfShowingNumbers()
{
    const Pointer dialog = dialogWith(1026);
    ProgressDialog::setAutoValue(dialog, true);
    for (int step = 1; step < 10; ++step)
        ProgressDialog::setStopped(dialog, step % 2 == 0);
    QVERIFY(ProgressDialog::setProgress(dialog, "a", 100, 100));
    QCOMPARE(labelsOf(*dialog), QStringList("a"));
    QCOMPARE(filledSquares(*dialog), 0); // 1 of 100
}

void tst_progress_values::setAutoValueStartsAt0()
{
    auto opts = withFlags(1024);
    opts.buttons = 100;
    opts.repaintDelayMs = 0;
    const Pointer dialog(new ProgressDialog);
    ProgressDialog::createLayout(dialog, opts);
    for (int step = 0; step < 50; ++step)
        ProgressDialog::setProgress(dialog);
    QVERIFY(ProgressDialog::setAutoValue(dialog, true));
    QVERIFY(ProgressDialog::hasAutoValue(dialog));
    int steps = 0;
    QVERIFY(soon([&] { return (++steps, ProgressDialog::setProgress(dialog)); }));
    QCOMPARE(filledSquares(*dialog), (steps - 1) % 100 + 1);
    QVERIFY(ProgressDialog::setAutoValue(dialog, false));
    QVERIFY(!ProgressDialog::hasAutoValue(dialog));
}

void tst_progress_values::aStoppedDialogIgnoresEverything()
{
    const Pointer dialog = dialogWith(1026);
    QVERIFY(ProgressDialog::setStopped(dialog, true));
    QVERIFY(ProgressDialog::isStopped(dialog));
    QVERIFY(!ProgressDialog::setProgress(dialog, "a", 50, 100));
    QVERIFY(!ProgressDialog::setProgress(dialog));
    QVERIFY(!ProgressDialog::setAutoValue(dialog, true));
    QVERIFY(!ProgressDialog::hasAutoValue(dialog));
    QCOMPARE(labelsOf(*dialog), QStringList(""));
    QCOMPARE(filledSquares(*dialog), 0);
}

void tst_progress_values::eventsAreProcessedIfSomethingWasDue()
{
    const Pointer dialog = dialogWith(2);
    bool handled = false;
    QMetaObject::invokeMethod(
        this, [&handled] { handled = true; }, Qt::QueuedConnection);
    QVERIFY(ProgressDialog::setText(dialog, "a"));
    QVERIFY(handled);
}

void tst_progress_values::eventsAreNotProcessedInsideTheDelay()
{
    const Pointer dialog = dialogWith(2);
    ProgressDialog::setText(dialog, "a");
    bool handled = false;
    QMetaObject::invokeMethod(
        this, [&handled] { handled = true; }, Qt::QueuedConnection);
    QVERIFY(!ProgressDialog::setText(dialog, "b"));
    QVERIFY(!handled);
    settle();
    QVERIFY(handled);
}

void tst_progress_values::userInputIsProcessedWithFlag_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<bool>("processed");
    QTest::newRow("neither") << 2 << false;
    QTest::newRow("abort") << 18 << true;
    QTest::newRow("no dialog") << 514 << true;
}

void tst_progress_values::userInputIsProcessedWithFlag()
{
    QFETCH(int, flags);
    // Which of the two settings is used shows in what one of them leaves out.
    const QScopedValueRollback without(
        ProgressDialog::defaultEventsFlagsNoUserInteraction,
        QEventLoop::ProcessEventsFlags(QEventLoop::X11ExcludeTimers));
    bool handled = false;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&handled] { handled = true; });
    timer.start(0);
    const Pointer dialog = dialogWith(flags);
    QVERIFY(ProgressDialog::setText(dialog, "a"));
    QTEST(handled, "processed");
}

void tst_progress_values::slotShowsWithoutProcessingEvents()
{
    const Pointer dialog = dialogWith(1026);
    bool handled = false;
    QMetaObject::invokeMethod(
        this, [&handled] { handled = true; }, Qt::QueuedConnection);
    dialog->updateProgressSlot({"a", {}, {}, 1, 2});
    QVERIFY(!handled);
    QCOMPARE(labelsOf(*dialog), QStringList("a"));
    QCOMPARE(filledSquares(*dialog), 10);
    settle();
    QVERIFY(handled);
}

void tst_progress_values::slotStepsIfNothingIsValid()
{
    auto opts = withFlags(1024);
    opts.buttons = 100; // one a step
    const Pointer dialog(new ProgressDialog);
    ProgressDialog::createLayout(dialog, opts);
    dialog->updateProgressSlot({});
    QCOMPARE(filledSquares(*dialog), 1);
}

void tst_progress_values::slotCountsWithAutoValue()
{
    auto opts = withFlags(1024);
    opts.buttons = 100;
    const Pointer dialog(new ProgressDialog);
    ProgressDialog::createLayout(dialog, opts);
    ProgressDialog::setAutoValue(dialog, true);
    dialog->updateProgressSlot({{}, {}, {}, 70, 100});
    QCOMPARE(filledSquares(*dialog), 1);
}

void tst_progress_values::slotIgnoresAStoppedDialog()
{
    const Pointer dialog = dialogWith(1026);
    ProgressDialog::setStopped(dialog, true);
    dialog->updateProgressSlot({"a", {}, {}, 1, 2});
    QCOMPARE(labelsOf(*dialog), QStringList(""));
    QCOMPARE(filledSquares(*dialog), 0);
}

void tst_progress_values::eventsThatBringEventsAreProcessedForAWhile()
{
    const QScopedValueRollback limit(ProgressDialog::eventWaitTimeMs, kPatience);
    const Pointer dialog = dialogWith(2);
    int handled = 0;
    std::function<void()> post = [this, &handled, &post] {
        QMetaObject::invokeMethod(
            this,
            [&handled, &post] {
                if (++handled < 100)
                    post();
            },
            Qt::QueuedConnection);
    };
    post();
    QVERIFY(ProgressDialog::setText(dialog, "a"));
    QCOMPARE(handled, 100);
}

void tst_progress_values::eventsWithoutEndAreProcessedForAWhileOnly()
{
    const Pointer dialog = dialogWith(2);
    bool goesOn = true;
    int handled = 0;
    std::function<void()> post = [this, &goesOn, &handled, &post] {
        QMetaObject::invokeMethod(
            this,
            [&goesOn, &handled, &post] {
                ++handled;
                if (goesOn)
                    post();
            },
            Qt::QueuedConnection);
    };
    post();
    QVERIFY(ProgressDialog::setText(dialog, "a"));
    QVERIFY(handled > 0);
    goesOn = false;
    settle();
}

QTEST_MAIN(tst_progress_values)
#include "tst_progress_values.moc"
