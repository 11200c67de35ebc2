#include "accounting/order_taxes.h"
#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include <QLabel>
#include <QNetworkAccessManager>

/// How a run is put back to its beginning.
class tst_run_reset : public QObject
{
    Q_OBJECT

public:
    explicit tst_run_reset(const StartFolder& startFolder)
        : folder(startFolder)
    {
    }

private slots:
    void init();
    void cleanup();
    void putsEachMemberBack_data();
    void putsEachMemberBack();
    void leavesTheRestAlone();
    void replacesTheNetworkManager();
    void pdfFolderEndsInASlashAndExists_data();
    void pdfFolderEndsInASlashAndExists();
    void anEmptyPdfFolderStaysEmpty();
    void emptiesTheExportEachTime();
    void takesTheExportsPathAnew();
    void exportIsUtf8WithoutAMark();
    void anExportThatCannotBeOpenedIsReported();

private:
    MainWindow& window() const { return *fixture->window; }

    const StartFolder& folder;
    std::unique_ptr<RunFixture> fixture;
};

namespace {

struct Member
{
    const char* name;
    void (*spoil)(MainWindow&);
    bool (*isReset)(const MainWindow&);
};

// clang-format off
const Member members[] = {
    {"bBusy", [](MainWindow& w) { w.bBusy = true; },
              [](const MainWindow& w) { return !w.bBusy; }},
    {"iPage", [](MainWindow& w) { w.iPage = 7; },
              [](const MainWindow& w) { return w.iPage == 1; }},
    {"bFinished", [](MainWindow& w) { w.bFinished = true; },
                  [](const MainWindow& w) { return !w.bFinished; }},
    {"bHeaderWritten", [](MainWindow& w) { w.bHeaderWritten = true; },
                       [](const MainWindow& w) { return !w.bHeaderWritten; }},
    {"iExportCount", [](MainWindow& w) { w.iExportCount = 7; },
                     [](const MainWindow& w) { return w.iExportCount == 0; }},
    {"iPageRetries", [](MainWindow& w) { w.iPageRetries = 2; },
                     [](const MainWindow& w) { return w.iPageRetries == 0; }},
    {"iCancelType", [](MainWindow& w) { w.iCancelType = CancelClose; },
                    [](const MainWindow& w) { return w.iCancelType == CancelNone; }},
    {"iBytesReceived", [](MainWindow& w) { w.iBytesReceived = 7; },
                       [](const MainWindow& w) { return w.iBytesReceived == 0; }},
    {"iPdfCount", [](MainWindow& w) { w.iPdfCount = 7; },
                  [](const MainWindow& w) { return w.iPdfCount == 0; }},
    {"csvHeaders", [](MainWindow& w) { w.csvHeaders = QStringList {QStringLiteral("\"id\"")}; },
                   [](const MainWindow& w) { return w.csvHeaders.isEmpty(); }},
    {"runClock", [](MainWindow& w) { w.runClock.invalidate(); },
                 [](const MainWindow& w) { return w.runClock.isValid(); }},
};
// clang-format on

} // namespace

void tst_run_reset::init()
{
    fixture = std::make_unique<RunFixture>(folder);
    fixture->start();
}

void tst_run_reset::cleanup()
{
    fixture.reset();
}

void tst_run_reset::putsEachMemberBack_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(std::size(members)); ++i)
        QTest::newRow(members[i].name) << i;
}

void tst_run_reset::putsEachMemberBack()
{
    QFETCH(int, index);
    members[index].spoil(window());
    if (members[index].isReset(window()))
        QFAIL("The member was not changed in the first place.");
    window().Reset();
    QVERIFY(members[index].isReset(window()));
}

void tst_run_reset::leavesTheRestAlone()
{
    globalTaxRates = {{3, QStringLiteral("19")}};
    window().productFlags.insert(5, {true, false});
    window().bError = true;
    window().csErrorText = QStringLiteral("text");
    window().Reset();
    QCOMPARE(globalTaxRates.size(), std::size_t(1));
    QCOMPARE(window().productFlags.size(), 1);
    QVERIFY(window().bError);
    QCOMPARE(window().csErrorText, QStringLiteral("text"));
}

void tst_run_reset::replacesTheNetworkManager()
{
    window().Reset();
    const QPointer<QNetworkAccessManager> first = window().networkManager;
    QVERIFY(first);
    QCOMPARE(first->parent(), &window());
    QCOMPARE(first->transferTimeout(), 60000);
    window().Reset();
    QVERIFY(first); // left to the event loop, since a reply of it may still be waiting
    QVERIFY(window().networkManager != first);
    QCOMPARE(window().networkManager->transferTimeout(), 60000);
    QTRY_VERIFY(first.isNull());
    QVERIFY(window().networkManager);
}

void tst_run_reset::pdfFolderEndsInASlashAndExists_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a slash is appended") << "pdf"
                                         << "pdf/";
    QTest::newRow("a slash stays") << "pdf/"
                                   << "pdf/";
    QTest::newRow("a backslash counts as one") << "pdf\\"
                                               << "pdf\\";
    QTest::newRow("folders are created on the way") << "pdf/2026/01"
                                                    << "pdf/2026/01/";
}

void tst_run_reset::pdfFolderEndsInASlashAndExists()
{
    QFETCH(QString, name);
    QFETCH(QString, expected);
    window().germanized_pdf_folder = folder.path(name);
    window().pdfFolderPath = QStringLiteral("/of/the/host");
    window().Reset();
    QCOMPARE(window().pdfFolderPath, folder.path(expected));
    QVERIFY(QFileInfo(folder.path(expected)).isDir());
}

void tst_run_reset::anEmptyPdfFolderStaysEmpty()
{
    window().germanized_pdf_folder = QString();
    window().pdfFolderPath = QStringLiteral("/of/the/host");
    window().Reset();
    QCOMPARE(window().pdfFolderPath, QString());
    QCOMPARE(fixture->answers.titles(), QStringList());
}

void tst_run_reset::emptiesTheExportEachTime()
{
    window().Reset();
    QVERIFY(window().outFile.isOpen());
    QCOMPARE(folder.exported(), QByteArray(""));
    QVERIFY(!folder.exported().isNull());
    window().outStream << "half a page\n";
    window().Reset();
    QVERIFY(window().outFile.isOpen());
    QCOMPARE(folder.exported(), QByteArray(""));
}

void tst_run_reset::takesTheExportsPathAnew()
{
    window().Reset();
    window().outputFilePath = folder.path(QStringLiteral("other.csv"));
    window().Reset();
    QCOMPARE(window().outFile.fileName(), folder.path(QStringLiteral("other.csv")));
    QVERIFY(QFile::exists(folder.path(QStringLiteral("other.csv"))));
}

void tst_run_reset::exportIsUtf8WithoutAMark()
{
    for (int run = 0; run < 2; ++run) {
        window().Reset();
        window().outStream << QString::fromUtf8("für 5 €\n");
        window().outStream.flush();
        QCOMPARE(folder.exported(), QByteArray("f\xC3\xBCr 5 \xE2\x82\xAC\n"));
    }
}

void tst_run_reset::anExportThatCannotBeOpenedIsReported()
{
    const QString path = folder.path(QStringLiteral("no such folder/100%2F %1.csv"));
    window().outputFilePath = path;
    window().Reset();
    QVERIFY(!window().outFile.isOpen());
    QVERIFY2(fixture->showsStatus(QLatin1String("Dateifehler:\r\n") + path
                                  + QLatin1String("\r\nNo such file or directory)")),
             qPrintable(window().statusLabel->text()));
}

LEDORA_APP_TEST_MAIN(tst_run_reset)

#include "tst_run_reset.moc"
