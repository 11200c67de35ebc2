#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include "tools/demo_shop/recorded_shop.h"

#include <QPlainTextEdit>

/// Runs with a date filter on a machine in Germany, against recordings made with the same filter.
class tst_recorded_windows : public QObject
{
    Q_OBJECT

public:
    explicit tst_recorded_windows(const StartFolder& folder)
        : m_folder(folder)
    {
    }

private slots:
    void theFilterLetsThroughWholeDaysOfGermany_data();
    void theFilterLetsThroughWholeDaysOfGermany();

private:
    const StartFolder& m_folder;
};

void tst_recorded_windows::theFilterLetsThroughWholeDaysOfGermany_data()
{
    QTest::addColumn<QDate>("after");
    QTest::addColumn<QDate>("before");
    QTest::addColumn<QList<int>>("expected");
    // Across the change to summer time, with orders on the first and the last second.
    QTest::newRow("a month") << QDate(2026, 3, 1) << QDate(2026, 3, 31)
                             << QList<int> {50, 52, 54, 56, 58, 61, 63, 66, 67, 68, 69, 70};
    QTest::newRow("no end") << QDate(2026, 4, 1) << QDate()
                            << QList<int> {71, 72, 75, 77, 78, 79, 80, 81, 82, 83};
    QTest::newRow("no begin") << QDate() << QDate(2026, 1, 31)
                              << QList<int> {31, 32, 33, 34, 35, 36, 37, 38};
    QTest::newRow("a year without orders")
        << QDate(2024, 1, 1) << QDate(2024, 12, 31) << QList<int> {};
}

void tst_recorded_windows::theFilterLetsThroughWholeDaysOfGermany()
{
    QFETCH(QDate, after);
    QFETCH(QDate, before);
    QFETCH(QList<int>, expected);
    RunFixture fixture(m_folder);
    const demo_shop::RecordedShop shop(QStringLiteral(LEDORA_TEST_DATA "/recordings"));
    QVERIFY2(shop.isValid(), qPrintable(shop.errorString()));
    fixture.shop.setHandler(shop);
    MainWindow& window = fixture.start();
    window.date_filter_use = true;
    window.date_filter_after = after;
    window.date_filter_before = before;
    fixture.runToEnd();

    QCOMPARE(fixture.answers.titles(), QStringList({QStringLiteral("Beendet:")}));
    QList<int> logged;
    const QStringList lines =
        window.logEdit->toPlainText().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& line : lines)
        logged.append(
            line.section(QStringLiteral("ID: "), 1).section(QLatin1Char(','), 0, 0).toInt());
    QCOMPARE(logged, expected);
    QCOMPARE(m_folder.exported().isEmpty(), expected.isEmpty());
}

LEDORA_APP_TEST_MAIN(tst_recorded_windows)
#include "tst_recorded_windows.moc"
