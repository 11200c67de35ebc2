#include "tests/progress/progress_fixture.h"

#include <QXmlStreamReader>

#include <cstdio>

using namespace mod_progress_qt;

namespace {

/// A text as the code has it, by the class that shows it.
using Text = std::pair<QString, QString>;

struct Translation
{
    QString text;
    QString state; ///< empty for one that is finished
};

using Translations = QMap<Text, Translation>;

Translations readTranslations(const QString& path)
{
    QFile file(path);
    Translations read;
    if (!file.open(QIODevice::ReadOnly))
        return read;
    QXmlStreamReader xml(&file);
    Text text;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("name"))
            text.first = xml.readElementText();
        else if (xml.name() == QLatin1String("source"))
            text.second = xml.readElementText();
        else if (xml.name() == QLatin1String("translation")) {
            const QString state = xml.attributes().value("type").toString();
            read.insert(text, {xml.readElementText(), state});
        }
    }
    return xml.hasError() ? Translations() : read;
}

Translations german()
{
    return readTranslations(PROGRESS_FOLDER "/translations/mod_progress_qt_de.ts");
}

/// How often each place of an argument stands in a text.
QList<qsizetype> places(const QString& text)
{
    QList<qsizetype> counts;
    for (int place = 1; place <= 9; ++place)
        counts << text.count('%' + QString::number(place));
    return counts;
}

QString shownAbortText()
{
    const auto opts = ProgressDialog::GetStdProgressInfo(true);
    const ProgressDialog::Pointer dialog(new ProgressDialog);
    const QPushButton* const button = ProgressDialog::createLayout(dialog, opts);
    return button ? button->text() : QString();
}

} // namespace

class tst_progress_translation : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void isEnglishForWhoDoesNotAsk();
    void isGermanForWhoAsks_data();
    void isGermanForWhoAsks();
    void warnsInGerman();
    void staysEnglishWithoutATranslation_data();
    void staysEnglishWithoutATranslation();
    void englishTakesGermanBack();
    void followsTheDesktop_data();
    void followsTheDesktop();
    void everyTextIsTranslated();
    void translationsAreUpToDate();
};

void tst_progress_translation::cleanup()
{
    installTranslation(QLocale::c());
    settle();
}

void tst_progress_translation::isEnglishForWhoDoesNotAsk()
{
    QCOMPARE(shownAbortText(), "Cancel");
    QCOMPARE(ProgressDialog::GetStdProgressInfo(true).title, "Processing data...");
    QCOMPARE(CustomProgressBar::defaultAbortText, "Cancel");
}

void tst_progress_translation::isGermanForWhoAsks_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::newRow("the language alone") << QLocale(QLocale::German);
    QTest::newRow("Germany") << QLocale("de_DE");
    QTest::newRow("Austria") << QLocale("de_AT");
    QTest::newRow("Switzerland") << QLocale("de_CH");
}

void tst_progress_translation::isGermanForWhoAsks()
{
    QFETCH(QLocale, locale);
    QVERIFY(installTranslation(locale));
    QCOMPARE(shownAbortText(), "Abbrechen");
    QCOMPARE(ProgressDialog::GetStdProgressInfo(true).title, "Daten werden verarbeitet...");
    // Twice is not worse than once.
    QVERIFY(installTranslation(locale));
    QCOMPARE(shownAbortText(), "Abbrechen");
}

void tst_progress_translation::warnsInGerman()
{
    QVERIFY(installTranslation(QLocale("de_DE")));
    const ProgressDialog::Pointer dialog(new ProgressDialog);
    QString title;
    QString text;
    const auto box = [] { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); };
    whenever([box] { return box() != nullptr; },
             [&] {
                 title = box()->windowTitle();
                 text = box()->text();
                 box()->accept();
             });
    QVERIFY(ProgressDialog::hasOpenDialogs(nullptr, true, false));
    QCOMPARE(title, "Hinweis:");
    QCOMPARE(text, "Es laufen noch Vorgänge.");
}

void tst_progress_translation::staysEnglishWithoutATranslation_data()
{
    QTest::addColumn<bool>("germanBefore");
    QTest::newRow("at first") << false;
    QTest::newRow("after another language") << true;
}

void tst_progress_translation::staysEnglishWithoutATranslation()
{
    QFETCH(bool, germanBefore);
    if (germanBefore)
        QVERIFY(installTranslation(QLocale("de_DE")));
    QVERIFY(!installTranslation(QLocale("fr_FR")));
    QCOMPARE(shownAbortText(), "Cancel");
}

void tst_progress_translation::englishTakesGermanBack()
{
    QVERIFY(installTranslation(QLocale("de_DE")));
    QVERIFY(installTranslation(QLocale("en_GB")));
    QCOMPARE(shownAbortText(), "Cancel");
}

void tst_progress_translation::followsTheDesktop_data()
{
    QTest::addColumn<QByteArray>("languages");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("German") << QByteArray("de") << QByteArray("1 Abbrechen");
    QTest::newRow("German next to French") << QByteArray("fr:de:en") << QByteArray("1 Abbrechen");
    QTest::newRow("English before German") << QByteArray("en:de") << QByteArray("1 Cancel");
    QTest::newRow("neither") << QByteArray("fr:nl") << QByteArray("0 Cancel");
}

void tst_progress_translation::followsTheDesktop()
{
    QFETCH(QByteArray, languages);
    QFETCH(QByteArray, expected);
    // Read once by each program.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("LC_ALL");
    environment.insert("LANG", "fr_FR.UTF-8");
    environment.insert("LANGUAGE", languages);
    QProcess other;
    other.setProcessEnvironment(environment);
    other.start(QCoreApplication::applicationFilePath(), {"--follow-the-desktop"});
    QVERIFY(other.waitForFinished(kPatience));
    QCOMPARE(other.exitCode(), 0);
    QCOMPARE(other.readAllStandardOutput().trimmed(), expected);
}

void tst_progress_translation::everyTextIsTranslated()
{
    const Translations translations = german();
    QVERIFY(!translations.isEmpty());
    QVERIFY(installTranslation(QLocale("de_DE")));
    const QStringList classes {CustomProgressBar::staticMetaObject.className(),
                               ProgressDialog::staticMetaObject.className(),
                               Controller::staticMetaObject.className(),
                               WorkerBase::staticMetaObject.className()};
    for (auto entry = translations.cbegin(); entry != translations.cend(); ++entry) {
        const auto& [context, source] = entry.key();
        const auto& [text, state] = entry.value();
        QVERIFY2(state.isEmpty() && !text.isEmpty(), qPrintable(source));
        QVERIFY2(places(text) == places(source), qPrintable(source));
        // Under any other name nobody looks for it.
        QVERIFY2(classes.contains(context), qPrintable(context));
        QCOMPARE(QCoreApplication::translate(qPrintable(context), qPrintable(source)), text);
    }
}

void tst_progress_translation::translationsAreUpToDate()
{
    const QTemporaryDir folder;
    const QString fresh = folder.filePath("fresh_de.ts");
    QProcess lupdate;
    lupdate.start(PROGRESS_LUPDATE,
                  {PROGRESS_FOLDER, "-no-recursive", "-I", PROGRESS_FOLDER "/..", "-ts", fresh});
    QVERIFY(lupdate.waitForFinished(kPatience));
    QCOMPARE(lupdate.exitCode(), 0);
    // It only warns of texts that nobody would look for where it puts them.
    QCOMPARE(lupdate.readAllStandardError(), QByteArray());
    const Translations found = readTranslations(fresh);
    QVERIFY(!found.isEmpty());
    QCOMPARE(german().keys(), found.keys());
}

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    if (QCoreApplication::arguments().contains("--follow-the-desktop")) {
        const bool spoken = installTranslation(QLocale::system());
        std::printf("%d %s\n", spoken, qPrintable(shownAbortText()));
        return 0;
    }
    tst_progress_translation test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_progress_translation.moc"
