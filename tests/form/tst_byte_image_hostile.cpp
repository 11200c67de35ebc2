#include "form/mod_form_qt.h"

#include <QtTest>
#include <QtWidgets>

using namespace mod_form_qt;
using Map = QMap<QString, QVariant>;
using Writer = std::function<void(QDataStream&)>;

Q_DECLARE_METATYPE(Writer)

namespace {

constexpr quint32 many = 20000000; // some hundred megabytes of whatever it is a number of
constexpr int tooDeep = 40000; // the stack would not hold them

QByteArray stream(const Writer& write)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(19);
    write(out);
    return bytes;
}

/// An image with one entry, whose value is written by hand.
QByteArray imageOf(const Writer& value)
{
    return stream([&](QDataStream& out) {
        out << qint32(1379353973) << qint8(1) << quint32(1) << QString("a");
        value(out);
    });
}

QByteArray imageOf(const Map& map)
{
    QByteArray out;
    if (!INFO::variantMapToByteArray(map, out, nullptr))
        qFatal("The image can't be written.");
    return out;
}

void header(QDataStream& out, quint32 type)
{
    out << type << quint8(0);
}

void named(QDataStream& out, const char* name)
{
    header(out, 1024);
    out << name;
}

/// The same, and something behind it, so often.
Writer repeated(const Writer& one)
{
    return [one](QDataStream& out) {
        for (int i = 0; i < tooDeep; ++i)
            one(out);
        out << QVariant(7);
    };
}

/// The value of a line of the process's state, in kilobytes.
qint64 processState(const QByteArray& name)
{
    QFile file("/proc/self/status");
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith(name + ':'))
            return line.mid(name.size() + 1).chopped(2).trimmed().toLongLong();
    }
    return -1;
}

QVariant nestedIn(int levels, const std::function<QVariant(const QVariant&)>& wrap)
{
    QVariant value = 7;
    for (int i = 0; i < levels; ++i)
        value = wrap(value);
    return value;
}

QVariant inAList(const QVariant& value)
{
    return QVariantList {value};
}

QVariant inAMap(const QVariant& value)
{
    return QVariantMap {{"x", value}};
}

QVariant inAVariant(const QVariant& value)
{
    return QVariant(QMetaType::fromType<QVariant>(), &value);
}

QVariant inAPair(const QVariant& value)
{
    return QVariant::fromValue(QVariantPair(1, value));
}

QVariant inAFormat(const QVariant& value)
{
    QTextFormat format(QTextFormat::CharFormat);
    format.setProperty(QTextFormat::UserProperty, value);
    return QVariant::fromValue(format);
}

/// A gradient, a texture and all else that holds more than a fixed number of things.
Map composedValues()
{
    QLinearGradient linear(0, 1, 2, 3);
    linear.setStops({{0.0, Qt::red}, {0.5, Qt::green}, {1.0, Qt::blue}});
    QImage texture(3, 2, QImage::Format_ARGB32);
    texture.fill(Qt::yellow);
    QPen pen(QBrush(QRadialGradient(10, 20, 30)), 2.5);
    pen.setDashPattern({1, 2, 3, 4});
    QPalette palette(Qt::red);
    palette.setBrush(QPalette::Text, QConicalGradient(1, 2, 30));
    QFont font("Sans", 12);
    font.setFamilies({"Sans", "Serif", "Mono"});
    font.setStyleName("Bold");
    return {
        {"linear", QBrush(linear)},
        {"radial", QBrush(QRadialGradient(10, 20, 30))},
        {"conical", QBrush(QConicalGradient(1, 2, 30))},
        {"texture", QBrush(texture)},
        {"pen", pen},
        {"palette", palette},
        {"font", font},
        {"region", QRegion(0, 0, 10, 10).xored(QRegion(2, 2, 3, 3))},
        {"no region", QRegion()},
        {"format", inAFormat(QVariantList {1, QString("zwei"), inAFormat(3)})},
        {"bytes", QVariant::fromValue(QByteArrayList {"a", "bc"})},
        {"variant", inAVariant("innen")},
        {"pair", inAPair("zweiter")},
        {"character", QVariant::fromValue(char16_t('x'))},
        {"numbers", QVariant::fromValue(QList<int> {1, 2, 3})},
        {"flags", QVariant::fromValue(QFlags<Qt::AlignmentFlag>(Qt::AlignRight))},
        {"alignments",
         QVariant::fromValue(QMap<int, QFlags<Qt::AlignmentFlag>> {{1, Qt::AlignRight}})},
    };
}

} // namespace

/// What bytes of unknown origin may claim, and what is therefore neither read nor written.
class tst_byte_image_hostile : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void aVariantInsideAVariantNestedTooDeep();
    void isNestedTooDeep_data();
    void isNestedTooDeep();
    void aNamedContainerIsRefused_data();
    void aNamedContainerIsRefused();
    void claimsMoreThanThereIs_data();
    void claimsMoreThanThereIs();
    void typesOfOtherVersionsAreRefused_data();
    void typesOfOtherVersionsAreRefused();
    void aRegionMadeOfRegionsIsRefused();
    void composedValuesComeBack_data();
    void composedValuesComeBack();
    void composedValuesAreCutAtEveryByte();
    void everyTypeComesBackOrIsLeftOut();
    void whatIsNestedTooDeepIsNotWritten_data();
    void whatIsNestedTooDeepIsNotWritten();
    void manyFormatsInsideEachOtherAreReadOnce();
    void anEasingCurveIsLeftOut();
    void aFormatWithoutFontFamiliesIsLeftOut();
};

void tst_byte_image_hostile::initTestCase()
{
    // Which makes them known by their names.
    qRegisterMetaType<QList<int>>();
    qRegisterMetaType<QList<QList<int>>>();
    qRegisterMetaType<QList<QVariantMap>>();
    qRegisterMetaType<QMap<int, QVariant>>();
}

void tst_byte_image_hostile::aVariantInsideAVariantNestedTooDeep()
{
    Map map {{"old", 1}};
    QVERIFY(!INFO::byteArrayToVariantMap(
        imageOf(repeated([](QDataStream& out) { header(out, 41); })), map));
    QVERIFY(map.isEmpty());
    QVERIFY(INFO::byteArrayToVariantMap(imageOf(Map {{"a", nestedIn(50, inAVariant)}}), map));
    QCOMPARE(map.value("a").typeId(), int(QMetaType::QVariant));
}

void tst_byte_image_hostile::isNestedTooDeep_data()
{
    QTest::addColumn<QByteArray>("in");
    QTest::newRow("lists by name") << imageOf(repeated([](QDataStream& out) {
        named(out, "QVariantList");
        out << quint32(1);
    }));
    QTest::newRow("maps by name") << imageOf(repeated([](QDataStream& out) {
        named(out, "QVariantMap");
        out << quint32(1) << QString("x");
    }));
    QTest::newRow("variants by name")
        << imageOf(repeated([](QDataStream& out) { named(out, "QVariant"); }));
    QTest::newRow("pairs") << imageOf(repeated([](QDataStream& out) {
        named(out, "QVariantPair");
        out << QVariant(1);
    }));
    QTest::newRow("text formats") << imageOf(repeated([](QDataStream& out) {
        header(out, 78);
        out << qint32(2) << quint32(1) << qint32(1);
    }));
    QTest::newRow("maps by number in a container of the program's") << imageOf([](QDataStream& o) {
        named(o, "QMap<int,QVariant>");
        o << quint32(1) << qint32(1);
        repeated([](QDataStream& out) {
            header(out, 9);
            out << quint32(1);
        })(o);
    });
}

void tst_byte_image_hostile::isNestedTooDeep()
{
    QFETCH(QByteArray, in);
    Map map {{"old", 1}};
    QVERIFY(!INFO::byteArrayToVariantMap(in, map));
    QVERIFY(map.isEmpty());
}

void tst_byte_image_hostile::aNamedContainerIsRefused_data()
{
    QTest::addColumn<QByteArray>("in");
    for (const char* name : {"QVariantList", "QVariantMap", "QVariantHash", "QStringList",
                             "QByteArrayList", "QPolygon", "QTextFormat", "QList<QVariant>",
                             "QList<QList<int>>", "QList<QVariantMap>", "QMap<int,QVariant>"}) {
        // Empty ones as well: nothing depends on what would follow.
        QTest::addRow("%s", name) << imageOf([name](QDataStream& out) {
            named(out, name);
            out << quint32(0);
        });
    }
    QTest::newRow("without a name") << imageOf([](QDataStream& out) {
        header(out, 1024);
        out << quint32(0xffffffff) << quint32(0);
    });
}

void tst_byte_image_hostile::aNamedContainerIsRefused()
{
    QFETCH(QByteArray, in);
    Map map {{"old", 1}};
    QVERIFY(!INFO::byteArrayToVariantMap(in, map));
    QVERIFY(map.isEmpty());
}

void tst_byte_image_hostile::claimsMoreThanThereIs_data()
{
    QTest::addColumn<Writer>("value");
    const auto byType = [](const char* row, quint32 type) {
        QTest::newRow(row) << Writer([type](QDataStream& out) {
            header(out, type);
            out << many;
        });
    };
    const auto byName = [](const char* name, quint32 number) {
        QTest::newRow(name) << Writer([name, number](QDataStream& out) {
            named(out, name);
            out << number;
        });
    };
    byType("texts", 11);
    byType("byte arrays", 49);
    byType("polygon", 71);
    byName("QVariantList", many);
    byName("QStringList", many);
    byName("QList<int>", 6 * many);
    byName("QList<QList<int>>", many);
    QTest::newRow("a list in a list of the program's") << Writer([](QDataStream& out) {
        named(out, "QList<QList<int>>");
        out << quint32(1) << 6 * many;
    });
    const Writer gradient = [](QDataStream& out) {
        out << quint8(Qt::LinearGradientPattern) << QColor(Qt::red)
            << qint32(QGradient::LinearGradient) << qint32(0) << qint32(0) << qint32(0) << many;
    };
    QTest::newRow("stops of a gradient") << Writer([gradient](QDataStream& out) {
        header(out, 66);
        gradient(out);
    });
    QTest::newRow("stops of a pen") << Writer([gradient](QDataStream& out) {
        header(out, 76);
        out << quint16(1) << false << 1.0;
        gradient(out);
    });
    QTest::newRow("dashes of a pen") << Writer([](QDataStream& out) {
        header(out, 76);
        out << quint16(1) << false << 1.0 << QBrush(Qt::red) << 2.0 << many;
    });
    QTest::newRow("stops of a palette") << Writer([gradient](QDataStream& out) {
        header(out, 68);
        out << QBrush(Qt::red) << QBrush(Qt::blue);
        gradient(out);
    });
    QTest::newRow("families of a font") << Writer([](QDataStream& out) {
        const QByteArray font = stream([](QDataStream& one) { one << QFont("Sans", 12); });
        header(out, 64);
        out.writeRawData(font.constData(), int(font.size()) - 4);
        out << many;
    });
    QTest::newRow("points of a region") << Writer([](QDataStream& out) {
        header(out, 72);
        out << stream([](QDataStream& one) { one << qint32(3) << many; });
    });
    QTest::newRow("properties of a text format") << Writer([](QDataStream& out) {
        header(out, 78);
        out << qint32(2) << quint32(1) << qint32(1);
        header(out, 49);
        out << many;
    });
    QTest::newRow("steps of an easing curve") << Writer([](QDataStream& out) {
        header(out, 29);
        out << quint8(QEasingCurve::BezierSpline) << quint64(0) << true << 1.0 << 1.0 << 1.0
            << many;
    });
}

void tst_byte_image_hostile::claimsMoreThanThereIs()
{
    QFETCH(Writer, value);
    const QByteArray in = imageOf(value);
    const qint64 before = processState("VmPeak");
    Map map {{"old", 1}};
    QVERIFY(!INFO::byteArrayToVariantMap(in, map));
    QVERIFY(map.isEmpty());
    if (before < 0)
        QSKIP("The memory of a process can't be asked for here.");
    const qint64 grown = processState("VmPeak") - before;
    QVERIFY2(grown < 32 * 1024, qPrintable(QString("%1 kB").arg(grown)));
}

void tst_byte_image_hostile::typesOfOtherVersionsAreRefused_data()
{
    QTest::addColumn<quint32>("type");
    QTest::newRow("a brush") << quint32(QMetaType::QBrush);
    QTest::newRow("a polygon") << quint32(QMetaType::QPolygon);
    QTest::newRow("a pair") << quint32(QMetaType::QVariantPair);
    QTest::newRow("one of the program's") << quint32(qMetaTypeId<QList<QVariantMap>>());
}

void tst_byte_image_hostile::typesOfOtherVersionsAreRefused()
{
    QFETCH(quint32, type);
    Map map {{"old", 1}};
    QVERIFY(!INFO::byteArrayToVariantMap(imageOf([type](QDataStream& out) {
                                             header(out, type);
                                             out << QByteArray(200, '\0');
                                         }),
                                         map));
}

void tst_byte_image_hostile::aRegionMadeOfRegionsIsRefused()
{
    QByteArray inner = stream([](QDataStream& out) { out << qint32(1) << QRect(0, 0, 5, 5); });
    for (int level = 0; level < 100; ++level)
        inner = stream([&](QDataStream& out) { out << qint32(6) << inner << inner.left(4); });
    Map map {{"old", 1}};
    QVERIFY(!INFO::byteArrayToVariantMap(imageOf([&](QDataStream& out) {
                                             header(out, 72);
                                             out << inner;
                                         }),
                                         map));
}

void tst_byte_image_hostile::composedValuesComeBack_data()
{
    QTest::addColumn<QString>("key");
    const Map values = composedValues();
    for (auto value = values.cbegin(); value != values.cend(); ++value)
        QTest::newRow(qPrintable(value.key())) << value.key();
}

void tst_byte_image_hostile::composedValuesComeBack()
{
    QFETCH(QString, key);
    const QVariant value = composedValues().value(key);
    const QByteArray image = imageOf({{"a", value}, {"b", "dahinter"}});
    Map map;
    QVERIFY(INFO::byteArrayToVariantMap(image, map));
    QCOMPARE(map.keys(), QStringList({"a", "b"}));
    QCOMPARE(map.value("a").metaType(), value.metaType());
    QCOMPARE(map.value("b"), "dahinter");
    // Not all of these types can be compared, but all can be written again.
    QCOMPARE(imageOf(map).toHex(), image.toHex());
}

void tst_byte_image_hostile::composedValuesAreCutAtEveryByte()
{
    const Map values = composedValues();
    for (auto value = values.cbegin(); value != values.cend(); ++value) {
        const QByteArray whole = imageOf({{"a", value.value()}});
        for (qsizetype length = whole.size() - 1; length > 8; length -= 1 + length / 200) {
            Map map {{"old", 1}};
            QVERIFY2(!INFO::byteArrayToVariantMap(whole.left(length), map),
                     qPrintable(QString("%1 %2").arg(value.key()).arg(length)));
        }
    }
}

void tst_byte_image_hostile::everyTypeComesBackOrIsLeftOut()
{
    QList<int> ids {QMetaType::QSizePolicy};
    for (int id = QMetaType::Bool; id <= QMetaType::QVariantPair; ++id)
        ids << id;
    for (int id = QMetaType::QFont; id <= QMetaType::QColorSpace; ++id)
        ids << id;
    int tried = 0;
    for (const int id : std::as_const(ids)) {
        if (!QMetaType::isRegistered(id) || !QMetaType(id).hasRegisteredDataStreamOperators())
            continue;
        ++tried;
        const QMetaType type(id);
        Map map;
        const Map written {{"a", QVariant(type)}, {"b", "dahinter"}};
        QVERIFY2(INFO::byteArrayToVariantMap(imageOf(written), map), type.name());
        const bool leftOut = id == QMetaType::QEasingCurve;
        QCOMPARE(map.contains("a"), !leftOut);
        if (!leftOut)
            QCOMPARE(map.value("a").metaType(), type);
        QCOMPARE(map.value("b"), "dahinter");
    }
    QVERIFY(tried > 70);
}

void tst_byte_image_hostile::whatIsNestedTooDeepIsNotWritten_data()
{
    QTest::addColumn<int>("kind");
    for (int kind = 0; kind < 5; ++kind)
        QTest::addRow(
            "%s", qPrintable(QStringList({"list", "map", "variant", "pair", "text format"})[kind]))
            << kind;
}

void tst_byte_image_hostile::whatIsNestedTooDeepIsNotWritten()
{
    QFETCH(int, kind);
    const std::function<QVariant(const QVariant&)> wraps[] = {inAList, inAMap, inAVariant, inAPair,
                                                              inAFormat};
    const Map map {{"a", 1}, {"deep", nestedIn(64, wraps[kind])}, {"z", 2}};
    Map read;
    QVERIFY(INFO::byteArrayToVariantMap(imageOf(map), read));
    QCOMPARE(read.keys(), map.keys());
    const Map deeper {{"a", 1}, {"deep", nestedIn(65, wraps[kind])}, {"z", 2}};
    QVERIFY(INFO::byteArrayToVariantMap(imageOf(deeper), read));
    QCOMPARE(read, (Map {{"a", 1}, {"z", 2}}));
}

void tst_byte_image_hostile::manyFormatsInsideEachOtherAreReadOnce()
{
    // Twice at each level would take for ever.
    const QVariant formats = nestedIn(60, inAFormat);
    Map read;
    QVERIFY(INFO::byteArrayToVariantMap(imageOf({{"a", formats}}), read));
    QVariant inner = read.value("a");
    for (int level = 0; level < 60; ++level)
        inner = inner.value<QTextFormat>().property(QTextFormat::UserProperty);
    QCOMPARE(inner, 7);
}

void tst_byte_image_hostile::anEasingCurveIsLeftOut()
{
    // It is written with the address of its function, which is another one when it is read.
    Map read;
    QVERIFY(INFO::byteArrayToVariantMap(
        imageOf({{"a", QVariant::fromValue(QEasingCurve(QEasingCurve::InQuad))}, {"b", 1}}), read));
    QCOMPARE(read, (Map {{"b", 1}}));
    QVERIFY(!INFO::byteArrayToVariantMap(imageOf([](QDataStream& out) {
                                             header(out, 29);
                                             out << QEasingCurve(QEasingCurve::InQuad);
                                         }),
                                         read));
}

void tst_byte_image_hostile::aFormatWithoutFontFamiliesIsLeftOut()
{
    // The toolkit crashes when it writes one.
    QTextFormat none(QTextFormat::CharFormat);
    none.setProperty(QTextFormat::FontFamilies, QStringList());
    QTextFormat one(QTextFormat::CharFormat);
    one.setProperty(QTextFormat::FontFamilies, QStringList("Serif"));
    Map read;
    QVERIFY(INFO::byteArrayToVariantMap(
        imageOf({{"none", none}, {"inside", inAFormat(none)}, {"one", one}}), read));
    QCOMPARE(read.keys(), QStringList("one"));
}

QTEST_MAIN(tst_byte_image_hostile)

#include "tst_byte_image_hostile.moc"
