#include "form/mod_form_qt.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <unistd.h>

using namespace mod_form_qt;

namespace {

const QString group = "options";

QByteArray contents(const QString& file)
{
    QFile opened(file);
    return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
}

bool writeContents(const QString& file, const QByteArray& bytes)
{
    QFile opened(file);
    return opened.open(QIODevice::WriteOnly) && opened.write(bytes) == bytes.size();
}

/// Gives up the rights of root, for whom no file is read-only.
class OrdinaryUser
{
public:
    OrdinaryUser()
        : m_id(geteuid())
    {
        if (m_id == 0 && seteuid(65534) != 0)
            qFatal("cannot leave root's rights");
    }

    ~OrdinaryUser()
    {
        if (seteuid(m_id) != 0)
            qFatal("cannot take root's rights again");
    }

private:
    uid_t m_id;
};

} // namespace

/// Files and folders that are missing, closed, damaged or no files at all.
class tst_ini_map_files : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_file;

private slots:
    void init();
    void nullMapDoesNothing();
    void emptyFileNameDoesNothing();
    void missingFolderIsCreated();
    void readOnlyFileStaysAsItIs();
    void impossiblePlaceIsSilent();
    void corruptFileIsSilent_data();
    void corruptFileIsSilent();
};

void tst_ini_map_files::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_file = m_folder->filePath("test.ini");
}

void tst_ini_map_files::nullMapDoesNothing()
{
    INFO::saveMapToIniFile(nullptr, m_file, group);
    QVERIFY(!QFile::exists(m_file));

    const QVariantMap map {{"a", 1}};
    INFO::saveMapToIniFile(&map, m_file, group);
    const QByteArray before = contents(m_file);
    INFO::saveMapToIniFile(nullptr, m_file, group);
    QCOMPARE(contents(m_file), before);
    QVERIFY(!INFO::loadMapFromIniFile(nullptr, m_file, group));
}

void tst_ini_map_files::emptyFileNameDoesNothing()
{
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_folder->path()));
    const QVariantMap map {{"a", 1}};
    INFO::saveMapToIniFile(&map, QString(), group);
    QVariantMap loaded {{"before", 1}};
    const bool result = INFO::loadMapFromIniFile(&loaded, QString(), group);
    QVERIFY(QDir::setCurrent(before));

    QVERIFY(!result);
    QCOMPARE(loaded, QVariantMap({{"before", 1}}));
    QVERIFY(QDir(m_folder->path()).isEmpty());
}

void tst_ini_map_files::missingFolderIsCreated()
{
    const QString file = m_folder->filePath("new/er/test.ini");
    const QVariantMap map {{"a", 1}};
    INFO::saveMapToIniFile(&map, file, group);
    QVERIFY(QFile::exists(file));
    QVariantMap loaded;
    QVERIFY(INFO::loadMapFromIniFile(&loaded, file, group));
    QCOMPARE(loaded, map);
}

void tst_ini_map_files::readOnlyFileStaysAsItIs()
{
    const QVariantMap before {{"a", 1}};
    const QVariantMap after {{"a", 2}};
    INFO::saveMapToIniFile(&before, m_file, group);
    const QByteArray bytes = contents(m_file);
    const QFile::Permissions readOnly = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
    const QFile::Permissions enter = QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;
    QVERIFY(QFile::setPermissions(m_file, readOnly));
    QVERIFY(QFile::setPermissions(m_folder->path(), readOnly | enter));
    {
        const OrdinaryUser user;
        INFO::saveMapToIniFile(&after, m_file, group);
    }
    QVERIFY(QFile::setPermissions(m_folder->path(), readOnly | enter | QFile::WriteOwner));
    QCOMPARE(contents(m_file), bytes);
}

void tst_ini_map_files::impossiblePlaceIsSilent()
{
    QVERIFY(writeContents(m_file, "[a]\nb=1\n"));
    const QVariantMap map {{"a", 1}};
    for (const QString& place : {m_file + "/below.ini", m_folder->path()}) {
        INFO::saveMapToIniFile(&map, place, group);
        QVERIFY(!QFileInfo(place).isFile());
    }
}

void tst_ini_map_files::corruptFileIsSilent_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("no INI file") << QByteArray("%PDF-1.4\n\x01\x02 no equals sign\n");
    QTest::newRow("zeros") << QByteArray(300, '\0');
    QTest::newRow("damaged image")
        << QByteArray("[options]\nvmap=\"@Variant(\\0\\0\\0\\b\\xff\\xff\\xff\\xfe\\0\\0)\"\n");
    QTest::newRow("cut off image") << QByteArray("[options]\nvmap=\"@Variant(\\0\\0\\0\\b\\0\\0");
}

void tst_ini_map_files::corruptFileIsSilent()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(writeContents(m_file, bytes));

    const QVariantMap map {{"a", 1}};
    QVariantMap loaded;
    QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, group));
    QVERIFY(loaded.isEmpty());
    QCOMPARE(contents(m_file), bytes);

    INFO::saveMapToIniFile(&map, m_file, group);
    QVERIFY(INFO::loadMapFromIniFile(&loaded, m_file, group));
    QVERIFY(loaded.isEmpty() || loaded == map);
}

QTEST_GUILESS_MAIN(tst_ini_map_files)

#include "tst_ini_map_files.moc"
