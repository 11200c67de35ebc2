#include "tests/progress/status_bar_fixture.h"

using namespace mod_progress_qt;

namespace {

using Pointer = ProgressDialog::Pointer;

} // namespace

class tst_restore_ui : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void restoringTakesAnyNumber_data();
    void restoringTakesAnyNumber();
    void restoringTwiceIsRestoringOnce();
    void restoringWithoutTheMainWindow();

private:
    std::unique_ptr<StatusWindow> m_window;
};

void tst_restore_ui::init()
{
    openWindow(m_window);
}

void tst_restore_ui::cleanup()
{
    closeWindow(m_window);
}

void tst_restore_ui::restoringTakesAnyNumber_data()
{
    QTest::addColumn<int>("code");
    QTest::newRow("-1") << -1;
    QTest::newRow("0") << 0;
    QTest::newRow("42") << 42;
}

void tst_restore_ui::restoringTakesAnyNumber()
{
    QFETCH(int, code);
    const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort));
    ProgressDialog::setProgress(dialog, "a", 1, 2);
    const QPointer<QShortcut> shortcut = dialog->findChild<QShortcut*>();
    QVERIFY(shortcut);
    QVERIFY(!m_window->isEnabled());
    dialog->restoreUiState(code);
    settle();
    QVERIFY(m_window->isEnabled());
    QCOMPARE(m_window->label->text(), "");
    QVERIFY(!m_window->bar->isVisible());
    QVERIFY(shortcut.isNull());
}

void tst_restore_ui::restoringTwiceIsRestoringOnce()
{
    const Pointer dialog = ProgressDialog::createNonModal(m_window.get(), withFlags(kAbort));
    dialog->restoreUiState(-1);
    m_window->setEnabled(false);
    StatusUpdate::showMessage("the window's own", -1);
    dialog->restoreUiState(-1);
    settle();
    QVERIFY(!m_window->isEnabled());
    QCOMPARE(m_window->label->text(), "the window's own");
}

void tst_restore_ui::restoringWithoutTheMainWindow()
{
    const Pointer dialog = ProgressDialog::createNonModal(nullptr, withFlags(kAbort));
    m_window.reset();
    dialog->restoreUiState(-1);
    QVERIFY(dialog->findChildren<QShortcut*>().isEmpty());
}

QTEST_MAIN(tst_restore_ui)
#include "tst_restore_ui.moc"
