#include "tests/proof/property_run.h"

#include "form/mod_form_qt.h"
#include "tests/app/run_fixture.h"

#include <QApplication>
#include <QEventLoop>
#include <QLoggingCategory>
#include <QProcess>
#include <QTimer>
#include <QTimeZone>

#include <cstdio>
#include <cstring>

namespace property {

namespace {

constexpr char switchName[] = "--export";
constexpr int limitMs = 240000;

/// Variables that tell a process about its language or zone.
const QStringList& telling()
{
    static const QStringList names {
        QStringLiteral("LC_ALL"),      QStringLiteral("LC_NUMERIC"), QStringLiteral("LC_TIME"),
        QStringLiteral("LC_MONETARY"), QStringLiteral("LC_CTYPE"),   QStringLiteral("LANG"),
        QStringLiteral("LANGUAGE"),    QStringLiteral("LOCPATH"),    QStringLiteral("TZ")};
    return names;
}

QByteArray surroundingsLine()
{
    char number[32];
    std::snprintf(number, sizeof number, "%.1f", 1234.5);
    const QString toolkit = QLocale().toString(1234.5, 'f', 1);
    const int offset = QDateTime(QDate(2026, 1, 5), QTime(12, 0)).offsetFromUtc();
    return number + (' ' + toolkit.toUtf8()) + ' ' + QByteArray::number(offset);
}

/// The answers of the other process have to look the same to all, so none of its own are given.
int exportFrom(const QString& shopUrl, const QString& pdfFolder, const QString& file,
               const StartFolder& folder)
{
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    RunFixture fixture(folder);
    QStringList lines = folder.hostLines();
    lines[8] = pdfFolder;
    fixture.start({{QStringLiteral("germanized_use"), true}}, lines);
    mod_form_qt::INFO::setData(&fixture.window->optionsMap, "mainurl", shopUrl, false);
    fixture.runToEnd();
    if (!fixture.window->bFinished || fixture.window->bError
        || fixture.answers.titles() != QStringList(QStringLiteral("Beendet:")))
        return 1;
    std::puts(surroundingsLine().constData());
    return QFile::copy(folder.exportFile(), file) ? 0 : 1;
}

} // namespace

Outcome runIn(const Surroundings& surroundings, const QString& shopUrl, const QString& pdfFolder)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("export"));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString& name : telling())
        environment.remove(name);
    for (auto it = surroundings.variables.constBegin(); it != surroundings.variables.constEnd();
         ++it)
        environment.insert(it.key(), it.value());

    QProcess process;
    process.setProcessEnvironment(environment);
    QEventLoop loop;
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::errorOccurred, &loop, &QEventLoop::quit);
    QTimer::singleShot(limitMs, &loop, &QEventLoop::quit);
    process.start(
        QCoreApplication::applicationFilePath(),
        {QLatin1String(switchName), shopUrl, pdfFolder, file, surroundings.defaultLocale});
    loop.exec();

    Outcome outcome;
    if (process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished();
        outcome.problem = QStringLiteral("did not end in time");
        return outcome;
    }
    outcome.ok = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    outcome.surroundings = QString::fromUtf8(process.readAllStandardOutput()).trimmed();
    outcome.problem = QString::fromUtf8(process.readAllStandardError());
    QFile exported(file);
    if (exported.open(QIODevice::ReadOnly))
        outcome.bytes = exported.readAll();
    return outcome;
}

int runIfAsked(int argc, char** argv)
{
    if (argc < 6 || std::strcmp(argv[1], switchName) != 0)
        return -1;
    const StartFolder folder;
    QByteArray program(argv[0]);
    QByteArray hostFile = folder.hostFile().toUtf8();
    char* arguments[] = {program.data(), hostFile.data(), nullptr};
    int count = 2;
    const QApplication application(count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    if (*argv[5] != '\0')
        QLocale::setDefault(QLocale(QString::fromUtf8(argv[5])));
    return exportFrom(QString::fromUtf8(argv[2]), QString::fromUtf8(argv[3]),
                      QString::fromUtf8(argv[4]), folder);
}

} // namespace property
