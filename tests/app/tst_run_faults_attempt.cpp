#include "tests/app/fault_run.h"
#include "tests/support/app_test.h"

#include <QLabel>

/// A fault that passes with the next attempt leaves no trace in what the host gets.
class tst_run_faults_attempt : public QObject
{
    Q_OBJECT

public:
    explicit tst_run_faults_attempt(const StartFolder& startFolder)
        : run(startFolder)
    {
    }

private slots:
    void initTestCase();
    void oneFailedAttemptLeavesNoTrace_data();
    void oneFailedAttemptLeavesNoTrace();

private:
    FaultRun run;
};

void tst_run_faults_attempt::initTestCase()
{
    run.remember();
    // Two lines of header, 103 orders, one of them with a second line and one with a refund.
    QCOMPARE(run.rememberedLines(), 2 + 103 + 2);
    QCOMPARE(run.rememberedFiles(), 2);
}

void tst_run_faults_attempt::oneFailedAttemptLeavesNoTrace_data()
{
    QTest::addColumn<int>("phase");
    QTest::addColumn<int>("kind");
    for (int phase = 0; phase < FaultRun::phases().size(); ++phase)
        for (int kind = 0; kind < FaultRun::kinds().size(); ++kind)
            QTest::addRow("%s, %s", FaultRun::phases().at(phase).name,
                          FaultRun::kinds().at(kind).name)
                << phase << kind;
}

void tst_run_faults_attempt::oneFailedAttemptLeavesNoTrace()
{
    QFETCH(int, phase);
    QFETCH(int, kind);
    run.start();
    run.spoilOneAttempt(FaultRun::phases().at(phase), FaultRun::kinds().at(kind).fault);
    int failedPasses = 0;
    for (int pass = 0; pass < 2; ++pass) {
        run.fixture.window->OnTimer();
        failedPasses += run.fixture.window->iPageRetries;
    }
    QVERIFY(run.spoiltAnswers() > 0);
    QCOMPARE(failedPasses, 0);
    QVERIFY2(run.fixture.window->statusLabel->text().startsWith(
                 QLatin1String("<br><b>Netzwerkfehler (")),
             qPrintable(run.fixture.window->statusLabel->text()));
    run.fixture.tickToEnd();
    QCOMPARE(run.fixture.answers.titles(), QStringList {QStringLiteral("Beendet:")});
    QVERIFY(run.leftTheSame());
}

LEDORA_APP_TEST_MAIN(tst_run_faults_attempt)

#include "tst_run_faults_attempt.moc"
