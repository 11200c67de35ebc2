#include "tests/app/fault_run.h"
#include "tests/support/app_test.h"

#include <QLabel>

/// A fault that fails a whole pass leaves no trace either, since the page is repeated.
class tst_run_faults_pass : public QObject
{
    Q_OBJECT

public:
    explicit tst_run_faults_pass(const StartFolder& startFolder)
        : run(startFolder)
    {
    }

private slots:
    void initTestCase();
    void oneFailedPassLeavesNoTrace_data();
    void oneFailedPassLeavesNoTrace();

private:
    FaultRun run;
};

void tst_run_faults_pass::initTestCase()
{
    run.remember();
    // Two lines of header, 103 orders, one of them with a second line and one with a refund.
    QCOMPARE(run.rememberedLines(), 2 + 103 + 2);
    QCOMPARE(run.rememberedFiles(), 2);
}

void tst_run_faults_pass::oneFailedPassLeavesNoTrace_data()
{
    QTest::addColumn<int>("phase");
    QTest::addColumn<int>("kind");
    // Each such run costs its pauses, so every phase meets every third kind, and each kind is met
    // in several phases.
    for (int phase = 0; phase < FaultRun::phases().size(); ++phase)
        for (int kind = phase % 3; kind < FaultRun::kinds().size(); kind += 3)
            QTest::addRow("%s, %s", FaultRun::phases().at(phase).name,
                          FaultRun::kinds().at(kind).name)
                << phase << kind;
}

void tst_run_faults_pass::oneFailedPassLeavesNoTrace()
{
    QFETCH(int, phase);
    QFETCH(int, kind);
    const FaultRun::Phase& place = FaultRun::phases().at(phase);
    run.start();
    run.spoilOnePass(place, FaultRun::kinds().at(kind).fault);
    for (int pass = 0; pass < place.page; ++pass)
        run.fixture.window->OnTimer();
    QVERIFY(run.fixture.showsStatus(
        QStringLiteral("Netzwerkfehler auf Seite %1, Wiederholung 1/3...").arg(place.page)));
    QVERIFY(run.spoiltAnswers() >= 3);
    run.fixture.tickToEnd();
    QCOMPARE(run.fixture.answers.titles(), QStringList {QStringLiteral("Beendet:")});
    QVERIFY(run.leftTheSame());
}

LEDORA_APP_TEST_MAIN(tst_run_faults_pass)

#include "tst_run_faults_pass.moc"
