#include "app/globals.h"
#include "tests/e2e/program_test.h"
#include "tests/support/app_test.h"

#include <QUrl>

using demo_shop::Fault;
using demo_shop::ShopRequest;

/// Runs that do not go as they should: a shop that refuses or goes away, a stop.
class tst_program_trouble : public ProgramTest
{
    Q_OBJECT

public:
    using ProgramTest::ProgramTest;

private slots:
    void init();

    void stopsInTheMiddleOfAPage();
    void letsWrongCredentialsBeCorrected();
    void closesAfterWrongCredentials();
    void survivesAShopThatGoesAwayForAWhile();

private:
    /// Refuses whatever does not carry the stored secrets.
    void refuseStrangers();
    void storeWrongSecrets();
    void runIntoError(const LedoraProcess& program, int page);
};

void tst_program_trouble::init()
{
    prepare();
    run_setup::serve(m_fixture, run_setup::orders(130, 0));
}

void tst_program_trouble::refuseStrangers()
{
    m_fixture.shop.setFaultPlan([](const ShopRequest& request) {
        Fault fault;
        if (request.authorization != run_setup::authorization()) {
            fault.kind = Fault::Status;
            fault.status = 401;
        }
        return fault;
    });
}

void tst_program_trouble::runIntoError(const LedoraProcess& program, int page)
{
    QVERIFY(desktop::click(program.pid(), startButton));
    QVERIFY(
        closeBox(program, anyError,
                 QStringLiteral("Export auf Seite %1 nach 3 Versuchen fehlgeschlagen:").arg(page)));
    QTRY_COMPARE_WITH_TIMEOUT(m_folder.exported(), QByteArray(""), 30000);
    QVERIFY(!desktop::isShown(program.pid(), QStringLiteral("^Beendet:$")));
}

void tst_program_trouble::stopsInTheMiddleOfAPage()
{
    // The third order's product takes so long that the click falls into it.
    const QString slowProduct = QStringLiteral("/products/503");
    m_fixture.shop.setFaultPlan([&](const ShopRequest& request) {
        Fault fault;
        if (request.path.endsWith(slowProduct)) {
            fault.kind = Fault::Trickle;
            fault.pieces = 150;
            fault.pauseMs = 100;
        }
        return fault;
    });
    LedoraProcess program;
    QVERIFY(startProgram(program));
    QVERIFY(desktop::click(program.pid(), startButton));
    QTRY_VERIFY_WITH_TIMEOUT(requestsFor("/products/503") == 1, 30000);
    QVERIFY(desktop::click(program.pid(), QStringLiteral("Anhalten")));
    // The order that is under way is finished first, so this can only come behind its product.
    QVERIFY(!desktop::waitForText(program.pid(), QStringLiteral("Angehalten\\.")).isEmpty());
    QVERIFY(!desktop::isShown(program.pid(), QStringLiteral("^Beendet:$")));
    QCOMPARE(m_folder.exported().count('\n'), 2 + 3);
    QCOMPARE(requestsFor("/v3/orders"), 1);

    m_fixture.shop.setFaultPlan({});
    QVERIFY(runToQuestion(program));
    QCOMPARE(m_folder.exported().count('\n'), 2 + 130);
    QVERIFY(answer(program, QStringLiteral("Yes|Ja")));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
    QCOMPARE(m_folder.exported().count('\n'), 2 + 130);
}

void tst_program_trouble::storeWrongSecrets()
{
    refuseStrangers();
    QVERIFY(run_setup::storeSecret(m_fixture.shop.baseUrl(), keyNameAPI,
                                   QStringLiteral("ck_mistyped")));
}

void tst_program_trouble::letsWrongCredentialsBeCorrected()
{
    storeWrongSecrets();
    LedoraProcess program;
    QVERIFY(startProgram(program));
    runIntoError(program, 1);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(!desktop::tabTo(program.pid(), QStringLiteral("API-Key:")).isEmpty());
    QVERIFY(desktop::retype(run_setup::apiKey));
    m_fixture.shop.clearRequests();
    QVERIFY(runToQuestion(program));
    QVERIFY(allCarried(run_setup::authorization()));
    QVERIFY(answer(program, QStringLiteral("Yes|Ja")));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
    QCOMPARE(m_folder.exported().count('\n'), 2 + 130);
}

void tst_program_trouble::closesAfterWrongCredentials()
{
    storeWrongSecrets();
    LedoraProcess program;
    QVERIFY(startProgram(program));
    runIntoError(program, 1);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(desktop::click(program.pid(), cancelButton));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
    QVERIFY(!QFile::exists(m_folder.exportFile()));
    QVERIFY(!program.output().contains(QLatin1String("ck_mistyped")));
}

void tst_program_trouble::survivesAShopThatGoesAwayForAWhile()
{
    const auto port = static_cast<quint16>(QUrl(m_fixture.shop.baseUrl()).port());
    m_fixture.during("page=2&orderby=date", [this] {
        // Not from within: the server is still busy with the request.
        QMetaObject::invokeMethod(
            &m_fixture.shop, [this] { m_fixture.shop.close(); }, Qt::QueuedConnection);
    });
    LedoraProcess program;
    QVERIFY(startProgram(program));
    runIntoError(program, 2);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(m_fixture.shop.listen(port));
    QVERIFY(runToQuestion(program));
    QCOMPARE(m_folder.exported().count('\n'), 2 + 130);
    QVERIFY(answer(program, QStringLiteral("Yes|Ja")));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
    QCOMPARE(m_folder.exported().count('\n'), 2 + 130);
}

int main(int argc, char** argv)
{
    desktop::enterSession(argv);
    return runAppTest<tst_program_trouble>(argc, argv);
}

#include "tst_program_trouble.moc"
