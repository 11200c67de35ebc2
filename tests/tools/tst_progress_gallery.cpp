#include "progress/mod_progress_qt.h"

#include "tools/progress_gallery/gallery_window.h"
#include "tools/progress_gallery/looks.h"
#include "tools/progress_gallery/screenshots.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QProcess>
#include <QSet>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace mod_progress_qt;
using namespace progress_gallery;

namespace {

constexpr int kPatience = 120000;
constexpr int kAllFlags = 2048;
constexpr int kRoutes = CustomProgressBar::kNoStatusBar | CustomProgressBar::kNoDialog;

QByteArray pictureOf(int flags)
{
    const std::unique_ptr<QWidget> sample(makeSample(flags, 10));
    sample->resize(flags & CustomProgressBar::kWrapLabels ? 220 : 320, 200);
    const QImage picture = sample->grab().toImage();
    return {reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes()};
}

QList<int> allLooks()
{
    QList<int> looks;
    for (const Sheet& sheet : sheets()) {
        for (const Look& look : sheet.looks)
            looks << look.flags;
    }
    return looks;
}

struct Run
{
    int status = -1;
    QString errors;
};

/// Runs the program itself.
Run runGallery(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral(LEDORA_BIN_DIR "/progress_gallery"), arguments);
    Run run;
    if (process.waitForFinished(kPatience) && process.exitStatus() == QProcess::NormalExit)
        run.status = process.exitCode();
    else
        process.kill();
    process.waitForFinished(kPatience);
    run.errors = QString::fromUtf8(process.readAllStandardError());
    return run;
}

} // namespace

class tst_progress_gallery : public QObject
{
    Q_OBJECT

private slots:
    void everyLookIsShownOnce();
    void noTwoLooksAreTheSame();
    void everyCombinationLooksLikeOneThatIsShown();
    void chosenFlagsAreThoseOfTheSample();
    void everyKindOfRouteIsThere_data();
    void everyKindOfRouteIsThere();
    void runsAreNoted();
    void aSecondRunIsRefused();
    void programWritesAPictureOfEachPageAndRoute();
    void programFailsOnAFolderThatCannotBeWritten();
    void programRefusesUnknownArguments();
};

void tst_progress_gallery::everyLookIsShownOnce()
{
    // 3 states of each label, wrapped or not where there is one, times abort times squares
    QCOMPARE(allLooks().size(), (26 * 2 + 1) * 4);
    const QList<int> looks = allLooks();
    QCOMPARE(QSet<int>(looks.cbegin(), looks.cend()).size(), looks.size());
}

void tst_progress_gallery::noTwoLooksAreTheSame()
{
    QHash<QByteArray, int> pictures;
    for (const int look : allLooks()) {
        const QByteArray picture = pictureOf(look);
        QVERIFY2(!pictures.contains(picture),
                 qPrintable(QString("%1 and %2").arg(look).arg(pictures.value(picture))));
        pictures.insert(picture, look);
    }
}

void tst_progress_gallery::everyCombinationLooksLikeOneThatIsShown()
{
    QHash<int, QByteArray> pictures;
    for (const int look : allLooks())
        pictures.insert(look, pictureOf(look));
    for (int flags = 0; flags < kAllFlags; ++flags) {
        const int look = lookOf(flags);
        QVERIFY(pictures.contains(look));
        if (flags != look && !(flags & (CustomProgressBar::kWrapLabels | kRoutes)))
            QCOMPARE(pictureOf(flags), pictures.value(look));
    }
}

void tst_progress_gallery::chosenFlagsAreThoseOfTheSample()
{
    GalleryWindow window;
    window.show();
    for (const int flags : {0, 1048, 1279 & ~256, 2 + 128}) {
        window.setFlags(flags);
        QCOMPARE(window.flags(), flags);
    }
}

void tst_progress_gallery::everyKindOfRouteIsThere_data()
{
    QTest::addColumn<bool>("modal");
    QTest::addColumn<bool>("statusBar");
    QTest::addColumn<bool>("windowStaysEnabled");
    QTest::newRow("modal") << true << false << false;
    QTest::newRow("modal, status bar") << true << true << false;
    QTest::newRow("modal, status bar, bit 512") << true << true << true;
    QTest::newRow("loop") << false << false << false;
    QTest::newRow("loop, bit 512") << false << false << true;
    QTest::newRow("loop, status bar") << false << true << false;
    QTest::newRow("loop, status bar, bit 512") << false << true << true;
}

void tst_progress_gallery::everyKindOfRouteIsThere()
{
    QFETCH(bool, modal);
    QFETCH(bool, statusBar);
    QFETCH(bool, windowStaysEnabled);
    const QList<Route> all = routes();
    QVERIFY(std::any_of(all.cbegin(), all.cend(), [&](const Route& route) {
        return route.modal == modal && route.statusBar == statusBar
            && route.windowStaysEnabled == windowStaysEnabled;
    }));
}

void tst_progress_gallery::runsAreNoted()
{
    GalleryWindow window;
    window.show();
    QTimer stopping;
    connect(&stopping, &QTimer::timeout, &window,
            [] { ProgressDialog::hasOpenDialogs(nullptr, false, true); });
    stopping.start(20);
    const QList<Route> all = routes();
    for (const Route& route : all) {
        window.start(route);
        QVERIFY2(window.outcomes().constLast().startsWith(route.title + ": abgebrochen nach "),
                 qPrintable(window.outcomes().constLast()));
    }
    QCOMPARE(window.outcomes().size(), all.size());
}

void tst_progress_gallery::aSecondRunIsRefused()
{
    GalleryWindow window;
    window.show();
    Route route = routes().constFirst();
    route.statusBar = true;
    route.windowStaysEnabled = true;
    QTimer waiting;
    connect(&waiting, &QTimer::timeout, &window, [&] {
        if (ProgressDialog::all().isEmpty())
            return;
        waiting.stop();
        window.start(route);
        ProgressDialog::hasOpenDialogs(nullptr, false, true);
    });
    waiting.start(1);
    window.start(route);
    QCOMPARE(window.outcomes().size(), 2);
    QVERIFY(window.outcomes().constFirst().contains("schon"));
}

void tst_progress_gallery::programWritesAPictureOfEachPageAndRoute()
{
    const QTemporaryDir folder;
    const QString target = folder.filePath("new/pictures");
    const Run run = runGallery({"--screenshots", target});
    QVERIFY2(run.status == 0, qPrintable(run.errors));
    const QStringList names = QDir(target).entryList(QDir::Files, QDir::Name);
    QCOMPARE(names.size(), 1 + sheets().size() + routes().size() + 1);
    QSet<QByteArray> different;
    for (const QString& name : names) {
        QImage picture;
        QVERIFY2(picture.load(target + "/" + name, "PNG"), qPrintable(name));
        different.insert(
            QByteArray(reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes()));
    }
    QCOMPARE(different.size(), names.size());
}

void tst_progress_gallery::programFailsOnAFolderThatCannotBeWritten()
{
    // Root may write anywhere, but not below a file.
    const QTemporaryDir folder;
    QFile file(folder.filePath("file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const Run run = runGallery({"--screenshots", file.fileName() + "/below"});
    QCOMPARE(run.status, 1);
    QVERIFY(run.errors.contains("kann nicht angelegt werden"));
}

void tst_progress_gallery::programRefusesUnknownArguments()
{
    QCOMPARE(runGallery({"--unknown"}).status, 1);
    const Run run = runGallery({"pictures"});
    QCOMPARE(run.status, 1);
    QVERIFY(run.errors.contains("'pictures'"));
}

QTEST_MAIN(tst_progress_gallery)
#include "tst_progress_gallery.moc"
