#include "app/globals.h"
#include "credentials/keychain_class.h"
#include "credentials/keychain_key.h"
#include "tests/app/run_fixture.h"
#include "tests/app/secret_search.h"
#include "tests/support/app_test.h"

#include <QLineEdit>
#include <QTimer>

namespace {

const QString address = QStringLiteral("https://shop.example/race");
const QString typedKey = QStringLiteral("ck_typed_8d2f01c4");
const QString typedSecret = QStringLiteral("cs_typed_77e1b09f");

} // namespace

/// Edits that fall into the saving of the settings.
class tst_save_race : public QObject
{
    Q_OBJECT

public:
    explicit tst_save_race(const StartFolder& startFolder)
        : folder(startFolder)
    {
    }

private slots:
    void init();
    void cleanup();
    void aSecretTypedDuringTheSavingStaysOutOfTheFile();
    void aFieldWithTheFocusIsSavedToo();

private:
    MainWindow& window() const { return *fixture->window; }

    QByteArray savedBytes() const;

    const StartFolder& folder;
    std::unique_ptr<RunFixture> fixture;
};

void tst_save_race::init()
{
    fixture = std::make_unique<RunFixture>(folder);
    fixture->start({{QStringLiteral("mainurl"), QString()}});
    window().mainurl = address;
    window().optionsMap.insert(QStringLiteral("mainurl"), address);
}

void tst_save_race::cleanup()
{
    fixture.reset();
}

QByteArray tst_save_race::savedBytes() const
{
    QFile file(folder.iniFile());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void tst_save_race::aSecretTypedDuringTheSavingStaysOutOfTheFile()
{
    window().apiKey = QString();
    window().apiSecret = typedSecret;
    // As a form binds its options: by the variable.
    window().optionsMap.insert(keyNameAPI, QVariant::fromValue(&window().apiKey));
    bool typed = false;
    QTimer::singleShot(0, &window(), [&] {
        window().apiKey = typedKey;
        typed = true;
    });
    window().SaveConfig(false);
    QVERIFY(typed);
    const QByteArray file = savedBytes();
    QVERIFY(!file.isEmpty());
    for (const QString& secret : {typedKey, typedSecret}) {
        QCOMPARE(waysToRead(secret, file), QStringList());
        QCOMPARE(waysToRead(secret, unescapedIni(file)), QStringList());
    }
}

void tst_save_race::aFieldWithTheFocusIsSavedToo()
{
    auto* field = new QLineEdit(window().centralWidget());
    connect(field, &QLineEdit::editingFinished, this, [this, field] {
        window().apiSecret = field->text();
        window().optionsMap.insert(QStringLiteral("shop_note"), QStringLiteral("noted"));
    });
    window().show();
    window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window()));
    field->show();
    field->setFocus();
    QTRY_VERIFY(field->hasFocus());
    QTest::keyClicks(field, typedSecret);
    QVERIFY(window().apiSecret.toString().isEmpty());
    window().SaveConfig(false);

    KeyChainClass store(QStringLiteral("halverin_software.ledora.RestApi"), nullptr);
    QString value;
    QString error;
    QVERIFY2(store.readKeySync(makeRestKeychainKey(address, keyNameSECRET), value, error),
             qPrintable(error));
    QCOMPARE(value, typedSecret);
    const QByteArray file = unescapedIni(savedBytes());
    QVERIFY(!waysToRead(QStringLiteral("noted"), file).isEmpty());
    QCOMPARE(waysToRead(typedSecret, file), QStringList());
}

LEDORA_APP_TEST_MAIN(tst_save_race)

#include "tst_save_race.moc"
