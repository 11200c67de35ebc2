#include "form/mod_form_qt.h"
#include "tests/app/many_orders.h"
#include "tests/app/run_fixture.h"
#include "tests/proof/disk_mount.h"
#include "tests/proof/proof_size.h"
#include "tests/support/app_test.h"

#include <QDir>
#include <QTimer>

#include <memory>

using proof::SmallDisk;

namespace {

constexpr int skipped = 77;
constexpr qint64 roomy = 4 << 20;
constexpr int pdfSize = 10000;

QString s(const char* text)
{
    return QString::fromUtf8(text);
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList namesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

} // namespace

/// Disks that are full, that can be read only, and folders that are not there: under the export,
/// the invoices and the options.
class tst_proof_disk : public QObject
{
    Q_OBJECT

public:
    explicit tst_proof_disk(const StartFolder& folder)
        : m_folder(folder)
    {
    }

private slots:
    void init();
    void cleanup();
    void cleanupTestCase() const;

    void anOldExportOnAReadOnlyDiskIsToldOfAtTheStart();
    void aRunOnAReadOnlyDiskAsksNothingAndCanBeLeft();
    void aRunWorksOnceTheFolderOfItsExportIsThere();
    void aFolderThatGoesUnderTheRunEndsItAsUsual();
    void aDiskThatIsFullFromTheStartEmptiesTheExport();
    void aDiskThatFillsUpInTheMiddleEmptiesTheExport();
    void roomInTimeGivesTheExportOfAnUndisturbedRun();

    void invoicesOnAReadOnlyDiskAreLostAlone();
    void aFullDiskLeavesWholeInvoicesOnly();
    void invoicesThatFoundNoRoomAreFetchedByTheNextRun();
    void aFolderOfInvoicesThatIsGoneIsMadeAnew();
    void aFolderOfInvoicesThatGoesUnderTheRunLosesThemAlone();
    void aFolderOfInvoicesThatCannotBeMadeLosesThemAlone();

    // Each with another name of the file: this process remembers what it has written under one.
    void readOnlyOptionsStayAsTheyAre();
    void optionsOnAFullDiskStayAsTheyAre();
    void aFolderInThePlaceOfTheOptionsIsPassedOver();
    void aMissingFolderOfTheOptionsIsMade();

private:
    MainWindow& window() const { return *m_fixture->window; }

    QString disk() const { return m_folder.path(s("disk")); }

    QString onDisk(const char* name) const { return disk() + QLatin1Char('/') + s(name); }

    void mountDisk(qint64 bytes = roomy);
    /// A window whose host's file names \a path at \a position.
    void startWith(int position, const QString& path, const QMap<QString, QVariant>& options = {});
    /// A shop with three orders, each with an invoice of pdfSize bytes.
    void serveInvoices();
    void startWithInvoices(const QString& folder);
    void changeAnOption();
    /// Leaves the window with its system button, and brings up what a start behind it shows.
    void leave();
    QByteArray undisturbedExport(int orders);

    static QByteArray pdf(int order) { return QByteArray(pdfSize, char('0' + order)); }

    const StartFolder& m_folder;
    std::unique_ptr<SmallDisk> m_disk;
    std::unique_ptr<RunFixture> m_fixture;
    int m_tried = 0;
    int m_ok = 0;
};

void tst_proof_disk::init()
{
    m_fixture = std::make_unique<RunFixture>(m_folder);
    QDir(disk()).removeRecursively();
    ++m_tried;
}

void tst_proof_disk::cleanup()
{
    m_fixture.reset();
    m_disk.reset();
    m_ok += QTest::currentTestFailed() ? 0 : 1;
}

void tst_proof_disk::cleanupTestCase() const
{
    proof::report("disk: cases tried=" + std::to_string(m_tried) + " ok=" + std::to_string(m_ok));
}

void tst_proof_disk::mountDisk(qint64 bytes)
{
    m_disk = std::make_unique<SmallDisk>(disk(), bytes);
    QVERIFY(m_disk->isMounted());
}

void tst_proof_disk::startWith(int position, const QString& path,
                               const QMap<QString, QVariant>& options)
{
    QStringList lines = m_folder.hostLines();
    lines[position] = path;
    m_fixture->start(options, lines);
}

void tst_proof_disk::leave()
{
    window().show();
    window().close();
    QTRY_VERIFY(!window().isVisible());
}

QByteArray tst_proof_disk::undisturbedExport(int orders)
{
    m_fixture->serveOrders(sample::manyOrders(orders));
    startWith(5, onDisk("output.csv"));
    m_fixture->runToEnd();
    const QByteArray bytes = contentOf(onDisk("output.csv"));
    m_fixture->answers.clear();
    m_fixture->shop.clearRequests();
    return bytes;
}

void tst_proof_disk::anOldExportOnAReadOnlyDiskIsToldOfAtTheStart()
{
    mountDisk();
    QFile old(onDisk("output.csv"));
    QVERIFY(old.open(QIODevice::WriteOnly) && old.write("old\n") == 4);
    old.close();
    QVERIFY(m_disk->setReadOnly(true));
    startWith(5, onDisk("output.csv"));
    QCOMPARE(m_fixture->answers.titles(), QStringList {s("Fehler:")});
    QCOMPARE(m_fixture->answers.seen().constFirst().text,
             s("Die Datei\r\n") + onDisk("output.csv")
                 + s("\r\nkann nicht entfernt werden.\r\nRead-only file system"));
    // Giving up wants it gone too, and tells again that this can't be done.
    leave();
    QCOMPARE(m_fixture->answers.titles(), QStringList({s("Fehler:"), s("Fehler:")}));
    QCOMPARE(contentOf(onDisk("output.csv")), QByteArray("old\n"));
}

void tst_proof_disk::aRunOnAReadOnlyDiskAsksNothingAndCanBeLeft()
{
    mountDisk();
    QVERIFY(m_disk->setReadOnly(true));
    m_fixture->serveOrders(sample::manyOrders(3));
    startWith(5, onDisk("output.csv"));
    window().StartTimer();
    QTRY_VERIFY(window().runTimer->isActive());
    QVERIFY(m_fixture->showsStatus(s("Dateifehler:\r\n") + onDisk("output.csv")
                                   + s("\r\nRead-only file system)")));
    for (int tick = 0; tick < 20; ++tick)
        window().OnTimer();
    QVERIFY(!window().bBusy);
    QCOMPARE(m_fixture->targets(), QStringList());
    leave();
    QVERIFY(!window().runTimer->isActive());
    QCOMPARE(m_fixture->answers.titles(), QStringList());
    QCOMPARE(namesIn(disk()), QStringList());
}

void tst_proof_disk::aRunWorksOnceTheFolderOfItsExportIsThere()
{
    m_fixture->serveOrders(sample::manyOrders(3));
    startWith(5, onDisk("output.csv"));
    window().StartTimer();
    QTRY_VERIFY(window().runTimer->isActive());
    window().OnTimer();
    QCOMPARE(m_fixture->targets(), QStringList());
    QVERIFY(!QDir(disk()).exists());
    QVERIFY(QDir().mkpath(disk()));
    m_fixture->runToEnd();
    QCOMPARE(m_fixture->answers.titles(), QStringList {s("Beendet:")});
    QCOMPARE(contentOf(onDisk("output.csv")).count('\n'), 2 + 3);
}

void tst_proof_disk::aFolderThatGoesUnderTheRunEndsItAsUsual()
{
    QVERIFY(QDir().mkpath(disk()));
    m_fixture->serveOrders(sample::manyOrders(150));
    startWith(5, onDisk("output.csv"));
    m_fixture->runOnePass();
    QVERIFY(QDir(disk()).removeRecursively());
    m_fixture->tickToEnd();
    QCOMPARE(m_fixture->answers.titles(), QStringList {s("Beendet:")});
    // The host finds none, as if the user had given up; never a part of one.
    QVERIFY(!QFile::exists(onDisk("output.csv")));
    m_fixture->answers.clear();
    QVERIFY(QDir().mkpath(disk()));
    m_fixture->runToEnd();
    QCOMPARE(contentOf(onDisk("output.csv")).count('\n'), 2 + 150);
}

void tst_proof_disk::aDiskThatIsFullFromTheStartEmptiesTheExport()
{
    mountDisk();
    QVERIFY(m_disk->fill());
    m_fixture->serveOrders(sample::manyOrders(150));
    startWith(5, onDisk("output.csv"));
    m_fixture->runToEnd();
    QCOMPARE(m_fixture->answers.titles(), QStringList {s("Fehler:")});
    QCOMPARE(m_fixture->answers.seen().constFirst().text,
             s("Export auf Seite 1 nach 3 Versuchen fehlgeschlagen:\nDateifehler:\r\n")
                 + onDisk("output.csv") + s("\r\nNo space left on device)"));
    QVERIFY(QFile::exists(onDisk("output.csv")));
    QCOMPARE(contentOf(onDisk("output.csv")).size(), 0);
    QVERIFY(!window().outFile.isOpen());
    QVERIFY(m_fixture->startButton()->isEnabled());
}

void tst_proof_disk::aDiskThatFillsUpInTheMiddleEmptiesTheExport()
{
    mountDisk();
    m_fixture->serveOrders(sample::manyOrders(300));
    startWith(5, onDisk("output.csv"));
    m_fixture->runOnePass();
    // Larger than the room that the file's last block may still have.
    QVERIFY(contentOf(onDisk("output.csv")).size() > 4096);
    QVERIFY(m_disk->fill());
    m_fixture->tickToEnd();
    QCOMPARE(m_fixture->answers.titles(), QStringList {s("Fehler:")});
    QCOMPARE(m_fixture->answers.seen().constFirst().text,
             s("Export auf Seite 2 nach 3 Versuchen fehlgeschlagen:\nDateifehler:\r\n")
                 + onDisk("output.csv") + s("\r\nNo space left on device)"));
    QVERIFY(QFile::exists(onDisk("output.csv")));
    QCOMPARE(contentOf(onDisk("output.csv")).size(), 0);
    QCOMPARE(m_fixture->countOf(s("/v3/orders")), 1 + 3);
    // With room again the same window gets it done.
    m_disk->clear();
    m_fixture->runToEnd();
    QCOMPARE(contentOf(onDisk("output.csv")).count('\n'), 2 + 300);
}

void tst_proof_disk::roomInTimeGivesTheExportOfAnUndisturbedRun()
{
    mountDisk();
    const QByteArray undisturbed = undisturbedExport(300);
    QCOMPARE(undisturbed.count('\n'), 2 + 300);
    m_fixture->runOnePass();
    const QByteArray firstPage = contentOf(onDisk("output.csv"));
    QVERIFY(m_disk->fill());
    for (int pass = 1; pass <= 2; ++pass) {
        window().OnTimer();
        QCOMPARE(window().iPageRetries, pass);
        QCOMPARE(contentOf(onDisk("output.csv")), firstPage);
    }
    m_disk->clear();
    m_fixture->tickToEnd();
    QCOMPARE(m_fixture->answers.titles(), QStringList {s("Beendet:")});
    QCOMPARE(contentOf(onDisk("output.csv")), undisturbed);
}

void tst_proof_disk::serveInvoices()
{
    m_fixture->serveOrders(sample::manyOrders(3));
    for (int order = 1; order <= 3; ++order) {
        const QString file = s("/file/%1").arg(order);
        const QJsonObject link {{s("href"), m_fixture->shop.baseUrl() + file}};
        const QJsonObject invoice {{s("number"), QString::number(order)},
                                   {s("order_number"), QString::number(order)},
                                   {s("formatted_number"), s("RE-%1").arg(order)},
                                   {s("date_created"), s("2026-01-06T09:00:00")},
                                   {s("date_created_gmt"), s("2026-01-06T08:00:00")},
                                   {s("_links"), QJsonObject {{s("pdf"), QJsonArray {link}}}}};
        m_fixture->serve(s("/wp-json/wc/v3/orders/%1/invoices").arg(order),
                         sample::json(QJsonArray {invoice}));
        m_fixture->serve(file, R"({"file":")" + pdf(order).toBase64() + R"("})");
    }
}

void tst_proof_disk::startWithInvoices(const QString& folder)
{
    serveInvoices();
    startWith(8, folder, {{s("germanized_use"), true}, {s("germanized_pdf_folder"), folder}});
}

void tst_proof_disk::invoicesOnAReadOnlyDiskAreLostAlone()
{
    mountDisk();
    QVERIFY(m_disk->setReadOnly(true));
    startWithInvoices(disk());
    m_fixture->runToEnd();
    QCOMPARE(m_fixture->answers.titles(), QStringList {s("Beendet:")});
    QCOMPARE(namesIn(disk()), QStringList());
    const QList<QByteArray> lines = m_folder.exportedLines();
    QCOMPARE(lines.size(), 2 + 3);
    QVERIFY(lines.constLast().contains(onDisk("RE-3.pdf").toUtf8()));
}

void tst_proof_disk::aFullDiskLeavesWholeInvoicesOnly()
{
    // Two of them fit and a part of the third.
    mountDisk(8 * 4096);
    startWithInvoices(disk());
    m_fixture->runToEnd();
    QCOMPARE(m_fixture->answers.titles(), QStringList {s("Beendet:")});
    QCOMPARE(m_folder.exportedLines().size(), 2 + 3);
    QCOMPARE(namesIn(disk()), QStringList({s("RE-1.pdf"), s("RE-2.pdf")}));
    QCOMPARE(contentOf(onDisk("RE-1.pdf")), pdf(1));
    QCOMPARE(contentOf(onDisk("RE-2.pdf")), pdf(2));
}

void tst_proof_disk::invoicesThatFoundNoRoomAreFetchedByTheNextRun()
{
    mountDisk();
    QVERIFY(m_disk->fill());
    startWithInvoices(disk());
    m_fixture->runToEnd();
    m_disk->clear();
    m_fixture->runToEnd();
    QCOMPARE(m_fixture->answers.titles(), QStringList({s("Beendet:"), s("Beendet:")}));
    QCOMPARE(namesIn(disk()), QStringList({s("RE-1.pdf"), s("RE-2.pdf"), s("RE-3.pdf")}));
    for (int order = 1; order <= 3; ++order)
        QCOMPARE(contentOf(disk() + s("/RE-%1.pdf").arg(order)), pdf(order));
}

void tst_proof_disk::aFolderOfInvoicesThatIsGoneIsMadeAnew()
{
    startWithInvoices(disk());
    QVERIFY(!QDir(disk()).exists());
    m_fixture->runToEnd();
    QCOMPARE(namesIn(disk()), QStringList({s("RE-1.pdf"), s("RE-2.pdf"), s("RE-3.pdf")}));
}

void tst_proof_disk::aFolderOfInvoicesThatGoesUnderTheRunLosesThemAlone()
{
    startWithInvoices(disk());
    m_fixture->during("/file/2", [this] { QDir(disk()).removeRecursively(); });
    m_fixture->runToEnd();
    QCOMPARE(m_fixture->answers.titles(), QStringList {s("Beendet:")});
    QCOMPARE(m_folder.exportedLines().size(), 2 + 3);
    QVERIFY(!QDir(disk()).exists());
}

void tst_proof_disk::aFolderOfInvoicesThatCannotBeMadeLosesThemAlone()
{
    mountDisk();
    QVERIFY(m_disk->setReadOnly(true));
    startWithInvoices(onDisk("invoices"));
    m_fixture->runToEnd();
    QCOMPARE(m_fixture->answers.titles(), QStringList {s("Beendet:")});
    QCOMPARE(m_folder.exportedLines().size(), 2 + 3);
    QVERIFY(!QDir(onDisk("invoices")).exists());
}

void tst_proof_disk::changeAnOption()
{
    mod_form_qt::INFO::setData(&window().optionsMap, "def_cost1", s("changed"), false);
    mod_form_qt::INFO::setData(&window().optionsMap, "paypal_use", true, false);
}

void tst_proof_disk::readOnlyOptionsStayAsTheyAre()
{
    mountDisk();
    {
        const QMap<QString, QVariant> saved {{s("paypal_use"), false}};
        mod_form_qt::INFO::saveMapToIniFile(&saved, onDisk("readonly.ini"), s("options"), false,
                                            nullptr, QString());
    }
    const QByteArray before = contentOf(onDisk("readonly.ini"));
    QVERIFY(!before.isEmpty());
    QVERIFY(m_disk->setReadOnly(true));
    m_fixture->serveOrders(sample::manyOrders(3));
    startWith(0, onDisk("readonly.ini"));
    changeAnOption();
    window().SaveConfig(false);
    m_fixture->runToEnd();
    QCOMPARE(m_folder.exportedLines().size(), 2 + 3);
    leave();
    QCOMPARE(m_fixture->answers.titles(), QStringList {s("Beendet:")});
    QCOMPARE(contentOf(onDisk("readonly.ini")), before);
    QCOMPARE(namesIn(disk()), QStringList {s("readonly.ini")});
}

void tst_proof_disk::optionsOnAFullDiskStayAsTheyAre()
{
    mountDisk();
    startWith(0, onDisk("full.ini"));
    window().SaveConfig(false);
    const QByteArray before = contentOf(onDisk("full.ini"));
    QVERIFY(before.startsWith("[options]"));
    QVERIFY(m_disk->fill());
    changeAnOption();
    window().SaveConfig(false);
    QCOMPARE(contentOf(onDisk("full.ini")), before);
    m_disk->clear();
    QCOMPARE(namesIn(disk()), QStringList {s("full.ini")});
    // With room again they are saved, without a word in between.
    window().SaveConfig(false);
    QVERIFY(contentOf(onDisk("full.ini")) != before);
    QCOMPARE(m_fixture->answers.titles(), QStringList());
}

void tst_proof_disk::aFolderInThePlaceOfTheOptionsIsPassedOver()
{
    QVERIFY(QDir().mkpath(onDisk("folder.ini")));
    m_fixture->serveOrders(sample::manyOrders(3));
    startWith(0, onDisk("folder.ini"));
    changeAnOption();
    window().SaveConfig(false);
    m_fixture->runToEnd();
    leave();
    QCOMPARE(m_fixture->answers.titles(), QStringList {s("Beendet:")});
    QVERIFY(QDir(onDisk("folder.ini")).isEmpty());
}

void tst_proof_disk::aMissingFolderOfTheOptionsIsMade()
{
    startWith(0, onDisk("missing.ini"));
    changeAnOption();
    window().SaveConfig(false);
    QVERIFY(contentOf(onDisk("missing.ini")).startsWith("[options]"));
    QCOMPARE(m_fixture->answers.titles(), QStringList());
}

int main(int argc, char** argv)
{
    // The debug lines of the orders would bury what a test has to say.
    qputenv("QT_LOGGING_RULES", "default.debug=false");
    if (!proof::enterMountSpace()) {
        proof::report("disk: SKIP tried=0 ok=0: this process can't be given disks of its own "
                      "(mounting is forbidden)");
        return skipped;
    }
    return runAppTest<tst_proof_disk>(argc, argv);
}

#include "tst_proof_disk.moc"
