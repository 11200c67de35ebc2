#include "tests/proof/proof_size.h"
#include "tests/proof/reentrancy_journal.h"
#include "tests/proof/reentrancy_road.h"
#include "tests/support/app_test.h"

#include <QDesktopServices>

#include <cstdio>
#include <random>

namespace {

const int iMostFailures = 5;

/// Rows of each of the 103 orders: the second has two lines, the 101st one of its refund.
QList<int> rowsOfOrders()
{
    QList<int> rows(103, 1);
    rows[1] = 2;
    rows[100] = 2;
    return rows;
}

quint32 firstSeed()
{
    bool given = false;
    const quint32 seed = qEnvironmentVariable("LEDORA_SEED").toUInt(&given);
    return given ? seed : std::random_device()() % 1000000000U;
}

/// Every kind of loop that a road can lead through.
QStringList wantedPlaces()
{
    QStringList places {
        QStringLiteral("main loop"),
        QStringLiteral("secret store, restoring"),
        QStringLiteral("secret store, saving"),
        QStringLiteral("request of taxes"),
        QStringLiteral("request of orders, page 1"),
        QStringLiteral("request of orders, page 2"),
        QStringLiteral("request of refunds"),
        QStringLiteral("request of a product"),
        QStringLiteral("request of invoices"),
        QStringLiteral("request of an invoice file"),
        QStringLiteral("box B2C-Einstellung:"),
        QStringLiteral("box Beendet:"),
        QStringLiteral("box Fehler beim Entschlüsseln:"),
        QStringLiteral("box Fehler: failed run"),
        QStringLiteral("box Fehler: file stays"),
        QStringLiteral("box Fehler: unfinished form"),
        QStringLiteral("box ID-Cache löschen"),
        QStringLiteral("dialog 'Zahlmethode (kurz)' bearbeiten:"),
        QStringLiteral("dialog PDF-Ordner:"),
    };
#ifndef LEDORA_SECRET_STORE
    places.append(QStringLiteral("box Fehler beim Verschlüsseln:"));
#endif
    return places;
}

QtMessageHandler testHandler = nullptr;

/// Every window that is shown would add a line about the platform.
void passMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (testHandler && !text.contains(QLatin1String("propagateSizeHints")))
        testHandler(type, context, text);
}

void report(const QString& line)
{
    proof::report("reentrancy: " + line.toStdString());
}

} // namespace

/// Steps of an impatient user in the middle of every loop in which the program waits.
class tst_proof_reentrancy : public QObject
{
    Q_OBJECT

public:
    explicit tst_proof_reentrancy(const StartFolder& startFolder)
        : folder(startFolder)
    {
    }

    /// Takes the place of the browser, which the help buttons would start.
    Q_INVOKABLE void openHelp(const QUrl&) { }

private slots:
    void initTestCase();
    void cleanupTestCase();
    void everyRoadComesToItsEnd();

private:
    void reportTally(int failures) const;
    QStringList missing() const;

    const StartFolder& folder;
    proof::Tally tally;
};

void tst_proof_reentrancy::initTestCase()
{
    for (const char* scheme : {"http", "https"})
        QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), this, "openHelp");
    testHandler = qInstallMessageHandler(passMessage);
}

void tst_proof_reentrancy::cleanupTestCase()
{
    for (const char* scheme : {"http", "https"})
        QDesktopServices::unsetUrlHandler(QString::fromLatin1(scheme));
    qInstallMessageHandler(testHandler);
}

void tst_proof_reentrancy::everyRoadComesToItsEnd()
{
    const int steps = proof::sized(2000, 60);
    quint32 seed = firstSeed();
    report(QStringLiteral("seed=%1 (LEDORA_SEED=%1 repeats it)").arg(seed));

    FaultRun run(folder);
    run.remember();
    const proof::ReferenceExport reference(folder.exported(), rowsOfOrders(), 100);
    QVERIFY(reference.isSound());

    // A loop that few roads lead through may need some more of them.
    const auto goesOn = [&] {
        return tally.steps < steps
            || (proof::isFull() && tally.steps < 2 * steps && !missing().isEmpty());
    };
    QStringList failures;
    for (; goesOn() && failures.size() < iMostFailures; ++seed) {
        const int before = tally.steps;
        proof::Road road(run, reference, tally, seed);
        const QString failure = road.walk(proof::isFull() || before == 0);
        if (proof::isFull() && tally.roads % 25 == 0)
            std::fprintf(stderr, "%d steps on %d roads\n", tally.steps, tally.roads);
        if (failure.isEmpty())
            continue;
        failures.append(QStringLiteral("LEDORA_SEED=%1: %2").arg(seed).arg(failure));
        // Too long for a message of the test's.
        std::fprintf(stderr, "%s\n", proof::Journal::text().constData());
    }
    reportTally(int(failures.size()));
    QVERIFY2(failures.isEmpty(), qPrintable(failures.join(QLatin1Char('\n'))));
    if (proof::isFull())
        QVERIFY2(missing().isEmpty(), qPrintable(missing().join(QLatin1Char('\n'))));
}

/// What no step was done in, and the steps that were never done.
QStringList tst_proof_reentrancy::missing() const
{
    QStringList names;
    for (const QString& place : wantedPlaces()) {
        if (!tally.places.contains(place))
            names.append(QLatin1String("never reached: ") + place);
    }
    for (const QString& kind : proof::namesOfSteps()) {
        if (!tally.kinds.contains(kind))
            names.append(QLatin1String("never done: ") + kind);
    }
    return names;
}

void tst_proof_reentrancy::reportTally(int failures) const
{
    report(QStringLiteral("roads tried=%1 ok=%2 steps=%3 questions=%4 pairs_of_loop_and_step=%5")
               .arg(tally.roads)
               .arg(tally.roads - failures)
               .arg(tally.steps)
               .arg(tally.questions)
               .arg(tally.pairs.size()));
    for (auto it = tally.places.cbegin(); it != tally.places.cend(); ++it)
        report(QStringLiteral("loop '%1' steps=%2").arg(it.key()).arg(it.value()));
    for (auto it = tally.kinds.cbegin(); it != tally.kinds.cend(); ++it)
        report(QStringLiteral("step '%1' tried=%2").arg(it.key()).arg(it.value()));
    for (auto it = tally.ends.cbegin(); it != tally.ends.cend(); ++it)
        report(QStringLiteral("end '%1' roads=%2").arg(it.key()).arg(it.value()));
}

int main(int argc, char** argv)
{
    // Thousands of steps in one function; each road has a limit of its own.
    qputenv("QTEST_FUNCTION_TIMEOUT", "7200000");
    return runAppTest<tst_proof_reentrancy>(argc, argv);
}

#include "tst_proof_reentrancy.moc"
