#include "tests/progress/progress_fixture.h"

using namespace mod_progress_qt;

namespace {

using Pointer = ProgressDialog::Pointer;

CustomProgressBar::options withFlags(int flags)
{
    auto opts = ProgressDialog::GetStdProgressInfo(false, "Working");
    opts.flags = flags;
    opts.text = "at first";
    return opts;
}

constexpr int kAbort = 16;

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
    m_window = std::make_unique<StatusWindow>();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_restore_ui::cleanup()
{
    settle();
    m_window.reset();
    settle();
    ProgressDialog::showDebug = false;
    ProgressDialog::hardInterruptTimeMs = -1;
    QVERIFY(ProgressDialog::instances.isEmpty());
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
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
