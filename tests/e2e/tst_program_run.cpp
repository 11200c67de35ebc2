#include "tests/e2e/program_test.h"
#include "tests/support/app_test.h"

using demo_shop::Fault;
using demo_shop::ShopRequest;

/// Runs of the real program, from the click on the start button to the end of the process.
class tst_program_run : public ProgramTest
{
    Q_OBJECT

public:
    using ProgramTest::ProgramTest;

private slots:

    void init() { prepare(); }

    void handsTheExportOverOnYes();
    void speaksGermanOnAGermanDesktop();
    void staysUsableAfterNo();
    void restartsOnASecondClickInTheFirstSecond();
    void writesTheLastPageBehindTheAnswer();
    void leavesAnEmptyExportForAShopWithoutOrders();
    void emptiesTheExportIfTheShopIsGone();
    void findsItsSettingsAtTheNextStart();
};

void tst_program_run::handsTheExportOverOnYes()
{
    const QJsonArray orders = run_setup::orders(130, 40);
    const QByteArray expected = exportOfThisProcess(orders);
    QVERIFY(expected.startsWith("export_version|1|"));
    QCOMPARE(expected.count('\n'), 2 + 130 + 3);

    LedoraProcess program;
    QVERIFY(startProgram(program));
    QVERIFY(runToQuestion(program));
    QVERIFY(!desktop::waitForText(program.pid(),
                                  QStringLiteral("Der Vorgang wurde beendet, soll der Dialog "
                                                 "geschlossen und der Import gestartet werden\\?"))
                 .isEmpty());
    QVERIFY(answer(program, QStringLiteral("Yes|Ja")));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
    QCOMPARE(m_folder.exported(), expected);
    for (const ShopRequest& request : m_fixture.shop.requests())
        QCOMPARE(request.authorization, run_setup::authorization());
}

void tst_program_run::speaksGermanOnAGermanDesktop()
{
    run_setup::serve(m_fixture, run_setup::orders(1, 0));
    LedoraProcess program;
    program.setVariable(QStringLiteral("LC_ALL"), QStringLiteral("de_DE.UTF-8"));
    program.setVariable(QStringLiteral("LANG"), QStringLiteral("de_DE.UTF-8"));
    QVERIFY(startProgram(program));
    QVERIFY(runToQuestion(program));
    QVERIFY(answer(program, QStringLiteral("Ja")));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
    QVERIFY(m_folder.exported().contains("Müller-1"));
}

void tst_program_run::staysUsableAfterNo()
{
    const QJsonArray orders = run_setup::orders(3, 0);
    const QByteArray expected = exportOfThisProcess(orders);
    LedoraProcess program;
    QVERIFY(startProgram(program));
    QVERIFY(runToQuestion(program));
    QVERIFY(answer(program, QStringLiteral("No|Nein")));
    QTRY_VERIFY_WITH_TIMEOUT(!desktop::isShown(program.pid(), QStringLiteral("^Beendet:$")), 30000);
    QVERIFY(program.isRunning());
    QCOMPARE(m_folder.exported(), expected);
    // Clicking the button proves that it was enabled again.
    QVERIFY(runToQuestion(program));
    QVERIFY(answer(program, QStringLiteral("Yes|Ja")));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
    QCOMPARE(m_folder.exported(), expected);
    QCOMPARE(requestsFor("/v3/orders"), 2);
    // The rates of the first run serve the second.
    QCOMPARE(requestsFor("/v3/taxes"), 2);
}

void tst_program_run::restartsOnASecondClickInTheFirstSecond()
{
    const QJsonArray orders = run_setup::orders(3, 0);
    const QByteArray expected = exportOfThisProcess(orders);
    LedoraProcess program;
    QVERIFY(startProgram(program));
    QVERIFY(runToQuestion(program));
    QVERIFY(desktop::key(desktop::waitForWindowId(program.pid(), QStringLiteral("^Beendet:$")),
                         QStringLiteral("Escape")));
    QTRY_VERIFY_WITH_TIMEOUT(!desktop::isShown(program.pid(), QStringLiteral("^Beendet:$")), 30000);
    // The button is enabled by now, and the mouse still stands on it.
    QVERIFY(desktop::clickAgainTwice());
    QCOMPARE(desktop::waitForWindow(program.pid(), {question, anyError}), question);
    QCOMPARE(m_folder.exported(), expected);
    QVERIFY(answer(program, QStringLiteral("Yes|Ja")));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
    QCOMPARE(m_folder.exported(), expected);
}

void tst_program_run::writesTheLastPageBehindTheAnswer()
{
    const QJsonArray orders = run_setup::orders(6, 2);
    const QByteArray expected = exportOfThisProcess(orders);
    QCOMPARE(expected.count('\n'), 2 + 6 + 3);
    // The first of three refunds takes so long that a tick must fall into its request, if none has
    // fallen into an earlier one.
    m_fixture.shop.setFaultPlan([](const ShopRequest& request) {
        Fault fault;
        if (request.path.endsWith(QLatin1String("/2/refunds"))) {
            fault.kind = Fault::Trickle;
            fault.pieces = 30;
            fault.pauseMs = 100;
        }
        return fault;
    });

    LedoraProcess program;
    QVERIFY(startProgram(program));
    QVERIFY(runToQuestion(program));
    QVERIFY(requestsFor("/refunds") < 3);
    QCOMPARE(m_folder.exported(), QByteArray(""));
    QVERIFY(answer(program, QStringLiteral("Yes|Ja")));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
    QCOMPARE(requestsFor("/refunds"), 3);
    QCOMPARE(m_folder.exported(), expected);
}

void tst_program_run::leavesAnEmptyExportForAShopWithoutOrders()
{
    run_setup::serve(m_fixture, {});
    LedoraProcess program;
    QVERIFY(startProgram(program));
    QVERIFY(runToQuestion(program));
    QVERIFY(answer(program, QStringLiteral("Yes|Ja")));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
    QCOMPARE(m_folder.exported(), QByteArray(""));
}

void tst_program_run::emptiesTheExportIfTheShopIsGone()
{
    run_setup::serve(m_fixture, run_setup::orders(130, 0));
    // The second page never comes.
    m_fixture.shop.setFaultPlan([](const ShopRequest& request) {
        Fault fault;
        if (request.queryValue(QStringLiteral("page")) == QLatin1String("2")
            && request.path.endsWith(QLatin1String("/v3/orders")))
            fault.kind = Fault::Status;
        return fault;
    });
    LedoraProcess program;
    QVERIFY(startProgram(program));
    QVERIFY(desktop::click(program.pid(), startButton));
    QCOMPARE(desktop::waitForWindow(program.pid(), {question, anyError}, 90), anyError);
    QVERIFY(!desktop::waitForText(program.pid(),
                                  QStringLiteral("^Export auf Seite 2 nach 3 "
                                                 "Versuchen fehlgeschlagen:"))
                 .isEmpty());
    QCOMPARE(requestsFor("/v3/orders"), 1 + 9);
    QVERIFY(desktop::key(desktop::waitForWindowId(program.pid(), QStringLiteral("^Fehler:$")),
                         QStringLiteral("Return")));
    QTRY_COMPARE_WITH_TIMEOUT(m_folder.exported(), QByteArray(""), 30000);
    QVERIFY(program.isRunning());
}

void tst_program_run::findsItsSettingsAtTheNextStart()
{
    run_setup::serve(m_fixture, run_setup::orders(2, 2));
    {
        LedoraProcess first;
        QVERIFY(startProgram(first));
        const QString window =
            desktop::waitForWindowId(first.pid(), QStringLiteral("^MainWindow$"));
        QVERIFY(desktop::closeWindow(window));
        QVERIFY(first.waitForEnd());
        QVERIFY(first.hasEndedWell());
    }
    const auto saved = run_setup::optionsInTheFile(m_folder);
    QCOMPARE(saved.value(QStringLiteral("mainurl")).toString(), m_fixture.shop.baseUrl());
    QCOMPARE(saved.value(QStringLiteral("api_key_chain")), QVariant(QString()));
    QCOMPARE(saved.value(QStringLiteral("api_secret_chain")), QVariant(QString()));

    LedoraProcess second;
    second.setVariable(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("default.debug=true"));
    QVERIFY(startProgram(second));
    QVERIFY(runToQuestion(second));
    for (const ShopRequest& request : m_fixture.shop.requests())
        QCOMPARE(request.authorization, run_setup::authorization());
    QCOMPARE(requestsFor("/v3/orders"), 1);
    const QByteArray optionString = m_folder.exportedLines().value(0);
    QVERIFY(optionString.contains("|b2c_handling|2|"));
    QVERIFY(optionString.contains("|skr|4"));
    QVERIFY(!optionString.contains(run_setup::apiKey.toUtf8()));
    QVERIFY(!m_folder.exported().contains(run_setup::apiSecret.toUtf8()));
    QVERIFY(second.output().contains(QLatin1String("b2c_handling")));
    QVERIFY(!second.output().contains(run_setup::apiKey));
    QVERIFY(!second.output().contains(run_setup::apiSecret));
}

int main(int argc, char** argv)
{
    desktop::enterSession(argv);
    return runAppTest<tst_program_run>(argc, argv);
}

#include "tst_program_run.moc"
