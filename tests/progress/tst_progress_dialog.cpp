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
    void closeButtonDoesNothing();
    void tellsOfItsDestructionOnlyForDebugging();
    void nullIsTolerated();
    void titleIsSet();
    void aStoppedDialogIsHiddenAndShownAgain();
    void globalHideKeepsADialogHidden();
    void canAbortIsAFlag();
    void escapeWithoutAbortIsSwallowed();
    void otherKeysAreNot();
    void escapeInAModalDialogAsksForAbort();
    void shortcutIsCleared();
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

QTEST_MAIN(tst_progress_dialog)
#include "tst_progress_dialog.moc"
