#include "tests/app/fault_run.h"
#include "tests/support/app_test.h"

#include <QLabel>

/// A fault that stays leaves the host an empty export, and the user is told why.
class tst_run_faults_permanent : public QObject
{
    Q_OBJECT

public:
    explicit tst_run_faults_permanent(const StartFolder& startFolder)
        : run(startFolder)
    {
    }

private slots:
    void initTestCase();
    void aLastingFaultEmptiesTheExport_data();
    void aLastingFaultEmptiesTheExport();

private:
    FaultRun run;
};

void tst_run_faults_permanent::initTestCase()
{
    run.remember();
    // Two lines of header, 103 orders, one of them with a second line and one with a refund.
    QCOMPARE(run.rememberedLines(), 2 + 103 + 2);
    QCOMPARE(run.rememberedFiles(), 2);
}

void tst_run_faults_permanent::aLastingFaultEmptiesTheExport_data()
{
    QTest::addColumn<int>("phase");
    QTest::addColumn<int>("kind");
    // Nine attempts with their pauses each: every kind once, the phases in turn. Silence would
    // cost its waiting time nine times more and is a failure like the others by then.
    for (int kind = 0; kind + 1 < FaultRun::kinds().size(); ++kind) {
        const int phase = kind % int(FaultRun::phases().size());
        QTest::addRow("%s, %s", FaultRun::phases().at(phase).name, FaultRun::kinds().at(kind).name)
            << phase << kind;
    }
}

void tst_run_faults_permanent::aLastingFaultEmptiesTheExport()
{
    QFETCH(int, phase);
    QFETCH(int, kind);
    const FaultRun::Phase& place = FaultRun::phases().at(phase);
    run.start();
    run.spoilForGood(place, FaultRun::kinds().at(kind).fault);
    run.fixture.tickToEnd();

    QCOMPARE(run.fixture.answers.titles(), QStringList {QStringLiteral("Fehler:")});
    const QString box = run.fixture.answers.seen().first().text;
    QVERIFY2(box.startsWith(QStringLiteral("Export auf Seite %1 nach 3 Versuchen fehlgeschlagen:\n"
                                           "Netzwerkfehler nach 3 Versuchen: ")
                                .arg(place.page)),
             qPrintable(box));
    QVERIFY2(box.endsWith(QLatin1Char(')')) && box.contains(QLatin1String(" (URL: ")),
             qPrintable(box));
    const QString error = box.section(QLatin1Char('\n'), 1);
    QVERIFY(run.fixture.showsStatus(QLatin1String("Beendet. Fehler: ") + error + QLatin1Char('.')));
    QVERIFY(run.spoiltAnswers() >= 9);
    QVERIFY(!run.fixture.folder.exported().isNull());
    QCOMPARE(run.fixture.folder.exported().size(), 0);
}

LEDORA_APP_TEST_MAIN(tst_run_faults_permanent)

#include "tst_run_faults_permanent.moc"
