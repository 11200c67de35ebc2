#include "app/globals.h"
#include "credentials/keychain_class.h"
#include "credentials/keychain_key.h"
#include "tests/e2e/program_test.h"
#include "tests/support/app_test.h"

#include <QDate>

namespace {

const QString typedKey = QStringLiteral("ck_52 &;%~|\"'");
const QString typedSecret = QStringLiteral("cs_<b>91</b>\\n=");

QByteArray typedAuthorization()
{
    return "Basic " + (typedKey + QLatin1Char(':') + typedSecret).toUtf8().toBase64();
}

/// What a process started later reads from the store.
QString storedSecret(const QString& url, const QString& keyName)
{
    KeyChainClass store(QStringLiteral("halverin_software.ledora.RestApi"), nullptr);
    QString value;
    QString error;
    store.readKeySync(makeRestKeychainKey(url, keyName), value, error);
    return value;
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// The form as a user fills it who starts the program for the first time and has no mouse.
class tst_program_form : public ProgramTest
{
    Q_OBJECT

public:
    using ProgramTest::ProgramTest;

private slots:
    void init();

    void showsItsDefaultsAtTheFirstStart();
    void runsByKeyboardAlone();
    void keepsEverythingTypedButTheSecrets();
    void restoresEverythingTyped();
    void showsTheHostsFolderReadOnly();

private:
    /// Fills the form and lets it run to the question, which stays open.
    void fillAndRun(const LedoraProcess& program);
    /// The same to the end of the process.
    void fillAndHandOver(LedoraProcess& program);
};

void tst_program_form::init()
{
    prepare();
    QFile::remove(m_folder.iniFile());
    run_setup::serve(m_fixture, run_setup::orders(3, 0));
}

void tst_program_form::fillAndRun(const LedoraProcess& program)
{
    const auto goTo = [&](const QString& name) {
        return !desktop::tabTo(program.pid(), name).isEmpty();
    };
    QVERIFY(goTo(QStringLiteral("Webseite:")));
    QVERIFY(desktop::type(m_fixture.shop.baseUrl()));
    QVERIFY(goTo(QStringLiteral("API-Key:")));
    QVERIFY(desktop::type(typedKey));
    QVERIFY(goTo(QStringLiteral("API-Secret:")));
    QVERIFY(desktop::type(typedSecret));
    QVERIFY(goTo(QStringLiteral("ID-Cache aktivieren:")));
    QVERIFY(desktop::key(QStringLiteral("space")));
    QVERIFY(goTo(QStringLiteral("Erlös:")));
    QVERIFY(desktop::retype(QStringLiteral("Verkauf <ORDER_NUMBER>")));
    QVERIFY(goTo(QStringLiteral("Kunden anlegen")));
    QVERIFY(desktop::key(QStringLiteral("space")));
    QVERIFY(goTo(QStringLiteral("Belegdatum:")));
    QVERIFY(desktop::key(QStringLiteral("End")));
    QVERIFY(goTo(QStringLiteral("B2C:")));
    QVERIFY(desktop::key(QStringLiteral("Down"), 2));
    QVERIFY(goTo(QStringLiteral("Kostenstelle 2:")));
    QVERIFY(desktop::key(QStringLiteral("Down")));
    QVERIFY(goTo(QStringLiteral("Konto:")));
    QVERIFY(desktop::retype(QStringLiteral("8401")));
    QVERIFY(goTo(startButton));
    QVERIFY(desktop::key(QStringLiteral("space")));
    QCOMPARE(desktop::waitForWindow(program.pid(), {question, anyError}, 60), question);
}

void tst_program_form::fillAndHandOver(LedoraProcess& program)
{
    fillAndRun(program);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(!desktop::tabTo(program.pid(), QStringLiteral("Yes|Ja|&Yes|&Ja")).isEmpty());
    QVERIFY(desktop::key(QStringLiteral("space")));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
}

void tst_program_form::showsItsDefaultsAtTheFirstStart()
{
    LedoraProcess program;
    QVERIFY(startProgram(program));
    const QList<desktop::Field> fields = desktop::fields(program.pid());
    const QList<QPair<QString, QString>> expected {
        {QStringLiteral("Webseite:"), QString()},
        {QStringLiteral("API-Key:"), QString()},
        {QStringLiteral("API-Secret:"), QString()},
        {QStringLiteral("Datumsfilter von:"), QStringLiteral("off")},
        {QStringLiteral("ID-Cache aktivieren:"), QStringLiteral("on")},
        {QStringLiteral("Verwenden"), QStringLiteral("off")},
        {QStringLiteral("PDF-Ordner:"), QString()},
        {QStringLiteral("PDF überschreiben"), QStringLiteral("off")},
        {QStringLiteral("Erlös:"), QStringLiteral("Erlös-<ORDER_NUMBER>-<COMPANY><,><NAME>")},
        {QStringLiteral("paypal importieren"), QStringLiteral("on")},
        {QStringLiteral("WooCommerce importieren"), QStringLiteral("on")},
        {QStringLiteral("Kunden anlegen"), QStringLiteral("off")},
        {QStringLiteral("Belegdatum:"), QStringLiteral("Automatisch")},
        {QStringLiteral("B2C:"), QString()},
        {QStringLiteral("Kostenstelle 1:"), QStringLiteral("Nicht zuordnen")},
        {QStringLiteral("Kontenrahmen:"), QStringLiteral("SKR03")},
        {QStringLiteral("Konto:"), QStringLiteral("8400")},
    };
    for (const auto& [name, content] : expected)
        QCOMPARE(name + desktop::content(fields, name), name + content);
}

void tst_program_form::runsByKeyboardAlone()
{
    LedoraProcess program;
    QVERIFY(startProgram(program));
    fillAndHandOver(program);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(allCarried(typedAuthorization()));
    const QByteArray exported = m_folder.exported();
    QCOMPARE(exported.count('\n'), 2 + 3);
    QVERIFY(exported.startsWith("export_version|1|"));
    QVERIFY(exported.contains("|b2c_handling|2|"));
    QVERIFY(exported.contains("|belegdatum|4|"));
    QVERIFY(exported.contains("|buchungs_text_erloes|Verkauf <ORDER_NUMBER>|"));
    QVERIFY(!exported.contains(typedKey.toUtf8()));
    QVERIFY(!exported.contains(typedSecret.toUtf8()));
}

void tst_program_form::keepsEverythingTypedButTheSecrets()
{
    const QString url = m_fixture.shop.baseUrl();
    {
        LedoraProcess program;
        QVERIFY(startProgram(program));
        fillAndHandOver(program);
        if (QTest::currentTestFailed())
            return;
        QVERIFY(!program.output().contains(typedKey));
        QVERIFY(!program.output().contains(typedSecret));
    }
    const auto saved = run_setup::optionsInTheFile(m_folder);
    const auto value = [&](const char* key) { return saved.value(QLatin1String(key)); };
    QCOMPARE(value("mainurl").toString(), url);
    QCOMPARE(value("id_cache_use").toBool(), false);
    QCOMPARE(value("buchungs_text_erloes").toString(), QStringLiteral("Verkauf <ORDER_NUMBER>"));
    QCOMPARE(value("customers_create").toBool(), true);
    QCOMPARE(value("belegdatum").toList(), QVariantList {4});
    QCOMPARE(value("b2c_handling").toList(), QVariantList {2});
    QCOMPARE(value("kostenstelle1").toList(), QVariantList {QString()});
    QCOMPARE(value("kostenstelle2").toList(), QVariantList {QStringLiteral("PRODUCT_NAME")});
    QCOMPARE(value("skr").toList(), QVariantList {3});
    QCOMPARE(value("date_filter_after").toDate(), QDate(1970, 1, 1));
    QCOMPARE(value("buchungs_konten").toList().size(), 36);
    // Secrets lie in the store and nowhere else, whole or in part.
    QCOMPARE(value("api_key_chain").toString(), QString());
    QCOMPARE(value("api_secret_chain").toString(), QString());
    const QByteArray file = bytesOf(m_folder.iniFile());
    QVERIFY(file.contains("[options]"));
    QVERIFY(!file.contains("ck_52"));
    QVERIFY(!file.contains("cs_"));
    QCOMPARE(storedSecret(url, keyNameAPI), typedKey);
    QCOMPARE(storedSecret(url, keyNameSECRET), typedSecret);
}

void tst_program_form::restoresEverythingTyped()
{
    {
        LedoraProcess first;
        QVERIFY(startProgram(first));
        fillAndHandOver(first);
        if (QTest::currentTestFailed())
            return;
    }
    m_fixture.shop.clearRequests();
    LedoraProcess second;
    QVERIFY(startProgram(second));
    const QList<desktop::Field> fields = desktop::fields(second.pid());
    const auto content = [&](const char* name) {
        return desktop::content(fields, QString::fromUtf8(name));
    };
    QCOMPARE(content("Webseite:"), m_fixture.shop.baseUrl());
    QCOMPARE(content("API-Key:"), QString(typedKey.size(), QLatin1Char('*')));
    QCOMPARE(content("API-Secret:"), QString(typedSecret.size(), QLatin1Char('*')));
    QCOMPARE(content("ID-Cache aktivieren:"), QStringLiteral("off"));
    QCOMPARE(content("Erlös:"), QStringLiteral("Verkauf <ORDER_NUMBER>"));
    QCOMPARE(content("Gebühr:"), QStringLiteral("Gebühr-<ORDER_NUMBER>-<COMPANY><,><NAME>"));
    QCOMPARE(content("Kunden anlegen"), QStringLiteral("on"));
    QCOMPARE(content("Belegdatum:"), QStringLiteral("Bezahlt"));
    QCOMPARE(content("B2C:"), QStringLiteral("Lieferschwelle nicht überschritten"));
    QCOMPARE(content("Kostenstelle 1:"), QStringLiteral("Nicht zuordnen"));
    QCOMPARE(content("Kostenstelle 2:"), QStringLiteral("Produktname"));
    QCOMPARE(content("Kontenrahmen:"), QStringLiteral("SKR03"));
    QCOMPARE(content("Konto:"), QStringLiteral("8401"));

    QVERIFY(runToQuestion(second));
    QVERIFY(answer(second, QStringLiteral("Yes|Ja")));
    QVERIFY(second.waitForEnd());
    QVERIFY(allCarried(typedAuthorization()));
    QCOMPARE(m_folder.exported().count('\n'), 2 + 3);
}

void tst_program_form::showsTheHostsFolderReadOnly()
{
    QVERIFY(QDir().mkpath(m_folder.pdfFolder()));
    auto options = run_setup::completeOptions(m_fixture.shop.baseUrl());
    options.insert(QStringLiteral("germanized_pdf_folder"), QStringLiteral("/somewhere/else"));
    layDownSettings(options);
    LedoraProcess program;
    QVERIFY(startProgram(program));
    const QString name = QStringLiteral("PDF-Ordner:");
    QCOMPARE(desktop::content(desktop::fields(program.pid()), name), m_folder.pdfFolder());
    QVERIFY(!desktop::tabTo(program.pid(), name).isEmpty());
    QVERIFY(desktop::retype(QStringLiteral("changed")));
    QCOMPARE(desktop::content(desktop::fields(program.pid()), name), m_folder.pdfFolder());
}

int main(int argc, char** argv)
{
    desktop::enterSession(argv);
    return runAppTest<tst_program_form>(argc, argv);
}

#include "tst_program_form.moc"
