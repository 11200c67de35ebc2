#include "app/orderscan.h"

#include <QJsonDocument>
#include <QtTest>

/// The order of the columns for keys beyond the basic plane.
class tst_key_order : public QObject
{
    Q_OBJECT

private slots:
    void columnsFollowTheCodeUnits_data();
    void columnsFollowTheCodeUnits();
};

void tst_key_order::columnsFollowTheCodeUnits_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("prefix");
    const QByteArray raw("{\"\xEF\xBC\xA1\":1,\"\xEE\x80\x80\":2,\"\xF0\x9F\x98\x80\":3,\"z\":4}");
    const QByteArray escaped(R"({"\uff21":1,"\ue000":2,"\ud83d\ude00":3,"z":4})");
    QTest::newRow("bytes") << raw << QString();
    QTest::newRow("escapes") << escaped << QString();
    QTest::newRow("bytes in an object") << "{\"o\":" + raw + '}' << QStringLiteral("o_");
    QTest::newRow("escapes in an object") << "{\"o\":" + escaped + '}' << QStringLiteral("o_");
}

void tst_key_order::columnsFollowTheCodeUnits()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, prefix);
    QStringList columns;
    for (const auto& [text, column] : scanOrder(QJsonDocument::fromJson(json).object()).fields)
        columns.append(text + QLatin1Char(' ') + column);
    QStringList expected;
    for (const auto& [text, key] :
         {std::pair("4", u"z"), {"3", u"\U0001F600"}, {"2", u"\uE000"}, {"1", u"\uFF21"}})
        expected.append(QLatin1String(text) + QLatin1String(" \"") + prefix
                        + QString::fromUtf16(key) + QLatin1Char('"'));
    QCOMPARE(columns, expected);
}

QTEST_GUILESS_MAIN(tst_key_order)

#include "tst_key_order.moc"
