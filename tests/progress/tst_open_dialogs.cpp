#include "tests/progress/progress_fixture.h"

#include <thread>

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

} // namespace

class tst_open_dialogs : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void aNewDialogIsOpenAndHasNoCloseButton();
    void aDestroyedDialogIsNotOpen();
    void unregisteringAStrangerDoesNothing();
    void mainWindowComesBeforeDialogs();
    void noOpenDialogsAreReported();
    void openDialogsAreReported();
    void openDialogsAreWarnedOf();
    void dialogsThatAreGoingAwayDoNotCount();
    void askingHandlesWhatIsWaiting();
    void abortComesBeforeTheWarning();
    void listIsCopiedWhileDialogsComeAndGo();
};

void tst_open_dialogs::cleanup()
{
    settle();
    QVERIFY(ProgressDialog::instances.isEmpty());
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
    ProgressDialog::globalHide = false;
    ProgressDialog::showDebug = false;
}

void tst_open_dialogs::aNewDialogIsOpenAndHasNoCloseButton()
{
    ProgressDialog dialog;
    QCOMPARE(ProgressDialog::all(), QList<QPointer<ProgressDialog>> {&dialog});
    QVERIFY(!dialog.windowFlags().testFlag(Qt::WindowCloseButtonHint));
    QVERIFY(dialog.windowFlags().testFlag(Qt::WindowTitleHint));
    QVERIFY(dialog.isModalWork());
}

void tst_open_dialogs::aDestroyedDialogIsNotOpen()
{
    auto* first = new ProgressDialog;
    auto* second = new ProgressDialog;
    delete first;
    QCOMPARE(ProgressDialog::all(), QList<QPointer<ProgressDialog>> {second});
    delete second;
    QVERIFY(ProgressDialog::all().isEmpty());
}

void tst_open_dialogs::unregisteringAStrangerDoesNothing()
{
    ProgressDialog dialog;
    ProgressDialog::unregisterInstance(nullptr);
    QCOMPARE(ProgressDialog::all().size(), 1);
    ProgressDialog::unregisterInstance(&dialog);
    ProgressDialog::unregisterInstance(&dialog);
    QVERIFY(ProgressDialog::all().isEmpty());
}

void tst_open_dialogs::mainWindowComesBeforeDialogs()
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

void tst_open_dialogs::noOpenDialogsAreReported()
{
    QVERIFY(!ProgressDialog::hasOpenDialogs(nullptr, true, true));
}

void tst_open_dialogs::openDialogsAreReported()
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

void tst_open_dialogs::openDialogsAreWarnedOf()
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

void tst_open_dialogs::dialogsThatAreGoingAwayDoNotCount()
{
    ProgressDialog::createNonModal(nullptr, withFlags(2)).clear();
    QCOMPARE(ProgressDialog::all().size(), 1);
    QVERIFY(!ProgressDialog::hasOpenDialogs(nullptr, true, false));
}

void tst_open_dialogs::askingHandlesWhatIsWaiting()
{
    bool handled = false;
    QMetaObject::invokeMethod(
        this, [&handled] { handled = true; }, Qt::QueuedConnection);
    QVERIFY(!ProgressDialog::hasOpenDialogs(nullptr, false, false));
    QVERIFY(handled);
}

void tst_open_dialogs::abortComesBeforeTheWarning()
{
    const Pointer dialog = ProgressDialog::createNonModal(nullptr, withFlags(18));
    bool stopped = false;
    const auto box = [] { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); };
    whenever([box] { return box() != nullptr; },
             [&] {
                 stopped = ProgressDialog::isStopped(dialog);
                 QTest::mouseClick(box()->button(QMessageBox::Ok), Qt::LeftButton);
             });
    QVERIFY(ProgressDialog::hasOpenDialogs(nullptr, true, true));
    QVERIFY(stopped);
}

void tst_open_dialogs::listIsCopiedWhileDialogsComeAndGo()
{
    constexpr int dialogs = 500;
    std::atomic<bool> done = false;
    std::atomic<qsizetype> most = 0;
    std::vector<std::thread> readers;
    for (int reader = 0; reader < 2; ++reader) {
        readers.emplace_back([&] {
            while (!done) {
                const qsizetype open = ProgressDialog::all().size();
                if (open > most)
                    most = open;
            }
        });
    }
    for (int number = 0; number < dialogs; ++number) {
        const auto first = std::make_unique<ProgressDialog>();
        const auto second = std::make_unique<ProgressDialog>();
    }
    ProgressDialog last;
    QTRY_VERIFY_WITH_TIMEOUT(most > 0, kPatience);
    done = true;
    for (std::thread& reader : readers)
        reader.join();
    QVERIFY(most <= 2);
    QCOMPARE(theDialog(), &last);
}

QTEST_MAIN(tst_open_dialogs)
#include "tst_open_dialogs.moc"
