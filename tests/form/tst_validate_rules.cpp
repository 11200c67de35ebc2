#include "form/values/list_widgets.h"
#include "tests/form/validation_bench.h"

#include <QTest>

using namespace mod_form_qt;

namespace {

QLineEdit* withRegex(QLineEdit* edit, const QString& pattern)
{
    edit->setValidator(new QRegularExpressionValidator(QRegularExpression(pattern), edit));
    return edit;
}

} // namespace

class tst_validate_rules : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void fileMustExistAloneOnAPathRowIsEnough();
    void aRowOfAnotherTypeWithFileMustExistIsNotChecked();
    void pathsMustExist_data();
    void pathsMustExist();
    void thePathOfABoundRowIsRead();
    void theButtonOfAReadOnlyPathRowReports();
    void requiredSelections_data();
    void requiredSelections();
    void requiredNeedsItsRowType();
    void patterns_data();
    void patterns();
    void aPatternWithoutAValidatorIsNotChecked();
    void lengths_data();
    void lengths();
    void lengthsCountOnlyForTexts_data();
    void lengthsCountOnlyForTexts();
    void theTextIsToldAsItWasTyped();
    void namelessFieldIsToldWithAnEmptyName();
    void theTableHoldsEveryMessage_data();
    void theTableHoldsEveryMessage();

private:
    QScopedPointer<ValidationBench> m_bench;
};

void tst_validate_rules::init()
{
    m_bench.reset(new ValidationBench);
}

void tst_validate_rules::cleanup()
{
    m_bench.reset();
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_validate_rules::fileMustExistAloneOnAPathRowIsEnough()
{
    auto* edit = m_bench->form.put(new QLineEdit, E_LINEEDIT, E_BROWSE_FOLDER, "a", {},
                                   rules({{"file_must_exist", true}}));
    m_bench->form.map.insert("a", "/no/such/folder");
    edit->setText("what is shown does not count");
    QCOMPARE(m_bench->failure(),
             "Feld 'Name': Die Datei oder Ordner existieren nicht (/no/such/folder).");
    QCOMPARE(m_bench->focus.data(), edit);
    m_bench->form.map.insert("a", QDir::tempPath());
    QCOMPARE(m_bench->failure(), "");
}

void tst_validate_rules::aRowOfAnotherTypeWithFileMustExistIsNotChecked()
{
    m_bench->form.map.insert("a", "/no/such/file");
    for (const int type :
         {E_LINEEDIT, E_SHOW_FOLDER, E_BROWSE_FILE_SAVE, E_BROWSE_FILE_SAVE_BUTTON})
        m_bench->form.put(new QLineEdit, E_LINEEDIT, type, "a", {},
                          rules({{"file_must_exist", true}}));
    QCOMPARE(m_bench->failure(), "");
}

void tst_validate_rules::pathsMustExist_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("exists");
    const QString folder = QDir::tempPath();
    const QString file = QCoreApplication::applicationFilePath();
    QTest::newRow("folder") << E_BROWSE_FOLDER << folder << true;
    QTest::newRow("no folder") << E_BROWSE_FOLDER << folder + "/missing" << false;
    QTest::newRow("empty folder") << E_BROWSE_FOLDER << "" << false;
    QTest::newRow("folder button") << E_BROWSE_FOLDER_BUTTON << folder << true;
    QTest::newRow("folder button, none") << E_BROWSE_FOLDER_BUTTON << "/missing" << false;
    QTest::newRow("file") << E_BROWSE_FILE_OPEN << file << true;
    QTest::newRow("no file") << E_BROWSE_FILE_OPEN << file + ".missing" << false;
    QTest::newRow("empty file") << E_BROWSE_FILE_OPEN << "" << false;
    QTest::newRow("file button") << E_BROWSE_FILE_OPEN_BUTTON << file << true;
    QTest::newRow("file button, none") << E_BROWSE_FILE_OPEN_BUTTON << "/missing" << false;
}

void tst_validate_rules::pathsMustExist()
{
    QFETCH(int, type);
    QFETCH(QString, path);
    QFETCH(bool, exists);
    m_bench->form.put(new QPushButton("..."), E_BUTTON, type, "a", {},
                      rules({{"file_must_exist", true}}));
    m_bench->form.map.insert("a", path);
    QCOMPARE(m_bench->failure(),
             exists ? QString()
                    : "Feld 'Name': Die Datei oder Ordner existieren nicht (" + path + ").");
}

void tst_validate_rules::thePathOfABoundRowIsRead()
{
    QVariant path = "/no/such/file";
    m_bench->form.put(new QLineEdit, E_LINEEDIT, E_BROWSE_FILE_OPEN, "a", {},
                      rules({{"file_must_exist", true}}));
    m_bench->form.bind("a", &path);
    QVERIFY(m_bench->failure().contains("(/no/such/file)"));
    path = QCoreApplication::applicationFilePath();
    QCOMPARE(m_bench->failure(), "");
}

void tst_validate_rules::theButtonOfAReadOnlyPathRowReports()
{
    const QVariantMap options = rules({{"file_must_exist", true}});
    auto* edit = m_bench->form.put(new QLineEdit, E_LINEEDIT, E_BROWSE_FOLDER, "a", {}, options);
    auto* button =
        m_bench->form.put(new QPushButton("..."), E_BUTTON, E_BROWSE_FOLDER, "a", {}, options);
    edit->setReadOnly(true);
    m_bench->form.map.insert("a", "/missing");
    QVERIFY(!m_bench->failure().isEmpty());
    QCOMPARE(m_bench->focus.data(), button);
}

void tst_validate_rules::requiredSelections_data()
{
    QTest::addColumn<bool>("checks");
    QTest::addColumn<QString>("marked");
    QTest::addColumn<QString>("expected");
    QTest::newRow("combo without selection") << false << "" << requiredText;
    QTest::newRow("combo") << false << "B"
                           << "";
    QTest::newRow("check combo without a check") << true << "" << requiredText;
    QTest::newRow("check combo") << true << "B"
                                 << "";
}

void tst_validate_rules::requiredSelections()
{
    QFETCH(bool, checks);
    QFETCH(QString, marked);
    const QVariantMap options = rules({{"required", true}});
    QComboBox* box = checks
        ? m_bench->form.add<helper::CheckComboBox>(E_CHECKCOMBOBOX, "a", {}, options)
        : m_bench->form.add<QComboBox>(E_COMBOBOX, "a", {}, options);
    fillListWidget(box, letters("AB", marked), {});
    QTEST(m_bench->failure(), "expected");
}

void tst_validate_rules::requiredNeedsItsRowType()
{
    const QVariantMap options = rules({{"required", true}});
    for (const auto& [type, box] :
         QList<std::pair<int, QComboBox*>> {{E_WIDGET, new QComboBox},
                                            {E_COMBOBOX, new helper::CheckComboBox},
                                            {E_WIDGET, new helper::CheckComboBox}}) {
        fillListWidget(box, letters("AB"), {});
        m_bench->form.put(box, type, type, "a", {}, options);
    }
    m_bench->form.add<QListWidget>(E_LISTBOX, "list", {}, options);
    QCOMPARE(m_bench->failure(), "");
}

void tst_validate_rules::patterns_data()
{
    QTest::addColumn<bool>("wildcard");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("matches");
    QTest::newRow("match") << false << "[0-9]+"
                           << "12" << true;
    QTest::newRow("a part is enough") << false << "[0-9]+"
                                      << "ab12cd" << true;
    QTest::newRow("no match") << false << "[0-9]+"
                              << "ab" << false;
    QTest::newRow("trimmed") << false << "^[0-9]+$"
                             << " 12 " << true;
    QTest::newRow("case counts") << false << "abc"
                                 << "ABC" << false;
    QTest::newRow("wildcard") << true << "*.csv"
                              << "out.csv" << true;
    QTest::newRow("wildcard, case does not count") << true << "*.csv"
                                                   << "OUT.CSV" << true;
    QTest::newRow("wildcard takes the whole text") << true << "*.csv"
                                                   << "out.csv.bak" << false;
    QTest::newRow("wildcard stops at a slash") << true << "*.csv"
                                               << "a/b.csv" << false;
}

void tst_validate_rules::patterns()
{
    QFETCH(bool, wildcard);
    QFETCH(QString, pattern);
    QFETCH(QString, text);
    QFETCH(bool, matches);
    QVariantMap options = rules({{"regex_pattern", pattern}});
    if (wildcard)
        options.insert("regex_pattern_wildcard", true);
    auto* edit = m_bench->form.add<QLineEdit>(E_LINEEDIT, "a", {}, options);
    if (!wildcard)
        withRegex(edit, pattern);
    edit->setText(text);
    QCOMPARE(m_bench->failure(),
             matches ? QString()
                     : "Feld 'Name': Der Wert (" + text.trimmed()
                     + ") entspricht nicht dem Abfragemuster.");
    if (wildcard) { // needs no validator, and so also works for a text edit
        edit->setText(pattern.startsWith("*") ? "x.csv" : text);
        auto* area = m_bench->form.add<QTextEdit>(E_TEXTEDIT, "b", {}, options);
        area->setAcceptRichText(false);
        area->setPlainText(text);
        QCOMPARE(m_bench->failure().isEmpty(), matches);
    }
}

void tst_validate_rules::aPatternWithoutAValidatorIsNotChecked()
{
    auto* edit =
        m_bench->form.add<QLineEdit>(E_LINEEDIT, "a", {}, rules({{"regex_pattern", "[0-9]"}}));
    edit->setText("letters");
    QCOMPARE(m_bench->failure(), "");
    const INFO row;
    edit->setValidator(
        new helper::Validator(&m_bench->form.window, edit, row, row, &m_bench->form.map));
    QCOMPARE(m_bench->failure(), "");
    delete edit->validator();
    withRegex(edit, "[0-9]");
    QVERIFY(!m_bench->failure().isEmpty());
}

void tst_validate_rules::lengths_data()
{
    QTest::addColumn<QVariantMap>("options");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("told");
    const QString longer = "länger als 3 Zeichen";
    const QString shorter = "kürzer als 3 Zeichen";
    QTest::newRow("below the minimum") << QVariantMap {{"min", 3}} << "ab" << longer;
    QTest::newRow("exactly the minimum") << QVariantMap {{"min", 3}} << "abc"
                                         << "";
    QTest::newRow("exactly the maximum") << QVariantMap {{"max", 3}} << "abc"
                                         << "";
    QTest::newRow("above the maximum") << QVariantMap {{"max", 3}} << "abcd" << shorter;
    QTest::newRow("characters before numbers, minimum")
        << QVariantMap {{"min", 1}, {"minchars", 3}} << "ab" << longer;
    QTest::newRow("characters before numbers, maximum")
        << QVariantMap {{"max", 9}, {"maxchars", 3}} << "abcd" << shorter;
    QTest::newRow("zero characters is a limit, too")
        << QVariantMap {{"min", 3}, {"minchars", 0}} << "ab"
        << "";
    QTest::newRow("invalid characters are no limit")
        << QVariantMap {{"min", 3}, {"minchars", QVariant()}} << "ab" << longer;
    QTest::newRow("limit as a text") << QVariantMap {{"min", "3"}} << "ab" << longer;
    QTest::newRow("blanks around do not count") << QVariantMap {{"min", 3}} << " a " << longer;
    QTest::newRow("units, not letters") << QVariantMap {{"max", 3}} << "𝄞𝄞" << shorter;
    QTest::newRow("minimum before maximum")
        << QVariantMap {{"min", 3}, {"max", 1}} << "ab" << longer;
}

void tst_validate_rules::lengths()
{
    QFETCH(QVariantMap, options);
    QFETCH(QString, text);
    QFETCH(QString, told);
    auto* edit = m_bench->form.add<QLineEdit>(E_LINEEDIT, "a", {}, rules(options));
    edit->setText(text);
    QCOMPARE(m_bench->failure(),
             told.isEmpty()
                 ? QString()
                 : "Feld 'Name': Der Text (" + text.trimmed() + ") muss " + told + " sein.");
    QCOMPARE(m_bench->focus.isNull(), told.isEmpty());
}

void tst_validate_rules::lengthsCountOnlyForTexts_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("checked");
    QTest::newRow("line edit") << E_LINEEDIT << true;
    QTest::newRow("text edit") << E_TEXTEDIT << true;
    QTest::newRow("plain text") << E_PLAINTEXT << true;
    QTest::newRow("number") << E_NUMBER << false;
    QTest::newRow("path") << E_BROWSE_FILE_OPEN << false;
}

void tst_validate_rules::lengthsCountOnlyForTexts()
{
    QFETCH(int, type);
    QFETCH(bool, checked);
    m_bench->form.put(new QLineEdit("5"), E_LINEEDIT, type, "a", {}, rules({{"min", 10}}));
    QCOMPARE(!m_bench->failure().isEmpty(), checked);
}

void tst_validate_rules::theTextIsToldAsItWasTyped()
{
    auto* edit =
        m_bench->form.add<QLineEdit>(E_LINEEDIT, "a", {}, {{"max", 3}, {"plaintitle", "100%2"}});
    edit->setText("<b>%3 %1</b>");
    QCOMPARE(m_bench->failure(),
             "Feld '100%2': Der Text (<b>%3 %1</b>) muss kürzer als 3 Zeichen sein.");
    QCOMPARE(m_bench->format, Qt::PlainText);
}

void tst_validate_rules::namelessFieldIsToldWithAnEmptyName()
{
    m_bench->form.add<QLineEdit>(E_LINEEDIT, "a", {}, {{"required", true}});
    QCOMPARE(m_bench->failure(), "Feld '': Es muss ein Wert eingetragen oder ausgewählt werden.");
}

void tst_validate_rules::theTableHoldsEveryMessage_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("min_1") << "Feld '%1': Der Wert (%2) muss größer %3 sein.";
    QTest::newRow("max_1") << "Feld '%1': Der Wert (%2) muss kleiner oder gleich %3 sein.";
    QTest::newRow("min_2") << "Feld '%1': Der Text (%2) muss länger als %3 Zeichen sein.";
    QTest::newRow("max_2") << "Feld '%1': Der Text (%2) muss kürzer als %3 Zeichen sein.";
    QTest::newRow("required") << "Feld '%1': Es muss ein Wert eingetragen oder ausgewählt werden.";
    QTest::newRow("regex_pattern")
        << "Feld '%1': Der Wert (%2) entspricht nicht dem Abfragemuster.";
    QTest::newRow("file_must_exist") << "Feld '%1': Die Datei oder Ordner existieren nicht (%2).";
}

void tst_validate_rules::theTableHoldsEveryMessage()
{
    QTEST(INFO::defaultValidationText().value(QTest::currentDataTag()), "text");
    QCOMPARE(INFO::defaultValidationText().size(), 7);
}

QTEST_MAIN(tst_validate_rules)
#include "tst_validate_rules.moc"
