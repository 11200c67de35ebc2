#include "tests/progress/status_bar_fixture.h"

using namespace mod_progress_qt;

class tst_status_bar_end : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void modalClearsTheStatusBarAtItsEnd();
    void modalIsAbortedHard_data();
    void modalIsAbortedHard();
    void escapeBelongsToTheWindowAgainAfterwards();
    void mainWindowMayGoMeanwhile_data();
    void mainWindowMayGoMeanwhile();
    void parentMayGoMeanwhile();
    void workThatWasGivenUpShowsNothingMore_data();
    void workThatWasGivenUpShowsNothingMore();

private:
    std::unique_ptr<StatusWindow> m_window;
};

void tst_status_bar_end::init()
{
    openWindow(m_window);
}

void tst_status_bar_end::cleanup()
{
    closeWindow(m_window);
}

void tst_status_bar_end::modalClearsTheStatusBarAtItsEnd()
{
    for (const int flags : {0, kNoDialog}) {
        auto result = ProgressDialog::createModal(
            m_window.get(), withFlags(flags), {}, [](WorkerBase* worker) {
                worker->setProgress("half", 5, 10);
                return ProgressDialog::finalizeWorker(worker, {}, true);
            });
        QVERIFY(result.first);
        if (flags == 0)
            result.second.clear();
        settle();
        QCOMPARE(m_window->label->text(), "");
        QVERIFY(!m_window->bar->isVisible());
    }
}

void tst_status_bar_end::modalIsAbortedHard_data()
{
    bothWays();
}

void tst_status_bar_end::modalIsAbortedHard()
{
    QFETCH(int, flags);
    ProgressDialog::hardInterruptTimeMs = 1;
    const Messages messages;
    Messages::clear();
    std::binary_semaphore mayEnd {0};
    std::binary_semaphore hasEnded {0};
    whenever([] { return theDialog() != nullptr; },
             [] { ProgressDialog::hasOpenDialogs(nullptr, false, true); });
    const auto result =
        ProgressDialog::createModal(m_window.get(), withFlags(flags), {}, [&](WorkerBase* worker) {
            mayEnd.acquire();
            const int ok = ProgressDialog::finalizeWorker(worker, {}, true);
            hasEnded.release();
            return ok;
        });
    QVERIFY(!result.first);
    QCOMPARE(Messages::all().count("Hard abort due to timeout"), 1);
    mayEnd.release();
    hasEnded.acquire();
}

void tst_status_bar_end::escapeBelongsToTheWindowAgainAfterwards()
{
    const auto result = ProgressDialog::createModal(
        m_window.get(), withFlags(kAbort | kNoDialog), {},
        [](WorkerBase* worker) { return ProgressDialog::finalizeWorker(worker, {}, true); });
    QVERIFY(result.first);
    QShortcut own(QKeySequence(Qt::Key_Escape), m_window.get());
    const QSignalSpy activated(&own, &QShortcut::activated);
    QTest::keyClick(m_window->windowHandle(), Qt::Key_Escape);
    QCOMPARE(activated.size(), 1);
}

void tst_status_bar_end::mainWindowMayGoMeanwhile_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<bool>("isParent");
    QTest::newRow("invisible dialog") << 0 << true;
    QTest::newRow("no dialog") << kNoDialog << true;
    QTest::newRow("no dialog, no parent") << kNoDialog << false;
}

void tst_status_bar_end::mainWindowMayGoMeanwhile()
{
    QFETCH(int, flags);
    QFETCH(bool, isParent);
    std::binary_semaphore hasEnded {0};
    whenever([] { return theDialog() && theDialog()->controller(); }, [this] { m_window.reset(); });
    const auto result = ProgressDialog::createModal(isParent ? m_window.get() : nullptr,
                                                    withFlags(flags), {}, [&](WorkerBase* worker) {
                                                        const int ok = waitForAbort(worker);
                                                        hasEnded.release();
                                                        return ok;
                                                    });
    QVERIFY(!result.first);
    QVERIFY(result.second);
    hasEnded.acquire();
}

void tst_status_bar_end::parentMayGoMeanwhile()
{
    auto parent = std::make_unique<QWidget>();
    whenever([] { return theDialog() && theDialog()->controller(); },
             [&parent] { parent.reset(); });
    QVERIFY(
        !ProgressDialog::createModal(parent.get(), withFlags(kNoDialog), {}, waitForAbort).first);
}

void tst_status_bar_end::workThatWasGivenUpShowsNothingMore_data()
{
    bothWays();
}

void tst_status_bar_end::workThatWasGivenUpShowsNothingMore()
{
    QFETCH(int, flags);
    ProgressDialog::hardInterruptTimeMs = 1;
    std::binary_semaphore mayEnd {0};
    whenever([] { return theDialog() && theDialog()->controller(); },
             [] { ProgressDialog::hasOpenDialogs(nullptr, false, true); });
    const auto result =
        ProgressDialog::createModal(m_window.get(), withFlags(flags), {}, [&](WorkerBase* worker) {
            mayEnd.acquire();
            worker->setProgress("too late", 1, 2);
            return ProgressDialog::finalizeWorker(worker, QString("data"), true);
        });
    QVERIFY(!result.first);
    StatusUpdate::showMessage("the window's own", -1);
    mayEnd.release();
    // It comes with what it was sent after.
    QTRY_VERIFY_WITH_TIMEOUT(result.second->transferredData().has_value(), kPatience);
    settle();
    QCOMPARE(m_window->label->text(), "the window's own");
    QVERIFY(!m_window->bar->isVisible());
}

QTEST_MAIN(tst_status_bar_end)
#include "tst_status_bar_end.moc"
