#include "tests/form/password_bench.h"

using namespace mod_form_qt;

/// The generator of passwords in its dialog.
class tst_password_settings : public PasswordBench
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    // Has to be the first that opens the generator.
    void theFirstDialogStartsWithTenCharactersOfAllClasses();
    // the generator
    void createMakesAPassword();
    void aChangeOfTheLengthGeneratesAtOnce();
    void aChangeOfTheClassesGeneratesAtOnce();
    void onlySelectedClassesAreUsed();
    void withoutAClassThereIsNoPassword();
    void createWithEveryClassOffEmptiesTheField();
    void withoutALengthThereIsNoPassword();
    void theGeneratedPasswordCannotBeEdited();
    void useTakesThePasswordAndAccepts();
    void useWithTheKeyboardTakesThePasswordAndAccepts();
    void useBeforeCreateTakesNoPassword_data();
    void useBeforeCreateTakesNoPassword();
    void useOfAShortPasswordIsReported();
    void copyPutsThePasswordOnTheClipboard();
    void settingsCarryOverToTheNextDialog();
    void settingsCarryOverFromACancelledDialog();
    void settingsAreNotSaved();

private:
    QTemporaryDir m_folder;
};

void tst_password_settings::initTestCase()
{
    QVERIFY(QDir::setCurrent(m_folder.path()));
    for (const auto format : {QSettings::NativeFormat, QSettings::IniFormat})
        QSettings::setPath(format, QSettings::UserScope, m_folder.path());
}

void tst_password_settings::cleanup()
{
    m_messages.clear();
    QCOMPARE(visibleWindows(), QStringList());
}

void tst_password_settings::theFirstDialogStartsWithTenCharactersOfAllClasses()
{
    run({}, [](const QDialog& dialog) {
        QCOMPARE(dialog.findChild<QSpinBox*>("numchars")->value(), 10);
        QCOMPARE(selected(dialog), allClasses);
        QCOMPARE(field(dialog, "generated_pwd")->text(), "");
    });
    QVERIFY(m_asked);
}

void tst_password_settings::createMakesAPassword()
{
    run({}, [](const QDialog& dialog) {
        setLength(dialog, 20);
        select(dialog, allClasses);
        QStringList generated;
        for (int i = 0; i < 3; ++i) {
            click(dialog, "create_pwd");
            generated << field(dialog, "generated_pwd")->text();
            QCOMPARE(generated.last().size(), 20);
        }
        QCOMPARE(generated.removeDuplicates(), 0);
        // The fields are left alone.
        QCOMPARE(field(dialog, "pwd")->text(), "");
    });
    QVERIFY(m_asked);
}

void tst_password_settings::aChangeOfTheLengthGeneratesAtOnce()
{
    run({}, [](const QDialog& dialog) {
        select(dialog, allClasses);
        setLength(dialog, 7);
        QCOMPARE(field(dialog, "generated_pwd")->text().size(), 7);
        QTest::keyClick(dialog.findChild<QSpinBox*>("numchars"), Qt::Key_Up);
        QCOMPARE(field(dialog, "generated_pwd")->text().size(), 8);
    });
    QVERIFY(m_asked);
}

void tst_password_settings::aChangeOfTheClassesGeneratesAtOnce()
{
    run({}, [](const QDialog& dialog) {
        setLength(dialog, 30);
        select(dialog, {"Zahlen"});
        static const QRegularExpression digits("^[0-8]{30}$");
        QVERIFY(digits.match(field(dialog, "generated_pwd")->text()).hasMatch());
    });
    QVERIFY(m_asked);
}

void tst_password_settings::onlySelectedClassesAreUsed()
{
    run({}, [](const QDialog& dialog) {
        setLength(dialog, 1000);
        select(dialog, {"Zahlen", "Kleinbuchstaben"});
        click(dialog, "create_pwd");
        static const QRegularExpression expected("^[0-9a-y]{1000}$");
        QVERIFY(expected.match(field(dialog, "generated_pwd")->text()).hasMatch());
    });
    QVERIFY(m_asked);
}

void tst_password_settings::withoutAClassThereIsNoPassword()
{
    run({}, [](const QDialog& dialog) {
        setLength(dialog, 10);
        select(dialog, {"Zahlen"});
        QCOMPARE(field(dialog, "generated_pwd")->text().size(), 10);
        select(dialog, {});
        QCOMPARE(field(dialog, "generated_pwd")->text(), "");
        click(dialog, "create_pwd");
        QCOMPARE(field(dialog, "generated_pwd")->text(), "");
    });
    QVERIFY(m_asked);
}

void tst_password_settings::createWithEveryClassOffEmptiesTheField()
{
    run({}, [](const QDialog& dialog) {
        setLength(dialog, 10);
        select(dialog, {});
        // To leave out the last class has emptied it already.
        field(dialog, "generated_pwd")->setText("von vorher");
        click(dialog, "create_pwd");
        QCOMPARE(field(dialog, "generated_pwd")->text(), "");
    });
    QVERIFY(m_asked);
}

void tst_password_settings::withoutALengthThereIsNoPassword()
{
    run({}, [](const QDialog& dialog) {
        select(dialog, allClasses);
        setLength(dialog, 0);
        QCOMPARE(field(dialog, "generated_pwd")->text(), "");
        click(dialog, "create_pwd");
        QCOMPARE(field(dialog, "generated_pwd")->text(), "");
    });
    QVERIFY(m_asked);
}

void tst_password_settings::theGeneratedPasswordCannotBeEdited()
{
    run({}, [](const QDialog& dialog) {
        QLineEdit* edit = field(dialog, "generated_pwd");
        QVERIFY(edit->isReadOnly());
        QTest::keyClicks(edit, "x");
        QCOMPARE(edit->text(), "");
    });
    QVERIFY(m_asked);
}

void tst_password_settings::useTakesThePasswordAndAccepts()
{
    QString generated;
    const Outcome outcome = run({}, [&](const QDialog& dialog) {
        setLength(dialog, 12);
        select(dialog, allClasses);
        generated = field(dialog, "generated_pwd")->text();
        click(dialog, "set_pwd");
        QCOMPARE(field(dialog, "pwd")->text(), generated);
        QCOMPARE(field(dialog, "pwd_again")->text(), generated);
    });
    QCOMPARE(generated.size(), 12);
    QCOMPARE(outcome.code, 1);
    QCOMPARE(outcome.pwd, generated);
    QCOMPARE(m_messages, QStringList());
}

void tst_password_settings::useWithTheKeyboardTakesThePasswordAndAccepts()
{
    QString generated;
    const Outcome outcome = run({}, [&](const QDialog& dialog) {
        setLength(dialog, 12);
        select(dialog, allClasses);
        generated = field(dialog, "generated_pwd")->text();
        QPushButton* use = button(dialog, "set_pwd");
        use->setFocus(Qt::TabFocusReason);
        QCOMPARE(dialog.focusWidget(), use);
        QTest::keyClick(use, Qt::Key_Space);
    });
    QCOMPARE(generated.size(), 12);
    QCOMPARE(outcome.code, 1);
    QCOMPARE(outcome.pwd, generated);
    QCOMPARE(m_messages, QStringList());
}

void tst_password_settings::useBeforeCreateTakesNoPassword_data()
{
    QTest::addColumn<bool>("allowEmpty");
    QTest::newRow("which may be") << true;
    QTest::newRow("which may not be") << false;
}

void tst_password_settings::useBeforeCreateTakesNoPassword()
{
    QFETCH(bool, allowEmpty);
    Call call;
    call.allowEmpty = allowEmpty;
    const Outcome outcome = run(call, [&](QDialog& dialog) {
        QCOMPARE(field(dialog, "generated_pwd")->text(), "");
        typeBoth(dialog, "geheim");
        if (!allowEmpty)
            answerBox(&dialog);
        click(dialog, "set_pwd");
        if (!allowEmpty)
            QTRY_COMPARE(m_messages.size(), 2);
    });
    QCOMPARE(outcome.code, int(allowEmpty));
    QCOMPARE(outcome.pwd, allowEmpty ? "" : "vorher");
}

void tst_password_settings::useOfAShortPasswordIsReported()
{
    const Outcome outcome = run({}, [this](QDialog& dialog) {
        select(dialog, allClasses);
        setLength(dialog, 5);
        answerBox(&dialog);
        click(dialog, "set_pwd");
        QTRY_COMPARE(m_messages.size(), 2);
        QVERIFY(dialog.isVisible());
        QCOMPARE(field(dialog, "pwd")->text().size(), 5);
    });
    QCOMPARE(m_messages.value(1), "Das Passwort muss minimal 6 Zeichen enthalten.");
    QCOMPARE(outcome.code, 0);
}

void tst_password_settings::copyPutsThePasswordOnTheClipboard()
{
    run({}, [](const QDialog& dialog) {
        setLength(dialog, 15);
        select(dialog, allClasses);
        click(dialog, "create_pwd");
        click(dialog, "copy_pwd");
        QCOMPARE(QGuiApplication::clipboard()->text(), field(dialog, "generated_pwd")->text());
        QCOMPARE(QGuiApplication::clipboard()->text().size(), 15);
        QVERIFY(dialog.isVisible());
    });
    QVERIFY(m_asked);
}

void tst_password_settings::settingsCarryOverToTheNextDialog()
{
    run({}, [](const QDialog& dialog) {
        setLength(dialog, 33);
        select(dialog, {"Spezielle Zeichen", "Großbuchstaben"});
        click(dialog, "set_pwd");
    });
    run({}, [](const QDialog& dialog) {
        QCOMPARE(dialog.findChild<QSpinBox*>("numchars")->value(), 33);
        QCOMPARE(selected(dialog), (QStringList {"Spezielle Zeichen", "Großbuchstaben"}));
        QCOMPARE(field(dialog, "generated_pwd")->text(), "");
    });
    QVERIFY(m_asked);
}

void tst_password_settings::settingsCarryOverFromACancelledDialog()
{
    run({}, [](const QDialog& dialog) {
        select(dialog, {});
        setLength(dialog, 21);
        click(dialog, INFO::objectCancelButtonName);
    });
    run({}, [](const QDialog& dialog) {
        QCOMPARE(dialog.findChild<QSpinBox*>("numchars")->value(), 21);
        QCOMPARE(selected(dialog), QStringList());
        select(dialog, allClasses);
    });
    QVERIFY(m_asked);
}

void tst_password_settings::settingsAreNotSaved()
{
    run({}, [](const QDialog& dialog) {
        setLength(dialog, 17);
        click(dialog, "create_pwd");
        click(dialog, "set_pwd");
    });
    QCOMPARE(
        QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
        QStringList());
}

QTEST_MAIN(tst_password_settings)
#include "tst_password_settings.moc"
