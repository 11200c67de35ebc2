#include "form/mod_form_qt.h"
#include "form/persist/ini_check.h"
#include "form/persist/ini_texts.h"

#include <QDataStream>
#include <QFile>
#include <QFont>
#include <QPalette>
#include <QPolygonF>
#include <QRandomGenerator>
#include <QRegion>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTextFormat>

#include <functional>

using namespace mod_form_qt;

namespace {

const QString group = "options";
constexpr int variantVersion = QDataStream::Qt_4_0;
constexpr int dateTimeVersion = QDataStream::Qt_5_6;
// As many as can be made room for, so that a reader that believes it comes to an end.
constexpr quint32 claimedPoints = 4'000'000;

QByteArray contents(const QString& file)
{
    QFile opened(file);
    return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
}

void writeContents(const QString& file, const QByteArray& bytes)
{
    QFile opened(file);
    QVERIFY(opened.open(QIODevice::WriteOnly) && opened.write(bytes) == bytes.size());
}

/// The bytes that \a write puts into a stream of that version.
QByteArray streamed(int version, const std::function<void(QDataStream&)>& write)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(version);
    write(stream);
    return bytes;
}

void writeType(QDataStream& stream, quint32 type)
{
    stream << type;
    if (stream.version() >= QDataStream::Qt_4_2)
        stream << quint8(0);
}

void writeNamedType(QDataStream& stream, const QByteArray& name)
{
    writeType(stream, stream.version() < QDataStream::Qt_5_0 ? 127 : 1024);
    // With the zero at its end, as the toolkit writes it.
    stream << QByteArray(name.constData(), name.size() + 1);
}

/// Points that are not there.
void writePoints(QDataStream& stream)
{
    writeNamedType(stream, "QPolygonF");
    stream << claimedPoints << 1.0 << 2.0;
}

/// A list in a list, and so on.
void writeNested(QDataStream& stream, int depth)
{
    for (int left = depth; left > 0; --left) {
        writeType(stream, QMetaType::QVariantList);
        stream << quint32(1);
    }
    writeType(stream, QMetaType::Int);
    stream << qint32(7);
}

QByteArray escaped(const QByteArray& bytes)
{
    QByteArray text;
    for (const char byte : bytes)
        text += "\\x" + QByteArray::number(uchar(byte), 16);
    return text;
}

QByteArray octal(const QByteArray& bytes)
{
    QByteArray text;
    for (const char byte : bytes)
        text += "\\" + QByteArray::number(uchar(byte), 8).rightJustified(3, '0');
    return text;
}

QByteArray variantText(const std::function<void(QDataStream&)>& write)
{
    return "@Variant(" + escaped(streamed(variantVersion, write)) + ")";
}

QByteArray dateTimeText(const std::function<void(QDataStream&)>& write)
{
    return "@DateTime(" + escaped(streamed(dateTimeVersion, write)) + ")";
}

QPolygonF polygon(const QList<QPointF>& points)
{
    return QPolygonF(points);
}

QByteArray fileWith(const QByteArray& value)
{
    return "[options]\na=1\nvmap=\"" + value + "\"\n";
}

QStringList textsOf(const QByteArray& file)
{
    QStringList texts;
    visitIniTexts(file, [&](const QString& text) {
        texts.append(text);
        return true;
    });
    return texts;
}

/// Something between a line of an INI file and noise.
QByteArray randomValue(QRandomGenerator& random)
{
    static const QByteArrayList parts {
        "\\",       "\"",   ",",    ";",    "=",    "x41",    "\\x41",  "0",  "\\7",
        " ",        "\t",   "\n",   "\r",   "\\\n", "\\\r\n", "\\\n\r", "a",  "b ",
        "\xc3\xa4", "\xff", "\\\"", "\\\\", "[",    "(1)",    "\v",     "\f", "\v[x]a="};
    QByteArray value;
    for (quint32 left = random.bounded(14); left > 0; --left)
        value += parts[random.bounded(int(parts.size()))];
    return value;
}

} // namespace

/// INI files that would fill the stack or the memory of the toolkit's own reader.
class tst_ini_hostile : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    QString m_file;

    void addRefusedPlaces();
    void addRefusedSpellings();

private slots:
    void init();
    void isNeitherReadNorWritten_data();
    void isNeitherReadNorWritten();
    void allElseIsLeftToTheToolkit_data();
    void allElseIsLeftToTheToolkit();
    void valuesOfEveryKindComeBack_data();
    void valuesOfEveryKindComeBack();
    void textsAreThoseOfTheToolkit();
};

void tst_ini_hostile::init()
{
    static int number = 0;
    // A file that was read is remembered under its name.
    m_file = m_folder.filePath(QString::number(++number) + ".ini");
}

void tst_ini_hostile::addRefusedPlaces()
{
    const auto row = [](const char* name, const QByteArray& value) {
        QTest::newRow(name) << fileWith(value);
    };
    row("points by name", variantText(writePoints));
    row("points by name, newer stream", dateTimeText(writePoints));
    row("points by number", dateTimeText([](QDataStream& stream) {
            writeType(stream, 86);
            stream << claimedPoints;
        }));
    row("points by today's number", variantText([](QDataStream& stream) {
            writeType(stream, QMetaType::QPolygonF + 97);
            stream << claimedPoints;
        }));
    row("points in a map", variantText([](QDataStream& stream) {
            writeType(stream, QMetaType::QVariantMap);
            stream << quint32(2) << QString("a");
            writeType(stream, QMetaType::QString);
            stream << QString("text") << QString("b");
            writePoints(stream);
        }));
    row("points in a hash", variantText([](QDataStream& stream) {
            writeType(stream, QMetaType::QVariantHash);
            stream << quint32(1) << QString("a");
            writePoints(stream);
        }));
    row("points in a value", dateTimeText([](QDataStream& stream) {
            writeType(stream, QMetaType::QVariant);
            writePoints(stream);
        }));
    row("points behind a font and a colour", dateTimeText([](QDataStream& stream) {
            writeType(stream, QMetaType::QVariantList);
            stream << quint32(3) << QVariant(QFont("Sans")) << QVariant(QColor(Qt::red));
            writePoints(stream);
        }));
    row("points in the second of a pair", dateTimeText([](QDataStream& stream) {
            writeNamedType(stream, "QVariantPair");
            stream << QVariant(1);
            writePoints(stream);
        }));
    row("points in a text format", dateTimeText([](QDataStream& stream) {
            writeType(stream, 78);
            stream << qint32(1) << quint32(1) << qint32(7);
            writePoints(stream);
        }));
    row("points behind a key that is none", variantText([](QDataStream& stream) {
            writeType(stream, QMetaType::QVariantMap);
            stream << quint32(1) << quint32(1); // of an odd number of bytes
            writePoints(stream);
        }));
    row("points behind a type that nobody knows", dateTimeText([](QDataStream& stream) {
            writeNamedType(stream, "QVariantPair");
            writeNamedType(stream, "Nobody");
            writePoints(stream);
        }));
    row("a list behind a type that nobody knows", dateTimeText([](QDataStream& stream) {
            writeNamedType(stream, "QVariantPair");
            writeNamedType(stream, "Nobody");
            writeType(stream, QMetaType::QVariantList);
            stream << quint32(1);
            writePoints(stream);
        }));
    row("a list of billions", variantText([](QDataStream& stream) {
            writeType(stream, QMetaType::QVariantList);
            stream << quint32(0x7fffffff);
        }));
    row("whole points by the billion", variantText([](QDataStream& stream) {
            writeType(stream, 71);
            stream << quint32(0x7fffffff);
        }));
    row("a region of regions", variantText([](QDataStream& stream) {
            writeType(stream, 72);
            stream << quint32(12) << quint32(6) << quint32(0) << quint32(0);
        }));
    row("a region of rectangles that are not there", variantText([](QDataStream& stream) {
            writeType(stream, 72);
            stream << quint32(8) << quint32(10) << quint32(1000);
        }));
    row("nested too deep",
        variantText([](QDataStream& stream) { writeNested(stream, maxIniDepth + 1); }));
    row("nested too deep, newer stream",
        dateTimeText([](QDataStream& stream) { writeNested(stream, maxIniDepth + 1); }));
    row("nested by name", variantText([](QDataStream& stream) {
            writeNamedType(stream, "QVariantList");
            stream << quint32(1);
            writeNested(stream, maxIniDepth);
        }));
}

void tst_ini_hostile::addRefusedSpellings()
{
    const QByteArray bytes = streamed(variantVersion, writePoints);
    const QByteArray value = variantText(writePoints);
    const auto row = [](const char* name, const QByteArray& lines) {
        QTest::newRow(name) << QByteArray("[options]\n" + lines);
    };
    row("octal", "a=@Variant(" + octal(bytes) + ")\n");
    row("second of a list", "a=one, " + value + "\n");
    row("over two lines in quotes",
        "a=\"@Variant(" + escaped(bytes.first(5)) + "\\\r\n" + escaped(bytes.mid(5)) + ")\"\n");
    row("behind a comment", "; one\n  ;two = \"\n a = " + value + "\n");
    row("in brackets behind what is no blank", "\v[x]a=\"" + value + "\"\n");
    row("behind a quote that a backslash takes away", "x=\\\"\nb=" + value);
    row("in pieces", "a=@Var\"iant(\"" + escaped(bytes) + ")\r\nb=1\r\n");
    row("behind empty lines", "\n \n\tx = " + value);
}

void tst_ini_hostile::isNeitherReadNorWritten_data()
{
    QTest::addColumn<QByteArray>("bytes");
    addRefusedPlaces();
    addRefusedSpellings();
}

void tst_ini_hostile::isNeitherReadNorWritten()
{
    QFETCH(QByteArray, bytes);
    writeContents(m_file, bytes);

    QVariantMap map {{"before", 1}};
    for (const bool separateKeys : {false, true}) {
        QVERIFY(!INFO::loadMapFromIniFile(&map, m_file, group, separateKeys, "vmap"));
        QCOMPARE(map, QVariantMap({{"before", 1}}));
        INFO::saveMapToIniFile(&map, m_file, group, separateKeys);
    }
    QStringList names {"x"};
    QString last;
    INFO::loadIniOptionNames(m_file, group, false, names, last, false);
    QVERIFY(names.isEmpty());
    QVERIFY(INFO::getDefaultIniMultiOptionName(m_file).isEmpty());
    INFO::setDefaultIniMultiOptionName(m_file, "x");
    QCOMPARE(contents(m_file), bytes);
}

void tst_ini_hostile::allElseIsLeftToTheToolkit_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("just not too deep")
        << variantText([](QDataStream& stream) { writeNested(stream, maxIniDepth); });
    QTest::newRow("as many points as there are") << dateTimeText([](QDataStream& stream) {
        writeType(stream, 86);
        stream << quint32(1) << 1.0 << 2.0;
    });
    QTest::newRow("points cut off before their number")
        << variantText([](QDataStream& stream) { writeNamedType(stream, "QPolygonF"); });
    QTest::newRow("points as text") << "@@" + variantText(writePoints).mid(1);
    QTest::newRow("a type that nobody knows") << variantText([](QDataStream& stream) {
        writeNamedType(stream, "Nobody");
        stream << quint32(7);
    });
    QTest::newRow("an unknown number") << variantText([](QDataStream& stream) {
        writeType(stream, 12345);
        stream << QString("x");
    });
    QTest::newRow("a map that ends too early") << variantText([](QDataStream& stream) {
        writeType(stream, QMetaType::QVariantMap);
        stream << quint32(4'000'000'000U) << QString("a");
    });
}

void tst_ini_hostile::allElseIsLeftToTheToolkit()
{
    QFETCH(QByteArray, value);
    writeContents(m_file, fileWith(value));
    QVariantMap map;
    QVERIFY(INFO::loadMapFromIniFile(&map, m_file, group, true, "sum"));
    QCOMPARE(map.value("a").toInt(), 1);
    QVERIFY(map.contains("vmap"));
}

void tst_ini_hostile::valuesOfEveryKindComeBack_data()
{
    QTest::addColumn<bool>("separateKeys");
    QTest::newRow("one map") << false;
    QTest::newRow("a key each") << true;
}

void tst_ini_hostile::valuesOfEveryKindComeBack()
{
    QFETCH(bool, separateKeys);
    QTextFormat format(QTextFormat::CharFormat);
    format.setProperty(QTextFormat::UserProperty,
                       QVariantList {1, "two", polygon({QPointF(1, 2)})});
    QVariantMap map {
        {"bool", true},
        {"texts", QStringList {"a,b", "\"", "@", "\xc3\xa4;"}},
        {"bytes", QByteArray(300, '\xfe')},
        {"points", polygon({QPointF(1, 2), QPointF(3, 4)})},
        {"polygon", QPolygon(QRect(1, 2, 3, 4))},
        {"region", QRegion(0, 0, 5, 5) + QRegion(9, 9, 1, 1)},
        {"no region", QRegion()},
        {"font", QFont("Sans", 12)},
        {"palette", QPalette(Qt::green)},
        {"format", format},
        {"moment", QDateTime(QDate(2026, 3, 29), QTime(1, 30), Qt::UTC)},
        {"hash", QVariantHash {{"k", 1.5}}},
        {"value", QVariant::fromValue(QVariantPair(1, QVariantList {polygon({QPointF(5, 6)})}))},
        {"nothing", QVariant()},
    };
    map.insert("map", map);
    INFO::saveMapToIniFile(&map, m_file, group, separateKeys);

    const QString copy = m_file + ".copy";
    QVERIFY(QFile::copy(m_file, copy));
    QVariantMap loaded;
    QVERIFY(INFO::loadMapFromIniFile(&loaded, copy, group, separateKeys));
    QCOMPARE(loaded.keys(), map.keys());
    for (const char* key : {"font", "palette", "format", "value", "nothing", "no region"})
        QCOMPARE(loaded.value(key).typeId(), map.value(key).typeId());
    const QVariantMap inner = loaded.value("map").toMap();
    for (const char* key :
         {"bool", "texts", "bytes", "points", "polygon", "region", "moment", "hash"}) {
        QCOMPARE(loaded.value(key), map.value(key));
        QCOMPARE(inner.value(key), map.value(key));
    }
}

void tst_ini_hostile::textsAreThoseOfTheToolkit()
{
    const quint32 seed = QRandomGenerator::global()->generate();
    qInfo() << "seed" << seed;
    QRandomGenerator random(seed);
    for (int i = 0; i < 3000; ++i) {
        init();
        const QByteArray bytes = randomValue(random) + "\nk=" + randomValue(random) + "\n";
        writeContents(m_file, bytes);
        const QStringList texts = textsOf(bytes);
        const QSettings settings(m_file, QSettings::IniFormat);
        const QStringList keys = settings.allKeys();
        for (const QString& key : keys) {
            const QStringList expected = settings.value(key).toStringList();
            for (const QString& text : expected)
                QVERIFY2(texts.contains(text), bytes.toPercentEncoding(" =\"\\;,[]").constData());
        }
        QFile::remove(m_file);
    }
}

QTEST_MAIN(tst_ini_hostile)

#include "tst_ini_hostile.moc"
