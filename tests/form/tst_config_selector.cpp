#include "tests/form/selector_bench.h"

using namespace mod_form_qt;
using Option = INFO::Option;

/// Several named configurations of a form, switched, added and deleted by the user.
class tst_config_selector : public SelectorBench
{
    Q_OBJECT

private slots:

    void init() { start(); }

    void cleanup() { end(); }

    void showsTheSortedNamesAndTheRememberedOne();
    void startsWithTheFirstNameInAnEmptyFile();
    void dropsARememberedNameThatIsGone();
    void keepsANameOfTheFileThatIsFirst();
    void switchesAndSavesWhatIsLeft();
    void addsACopyUnderACleanedName();
    void cleansNames_data();
    void cleansNames();
    void stopsWithoutAWord_data();
    void stopsWithoutAWord();
    void deletesAndShowsTheNeighbour_data();
    void deletesAndShowsTheNeighbour();
    void keepsTheLastOne();
    void makesOnlyItsWidgetsWithoutSeveralConfigurations();
    void takesATextThatIsBeingTyped();
    void neverRenames();
    void theWheelSwitchesOnlyWithFocus();
};

void tst_config_selector::showsTheSortedNamesAndTheRememberedOne()
{
    write("zwei", "Z");
    write("alpha", "A");
    remember("zwei");
    m_form->open();
    QCOMPARE(m_form->names(), QStringList({"alpha", "zwei"}));
    QCOMPARE(m_form->list()->currentText(), QString("zwei"));
    QCOMPARE(m_form->field(), QString("Z"));
    const auto* box = m_form->m_window->findChild<QGroupBox*>();
    QVERIFY(box);
    const auto* layout = qobject_cast<QHBoxLayout*>(box->layout());
    QVERIFY(layout);
    QCOMPARE(qobject_cast<QLabel*>(layout->itemAt(0)->widget())->text(), QString("Einstellungen:"));
    QCOMPARE(layout->itemAt(1)->widget(), m_form->list());
    QCOMPARE(layout->itemAt(2)->widget(), m_form->button("+"));
    QCOMPARE(layout->itemAt(3)->widget(), m_form->button("-"));
}

void tst_config_selector::startsWithTheFirstNameInAnEmptyFile()
{
    m_form->open();
    QCOMPARE(m_form->names(), QStringList {"erste"});
    QCOMPARE(m_form->list()->currentText(), QString("erste"));
    QCOMPARE(m_form->field(), QString("Anfang"));
    QVERIFY(!QFile::exists(m_file));
}

void tst_config_selector::dropsARememberedNameThatIsGone()
{
    write("alpha", "A");
    remember("weg");
    m_form->open();
    QCOMPARE(m_form->names(), QStringList({"alpha", "erste"}));
    QCOMPARE(m_form->list()->currentText(), QString("erste"));
    QCOMPARE(m_form->field(), QString("Anfang"));
}

void tst_config_selector::keepsANameOfTheFileThatIsFirst()
{
    write("erste", "E");
    m_form->open();
    QCOMPARE(m_form->names(), QStringList {"erste"});
    QCOMPARE(m_form->field(), QString("E"));
}

void tst_config_selector::switchesAndSavesWhatIsLeft()
{
    write("a", "A");
    write("b", "B");
    remember("a");
    m_form->open();
    retype(m_form->edit(), "A2");
    m_form->choose("b");
    QCOMPARE(m_form->field(), QString("B"));
    QCOMPARE(m_form->m_map.value("field").toString(), QString("B"));
    const FileView stored = file();
    QCOMPARE(stored.names(), QStringList({"a", "b"}));
    QCOMPARE(stored.text("a"), QString("A2"));
    QCOMPARE(stored.text("b"), QString("B"));
    QCOMPARE(stored.remembered(), QString("b"));
    QCOMPARE(m_answers->titles(), QStringList());
}

void tst_config_selector::addsACopyUnderACleanedName()
{
    write("a", "A");
    remember("a");
    m_form->open();
    retype(m_form->edit(), "A2");
    m_form->add("Neue Größe 2!");
    QCOMPARE(m_form->names(), QStringList({"a", "neuegröße2"}));
    QCOMPARE(m_form->list()->currentText(), QString("neuegröße2"));
    QCOMPARE(m_form->field(), QString("A2"));
    const FileView stored = file();
    QCOMPARE(stored.text("a"), QString("A2"));
    QCOMPARE(stored.text("neuegröße2"), QString("A2"));
    QCOMPARE(stored.remembered(), QString("neuegröße2"));
    // The next start shows it again.
    m_form->m_map.clear();
    m_form->open();
    QCOMPARE(m_form->list()->currentText(), QString("neuegröße2"));
    QCOMPARE(m_form->field(), QString("A2"));
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
    m_form->open();
    m_form->add(typed);
    QCOMPARE(m_form->list()->currentText(), name);
    QCOMPARE(file().names().contains(name), true);
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
    m_form->open();
    m_form->add(typed);
    QCOMPARE(m_form->names(), QStringList({"a", "b"}));
    QCOMPARE(m_form->list()->currentText(), QString("a"));
    QCOMPARE(file().remembered(), QString("a"));
    QCOMPARE(file().text("b"), QString("B"));
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
    m_form->open();
    m_form->press("-");
    QCOMPARE(m_answers->titles(), QStringList {deleteTitle});
    QCOMPARE(m_answers->seen().first().text,
             QString("Soll die Einstellung '%1' wirklich gelöscht werden?").arg(name));
    QStringList left {"a", "b", "c"};
    left.removeOne(name);
    QCOMPARE(m_form->names(), left);
    QCOMPARE(m_form->list()->currentText(), neighbour);
    QCOMPARE(m_form->field(), neighbour.toUpper());
    const FileView stored = file();
    QCOMPARE(stored.names(), left);
    QCOMPARE(stored.remembered(), neighbour);
    QCOMPARE(stored.text(neighbour), neighbour.toUpper());
}

void tst_config_selector::keepsTheLastOne()
{
    write("a", "A");
    remember("a");
    m_form->open();
    m_form->press("-");
    QCOMPARE(m_answers->titles(), QStringList {lastTitle});
    QCOMPARE(m_answers->seen().first().text,
             QString("Es muss ein Eintrag in der Liste existieren."));
    QCOMPARE(m_answers->seen().first().buttons, QMessageBox::Ok);
    QCOMPARE(m_form->names(), QStringList {"a"});
    QCOMPARE(file().text("a"), QString("A"));
}

void tst_config_selector::makesOnlyItsWidgetsWithoutSeveralConfigurations()
{
    write("a", "A");
    m_form->open({{Option::iniUseMultiConfKey, false}});
    QCOMPARE(m_form->list()->count(), 0);
    m_form->press("+");
    m_form->press("-");
    QCOMPARE(m_answers->titles(), QStringList());
    QCOMPARE(file().names(), QStringList {"a"});
}

void tst_config_selector::takesATextThatIsBeingTyped()
{
    write("a", "A");
    write("b", "B");
    remember("a");
    m_form->open({}, A_LINEEDIT_UPDATE_ON_FINISH);
    QVERIFY(QTest::qWaitForWindowActive(m_form->m_window.get()));
    retype(m_form->edit(), "A2");
    m_form->list()->setCurrentIndex(1); // the focus stays in the field
    QCOMPARE(file().text("a"), QString("A2"));
    QCOMPARE(m_form->field(), QString("B"));
}

void tst_config_selector::neverRenames()
{
    writeTwo();
    m_answers->answer(deleteTitle, QMessageBox::Yes);
    m_form->open();
    QVERIFY(!m_form->list()->isEditable());
    QTest::keyClicks(m_form->list(), "x"); // would be typed into it
    QCOMPARE(m_form->names(), QStringList({"a", "b"}));
    m_form->choose("b");
    QCOMPARE(file().names(), QStringList({"a", "b"}));
    m_form->add("neu");
    QCOMPARE(file().names(), QStringList({"a", "b", "neu"}));
    m_form->press("-");
    QCOMPARE(file().names(), QStringList({"a", "b"}));
    QCOMPARE(m_form->names(), QStringList({"a", "b"}));
}

void tst_config_selector::theWheelSwitchesOnlyWithFocus()
{
    writeTwo();
    m_form->open();
    m_form->m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_form->m_window.get()));
    const auto turn = [this] {
        const QPoint middle = m_form->list()->rect().center();
        QWheelEvent event(middle, m_form->list()->mapToGlobal(middle), QPoint(), QPoint(0, -120),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(m_form->list(), &event);
    };
    m_form->edit()->setFocus();
    turn();
    QCOMPARE(m_form->list()->currentText(), QString("a"));
    QCOMPARE(file().remembered(), QString("a"));
    m_form->list()->setFocus();
    turn();
    QCOMPARE(m_form->field(), QString("B"));
    QCOMPARE(file().remembered(), QString("b"));
}

QTEST_MAIN(tst_config_selector)

#include "tst_config_selector.moc"
