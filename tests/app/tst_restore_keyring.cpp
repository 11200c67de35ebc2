#include "app/globals.h"
#include "app/mainwindow.h"
#include "credentials/keychain_class.h"
#include "credentials/keychain_key.h"
#include "form/mod_form_qt.h"
#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

using mod_form_qt::INFO;
using Options = QMap<QString, QVariant>;

namespace {

const QString address = QStringLiteral("https://shop.example/wp");
const QString decryptTitle = QStringLiteral("Fehler beim Entschlüsseln:");

} // namespace

/// A start on a machine with a secret service.
class tst_restore_keyring : public QObject
{
    Q_OBJECT

public:
    explicit tst_restore_keyring(const StartFolder& folder)
        : m_fixture(folder)
    {
    }

private slots:
    void init();

    void bringsBothSecretsBack();
    void prefersTheStoreToASavedText();
    void findsTheSecretsOfTheSameShop_data();
    void findsTheSecretsOfTheSameShop();
    void findsNoSecretsOfAnotherShop();
    void showsOneBoxForOneMissingSecret_data();
    void showsOneBoxForOneMissingSecret();
    void keepsTheKeyFieldsAsSavedIfBothAreMissing();
    void readsNothingWithoutAnAddress();

private:
    void store(const QString& keyName, const QString& value);
    MainWindow& startWith(const Options& options);

    RunFixture m_fixture;
    KeyChainClass m_store {QStringLiteral("halverin_software.ledora.RestApi"), nullptr};
};

void tst_restore_keyring::init()
{
    m_fixture.answers.clear();
    QString error;
    for (const QString& keyName : {keyNameAPI, keyNameSECRET})
        m_store.deleteKeySync(makeRestKeychainKey(address, keyName), error);
}

void tst_restore_keyring::store(const QString& keyName, const QString& value)
{
    QString error;
    QVERIFY2(m_store.writeKeySync(makeRestKeychainKey(address, keyName), value, error),
             qPrintable(error));
}

MainWindow& tst_restore_keyring::startWith(const Options& options)
{
    return m_fixture.start(options);
}

void tst_restore_keyring::bringsBothSecretsBack()
{
    store(keyNameAPI, QStringLiteral("ck_secret"));
    store(keyNameSECRET, QStringLiteral("cs_secret ä€"));
    const MainWindow& window = startWith({{QStringLiteral("mainurl"), address}});
    QCOMPARE(m_fixture.answers.titles(), QStringList());
    QCOMPARE(window.apiKey.toString(), QStringLiteral("ck_secret"));
    QCOMPARE(window.apiSecret.toString(), QStringLiteral("cs_secret ä€"));
    QCOMPARE(INFO::getBaseValue(&window.optionsMap, keyNameAPI).toString(),
             QStringLiteral("ck_secret"));
    QCOMPARE(INFO::getBaseValue(&window.optionsMap, keyNameSECRET).toString(),
             QStringLiteral("cs_secret ä€"));
}

void tst_restore_keyring::prefersTheStoreToASavedText()
{
    store(keyNameAPI, QStringLiteral("ck_secret"));
    store(keyNameSECRET, QStringLiteral("cs_secret"));
    const MainWindow& window = startWith(
        {{QStringLiteral("mainurl"), address}, {keyNameAPI, QStringLiteral("left behind")}});
    QCOMPARE(window.apiKey.toString(), QStringLiteral("ck_secret"));
}

void tst_restore_keyring::findsTheSecretsOfTheSameShop_data()
{
    QTest::addColumn<QString>("mainurl");
    QTest::newRow("as stored") << address;
    QTest::newRow("blanks around") << QStringLiteral(" ") + address + QStringLiteral("\t ");
    QTest::newRow("another case") << QStringLiteral("HTTPS://Shop.EXAMPLE/wp");
    QTest::newRow("a slash at the end") << address + QLatin1Char('/');
    QTest::newRow("a query") << address + QStringLiteral("?lang=de#top");
}

void tst_restore_keyring::findsTheSecretsOfTheSameShop()
{
    QFETCH(QString, mainurl);
    store(keyNameAPI, QStringLiteral("ck_secret"));
    store(keyNameSECRET, QStringLiteral("cs_secret"));
    const MainWindow& window = startWith({{QStringLiteral("mainurl"), mainurl}});
    QCOMPARE(m_fixture.answers.titles(), QStringList());
    QCOMPARE(window.apiKey.toString(), QStringLiteral("ck_secret"));
    QCOMPARE(window.mainurl.toString(), mainurl);
}

void tst_restore_keyring::findsNoSecretsOfAnotherShop()
{
    store(keyNameAPI, QStringLiteral("ck_secret"));
    store(keyNameSECRET, QStringLiteral("cs_secret"));
    const MainWindow& window =
        startWith({{QStringLiteral("mainurl"), QStringLiteral("https://shop.example/WP")}});
    QCOMPARE(m_fixture.answers.titles(), QStringList({decryptTitle, decryptTitle}));
    QCOMPARE(window.apiKey.toString(), QString());
    QCOMPARE(window.apiSecret.toString(), QString());
}

void tst_restore_keyring::showsOneBoxForOneMissingSecret_data()
{
    QTest::addColumn<QString>("there");
    QTest::addColumn<QString>("missing");
    QTest::newRow("the secret is missing") << keyNameAPI << keyNameSECRET;
    QTest::newRow("the key is missing") << keyNameSECRET << keyNameAPI;
}

void tst_restore_keyring::showsOneBoxForOneMissingSecret()
{
    QFETCH(QString, there);
    QFETCH(QString, missing);
    store(there, QStringLiteral("stored"));
    const MainWindow& window =
        startWith({{QStringLiteral("mainurl"), address}, {missing, QStringLiteral("as saved")}});
    QCOMPARE(m_fixture.answers.titles(), QStringList(decryptTitle));
    QCOMPARE(m_fixture.answers.seen().first().text, QStringLiteral("Entry not found"));
    QCOMPARE(INFO::getBaseValue(&window.optionsMap, there).toString(), QStringLiteral("stored"));
    QCOMPARE(INFO::getBaseValue(&window.optionsMap, missing).toString(),
             QStringLiteral("as saved"));
}

void tst_restore_keyring::keepsTheKeyFieldsAsSavedIfBothAreMissing()
{
    const MainWindow& window = startWith({{QStringLiteral("mainurl"), address},
                                          {keyNameAPI, QStringLiteral("key as saved")},
                                          {keyNameSECRET, QStringLiteral("secret as saved")}});
    QCOMPARE(m_fixture.answers.titles(), QStringList({decryptTitle, decryptTitle}));
    QCOMPARE(window.apiKey.toString(), QStringLiteral("key as saved"));
    QCOMPARE(window.apiSecret.toString(), QStringLiteral("secret as saved"));
}

void tst_restore_keyring::readsNothingWithoutAnAddress()
{
    // What an empty address would lead to, were it looked up.
    QString error;
    const QString key = makeRestKeychainKey(QString(), keyNameAPI);
    QVERIFY(m_store.writeKeySync(key, QStringLiteral("nobody's"), error));
    const MainWindow& window = startWith({{QStringLiteral("mainurl"), QStringLiteral("  ")}});
    QVERIFY(m_store.deleteKeySync(key, error));
    QCOMPARE(m_fixture.answers.titles(), QStringList());
    QCOMPARE(window.apiKey.toString(), QString());
}

LEDORA_APP_TEST_MAIN(tst_restore_keyring)
#include "tst_restore_keyring.moc"
