#include "form/mod_form_qt.h"
#include "form/persist/ini_map.h"

#include <QColor>
#include <QDataStream>
#include <QDateTime>
#include <QFile>
#include <QFont>
#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <stdexcept>

using namespace mod_form_qt;

namespace {

const QString group = "options";

/// A value that goes into a file and throws when it is read.
struct Trap
{
    int kind = 0;
};

QDataStream& operator<<(QDataStream& stream, const Trap& trap)
{
    return stream << trap.kind;
}

QDataStream& operator>>(QDataStream& stream, Trap& trap)
{
    stream >> trap.kind;
    if (trap.kind == 1)
        throw std::runtime_error("trap");
    if (trap.kind == 2)
        throw 42;
    return stream;
}

/// Child: loads a map and sends it, with the result in front, to standard output.
int load(const QStringList& arguments)
{
    QVariantMap map;
    const bool result = INFO::loadMapFromIniFile(&map, arguments[0], group, arguments[1] == "1");
    QFile output;
    if (!output.open(stdout, QIODevice::WriteOnly))
        return 1;
    QDataStream(&output) << result << map;
    return 0;
}

/// Child: saves a trap of the given kind.
int saveTrap(const QStringList& arguments)
{
    const QVariantMap map {{"trap", QVariant::fromValue(Trap {arguments[1].toInt()})}};
    INFO::saveMapToIniFile(&map, arguments[0], group);
    return 0;
}

bool runSelf(QProcess& process, const QStringList& arguments)
{
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), arguments);
    if (process.waitForFinished(60000))
        return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    process.kill();
    process.waitForFinished();
    return false;
}

QVariantMap loadedByALaterStart(const QString& file, bool separateKeys)
{
    QVariantMap map {{"no answer", true}};
    QProcess process;
    if (!runSelf(process, {"--load", file, separateKeys ? "1" : "0"}))
        return map;
    bool result = false;
    QDataStream answer(process.readAllStandardOutput());
    answer >> result >> map;
    if (!result || answer.status() != QDataStream::Ok)
        map.insert("load failed", true);
    return map;
}

} // namespace

Q_DECLARE_METATYPE(Trap)

/// What a later start of the program finds. QSettings answers the process that has written a file
/// from memory, and so would hide whatever the file itself cannot hold.
class tst_ini_map_restart : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_file;

private slots:
    void init();

    void wholeMapKeepsEveryKindOfValue();
    void separateKeysComeBackAsTexts_data();
    void separateKeysComeBackAsTexts();
    void emptyMapComesBackEmpty();
    void listDataIsStoredByItsSelection_data();
    void listDataIsStoredByItsSelection();
    void pointersAreStoredByWhatTheyPointAt();
    void unwritableValuesDoNotSpoilTheRest_data();
    void unwritableValuesDoNotSpoilTheRest();
    void exceptionsEndTheAttempt_data();
    void exceptionsEndTheAttempt();
};

void tst_ini_map_restart::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_file = m_folder->filePath("test.ini");
}

void tst_ini_map_restart::wholeMapKeepsEveryKindOfValue()
{
    const QVariantMap map {
        {"bool", true},
        {"int", -5},
        {"int64", qlonglong(9007199254740993)},
        {"uint64", qulonglong(18446744073709551615ULL)},
        {"double", 0.1},
        {"text", QString::fromUtf8("Maß; \"a\"=b, %1\\\r\n@Variant(é) €")},
        {"empty text", ""},
        {"texts", QStringList {"a,b", ""}},
        {"one text", QStringList {"a"}},
        {"values", QVariantList {1, "a", QVariant(), true}},
        {"one value", QVariantList {1}},
        {"no values", QVariantList()},
        {"konten", QVariantList {QStringList {"1", "8400"}, QStringList {"2", "8300"}}},
        {"map", QVariantMap {{"inner", QVariantMap {{"x", 1}}}}},
        {"date", QDate(2037, 1, 1)},
        {"no date", QDate(9999, 12, 31)},
        {"time", QTime(23, 59, 58, 7)},
        {"moment", QDateTime(QDate(2024, 3, 31), QTime(1, 30), Qt::UTC)},
        {"bytes", QByteArray("a\0\xff", 3)},
        {"colour", QColor(1, 2, 3, 4)},
        {"font", QFont("Sans", 11, QFont::Bold)},
        {"invalid", QVariant()},
        {QString::fromUtf8("Schlüssel mit / und ="), 1},
        {"", "under an empty key"},
    };
    INFO::saveMapToIniFile(&map, m_file, group);
    const QVariantMap loaded = loadedByALaterStart(m_file, false);
    QCOMPARE(loaded.keys(), map.keys());
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        const QVariant value = loaded.value(entry.key());
        QVERIFY2(value.typeId() == entry->typeId(), qPrintable(entry.key()));
        QVERIFY2(value == *entry, qPrintable(entry.key()));
    }
}

void tst_ini_map_restart::separateKeysComeBackAsTexts_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("expected");

    QTest::newRow("bool") << QVariant(true) << QVariant("true");
    QTest::newRow("int") << QVariant(5) << QVariant("5");
    QTest::newRow("double") << QVariant(1.5) << QVariant("1.5");
    QTest::newRow("text") << QVariant(QString::fromUtf8("Maß; a=b\n@"))
                          << QVariant(QString::fromUtf8("Maß; a=b\n@"));
    QTest::newRow("texts and numbers")
        << QVariant(QVariantList {"a", 2}) << QVariant(QStringList {"a", "2"});
    QTest::newRow("texts") << QVariant(QStringList {"a", "b"}) << QVariant(QStringList {"a", "b"});
    QTest::newRow("one text") << QVariant(QStringList {"a"}) << QVariant("a");
    QTest::newRow("no values") << QVariant(QVariantList()) << QVariant();
    QTest::newRow("one value") << QVariant(QVariantList {1}) << QVariant(QVariantList {1});
    QTest::newRow("date") << QVariant(QDate(2037, 1, 1)) << QVariant(QDate(2037, 1, 1));
    QTest::newRow("map") << QVariant(QVariantMap {{"x", 1}}) << QVariant(QVariantMap {{"x", 1}});
    QTest::newRow("invalid") << QVariant() << QVariant();
}

void tst_ini_map_restart::separateKeysComeBackAsTexts()
{
    QFETCH(QVariant, value);
    QFETCH(QVariant, expected);
    const QVariantMap map {{"entry", value}, {"other", "beside"}};
    INFO::saveMapToIniFile(&map, m_file, group, true);
    const QVariantMap loaded = loadedByALaterStart(m_file, true);
    QCOMPARE(loaded.keys(), map.keys());
    QCOMPARE(loaded.value("entry").typeId(), expected.typeId());
    QCOMPARE(loaded.value("entry"), expected);
    QCOMPARE(loaded.value("other"), QVariant("beside"));
}

void tst_ini_map_restart::emptyMapComesBackEmpty()
{
    const QVariantMap map;
    INFO::saveMapToIniFile(&map, m_file, group);
    QCOMPARE(loadedByALaterStart(m_file, false), map);
    // The child would also find nothing if there were no map, so look at the file as well.
    QFile file(m_file);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("vmap=@Variant("));
}

void tst_ini_map_restart::listDataIsStoredByItsSelection_data()
{
    QTest::addColumn<QList<bool>>("selected");
    QTest::addColumn<QVariantList>("expected");
    QTest::newRow("none") << QList<bool> {false, false} << QVariantList();
    QTest::newRow("one") << QList<bool> {false, true} << QVariantList {"b"};
    QTest::newRow("both") << QList<bool> {true, true} << QVariantList {1, "b"};
}

void tst_ini_map_restart::listDataIsStoredByItsSelection()
{
    QFETCH(QList<bool>, selected);
    QFETCH(QVariantList, expected);
    T_LISTDATA list {{"first", selected[0], 1, {{Qt::ToolTipRole, "tip"}}},
                     {"second", selected[1], "b", {}}};
    QVariant held = QVariant::fromValue(list);
    const QVariantMap map {{"list", held},
                           {"pointer", QVariant::fromValue(&list)},
                           {"variable", QVariant::fromValue(&held)}};
    INFO::saveMapToIniFile(&map, m_file, group);
    const QVariantMap loaded = loadedByALaterStart(m_file, false);
    QCOMPARE(loaded.keys(), map.keys());
    for (const QVariant& value : loaded) {
        QVERIFY(INFO::isQVariantListType(value));
        QCOMPARE(value.toList(), expected);
    }
}

void tst_ini_map_restart::pointersAreStoredByWhatTheyPointAt()
{
    QVariant url = "https://shop.example";
    QVariant pointer = QVariant::fromValue(&url);
    QVariant nothing;
    const QVariantMap map {{"mainurl", QVariant::fromValue(&url)},
                           {"twice", QVariant::fromValue(&pointer)},
                           {"nothing", QVariant::fromValue(&nothing)}};
    const QVariantMap expected {{"mainurl", url}, {"twice", url}, {"nothing", QVariant()}};
    INFO::saveMapToIniFile(&map, m_file, group);
    QCOMPARE(loadedByALaterStart(m_file, false), expected);
    // The caller's map keeps its pointers.
    QVERIFY(INFO::isVariantPtr(map["mainurl"]));
}

void tst_ini_map_restart::unwritableValuesDoNotSpoilTheRest_data()
{
    static QVariant variable = 1;
    static QObject object;
    const QVariant pointer = QVariant::fromValue(&variable);
    const QVariant list = QVariant::fromValue(T_LISTDATA {{"a", true, 1, {}}});
    const QVariant objectPointer = QVariant::fromValue(&object);

    QTest::addColumn<QVariant>("value");
    QTest::newRow("object") << objectPointer;
    QTest::newRow("guarded object") << QVariant::fromValue(QPointer<QObject>(&object));
    QTest::newRow("plain pointer") << QVariant::fromValue(static_cast<void*>(&object));
    QTest::newRow("shared map") << QVariant::fromValue(T_VARMAP_SHARED_PTR::create());
    QTest::newRow("pointer in a list") << QVariant(QVariantList {1, pointer});
    QTest::newRow("list data in a list") << QVariant(QVariantList {list});
    QTest::newRow("object in a map") << QVariant(QVariantMap {{"x", objectPointer}});
    QTest::newRow("object in a hash") << QVariant(QVariantHash {{"x", objectPointer}});
    QTest::newRow("list data deep inside")
        << QVariant(QVariantList {QVariantMap {{"x", QVariantList {1, list}}}});
    QTest::newRow("object in a value in a value")
        << QVariant(QMetaType::fromType<QVariant>(), &objectPointer);
    QTest::newRow("object selected in list data")
        << QVariant::fromValue(T_LISTDATA {{"a", true, objectPointer, {}}});
}

void tst_ini_map_restart::unwritableValuesDoNotSpoilTheRest()
{
    QFETCH(QVariant, value);
    const QVariantMap map {{"before", 1}, {"middle", value}, {"next", "text"}};
    const QVariantMap expected {{"before", 1}, {"next", "text"}};
    QCOMPARE(persistedEntries(map, nullptr), expected);

    INFO::saveMapToIniFile(&map, m_file, group);
    QCOMPARE(loadedByALaterStart(m_file, false), expected);

    m_file = m_folder->filePath("separate.ini");
    INFO::saveMapToIniFile(&map, m_file, group, true);
    QCOMPARE(loadedByALaterStart(m_file, true), expected);
}

void tst_ini_map_restart::exceptionsEndTheAttempt_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("loads");
    QTest::newRow("none") << 0 << true;
    QTest::newRow("a standard exception") << 1 << false;
    QTest::newRow("any other exception") << 2 << false;
}

void tst_ini_map_restart::exceptionsEndTheAttempt()
{
    QFETCH(int, kind);
    QFETCH(bool, loads);
    QProcess process;
    QVERIFY(runSelf(process, {"--trap", m_file, QString::number(kind)}));
    QVERIFY(QFile::exists(m_file));

    QVariantMap map {{"before", 1}};
    QCOMPARE(INFO::loadMapFromIniFile(&map, m_file, group), loads);
    QCOMPARE(map.contains("trap"), loads);
    QCOMPARE(map.contains("before"), !loads);

    // Opening the file for a save meets the same value.
    const QVariantMap other {{"a", 1}};
    INFO::saveMapToIniFile(&other, m_file, "other");
}

int main(int argc, char* argv[])
{
    QGuiApplication application(argc, argv);
    qRegisterMetaType<Trap>("Trap");
    const QStringList arguments = application.arguments();
    if (arguments.value(1) == "--load")
        return load(arguments.mid(2));
    if (arguments.value(1) == "--trap")
        return saveTrap(arguments.mid(2));
    tst_ini_map_restart test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_ini_map_restart.moc"
