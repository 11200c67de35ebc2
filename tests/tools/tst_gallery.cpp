#include "tools/form_gallery/describe.h"
#include "tools/form_gallery/gallery_window.h"
#include "tools/form_gallery/page_view.h"
#include "tools/form_gallery/sample_windows.h"
#include "tools/form_gallery/screenshots.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace gallery;
using namespace mod_form_qt;

namespace {

constexpr int kPatience = 60000;

/// What all pages and windows together are made of.
struct Coverage
{
    QSet<int> types;
    std::bitset<256> attributes;
};

Coverage coverage()
{
    Coverage all;
    QWidget owner;
    const auto add = [&all](const QList<INFO>& rows) {
        for (const INFO& row : rows) {
            all.types.insert(row.eleType);
            all.attributes |= row.attr;
        }
    };
    for (const Page& page : pages()) {
        PageContext context(&owner);
        add(page.rows(context));
    }
    for (const SampleWindow& window : sampleWindows()) {
        PageContext context(&owner);
        all.types.insert(window.mainType);
        add(window.rows(context));
    }
    return all;
}

const Coverage& covered()
{
    static const Coverage all = coverage();
    return all;
}

const QList<std::pair<unsigned, unsigned>> kNamedBits {{0, 31},    {32, 41},   {50, 60},
                                                       {70, 79},   {80, 99},   {100, 117},
                                                       {120, 149}, {150, 151}, {160, 171}};

bool hasName(unsigned bit)
{
    return std::any_of(kNamedBits.cbegin(), kNamedBits.cend(), [bit](const auto& range) {
        return bit >= range.first && bit <= range.second;
    });
}

/// How many colours a picture has, as far as it takes to call it a picture of something.
qsizetype colours(const QImage& picture)
{
    QSet<QRgb> seen;
    for (int y = 0; y < picture.height() && seen.size() < 16; ++y) {
        for (int x = 0; x < picture.width() && seen.size() < 16; ++x)
            seen.insert(picture.pixel(x, y));
    }
    return seen.size();
}

QString cell(QStandardItemModel* model, int row, int column)
{
    const QStandardItem* item = model->item(row, column);
    return item ? item->text() : QString();
}

/// The value beside a key in the table of the data map.
QString listedValue(PageView* view, const QString& key)
{
    const QList<QStandardItem*> found = view->mapModel()->findItems(key);
    return found.isEmpty() ? QString() : cell(view->mapModel(), found.first()->row(), 1);
}

/// The last line of the log about a key, its cells joined.
QString lastLine(PageView* view, const QString& key)
{
    QStandardItemModel* log = view->logModel();
    for (int row = log->rowCount() - 1; row >= 0; --row) {
        if (cell(log, row, 1) == key)
            return QStringList {cell(log, row, 0), cell(log, row, 2), cell(log, row, 3)}.join(' ');
    }
    return {};
}

int pageTitled(const QString& title)
{
    const QList<Page> all = pages();
    for (int index = 0; index < all.size(); ++index) {
        if (all.at(index).title == title)
            return index;
    }
    return -1;
}

QLineEdit* lineEdit(PageView* view, const QString& key)
{
    return INFO::lineEditByKey(&view->map(), key);
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
    process.start(QStringLiteral(LEDORA_BIN_DIR "/gallery"), arguments);
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

class tst_gallery : public QObject
{
    Q_OBJECT

private slots:
    void holdsEveryRowType_data();
    void holdsEveryRowType();
    void holdsEveryAttribute_data();
    void holdsEveryAttribute();
    void namesExactlyTheAttributesThereAre();
    void fillsTheInsertPoint();
    void showsEachPage_data();
    void showsEachPage();
    void keysOfAPageAreItsOwn_data();
    void keysOfAPageAreItsOwn();
    void tableFollowsATypedChange();
    void tableFollowsAChangeThatCallsNobody();
    void tableShowsWhatAVariableHolds();
    void logTellsWhoRefused();
    void logIsCleared();
    void pageDoesNotClose();
    void countsATimerOnOneLine();
    void runsEachWindow_data();
    void runsEachWindow();
    void namesPicturesInAscii_data();
    void namesPicturesInAscii();
    void programWritesAPictureOfEachPageAndWindow();
    void programFailsOnAFolderThatCannotBeWritten();
    void programFailsOnAFileThatCannotBeWritten();
    void programRefusesUnknownArguments();
};

void tst_gallery::holdsEveryRowType_data()
{
    QTest::addColumn<int>("type");
    const QList<int> types = rowTypes();
    QCOMPARE(types.size(), 54);
    for (const int type : types)
        QTest::newRow(qPrintable(typeName(type))) << type;
}

void tst_gallery::holdsEveryRowType()
{
    QFETCH(int, type);
    QVERIFY(covered().types.contains(type));
}

void tst_gallery::holdsEveryAttribute_data()
{
    QTest::addColumn<unsigned>("bit");
    for (unsigned bit = 0; bit < 256; ++bit) {
        if (hasName(bit))
            QTest::addRow("%u %s", bit, qPrintable(attributeName(bit))) << bit;
    }
}

void tst_gallery::holdsEveryAttribute()
{
    QFETCH(unsigned, bit);
    QVERIFY(covered().attributes[bit]);
}

void tst_gallery::namesExactlyTheAttributesThereAre()
{
    for (unsigned bit = 0; bit < 256; ++bit)
        QCOMPARE(!attributeName(bit).isEmpty(), hasName(bit));
}

void tst_gallery::fillsTheInsertPoint()
{
    QWidget owner;
    PageContext context(&owner);
    const QList<INFO> rows = layouts(context);
    QStringList gaps;
    QStringList titles;
    for (const INFO& row : rows) {
        if (row.eleType == E_INSERT_POINT)
            gaps << row.key;
        titles << row.param.toString();
    }
    QCOMPARE(gaps, QStringList("free"));
    QVERIFY(titles.contains("eingesetzt"));
}

void tst_gallery::showsEachPage_data()
{
    QTest::addColumn<int>("index");
    const QList<Page> all = pages();
    for (int index = 0; index < all.size(); ++index)
        QTest::newRow(qPrintable(all.at(index).title)) << index;
}

void tst_gallery::showsEachPage()
{
    QFETCH(int, index);
    const Page page = pages().at(index);
    QVERIFY(!page.explanation.isEmpty());
    PageView view(page);
    view.resize(760, 820);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QVERIFY(!view.findChildren<QLabel*>().isEmpty());
    QVERIFY(colours(view.grab().toImage()) >= 16);
    // The form has been built and said so.
    QCOMPARE(view.logModel()->findItems(QStringLiteral("kInit")).size(), 1);
}

void tst_gallery::keysOfAPageAreItsOwn_data()
{
    showsEachPage_data();
}

void tst_gallery::keysOfAPageAreItsOwn()
{
    QFETCH(int, index);
    QWidget owner;
    PageContext context(&owner);
    QSet<QString> keys;
    const QList<INFO> rows = pages().at(index).rows(context);
    for (const INFO& row : rows) {
        if (row.key.isEmpty())
            continue;
        QVERIFY2(!keys.contains(row.key), qPrintable(row.key));
        keys.insert(row.key);
    }
}

void tst_gallery::tableFollowsATypedChange()
{
    PageView view(pages().at(pageTitled(QStringLiteral("Einzeilige Texte"))));
    view.show();
    QCOMPARE(listedValue(&view, "plain"), QStringLiteral("\"Ada Lovelace\""));

    QLineEdit* edit = lineEdit(&view, "plain");
    edit->selectAll();
    QTest::keyClicks(edit, QStringLiteral("Grace"));

    QTRY_COMPARE(listedValue(&view, "plain"), QStringLiteral("\"Grace\""));
    QCOMPARE(lastLine(&view, "plain"), QStringLiteral("kAfterDataChanged \"Grace\" Formular"));
}

void tst_gallery::tableFollowsAChangeThatCallsNobody()
{
    GalleryWindow window;
    window.show();
    PageView* view = window.page(0);
    // Each callback lists the map anew: the last that comes by itself has to be over.
    QTRY_VERIFY(!view->logModel()->findItems(QStringLiteral("kSetActive")).isEmpty());
    QCoreApplication::processEvents();
    const int callbacks = view->logModel()->rowCount();
    auto* map = const_cast<QMap<QString, QVariant>*>(&view->map());
    INFO::setData(map, "plain", QStringLiteral("von außen"), false);
    QTRY_COMPARE(listedValue(view, "plain"), QStringLiteral("\"von außen\""));
    QCOMPARE(view->logModel()->rowCount(), callbacks);
}

void tst_gallery::tableShowsWhatAVariableHolds()
{
    PageView view(pages().at(pageTitled(QStringLiteral("Werte und Bindung"))));
    view.show();
    QCOMPARE(listedValue(&view, "bound"), QStringLiteral("\u2192 \"aus einer Variablen\""));
    QCOMPARE(listedValue(&view, "from_map"), QStringLiteral("\"stand schon in der Datentabelle\""));
    QCOMPARE(listedValue(&view, "not_from_map"), QStringLiteral("\"aus der Zeile\""));
    QTest::keyClicks(lineEdit(&view, "bound"), QStringLiteral("!"));
    QTRY_COMPARE(listedValue(&view, "bound"), QStringLiteral("\u2192 \"aus einer Variablen!\""));
}

void tst_gallery::logTellsWhoRefused()
{
    PageView view(pages().at(pageTitled(QStringLiteral("Ereignisse"))));
    view.show();
    QLineEdit* edit = lineEdit(&view, "no_digits");
    QTest::keyClicks(edit, QStringLiteral("d"));
    QCOMPARE(lastLine(&view, "no_digits"), QStringLiteral("kAfterDataChanged \"abcd\" Formular"));
    QTest::keyClicks(edit, QStringLiteral("1"));
    QCOMPARE(lastLine(&view, "no_digits"),
             QStringLiteral("kBeforeDataChanged \"abcd1\" Zeile: nein"));
    QCOMPARE(edit->text(), QStringLiteral("abcd"));
    QTRY_COMPARE(listedValue(&view, "no_digits"), QStringLiteral("\"abcd\""));
}

void tst_gallery::logIsCleared()
{
    PageView view(pages().first());
    QVERIFY(view.logModel()->rowCount() > 0);
    view.clearLog();
    QCOMPARE(view.logModel()->rowCount(), 0);
}

void tst_gallery::pageDoesNotClose()
{
    PageView view(pages().at(pageTitled(QStringLiteral("Schaltflächen"))));
    view.show();
    QPushButton* ok = INFO::pushButtonByKey(&view.map(), INFO::objectOKButtonName);
    QVERIFY(ok);
    QTest::mouseClick(ok, Qt::LeftButton);
    QVERIFY(view.isVisible());
    QCOMPARE(lastLine(&view, "E_OK_BUTTON"), QStringLiteral("kAccept - Formular: nein"));
    // Its fields are still known.
    QVERIFY(INFO::pushButtonByKey(&view.map(), "button"));
}

void tst_gallery::countsATimerOnOneLine()
{
    PageView view(pages().at(pageTitled(QStringLiteral("Ereignisse"))));
    view.show();
    QTRY_VERIFY_WITH_TIMEOUT(listedValue(&view, "seconds") == QStringLiteral("\"2\""), kPatience);
    int lines = 0;
    for (int row = 0; row < view.logModel()->rowCount(); ++row)
        lines += cell(view.logModel(), row, 0) == QStringLiteral("kTimer") ? 1 : 0;
    QCOMPARE(lines, 2); // the row's and the form's
}

void tst_gallery::runsEachWindow_data()
{
    QTest::addColumn<int>("index");
    const QList<SampleWindow> windows = sampleWindows();
    for (int index = 0; index < windows.size(); ++index)
        QTest::newRow(qPrintable(windows.at(index).name)) << index;
}

void tst_gallery::runsEachWindow()
{
    QFETCH(int, index);
    const SampleWindow sample = sampleWindows().at(index);
    PageView view(pages().at(pageTitled(QStringLiteral("Menüs und Fenster"))));
    view.show();
    QPushButton* starter = INFO::pushButtonByKey(&view.map(), sample.name);
    QVERIFY(starter);

    QString title;
    QTimer closer;
    connect(&closer, &QTimer::timeout, &view, [&] {
        QWidget* running = QApplication::activeModalWidget();
        if (running == nullptr)
            return;
        closer.stop();
        title = running->windowTitle();
        QTest::keyClick(running, Qt::Key_Escape);
    });
    closer.start(10);
    QTest::mouseClick(starter, Qt::LeftButton);

    QCOMPARE(title, sample.title);
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
    QCOMPARE(lineEdit(&view, "result")->text(), QStringLiteral("0"));
    // What happened in the window stands in the log of the page that started it.
    QVERIFY(!view.logModel()->findItems(QStringLiteral("kCleanup")).isEmpty());
}

void tst_gallery::namesPicturesInAscii_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << 3 << "Raster"
                           << "03-raster.png";
    QTest::newRow("umlauts") << 12 << "Größenverhalten, Menüs"
                             << "12-groessenverhalten-menues.png";
    QTest::newRow("other letters") << 4 << "Café / Ende"
                                   << "04-caf-ende.png";
    QTest::newRow("no letters") << 104 << "!?"
                                << "104.png";
}

void tst_gallery::namesPicturesInAscii()
{
    QFETCH(int, number);
    QFETCH(QString, title);
    QTEST(pictureName(number, title), "name");
}

void tst_gallery::programWritesAPictureOfEachPageAndWindow()
{
    const QTemporaryDir folder;
    const QString target = folder.filePath("new/pictures");
    const Run run = runGallery({"--screenshots", target});
    QCOMPARE(run.status, 0);
    QVERIFY2(!run.errors.contains("gallery:"), qPrintable(run.errors));

    QStringList expected;
    for (const Page& page : pages())
        expected << pictureName(int(expected.size()) + 1, page.title);
    for (const SampleWindow& window : sampleWindows())
        expected << pictureName(int(expected.size()) + 1, window.title);
    QCOMPARE(QDir(target).entryList(QDir::Files, QDir::Name), expected);
    QSet<QByteArray> different;
    for (const QString& name : std::as_const(expected)) {
        QImage picture;
        QVERIFY2(picture.load(target + "/" + name, "PNG"), qPrintable(name));
        QVERIFY2(colours(picture) >= 16, qPrintable(name));
        different.insert(
            QByteArray(reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes()));
    }
    QCOMPARE(different.size(), expected.size());
}

void tst_gallery::programFailsOnAFolderThatCannotBeWritten()
{
    // Root may write anywhere, but not below a file.
    const QTemporaryDir folder;
    QFile file(folder.filePath("file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const Run run = runGallery({"--screenshots", file.fileName() + "/below"});
    QCOMPARE(run.status, 1);
    QVERIFY(run.errors.contains("kann nicht angelegt werden"));
}

void tst_gallery::programFailsOnAFileThatCannotBeWritten()
{
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(pictureName(1, pages().first().title)));
    const Run run = runGallery({"--screenshots", folder.path()});
    QCOMPARE(run.status, 1);
    QVERIFY(run.errors.contains("kann nicht geschrieben werden"));
}

void tst_gallery::programRefusesUnknownArguments()
{
    QCOMPARE(runGallery({"--unknown"}).status, 1);
    const Run run = runGallery({"pictures"});
    QCOMPARE(run.status, 1);
    QVERIFY(run.errors.contains("'pictures'"));
}

QTEST_MAIN(tst_gallery)
#include "tst_gallery.moc"
