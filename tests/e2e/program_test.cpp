#include "tests/e2e/program_test.h"

#include <QDir>
#include <QRegularExpression>
#include <QtTest>

#include <algorithm>

using demo_shop::ShopRequest;

const QString ProgramTest::question = QStringLiteral("Beendet:");
const QString ProgramTest::startButton = QStringLiteral("Daten vom Server abrufen");
const QString ProgramTest::okButton = QStringLiteral("Import starten");
const QString ProgramTest::cancelButton = QStringLiteral("Abbrechen und Beenden");
const QString ProgramTest::mainWindow = QStringLiteral("MainWindow");
const QString ProgramTest::anyError = QStringLiteral("Fehler:");

namespace {

QString exactly(const QString& text)
{
    return QStringLiteral("^%1$").arg(text);
}

bool waitUntilGone(const LedoraProcess& program, const QString& title)
{
    return QTest::qWaitFor([&] { return !desktop::isShown(program.pid(), exactly(title)); }, 30000);
}

} // namespace

ProgramTest::ProgramTest(const StartFolder& folder)
    : m_folder(folder)
    , m_fixture(folder)
{
}

void ProgramTest::prepare()
{
    m_fixture.window.reset();
    m_fixture.answers.clear();
    m_fixture.shop.setFaultPlan({});
    m_fixture.shop.clearRequests();
    if (!m_fixture.shop.listen())
        QFAIL("The shop can't listen.");
    QDir(m_folder.pdfFolder()).removeRecursively();
    layDownSettings(run_setup::completeOptions(m_fixture.shop.baseUrl()));
}

void ProgramTest::layDownSettings(const QMap<QString, QVariant>& options)
{
    QFile::remove(m_folder.iniFile());
    QFile::remove(m_folder.exportFile());
    m_folder.writeHostFile();
    m_folder.saveOptions(options);
    QVERIFY(run_setup::storeSecrets(m_fixture.shop.baseUrl()));
}

QByteArray ProgramTest::exportOfThisProcess(const QJsonArray& orders)
{
    run_setup::serve(m_fixture, orders);
    const auto options = run_setup::completeOptions(m_fixture.shop.baseUrl());
    m_fixture.start(options);
    m_fixture.window->SaveConfig(false);
    m_fixture.runToEnd();
    QByteArray bytes = m_folder.exported();
    m_fixture.window.reset();
    m_fixture.shop.clearRequests();
    layDownSettings(options);
    return bytes;
}

bool ProgramTest::startProgram(LedoraProcess& program) const
{
    return program.start({m_folder.hostFile()})
        && desktop::waitForWindow(
               program.pid(), {QStringLiteral("Fehler beim Entschlüsseln:"), anyError, mainWindow})
        == mainWindow;
}

bool ProgramTest::runToQuestion(const LedoraProcess& program)
{
    return desktop::click(program.pid(), startButton)
        && desktop::waitForWindow(program.pid(), {question, anyError}, 60) == question;
}

bool ProgramTest::answer(const LedoraProcess& program, const QString& button)
{
    return desktop::click(program.pid(), button) && waitUntilGone(program, question);
}

bool ProgramTest::closeBox(const LedoraProcess& program, const QString& title, const QString& text)
{
    if (desktop::waitForWindow(program.pid(), {title}, 90) != title)
        return false;
    const QString said = desktop::waitForText(program.pid(), QRegularExpression::escape(text), 10);
    return !said.isEmpty()
        && desktop::key(desktop::waitForWindowId(program.pid(), exactly(title)),
                        QStringLiteral("Return"))
        && waitUntilGone(program, title);
}

QString ProgramTest::windowOf(const LedoraProcess& program)
{
    return desktop::waitForWindowId(program.pid(), exactly(mainWindow));
}

int ProgramTest::requestsFor(const char* ending) const
{
    const QStringList paths = m_fixture.paths();
    return static_cast<int>(std::ranges::count_if(
        paths, [ending](const QString& path) { return path.endsWith(QLatin1String(ending)); }));
}

bool ProgramTest::allCarried(const QByteArray& authorization) const
{
    const QList<ShopRequest> requests = m_fixture.shop.requests();
    return !requests.isEmpty() && std::ranges::all_of(requests, [&](const ShopRequest& request) {
        return request.authorization == authorization;
    });
}
