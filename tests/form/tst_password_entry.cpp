#include "tests/form/password_bench.h"

using namespace mod_form_qt;

namespace {

int beeps = 0;

} // namespace

/// Takes the place of the toolkit's in this program: a sound leaves nothing else to be seen.
void QApplication::beep()
{
    ++beeps;
}

/// What can be typed into the dialogs that ask for passwords, and what is accepted.
class tst_password_entry : public PasswordBench
{
    Q_OBJECT

private slots:
    void cleanup();
    // typing
    void blanksAtTheEndsCannotBeTyped();
    void aPastedTextWithBlanksAtAnEndIsRefused();
    void aRefusalBeeps_data();
    void aRefusalBeeps();
    void blanksInsideArePossible();
    // setting a password
    void aGoodPasswordIsReturned();
    void enterAccepts();
    void cancelLeavesThePassword_data();
    void cancelLeavesThePassword();
    void wrongPasswordsAreReported_data();
    void wrongPasswordsAreReported();
    void mismatchAndShortPasswordGiveOneMessage();
    void anEmptyPasswordIsAcceptedWhereItMayBe();
    void theShortestPasswordIsAccepted();
    // asking for a password
    void withoutAnExpectedPasswordAnythingIsAccepted_data();
    void withoutAnExpectedPasswordAnythingIsAccepted();
    void theExpectedPasswordIsAccepted();
    void aWrongPasswordIsReported_data();
    void aWrongPasswordIsReported();
};

void tst_password_entry::cleanup()
{
    m_messages.clear();
    QCOMPARE(visibleWindows(), QStringList());
}

void tst_password_entry::blanksAtTheEndsCannotBeTyped()
{
    const Outcome outcome = run({}, [](const QDialog& dialog) {
        typeBoth(dialog, " geheim ");
        for (const char* key : {"pwd", "pwd_again"}) {
            QLineEdit* edit = field(dialog, key);
            QCOMPARE(edit->text(), "geheim");
            QTest::keyClick(edit, Qt::Key_Home);
            QTest::keyClick(edit, Qt::Key_Space);
            QCOMPARE(edit->text(), "geheim");
        }
        pressOk(dialog);
    });
    QCOMPARE(outcome.code, 1);
    QCOMPARE(outcome.pwd, "geheim");
}

void tst_password_entry::aPastedTextWithBlanksAtAnEndIsRefused()
{
    run({}, [](const QDialog& dialog) {
        QLineEdit* edit = field(dialog, "pwd");
        type(dialog, "pwd", "alt");
        for (const QString& text : {QString("neu "), QString(" neu"), QString("neu\t")}) {
            edit->selectAll();
            QGuiApplication::clipboard()->setText(text);
            QTest::keySequence(edit, QKeySequence::Paste);
            QCOMPARE(edit->text(), "alt");
        }
    });
    QVERIFY(m_asked);
}

void tst_password_entry::aRefusalBeeps_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("password") << "pwd";
    QTest::newRow("repetition") << "pwd_again";
}

void tst_password_entry::aRefusalBeeps()
{
    QFETCH(QString, key);
    run({}, [&key](const QDialog& dialog) {
        QLineEdit* edit = field(dialog, qPrintable(key));
        beeps = 0;
        QTest::keyClicks(edit, "ab");
        QCOMPARE(beeps, 0);
        QTest::keyClick(edit, Qt::Key_Space);
        QCOMPARE(beeps, 1);
        QTest::keyClick(edit, Qt::Key_Home);
        QTest::keyClick(edit, Qt::Key_Space);
        QCOMPARE(beeps, 2);
        edit->setCursorPosition(1);
        QTest::keyClick(edit, Qt::Key_Space);
        QCOMPARE(edit->text(), "a b");
        QCOMPARE(beeps, 2);
    });
    QVERIFY(m_asked);
}

void tst_password_entry::blanksInsideArePossible()
{
    const Outcome outcome = run({}, [](const QDialog& dialog) {
        typeBoth(dialog, "sehrgeheim");
        for (const char* key : {"pwd", "pwd_again"}) {
            field(dialog, key)->setCursorPosition(4);
            QTest::keyClick(field(dialog, key), Qt::Key_Space);
        }
        pressOk(dialog);
    });
    QCOMPARE(outcome.pwd, "sehr geheim");
}

void tst_password_entry::aGoodPasswordIsReturned()
{
    QString pwd;
    const auto typed = [](const QDialog& dialog) {
        typeBoth(dialog, "geheim");
        pressOk(dialog);
    };
    const int code = answered(typed, [&] {
        return createPWD(nullptr, {}, {}, pwd, true, 6, false, QLineEdit::Password);
    });
    QVERIFY(code != 0);
    QCOMPARE(pwd, "geheim");
    QCOMPARE(m_messages, QStringList());
}

void tst_password_entry::enterAccepts()
{
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
        const Outcome outcome = run({}, [key](const QDialog& dialog) {
            typeBoth(dialog, "geheim");
            QTest::keyClick(field(dialog, "pwd_again"), key);
        });
        QCOMPARE(outcome.code, 1);
        QCOMPARE(outcome.pwd, "geheim");
    }
}

void tst_password_entry::cancelLeavesThePassword_data()
{
    QTest::addColumn<bool>("escape");
    QTest::newRow("button") << false;
    QTest::newRow("Escape") << true;
}

void tst_password_entry::cancelLeavesThePassword()
{
    QFETCH(bool, escape);
    const Outcome outcome = run({}, [escape](QDialog& dialog) {
        typeBoth(dialog, "geheim");
        if (escape)
            QTest::keyClick(&dialog, Qt::Key_Escape);
        else
            click(dialog, INFO::objectCancelButtonName);
    });
    QCOMPARE(outcome.code, 0);
    QCOMPARE(outcome.pwd, "vorher");
}

void tst_password_entry::wrongPasswordsAreReported_data()
{
    QTest::addColumn<QString>("pwd");
    QTest::addColumn<QString>("again");
    QTest::addColumn<bool>("allowEmpty");
    QTest::addColumn<QString>("message");
    const QString differ = "Die eingebebenen Passwörter sind unterschiedlich.\r\n";
    const QString tooShort = "Das Passwort muss minimal 6 Zeichen enthalten.";
    QTest::newRow("different") << "geheim1"
                               << "geheim2" << false << differ;
    QTest::newRow("case") << "geheim"
                          << "Geheim" << false << differ;
    QTest::newRow("not repeated") << "geheim"
                                  << "" << true << differ;
    QTest::newRow("too short") << "gehei"
                               << "gehei" << false << tooShort;
    QTest::newRow("too short, may be empty") << "gehei"
                                             << "gehei" << true << tooShort;
    QTest::newRow("empty") << ""
                           << "" << false << tooShort;
    QTest::newRow("empty, but repeated") << ""
                                         << "geheim" << true << differ;
    QTest::newRow("different and too short") << "abc"
                                             << "geheim" << false << differ + tooShort;
}

void tst_password_entry::wrongPasswordsAreReported()
{
    QFETCH(QString, pwd);
    QFETCH(QString, again);
    QFETCH(bool, allowEmpty);
    QFETCH(QString, message);
    Call call;
    call.allowEmpty = allowEmpty;
    const Outcome outcome = run(call, [&](QDialog& dialog) {
        type(dialog, "pwd", pwd);
        type(dialog, "pwd_again", again);
        answerBox(&dialog);
        pressOk(dialog);
        QVERIFY(dialog.isVisible());
        click(dialog, INFO::objectCancelButtonName);
    });
    QCOMPARE(m_messages, (QStringList {"Fehler:", message}));
    QCOMPARE(outcome.code, 0);
    QCOMPARE(outcome.pwd, "vorher");
}

void tst_password_entry::mismatchAndShortPasswordGiveOneMessage()
{
    Call call;
    call.minChars = 9;
    const Outcome outcome = run(call, [this](QDialog& dialog) {
        type(dialog, "pwd", "abc");
        type(dialog, "pwd_again", "abd");
        answerBox(&dialog);
        pressOk(dialog);
        QVERIFY(dialog.isVisible());
        // What was typed is still there and can be mended.
        QCOMPARE(field(dialog, "pwd")->text(), "abc");
        typeBoth(dialog, "abcdefghi");
        pressOk(dialog);
    });
    QCOMPARE(m_messages,
             (QStringList {"Fehler:",
                           "Die eingebebenen Passwörter sind unterschiedlich.\r\n"
                           "Das Passwort muss minimal 9 Zeichen enthalten."}));
    QCOMPARE(outcome.code, 1);
    QCOMPARE(outcome.pwd, "abcdefghi");
}

void tst_password_entry::anEmptyPasswordIsAcceptedWhereItMayBe()
{
    Call call;
    call.allowEmpty = true;
    const Outcome outcome = run(call, [](const QDialog& dialog) { pressOk(dialog); });
    QCOMPARE(outcome.code, 1);
    QCOMPARE(outcome.pwd, "");
    QCOMPARE(m_messages, QStringList());
}

void tst_password_entry::theShortestPasswordIsAccepted()
{
    for (const int minChars : {6, 1, 0, -1}) {
        Call call;
        call.minChars = minChars;
        const QString shortest(qMax(0, minChars), 'x');
        const Outcome outcome = run(call, [&](const QDialog& dialog) {
            typeBoth(dialog, shortest);
            pressOk(dialog);
        });
        QCOMPARE(outcome.code, 1);
        QCOMPARE(outcome.pwd, shortest);
    }
}

void tst_password_entry::withoutAnExpectedPasswordAnythingIsAccepted_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("nothing") << "";
    QTest::newRow("a short one") << "a";
    QTest::newRow("a long one") << "sehr-sehr-geheim";
}

void tst_password_entry::withoutAnExpectedPasswordAnythingIsAccepted()
{
    QFETCH(QString, typed);
    QString pwd = "vorher";
    const auto user = [&](const QDialog& dialog) {
        type(dialog, "pwd", typed);
        pressOk(dialog);
    };
    const int code = answered(
        user, [&] { return checkPWD(nullptr, {}, {}, pwd, false, {}, QLineEdit::Password); });
    QVERIFY(code != 0);
    QCOMPARE(pwd, typed);
}

void tst_password_entry::theExpectedPasswordIsAccepted()
{
    Call call;
    call.create = false;
    call.expected = "Ab1";
    const Outcome outcome = run(call, [](const QDialog& dialog) {
        type(dialog, "pwd", "Ab1");
        pressOk(dialog);
    });
    QCOMPARE(outcome.code, 1);
    QCOMPARE(outcome.pwd, "Ab1");
}

void tst_password_entry::aWrongPasswordIsReported_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("other") << "geheim";
    QTest::newRow("empty") << "";
    QTest::newRow("case") << "ab1";
    QTest::newRow("beginning") << "Ab";
}

void tst_password_entry::aWrongPasswordIsReported()
{
    QFETCH(QString, typed);
    Call call;
    call.create = false;
    call.expected = "Ab1";
    const Outcome outcome = run(call, [&](QDialog& dialog) {
        type(dialog, "pwd", typed);
        answerBox(&dialog);
        pressOk(dialog);
        QVERIFY(dialog.isVisible());
        click(dialog, INFO::objectCancelButtonName);
    });
    QCOMPARE(m_messages, (QStringList {"Fehler:", "Falsches Passwort."}));
    QCOMPARE(outcome.code, 0);
    QCOMPARE(outcome.pwd, "vorher");
}

QTEST_MAIN(tst_password_entry)
#include "tst_password_entry.moc"
