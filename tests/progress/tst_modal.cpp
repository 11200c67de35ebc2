#include "tests/progress/progress_fixture.h"

using namespace mod_progress_qt;

namespace {

CustomProgressBar::options withFlags(int flags)
{
    auto opts = ProgressDialog::GetStdProgressInfo(false, "Working");
    opts.flags = flags;
    return opts;
}

int endAtOnce(WorkerBase* worker)
{
    return ProgressDialog::finalizeWorker(worker, worker->data(), true);
}

/// Does its work without a function, and knows something of its own.
class CountingWorker : public WorkerBase
{
public:
    using WorkerBase::WorkerBase;

    void doWork() override
    {
        const int last = std::any_cast<int>(data());
        for (int number = 1; number <= last; ++number)
            sum += number;
        ProgressDialog::finalizeWorker(this, sum, true);
    }

    int sum = 0;
};

/// Has something that its function uses.
class AddingWorker : public WorkerBase
{
public:
    using WorkerBase::WorkerBase;

    int add(int number) { return sum += number; }

    int sum = 100;
};

} // namespace

class tst_modal : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void workRunsOnAThreadOfItsOwn();
    void callerWaitsInAModalDialog();
    void dataComesInAndOut();
    void dialogIsReturnedWithItsData();
    void resultIsTrueEvenIfTheWorkIsNotOk();
    void progressIsShown();
    void latestProgressOfAFloodIsShown();
    void stepsAreShown();
    void everyUpdateIsSignalled();
    void dataMayBeTransferredOnTheWay();
    void dataThatComesWithTheEndIsThere();
    void holdsWhatStandsBeforeAndAfter();
    void ownWorkerClassDoesItsWork();
    void functionGetsTheOwnWorkerClass();
    void functionOfTheBaseClassGoesWithAnyWorker();
    void runsNestIntoEachOther();
    void withoutAStatusBarBit512MakesNoDifference();
};

void tst_modal::cleanup()
{
    settle();
    QVERIFY(ProgressDialog::instances.isEmpty());
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
    QTRY_VERIFY_WITH_TIMEOUT(qApp->findChildren<QTimer*>().isEmpty(), kPatience);
}

void tst_modal::workRunsOnAThreadOfItsOwn()
{
    const QThread* workThread = nullptr;
    const QThread* workersThread = nullptr;
    const auto result =
        ProgressDialog::createModal(nullptr, withFlags(8), {}, [&](WorkerBase* worker) {
            workThread = QThread::currentThread();
            workersThread = worker->thread();
            return endAtOnce(worker);
        });
    QVERIFY(result.first);
    QVERIFY(workThread != nullptr);
    QVERIFY(workThread != QThread::currentThread());
    QCOMPARE(workThread, workersThread);
}

void tst_modal::callerWaitsInAModalDialog()
{
    std::atomic<bool> mayEnd = false;
    QWidget parent;
    bool asExpected = false;
    onceModal([&](ProgressDialog& dialog) {
        asExpected = dialog.isModal() && dialog.isModalWork() && dialog.parentWidget() == &parent
            && dialog.windowTitle() == QLatin1String("Working") && theDialog() == &dialog;
        mayEnd = true;
    });
    const auto result =
        ProgressDialog::createModal(&parent, withFlags(8), {}, [&](WorkerBase* worker) {
            while (!mayEnd)
                QThread::yieldCurrentThread();
            return endAtOnce(worker);
        });
    QVERIFY(result.first);
    QVERIFY(asExpected);
    QVERIFY(!result.second->isVisible());
}

void tst_modal::dataComesInAndOut()
{
    const auto result =
        ProgressDialog::createModal(nullptr, withFlags(8), QString("in"), [](WorkerBase* worker) {
            const auto in = std::any_cast<QString>(worker->data());
            return ProgressDialog::finalizeWorker(worker, in + " and out", true);
        });
    QCOMPARE(std::any_cast<QString>(result.second->transferredData()), "in and out");
}

void tst_modal::dialogIsReturnedWithItsData()
{
    auto result = ProgressDialog::createModal(nullptr, withFlags(8), 7, endAtOnce);
    QVERIFY(result.second);
    const QPointer<ProgressDialog> dialog(result.second.data());
    settle();
    QCOMPARE(std::any_cast<int>(dialog->transferredData()), 7);
    result.second.clear();
    settle();
    QVERIFY(dialog.isNull());
}

void tst_modal::resultIsTrueEvenIfTheWorkIsNotOk()
{
    std::atomic<int> returned = -1;
    const auto result =
        ProgressDialog::createModal(nullptr, withFlags(8), {}, [&](WorkerBase* worker) {
            returned = ProgressDialog::finalizeWorker(worker, {}, false);
            return 0;
        });
    QVERIFY(result.first);
    QTRY_COMPARE_WITH_TIMEOUT(returned, 0, kPatience);
}

void tst_modal::progressIsShown()
{
    std::atomic<bool> shown = false;
    onceModal([&](ProgressDialog& dialog) {
        whenever(
            [&dialog] { return labelsOf(dialog).first() == "half" && filledSquares(dialog) == 10; },
            [&] { shown = true; });
    });
    const auto result =
        ProgressDialog::createModal(nullptr, withFlags(2 | 1024), {}, [&](WorkerBase* worker) {
            while (!shown)
                worker->setProgress("half", 5, 10);
            return endAtOnce(worker);
        });
    QVERIFY(result.first);
}

void tst_modal::latestProgressOfAFloodIsShown()
{
    std::atomic<bool> shown = false;
    onceModal([&](ProgressDialog& dialog) {
        whenever([&dialog] { return labelsOf(dialog).first() == "last"; }, [&] { shown = true; });
    });
    const auto result =
        ProgressDialog::createModal(nullptr, withFlags(2 | 1024), {}, [&](WorkerBase* worker) {
            for (int number = 0; number < 50000; ++number)
                worker->setProgress("flood", number, 50000);
            while (!shown)
                worker->setProgress("last", 1, 1);
            return endAtOnce(worker);
        });
    QVERIFY(result.first);
    QCOMPARE(result.second->findChildren<QLabel*>().first()->text(), "last");
}

void tst_modal::stepsAreShown()
{
    std::atomic<bool> shown = false;
    onceModal([&](ProgressDialog& dialog) {
        whenever([&dialog] { return filledSquares(dialog) > 0; }, [&] { shown = true; });
    });
    const auto result =
        ProgressDialog::createModal(nullptr, withFlags(1024), {}, [&](WorkerBase* worker) {
            while (!shown)
                emit worker->updateProgress({});
            return endAtOnce(worker);
        });
    QVERIFY(result.first);
}

void tst_modal::everyUpdateIsSignalled()
{
    int updates = 0;
    QVariantList last;
    const auto result =
        ProgressDialog::createModal(nullptr, withFlags(8), {}, [&](WorkerBase* worker) {
            connect(
                worker, &WorkerBase::updateProgress, worker,
                [&](const ProgressValues& values) {
                    ++updates;
                    last = {std::get<0>(values), std::get<1>(values), std::get<2>(values),
                            std::get<3>(values), std::get<4>(values)};
                },
                Qt::DirectConnection);
            for (int number = 0; number < 1000; ++number)
                worker->setProgress("a", number, 1000);
            return endAtOnce(worker);
        });
    QVERIFY(result.first);
    QCOMPARE(updates, 1000);
    QCOMPARE(last, (QVariantList {"a", QVariant(), QVariant(), 999, 1000}));
    QCOMPARE(last.at(3).typeId(), int(QMetaType::LongLong));
}

void tst_modal::dataMayBeTransferredOnTheWay()
{
    std::atomic<bool> arrived = false;
    onceModal([&](ProgressDialog& dialog) {
        whenever([&dialog] { return dialog.transferredData().has_value(); },
                 [&] { arrived = true; });
    });
    const auto result =
        ProgressDialog::createModal(nullptr, withFlags(8), {}, [&](WorkerBase* worker) {
            emit worker->transferData(1);
            while (!arrived)
                QThread::yieldCurrentThread();
            return ProgressDialog::finalizeWorker(worker, 2, true);
        });
    QCOMPARE(std::any_cast<int>(result.second->transferredData()), 2);
}

void tst_modal::dataThatComesWithTheEndIsThere()
{
    for (int run = 0; run < 50; ++run) {
        const auto result = ProgressDialog::createModal(nullptr, withFlags(8), run, endAtOnce);
        QVERIFY(result.first);
        QCOMPARE(std::any_cast<int>(result.second->transferredData()), run);
    }
}

void tst_modal::holdsWhatStandsBeforeAndAfter()
{
    const QPointer<QLabel> above = new QLabel("above");
    const QPointer<QLabel> below = new QLabel("below");
    const ProgressDialog::WidgetAndLayout before {above, nullptr};
    const ProgressDialog::WidgetAndLayout after {below, nullptr};
    auto result =
        ProgressDialog::createModal(nullptr, withFlags(8), {}, endAtOnce, &before, &after);
    QCOMPARE(above->window(), result.second.data());
    QVERIFY(above->y() < below->y());
    result.second.clear();
    settle();
    QVERIFY(above.isNull());
    QVERIFY(below.isNull());
}

void tst_modal::ownWorkerClassDoesItsWork()
{
    const auto result = ProgressDialog::createModal<CountingWorker>(nullptr, withFlags(8), 100, {});
    QVERIFY(result.first);
    QCOMPARE(std::any_cast<int>(result.second->transferredData()), 5050);
}

void tst_modal::functionGetsTheOwnWorkerClass()
{
    const auto result = ProgressDialog::createModal<AddingWorker>(
        nullptr, withFlags(8), {}, [](AddingWorker* worker) {
            return ProgressDialog::finalizeWorker(worker, worker->add(11), true);
        });
    QCOMPARE(std::any_cast<int>(result.second->transferredData()), 111);
}

void tst_modal::functionOfTheBaseClassGoesWithAnyWorker()
{
    const std::function<int(WorkerBase*)> work = endAtOnce;
    const auto result = ProgressDialog::createModal<AddingWorker>(nullptr, withFlags(8), 5, work);
    QCOMPARE(std::any_cast<int>(result.second->transferredData()), 5);
    const auto plain = ProgressDialog::createModal<WorkerBase>(nullptr, withFlags(8), 6, work);
    QCOMPARE(std::any_cast<int>(plain.second->transferredData()), 6);
}

void tst_modal::runsNestIntoEachOther()
{
    std::pair<bool, ProgressDialog::Pointer> inner;
    std::atomic<bool> innerDone = false;
    onceModal([&](ProgressDialog& dialog) {
        inner = ProgressDialog::createModal(&dialog, withFlags(8), 2, endAtOnce);
        innerDone = true;
    });
    const auto outer =
        ProgressDialog::createModal(nullptr, withFlags(8), 1, [&](WorkerBase* worker) {
            while (!innerDone)
                QThread::yieldCurrentThread();
            return endAtOnce(worker);
        });
    QCOMPARE(std::any_cast<int>(outer.second->transferredData()), 1);
    QCOMPARE(std::any_cast<int>(inner.second->transferredData()), 2);
}

void tst_modal::withoutAStatusBarBit512MakesNoDifference()
{
    QMainWindow window;
    window.show();
    std::atomic<bool> mayEnd = false;
    bool asExpected = false;
    onceModal([&](ProgressDialog& dialog) {
        asExpected = dialog.isModal() && dialog.isVisible() && abortButtonOf(dialog)
            && window.isEnabled() && window.findChildren<QShortcut*>().isEmpty();
        QTest::keyClick(&dialog, Qt::Key_Escape);
        asExpected = asExpected && dialog.controller()->isAborted();
        mayEnd = true;
    });
    const auto result =
        ProgressDialog::createModal(&window, withFlags(16 | 512), {}, [&](WorkerBase* worker) {
            while (!mayEnd)
                QThread::yieldCurrentThread();
            return endAtOnce(worker);
        });
    QVERIFY(!result.first);
    QVERIFY(asExpected);
}

QTEST_MAIN(tst_modal)
#include "tst_modal.moc"
