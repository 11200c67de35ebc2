#include "tests/progress/status_bar_fixture.h"

#include <thread>

using namespace mod_progress_qt;

namespace {

using Pointer = ProgressDialog::Pointer;

constexpr int kNoStatusBar = 256;

} // namespace

class tst_status_bar : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void isInForceIf_data();
    void isInForceIf();
    void messageIsShownOnceEventsAreHandled();
    void negativePercentHidesTheBar();
    void oneOfLabelAndBarIsEnough();
    void messageWithoutAStatusBarDoesNothing();
    void messageComesFromAnyThread();
    void messageFromAThreadWithoutAStatusBarDoesNothing();
    void labelMayGoBeforeTheMessageArrives();
    void percentComesFromRawValues_data();
    void percentComesFromRawValues();
    void invalidPositionsLeaveWhatIsShown();
    void stepsAreShown();
    void flagKeepsItOutOfTheStatusBar();
    void nonModalWithoutBit512IsInvisibleAndDisablesTheWindow();
    void nonModalWithBit512LeavesTheWindowEnabled();
    void nonModalIsStoppedByEscape_data();
    void nonModalIsStoppedByEscape();
    void nonModalClearsTheStatusBarAtItsEnd();
    void nonModalWithBit512WithoutAMainWindow();
    void aSecondDialogClearsTheBarOnce();
    void aDialogThatShowsMoreAfterwardsClearsItAtItsEnd();
    void aStoppedDialogDoesNotClearWhatCameAfterIt();

private:
    std::unique_ptr<StatusWindow> m_window;
};

void tst_status_bar::init()
{
    openWindow(m_window);
}

void tst_status_bar::cleanup()
{
    closeWindow(m_window);
}

void tst_status_bar::isInForceIf_data()
{
    QTest::addColumn<bool>("active");
    QTest::addColumn<bool>("label");
    QTest::addColumn<bool>("bar");
    QTest::addColumn<int>("flags");
    QTest::addColumn<bool>("inForce");
    QTest::newRow("label and bar") << true << true << true << 0 << true;
    QTest::newRow("label") << true << true << false << 1048 << true;
    QTest::newRow("bar") << true << false << true << 512 << true;
    QTest::newRow("neither") << true << false << false << 0 << false;
    QTest::newRow("not active") << false << true << true << 0 << false;
    QTest::newRow("bit 256") << true << true << true << 256 << false;
}

void tst_status_bar::isInForceIf()
{
    QFETCH(bool, active);
    QFETCH(bool, label);
    QFETCH(bool, bar);
    QFETCH(int, flags);
    StatusUpdate::active = active;
    if (!label)
        delete m_window->label;
    if (!bar)
        delete m_window->bar;
    QTEST(StatusUpdate::isInForce(flags), "inForce");
}

void tst_status_bar::messageIsShownOnceEventsAreHandled()
{
    StatusUpdate::showMessage("text", 40);
    QCOMPARE(m_window->label->text(), "ready");
    settle();
    QCOMPARE(m_window->label->text(), "text");
    QVERIFY(m_window->bar->isVisible());
    QCOMPARE(m_window->bar->value(), 40);
}

void tst_status_bar::negativePercentHidesTheBar()
{
    StatusUpdate::showMessage("a", 0);
    settle();
    QVERIFY(m_window->bar->isVisible());
    QCOMPARE(m_window->bar->value(), 0);
    StatusUpdate::showMessage("b", -1);
    settle();
    QVERIFY(!m_window->bar->isVisible());
    QCOMPARE(m_window->bar->value(), 0);
    QCOMPARE(m_window->label->text(), "b");
}

void tst_status_bar::oneOfLabelAndBarIsEnough()
{
    delete m_window->bar;
    StatusUpdate::showMessage("a", 10);
    settle();
    QCOMPARE(m_window->label->text(), "a");
    auto* bar = new QProgressBar;
    m_window->setCentralWidget(bar);
    delete m_window->label;
    StatusUpdate::progress = bar;
    StatusUpdate::showMessage("b", 20);
    settle();
    QCOMPARE(bar->value(), 20);
}

void tst_status_bar::messageWithoutAStatusBarDoesNothing()
{
    StatusUpdate::active = false;
    StatusUpdate::showMessage("a", 10);
    StatusUpdate::active = true;
    settle();
    QCOMPARE(m_window->label->text(), "ready");
}

void tst_status_bar::messageComesFromAnyThread()
{
    QList<QThread*> threads;
    connect(
        m_window->bar, &QProgressBar::valueChanged, this,
        [&threads] { threads << QThread::currentThread(); }, Qt::DirectConnection);
    std::vector<std::thread> senders;
    std::atomic<int> sending = 4;
    for (int sender = 0; sender < 4; ++sender) {
        senders.emplace_back([sender, &sending] {
            for (int percent = 0; percent <= 50; ++percent)
                StatusUpdate::showMessage(QString("sender %1").arg(sender), percent);
            --sending;
        });
    }
    // Messages are shown while others are still being sent.
    while (sending > 0)
        QCoreApplication::processEvents();
    for (std::thread& sender : senders)
        sender.join();
    settle();
    QCOMPARE(m_window->bar->value(), 50);
    QVERIFY(m_window->label->text().startsWith("sender "));
    QVERIFY(!threads.isEmpty());
    QCOMPARE(threads.count(QThread::currentThread()), threads.size());
}

void tst_status_bar::messageFromAThreadWithoutAStatusBarDoesNothing()
{
    StatusUpdate::active = false;
    std::thread([] { StatusUpdate::showMessage("a", 10); }).join();
    settle();
    QCOMPARE(m_window->label->text(), "ready");
}

void tst_status_bar::labelMayGoBeforeTheMessageArrives()
{
    StatusUpdate::showMessage("a", 10);
    delete m_window->label;
    delete m_window->bar;
    settle();
}

void tst_status_bar::percentComesFromRawValues_data()
{
    QTest::addColumn<QVariant>("current");
    QTest::addColumn<QVariant>("total");
    QTest::addColumn<int>("percent"); // -1: the bar is hidden
    QTest::newRow("half") << QVariant(1) << QVariant(2) << 50;
    QTest::newRow("without a total") << QVariant(30) << QVariant() << 30;
    QTest::newRow("of zero") << QVariant(30) << QVariant(0) << 30;
    QTest::newRow("of less than zero") << QVariant(30) << QVariant(-5) << 30;
    QTest::newRow("below zero") << QVariant(-30) << QVariant(100) << -1;
    QTest::newRow("below zero without a total") << QVariant(-30) << QVariant() << -1;
    QTest::newRow("beyond 32 bits") << QVariant(3000000000LL) << QVariant(4000000000LL) << 75;
    QTest::newRow("far below zero") << QVariant(-3000000000LL) << QVariant() << -1;
}

void tst_status_bar::percentComesFromRawValues()
{
    QFETCH(QVariant, current);
    QFETCH(QVariant, total);
    QFETCH(int, percent);
    const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kNoDialog));
    QVERIFY(ProgressDialog::setValue(dialog, {"a", "b", "c", current, total}));
    QCOMPARE(m_window->label->text(), "a");
    QCOMPARE(m_window->bar->isVisible(), percent >= 0);
    if (percent >= 0)
        QCOMPARE(m_window->bar->value(), percent);
}

void tst_status_bar::invalidPositionsLeaveWhatIsShown()
{
    const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kNoDialog));
    ProgressDialog::setText(dialog, "a");
    QVERIFY(!m_window->bar->isVisible());
    ProgressDialog::setPercent(dialog, 30, 100);
    QCOMPARE(m_window->label->text(), "a");
    QCOMPARE(m_window->bar->value(), 30);
    ProgressDialog::setText(dialog, "b");
    QCOMPARE(m_window->label->text(), "b");
    QCOMPARE(m_window->bar->value(), 30);
    QVERIFY(m_window->bar->isVisible());
}

void tst_status_bar::stepsAreShown()
{
    const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kNoDialog));
    for (int step = 1; step <= 101; ++step) {
        ProgressDialog::setProgress(dialog);
        QCOMPARE(m_window->bar->value(), step > 100 ? 1 : step);
    }
    QCOMPARE(m_window->label->text(), "at first");
}

void tst_status_bar::flagKeepsItOutOfTheStatusBar()
{
    const Pointer dialog =
        ProgressDialog::createNonModal(m_window.get(), withFlags(kNoStatusBar | kNoDialog | 2));
    QVERIFY(dialog->isVisible());
    QVERIFY(!dialog->testAttribute(Qt::WA_DontShowOnScreen));
    ProgressDialog::setProgress(dialog, "a", 1, 2);
    QCOMPARE(labelsOf(*dialog), QStringList("a"));
    QCOMPARE(m_window->label->text(), "ready");
}

void tst_status_bar::nonModalWithoutBit512IsInvisibleAndDisablesTheWindow()
{
    Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort));
    QVERIFY(!m_window->isEnabled());
    QVERIFY(dialog->isEnabled());
    QVERIFY(dialog->testAttribute(Qt::WA_DontShowOnScreen));
    QCOMPARE(dialog->size(), QSize(0, 0));
    QCOMPARE(dialog->layout(), nullptr);
    dialog.clear();
    settle();
    QVERIFY(m_window->isEnabled());
}

void tst_status_bar::nonModalWithBit512LeavesTheWindowEnabled()
{
    const Pointer dialog =
        ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort | kNoDialog));
    QVERIFY(m_window->isEnabled());
    QVERIFY(!dialog->isVisible());
    QCOMPARE(m_window->findChildren<QShortcut*>(Qt::FindDirectChildrenOnly).size(), 1);
}

void tst_status_bar::nonModalIsStoppedByEscape_data()
{
    QTest::addColumn<int>("flags");
    QTest::newRow("invisible dialog") << kAbort;
    QTest::newRow("no dialog") << (kAbort | kNoDialog);
}

void tst_status_bar::nonModalIsStoppedByEscape()
{
    QFETCH(int, flags);
    const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(flags));
    ProgressDialog::setProgress(dialog, "a", 1, 2);
    QTest::keyClick(m_window->windowHandle(), Qt::Key_Escape);
    QVERIFY(ProgressDialog::isStopped(dialog));
    QVERIFY(!dialog->isVisible());
    settle();
    QCOMPARE(m_window->label->text(), "");
    QVERIFY(!m_window->bar->isVisible());
    QVERIFY(m_window->findChildren<QShortcut*>().isEmpty());
}

void tst_status_bar::nonModalClearsTheStatusBarAtItsEnd()
{
    Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kNoDialog));
    ProgressDialog::setProgress(dialog, "a", 1, 2);
    dialog.clear();
    settle();
    QCOMPARE(m_window->label->text(), "");
    QVERIFY(!m_window->bar->isVisible());
}

void tst_status_bar::nonModalWithBit512WithoutAMainWindow()
{
    QWidget other;
    auto* label = new QLabel(&other);
    m_window.reset();
    StatusUpdate::active = true;
    StatusUpdate::label = label;
    const Pointer dialog = ProgressDialog::createNonModal(nullptr, withFlags(kAbort | kNoDialog));
    ProgressDialog::setText(dialog, "a");
    QCOMPARE(label->text(), "a");
    StatusUpdate::active = false;
}

void tst_status_bar::aSecondDialogClearsTheBarOnce()
{
    Pointer first = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort | kNoDialog));
    ProgressDialog::setProgress(first, "first", 1, 2);
    const QPointer<QShortcut> shortcut = m_window->findChild<QShortcut*>();
    QVERIFY(shortcut);
    const Pointer second = ProgressDialog::createNonModal(m_window.get(), withFlags(kNoDialog));
    QCOMPARE(m_window->label->text(), "");
    QVERIFY(!m_window->bar->isVisible());
    QVERIFY(shortcut.isNull());

    ProgressDialog::setProgress(second, "second", 1, 4);
    first.clear();
    settle();
    QCOMPARE(m_window->label->text(), "second");
    QVERIFY(m_window->bar->isVisible());
}

void tst_status_bar::aDialogThatShowsMoreAfterwardsClearsItAtItsEnd()
{
    Pointer first = ProgressDialog::createNonModal(m_window.get(), withFlags(kNoDialog));
    const Pointer second = ProgressDialog::createNonModal(m_window.get(), withFlags(kNoDialog));
    ProgressDialog::setProgress(first, "still here", 1, 2);
    first.clear();
    settle();
    QCOMPARE(m_window->label->text(), "");
}

void tst_status_bar::aStoppedDialogDoesNotClearWhatCameAfterIt()
{
    Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort | kNoDialog));
    ProgressDialog::setProgress(dialog, "a", 1, 2);
    QTest::keyClick(m_window->windowHandle(), Qt::Key_Escape);
    StatusUpdate::showMessage("the window's own", -1);
    dialog.clear();
    settle();
    QCOMPARE(m_window->label->text(), "the window's own");
}

QTEST_MAIN(tst_status_bar)
#include "tst_status_bar.moc"
