#include "tests/form/password_bench.h"

using namespace mod_form_qt;

/// What the dialogs that ask for passwords look like.
class tst_password_dialogs : public PasswordBench
{
    Q_OBJECT

private slots:
    void cleanup();
    // what is on screen
    void rowsDependOnTheMode_data();
    void rowsDependOnTheMode();
    void textsDependOnTheMode_data();
    void textsDependOnTheMode();
    void textsMayHoldASemicolon();
    void textsMayHoldBraces();
    void theWindowHasATitleBarOnly();
    void fieldsShareFontAndWidth();
    void theFieldsStartEmpty();
    void theOkButtonIsTheDefault();
    void fieldsHaveTheEchoModeGiven_data();
    void fieldsHaveTheEchoModeGiven();
    void aPasswordCanBeShown_data();
    void aPasswordCanBeShown();
};

void tst_password_dialogs::cleanup()
{
    m_messages.clear();
    QCOMPARE(visibleWindows(), QStringList());
}

void tst_password_dialogs::rowsDependOnTheMode_data()
{
    QTest::addColumn<bool>("create");
    QTest::addColumn<bool>("showOptions");
    QTest::addColumn<QStringList>("keys");
    const QStringList generator = {"generated_pwd", "numchars", "options",
                                   "create_pwd",    "set_pwd",  "copy_pwd"};
    QTest::newRow("query") << false << false << QStringList {"pwd"};
    QTest::newRow("query with options") << false << true << QStringList {"pwd", "show_pwd"};
    QTest::newRow("set") << true << false << QStringList {"pwd", "pwd_again"};
    QTest::newRow("set with options")
        << true << true << (QStringList {"pwd", "pwd_again", "show_pwd"} + generator);
}

void tst_password_dialogs::rowsDependOnTheMode()
{
    QFETCH(bool, create);
    QFETCH(bool, showOptions);
    QFETCH(QStringList, keys);
    Call call;
    call.create = create;
    call.showOptions = showOptions;
    run(call, [keys](const QDialog& dialog) {
        QStringList found;
        for (const char* key : {"pwd", "pwd_again", "show_pwd", "generated_pwd", "numchars",
                                "options", "create_pwd", "set_pwd", "copy_pwd"}) {
            if (dialog.findChild<QWidget*>(key))
                found << key;
        }
        QCOMPARE(found, keys);
        const bool generator = keys.contains("create_pwd");
        auto* box = dialog.findChild<QGroupBox*>();
        QCOMPARE(box != nullptr, generator);
        if (!generator)
            return;
        QCOMPARE(box->title(), "Passwortgenerator:");
        QCOMPARE(button(dialog, "create_pwd")->text(), "Erzeugen");
        QCOMPARE(button(dialog, "set_pwd")->text(), "Verwenden");
        QCOMPARE(button(dialog, "copy_pwd")->text(), "Zwischenablage");
        QCOMPARE(button(dialog, "options")->text(), "Auswahl");
        QCOMPARE(dialog.findChild<QCheckBox*>("show_pwd")->text(), "Passwort zeigen");
        QCOMPARE(labelOf(dialog, "pwd_again"), "Passwortwiederholung:");
        QStringList labels;
        for (const QLabel* label : box->findChildren<QLabel*>())
            labels << label->text();
        QCOMPARE(labels, QStringList("Anzahl Zeichen:"));
    });
    QVERIFY(m_asked);
}

void tst_password_dialogs::textsDependOnTheMode_data()
{
    QTest::addColumn<bool>("create");
    QTest::addColumn<bool>("allowEmpty");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shownTitle");
    QTest::addColumn<QString>("shownText");
    QTest::newRow("query") << false << false << ""
                           << ""
                           << "Passwortabfrage:"
                           << "<b><big>Geben Sie das Passwort ein:</b></big>";
    QTest::newRow("set") << true << false << ""
                         << ""
                         << "Passwort festlegen/ändern:"
                         << "<b><big>Legen Sie ein Passwort fest:</b></big>";
    QTest::newRow("set, may be empty")
        << true << true << ""
        << ""
        << "Passwort festlegen/ändern:"
        << "<b><big>Legen Sie ein Passwort fest:<br>Eine Leereingabe löscht das "
           "Passwort.</b></big>";
    QTest::newRow("own texts") << false << false << "Titel"
                               << "100 %2 geheim"
                               << "Titel"
                               << "<b><big>100 %2 geheim</b></big>";
}

void tst_password_dialogs::textsDependOnTheMode()
{
    QFETCH(QString, shownTitle);
    QFETCH(QString, shownText);
    QFETCH(bool, create);
    QFETCH(bool, allowEmpty);
    QFETCH(QString, title);
    QFETCH(QString, text);
    Call call;
    call.create = create;
    call.allowEmpty = allowEmpty;
    call.title = title;
    call.text = text;
    run(call, [&](const QDialog& dialog) {
        QCOMPARE(dialog.windowTitle(), shownTitle);
        QCOMPARE(labelOf(dialog, "pwd"), shownText);
    });
    QVERIFY(m_asked);
}

void tst_password_dialogs::textsMayHoldASemicolon()
{
    Call call;
    call.text = "Erst dies; dann das";
    run(call, [](const QDialog& dialog) {
        QCOMPARE(labelOf(dialog, "pwd"), "<b><big>Erst dies; dann das</b></big>");
    });
    QVERIFY(m_asked);
}

void tst_password_dialogs::textsMayHoldBraces()
{
    Call call;
    call.title = "Titel {{minwidth}{900}}";
    call.text = "Für {{minwidth}{900}} {{{b}{c}}} {{";
    run(call, [](const QDialog& dialog) {
        const QString label = labelOf(dialog, "pwd");
        QCOMPARE(QTextDocumentFragment::fromHtml(label).toPlainText(),
                 "Für {{minwidth}{900}} {{{b}{c}}} {{");
        QVERIFY(label.startsWith("<b><big>"));
        QCOMPARE(field(dialog, "pwd")->accessibleName(), "Für {{minwidth}{900}} {{{b}{c}}} {{");
        QVERIFY(field(dialog, "pwd")->minimumWidth() < 900);
        QCOMPARE(dialog.windowTitle(), "Titel {{minwidth}{900}}");
        QVERIFY(dialog.minimumWidth() < 900);
    });
    QVERIFY(m_asked);
}

void tst_password_dialogs::theWindowHasATitleBarOnly()
{
    run({}, [](const QDialog& dialog) {
        QVERIFY(dialog.isModal());
        QVERIFY(dialog.windowFlags().testFlag(Qt::WindowTitleHint));
        QVERIFY(dialog.windowFlags().testFlag(Qt::CustomizeWindowHint));
        QVERIFY(!dialog.windowFlags().testFlag(Qt::WindowCloseButtonHint));
    });
    QVERIFY(m_asked);
}

void tst_password_dialogs::fieldsShareFontAndWidth()
{
    run({}, [](const QDialog& dialog) {
        const QLineEdit other;
        const int width = field(dialog, "pwd")->minimumWidth();
        QVERIFY(width > 0);
        for (const char* key : {"pwd", "pwd_again", "generated_pwd"}) {
            const QLineEdit* edit = field(dialog, key);
            QVERIFY2(edit->font().fixedPitch(), key);
            QCOMPARE(edit->font().styleHint(), QFont::Monospace);
            QCOMPARE(edit->font().pointSize(), other.font().pointSize() + 2);
            QCOMPARE(edit->minimumWidth(), width);
        }
    });
    QVERIFY(m_asked);
}

void tst_password_dialogs::theFieldsStartEmpty()
{
    run({}, [](const QDialog& dialog) {
        for (const char* key : {"pwd", "pwd_again", "generated_pwd"})
            QCOMPARE(field(dialog, key)->text(), "");
        QVERIFY(!dialog.findChild<QCheckBox*>("show_pwd")->isChecked());
    });
    QVERIFY(m_asked);
}

void tst_password_dialogs::theOkButtonIsTheDefault()
{
    run({}, [](const QDialog& dialog) {
        for (const QPushButton* each : dialog.findChildren<QPushButton*>())
            QCOMPARE(each->isDefault(), each == button(dialog, INFO::objectOKButtonName));
        QVERIFY(button(dialog, INFO::objectCancelButtonName));
    });
    QVERIFY(m_asked);
}

void tst_password_dialogs::fieldsHaveTheEchoModeGiven_data()
{
    QTest::addColumn<int>("echo");
    QTest::newRow("Normal") << int(QLineEdit::Normal);
    QTest::newRow("NoEcho") << int(QLineEdit::NoEcho);
    QTest::newRow("Password") << int(QLineEdit::Password);
    QTest::newRow("PasswordEchoOnEdit") << int(QLineEdit::PasswordEchoOnEdit);
}

void tst_password_dialogs::fieldsHaveTheEchoModeGiven()
{
    QFETCH(int, echo);
    Call call;
    call.echo = QLineEdit::EchoMode(echo);
    run(call, [echo](const QDialog& dialog) {
        QCOMPARE(int(field(dialog, "pwd")->echoMode()), echo);
        QCOMPARE(int(field(dialog, "pwd_again")->echoMode()), echo);
        QCOMPARE(field(dialog, "generated_pwd")->echoMode(), QLineEdit::Normal);
    });
    QVERIFY(m_asked);
}

void tst_password_dialogs::aPasswordCanBeShown_data()
{
    QTest::addColumn<bool>("create");
    QTest::newRow("query") << false;
    QTest::newRow("set") << true;
}

void tst_password_dialogs::aPasswordCanBeShown()
{
    QFETCH(bool, create);
    Call call;
    call.create = create;
    call.echo = QLineEdit::PasswordEchoOnEdit;
    run(call, [create](const QDialog& dialog) {
        auto* shown = dialog.findChild<QCheckBox*>("show_pwd");
        for (const auto mode : {QLineEdit::Normal, QLineEdit::PasswordEchoOnEdit}) {
            QTest::keyClick(shown, Qt::Key_Space);
            QCOMPARE(field(dialog, "pwd")->echoMode(), mode);
            if (create)
                QCOMPARE(field(dialog, "pwd_again")->echoMode(), mode);
        }
    });
    QVERIFY(m_asked);
}

QTEST_MAIN(tst_password_dialogs)
#include "tst_password_dialogs.moc"
