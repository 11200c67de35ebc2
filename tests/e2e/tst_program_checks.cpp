#include "tests/e2e/program_test.h"
#include "tests/support/app_test.h"

/// Settings that a run cannot begin with.
class tst_program_checks : public ProgramTest
{
    Q_OBJECT

public:
    using ProgramTest::ProgramTest;

private slots:
    void init();

    void asksNothingOfTheShopIfACheckFails_data();
    void asksNothingOfTheShopIfACheckFails();
    void runsOnceTheMissingSettingIsChosen();
};

void tst_program_checks::init()
{
    prepare();
    run_setup::serve(m_fixture, run_setup::orders(130, 0));
}

void tst_program_checks::asksNothingOfTheShopIfACheckFails_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const char* option, const QVariant& value,
                        const char* title, const char* text) {
        QTest::newRow(name) << QString::fromUtf8(option) << value << QString::fromUtf8(title)
                            << QString::fromUtf8(text);
    };
    row("no folder for the PDFs", "germanized_use", true, "PDF-Ordner:", "wurde nicht gefunden.");
    row("nothing to export", "paypal_use", false,
        "Keine Aktion ausgewählt:", "Es muss eine der Einstellungen:");
    row("no B2C", "b2c_handling", QVariantList {0},
        "B2C-Einstellung:", "Es muss zuerst unter 'B2C' eine Einstellung ausgewählt werden.");
    row("no chart", "skr", QVariantList(),
        "SKR:", "Es muss zuerst unter 'SKR' ein Kontenrahmen ausgewählt werden.");
}

void tst_program_checks::asksNothingOfTheShopIfACheckFails()
{
    QFETCH(QString, option);
    QFETCH(QVariant, value);
    QFETCH(QString, title);
    QFETCH(QString, text);
    auto options = run_setup::completeOptions(m_fixture.shop.baseUrl());
    // Nothing is exported only if both kinds are off.
    if (option == QLatin1String("paypal_use"))
        options.insert(QStringLiteral("woocommerce_use"), false);
    options.insert(option, value);
    layDownSettings(options);
    // The host offers no chart of its own.
    QStringList lines = m_folder.hostLines();
    lines[1] = QStringLiteral("0");
    m_folder.writeHostFile(lines);

    LedoraProcess program;
    QVERIFY(startProgram(program));
    QVERIFY(desktop::click(program.pid(), startButton));
    QVERIFY(closeBox(program, title, text));
    QVERIFY(program.isRunning());
    QVERIFY(!QFile::exists(m_folder.exportFile()));
    QCOMPARE(m_fixture.paths(), QStringList());
    QVERIFY(desktop::closeWindow(windowOf(program)));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
    QCOMPARE(m_fixture.paths(), QStringList());
}

void tst_program_checks::runsOnceTheMissingSettingIsChosen()
{
    auto options = run_setup::completeOptions(m_fixture.shop.baseUrl());
    options.remove(QStringLiteral("b2c_handling"));
    layDownSettings(options);
    LedoraProcess program;
    QVERIFY(startProgram(program));
    QVERIFY(desktop::click(program.pid(), startButton));
    QVERIFY(closeBox(program, QStringLiteral("B2C-Einstellung:"), QStringLiteral("'B2C'")));
    QVERIFY(!desktop::tabTo(program.pid(), QStringLiteral("B2C:")).isEmpty());
    QVERIFY(desktop::key(QStringLiteral("Down")));
    QVERIFY(runToQuestion(program));
    QVERIFY(m_folder.exported().contains("|b2c_handling|1|"));
}

int main(int argc, char** argv)
{
    desktop::enterSession(argv);
    return runAppTest<tst_program_checks>(argc, argv);
}

#include "tst_program_checks.moc"
