#include "form/mod_form_qt.h"

#include <QtTest>

#include <cstdio>

using namespace mod_form_qt;

namespace {

constexpr const char* askSwitch = "--config-path";

} // namespace

/// The program's own folder is that of the running program, so a copy of this program is started in
/// folders that are made for the case.
class tst_config_path : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void theProgramsFolderWhereFilesCanBeMade();
    void theConfigurationFolderWhereTheyCannot();
    void theConfigurationFolderWhereItIsAskedFor();
    void theConfigurationFolderLosesWhatNoPathHolds();
    void anExistingFolderIsLeftAsItIs();

private:
    QString ask(const QString& programFolder, bool useConfigDir);

    QScopedPointer<QTemporaryDir> m_dir;
    QString m_config;
};

void tst_config_path::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(m_dir->isValid());
    m_config = m_dir->filePath("new/config");
}

QString tst_config_path::ask(const QString& programFolder, bool useConfigDir)
{
    QDir().mkpath(programFolder);
    const QString program = programFolder + "/asker";
    QFile::copy(QCoreApplication::applicationFilePath(), program);
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_CONFIG_HOME", m_config);
    process.setProcessEnvironment(environment);
    process.start(program, {askSwitch, useConfigDir ? "config" : "program"});
    if (!process.waitForFinished(30000) || process.exitCode() != 0)
        return "failed: " + process.errorString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

void tst_config_path::theProgramsFolderWhereFilesCanBeMade()
{
    const QString folder = m_dir->filePath("a?b");
    QCOMPARE(ask(folder, false), folder + "/");
    QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList("asker"));
    QVERIFY(!QFileInfo::exists(m_config));
}

void tst_config_path::theConfigurationFolderWhereTheyCannot()
{
    const QString folder = m_dir->filePath("readonly");
    // Keeps even a user who may write everywhere from making the file that is tried.
    QVERIFY(QDir().mkpath(folder + "/mod_search.test"));
    QCOMPARE(ask(folder, false), m_config + "/");
    QVERIFY(QFileInfo(m_config).isDir());
}

void tst_config_path::theConfigurationFolderWhereItIsAskedFor()
{
    const QString folder = m_dir->filePath("program");
    QCOMPARE(ask(folder, true), m_config + "/");
    QVERIFY(QFileInfo(m_config).isDir());
    QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList("asker"));
}

void tst_config_path::theConfigurationFolderLosesWhatNoPathHolds()
{
    m_config = m_dir->filePath("co*n\"f|i<g>?");
    QCOMPARE(ask(m_dir->filePath("program"), true), m_dir->filePath("config/"));
    QVERIFY(QFileInfo(m_dir->filePath("config")).isDir());
    QVERIFY(!QFileInfo::exists(m_config));
}

void tst_config_path::anExistingFolderIsLeftAsItIs()
{
    QVERIFY(QDir().mkpath(m_config + "/inner"));
    QCOMPARE(ask(m_dir->filePath("program"), true), m_config + "/");
    QCOMPARE(QDir(m_config).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList("inner"));
}

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments[1] == QLatin1String(askSwitch)) {
        const QString path = INFO::Option::getConfigPath(arguments[2] == QLatin1String("config"));
        std::fputs(path.toUtf8().constData(), stdout);
        return 0;
    }
    tst_config_path test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_config_path.moc"
