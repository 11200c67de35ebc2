// The examples of the guide, compiled and run. What stands between the markers is what the guide
// shows; a test compares the two.

#include "tests/progress/progress_fixture.h"

#include <optional>

namespace {

//! [modal]
std::optional<qint64> sumUpTo(QWidget* parent, qint64 last)
{
    using namespace mod_progress_qt;
    const auto work = [](WorkerBase* worker) {
        const auto end = std::any_cast<qint64>(worker->data());
        qint64 sum = 0;
        for (qint64 number = 1; number <= end; ++number) {
            if (ProgressDialog::isStopped(worker))
                break;
            sum += number;
            worker->setProgress("Adding", number, end); // as often as you like
        }
        return ProgressDialog::finalizeWorker(worker, sum, true);
    };
    const auto opts = ProgressDialog::GetStdProgressInfoWithButtons(true, "Adding up",
                                                                    CustomProgressBar::kFirstLabel);
    const auto [completed, dialog] = ProgressDialog::createModal(parent, opts, last, work);
    if (!completed)
        return std::nullopt;
    return std::any_cast<qint64>(dialog->transferredData());
}

//! [modal]

//! [worker]
class LetterCounter : public mod_progress_qt::WorkerBase
{
public:
    using WorkerBase::WorkerBase;

    void doWork() override
    {
        using mod_progress_qt::ProgressDialog;
        const auto text = std::any_cast<QString>(data());
        QMap<QChar, int> counts;
        for (const QChar letter : text) {
            if (ProgressDialog::isStopped(this))
                break;
            ++counts[letter];
        }
        ProgressDialog::finalizeWorker(this, counts, true);
    }
};

QMap<QChar, int> countLetters(QWidget* parent, const QString& text)
{
    using namespace mod_progress_qt;
    const auto opts = ProgressDialog::GetStdProgressInfo(true, "Counting");
    const auto run = ProgressDialog::createModal<LetterCounter>(parent, opts, text, {});
    if (!run.first)
        return {}; // then there may be no data
    return std::any_cast<QMap<QChar, int>>(run.second->transferredData());
}

//! [worker]

//! [loop]
QStringList readAll(QWidget* parent, const QStringList& files)
{
    using namespace mod_progress_qt;
    const auto opts = ProgressDialog::GetStdProgressInfoWithButtons(true, "Reading",
                                                                    CustomProgressBar::kFirstLabel);
    const auto dialog = ProgressDialog::createNonModal(parent, opts);
    QStringList read;
    for (const QString& file : files) {
        if (ProgressDialog::isStopped(dialog))
            break;
        read << file; // the work
        ProgressDialog::setProgress(dialog, file, read.size(), files.size());
    }
    return read; // letting go of the dialog closes it
}

//! [loop]

//! [status_bar]
void useStatusBar(QMainWindow& window)
{
    using mod_progress_qt::StatusUpdate;
    auto* label = new QLabel;
    auto* bar = new QProgressBar;
    bar->setFixedWidth(StatusUpdate::barWidth);
    bar->hide();
    window.statusBar()->addWidget(label);
    window.statusBar()->addPermanentWidget(bar);
    StatusUpdate::label = label;
    StatusUpdate::progress = bar;
    StatusUpdate::active = true;
}

//! [status_bar]

//! [language]
void speak(const QLocale& language) // QLocale::system() in most programs
{
    if (!mod_progress_qt::installTranslation(language))
        qInfo("There is no translation: progress is shown in English.");
}

//! [language]

QString fileText(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The examples of this file by name.
QMap<QString, QString> compiledExamples()
{
    QMap<QString, QString> examples;
    const QStringList parts =
        fileText(QStringLiteral(LEDORA_TEST_DATA "/../progress/tst_progress_guide.cpp"))
            .split("//! [");
    for (qsizetype i = 1; i + 1 < parts.size(); i += 2) {
        const qsizetype end = parts.at(i).indexOf("]\n");
        examples.insert(parts.at(i).left(end), parts.at(i).mid(end + 2).trimmed());
    }
    return examples;
}

/// The examples of the guide by name.
QMap<QString, QString> shownExamples()
{
    QMap<QString, QString> examples;
    static const QRegularExpression block("<!-- example: (\\w+) -->\\s*```cpp\n(.*?)```",
                                          QRegularExpression::DotMatchesEverythingOption);
    const QString guide = fileText(QStringLiteral(LEDORA_TEST_DATA "/../../progress/README.md"));
    for (auto match = block.globalMatch(guide); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        examples.insert(found.captured(1), found.captured(2).trimmed());
    }
    return examples;
}

} // namespace

using namespace mod_progress_qt;

class tst_progress_guide : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void theGuideShowsWhatIsCompiled_data();
    void theGuideShowsWhatIsCompiled();
    void allCodeOfTheGuideIsCompiled();
    void theGuideTellsTheRightBits();
    void workOnAThreadReturnsItsResult();
    void workOnAThreadCanBeAborted();
    void aWorkerOfItsOwnClassDoesItsWork();
    void aLoopGoesThroughAllFiles();
    void progressIsShownInTheStatusBar();
    void aWorkerOfItsOwnClassCanBeGivenUp();
    void theGuideNamesEverySetting();
    void aProgramMaySpeakGerman();
};

void tst_progress_guide::cleanup()
{
    StatusUpdate::active = false;
    settle();
    QVERIFY(ProgressDialog::all().isEmpty());
}

void tst_progress_guide::theGuideShowsWhatIsCompiled_data()
{
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("compiled");
    const QMap<QString, QString> shown = shownExamples();
    const QMap<QString, QString> compiled = compiledExamples();
    QVERIFY(compiled.size() >= 4);
    for (auto example = compiled.begin(); example != compiled.end(); ++example)
        QTest::newRow(qPrintable(example.key())) << shown.value(example.key()) << example.value();
}

void tst_progress_guide::theGuideShowsWhatIsCompiled()
{
    QFETCH(QString, shown);
    QFETCH(QString, compiled);
    QCOMPARE(shown, compiled);
}

void tst_progress_guide::allCodeOfTheGuideIsCompiled()
{
    const QString guide = fileText(QStringLiteral(LEDORA_TEST_DATA "/../../progress/README.md"));
    QCOMPARE(guide.count("```cpp"), shownExamples().size());
    QCOMPARE(shownExamples().keys(), compiledExamples().keys());
}

void tst_progress_guide::theGuideTellsTheRightBits()
{
    using Bar = CustomProgressBar;
    const QMap<int, QString> names {{Bar::kFirstCentred, "kFirstCentred"},
                                    {Bar::kFirstLabel, "kFirstLabel"},
                                    {Bar::kSecondLabel, "kSecondLabel"},
                                    {Bar::kThirdLabel, "kThirdLabel"},
                                    {Bar::kCanAbort, "kCanAbort"},
                                    {Bar::kSecondCentred, "kSecondCentred"},
                                    {Bar::kThirdCentred, "kThirdCentred"},
                                    {Bar::kWrapLabels, "kWrapLabels"},
                                    {Bar::kNoStatusBar, "kNoStatusBar"},
                                    {Bar::kNoDialog, "kNoDialog"},
                                    {Bar::kSquares, "kSquares"}};
    const QString guide = fileText(QStringLiteral(LEDORA_TEST_DATA "/../../progress/README.md"));
    for (auto name = names.begin(); name != names.end(); ++name)
        QVERIFY(guide.contains(QString("\n| %1 | `%2` |").arg(name.key()).arg(name.value())));
}

void tst_progress_guide::workOnAThreadReturnsItsResult()
{
    QCOMPARE(sumUpTo(nullptr, 1000), std::optional<qint64>(500500));
}

void tst_progress_guide::workOnAThreadCanBeAborted()
{
    onceModal([](ProgressDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    QVERIFY(!sumUpTo(nullptr, std::numeric_limits<qint64>::max()));
}

void tst_progress_guide::aWorkerOfItsOwnClassDoesItsWork()
{
    QCOMPARE(countLetters(nullptr, "abba"), (QMap<QChar, int> {{'a', 2}, {'b', 2}}));
}

void tst_progress_guide::aLoopGoesThroughAllFiles()
{
    QMainWindow window;
    QCOMPARE(readAll(&window, {"a", "b", "c"}), (QStringList {"a", "b", "c"}));
    settle();
    QVERIFY(window.isEnabled());
}

void tst_progress_guide::progressIsShownInTheStatusBar()
{
    QMainWindow window;
    useStatusBar(window);
    window.show();
    QSet<QString> seen;
    const auto* label = window.statusBar()->findChild<QLabel*>();
    whenever([label] { return label->text() == "Adding"; },
             [&seen, label] {
                 seen << label->text();
                 ProgressDialog::hasOpenDialogs(nullptr, false, true);
             });
    QVERIFY(!sumUpTo(&window, std::numeric_limits<qint64>::max()));
    QVERIFY(seen.contains("Adding"));
}

void tst_progress_guide::aWorkerOfItsOwnClassCanBeGivenUp()
{
    QMap<QChar, int> counts {{'a', 1}};
    // Long enough that the loop ends first, on any machine.
    for (qsizetype letters = 1 << 22; !counts.isEmpty() && letters <= 1 << 28; letters *= 8) {
        inMainLoop([&] {
            QMetaObject::invokeMethod(
                qApp, [] { QCoreApplication::exit(); }, Qt::QueuedConnection);
            counts = countLetters(nullptr, QString(letters, 'a'));
        });
    }
    QVERIFY(counts.isEmpty());
}

void tst_progress_guide::theGuideNamesEverySetting()
{
    const QString guide = fileText(QStringLiteral(LEDORA_TEST_DATA "/../../progress/README.md"));
    for (const char* name :
         {"title", "text", "abortText", "buttons", "buttonWidth", "buttonHeight", "repaintDelayMs",
          "before", "after", "eventWaitTimeMs", "hardInterruptTimeMs", "globalHide", "showDebug",
          "defaultEventsFlagsUserInteraction", "defaultEventsFlagsNoUserInteraction"})
        QVERIFY2(guide.contains(QString("`%1`").arg(name)), name);
}

void tst_progress_guide::aProgramMaySpeakGerman()
{
    speak(QLocale(QLocale::German));
    QCOMPARE(ProgressDialog::GetStdProgressInfo(true).abortText, "Abbrechen");
    speak(QLocale(QLocale::English));
    QCOMPARE(ProgressDialog::GetStdProgressInfo(true).abortText, "Cancel");
}

QTEST_MAIN(tst_progress_guide)
#include "tst_progress_guide.moc"
