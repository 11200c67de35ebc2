#include "tests/form/form_fixture.h"
#include "tests/form/form_probe.h"
#include "tests/support/modal_answers.h"

#include <QInputDialog>
#include <QSettings>
#include <QTemporaryDir>

using namespace mod_form_qt;
using Option = INFO::Option;

namespace {

const QString saveTitle = "Einstellung speichern:";
const QString deleteTitle = "Daten speichern:";
const QString lastTitle = "Eintrag löschen:";

/// What stands in a file, read as another program would: under its own name the file is answered
/// from memory.
class FileView
{
public:
    explicit FileView(const QString& file)
    {
        static int copies = 0;
        const QString copy = QString("%1.%2").arg(file).arg(++copies);
        QFile::copy(file, copy);
        m_settings = std::make_unique<QSettings>(copy, QSettings::IniFormat);
    }

    QStringList names() const
    {
        m_settings->beginGroup("form");
        const QStringList keys = m_settings->childKeys();
        m_settings->endGroup();
        return keys;
    }

    QString remembered() const { return m_settings->value("default_conf/name").toString(); }

    /// The text that a configuration holds for the form's one field; "-" without such a one.
    QString text(const QString& name) const
    {
        const QVariantMap map = m_settings->value("form/" + name).toMap();
        return map.value("field", "-").toString();
    }

private:
    std::unique_ptr<QSettings> m_settings;
};

} // namespace

/// Several named configurations of a form, switched, added and deleted by the user.
class tst_config_selector : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void showsTheSortedNamesAndTheRememberedOne();
    void startsWithTheFirstNameInAnEmptyFile();
    void dropsARememberedNameThatIsGone();
    void keepsANameOfTheFileThatIsFirst();
    void switchesAndSavesWhatIsLeft();
    void asksBeforeItSavesWithoutAutosave_data();
    void asksBeforeItSavesWithoutAutosave();
    void addsACopyUnderACleanedName();
    void cleansNames_data();
    void cleansNames();
    void stopsWithoutAWord_data();
    void stopsWithoutAWord();
    void deletesAndShowsTheNeighbour_data();
    void deletesAndShowsTheNeighbour();
    void keepsTheLastOne();
    void keepsWhatTheUserDoesNotWantDeleted();
    void doesNotWriteTheDeletedOneBack();
    void savesTheRememberedOneOnAccept();
    void staysInTheWholeMapFormWithSeparateKeys();
    void leavesOtherKeysAloneUnderAFilter();
    void makesOnlyItsWidgetsWithoutSeveralConfigurations();
    void survivesAFormThatGoesBehindAQuestion_data();
    void survivesAFormThatGoesBehindAQuestion();
    void takesATextThatIsBeingTyped();
    void savesWithoutAQuestionWhatIsNotInTheFileYet();

private:
    void write(const QString& name, const QString& text) const;
    void remember(const QString& name) const;
    /// Builds a form with one field and a selector, and shows it.
    void open(const QVariantMap& more = {}, const std::bitset<256>& attr = A_NONE);

    QComboBox* list() const { return m_window->findChild<QComboBox*>(); }

    QPushButton* button(const QString& text) const;

    QString field() const { return m_window->findChild<QLineEdit*>()->text(); }

    void choose(const QString& name) const;
    void press(const QString& text) const;
    /// Presses "+" and types a name; a null text presses Escape.
    void add(const QString& name);
    QStringList names() const;

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_file;
    QMap<QString, QVariant> m_map;
    QSet<QString> m_keys;
    std::unique_ptr<ModalAnswers> m_answers;
    std::unique_ptr<QWidget> m_window;
    bool m_filtered = false;
};

void tst_config_selector::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_file = m_folder->filePath("form.ini");
    m_map.clear();
    m_keys.clear();
    m_filtered = false;
    m_answers = std::make_unique<ModalAnswers>();
}

void tst_config_selector::cleanup()
{
    m_window.reset();
    m_answers.reset();
}

void tst_config_selector::write(const QString& name, const QString& text) const
{
    const QMap<QString, QVariant> map {{"field", text}};
    INFO::saveMapToIniFile(&map, m_file, "form", false, nullptr, name);
}

void tst_config_selector::remember(const QString& name) const
{
    INFO::setDefaultIniMultiOptionName(m_file, name);
}

void tst_config_selector::open(const QVariantMap& more, const std::bitset<256>& attr)
{
    QVariantMap options {{Option::iniFileNameKey, m_file},
                         {Option::iniGroupNameKey, "form"},
                         {Option::iniSumMapNameKey, "erste"},
                         {Option::iniUseMultiConfKey, true}};
    options.insert(more);
    m_window.reset();
    m_window = std::make_unique<QWidget>();
    const QList<INFO> rows {INFO(E_LINEEDIT, A_USE_MAP_VALUE | attr, "Feld:", "Anfang", "field"),
                            INFO(E_MULTICONFIG, A_NONE, options)};
    INFO::applyLayout(m_window.get(), true, options, rows, {}, {}, &m_map,
                      m_filtered ? &m_keys : nullptr);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

QPushButton* tst_config_selector::button(const QString& text) const
{
    const auto buttons = m_window->findChildren<QPushButton*>();
    for (QPushButton* candidate : buttons) {
        if (candidate->text() == text)
            return candidate;
    }
    return nullptr;
}

void tst_config_selector::choose(const QString& name) const
{
    QComboBox* box = list();
    box->setFocus();
    const int target = box->findText(name);
    QVERIFY(target >= 0);
    while (box->currentIndex() != target)
        QTest::keyClick(box, box->currentIndex() < target ? Qt::Key_Down : Qt::Key_Up);
}

void tst_config_selector::press(const QString& text) const
{
    QTest::mouseClick(button(text), Qt::LeftButton);
}

void tst_config_selector::add(const QString& name)
{
    QString title;
    QString label;
    QString start = "unset";
    onceModal(m_window.get(), [&](QWidget* modal) {
        auto* dialog = qobject_cast<QInputDialog*>(modal);
        if (dialog == nullptr) {
            modal->close();
            return;
        }
        title = dialog->windowTitle();
        label = dialog->labelText();
        auto* edit = dialog->findChild<QLineEdit*>();
        start = edit->text();
        QCOMPARE(edit->echoMode(), QLineEdit::Normal);
        if (name.isNull()) {
            QTest::keyClick(dialog, Qt::Key_Escape);
            return;
        }
        for (const QChar character : name)
            QTest::sendKeyEvent(QTest::Click, edit, Qt::Key_unknown, QString(character),
                                Qt::NoModifier);
        QTest::keyClick(edit, Qt::Key_Return);
    });
    press("+");
    QCOMPARE(title, QString("Neue Einstellung:"));
    QCOMPARE(label, QString("Name der Einstellung:"));
    QCOMPARE(start, QString());
}

QStringList tst_config_selector::names() const
{
    QStringList texts;
    for (int i = 0; i < list()->count(); ++i) {
        texts << list()->itemText(i);
        if (list()->itemData(i).toString() != list()->itemText(i))
            texts << "other data";
    }
    return texts;
}

void tst_config_selector::showsTheSortedNamesAndTheRememberedOne()
{
    write("zwei", "Z");
    write("alpha", "A");
    remember("zwei");
    open();
    QCOMPARE(names(), QStringList({"alpha", "zwei"}));
    QCOMPARE(list()->currentText(), QString("zwei"));
    QCOMPARE(field(), QString("Z"));
    const auto* box = m_window->findChild<QGroupBox*>();
    QVERIFY(box);
    const auto* layout = qobject_cast<QHBoxLayout*>(box->layout());
    QVERIFY(layout);
    QCOMPARE(qobject_cast<QLabel*>(layout->itemAt(0)->widget())->text(), QString("Einstellungen:"));
    QCOMPARE(layout->itemAt(1)->widget(), list());
    QCOMPARE(layout->itemAt(2)->widget(), button("+"));
    QCOMPARE(layout->itemAt(3)->widget(), button("-"));
}

void tst_config_selector::startsWithTheFirstNameInAnEmptyFile()
{
    open();
    QCOMPARE(names(), QStringList {"erste"});
    QCOMPARE(list()->currentText(), QString("erste"));
    QCOMPARE(field(), QString("Anfang"));
    QVERIFY(!QFile::exists(m_file));
}

void tst_config_selector::dropsARememberedNameThatIsGone()
{
    write("alpha", "A");
    remember("weg");
    open();
    QCOMPARE(names(), QStringList({"alpha", "erste"}));
    QCOMPARE(list()->currentText(), QString("erste"));
    QCOMPARE(field(), QString("Anfang"));
}

void tst_config_selector::keepsANameOfTheFileThatIsFirst()
{
    write("erste", "E");
    open();
    QCOMPARE(names(), QStringList {"erste"});
    QCOMPARE(field(), QString("E"));
}

void tst_config_selector::switchesAndSavesWhatIsLeft()
{
    write("a", "A");
    write("b", "B");
    remember("a");
    open();
    retype(m_window->findChild<QLineEdit*>(), "A2");
    choose("b");
    QCOMPARE(field(), QString("B"));
    QCOMPARE(m_map.value("field").toString(), QString("B"));
    const FileView file(m_file);
    QCOMPARE(file.names(), QStringList({"a", "b"}));
    QCOMPARE(file.text("a"), QString("A2"));
    QCOMPARE(file.text("b"), QString("B"));
    QCOMPARE(file.remembered(), QString("b"));
    QCOMPARE(m_answers->titles(), QStringList());
}

void tst_config_selector::asksBeforeItSavesWithoutAutosave_data()
{
    QTest::addColumn<bool>("yes");
    QTest::newRow("Yes") << true;
    QTest::newRow("No") << false;
}

void tst_config_selector::asksBeforeItSavesWithoutAutosave()
{
    QFETCH(bool, yes);
    write("a", "A");
    write("b", "B");
    remember("a");
    m_answers->answer(saveTitle, yes ? QMessageBox::Yes : QMessageBox::No);
    open({{Option::iniAutoSaveKey, false}});
    retype(m_window->findChild<QLineEdit*>(), "A2");
    choose("b");
    QCOMPARE(m_answers->titles(), QStringList {saveTitle});
    QCOMPARE(m_answers->seen().first().text,
             QString("Sollen evtl. Änderungen an der Einstellung 'a' zuvor gesichert werden?"));
    QCOMPARE(field(), QString("B"));
    QCOMPARE(FileView(m_file).text("a"), QString(yes ? "A2" : "A"));
    QCOMPARE(FileView(m_file).remembered(), QString("b"));

    // Adding asks for the current one in the same way.
    retype(m_window->findChild<QLineEdit*>(), "B2");
    add("neu");
    QCOMPARE(m_answers->titles(), QStringList({saveTitle, saveTitle}));
    QCOMPARE(FileView(m_file).text("b"), QString(yes ? "B2" : "B"));
    QCOMPARE(FileView(m_file).text("neu"), QString("B2"));
}

void tst_config_selector::addsACopyUnderACleanedName()
{
    write("a", "A");
    remember("a");
    open();
    retype(m_window->findChild<QLineEdit*>(), "A2");
    add("Neue Größe 2!");
    QCOMPARE(names(), QStringList({"a", "neuegröße2"}));
    QCOMPARE(list()->currentText(), QString("neuegröße2"));
    QCOMPARE(field(), QString("A2"));
    const FileView file(m_file);
    QCOMPARE(file.text("a"), QString("A2"));
    QCOMPARE(file.text("neuegröße2"), QString("A2"));
    QCOMPARE(file.remembered(), QString("neuegröße2"));
    // The next start shows it again.
    m_map.clear();
    open();
    QCOMPARE(list()->currentText(), QString("neuegröße2"));
    QCOMPARE(field(), QString("A2"));
}

void tst_config_selector::cleansNames_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("name");
    QTest::newRow("capitals") << "ABC"
                              << "abc";
    QTest::newRow("blanks") << " a b "
                            << "ab";
    QTest::newRow("punctuation") << "a/b\\c.d-e_f"
                                 << "abcdef";
    QTest::newRow("digits") << "2026"
                            << "2026";
    QTest::newRow("other letters") << "ÄÖÜß Ωд"
                                   << "äöüßωд";
}

void tst_config_selector::cleansNames()
{
    QFETCH(QString, typed);
    QFETCH(QString, name);
    open();
    add(typed);
    QCOMPARE(list()->currentText(), name);
    QCOMPARE(FileView(m_file).names().contains(name), true);
}

void tst_config_selector::stopsWithoutAWord_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("Cancel") << QString();
    QTest::newRow("nothing typed") << QString("");
    QTest::newRow("nothing left of it") << "-/ !";
    QTest::newRow("a name that exists") << "B";
}

void tst_config_selector::stopsWithoutAWord()
{
    QFETCH(QString, typed);
    write("a", "A");
    write("b", "B");
    remember("a");
    open();
    add(typed);
    QCOMPARE(names(), QStringList({"a", "b"}));
    QCOMPARE(list()->currentText(), QString("a"));
    QCOMPARE(FileView(m_file).remembered(), QString("a"));
    QCOMPARE(FileView(m_file).text("b"), QString("B"));
    QCOMPARE(m_answers->titles(), QStringList());
}

void tst_config_selector::deletesAndShowsTheNeighbour_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("neighbour");
    QTest::newRow("the first") << "a"
                               << "b";
    QTest::newRow("the middle") << "b"
                                << "a";
    QTest::newRow("the last") << "c"
                              << "b";
}

void tst_config_selector::deletesAndShowsTheNeighbour()
{
    QFETCH(QString, name);
    QFETCH(QString, neighbour);
    for (const char* each : {"a", "b", "c"})
        write(each, QString(each).toUpper());
    remember(name);
    m_answers->answer(deleteTitle, QMessageBox::Yes);
    open();
    press("-");
    QCOMPARE(m_answers->titles(), QStringList {deleteTitle});
    QCOMPARE(m_answers->seen().first().text,
             QString("Soll die Einstellung '%1' wirklich gelöscht werden?").arg(name));
    QStringList left {"a", "b", "c"};
    left.removeOne(name);
    QCOMPARE(names(), left);
    QCOMPARE(list()->currentText(), neighbour);
    QCOMPARE(field(), neighbour.toUpper());
    const FileView file(m_file);
    QCOMPARE(file.names(), left);
    QCOMPARE(file.remembered(), neighbour);
    QCOMPARE(file.text(neighbour), neighbour.toUpper());
}

void tst_config_selector::keepsTheLastOne()
{
    write("a", "A");
    remember("a");
    open();
    press("-");
    QCOMPARE(m_answers->titles(), QStringList {lastTitle});
    QCOMPARE(m_answers->seen().first().text,
             QString("Es muss ein Eintrag in der Liste existieren."));
    QCOMPARE(m_answers->seen().first().buttons, QMessageBox::Ok);
    QCOMPARE(names(), QStringList {"a"});
    QCOMPARE(FileView(m_file).text("a"), QString("A"));
}

void tst_config_selector::keepsWhatTheUserDoesNotWantDeleted()
{
    write("a", "A");
    write("b", "B");
    remember("a");
    m_answers->answer(deleteTitle, QMessageBox::No);
    open();
    press("-");
    QCOMPARE(names(), QStringList({"a", "b"}));
    QCOMPARE(FileView(m_file).names(), QStringList({"a", "b"}));
}

void tst_config_selector::doesNotWriteTheDeletedOneBack()
{
    write("a", "A");
    write("b", "B");
    remember("b");
    m_answers->answer(deleteTitle, QMessageBox::Yes);
    m_answers->answer(saveTitle, QMessageBox::Yes);
    open({{Option::iniAutoSaveKey, false}});
    retype(m_window->findChild<QLineEdit*>(), "B2");
    press("-");
    QCOMPARE(m_answers->titles(), QStringList {deleteTitle}); // nothing is left to be saved
    QCOMPARE(FileView(m_file).names(), QStringList {"a"});
    QCOMPARE(FileView(m_file).text("a"), QString("A"));
}

void tst_config_selector::savesTheRememberedOneOnAccept()
{
    write("a", "A");
    write("b", "B");
    remember("a");
    open();
    choose("b");
    retype(m_window->findChild<QLineEdit*>(), "B2");
    const INFO mainRow(E_WIDGET, A_NONE,
                       QVariantMap {{Option::iniFileNameKey, m_file},
                                    {Option::iniGroupNameKey, "form"},
                                    {Option::iniSumMapNameKey, "erste"},
                                    {Option::iniUseMultiConfKey, true}});
    QVERIFY(INFO::canClose(m_window.get(), m_window.get(), kAccept, mainRow, mainRow, &m_map, {}));
    QCOMPARE(FileView(m_file).text("b"), QString("B2"));
    QCOMPARE(FileView(m_file).text("a"), QString("A"));
    QCOMPARE(FileView(m_file).names(), QStringList({"a", "b"}));
}

void tst_config_selector::staysInTheWholeMapFormWithSeparateKeys()
{
    open({{Option::iniSeparateKeysKey, true}});
    add("neu");
    const FileView file(m_file);
    QCOMPARE(file.text("neu"), QString("Anfang"));
    QVERIFY(!file.names().contains("field"));
    QVERIFY(file.names().contains("neu"));
}

void tst_config_selector::leavesOtherKeysAloneUnderAFilter()
{
    write("a", "A");
    remember("a");
    m_filtered = true;
    open();
    m_map.insert("other", 5);
    add("neu");
    const QVariantMap saved = [this] {
        QFile::copy(m_file, m_file + ".filter");
        return QSettings(m_file + ".filter", QSettings::IniFormat).value("form/neu").toMap();
    }();
    QCOMPARE(saved.keys(), QStringList {"field"});
}

void tst_config_selector::makesOnlyItsWidgetsWithoutSeveralConfigurations()
{
    write("a", "A");
    open({{Option::iniUseMultiConfKey, false}});
    QCOMPARE(list()->count(), 0);
    press("+");
    press("-");
    QCOMPARE(m_answers->titles(), QStringList());
    QCOMPARE(FileView(m_file).names(), QStringList {"a"});
}

void tst_config_selector::survivesAFormThatGoesBehindAQuestion_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("adding") << "+";
    QTest::newRow("deleting") << "-";
}

void tst_config_selector::survivesAFormThatGoesBehindAQuestion()
{
    QFETCH(QString, button);
    write("a", "A");
    write("b", "B");
    remember("a");
    open({{Option::iniAutoSaveKey, false}});
    // By code, as a timer of the program may do: the question goes with the form.
    m_answers->whenShown([this](QMessageBox&) { m_window.reset(); });
    press(button);
    QVERIFY(!m_window);
    QCOMPARE(FileView(m_file).names(), QStringList({"a", "b"}));
    QCOMPARE(FileView(m_file).remembered(), QString("a"));
}

void tst_config_selector::takesATextThatIsBeingTyped()
{
    write("a", "A");
    write("b", "B");
    remember("a");
    open({}, A_LINEEDIT_UPDATE_ON_FINISH);
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    retype(m_window->findChild<QLineEdit*>(), "A2");
    list()->setCurrentIndex(1); // the focus stays in the field
    QCOMPARE(FileView(m_file).text("a"), QString("A2"));
    QCOMPARE(field(), QString("B"));
}

void tst_config_selector::savesWithoutAQuestionWhatIsNotInTheFileYet()
{
    write("a", "A");
    remember("a");
    open({{Option::iniAutoSaveKey, false}});
    // Another program has taken it out of the file.
    list()->addItem("neu", "neu");
    retype(m_window->findChild<QLineEdit*>(), "A2");
    choose("neu");
    QCOMPARE(m_answers->titles(), QStringList());
    QCOMPARE(FileView(m_file).text("a"), QString("A2"));
    QCOMPARE(FileView(m_file).remembered(), QString("neu"));
}

QTEST_MAIN(tst_config_selector)

#include "tst_config_selector.moc"
