#include "tools/demo_shop/json_writer.h"
#include "tools/demo_shop/order_model.h"
#include "tools/demo_shop/shop_time.h"

#include <QTest>

class tst_shop_parts : public QObject
{
    Q_OBJECT

private slots:
    void writesJsonWithTheShopsEscapes();
    void germanTimeFollowsTheEuropeanRule_data();
    void germanTimeFollowsTheEuropeanRule();
    void roundsHalvesAwayFromZero_data();
    void roundsHalvesAwayFromZero();
};

void tst_shop_parts::writesJsonWithTheShopsEscapes()
{
    demo_shop::JsonWriter json;
    json.object();
    json.text("a", QStringLiteral("ü/\"\\\r\n\t\x01"));
    json.array("b");
    json.amount(nullptr, -5);
    json.amount(nullptr, 123456);
    json.real(nullptr, 6.6386555);
    json.end();
    json.emptyArray("c");
    json.null("d");
    json.flag("e", true);
    json.end();
    QCOMPARE(json.bytes(),
             R"({"a":"\u00fc\/\"\\\r\n\t\u0001","b":["-0.05","1234.56",6.6386555],"c":[],"d":null,)"
             R"("e":true})");
}

void tst_shop_parts::germanTimeFollowsTheEuropeanRule_data()
{
    QTest::addColumn<QString>("utc");
    QTest::addColumn<QString>("local");
    QTest::newRow("winter") << "2026-01-05T08:15:00"
                            << "2026-01-05T09:15:00";
    QTest::newRow("last second before summer time") << "2026-03-29T00:59:59"
                                                    << "2026-03-29T01:59:59";
    QTest::newRow("first second of summer time") << "2026-03-29T01:00:00"
                                                 << "2026-03-29T03:00:00";
    QTest::newRow("last second of summer time") << "2026-10-25T00:59:59"
                                                << "2026-10-25T02:59:59";
    QTest::newRow("first second after it") << "2026-10-25T01:00:00"
                                           << "2026-10-25T02:00:00";
    QTest::newRow("a 31st that is a Sunday") << "2024-03-31T01:00:00"
                                             << "2024-03-31T03:00:00";
}

void tst_shop_parts::germanTimeFollowsTheEuropeanRule()
{
    QFETCH(QString, utc);
    QFETCH(QString, local);
    const auto moment = demo_shop::momentOf(utc, true);
    QVERIFY(moment.has_value());
    QCOMPARE(demo_shop::gmtText(*moment), utc);
    QCOMPARE(demo_shop::localText(*moment), local);
}

void tst_shop_parts::roundsHalvesAwayFromZero_data()
{
    QTest::addColumn<qint64>("dividend");
    QTest::addColumn<qint64>("divisor");
    QTest::addColumn<qint64>("expected");
    QTest::newRow("below") << qint64(14) << qint64(10) << qint64(1);
    QTest::newRow("half") << qint64(15) << qint64(10) << qint64(2);
    QTest::newRow("negative half") << qint64(-15) << qint64(10) << qint64(-2);
    QTest::newRow("negative below") << qint64(-14) << qint64(10) << qint64(-1);
    QTest::newRow("odd divisor") << qint64(4) << qint64(3) << qint64(1);
}

void tst_shop_parts::roundsHalvesAwayFromZero()
{
    QFETCH(qint64, dividend);
    QFETCH(qint64, divisor);
    QTEST(demo_shop::roundedQuotient(dividend, divisor), "expected");
}

QTEST_GUILESS_MAIN(tst_shop_parts)
#include "tst_shop_parts.moc"
