#include "app/shopurls.h"

#include <QtTest>

/// The bounds of the order list on a machine in the German zone.
class tst_shopurls_berlin : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void boundsAreLocalMidnights_data();
    void boundsAreLocalMidnights();
};

void tst_shopurls_berlin::initTestCase()
{
    QCOMPARE(QDateTime(QDate(2024, 1, 1), QTime(0, 0)).offsetFromUtc(), 3600);
    QCOMPARE(QDateTime(QDate(2024, 7, 1), QTime(0, 0)).offsetFromUtc(), 7200);
}

void tst_shopurls_berlin::boundsAreLocalMidnights_data()
{
    QTest::addColumn<QDate>("day");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("before");
    QTest::newRow("winter") << QDate(2024, 1, 1) << "2023-12-31T23:00:00Z"
                            << "2024-01-01T23:00:00Z";
    QTest::newRow("summer") << QDate(2024, 7, 1) << "2024-06-30T22:00:00Z"
                            << "2024-07-01T22:00:00Z";
    // The day is added to the UTC time, so the bound lies an hour after the next local midnight,
    QTest::newRow("summer time begins") << QDate(2024, 3, 31) << "2024-03-30T23:00:00Z"
                                        << "2024-03-31T23:00:00Z";
    // and an hour before it in autumn.
    QTest::newRow("summer time ends") << QDate(2024, 10, 27) << "2024-10-26T22:00:00Z"
                                      << "2024-10-27T22:00:00Z";
}

void tst_shopurls_berlin::boundsAreLocalMidnights()
{
    QFETCH(QDate, day);
    const QUrlQuery query(ordersUrl(QStringLiteral("http://shop.example"), 1, {day, day}));
    QTEST(query.queryItemValue(QStringLiteral("after")), "after");
    QTEST(query.queryItemValue(QStringLiteral("before")), "before");
}

QTEST_GUILESS_MAIN(tst_shopurls_berlin)

#include "tst_shopurls_berlin.moc"
