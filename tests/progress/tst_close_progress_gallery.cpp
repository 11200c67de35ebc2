// The window of the gallery is closed or destroyed while work runs in its status bar.

#include "tests/progress/progress_fixture.h"

#include "tools/progress_gallery/gallery_window.h"

using namespace mod_progress_qt;
using namespace progress_gallery;

namespace {

/// A run behind which the window stays usable.
Route freeRoute(bool modal)
{
    Route route;
    route.title = "run";
    route.modal = modal;
    route.statusBar = true;
    route.windowStaysEnabled = true;
    return route;
}

} // namespace

class tst_close_progress_gallery : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void closingTheWindowGivesWorkUp();
    void windowMayBeDestroyedMeanwhile_data();
    void windowMayBeDestroyedMeanwhile();
};

void tst_close_progress_gallery::cleanup()
{
    settle();
    QVERIFY(ProgressDialog::all().isEmpty());
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_close_progress_gallery::closingTheWindowGivesWorkUp()
{
    GalleryWindow window;
    window.show();
    QStringList outcomes;
    QTimer::singleShot(0, &window, [&] {
        window.start(freeRoute(true));
        outcomes = window.outcomes();
    });
    whenever([] { return theDialog() && theDialog()->controller(); },
             [&window] { window.close(); });
    // As in the program, which ends with its last window.
    QApplication::exec();
    QCOMPARE(outcomes, QStringList("run: aufgegeben"));
}

void tst_close_progress_gallery::windowMayBeDestroyedMeanwhile_data()
{
    QTest::addColumn<bool>("modal");
    QTest::newRow("thread") << true;
    QTest::newRow("loop") << false;
}

void tst_close_progress_gallery::windowMayBeDestroyedMeanwhile()
{
    QFETCH(bool, modal);
    auto window = std::make_unique<GalleryWindow>();
    window->show();
    whenever([] { return theDialog() != nullptr && StatusUpdate::progress->isVisible(); },
             [&window, modal] {
                 window.reset();
                 if (!modal) // a loop would go on to its end
                     ProgressDialog::hasOpenDialogs(nullptr, false, true);
             });
    window->start(freeRoute(modal));
    QVERIFY(!window);
}

QTEST_MAIN(tst_close_progress_gallery)
#include "tst_close_progress_gallery.moc"
