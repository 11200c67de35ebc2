#include "tests/e2e/program_test.h"
#include "tests/support/app_test.h"

namespace {

/// The roads out of the window.
enum class Road { Import, Cancel, Escape, SystemButton };

const QByteArray strangersFile = "written by somebody else meanwhile";

} // namespace

Q_DECLARE_METATYPE(Road)

/// What each road out of the window leaves on the disk.
class tst_program_leaving : public ProgramTest
{
    Q_OBJECT

public:
    using ProgramTest::ProgramTest;

private slots:

    void init() { prepare(); }

    void removesTheExportAndSaves_data();
    void removesTheExportAndSaves();
    void handsOverAndSavesNothing_data();
    void handsOverAndSavesNothing();
    void savesTheTextThatIsBeingTyped_data();
    void savesTheTextThatIsBeingTyped();
    void staysWhileAMandatoryFieldIsEmpty_data();
    void staysWhileAMandatoryFieldIsEmpty();

private:
    static bool leave(const LedoraProcess& program, Road road);
    /// A run to its end, or, without one, a file where the export would be.
    void makeExport(const LedoraProcess& program, bool byARun);
    /// Makes what was saved go and changes a setting, so that saving shows.
    void touchSettings(const LedoraProcess& program);
};

bool tst_program_leaving::leave(const LedoraProcess& program, Road road)
{
    switch (road) {
    case Road::Import:
        return desktop::click(program.pid(), okButton);
    case Road::Cancel:
        return desktop::click(program.pid(), cancelButton);
    case Road::Escape:
        return desktop::key(windowOf(program), QStringLiteral("Escape"));
    case Road::SystemButton:
        break;
    }
    return desktop::closeWindow(windowOf(program));
}

void tst_program_leaving::makeExport(const LedoraProcess& program, bool byARun)
{
    if (byARun) {
        run_setup::serve(m_fixture, run_setup::orders(3, 0));
        QVERIFY(runToQuestion(program));
        QVERIFY(answer(program, QStringLiteral("No|Nein")));
        QCOMPARE(m_folder.exported().count('\n'), 2 + 3);
        return;
    }
    QFile file(m_folder.exportFile());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(strangersFile);
}

void tst_program_leaving::touchSettings(const LedoraProcess& program)
{
    QFile::remove(m_folder.iniFile());
    QVERIFY(desktop::click(program.pid(), QStringLiteral("Kunden anlegen")));
}

void tst_program_leaving::removesTheExportAndSaves_data()
{
    QTest::addColumn<Road>("road");
    QTest::addColumn<bool>("afterARun");
    QTest::newRow("cancel button, before a run") << Road::Cancel << false;
    QTest::newRow("cancel button, after a run") << Road::Cancel << true;
    QTest::newRow("Escape, before a run") << Road::Escape << false;
    QTest::newRow("Escape, after a run") << Road::Escape << true;
    QTest::newRow("system button, before a run") << Road::SystemButton << false;
    QTest::newRow("system button, after a run") << Road::SystemButton << true;
}

void tst_program_leaving::removesTheExportAndSaves()
{
    QFETCH(Road, road);
    QFETCH(bool, afterARun);
    LedoraProcess program;
    QVERIFY(startProgram(program));
    makeExport(program, afterARun);
    touchSettings(program);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(leave(program, road));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
    QVERIFY(!QFile::exists(m_folder.exportFile()));
    const auto saved = run_setup::optionsInTheFile(m_folder);
    QCOMPARE(saved.value(QStringLiteral("mainurl")).toString(), m_fixture.shop.baseUrl());
    QVERIFY(saved.value(QStringLiteral("customers_create")).toBool());
    QCOMPARE(saved.value(QStringLiteral("buchungs_konten")).toList().size(), 36);
}

void tst_program_leaving::handsOverAndSavesNothing_data()
{
    QTest::addColumn<bool>("afterARun");
    QTest::newRow("before a run") << false;
    QTest::newRow("after a run") << true;
}

void tst_program_leaving::handsOverAndSavesNothing()
{
    QFETCH(bool, afterARun);
    LedoraProcess program;
    QVERIFY(startProgram(program));
    makeExport(program, afterARun);
    touchSettings(program);
    if (QTest::currentTestFailed())
        return;
    const QByteArray before = m_folder.exported();
    QVERIFY(leave(program, Road::Import));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
    QCOMPARE(m_folder.exported(), before);
    QVERIFY(!QFile::exists(m_folder.iniFile()));
}

void tst_program_leaving::savesTheTextThatIsBeingTyped_data()
{
    QTest::addColumn<Road>("road");
    QTest::newRow("cancel button") << Road::Cancel;
    QTest::newRow("Escape") << Road::Escape;
    QTest::newRow("system button") << Road::SystemButton;
}

void tst_program_leaving::savesTheTextThatIsBeingTyped()
{
    QFETCH(Road, road);
    LedoraProcess program;
    QVERIFY(startProgram(program));
    QVERIFY(!desktop::tabTo(program.pid(), QStringLiteral("Erlös:")).isEmpty());
    QVERIFY(desktop::retype(QStringLiteral("not yet left")));
    QVERIFY(leave(program, road));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
    QCOMPARE(run_setup::optionsInTheFile(m_folder).value(QStringLiteral("buchungs_text_erloes")),
             QVariant(QStringLiteral("not yet left")));
}

void tst_program_leaving::staysWhileAMandatoryFieldIsEmpty_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<Road>("road");
    QTest::newRow("no address, then the cancel button")
        << QStringLiteral("Webseite:") << Road::Cancel;
    QTest::newRow("no key, then Escape") << QStringLiteral("API-Key:") << Road::Escape;
    QTest::newRow("no secret, then the system button")
        << QStringLiteral("API-Secret:") << Road::SystemButton;
}

void tst_program_leaving::staysWhileAMandatoryFieldIsEmpty()
{
    QFETCH(QString, field);
    QFETCH(Road, road);
    LedoraProcess program;
    QVERIFY(startProgram(program));
    QVERIFY(!desktop::tabTo(program.pid(), field).isEmpty());
    QVERIFY(desktop::key(QStringLiteral("ctrl+a")));
    QVERIFY(desktop::key(QStringLiteral("Delete")));
    QVERIFY(leave(program, Road::Import));
    QVERIFY(
        closeBox(program, anyError,
                 QStringLiteral("Feld '%1': Es muss ein Wert eingetragen oder ausgewählt werden.")
                     .arg(field)));
    QVERIFY(program.isRunning());
    // The field that is meant has the focus, so it can be filled at once.
    QCOMPARE(desktop::tabTo(program.pid(), field), QStringList {field});
    QVERIFY(leave(program, road));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
}

int main(int argc, char** argv)
{
    desktop::enterSession(argv);
    return runAppTest<tst_program_leaving>(argc, argv);
}

#include "tst_program_leaving.moc"
