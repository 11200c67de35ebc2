#include "form/mod_form_qt.h"

#include <QtTest>
#include <QtWidgets>

using namespace mod_form_qt;
using Map = QMap<QString, QVariant>;

namespace {

QByteArray bytes(const char* hex)
{
    return QByteArray::fromHex(hex);
}

const char* const header = "52374575"
                           "01";

/// One of everything that a form holds, and some that only a programmer puts there.
Map everything()
{
    return {
        {"bool", true},
        {"int", -5},
        {"double", 1.5},
        {"text", QString("Grüße €")},
        {"empty", QString()},
        {"invalid", QVariant()},
        {"date", QDate(2026, 11, 21)},
        {"datetime", QDateTime(QDate(2026, 11, 21), QTime(12, 30), Qt::UTC)},
        {"bytes", QByteArray("\0\1\2", 3)},
        {"list", QVariantList {1, QString("zwei"), QVariantList {3.0}}},
        {"texts", QStringList {"a", "b"}},
        {"map", QVariantMap {{"in", 1}, {"deep", QVariantMap {{"er", true}}}}},
        {"hash", QVariantHash {{"x", 1}}},
        {"color", QColor(Qt::red)},
        {"font", QFont("Sans", 12)},
        {"polygon", QPolygon({QPoint(1, 2), QPoint(3, 4)})},
        {"polygonf", QPolygonF({QPointF(1, 2)})},
        {"keys", QKeySequence("Ctrl+S")},
        {"size", QSize(3, 4)},
    };
}

QByteArray imageOf(const Map& map)
{
    QByteArray out;
    if (!INFO::variantMapToByteArray(map, out, nullptr))
        qFatal("The image can't be written.");
    return out;
}

} // namespace

/// A map as bytes, and back from bytes that may be damaged.
class tst_byte_image : public QObject
{
    Q_OBJECT

private slots:
    void writesTheBytesOfTheFormat_data();
    void writesTheBytesOfTheFormat();
    void readsBytesWrittenByHand();
    void bringsEveryTypeBack();
    void writesWhatAFileWouldHold();
    void takesOnlyTheKeysOfTheFilter();
    void replacesWhatWasThere();
    void anEmptyMapReadsBackAsFalse();
    void leavesTheMapAloneIfItIsNoImage_data();
    void leavesTheMapAloneIfItIsNoImage();
    void isCutAtEveryByte();
    void survivesEveryFlippedBit();
    void claimsMoreThanThereIs_data();
    void claimsMoreThanThereIs();
    void isNestedTooDeep();
    void takesNoTemporaryKeyFromOutside();
};

void tst_byte_image::writesTheBytesOfTheFormat_data()
{
    QTest::addColumn<Map>("map");
    QTest::addColumn<QByteArray>("expected");
    const QByteArray head = bytes(header);
    QTest::newRow("empty") << Map() << head + bytes("00000000");
    // Key "a": length in bytes, then two bytes a character. Value: type, null mark, data.
    QTest::newRow("int") << Map {{"a", 7}}
                         << head
            + bytes("00000001"
                    "00000002"
                    "0061")
            + bytes("00000002"
                    "00"
                    "00000007");
    QTest::newRow("bool and text in key order") << Map {{"b", QString("x")}, {"a", true}}
                                                << head + bytes("00000002")
            + bytes("00000002"
                    "0061"
                    "00000001"
                    "00"
                    "01")
            + bytes("00000002"
                    "0062"
                    "0000000a"
                    "00"
                    "00000002"
                    "0078");
    QTest::newRow("a list") << Map {{"l", QVariantList {1}}}
                            << head
            + bytes("00000001"
                    "00000002"
                    "006c"
                    "00000009"
                    "00"
                    "00000001")
            + bytes("00000002"
                    "00"
                    "00000001");
}

void tst_byte_image::writesTheBytesOfTheFormat()
{
    QFETCH(Map, map);
    QFETCH(QByteArray, expected);
    QCOMPARE(imageOf(map).toHex(), expected.toHex());
}

void tst_byte_image::readsBytesWrittenByHand()
{
    Map map;
    QVERIFY(INFO::byteArrayToVariantMap(bytes(header)
                                            + bytes("00000001"
                                                    "00000002"
                                                    "0061"
                                                    "00000002"
                                                    "00")
                                            + bytes("0000002a"),
                                        map));
    QCOMPARE(map, (Map {{"a", 42}}));
}

void tst_byte_image::bringsEveryTypeBack()
{
    const Map written = everything();
    Map read;
    QVERIFY(INFO::byteArrayToVariantMap(imageOf(written), read));
    QCOMPARE(read.keys(), written.keys());
    for (auto entry = written.cbegin(); entry != written.cend(); ++entry) {
        QCOMPARE(read.value(entry.key()).metaType(), entry.value().metaType());
        QCOMPARE(read.value(entry.key()), entry.value());
    }
}

void tst_byte_image::writesWhatAFileWouldHold()
{
    QVariant variable = QString("bound");
    const T_LISTDATA list {{"one", false, 1, {}}, {"two", true, 2, {}}};
    const Map map {
        {"bound", QVariant::fromValue(&variable)},
        {"list", QVariant::fromValue(list)},
        {"pointer", QVariant::fromValue(static_cast<QObject*>(this))},
        {INFO::automatikVarName + "x", 1},
        {INFO::widgetDataVarName + "x", 1},
        {INFO::objectDataVarName + "x", 1},
    };
    Map read;
    QVERIFY(INFO::byteArrayToVariantMap(imageOf(map), read));
    QCOMPARE(read, (Map {{"bound", "bound"}, {"list", QVariantList {2}}}));
}

void tst_byte_image::takesOnlyTheKeysOfTheFilter()
{
    const QSet<QString> keys {"a", "missing"};
    QByteArray out("something");
    QVERIFY(INFO::variantMapToByteArray({{"a", 1}, {"b", 2}}, out, &keys));
    Map read;
    QVERIFY(INFO::byteArrayToVariantMap(out, read));
    QCOMPARE(read, (Map {{"a", 1}}));
}

void tst_byte_image::replacesWhatWasThere()
{
    Map read {{"old", 1}, {"a", 2}};
    QVERIFY(INFO::byteArrayToVariantMap(imageOf({{"a", 3}}), read));
    QCOMPARE(read, (Map {{"a", 3}}));
}

void tst_byte_image::anEmptyMapReadsBackAsFalse()
{
    Map read {{"old", 1}};
    QVERIFY(!INFO::byteArrayToVariantMap(imageOf({}), read));
    QVERIFY(read.isEmpty());
}

void tst_byte_image::leavesTheMapAloneIfItIsNoImage_data()
{
    QTest::addColumn<QByteArray>("in");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("another magic") << bytes("52374576"
                                            "01"
                                            "00000000");
    QTest::newRow("another version") << bytes("52374575"
                                              "02"
                                              "00000000");
    QTest::newRow("little-endian") << bytes("75453752"
                                            "01"
                                            "00000000");
    QTest::newRow("cut in the magic") << bytes("523745");
    QTest::newRow("text") << QByteArray("[options]\nmainurl=https://shop.example\n");
}

void tst_byte_image::leavesTheMapAloneIfItIsNoImage()
{
    QFETCH(QByteArray, in);
    Map map {{"old", 1}};
    QVERIFY(!INFO::byteArrayToVariantMap(in, map));
    QCOMPARE(map, (Map {{"old", 1}}));
}

void tst_byte_image::isCutAtEveryByte()
{
    const QByteArray whole = imageOf(everything());
    for (qsizetype length = 0; length < whole.size(); ++length) {
        Map map {{"old", 1}};
        QVERIFY2(!INFO::byteArrayToVariantMap(whole.left(length), map),
                 QByteArray::number(length).constData());
        QCOMPARE(map.isEmpty(), length >= 5);
    }
    Map map;
    QVERIFY(INFO::byteArrayToVariantMap(whole + "and more", map));
}

void tst_byte_image::survivesEveryFlippedBit()
{
    const QByteArray whole = imageOf(everything());
    for (qsizetype bit = 0; bit < whole.size() * 8; ++bit) {
        QByteArray damaged = whole;
        damaged[bit / 8] = char(damaged.at(bit / 8) ^ (1 << (bit % 8)));
        Map map;
        const bool read = INFO::byteArrayToVariantMap(damaged, map);
        QCOMPARE(read, !map.isEmpty());
    }
}

void tst_byte_image::claimsMoreThanThereIs_data()
{
    QTest::addColumn<QByteArray>("in");
    const QByteArray one = bytes(header)
        + bytes("00000001"
                "00000002"
                "0061");
    QTest::newRow("entries") << bytes(header) + bytes("ffffffff");
    QTest::newRow("a key") << bytes(header)
            + bytes("00000001"
                    "7ffffffe"
                    "0061");
    QTest::newRow("a text") << one
            + bytes("0000000a"
                    "00"
                    "7ffffffe"
                    "0061");
    QTest::newRow("bytes") << one
            + bytes("0000000c"
                    "00"
                    "7fffffff"
                    "61");
    QTest::newRow("a list") << one
            + bytes("00000009"
                    "00"
                    "ffffffff");
    QTest::newRow("a list in a list") << one
            + bytes("00000009"
                    "00"
                    "00000001"
                    "00000009"
                    "00"
                    "7fffffff");
    QTest::newRow("texts") << one
            + bytes("0000000b"
                    "00"
                    "ffffffff");
    QTest::newRow("a map") << one
            + bytes("00000008"
                    "00"
                    "ffffffff");
    QTest::newRow("a hash") << one
            + bytes("0000001c"
                    "00"
                    "ffffffff");
    QTest::newRow("a polygon") << one
            + bytes("00000047"
                    "00"
                    "ffffffff");
    QTest::newRow("a polygon of doubles") << one
            + bytes("00000056"
                    "00"
                    "ffffffff");
    QTest::newRow("keys") << one
            + bytes("0000004b"
                    "00"
                    "ffffffff");
    QTest::newRow("an unknown type") << one
            + bytes("0000ffff"
                    "00"
                    "00000000");
    QTest::newRow("an unknown name") << one
            + bytes("00000400"
                    "00"
                    "00000004"
                    "6e6f6e00"
                    "00000000");
}

void tst_byte_image::claimsMoreThanThereIs()
{
    QFETCH(QByteArray, in);
    Map map {{"old", 1}};
    QVERIFY(!INFO::byteArrayToVariantMap(in, map));
    QVERIFY(map.isEmpty());
}

void tst_byte_image::isNestedTooDeep()
{
    const auto nested = [](int levels) {
        QByteArray image = bytes(header)
            + bytes("00000001"
                    "00000002"
                    "0061");
        for (int level = 0; level < levels; ++level)
            image += bytes("00000009"
                           "00"
                           "00000001");
        return image
            + bytes("00000002"
                    "00"
                    "00000007");
    };
    Map map;
    QVERIFY(INFO::byteArrayToVariantMap(nested(50), map));
    QVERIFY(!INFO::byteArrayToVariantMap(nested(200000), map));
    QVERIFY(map.isEmpty());
}

void tst_byte_image::takesNoTemporaryKeyFromOutside()
{
    QByteArray in;
    QDataStream stream(&in, QIODevice::WriteOnly);
    stream.setVersion(19);
    stream << qint32(1379353973) << qint8(1) << quint32(2) << QString(INFO::widgetDataVarName + "x")
           << QVariant(1) << QString("a") << QVariant(2);
    Map map;
    QVERIFY(INFO::byteArrayToVariantMap(in, map));
    QCOMPARE(map, (Map {{"a", 2}}));
}

QTEST_MAIN(tst_byte_image)

#include "tst_byte_image.moc"
