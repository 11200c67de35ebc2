#include "app/globals.h"
#include "app/mainwindow.h"
#include "form/mod_form_qt.h"
#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include <QDir>

using mod_form_qt::INFO;
using payment_import::KontenTypen;
using Options = QMap<QString, QVariant>;
using Triple = std::tuple<int, int, int>;

namespace {

const QString decryptTitle = QStringLiteral("Fehler beim Entschlüsseln:");
const QString folderKey = QStringLiteral("germanized_pdf_folder");

QVariant optionOf(const MainWindow& window, const QString& key)
{
    return INFO::getBaseValue(&window.optionsMap, key);
}

QStringList savedKonto(const char* role, const char* skr03, const char* skr04, const char* skr49)
{
    return {QString::fromLatin1(role), QString::fromLatin1(skr03), QString::fromLatin1(skr04),
            QString::fromLatin1(skr49)};
}

} // namespace

/// A start on a machine without a secret service: nothing answers on the session bus here.
class tst_restore : public QObject
{
    Q_OBJECT

public:
    explicit tst_restore(const StartFolder& folder)
        : m_folder(folder)
        , m_fixture(folder)
    {
    }

private slots:
    void init();

    void bringsSavedOptionsBack();
    void startsWithDefaultsWhereNothingIsSaved();
    void keepsDefaultsIfTheFileIsUnreadable_data();
    void keepsDefaultsIfTheFileIsUnreadable();
    void doesNotTouchTheSavedFile();

    void skipsTheSecretsWithoutAnAddress_data();
    void skipsTheSecretsWithoutAnAddress();
    void showsABoxForEachSecretItCannotRead();
    void hasDealtWithTheOldExportBeforeItAsksForSecrets();

    void prefersASavedAccountToTheHosts();
    void keepsAccountsThatWereNotSaved();
    void createsRole35FromASavedEntry();
    void dropsBadSavedAccounts();

    void prefersTheHostsFolderIfItExists();
    void keepsTheSavedFolder_data();
    void keepsTheSavedFolder();

private:
    MainWindow& startWith(const Options& options, const QStringList& lines);

    const StartFolder& m_folder;
    RunFixture m_fixture;
};

void tst_restore::init()
{
    m_fixture.window.reset();
    m_fixture.answers.clear();
    m_fixture.answers.whenShown({});
    QDir(m_folder.iniFile()).removeRecursively();
    QDir(m_folder.pdfFolder()).removeRecursively();
    QFile::remove(m_folder.iniFile());
    QFile::remove(m_folder.pdfFolder());
    QFile::remove(m_folder.exportFile());
    m_folder.writeHostFile();
}

MainWindow& tst_restore::startWith(const Options& options, const QStringList& lines)
{
    m_folder.saveOptions(options);
    m_folder.writeHostFile(lines);
    return m_fixture.restart();
}

void tst_restore::bringsSavedOptionsBack()
{
    const Options saved {{QStringLiteral("germanized_use"), true},
                         {QStringLiteral("paypal_use"), false},
                         {QStringLiteral("date_filter_after"), QDate(2024, 2, 29)},
                         {QStringLiteral("def_payment_method_s"), QStringLiteral("a;b\r\nc;d")},
                         {QStringLiteral("of a later version"), 17}};
    const MainWindow& window = startWith(saved, m_folder.hostLines());
    for (auto it = saved.constBegin(); it != saved.constEnd(); ++it) {
        QCOMPARE(optionOf(window, it.key()), it.value());
        QCOMPARE(optionOf(window, it.key()).typeId(), it.value().typeId());
    }
    QCOMPARE(window.germanized_use, QVariant(true));
    QCOMPARE(window.paypal_use, QVariant(false));
    QCOMPARE(window.date_filter_after, QVariant(QDate(2024, 2, 29)));
    QCOMPARE(window.woocommerce_use, QVariant(true));
    QCOMPARE(m_fixture.answers.titles(), QStringList());
}

void tst_restore::startsWithDefaultsWhereNothingIsSaved()
{
    const MainWindow& window = m_fixture.restart();
    QCOMPARE(window.mainurl.toString(), QString());
    QCOMPARE(window.woocommerce_use, QVariant(true));
    QCOMPARE(window.kontenMap.at(KontenTypen(1)), Triple(8400, 4400, 8030));
    QCOMPARE(m_fixture.answers.titles(), QStringList());
}

void tst_restore::keepsDefaultsIfTheFileIsUnreadable_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no INI file at all") << QByteArray("\x7f"
                                                      "ELF\x02\x01\0\0\xff\xfe[[[=",
                                                      14);
    QTest::newRow("another group") << QByteArray("[other]\nvmap=1\n");
    QTest::newRow("no map") << QByteArray("[options]\nvmap=text\n");
    QTest::newRow("a cut map") << QByteArray("[options]\nvmap=@Variant(\\0\\0\\0\\b\\0\\0)\n");
    QTest::newRow("a bad map") << QByteArray("[options]\nvmap=@Variant(\\xff\\xff\\xff\\xff)\n");
    // In a map of one entry.
    const QByteArray map = "[options]\nvmap=@Variant(\\0\\0\\0\\b\\0\\0\\0\\x1\\0\\0\\0\\x2\\0y";
    QTest::newRow("a list of billions") << map + "\\0\\0\\0\\t\\xee\\0\\0\\0)\n";
    QTest::newRow("lists in lists")
        << map + QByteArray("\\0\\0\\0\\t\\0\\0\\0\\x1").repeated(40'000) + ")\n";
}

void tst_restore::keepsDefaultsIfTheFileIsUnreadable()
{
    QFETCH(QByteArray, bytes);
    QFile file(m_folder.iniFile());
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
    file.close();
    const MainWindow& window = m_fixture.restart();
    QCOMPARE(m_fixture.answers.titles(), QStringList());
    QCOMPARE(window.mainurl.toString(), QString());
    QCOMPARE(window.paypal_use, QVariant(true));
    QCOMPARE(window.date_filter_before, QVariant(QDate(2037, 1, 1)));
    QCOMPARE(window.kontenMap.size(), std::size_t(36));
}

void tst_restore::doesNotTouchTheSavedFile()
{
    m_folder.saveOptions({{QStringLiteral("paypal_use"), false}});
    QFile file(m_folder.iniFile());
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    file.close();
    m_fixture.restart();
    // Opened anew: a rewritten file would be another one under the same name.
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), before);
}

void tst_restore::skipsTheSecretsWithoutAnAddress_data()
{
    QTest::addColumn<QVariant>("mainurl");
    QTest::newRow("missing") << QVariant();
    QTest::newRow("empty") << QVariant(QString());
    QTest::newRow("blanks") << QVariant(QStringLiteral(" \t "));
}

void tst_restore::skipsTheSecretsWithoutAnAddress()
{
    QFETCH(QVariant, mainurl);
    Options options {{keyNameAPI, QStringLiteral("saved")}};
    if (mainurl.isValid())
        options.insert(QStringLiteral("mainurl"), mainurl);
    const MainWindow& window = startWith(options, m_folder.hostLines());
    QCOMPARE(m_fixture.answers.titles(), QStringList());
    QCOMPARE(optionOf(window, keyNameAPI), QVariant(QStringLiteral("saved")));
}

void tst_restore::showsABoxForEachSecretItCannotRead()
{
    const Options options {{QStringLiteral("mainurl"), QStringLiteral("https://shop.example")},
                           {keyNameAPI, QStringLiteral("saved key")},
                           {keyNameSECRET, QString()}};
    MainWindow& window = startWith(options, m_folder.hostLines());
    QCOMPARE(m_fixture.answers.titles(), QStringList({decryptTitle, decryptTitle}));
    for (const auto& box : m_fixture.answers.seen()) {
        QVERIFY(!box.text.isEmpty());
        QCOMPARE(box.icon, QMessageBox::Information);
        QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    }
    QCOMPARE(optionOf(window, keyNameAPI), QVariant(QStringLiteral("saved key")));
    QCOMPARE(optionOf(window, keyNameSECRET), QVariant(QString()));
    QCOMPARE(window.apiKey.toString(), QStringLiteral("saved key"));
    QCOMPARE(window.mainurl.toString(), QStringLiteral("https://shop.example"));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
}

void tst_restore::hasDealtWithTheOldExportBeforeItAsksForSecrets()
{
    QFile file(m_folder.exportFile());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QList<bool> exportThere;
    m_fixture.answers.whenShown([this, &exportThere](QMessageBox&) {
        exportThere.append(QFile::exists(m_folder.exportFile()));
    });
    startWith({{QStringLiteral("mainurl"), QStringLiteral("https://shop.example")}},
              m_folder.hostLines());
    QCOMPARE(exportThere, QList<bool>({false, false}));
}

void tst_restore::prefersASavedAccountToTheHosts()
{
    QStringList lines = m_folder.hostLines();
    lines[3] = QStringLiteral("4;5;6");
    const QVariantList saved {savedKonto("32", "1221", "1821", "956"),
                              savedKonto("20", "1", "2", "3"), savedKonto("33", "7", "8", "9")};
    const MainWindow& window = startWith({{QStringLiteral("buchungs_konten"), saved}}, lines);
    QCOMPARE(window.kontenMap.at(KontenTypen(32)), Triple(1221, 1821, 956));
    QCOMPARE(window.kontenMap.at(KontenTypen(20)), Triple(1, 2, 3));
    QCOMPARE(window.kontenMap.at(KontenTypen(33)), Triple(7, 8, 9));
}

void tst_restore::keepsAccountsThatWereNotSaved()
{
    QStringList lines = m_folder.hostLines();
    lines[3] = QStringLiteral("4;5;6");
    const QVariantList saved {savedKonto("1", "8401", "4401", "8031")};
    const MainWindow& window = startWith({{QStringLiteral("buchungs_konten"), saved}}, lines);
    QCOMPARE(window.kontenMap.at(KontenTypen(1)), Triple(8401, 4401, 8031));
    QCOMPARE(window.kontenMap.at(KontenTypen(2)), Triple(8300, 4300, 8026));
    QCOMPARE(window.kontenMap.at(KontenTypen(32)), Triple(4, 5, 6));
}

void tst_restore::createsRole35FromASavedEntry()
{
    const QVariantList saved {savedKonto("35", "-1", "4185", "-1")};
    const MainWindow& window =
        startWith({{QStringLiteral("buchungs_konten"), saved}}, m_folder.hostLines());
    QCOMPARE(window.kontenMap.at(KontenTypen(35)), Triple(-1, 4185, -1));
    QCOMPARE(window.kontenMap.size(), std::size_t(37));
}

void tst_restore::dropsBadSavedAccounts()
{
    const QVariantList saved {savedKonto("38", "1", "1", "1"), savedKonto("0", "1", "1", "1"),
                              QStringList({QStringLiteral("1"), QStringLiteral("2")}), 17,
                              savedKonto("2", "text", "99999999999", "5")};
    const MainWindow& window =
        startWith({{QStringLiteral("buchungs_konten"), saved}}, m_folder.hostLines());
    QCOMPARE(window.kontenMap.at(KontenTypen(1)), Triple(8400, 4400, 8030));
    QCOMPARE(window.kontenMap.at(KontenTypen(2)), Triple(0, 0, 5));
    QCOMPARE(window.kontenMap.size(), std::size_t(36));
    QCOMPARE(m_fixture.answers.titles(), QStringList());
}

void tst_restore::prefersTheHostsFolderIfItExists()
{
    QVERIFY(QDir().mkpath(m_folder.pdfFolder()));
    const MainWindow& window =
        startWith({{folderKey, QStringLiteral("/saved/folder")}}, m_folder.hostLines());
    QVERIFY(window.bHostFolder);
    QCOMPARE(optionOf(window, folderKey), QVariant(m_folder.pdfFolder()));
    QCOMPARE(window.germanized_pdf_folder.toString(), m_folder.pdfFolder());
}

void tst_restore::keepsTheSavedFolder_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<bool>("asFile");
    const QStringList lines = m_folder.hostLines();
    QTest::newRow("the host's does not exist") << lines << false;
    QTest::newRow("the host's is a file") << lines << true;
    QTest::newRow("the host names none") << lines.mid(0, 8) << false;
}

void tst_restore::keepsTheSavedFolder()
{
    QFETCH(QStringList, lines);
    QFETCH(bool, asFile);
    if (asFile) {
        QFile file(m_folder.pdfFolder());
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    const MainWindow& window = startWith({{folderKey, QStringLiteral("/saved/folder")}}, lines);
    QVERIFY(!window.bHostFolder);
    QCOMPARE(optionOf(window, folderKey), QVariant(QStringLiteral("/saved/folder")));
    QCOMPARE(window.germanized_pdf_folder.toString(), QStringLiteral("/saved/folder"));
    QCOMPARE(m_fixture.answers.titles(), QStringList());
}

LEDORA_APP_TEST_MAIN(tst_restore)
#include "tst_restore.moc"
