#include "app/globals.h"
#include "credentials/keychain_class.h"
#include "credentials/keychain_key.h"
#include "tests/e2e/program_test.h"
#include "tests/proof/proof_size.h"
#include "tests/proof/secret_places.h"
#include "tests/support/app_test.h"

#include <QDir>
#include <QRandomGenerator>
#include <QUrl>

using demo_shop::Fault;
using demo_shop::ShopRequest;

namespace {

QString s(const char* text)
{
    return QString::fromUtf8(text);
}

/// What nobody would write by accident.
QString randomText(const char* start, const char* end)
{
    QByteArray bytes(20, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(QRandomGenerator::system()->bounded(256));
    return QLatin1String(start) + QString::fromLatin1(bytes.toHex()) + QString::fromUtf8(end);
}

} // namespace

/// Runs of every kind, after which the secrets are looked for wherever the program could have left
/// or shown them.
class tst_proof_secrets : public ProgramTest
{
    Q_OBJECT

public:
    using ProgramTest::ProgramTest;

private slots:
    void initTestCase();
    void init();
    void theSearchFindsWhatIsThere();
    void noSecretIsLeftBehind_data();
    void noSecretIsLeftBehind();
    void cleanupTestCase();

private:
    /// How a run goes on after the window is there. Each ends with the program's end.
    using Road = void (tst_proof_secrets::*)(LedoraProcess&);

    void accepted(LedoraProcess& program);
    void declinedAndCancelled(LedoraProcess& program);
    void wrongCredentials(LedoraProcess& program);
    void shopGone(LedoraProcess& program);
    void shopCrashes(LedoraProcess& program);
    void notJson(LedoraProcess& program);
    void redirectedToAnotherHost(LedoraProcess& program);
    void stopped(LedoraProcess& program);
    void closedInARequest(LedoraProcess& program);
    void killed(LedoraProcess& program);
    void typedIn(LedoraProcess& program);
    void noSecretService(LedoraProcess& program);

    /// Looks at the program while it shows two boxes of that title, one after the other, that tell
    /// \a text, and closes each.
    void lookAtBoxes(const LedoraProcess& program, const QString& title, const QString& text);
    static bool closeOneOf(const LedoraProcess& program, const QString& title);
    bool storeSecrets() const;
    /// Lets the program ask a shop that gives the same odd answer to everything.
    void askOddShop(const demo_shop::ShopServer::Handler& handler);
    void failingRun(LedoraProcess& program);
    void clickIntoSlowRequest(LedoraProcess& program);
    void typeSecrets(LedoraProcess& program);
    bool prepareProgram(LedoraProcess& program);
    /// Looks at the process from outside and at everything on its windows.
    /// \param text  has to be there, so that the window which it stands in has been seen
    void lookAt(const LedoraProcess& program, const QString& text = {});
    void lookAfter(const LedoraProcess& program);
    void lookAtRequests();
    void search(const QString& place, const QByteArray& bytes);
    QStringList secrets() const;

    QString m_key;
    QString m_secret;
    QString m_url;
    demo_shop::ShopServer m_oddShop {{}};
    demo_shop::ShopServer m_otherHost {{}};
    qint64 m_places = 0;
    qint64 m_bytes = 0;
    int m_runs = 0;
    int m_clean = 0;
};

void tst_proof_secrets::initTestCase()
{
    QVERIFY(m_oddShop.listen());
    QVERIFY(m_otherHost.listen());
}

QStringList tst_proof_secrets::secrets() const
{
    return {m_key, m_secret};
}

void tst_proof_secrets::init()
{
    m_key = randomText("ck_", "+/=%41");
    m_secret = randomText("cs_", " ü;\"\\|~");
    prepare();
    m_url = m_fixture.shop.baseUrl();
    run_setup::serve(m_fixture, run_setup::orders(12, 3));
    QDir(m_folder.path(s("home"))).removeRecursively();
    QVERIFY(QDir().mkpath(m_folder.path(s("home/tmp"))));
    m_oddShop.clearRequests();
    m_otherHost.clearRequests();
}

void tst_proof_secrets::search(const QString& place, const QByteArray& bytes)
{
    ++m_places;
    m_bytes += bytes.size();
    const QStringList found = secret_places::search(secrets(), bytes);
    QVERIFY2(found.isEmpty(), qPrintable(place + s(": ") + found.join(s(", "))));
}

void tst_proof_secrets::theSearchFindsWhatIsThere()
{
    const QByteArray pair = (m_key + u':' + m_secret).toUtf8();
    const QList<QByteArray> forms {
        m_key.toUtf8(),
        "x" + m_secret.toUtf8() + "y",
        m_secret.toUtf8().toPercentEncoding(),
        "Basic " + pair.toBase64(),
        m_key.toUtf8().toBase64(QByteArray::Base64UrlEncoding),
        pair.toHex(),
        m_key.left(14).toUtf8(),
        "api_key_chain="
            + m_secret.toUtf8().replace("\\", "\\\\").replace("\"", "\\\"").replace("ü", "\\xfc"),
        "@Variant(" + secret_places::iniText(m_key) + ')',
    };
    for (const QByteArray& form : forms)
        QVERIFY2(!secret_places::search(secrets(), form).isEmpty(), form.constData());
    QVERIFY(secret_places::search(secrets(), "ck_4f3a90d1 and nothing else").isEmpty());
}

void tst_proof_secrets::noSecretIsLeftBehind_data()
{
    QTest::addColumn<Road>("road");
    // The one that passes most places; the others take too long for each build.
    QTest::newRow("typed in and accepted") << &tst_proof_secrets::typedIn;
    if (!proof::isFull())
        return;
    QTest::newRow("redirected to another host") << &tst_proof_secrets::redirectedToAnotherHost;
    QTest::newRow("accepted") << &tst_proof_secrets::accepted;
    QTest::newRow("declined and cancelled") << &tst_proof_secrets::declinedAndCancelled;
    QTest::newRow("wrong credentials") << &tst_proof_secrets::wrongCredentials;
    QTest::newRow("shop gone") << &tst_proof_secrets::shopGone;
    QTest::newRow("shop crashes") << &tst_proof_secrets::shopCrashes;
    QTest::newRow("not JSON") << &tst_proof_secrets::notJson;
    QTest::newRow("stopped") << &tst_proof_secrets::stopped;
    QTest::newRow("closed in a request") << &tst_proof_secrets::closedInARequest;
    QTest::newRow("killed") << &tst_proof_secrets::killed;
    // Last: its accessibility bus stays noted on the screen.
    QTest::newRow("no secret service") << &tst_proof_secrets::noSecretService;
}

bool tst_proof_secrets::prepareProgram(LedoraProcess& program)
{
    const QString home = m_folder.path(s("home"));
    program.setFolder(home);
    program.setVariable(s("HOME"), home);
    program.setVariable(s("TMPDIR"), home + s("/tmp"));
    program.setVariable(s("XDG_CONFIG_HOME"), home + s("/config"));
    program.setVariable(s("XDG_DATA_HOME"), home + s("/data"));
    program.setVariable(s("XDG_CACHE_HOME"), home + s("/cache"));
    program.setVariable(s("XDG_STATE_HOME"), home + s("/state"));
    program.setVariable(s("QT_LOGGING_RULES"), s("*=true"));
    return storeSecrets();
}

bool tst_proof_secrets::storeSecrets() const
{
    return run_setup::storeSecret(m_url, keyNameAPI, m_key)
        && run_setup::storeSecret(m_url, keyNameSECRET, m_secret);
}

void tst_proof_secrets::askOddShop(const demo_shop::ShopServer::Handler& handler)
{
    m_oddShop.setHandler(handler);
    m_url = m_oddShop.baseUrl();
    layDownSettings(run_setup::completeOptions(m_url));
    QVERIFY(storeSecrets());
}

void tst_proof_secrets::lookAtBoxes(const LedoraProcess& program, const QString& title,
                                    const QString& text)
{
    for (int i = 0; i < 2; ++i) {
        // There for the screen first, for a screen reader a moment later.
        QVERIFY(!desktop::waitForWindowId(program.pid(), u'^' + title + u'$').isEmpty());
        QCOMPARE(desktop::waitForWindow(program.pid(), {title}), title);
        lookAt(program, text);
        if (QTest::currentTestFailed())
            return;
        QVERIFY(closeOneOf(program, title));
    }
}

bool tst_proof_secrets::closeOneOf(const LedoraProcess& program, const QString& title)
{
    // The next box may have the same title.
    const QString pattern = u'^' + title + u'$';
    const QString id = desktop::waitForWindowId(program.pid(), pattern);
    return !id.isEmpty() && desktop::key(id, s("Return"))
        && QTest::qWaitFor([&] { return !desktop::windows(program.pid(), pattern).contains(id); },
                           30000);
}

void tst_proof_secrets::noSecretIsLeftBehind()
{
    QFETCH(Road, road);
    ++m_runs;
    LedoraProcess program;
    QVERIFY(prepareProgram(program));
    (this->*road)(program);
    if (QTest::currentTestFailed())
        return;
    lookAfter(program);
    if (QTest::currentTestFailed())
        return;
    lookAtRequests();
    if (!QTest::currentTestFailed())
        ++m_clean;
}

void tst_proof_secrets::lookAt(const LedoraProcess& program, const QString& text)
{
    QVERIFY(program.isRunning());
    for (const char* name : {"cmdline", "environ"}) {
        const QByteArray bytes = secret_places::ofProcess(program.pid(), name);
        QVERIFY(bytes.contains(m_folder.path(QString()).toUtf8()));
        search(QLatin1String(name), bytes);
    }
    const desktop::Outcome texts = secret_places::shownTexts(program.pid());
    QVERIFY2(texts.ok, qPrintable(texts.problem));
    QVERIFY(!texts.output.isEmpty());
    QVERIFY2(texts.output.contains(text), qPrintable(texts.output));
    search(s("windows"), texts.output.toUtf8());
    search(s("output so far"), program.output().toUtf8());
}

void tst_proof_secrets::lookAfter(const LedoraProcess& program)
{
    const QByteArray output = program.output().toUtf8();
    // Every category was on, and the shop's address is nothing to hide.
    QVERIFY2(output.contains("qt."), output.left(2000).constData());
    QVERIFY(output.contains(m_url.toUtf8()));
    search(s("log"), output);
    const QMap<QString, QByteArray> files = secret_places::filesBelow(m_folder.path(QString()));
    QVERIFY(files.contains(m_folder.iniFile()));
    const QByteArray ini = files.value(m_folder.iniFile());
    // The search goes through what a value is stored as: the address is in there.
    QVERIFY2(!secret_places::search({m_url}, ini).isEmpty(), ini.constData());
    for (auto it = files.constBegin(); it != files.constEnd(); ++it) {
        search(it.key(), it.value());
        search(s("name of a file"), it.key().toUtf8());
    }
}

void tst_proof_secrets::lookAtRequests()
{
    const QByteArray right = "Basic " + (m_key + u':' + m_secret).toUtf8().toBase64();
    for (const ShopRequest& request : m_fixture.shop.requests() + m_oddShop.requests()) {
        QCOMPARE(request.authorization, right);
        search(s("target of a request"), request.rawTarget);
        for (const auto& [name, value] : request.headers) {
            if (name.compare("Authorization", Qt::CaseInsensitive) != 0)
                search(s("header of a request"), name + ": " + value);
        }
    }
    for (const ShopRequest& request : m_otherHost.requests())
        QVERIFY(request.authorization.isEmpty());
}

void tst_proof_secrets::accepted(LedoraProcess& program)
{
    QVERIFY(startProgram(program));
    lookAt(program);
    QVERIFY(runToQuestion(program));
    lookAt(program);
    QVERIFY(answer(program, s("Yes|Ja")));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
    QCOMPARE(m_folder.exported().count('\n'), 2 + 12 + 4);
}

void tst_proof_secrets::declinedAndCancelled(LedoraProcess& program)
{
    QVERIFY(startProgram(program));
    QVERIFY(runToQuestion(program));
    QVERIFY(answer(program, s("No|Nein")));
    lookAt(program);
    QVERIFY(desktop::click(program.pid(), cancelButton));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
}

void tst_proof_secrets::failingRun(LedoraProcess& program)
{
    QVERIFY(startProgram(program));
    QVERIFY(desktop::click(program.pid(), startButton));
    QCOMPARE(desktop::waitForWindow(program.pid(), {anyError, question}, 90), anyError);
    lookAt(program);
    QVERIFY(closeBox(program, anyError, s("fehlgeschlagen")));
    lookAt(program);
    QVERIFY(desktop::closeWindow(windowOf(program)));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
}

void tst_proof_secrets::wrongCredentials(LedoraProcess& program)
{
    m_fixture.shop.setFaultPlan([](const ShopRequest&) {
        Fault fault;
        fault.kind = Fault::Status;
        fault.status = 401;
        return fault;
    });
    failingRun(program);
}

void tst_proof_secrets::shopGone(LedoraProcess& program)
{
    m_fixture.shop.close();
    failingRun(program);
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(m_fixture.paths(), QStringList());
}

void tst_proof_secrets::shopCrashes(LedoraProcess& program)
{
    m_fixture.shop.setFaultPlan([](const ShopRequest& request) {
        Fault fault;
        if (request.path.endsWith(QLatin1String("/v3/orders")))
            fault.kind = request.number % 2 == 0 ? Fault::DropInsideHeaders : Fault::DropInsideBody;
        return fault;
    });
    failingRun(program);
}

void tst_proof_secrets::notJson(LedoraProcess& program)
{
    // A page that shows the request it was asked with, as some proxies do.
    askOddShop([](const ShopRequest& request) {
        demo_shop::ShopAnswer answer;
        answer.body = "<html>" + request.authorization + "</html>";
        answer.contentType = "text/html";
        return answer;
    });
    if (QTest::currentTestFailed())
        return;
    failingRun(program);
}

void tst_proof_secrets::redirectedToAnotherHost(LedoraProcess& program)
{
    const QUrl other(m_otherHost.baseUrl());
    const QByteArray target = "http://localhost:" + QByteArray::number(other.port()) + "/catch";
    askOddShop([target](const ShopRequest&) {
        demo_shop::ShopAnswer answer;
        answer.status = 302;
        answer.headers = {{"Location", target}};
        return answer;
    });
    if (QTest::currentTestFailed())
        return;
    failingRun(program);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(!m_oddShop.requests().isEmpty());
    QVERIFY(m_otherHost.requests().isEmpty());
}

void tst_proof_secrets::clickIntoSlowRequest(LedoraProcess& program)
{
    // Two pages, since a tick that falls into the last one brings the question at the end at once.
    run_setup::serve(m_fixture, run_setup::orders(130, 0));
    m_fixture.shop.setFaultPlan([](const ShopRequest& request) {
        Fault fault;
        if (request.path.endsWith(QLatin1String("/products/503"))) {
            fault.kind = Fault::Trickle;
            fault.pieces = 150;
            fault.pauseMs = 100;
        }
        return fault;
    });
    QVERIFY(startProgram(program));
    QVERIFY(desktop::click(program.pid(), startButton));
    QTRY_VERIFY_WITH_TIMEOUT(requestsFor("/products/503") == 1, 30000);
    lookAt(program);
}

void tst_proof_secrets::stopped(LedoraProcess& program)
{
    clickIntoSlowRequest(program);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(desktop::click(program.pid(), s("Anhalten")));
    QVERIFY(!desktop::waitForText(program.pid(), s("Angehalten\\.")).isEmpty());
    lookAt(program);
    QVERIFY(desktop::click(program.pid(), cancelButton));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
}

void tst_proof_secrets::closedInARequest(LedoraProcess& program)
{
    clickIntoSlowRequest(program);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(desktop::closeWindow(windowOf(program)));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
}

void tst_proof_secrets::killed(LedoraProcess& program)
{
    clickIntoSlowRequest(program);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(secret_places::kill(program.pid()));
    QVERIFY(program.waitForEnd());
    QVERIFY(!program.hasEndedWell());
}

void tst_proof_secrets::typeSecrets(LedoraProcess& program)
{
    QVERIFY(!desktop::tabTo(program.pid(), s("API-Key:")).isEmpty());
    QVERIFY(desktop::retype(m_key));
    QVERIFY(!desktop::tabTo(program.pid(), s("API-Secret:")).isEmpty());
    QVERIFY(desktop::retype(m_secret));
    lookAt(program);
}

void tst_proof_secrets::typedIn(LedoraProcess& program)
{
    // A keyboard has no letter that every layout knows, but these it has.
    m_secret = randomText("cs_", "%2B;|~");
    KeyChainClass store(s("halverin_software.ledora.RestApi"), nullptr);
    QString error;
    for (const QString& name : {keyNameAPI, keyNameSECRET})
        QVERIFY(store.deleteKeySync(makeRestKeychainKey(m_url, name), error));

    QVERIFY(program.start({m_folder.hostFile()}));
    lookAtBoxes(program, s("Fehler beim Entschlüsseln:"), s("Entry not found"));
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(desktop::waitForWindow(program.pid(), {mainWindow}), mainWindow);
    typeSecrets(program);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(runToQuestion(program));
    lookAt(program);
    QVERIFY(answer(program, s("Yes|Ja")));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
    QVERIFY(m_folder.exported().count('\n') > 2);
    QString stored;
    QVERIFY(store.readKeySync(makeRestKeychainKey(m_url, keyNameSECRET), stored, error));
    QCOMPARE(stored, m_secret);
}

void tst_proof_secrets::noSecretService(LedoraProcess& program)
{
    m_secret = randomText("cs_", "%2B;|~");
    secret_places::BusWithoutSecrets bus;
    QVERIFY(bus.start());
    program.setVariable(s("DBUS_SESSION_BUS_ADDRESS"),
                        qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"));
    QVERIFY(program.start({m_folder.hostFile()}));
    const QString noService = s("org.freedesktop.secrets");
    lookAtBoxes(program, s("Fehler beim Entschlüsseln:"), noService);
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(desktop::waitForWindow(program.pid(), {mainWindow}), mainWindow);
    typeSecrets(program);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(desktop::click(program.pid(), startButton));
    lookAtBoxes(program, s("Fehler beim Verschlüsseln:"), noService);
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(desktop::waitForWindow(program.pid(), {question, anyError}, 60), question);
    lookAt(program);
    QVERIFY(answer(program, s("Yes|Ja")));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
    QVERIFY(m_folder.exported().count('\n') > 2);
}

void tst_proof_secrets::cleanupTestCase()
{
    proof::report("secrets: runs tried=" + std::to_string(m_runs) + " ok=" + std::to_string(m_clean)
                  + " places=" + std::to_string(m_places) + " bytes=" + std::to_string(m_bytes));
}

int main(int argc, char** argv)
{
    desktop::enterSession(argv);
    return runAppTest<tst_proof_secrets>(argc, argv);
}

#include "tst_proof_secrets.moc"
