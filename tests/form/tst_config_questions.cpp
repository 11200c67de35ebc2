#include "form/events/form_context.h"
#include "tests/form/selector_bench.h"

using namespace mod_form_qt;
using Option = INFO::Option;

/// What the user is asked before configurations are saved and deleted.
class tst_config_questions : public SelectorBench
{
    Q_OBJECT

private slots:

    void init() { start(); }

    void cleanup() { end(); }

    void asksBeforeItSavesWithoutAutosave_data();
    void asksBeforeItSavesWithoutAutosave();
    void keepsWhatTheUserDoesNotWantDeleted();
    void doesNotWriteTheDeletedOneBack();
    void survivesAFormThatGoesBehindAQuestion_data();
    void survivesAFormThatGoesBehindAQuestion();
    void savesWithoutAQuestionWhatIsNotInTheFileYet();
    void noSavingAndNoNameLeaveTheFileAlone();
    void survivesAFormThatGoesBehindTheName();
    void writesNothingForAFormThatIsTakenDownBehindAQuestion();
};

void tst_config_questions::asksBeforeItSavesWithoutAutosave_data()
{
    QTest::addColumn<bool>("yes");
    QTest::newRow("Yes") << true;
    QTest::newRow("No") << false;
}

void tst_config_questions::asksBeforeItSavesWithoutAutosave()
{
    QFETCH(bool, yes);
    write("a", "A");
    write("b", "B");
    remember("a");
    m_answers->answer(saveTitle, yes ? QMessageBox::Yes : QMessageBox::No);
    m_form->open({{Option::iniAutoSaveKey, false}});
    retype(m_form->edit(), "A2");
    m_form->choose("b");
    QCOMPARE(m_answers->titles(), QStringList {saveTitle});
    QCOMPARE(m_answers->seen().first().text,
             QString("Sollen evtl. Änderungen an der Einstellung 'a' zuvor gesichert werden?"));
    QCOMPARE(m_answers->seen().first().icon, QMessageBox::Question);
    QCOMPARE(m_answers->seen().first().buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(m_form->field(), QString("B"));
    QCOMPARE(file().text("a"), QString(yes ? "A2" : "A"));
    QCOMPARE(file().remembered(), QString("b"));

    // Adding asks for the current one in the same way.
    retype(m_form->edit(), "B2");
    m_form->add("neu");
    QCOMPARE(m_answers->titles(), QStringList({saveTitle, saveTitle}));
    QCOMPARE(file().text("b"), QString(yes ? "B2" : "B"));
    QCOMPARE(file().text("neu"), QString("B2"));
}

void tst_config_questions::keepsWhatTheUserDoesNotWantDeleted()
{
    write("a", "A");
    write("b", "B");
    remember("a");
    m_answers->answer(deleteTitle, QMessageBox::No);
    m_form->open();
    m_form->press("-");
    QCOMPARE(m_answers->seen().first().icon, QMessageBox::Question);
    QCOMPARE(m_answers->seen().first().buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(m_form->names(), QStringList({"a", "b"}));
    QCOMPARE(file().names(), QStringList({"a", "b"}));
}

void tst_config_questions::doesNotWriteTheDeletedOneBack()
{
    write("a", "A");
    write("b", "B");
    remember("b");
    m_answers->answer(deleteTitle, QMessageBox::Yes);
    m_answers->answer(saveTitle, QMessageBox::Yes);
    m_form->open({{Option::iniAutoSaveKey, false}});
    retype(m_form->edit(), "B2");
    m_form->press("-");
    QCOMPARE(m_answers->titles(), QStringList {deleteTitle}); // nothing is left to be saved
    QCOMPARE(file().names(), QStringList {"a"});
    QCOMPARE(file().text("a"), QString("A"));
}

void tst_config_questions::survivesAFormThatGoesBehindAQuestion_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("adding") << "+";
    QTest::newRow("deleting") << "-";
}

void tst_config_questions::survivesAFormThatGoesBehindAQuestion()
{
    QFETCH(QString, button);
    write("a", "A");
    write("b", "B");
    remember("a");
    m_form->open({{Option::iniAutoSaveKey, false}});
    // By code, as a timer of the program may do: the question goes with the form.
    m_answers->whenShown([this](QMessageBox&) { m_form->m_window.reset(); });
    m_form->press(button);
    QVERIFY(!m_form->m_window);
    QCOMPARE(file().names(), QStringList({"a", "b"}));
    QCOMPARE(file().remembered(), QString("a"));
}

void tst_config_questions::savesWithoutAQuestionWhatIsNotInTheFileYet()
{
    write("a", "A");
    remember("a");
    m_form->open({{Option::iniAutoSaveKey, false}});
    // Another program has taken it out of the file.
    m_form->list()->addItem("neu", "neu");
    retype(m_form->edit(), "A2");
    m_form->choose("neu");
    QCOMPARE(m_answers->titles(), QStringList());
    QCOMPARE(file().text("a"), QString("A2"));
    QCOMPARE(file().remembered(), QString("neu"));
}

void tst_config_questions::noSavingAndNoNameLeaveTheFileAlone()
{
    writeTwo();
    m_answers->answer(saveTitle, QMessageBox::No);
    m_form->open({{Option::iniAutoSaveKey, false}});
    retype(m_form->edit(), "A2");
    const QVariantMap before = file().everything();
    m_form->add(QString());
    QCOMPARE(m_answers->titles(), QStringList {saveTitle});
    QCOMPARE(file().everything(), before);
    QCOMPARE(m_form->names(), QStringList({"a", "b"}));
    QCOMPARE(m_form->list()->currentText(), QString("a"));
    QCOMPARE(m_form->field(), QString("A2")); // which the user may still save
}

void tst_config_questions::survivesAFormThatGoesBehindTheName()
{
    writeTwo();
    m_form->open();
    const QVariantMap before = file().everything();
    m_form->onceAskedForAName([this](QInputDialog*) { m_form->m_window.reset(); });
    m_form->press("+");
    QVERIFY(!m_form->m_window);
    QCOMPARE(file().everything(), before);
}

void tst_config_questions::writesNothingForAFormThatIsTakenDownBehindAQuestion()
{
    writeTwo();
    m_answers->answer(saveTitle, QMessageBox::Yes);
    m_form->open({{Option::iniAutoSaveKey, false}});
    const QVariantMap before = file().everything();
    retype(m_form->edit(), "A2");
    m_answers->whenShown([this](QMessageBox&) { disarmForm(m_form->m_window.get()); });
    m_form->choose("b");
    QCOMPARE(m_answers->titles(), QStringList {saveTitle});
    QCOMPARE(file().everything(), before);
    QCOMPARE(m_form->field(), QString("A2"));
}

QTEST_MAIN(tst_config_questions)

#include "tst_config_questions.moc"
