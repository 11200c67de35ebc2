#include "tests/app/many_orders.h"
#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include <QLabel>

#include <csignal>
#include <sys/resource.h>

/// A disk that takes a page in part, or not at all: the host gets whole pages or nothing.
class tst_run_disk : public QObject
{
    Q_OBJECT

public:
    explicit tst_run_disk(const StartFolder& startFolder)
        : folder(startFolder)
    {
    }

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void aPageTakenInPartIsTakenBackAndRepeated();
    void aLaterPageTakenInPartKeepsTheEarlierOnes();
    void aDiskThatStaysFullEmptiesTheExport();

private:
    MainWindow& window() const { return *fixture->window; }

    /// From now on no file of this process grows beyond \a bytes.
    static void limitFiles(rlim_t bytes);

    const StartFolder& folder;
    std::unique_ptr<RunFixture> fixture;
};

void tst_run_disk::limitFiles(rlim_t bytes)
{
    rlimit limit {};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &limit), 0);
    limit.rlim_cur = std::min(bytes, limit.rlim_max);
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &limit), 0);
}

void tst_run_disk::initTestCase()
{
    // Else the first byte too many would end the process.
    std::signal(SIGXFSZ, SIG_IGN);
}

void tst_run_disk::init()
{
    fixture = std::make_unique<RunFixture>(folder);
    fixture->serveOrders(sample::manyOrders(150));
    fixture->start();
    window().Reset();
    fixture->keepTicksAway();
}

void tst_run_disk::cleanup()
{
    limitFiles(RLIM_INFINITY);
    fixture.reset();
}

void tst_run_disk::aPageTakenInPartIsTakenBackAndRepeated()
{
    limitFiles(3000);
    window().OnTimer();
    QCOMPARE(window().iPageRetries, 1);
    QVERIFY(fixture->showsStatus(QStringLiteral("Netzwerkfehler auf Seite 1, "
                                                "Wiederholung 1/3...")));
    QVERIFY(!folder.exported().isNull());
    QCOMPARE(folder.exported().size(), 0);
    QVERIFY(window().outFile.isOpen());
    limitFiles(RLIM_INFINITY);
    fixture->tickToEnd();
    QCOMPARE(folder.exportedLines().size(), 2 + 150);
}

void tst_run_disk::aLaterPageTakenInPartKeepsTheEarlierOnes()
{
    window().OnTimer();
    const QByteArray firstPage = folder.exported();
    QCOMPARE(folder.exportedLines().size(), 2 + 100);
    limitFiles(rlim_t(firstPage.size() + 500));
    window().OnTimer();
    QCOMPARE(window().iPageRetries, 1);
    QCOMPARE(folder.exported(), firstPage);
    limitFiles(RLIM_INFINITY);
    fixture->tickToEnd();
    QCOMPARE(folder.exportedLines().size(), 2 + 150);
    QVERIFY(folder.exported().startsWith(firstPage));
}

void tst_run_disk::aDiskThatStaysFullEmptiesTheExport()
{
    window().OnTimer();
    limitFiles(rlim_t(folder.exported().size() + 500));
    fixture->tickToEnd();
    QCOMPARE(fixture->answers.titles(), QStringList {QStringLiteral("Fehler:")});
    const QString box = fixture->answers.seen().first().text;
    QVERIFY2(box.startsWith(QLatin1String("Export auf Seite 2 nach 3 Versuchen fehlgeschlagen:\n"
                                          "Dateifehler:\r\n")
                            + folder.exportFile()),
             qPrintable(box));
    QVERIFY(!folder.exported().isNull());
    QCOMPARE(folder.exported().size(), 0);
}

LEDORA_APP_TEST_MAIN(tst_run_disk)

#include "tst_run_disk.moc"
