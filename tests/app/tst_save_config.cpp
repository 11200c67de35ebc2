#include "app/globals.h"
#include "app/mainwindow.h"
#include "form/mod_form_qt.h"
#include "tests/app/run_fixture.h"
#include "tests/app/secret_search.h"
#include "tests/support/app_test.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTimer>

using mod_form_qt::INFO;
using Options = QMap<QString, QVariant>;

namespace {

const QString address = QStringLiteral("https://shop.example/wp");
const QString encryptTitle = QStringLiteral("Fehler beim Verschlüsseln:");

} // namespace

/// Saving the settings on a machine without a secret service: nothing answers on the session bus.
class tst_save_config : public QObject
{
    Q_OBJECT

public:
    explicit tst_save_config(const StartFolder& folder)
        : m_folder(folder)
        , m_fixture(folder)
    {
    }

private slots:
    void init();

    void showsABoxForEachSecretItCannotStore();
    void savesTheRestIfTheSecretsCannotBeStored();
    void showsNothingWithoutSecrets();
    void keepsWhatTheOptionsHeldForAnEmptySecret();
    void savesOverWhatWasSavedBefore();
    void savesNothingOfTheEngine();
    void staysSilentIfTheFileCannotBeWritten();
    void makesTheFocusedFieldReport();
    void asksARunningPassToStop();
    void stopsNothingUnlessAsked();
    void stopsNothingBetweenPasses();
    void writesTheAccountsIntoTheOptionStringOnceSaved();
    void givesTheSameOptionStringTwice();

private:
    Options optionsInTheFile() const;

    const StartFolder& m_folder;
    RunFixture m_fixture;
};

void tst_save_config::init()
{
    m_fixture.answers.clear();
    m_fixture.start({{QStringLiteral("mainurl"), QString()}});
}

Options tst_save_config::optionsInTheFile() const
{
    // A copy, since under its own name the file would be answered from memory.
    static int copies = 0;
    const QString copy = m_folder.path(QStringLiteral("copy%1.ini").arg(++copies));
    QFile::copy(m_folder.iniFile(), copy);
    Options options;
    INFO::loadMapFromIniFile(&options, copy, QStringLiteral("options"), false, QString());
    return options;
}

void tst_save_config::showsABoxForEachSecretItCannotStore()
{
    MainWindow& window = *m_fixture.window;
    window.mainurl = address;
    window.apiKey = QStringLiteral("ck_secret");
    window.apiSecret = QStringLiteral("cs_secret");
    window.SaveConfig(false);
    QCOMPARE(m_fixture.answers.titles(), QStringList({encryptTitle, encryptTitle}));
    for (const auto& box : m_fixture.answers.seen()) {
        QVERIFY(!box.text.isEmpty());
        QVERIFY(!box.text.contains(QLatin1String("_secret")));
        QCOMPARE(box.icon, QMessageBox::Information);
        QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    }
}

void tst_save_config::savesTheRestIfTheSecretsCannotBeStored()
{
    MainWindow& window = *m_fixture.window;
    window.mainurl = address;
    window.apiKey = QStringLiteral("ck_secret");
    window.apiSecret = QStringLiteral("cs_secret");
    window.paypal_use = false;
    window.optionsMap.insert(QStringLiteral("paypal_use"), false);
    window.SaveConfig(false);
    const Options saved = optionsInTheFile();
    QCOMPARE(saved.value(QStringLiteral("paypal_use")), QVariant(false));
    QCOMPARE(saved.value(keyNameAPI), QVariant(QString()));
    QCOMPARE(saved.value(keyNameSECRET), QVariant(QString()));
    QCOMPARE(saved.value(QStringLiteral("buchungs_konten")).toList().size(), 36);
    QFile file(m_folder.iniFile());
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = unescapedIni(file.readAll());
    QCOMPARE(waysToRead(QStringLiteral("ck_secret"), bytes), QStringList());
    QCOMPARE(waysToRead(QStringLiteral("cs_secret"), bytes), QStringList());
}

void tst_save_config::showsNothingWithoutSecrets()
{
    m_fixture.window->mainurl = address;
    m_fixture.window->SaveConfig(false);
    QCOMPARE(m_fixture.answers.titles(), QStringList());
}

void tst_save_config::keepsWhatTheOptionsHeldForAnEmptySecret()
{
    MainWindow& window = *m_fixture.window;
    window.optionsMap.insert(keyNameAPI, QStringLiteral("as saved"));
    window.SaveConfig(false);
    QCOMPARE(window.optionsMap.value(keyNameAPI), QVariant(QStringLiteral("as saved")));
}

void tst_save_config::savesOverWhatWasSavedBefore()
{
    MainWindow& window = *m_fixture.window;
    window.optionsMap.insert(QStringLiteral("gone later"), 1);
    window.SaveConfig(false);
    QVERIFY(optionsInTheFile().contains(QStringLiteral("gone later")));
    window.optionsMap.remove(QStringLiteral("gone later"));
    window.SaveConfig(false);
    QVERIFY(!optionsInTheFile().contains(QStringLiteral("gone later")));
}

void tst_save_config::savesNothingOfTheEngine()
{
    MainWindow& window = *m_fixture.window;
    window.optionsMap.insert(INFO::automatikVarName + QLatin1Char('x'), 1);
    window.SaveConfig(false);
    const Options saved = optionsInTheFile();
    QVERIFY(saved.contains(QStringLiteral("mainurl")));
    for (auto it = saved.constBegin(); it != saved.constEnd(); ++it)
        QVERIFY2(!INFO::isTempKeyName(it.key()), qPrintable(it.key()));
}

void tst_save_config::staysSilentIfTheFileCannotBeWritten()
{
    csIniPath = m_folder.hostFile() + QStringLiteral("/below a file/options.ini");
    m_fixture.window->SaveConfig(false);
    QCOMPARE(m_fixture.answers.titles(), QStringList());
    QVERIFY(!QFile::exists(csIniPath));
}

void tst_save_config::makesTheFocusedFieldReport()
{
    MainWindow& window = *m_fixture.window;
    auto* field = new QLineEdit(window.centralWidget());
    window.show();
    field->show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    field->setFocus();
    QTest::keyClicks(field, QStringLiteral("typed"));
    const QSignalSpy reports(field, &QLineEdit::editingFinished);
    window.SaveConfig(false);
    QCOMPARE(reports.size(), 1);
    QVERIFY(!field->hasFocus());
}

void tst_save_config::asksARunningPassToStop()
{
    MainWindow& window = *m_fixture.window;
    window.bBusy = true;
    window.runTimer->start();
    window.SaveConfig(true);
    QCOMPARE(window.iCancelType, CancelStop);
    QVERIFY(!window.runTimer->isActive());
    window.bBusy = false;
}

void tst_save_config::stopsNothingUnlessAsked()
{
    MainWindow& window = *m_fixture.window;
    window.bBusy = true;
    window.SaveConfig(false);
    QCOMPARE(window.iCancelType, CancelNone);
    window.bBusy = false;
}

void tst_save_config::stopsNothingBetweenPasses()
{
    MainWindow& window = *m_fixture.window;
    window.runTimer->start();
    window.SaveConfig(true);
    QCOMPARE(window.iCancelType, CancelNone);
    QVERIFY(window.runTimer->isActive());
    window.runTimer->stop();
}

void tst_save_config::writesTheAccountsIntoTheOptionStringOnceSaved()
{
    MainWindow& window = *m_fixture.window;
    QVERIFY(!window.BuildOptionsString().contains(QLatin1String("|1_03|")));
    window.SaveConfig(false);
    const QString text = window.BuildOptionsString();
    QVERIFY(text.contains(QLatin1String("|1_03|8400|1_04|4400|1_49|8030|2_03|8300|")));
    QVERIFY(!text.contains(QLatin1String("|35_03|")));
    window.upDateKontoBySKR(payment_import::KontenTypen(35), 4, 4185);
    QVERIFY(window.BuildOptionsString().contains(QLatin1String("|35_03|-1|35_04|4185|35_49|-1|")));
}

void tst_save_config::givesTheSameOptionStringTwice()
{
    MainWindow& window = *m_fixture.window;
    window.SaveConfig(false);
    const QString text = window.BuildOptionsString();
    QCOMPARE(window.BuildOptionsString(), text);
    window.SaveConfig(false);
    QCOMPARE(window.BuildOptionsString(), text);
}

LEDORA_APP_TEST_MAIN(tst_save_config)
#include "tst_save_config.moc"
