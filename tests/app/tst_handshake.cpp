#include "app/globals.h"
#include "app/identity.h"
#include "app/mainwindow.h"
#include "credentials/keychain_class.h"
#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include <QDir>
#include <QMenuBar>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>

#include <unistd.h>

using payment_import::KontenTypen;
using Triple = std::tuple<int, int, int>;

namespace {

/// As long as it lives, permissions hold for this process as for any user, even if it is root's.
class AsOrdinaryUser
{
public:
    AsOrdinaryUser()
    {
        if (::geteuid() == 0 && ::seteuid(65534) != 0)
            qFatal("The rights of root can't be given up.");
    }

    ~AsOrdinaryUser()
    {
        if (::getuid() == 0 && ::seteuid(0) != 0)
            qFatal("The rights of root can't be taken back.");
    }
    Q_DISABLE_COPY_MOVE(AsOrdinaryUser)
};

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("A file of the test can't be written.");
}

const auto everybodyReads = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
const auto everybodyWrites = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
const auto everybodyEnters = QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;

} // namespace

class tst_handshake : public QObject
{
    Q_OBJECT

public:
    explicit tst_handshake(const StartFolder& folder)
        : m_folder(folder)
        , m_fixture(folder)
    {
    }

private slots:
    void init();

    void namesTheApplication();
    void buildsTheWindowFrame();
    void endsTheProgramWithTheLastWindow();
    void createsTheTimersWithoutStartingThem();
    void opensTheSecretStoreAsItsChild();
    void startsWithItsOwnValues_data();
    void startsWithItsOwnValues();
    void assignsTheLabels();

    void takesTheFileOfTheCommandLine();
    void takesTheHostsValues();
    void keepsItsOwnValuesWhenTheFileIsEmpty();
    void passesOverAFileThatCannotBeOpened();
    void showsNothingForBadLines();
    void handsClearingAccountsToTheTable();
    void givesASmallBusinessItsAccounts_data();
    void givesASmallBusinessItsAccounts();

    void removesTheOldExport();
    void startsWithoutAnOldExport();
    void asksNothingOfAFolderThatIsMissing();
    void truncatesAnExportThatCannotBeRemoved();
    void goesOnIfTheExportCanNeitherGoNorShrink();
    void createsNoFileAtStart();

private:
    MainWindow& startWith(const QStringList& lines);
    QString removalText(const QString& reason) const;

    const StartFolder& m_folder;
    RunFixture m_fixture;
};

void tst_handshake::init()
{
    m_fixture.window.reset();
    m_fixture.answers.clear();
    QDir(m_folder.hostFile()).removeRecursively();
    QDir(m_folder.exportFile()).removeRecursively();
    for (const QString& path : {m_folder.hostFile(), m_folder.exportFile(), m_folder.iniFile()})
        QFile::remove(path);
}

MainWindow& tst_handshake::startWith(const QStringList& lines)
{
    m_folder.writeHostFile(lines);
    return m_fixture.restart();
}

QString tst_handshake::removalText(const QString& reason) const
{
    return QStringLiteral("Die Datei\r\n%1\r\nkann nicht entfernt werden.\r\n%2")
        .arg(m_folder.exportFile(), reason);
}

void tst_handshake::namesTheApplication()
{
    setApplicationIdentity();
    QCOMPARE(QCoreApplication::organizationName(), QStringLiteral("halverin Software"));
    QCOMPARE(QCoreApplication::applicationName(), QStringLiteral("ledora"));
    QCOMPARE(QCoreApplication::applicationVersion(), QStringLiteral("2"));
    QVERIFY(!QCoreApplication::organizationDomain().isEmpty());
    QVERIFY(link_main_help.endsWith(QLatin1String("/HTML/woocommerce.htm")));
    QVERIFY(link_main_help.contains(QCoreApplication::organizationDomain()));
    QCOMPARE(link_def_payment_method_s, link_main_help);
}

void tst_handshake::buildsTheWindowFrame()
{
    MainWindow& window = startWith(m_folder.hostLines());
    QCOMPARE(window.windowTitle(), QStringLiteral("MainWindow"));
    QVERIFY(window.centralWidget());
    QVERIFY(window.findChild<QMenuBar*>(QString(), Qt::FindDirectChildrenOnly));
    QVERIFY(window.findChild<QToolBar*>(QString(), Qt::FindDirectChildrenOnly));
    QVERIFY(window.findChild<QStatusBar*>(QString(), Qt::FindDirectChildrenOnly));
}

void tst_handshake::endsTheProgramWithTheLastWindow()
{
    m_folder.writeHostFile();
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const MainWindow window;
    const bool ends = QGuiApplication::quitOnLastWindowClosed();
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QVERIFY(ends);
}

void tst_handshake::createsTheTimersWithoutStartingThem()
{
    MainWindow& window = startWith(m_folder.hostLines());
    for (const QTimer* timer : {window.runTimer, window.waitTimer}) {
        QVERIFY(timer);
        QCOMPARE(timer->parent(), &window);
        QVERIFY(!timer->isActive());
    }
    QVERIFY(window.runTimer != window.waitTimer);
    QVERIFY(!window.bBusy);
}

void tst_handshake::opensTheSecretStoreAsItsChild()
{
    MainWindow& window = startWith(m_folder.hostLines());
    QVERIFY(window.keyChain);
    QCOMPARE(window.keyChain->parent(), &window);
}

void tst_handshake::startsWithItsOwnValues_data()
{
    QTest::addColumn<QVariant MainWindow::*>("option");
    QTest::addColumn<QVariant>("value");
    const auto row = [](const char* name, QVariant MainWindow::*option, const QVariant& value) {
        QTest::newRow(name) << option << value;
    };
    row("germanized_use", &MainWindow::germanized_use, false);
    row("germanized_overwrite_pdf", &MainWindow::germanized_overwrite_pdf, false);
    row("germanized_pdf_folder", &MainWindow::germanized_pdf_folder, QString());
    row("woocommerce_use", &MainWindow::woocommerce_use, true);
    row("paypal_use", &MainWindow::paypal_use, true);
    row("date_filter_use", &MainWindow::date_filter_use, false);
    row("date_filter_before", &MainWindow::date_filter_before, QDate(2037, 1, 1));
    row("date_filter_after", &MainWindow::date_filter_after, QDate(1970, 1, 1));
    row("id_cache_use", &MainWindow::id_cache_use, true);
    row("Nur paypal-TX-ID", &MainWindow::bTxIdOnly, false);
}

void tst_handshake::startsWithItsOwnValues()
{
    QFETCH(QVariant MainWindow::*, option);
    QFETCH(QVariant, value);
    const MainWindow& window = startWith(m_folder.hostLines());
    QCOMPARE((window.*option).typeId(), value.typeId());
    QCOMPARE(window.*option, value);
}

void tst_handshake::assignsTheLabels()
{
    const MainWindow& window = startWith(m_folder.hostLines());
    QCOMPARE(window.csPaypalLabel, QStringLiteral("paypal importieren"));
    QCOMPARE(window.csWooCommerceLabel, QStringLiteral("WooCommerce importieren"));
    QCOMPARE(window.csTxIdOnlyLabel, QStringLiteral("Nur paypal-TX-ID exportieren"));
}

void tst_handshake::takesTheFileOfTheCommandLine()
{
    startWith(m_folder.hostLines());
    QCOMPARE(csConfigFileName, m_folder.hostFile());
}

void tst_handshake::takesTheHostsValues()
{
    QStringList lines = m_folder.hostLines();
    lines[1] = QStringLiteral("49");
    lines[2] = QStringLiteral("1;2;3");
    lines[3] = QStringLiteral("4;5;6");
    lines[4] = QStringLiteral("7;8;9");
    lines[5] = QLatin1Char('"') + m_folder.exportFile() + QLatin1Char('"');
    lines[6] = QStringLiteral("1");
    const MainWindow& window = startWith(lines);
    QCOMPARE(csIniPath, m_folder.iniFile());
    QCOMPARE(nSKRDefault, 49);
    QCOMPARE(t_ebay_vr_konto, Triple(1, 2, 3));
    QCOMPARE(t_paypal_konto, Triple(4, 5, 6));
    QCOMPARE(t_woocommerce_konto, Triple(7, 8, 9));
    QCOMPARE(window.outputFilePath, m_folder.exportFile());
    QCOMPARE(bFirmaKU, true);
    QCOMPARE(window.pdfFolderPath, m_folder.pdfFolder());
}

void tst_handshake::keepsItsOwnValuesWhenTheFileIsEmpty()
{
    csIniPath = QStringLiteral("from an earlier window");
    const MainWindow& window = startWith({});
    QCOMPARE(csIniPath, QStringLiteral("c:/test/test2.opt"));
    QCOMPARE(nSKRDefault, 3);
    QCOMPARE(t_ebay_vr_konto, Triple(1362, 1462, 707));
    QCOMPARE(t_paypal_konto, Triple(1220, 1820, 955));
    QCOMPARE(t_woocommerce_konto, Triple(1361, 1461, 706));
    QCOMPARE(window.outputFilePath,
             QCoreApplication::applicationDirPath() + QStringLiteral("/output.csv"));
    QCOMPARE(bFirmaKU, false);
    QCOMPARE(window.pdfFolderPath, QString());
}

void tst_handshake::passesOverAFileThatCannotBeOpened()
{
    // A folder is there, and cannot be opened as a file even by root.
    QVERIFY(QDir().mkpath(m_folder.hostFile()));
    const MainWindow& window = m_fixture.restart();
    QCOMPARE(m_fixture.answers.titles(), QStringList());
    QCOMPARE(csIniPath, QStringLiteral("c:/test/test2.opt"));
    QCOMPARE(nSKRDefault, 3);
    QVERIFY(window.outputFilePath.endsWith(QLatin1String("/output.csv")));
}

void tst_handshake::showsNothingForBadLines()
{
    QStringList lines = m_folder.hostLines();
    lines[1] = QStringLiteral("SKR");
    lines[2] = QStringLiteral("1;2");
    lines[3] = QStringLiteral("1300;;abc");
    lines[4] = QStringLiteral(";");
    lines[6] = QStringLiteral("99999999999");
    startWith(lines);
    QCOMPARE(m_fixture.answers.titles(), QStringList());
    QCOMPARE(nSKRDefault, 0);
    QCOMPARE(t_ebay_vr_konto, Triple(1362, 1462, 707));
    QCOMPARE(t_paypal_konto, Triple(1300, 0, 0));
    QCOMPARE(t_woocommerce_konto, Triple(1361, 1461, 706));
    QCOMPARE(bFirmaKU, false);
}

void tst_handshake::handsClearingAccountsToTheTable()
{
    QStringList lines = m_folder.hostLines();
    lines[2] = QStringLiteral("1;2;3");
    lines[3] = QStringLiteral("4;5;6");
    lines[4] = QStringLiteral("7;8;9");
    const MainWindow& window = startWith(lines);
    QCOMPARE(window.kontenMap.at(KontenTypen(20)), Triple(1, 2, 3));
    QCOMPARE(window.kontenMap.at(KontenTypen(32)), Triple(4, 5, 6));
    QCOMPARE(window.kontenMap.at(KontenTypen(33)), Triple(7, 8, 9));
    QCOMPARE(window.kontenMap.size(), std::size_t(36));
}

void tst_handshake::givesASmallBusinessItsAccounts_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("konto");
    QTest::newRow("a small business") << QStringLiteral("1") << 8192;
    QTest::newRow("any other") << QStringLiteral("0") << 8200;
}

void tst_handshake::givesASmallBusinessItsAccounts()
{
    QFETCH(QString, line);
    QFETCH(int, konto);
    QStringList lines = m_folder.hostLines();
    lines[6] = line;
    const MainWindow& window = startWith(lines);
    QCOMPARE(std::get<0>(window.kontenMap.at(KontenTypen(3))), konto);
    QCOMPARE(std::get<0>(window.kontenMap.at(KontenTypen(6))), konto);
}

void tst_handshake::removesTheOldExport()
{
    writeFile(m_folder.exportFile(), "export_version|1\n");
    startWith(m_folder.hostLines());
    QVERIFY(!QFile::exists(m_folder.exportFile()));
    QCOMPARE(m_fixture.answers.titles(), QStringList());
}

void tst_handshake::startsWithoutAnOldExport()
{
    startWith(m_folder.hostLines());
    QCOMPARE(m_fixture.answers.titles(), QStringList());
}

void tst_handshake::asksNothingOfAFolderThatIsMissing()
{
    QStringList lines = m_folder.hostLines();
    lines[5] = m_folder.path(QStringLiteral("missing/output.csv"));
    startWith(lines);
    QCOMPARE(m_fixture.answers.titles(), QStringList());
    QVERIFY(!QFile::exists(m_folder.path(QStringLiteral("missing"))));
}

void tst_handshake::truncatesAnExportThatCannotBeRemoved()
{
    // Who may write a file but not its folder can empty it and not remove it.
    const QString path = m_folder.exportFile();
    const QString parent = QFileInfo(path).path();
    writeFile(path, "export_version|1\n");
    m_folder.writeHostFile();
    QVERIFY(QFile::setPermissions(path, everybodyReads | everybodyWrites));
    QVERIFY(QFile::setPermissions(m_folder.hostFile(), everybodyReads));
    const auto before = QFile::permissions(parent);
    QVERIFY(QFile::setPermissions(parent, everybodyReads | everybodyEnters));
    QString reason;
    {
        const AsOrdinaryUser user;
        QFile file(path);
        QVERIFY(!file.remove());
        reason = file.errorString();
        m_fixture.restart();
    }
    QVERIFY(QFile::setPermissions(parent, before));

    QCOMPARE(m_fixture.answers.titles(), QStringList(QStringLiteral("Fehler:")));
    const auto& box = m_fixture.answers.seen().first();
    QCOMPARE(box.text, removalText(reason));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(m_folder.exported(), QByteArray(""));
    QVERIFY(m_fixture.window->runTimer);
    QCOMPARE(m_fixture.window->kontenMap.size(), std::size_t(36));
}

void tst_handshake::goesOnIfTheExportCanNeitherGoNorShrink()
{
    QVERIFY(QDir().mkpath(m_folder.exportFile() + QStringLiteral("/inside")));
    const MainWindow& window = startWith(m_folder.hostLines());
    QCOMPARE(m_fixture.answers.titles(), QStringList(QStringLiteral("Fehler:")));
    QVERIFY(m_fixture.answers.seen().first().text.startsWith(removalText(QString())));
    QVERIFY(QFileInfo(m_folder.exportFile() + QStringLiteral("/inside")).isDir());
    QVERIFY(window.runTimer);
}

void tst_handshake::createsNoFileAtStart()
{
    startWith(m_folder.hostLines());
    QVERIFY(!QFile::exists(m_folder.exportFile()));
    QVERIFY(!QFile::exists(m_folder.iniFile()));
    QVERIFY(!QFile::exists(m_folder.pdfFolder()));
}

LEDORA_APP_TEST_MAIN(tst_handshake)
#include "tst_handshake.moc"
