#include "tests/e2e/program_test.h"
#include "tests/support/app_test.h"

/// The window as a screen reader and a keyboard meet it.
class tst_program_access : public ProgramTest
{
    Q_OBJECT

public:
    using ProgramTest::ProgramTest;

private slots:

    void init() { prepare(); }

    void namesEveryFieldAndButton();
    void tabsInTheOrderOfTheRows();
    void opensTheReplacementsByKeyboard();
    void asksByKeyboardBeforeTheCacheIsEmptied();
};

void tst_program_access::namesEveryFieldAndButton()
{
    LedoraProcess program;
    QVERIFY(startProgram(program));
    const QList<desktop::Field> fields = desktop::fields(program.pid());
    QVERIFY(fields.size() > 30);
    for (const desktop::Field& field : fields) {
        const QByteArray text =
            (field.role + QStringLiteral(" \"") + field.name + QStringLiteral("\" holding \"")
             + field.content + QLatin1Char('"'))
                .toUtf8();
        const char* what = text.constData();
        QVERIFY2(!field.name.trimmed().isEmpty(), what);
        QVERIFY2(!field.name.contains(QLatin1Char('<')), what);
        QVERIFY2(!field.name.contains(QLatin1Char('*')), what);
        QVERIFY2(!field.name.contains(QLatin1Char('&')), what);
    }
}

void tst_program_access::tabsInTheOrderOfTheRows()
{
    const QStringList rows {
        QStringLiteral("Webseite:"),
        QStringLiteral("API-Key:"),
        QStringLiteral("API-Secret:"),
        QStringLiteral("Datumsfilter von:"), // the check box
        QStringLiteral("Datumsfilter von:"), // the date
        QStringLiteral("Bis:"),
        QStringLiteral("ID-Cache aktivieren:"),
        QStringLiteral("Löschen"),
        QStringLiteral("Verwenden"),
        QStringLiteral("PDF-Ordner:"), // the field
        QStringLiteral("PDF-Ordner:"), // the button
        QStringLiteral("PDF überschreiben"),
        QStringLiteral("Erlös:"),
        QStringLiteral("Erlös Germanized:"),
        QStringLiteral("Gebühr:"),
        QStringLiteral("Gebühr Germanized:"),
        QStringLiteral("Versandkosten:"),
        QStringLiteral("Versandkosten Germanized:"),
        QStringLiteral("paypal importieren"),
        QStringLiteral("WooCommerce importieren"),
        QStringLiteral("Kunden anlegen"),
        QStringLiteral("'Zahlmethode (kurz)' bearbeiten"),
        QStringLiteral("Belegdatum:"),
        QStringLiteral("B2C:"),
        QStringLiteral("Kostenstelle 1:"),
        QStringLiteral("Kostenstelle 2:"),
        QStringLiteral("Kontenrahmen:"),
        QStringLiteral("Typ:"),
        QStringLiteral("Konto:"),
        startButton,
        QStringLiteral("Anhalten"),
        QStringLiteral("Hilfe"),
        okButton,
        cancelButton,
        QStringLiteral("Protokoll"),
        QStringLiteral("Server"), // the group's own switch, and so round again
    };
    LedoraProcess program;
    QVERIFY(startProgram(program));
    QVERIFY(!desktop::tabTo(program.pid(), rows.first()).isEmpty());
    QCOMPARE(desktop::tabOrder(program.pid()), rows);
}

void tst_program_access::opensTheReplacementsByKeyboard()
{
    const QString title = QStringLiteral("'Zahlmethode (kurz)' bearbeiten");
    LedoraProcess program;
    QVERIFY(startProgram(program));
    QVERIFY(!desktop::tabTo(program.pid(), title).isEmpty());
    QVERIFY(desktop::key(QStringLiteral("space")));
    const QString dialog = title + QLatin1Char(':');
    QCOMPARE(desktop::waitForWindow(program.pid(), {dialog}), dialog);
    QVERIFY(desktop::retype(QStringLiteral("bar~zahlung;bar")));
    const QList<desktop::Field> fields = desktop::fields(program.pid());
    QCOMPARE(desktop::content(fields, QStringLiteral("Ersetzungen:")),
             QStringLiteral("bar~zahlung;bar"));
    for (const desktop::Field& field : fields)
        QVERIFY(!field.name.isEmpty());
    // The way out that does not write into the text: backwards over the three buttons.
    QVERIFY(desktop::key(QStringLiteral("shift+Tab"), 3));
    QCOMPARE(desktop::tabTo(program.pid(), QStringLiteral("OK")),
             QStringList {QStringLiteral("OK")});
    QVERIFY(desktop::key(QStringLiteral("space")));
    QCOMPARE(desktop::waitForWindow(program.pid(), {mainWindow}), mainWindow);
    QVERIFY(desktop::closeWindow(windowOf(program)));
    QVERIFY(program.waitForEnd());
    QCOMPARE(run_setup::optionsInTheFile(m_folder).value(QStringLiteral("def_payment_method_s")),
             QVariant(QStringLiteral("barzahlung;bar")));
}

void tst_program_access::asksByKeyboardBeforeTheCacheIsEmptied()
{
    LedoraProcess program;
    QVERIFY(startProgram(program));
    QVERIFY(!desktop::tabTo(program.pid(), QStringLiteral("Löschen")).isEmpty());
    QVERIFY(desktop::key(QStringLiteral("space")));
    const QString title = QStringLiteral("ID-Cache löschen");
    QCOMPARE(desktop::waitForWindow(program.pid(), {title}), title);
    QVERIFY(!desktop::waitForText(program.pid(),
                                  QStringLiteral("^Sollten die 0 Einträge gelöscht werden\\?$"))
                 .isEmpty());
    QVERIFY(desktop::key(QStringLiteral("Escape")));
    QTRY_VERIFY_WITH_TIMEOUT(!desktop::isShown(program.pid(), title), 30000);
    QVERIFY(program.isRunning());
}

int main(int argc, char** argv)
{
    desktop::enterSession(argv);
    return runAppTest<tst_program_access>(argc, argv);
}

#include "tst_program_access.moc"
