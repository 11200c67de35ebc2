#include "form/mod_form_qt.h"

#include <QFile>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace mod_form_qt;

namespace {

const QString group = "options";

QStringList keysIn(const QString& file, const QString& ofGroup)
{
    QSettings settings(file, QSettings::IniFormat);
    settings.beginGroup(ofGroup);
    return settings.childKeys();
}

QVariant valueIn(const QString& file, const QString& path)
{
    return QSettings(file, QSettings::IniFormat).value(path);
}

void write(const QString& file, const QString& path, const QVariant& value)
{
    QSettings(file, QSettings::IniFormat).setValue(path, value);
}

/// A file's text with the escapes of its Latin letters undone and without its zeros, of which the
/// image of a map holds one before each letter.
QString readableText(const QString& file)
{
    QFile opened(file);
    if (!opened.open(QIODevice::ReadOnly))
        return {};
    QString text = QString::fromLatin1(opened.readAll());
    static const QRegularExpression escape("\\\\x([0-9a-f]{1,2})|\\\\0");
    for (auto match = escape.match(text); match.hasMatch(); match = escape.match(text)) {
        const QString letter(QChar(match.captured(1).toInt(nullptr, 16)));
        text.replace(match.captured(), match.captured(1).isEmpty() ? QString() : letter);
    }
    return text;
}

} // namespace

class tst_ini_map : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_file;

private slots:
    void init();

    void wholeMapIsOneValue_data();
    void wholeMapIsOneValue();
    void separateKeysStandByThemselves();
    void filterTakesOnlyItsKeys_data();
    void filterTakesOnlyItsKeys();
    void emptyFilterReplacesTheStoredMap();
    void emptyMapIsStoredToo();
    void wholeMapLoadingReplacesTheMap();
    void separateKeysLoadingKeepsOtherEntries();
    void sumKeyIsWrittenSeparatelyButPassedOver_data();
    void sumKeyIsWrittenSeparatelyButPassedOver();
    void leftKeysStayInTheFile();
    void keysWithASlash_data();
    void keysWithASlash();
    void missingPartsLeaveTheMapUntouched_data();
    void missingPartsLeaveTheMapUntouched();
    void valueThatIsNoMapIsIgnored();
    void otherMapsOfTheGroupArePassedOver();
    void temporaryKeysNeverReachTheFile_data();
    void temporaryKeysNeverReachTheFile();
    void temporaryKeysInAFileAreNotRead();
    void groupsStandBesideEachOther();
};

void tst_ini_map::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_file = m_folder->filePath("test.ini");
}

void tst_ini_map::wholeMapIsOneValue_data()
{
    QTest::addColumn<QString>("sumMapName");
    QTest::addColumn<QString>("key");
    QTest::newRow("default name") << ""
                                  << "vmap";
    QTest::newRow("given name") << "standard"
                                << "standard";
}

void tst_ini_map::wholeMapIsOneValue()
{
    QFETCH(QString, sumMapName);
    QFETCH(QString, key);
    const QVariantMap map {{"a", 1}, {"b", "text"}};
    INFO::saveMapToIniFile(&map, m_file, group, false, nullptr, sumMapName);
    QCOMPARE(keysIn(m_file, group), QStringList {key});

    QVariantMap loaded;
    QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, group, false, sumMapName));
    QCOMPARE(loaded, map);
}

void tst_ini_map::separateKeysStandByThemselves()
{
    const QVariantMap map {{"a", 1}, {"b", "text"}};
    INFO::saveMapToIniFile(&map, m_file, group, true, nullptr, QString());
    QCOMPARE(keysIn(m_file, group), QStringList({"a", "b"}));
    QVERIFY(readableText(m_file).contains("[options]\na=1\nb=text\n"));

    QVariantMap loaded;
    QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, group, true, QString()));
    QCOMPARE(loaded, map);
}

void tst_ini_map::filterTakesOnlyItsKeys_data()
{
    QTest::addColumn<bool>("separateKeys");
    QTest::newRow("whole map") << false;
    QTest::newRow("separate keys") << true;
}

void tst_ini_map::filterTakesOnlyItsKeys()
{
    QFETCH(bool, separateKeys);
    const QVariantMap map {{"a", 1}, {"b", 2}, {"c", 3}};
    const QSet<QString> keys {"a", "c", "notInTheMap"};
    INFO::saveMapToIniFile(&map, m_file, group, separateKeys, &keys, QString());
    QVariantMap loaded;
    QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, group, separateKeys, QString()));
    QCOMPARE(loaded, QVariantMap({{"a", 1}, {"c", 3}}));
}

void tst_ini_map::emptyFilterReplacesTheStoredMap()
{
    const QVariantMap map {{"a", 1}};
    const QSet<QString> none;
    INFO::saveMapToIniFile(&map, m_file, group);
    INFO::saveMapToIniFile(&map, m_file, group, false, &none);
    QCOMPARE(valueIn(m_file, "options/vmap"), QVariant(QVariantMap()));

    QVariantMap loaded {{"before", 1}};
    QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, group));
    QVERIFY(loaded.isEmpty());
}

void tst_ini_map::emptyMapIsStoredToo()
{
    const QVariantMap map;
    INFO::saveMapToIniFile(&map, m_file, group);
    QCOMPARE(keysIn(m_file, group), QStringList {"vmap"});
}

void tst_ini_map::wholeMapLoadingReplacesTheMap()
{
    const QVariantMap map {{"a", 1}};
    INFO::saveMapToIniFile(&map, m_file, group);
    QVariantMap loaded {{"a", 0}, {"before", 1}};
    QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, group));
    QCOMPARE(loaded, map);
}

void tst_ini_map::separateKeysLoadingKeepsOtherEntries()
{
    const QVariantMap map {{"a", 1}};
    INFO::saveMapToIniFile(&map, m_file, group, true);
    QVariantMap loaded {{"a", 0}, {"before", 1}};
    QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, group, true));
    QCOMPARE(loaded, QVariantMap({{"a", 1}, {"before", 1}}));
}

void tst_ini_map::sumKeyIsWrittenSeparatelyButPassedOver_data()
{
    QTest::addColumn<QString>("sumMapName");
    QTest::addColumn<QString>("key");
    QTest::newRow("default name") << ""
                                  << "vmap";
    QTest::newRow("given name") << "standard"
                                << "standard";
}

void tst_ini_map::sumKeyIsWrittenSeparatelyButPassedOver()
{
    QFETCH(QString, sumMapName);
    QFETCH(QString, key);
    const QVariantMap map {{"a", 1}, {key, 2}};
    INFO::saveMapToIniFile(&map, m_file, group, true, nullptr, sumMapName);
    QCOMPARE(valueIn(m_file, "options/" + key).toInt(), 2);

    QVariantMap loaded;
    QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, group, true, sumMapName));
    QCOMPARE(loaded.keys(), QStringList {"a"});
}

void tst_ini_map::leftKeysStayInTheFile()
{
    const QVariantMap before {{"a", 1}, {"left", 2}};
    const QVariantMap after {{"a", 3}};
    INFO::saveMapToIniFile(&before, m_file, group, true);
    INFO::saveMapToIniFile(&after, m_file, group, true);
    QVariantMap loaded;
    QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, group, true));
    QCOMPARE(loaded, QVariantMap({{"a", 3}, {"left", 2}}));
}

void tst_ini_map::keysWithASlash_data()
{
    QTest::addColumn<bool>("separateKeys");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("whole map") << false << QStringList {"a", "sub/b"};
    QTest::newRow("separate keys") << true << QStringList {"a"};
}

void tst_ini_map::keysWithASlash()
{
    QFETCH(bool, separateKeys);
    const QVariantMap map {{"a", 1}, {"sub/b", 2}};
    INFO::saveMapToIniFile(&map, m_file, group, separateKeys);
    QVariantMap loaded;
    QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, group, separateKeys));
    QTEST(QStringList(loaded.keys()), "expected");
    if (separateKeys)
        QCOMPARE(valueIn(m_file, "options/sub/b").toInt(), 2);
}

void tst_ini_map::missingPartsLeaveTheMapUntouched_data()
{
    QTest::addColumn<bool>("otherGroup");
    QTest::addColumn<bool>("otherKey");
    QTest::newRow("no file") << false << false;
    QTest::newRow("no group") << true << false;
    QTest::newRow("no key") << false << true;
}

void tst_ini_map::missingPartsLeaveTheMapUntouched()
{
    QFETCH(bool, otherGroup);
    QFETCH(bool, otherKey);
    const QVariantMap stored {{"a", 1}};
    if (otherGroup)
        INFO::saveMapToIniFile(&stored, m_file, "other");
    if (otherKey)
        INFO::saveMapToIniFile(&stored, m_file, group, false, nullptr, "other");

    const QVariantMap before {{"before", 1}};
    QVariantMap loaded = before;
    QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, group));
    QCOMPARE(loaded, before);
    QCOMPARE(QFile::exists(m_file), otherGroup || otherKey);
}

void tst_ini_map::valueThatIsNoMapIsIgnored()
{
    for (const QVariant& value : {QVariant("text"), QVariant(QVariantList {1}), QVariant()}) {
        write(m_file, "options/vmap", value);
        QVariantMap loaded {{"before", 1}};
        QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, group));
        QCOMPARE(loaded, QVariantMap({{"before", 1}}));
    }
}

void tst_ini_map::otherMapsOfTheGroupArePassedOver()
{
    const QVariantMap first {{"a", 1}};
    const QVariantMap second {{"b", 2}};
    INFO::saveMapToIniFile(&first, m_file, group, false, nullptr, "first");
    INFO::saveMapToIniFile(&second, m_file, group, false, nullptr, "second");
    write(m_file, "options/plain", "text");
    QVariantMap loaded;
    QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, group, false, "first"));
    QCOMPARE(loaded, first);
    QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, group, false, "second"));
    QCOMPARE(loaded, second);
}

void tst_ini_map::temporaryKeysNeverReachTheFile_data()
{
    QTest::addColumn<bool>("separateKeys");
    QTest::addColumn<bool>("filter");
    QTest::newRow("whole map") << false << false;
    QTest::newRow("whole map, filter holds them") << false << true;
    QTest::newRow("separate keys") << true << false;
    QTest::newRow("separate keys, filter holds them") << true << true;
}

void tst_ini_map::temporaryKeysNeverReachTheFile()
{
    QFETCH(bool, separateKeys);
    QFETCH(bool, filter);
    const QVariantMap map {{"a", "plain"},
                           {INFO::automatikVarName + "1", "secret1"},
                           {INFO::widgetDataVarName + "2", "secret2"},
                           {INFO::objectDataVarName + "3", "secret3"}};
    const QStringList list = map.keys();
    const QSet<QString> keys(list.begin(), list.end());
    INFO::saveMapToIniFile(&map, m_file, group, separateKeys, filter ? &keys : nullptr);

    QVariantMap loaded;
    QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, group, separateKeys));
    QCOMPARE(loaded.keys(), QStringList {"a"});
    const QString file = readableText(m_file);
    QVERIFY(file.contains("plain"));
    QVERIFY(!file.contains("secret"));
    QVERIFY(!file.contains("mod_form_qt"));
}

void tst_ini_map::temporaryKeysInAFileAreNotRead()
{
    const QString temporary = INFO::objectDataVarName + "x";
    write(m_file, "separate/a", 1);
    write(m_file, "separate/" + temporary, 2);
    QVariantMap loaded;
    QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, "separate", true));
    QCOMPARE(loaded.keys(), QStringList {"a"});

    write(m_file, "whole/vmap", QVariantMap {{"a", 1}, {temporary, 2}});
    loaded.clear();
    QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, "whole"));
    QCOMPARE(loaded.keys(), QStringList {"a"});

    write(m_file, "named/" + temporary, QVariantMap {{"a", 1}});
    loaded.clear();
    QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, "named", false, temporary));
    QVERIFY(loaded.isEmpty());
}

void tst_ini_map::groupsStandBesideEachOther()
{
    const QVariantMap first {{"a", 1}};
    const QVariantMap second {{"a", 2}};
    const QVariantMap third {{"a", 3}};
    write(m_file, "host/line", "kept");
    INFO::saveMapToIniFile(&first, m_file, "first");
    INFO::saveMapToIniFile(&second, m_file, "second", true);
    INFO::saveMapToIniFile(&third, m_file, "first/inner");

    QVariantMap loaded;
    QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, "first"));
    QCOMPARE(loaded, first);
    QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, "second", true));
    QCOMPARE(loaded, second);
    QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, "first/inner"));
    QCOMPARE(loaded, third);
    QCOMPARE(valueIn(m_file, "host/line"), QVariant("kept"));
}

QTEST_GUILESS_MAIN(tst_ini_map)

#include "tst_ini_map.moc"
