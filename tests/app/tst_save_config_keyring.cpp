#include "app/globals.h"
#include "app/mainwindow.h"
#include "credentials/keychain_class.h"
#include "credentials/keychain_key.h"
#include "form/mod_form_qt.h"
#include "tests/app/run_fixture.h"
#include "tests/app/secret_search.h"
#include "tests/support/app_test.h"

#include <QLoggingCategory>
#include <QProcess>
#include <QTimer>

using mod_form_qt::INFO;
using Options = QMap<QString, QVariant>;

namespace {

const QString address = QStringLiteral("https://shop.example/wp");
const QString apiKeyText = QStringLiteral("ck_8d2f01c4aZ Schlüssel €");
const QString apiSecretText = QStringLiteral("cs_77e1b09fqY+/=;|[]~\"\\");
const QString service = QStringLiteral("halverin_software.ledora.RestApi");

QByteArray logged;

void takeLog(QtMsgType, const QMessageLogContext&, const QString& line)
{
    logged += line.toUtf8() + '\n';
}

/// Collects every line of the process, debug lines included, while it lives.
class LogCatcher
{
public:
    LogCatcher()
        : m_before(qInstallMessageHandler(takeLog))
    {
        logged.clear();
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=true"));
    }

    ~LogCatcher()
    {
        qInstallMessageHandler(m_before);
        QLoggingCategory::setFilterRules(QString());
    }
    Q_DISABLE_COPY_MOVE(LogCatcher)

private:
    QtMessageHandler m_before;
};

} // namespace

/// Saving the settings on a machine with a secret service.
class tst_save_config_keyring : public QObject
{
    Q_OBJECT

public:
    explicit tst_save_config_keyring(const StartFolder& folder)
        : m_folder(folder)
        , m_fixture(folder)
    {
    }

private slots:
    void init();

    void storesBothSecretsUnderTheDerivedKeys();
    void storesThemForOtherProgramsToSee();
    void leavesEmptyTextsInTheOptions();
    void leavesNoSecretInTheFile();
    void keepsTheSecretsForTheRun();
    void dropsTheSecretsWithoutAnAddress_data();
    void dropsTheSecretsWithoutAnAddress();
    void passesOverAnEmptySecret();
    void storesOneSecretWithoutTheOther();
    void trimsTheAddress();
    void keepsTheSecretsOfAnEarlierAddress();
    void replacesAnEarlierSecret();
    void bringsTheSecretsBackAtTheNextStart();
    void putsNoSecretIntoTheOptionString();
    void logsNoSecret();
    void savesWhatIsTypedMeanwhile();
    void endsTheProgramIfTheWindowIsClosedMeanwhile_data();
    void endsTheProgramIfTheWindowIsClosedMeanwhile();

private:
    /// A window for \a mainurl with both secrets typed in.
    MainWindow& startAndType(const QString& mainurl);
    Options optionsInTheFile() const;
    QByteArray savedBytes() const;
    /// What the store holds; a null text if there is no such entry.
    QString stored(const QString& mainurl, const QString& keyName);

    const StartFolder& m_folder;
    RunFixture m_fixture;
    KeyChainClass m_store {service, nullptr};
};

void tst_save_config_keyring::init()
{
    m_fixture.answers.clear();
    QString error;
    for (const QString& keyName : {keyNameAPI, keyNameSECRET})
        m_store.deleteKeySync(makeRestKeychainKey(address, keyName), error);
}

MainWindow& tst_save_config_keyring::startAndType(const QString& mainurl)
{
    MainWindow& window = m_fixture.start({{QStringLiteral("mainurl"), QString()}});
    const Options typed {{QStringLiteral("mainurl"), mainurl},
                         {keyNameAPI, apiKeyText},
                         {keyNameSECRET, apiSecretText}};
    mod_form_qt::INFO::setData(&window.optionsMap, typed, false);
    return window;
}

QByteArray tst_save_config_keyring::savedBytes() const
{
    QFile file(m_folder.iniFile());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

Options tst_save_config_keyring::optionsInTheFile() const
{
    // A copy, since under its own name the file would be answered from memory.
    static int copies = 0;
    const QString copy = m_folder.path(QStringLiteral("copy%1.ini").arg(++copies));
    QFile::copy(m_folder.iniFile(), copy);
    Options options;
    INFO::loadMapFromIniFile(&options, copy, QStringLiteral("options"), false, QString());
    return options;
}

QString tst_save_config_keyring::stored(const QString& mainurl, const QString& keyName)
{
    QString value;
    QString error;
    m_store.readKeySync(makeRestKeychainKey(mainurl, keyName), value, error);
    return value;
}

void tst_save_config_keyring::storesBothSecretsUnderTheDerivedKeys()
{
    startAndType(address).SaveConfig(false);
    QCOMPARE(m_fixture.answers.titles(), QStringList());
    QCOMPARE(stored(address, keyNameAPI), apiKeyText);
    QCOMPARE(stored(address, keyNameSECRET), apiSecretText);
}

void tst_save_config_keyring::storesThemForOtherProgramsToSee()
{
    startAndType(address).SaveConfig(false);
    QProcess tool;
    tool.start(QStringLiteral("secret-tool"),
               {QStringLiteral("lookup"), QStringLiteral("server"), service, QStringLiteral("user"),
                makeRestKeychainKey(address, keyNameAPI)});
    QVERIFY(tool.waitForFinished(30000));
    QCOMPARE(QString::fromUtf8(tool.readAllStandardOutput()).trimmed(), apiKeyText);
}

void tst_save_config_keyring::leavesEmptyTextsInTheOptions()
{
    startAndType(address).SaveConfig(false);
    const Options saved = optionsInTheFile();
    QCOMPARE(saved.value(keyNameAPI), QVariant(QString()));
    QCOMPARE(saved.value(keyNameSECRET), QVariant(QString()));
    QCOMPARE(saved.value(QStringLiteral("mainurl")), QVariant(address));
    const QVariantList konten = saved.value(QStringLiteral("buchungs_konten")).toList();
    QCOMPARE(konten.size(), 36);
    QCOMPARE(konten.first().toStringList(),
             QStringList({QStringLiteral("1"), QStringLiteral("8400"), QStringLiteral("4400"),
                          QStringLiteral("8030")}));
}

void tst_save_config_keyring::leavesNoSecretInTheFile()
{
    startAndType(address).SaveConfig(false);
    const QByteArray file = savedBytes();
    // The search finds what is there.
    QVERIFY(
        waysToRead(address, unescapedIni(file)).contains(QStringLiteral("UTF-16, big end first")));
    for (const QString& secret : {apiKeyText, apiSecretText}) {
        QCOMPARE(waysToRead(secret, file), QStringList());
        QCOMPARE(waysToRead(secret, unescapedIni(file)), QStringList());
        QCOMPARE(waysToRead(secret.left(11), file), QStringList());
        QCOMPARE(waysToRead(secret.left(11), unescapedIni(file)), QStringList());
    }
}

void tst_save_config_keyring::keepsTheSecretsForTheRun()
{
    const MainWindow& window = startAndType(address);
    m_fixture.window->SaveConfig(false);
    QCOMPARE(window.apiKey.toString(), apiKeyText);
    QCOMPARE(window.apiSecret.toString(), apiSecretText);
}

void tst_save_config_keyring::dropsTheSecretsWithoutAnAddress_data()
{
    QTest::addColumn<QString>("mainurl");
    QTest::newRow("empty") << QString();
    QTest::newRow("blanks") << QStringLiteral("  \t");
}

void tst_save_config_keyring::dropsTheSecretsWithoutAnAddress()
{
    QFETCH(QString, mainurl);
    startAndType(mainurl).SaveConfig(false);
    QCOMPARE(m_fixture.answers.titles(), QStringList());
    QVERIFY(stored(mainurl, keyNameAPI).isNull());
    QVERIFY(stored(mainurl, keyNameSECRET).isNull());
    const QByteArray file = unescapedIni(savedBytes());
    QVERIFY(!file.isEmpty());
    QCOMPARE(waysToRead(apiKeyText, file), QStringList());
    QCOMPARE(waysToRead(apiSecretText, file), QStringList());
    QCOMPARE(optionsInTheFile().value(keyNameAPI), QVariant(QString()));
}

void tst_save_config_keyring::passesOverAnEmptySecret()
{
    startAndType(address).SaveConfig(false);
    MainWindow& window = *m_fixture.window;
    window.apiKey = QString();
    window.apiSecret = QString();
    window.SaveConfig(false);
    QCOMPARE(stored(address, keyNameAPI), apiKeyText);
    QCOMPARE(stored(address, keyNameSECRET), apiSecretText);
    QCOMPARE(m_fixture.answers.titles(), QStringList());
}

void tst_save_config_keyring::storesOneSecretWithoutTheOther()
{
    MainWindow& window = startAndType(address);
    window.apiKey = QString();
    window.SaveConfig(false);
    QVERIFY(stored(address, keyNameAPI).isNull());
    QCOMPARE(stored(address, keyNameSECRET), apiSecretText);
}

void tst_save_config_keyring::trimsTheAddress()
{
    startAndType(QLatin1String("  ") + address + QLatin1String(" \t")).SaveConfig(false);
    QCOMPARE(stored(address, keyNameAPI), apiKeyText);
}

void tst_save_config_keyring::keepsTheSecretsOfAnEarlierAddress()
{
    MainWindow& window = startAndType(address);
    window.SaveConfig(false);
    const QString other = address + QStringLiteral("/zweiter");
    window.mainurl = other;
    window.apiKey = QStringLiteral("ck_other");
    window.SaveConfig(false);
    QCOMPARE(stored(address, keyNameAPI), apiKeyText);
    QCOMPARE(stored(other, keyNameAPI), QStringLiteral("ck_other"));
}

void tst_save_config_keyring::replacesAnEarlierSecret()
{
    MainWindow& window = startAndType(address);
    window.SaveConfig(false);
    window.apiKey = QStringLiteral("ck_new");
    window.SaveConfig(false);
    QCOMPARE(stored(address, keyNameAPI), QStringLiteral("ck_new"));
}

void tst_save_config_keyring::bringsTheSecretsBackAtTheNextStart()
{
    startAndType(address).SaveConfig(false);
    const MainWindow& window = m_fixture.restart();
    QCOMPARE(m_fixture.answers.titles(), QStringList());
    QCOMPARE(window.mainurl.toString(), address);
    QCOMPARE(window.apiKey.toString(), apiKeyText);
    QCOMPARE(window.apiSecret.toString(), apiSecretText);
}

void tst_save_config_keyring::putsNoSecretIntoTheOptionString()
{
    MainWindow& window = startAndType(address);
    window.SaveConfig(false);
    // As after a start, when the options hold what came from the store.
    window.optionsMap.insert(keyNameAPI, apiKeyText);
    window.optionsMap.insert(keyNameSECRET, apiSecretText);
    const QByteArray text = window.BuildOptionsString().toUtf8();
    QVERIFY(text.contains("|mainurl|" + address.toUtf8() + '|'));
    QVERIFY(!text.contains("api_key_chain") && !text.contains("api_secret_chain"));
    QCOMPARE(waysToRead(apiKeyText, text), QStringList());
    QCOMPARE(waysToRead(apiSecretText, text), QStringList());
}

void tst_save_config_keyring::logsNoSecret()
{
    startAndType(address).SaveConfig(false);
    const LogCatcher log;
    MainWindow& window = m_fixture.restart();
    window.BuildOptionsString();
    window.optionsMap.insert(keyNameAPI, apiKeyText);
    window.optionsMap.insert(keyNameSECRET, apiSecretText);
    window.BuildOptionsString();
    window.SaveConfig(true);
    QVERIFY(logged.contains(address.toUtf8()));
    for (const QString& secret : {apiKeyText, apiSecretText}) {
        QCOMPARE(waysToRead(secret, logged), QStringList());
        QCOMPARE(waysToRead(secret.left(11), logged), QStringList());
    }
}

void tst_save_config_keyring::savesWhatIsTypedMeanwhile()
{
    MainWindow& window = startAndType(address);
    // While the store takes its time over the first secret, the user goes on with both.
    QTimer::singleShot(0, &window, [&window] {
        window.apiSecret = QStringLiteral("cs_typed_late");
        window.optionsMap.insert(keyNameAPI, QStringLiteral("ck_typed_late"));
        window.optionsMap.insert(keyNameSECRET, QStringLiteral("cs_typed_late"));
    });
    window.SaveConfig(false);
    QCOMPARE(stored(address, keyNameAPI), apiKeyText);
    QCOMPARE(stored(address, keyNameSECRET), QStringLiteral("cs_typed_late"));
    const QByteArray file = unescapedIni(savedBytes());
    QCOMPARE(waysToRead(QStringLiteral("ck_typed_late"), file), QStringList());
    QCOMPARE(waysToRead(QStringLiteral("cs_typed_late"), file), QStringList());
}

void tst_save_config_keyring::endsTheProgramIfTheWindowIsClosedMeanwhile_data()
{
    QTest::addColumn<bool>("accepted");
    QTest::newRow("given up") << false;
    QTest::newRow("handed over") << true;
}

void tst_save_config_keyring::endsTheProgramIfTheWindowIsClosedMeanwhile()
{
    QFETCH(bool, accepted);
    MainWindow& window = startAndType(address);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QGuiApplication::setQuitOnLastWindowClosed(true);

    bool inTime = true;
    QTimer::singleShot(30000, &window, [&inTime] {
        inTime = false;
        QCoreApplication::exit();
    });
    // As by the start button, with the click on another button or the system button arriving while
    // the store takes its time.
    QTimer::singleShot(0, &window, [this, &window, accepted] {
        QTimer::singleShot(0, &window, [this, &window, accepted] {
            if (accepted)
                emit m_fixture.okButton()->clicked(false);
            else
                window.close();
        });
        window.SaveConfig(false);
        window.StartTimer();
    });
    QCoreApplication::exec();
    QGuiApplication::setQuitOnLastWindowClosed(false);

    QVERIFY(inTime);
    QVERIFY(!window.isVisible());
    QVERIFY(!window.waitTimer->isActive());
    QVERIFY(!QFile::exists(m_folder.exportFile()));
    QCOMPARE(stored(address, keyNameSECRET), apiSecretText);
}

LEDORA_APP_TEST_MAIN(tst_save_config_keyring)
#include "tst_save_config_keyring.moc"
