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

class tst_progress_dialog : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void settingsHaveTheirValues();
    void describesTheUsualDisplay_data();
    void describesTheUsualDisplay();
    void aNewDialogIsOpenAndHasNoCloseButton();
    void aDestroyedDialogIsNotOpen();
    void unregisteringAStrangerDoesNothing();
    void closeButtonDoesNothing();
    void tellsOfItsDestructionOnlyForDebugging();
    void layoutHoldsWhatStandsBeforeAndAfter();
    void layoutReplacesTheOneBefore();
    void layoutSetsTheTitle();
    void wrappedTextAlwaysFits();
    void nullIsTolerated();
    void titleIsSet();
    void setValueShowsItsTexts();
    void setProgressShowsTextAndNumbers();
    void setPercentShowsNumbersOnly();
    void setProgressWithoutValuesStepsEvenWithoutAutoValue();
    void counterGoesFrom100To1();
    void autoValueCountsInsteadOfShowingNumbers();
    void setAutoValueStartsAt0();
    void aStoppedDialogIgnoresEverything();
    void aStoppedDialogIsHiddenAndShownAgain();
    void globalHideKeepsADialogHidden();
    void canAbortIsAFlag();
    void eventsAreProcessedIfSomethingWasDue();
    void eventsAreNotProcessedInsideTheDelay();
    void userInputIsProcessedWithFlag_data();
    void userInputIsProcessedWithFlag();
    void escapeWithoutAbortIsSwallowed();
    void otherKeysAreNot();
    void escapeInAModalDialogAsksForAbort();
    void mainWindowComesBeforeDialogs();
    void hiddenLikeDialogIsInvisible();
    void shortcutIsCleared();
    void noOpenDialogsAreReported();
    void openDialogsAreReported();
    void openDialogsAreWarnedOf();
    void dialogsThatAreGoingAwayDoNotCount();
};

void tst_progress_dialog::cleanup()
{
    settle();
    QVERIFY(ProgressDialog::instances.isEmpty());
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
    ProgressDialog::globalHide = false;
    ProgressDialog::showDebug = false;
}

void tst_progress_dialog::settingsHaveTheirValues()
{
    QVERIFY(ProgressDialog::instances.isEmpty());
    QCOMPARE(ProgressDialog::hardInterruptTimeMs, -1);
    QCOMPARE(ProgressDialog::eventWaitTimeMs, 50);
    QCOMPARE(int(ProgressDialog::defaultEventsFlagsNoUserInteraction), 5);
    QCOMPARE(int(ProgressDialog::defaultEventsFlagsUserInteraction), 4);
    QCOMPARE(ProgressDialog::globalHide, false);
    QCOMPARE(ProgressDialog::showDebug, false);
    QCOMPARE(StatusUpdate::active, false);
    QVERIFY(StatusUpdate::label.isNull());
    QVERIFY(StatusUpdate::progress.isNull());
    QCOMPARE(StatusUpdate::barWidth, 120);
}

void tst_progress_dialog::describesTheUsualDisplay_data()
{
    QTest::addColumn<bool>("canAbort");
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("flags");
    QTest::addColumn<QString>("expectedTitle");
    QTest::addColumn<int>("expectedFlags");
    QTest::newRow("to abort") << true << "" << 0 << "Processing data..." << 24;
    QTest::newRow("not to abort") << false << "" << 0 << "Processing data..." << 8;
    QTest::newRow("with a title") << false << "Reading" << 0 << "Reading" << 8;
    QTest::newRow("with flags") << true << "" << 258 << "Processing data..." << 282;
}

void tst_progress_dialog::describesTheUsualDisplay()
{
    QFETCH(bool, canAbort);
    QFETCH(QString, title);
    QFETCH(int, flags);
    QFETCH(int, expectedFlags);
    const auto plain = ProgressDialog::GetStdProgressInfo(canAbort, title, flags);
    QTEST(plain.title, "expectedTitle");
    QCOMPARE(plain.flags, expectedFlags);
    QCOMPARE(plain.abortText, CustomProgressBar::defaultAbortText);
    QCOMPARE(plain.buttons, 20);
    const auto squares = ProgressDialog::GetStdProgressInfoWithButtons(canAbort, title, flags);
    QTEST(squares.title, "expectedTitle");
    QCOMPARE(squares.flags, expectedFlags | 1024);
    QCOMPARE(squares.abortText, CustomProgressBar::defaultAbortText);
}

void tst_progress_dialog::aNewDialogIsOpenAndHasNoCloseButton()
{
    ProgressDialog dialog;
    QCOMPARE(ProgressDialog::all(), QList<QPointer<ProgressDialog>> {&dialog});
    QVERIFY(!dialog.windowFlags().testFlag(Qt::WindowCloseButtonHint));
    QVERIFY(dialog.windowFlags().testFlag(Qt::WindowTitleHint));
    QVERIFY(dialog.isModalWork());
}

void tst_progress_dialog::aDestroyedDialogIsNotOpen()
{
    auto* first = new ProgressDialog;
    auto* second = new ProgressDialog;
    delete first;
    QCOMPARE(ProgressDialog::all(), QList<QPointer<ProgressDialog>> {second});
    delete second;
    QVERIFY(ProgressDialog::all().isEmpty());
}

void tst_progress_dialog::unregisteringAStrangerDoesNothing()
{
    ProgressDialog dialog;
    ProgressDialog::unregisterInstance(nullptr);
    QCOMPARE(ProgressDialog::all().size(), 1);
    ProgressDialog::unregisterInstance(&dialog);
    ProgressDialog::unregisterInstance(&dialog);
    QVERIFY(ProgressDialog::all().isEmpty());
}

void tst_progress_dialog::closeButtonDoesNothing()
{
    ProgressDialog dialog;
    dialog.show();
    QVERIFY(!dialog.close());
    QVERIFY(dialog.isVisible());
}

void tst_progress_dialog::tellsOfItsDestructionOnlyForDebugging()
{
    const Messages messages;
    Messages::clear();
    delete new ProgressDialog;
    QCOMPARE(Messages::all(), QStringList());
    ProgressDialog::showDebug = true;
    delete new ProgressDialog;
    QCOMPARE(Messages::all(),
             QStringList("virtual mod_progress_qt::ProgressDialog::~ProgressDialog()"));
}

void tst_progress_dialog::layoutHoldsWhatStandsBeforeAndAfter()
{
    const Pointer dialog(new ProgressDialog);
    auto* above = new QLabel("above");
    auto* aboveLayout = new QHBoxLayout;
    auto* below = new QLabel("below");
    auto* belowLayout = new QHBoxLayout;
    const ProgressDialog::WidgetAndLayout before {above, aboveLayout};
    const ProgressDialog::WidgetAndLayout after {below, belowLayout};
    auto opts = withFlags(16);
    opts.abortText = "Stop";
    const QPushButton* button = ProgressDialog::createLayout(dialog, opts, &before, &after);
    QVERIFY(button);
    QCOMPARE(button->text(), "Stop");
    const QLayout* layout = dialog->layout();
    QVERIFY(qobject_cast<const QVBoxLayout*>(layout));
    QCOMPARE(layout->count(), 5);
    QCOMPARE(layout->itemAt(0)->widget(), above);
    QCOMPARE(layout->itemAt(1)->layout(), aboveLayout);
    QVERIFY(layout->itemAt(2)->widget()->isAncestorOf(button));
    QCOMPARE(layout->itemAt(3)->widget(), below);
    QCOMPARE(layout->itemAt(4)->layout(), belowLayout);
}

void tst_progress_dialog::layoutReplacesTheOneBefore()
{
    const Pointer dialog(new ProgressDialog);
    auto* kept = new QLabel("kept");
    auto* dropped = new QLabel("dropped");
    const ProgressDialog::WidgetAndLayout before {kept, nullptr};
    const ProgressDialog::WidgetAndLayout after {dropped, nullptr};
    const QPointer<QPushButton> button =
        ProgressDialog::createLayout(dialog, withFlags(1040), &before, &after);
    QCOMPARE(ProgressDialog::createLayout(dialog, withFlags(2), &before), nullptr);
    QVERIFY(button.isNull());
    dialog->show();
    QVERIFY(kept->isVisible());
    QVERIFY(!dropped->isVisible());
    QCOMPARE(dialog->layout()->count(), 2);
    QVERIFY(squaresOf(*dialog).isEmpty());
    ProgressDialog::setText(dialog, "new");
    QVERIFY(labelsOf(*dialog).contains("new"));
}

void tst_progress_dialog::layoutSetsTheTitle()
{
    const Pointer dialog(new ProgressDialog);
    auto opts = withFlags(2);
    opts.title = "Title";
    ProgressDialog::createLayout(dialog, opts);
    QCOMPARE(dialog->windowTitle(), "Title");
}

void tst_progress_dialog::wrappedTextAlwaysFits()
{
    const Pointer dialog = dialogWith(2 | 4 | 128);
    dialog->show();
    QVERIFY(ProgressDialog::setText(dialog, QString("some words ").repeated(100)));
    const QLabel* label = dialog->findChildren<QLabel*>().first();
    QTRY_VERIFY(label->height() >= label->heightForWidth(label->width()));
    QVERIFY(dialog->rect().contains(dialog->childrenRect()));
    QVERIFY(dialog->width() < 2000);
}

void tst_progress_dialog::nullIsTolerated()
{
    const Pointer none;
    QVERIFY(!ProgressDialog::setValue(none, {"a", {}, {}, 1, 2}));
    QVERIFY(!ProgressDialog::setProgress(none, "a", 1, 2));
    QVERIFY(!ProgressDialog::setProgress(none));
    QVERIFY(!ProgressDialog::setPercent(none, 1, 2));
    QVERIFY(!ProgressDialog::setText(none, "a", "b", "c"));
    QVERIFY(!ProgressDialog::setTitle(none, "a"));
    QVERIFY(!ProgressDialog::setAutoValue(none, true));
    QVERIFY(!ProgressDialog::hasAutoValue(none));
    QVERIFY(!ProgressDialog::setStopped(none, false));
    QVERIFY(!ProgressDialog::canAbort(none));
    QVERIFY(!ProgressDialog::canAbort(QPointer<ProgressDialog>()));
    QVERIFY(ProgressDialog::isStopped(none));
    QCOMPARE(ProgressDialog::createLayout(none, {}), nullptr);
    ProgressDialog::createHiddenLikeDialog(nullptr);
    ProgressDialog::clearShortCut({});
}

void tst_progress_dialog::titleIsSet()
{
    const Pointer dialog(new ProgressDialog);
    QVERIFY(ProgressDialog::setTitle(dialog, "new"));
    QCOMPARE(dialog->windowTitle(), "new");
}

void tst_progress_dialog::setValueShowsItsTexts()
{
    const Pointer dialog = dialogWith(14);
    QVERIFY(ProgressDialog::setText(dialog, "a", "b", "c"));
    QCOMPARE(labelsOf(*dialog), (QStringList {"a", "b", "c"}));
}

void tst_progress_dialog::setProgressShowsTextAndNumbers()
{
    const Pointer dialog = dialogWith(1038);
    QVERIFY(ProgressDialog::setProgress(dialog, "a", 1, 4));
    QCOMPARE(labelsOf(*dialog), (QStringList {"a", "", ""}));
    QCOMPARE(filledSquares(*dialog), 5);
}

void tst_progress_dialog::setPercentShowsNumbersOnly()
{
    const Pointer dialog = dialogWith(1026);
    QVERIFY(ProgressDialog::setPercent(dialog, 1, 4));
    QCOMPARE(labelsOf(*dialog), QStringList(""));
    QCOMPARE(filledSquares(*dialog), 5);
}

void tst_progress_dialog::setProgressWithoutValuesStepsEvenWithoutAutoValue()
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

void tst_progress_dialog::counterGoesFrom100To1()
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

void tst_progress_dialog::autoValueCountsInsteadOfShowingNumbers()
{
    const Pointer dialog = dialogWith(1026);
    ProgressDialog::setAutoValue(dialog, true);
    for (int step = 1; step < 10; ++step)
        ProgressDialog::setStopped(dialog, step % 2 == 0);
    QVERIFY(ProgressDialog::setProgress(dialog, "a", 100, 100));
    QCOMPARE(labelsOf(*dialog), QStringList("a"));
    QCOMPARE(filledSquares(*dialog), 0); // 1 of 100
}

void tst_progress_dialog::setAutoValueStartsAt0()
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

void tst_progress_dialog::aStoppedDialogIgnoresEverything()
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

void tst_progress_dialog::aStoppedDialogIsHiddenAndShownAgain()
{
    const Pointer dialog = dialogWith(2);
    dialog->show();
    ProgressDialog::setStopped(dialog, true);
    QVERIFY(!dialog->isVisible());
    QVERIFY(ProgressDialog::setStopped(dialog, false));
    QVERIFY(dialog->isVisible());
    QVERIFY(!ProgressDialog::isStopped(dialog));
}

void tst_progress_dialog::globalHideKeepsADialogHidden()
{
    const Pointer dialog = dialogWith(2);
    ProgressDialog::globalHide = true;
    ProgressDialog::setStopped(dialog, false);
    QVERIFY(!dialog->isVisible());
}

void tst_progress_dialog::canAbortIsAFlag()
{
    for (const int flags : {16, 1048, 2, 1024 + 15}) {
        const Pointer dialog = dialogWith(flags);
        QCOMPARE(ProgressDialog::canAbort(dialog), (flags & 16) != 0);
        QCOMPARE(ProgressDialog::canAbort(QPointer<ProgressDialog>(dialog.data())),
                 (flags & 16) != 0);
    }
}

void tst_progress_dialog::eventsAreProcessedIfSomethingWasDue()
{
    const Pointer dialog = dialogWith(2);
    bool handled = false;
    QMetaObject::invokeMethod(
        this, [&handled] { handled = true; }, Qt::QueuedConnection);
    QVERIFY(ProgressDialog::setText(dialog, "a"));
    QVERIFY(handled);
}

void tst_progress_dialog::eventsAreNotProcessedInsideTheDelay()
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

void tst_progress_dialog::userInputIsProcessedWithFlag_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<bool>("processed");
    QTest::newRow("neither") << 2 << false;
    QTest::newRow("abort") << 18 << true;
    QTest::newRow("no dialog") << 514 << true;
}

void tst_progress_dialog::userInputIsProcessedWithFlag()
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

void tst_progress_dialog::escapeWithoutAbortIsSwallowed()
{
    for (const bool modal : {true, false}) {
        const Pointer dialog =
            modal ? dialogWith(2) : ProgressDialog::createNonModal(nullptr, withFlags(2));
        dialog->show();
        const QSignalSpy abort(dialog.data(), &ProgressDialog::abortRequested);
        const QSignalSpy rejected(dialog.data(), &QDialog::rejected);
        QTest::keyClick(dialog.data(), Qt::Key_Escape);
        QVERIFY(dialog->isVisible());
        QVERIFY(!ProgressDialog::isStopped(dialog));
        QCOMPARE(abort.size(), 0);
        QCOMPARE(rejected.size(), 0);
    }
}

void tst_progress_dialog::otherKeysAreNot()
{
    const Pointer dialog(new ProgressDialog);
    auto* edit = new QLineEdit;
    const ProgressDialog::WidgetAndLayout before {edit, nullptr};
    ProgressDialog::createLayout(dialog, withFlags(2), &before);
    dialog->show();
    const QSignalSpy accepted(dialog.data(), &QDialog::accepted);
    QTest::keyClicks(edit, "abc");
    QCOMPARE(edit->text(), "abc");
}

void tst_progress_dialog::escapeInAModalDialogAsksForAbort()
{
    const Pointer dialog = dialogWith(18);
    dialog->show();
    const QSignalSpy abort(dialog.data(), &ProgressDialog::abortRequested);
    QTest::keyClick(dialog.data(), Qt::Key_Escape);
    QCOMPARE(abort.size(), 1);
    QVERIFY(dialog->isVisible());
}

void tst_progress_dialog::mainWindowComesBeforeDialogs()
{
    QCOMPARE(ProgressDialog::getMainWindow(), nullptr);
    const ProgressDialog progress;
    const QWidget other;
    QCOMPARE(ProgressDialog::getMainWindow(), nullptr);
    QDialog dialog;
    QCOMPARE(ProgressDialog::getMainWindow(), &dialog);
    QMainWindow window;
    QCOMPARE(ProgressDialog::getMainWindow(), &window);
}

void tst_progress_dialog::hiddenLikeDialogIsInvisible()
{
    QDialog dialog;
    ProgressDialog::createHiddenLikeDialog(&dialog);
    QCOMPARE(int(dialog.windowFlags()) & 2059, 2059);
    QCOMPARE(dialog.minimumSize(), QSize(0, 0));
    QCOMPARE(dialog.maximumSize(), QSize(0, 0));
    QVERIFY(dialog.testAttribute(Qt::WidgetAttribute(103)));
    QTimer::singleShot(0, &dialog, &QDialog::accept);
    QCOMPARE(dialog.exec(), int(QDialog::Accepted));
}

void tst_progress_dialog::shortcutIsCleared()
{
    QWidget window;
    const QPointer<QShortcut> shortcut = new QShortcut(QKeySequence(Qt::Key_Escape), &window);
    ProgressDialog::clearShortCut(shortcut);
    QVERIFY(shortcut);
    QVERIFY(!shortcut->isEnabled());
    QCOMPARE(shortcut->parent(), nullptr);
    settle();
    QVERIFY(shortcut.isNull());
}

void tst_progress_dialog::noOpenDialogsAreReported()
{
    QVERIFY(!ProgressDialog::hasOpenDialogs(nullptr, true, true));
}

void tst_progress_dialog::openDialogsAreReported()
{
    const Pointer dialog = ProgressDialog::createNonModal(nullptr, withFlags(18));
    const Pointer other(new ProgressDialog);
    QVERIFY(ProgressDialog::hasOpenDialogs(nullptr, false, false));
    QVERIFY(!ProgressDialog::isStopped(dialog));
    QVERIFY(ProgressDialog::hasOpenDialogs(nullptr, false, true));
    QVERIFY(ProgressDialog::isStopped(dialog));
    QVERIFY(!dialog->isVisible());
    // It had no flag 16.
    const Pointer kept = ProgressDialog::createNonModal(nullptr, withFlags(2));
    QVERIFY(ProgressDialog::hasOpenDialogs(nullptr, false, true));
    QVERIFY(!ProgressDialog::isStopped(kept));
}

void tst_progress_dialog::openDialogsAreWarnedOf()
{
    const Pointer dialog(new ProgressDialog);
    QWidget parent;
    QStringList said;
    const auto box = [] { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); };
    whenever([box] { return box() != nullptr; },
             [box, &said, &parent] {
                 said << box()->windowTitle() << box()->text();
                 QCOMPARE(box()->standardButtons(), QMessageBox::Ok);
                 QCOMPARE(box()->icon(), QMessageBox::Information);
                 QCOMPARE(box()->parentWidget(), &parent);
                 QTest::mouseClick(box()->button(QMessageBox::Ok), Qt::LeftButton);
             });
    QVERIFY(ProgressDialog::hasOpenDialogs(&parent, true, false));
    QCOMPARE(said, (QStringList {"Info:", "There are active processes running...."}));
}

void tst_progress_dialog::dialogsThatAreGoingAwayDoNotCount()
{
    ProgressDialog::createNonModal(nullptr, withFlags(2)).clear();
    QCOMPARE(ProgressDialog::all().size(), 1);
    QVERIFY(!ProgressDialog::hasOpenDialogs(nullptr, true, false));
}

QTEST_MAIN(tst_progress_dialog)
#include "tst_progress_dialog.moc"
