// From the start of the process to the first painted window: the program with a host's file, saved
// options and two secrets, against a window of the same widgets written by hand. Needs a secret
// store: scripts/with-keyring build/release/bin/bench_start
#include "credentials/keychain_class.h"
#include "credentials/keychain_key.h"
#include "form/mod_form_qt.h"

#include "bench/bench_report.h"
#include "bench/first_paint.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace {

const int iRounds = 15;
const QString shop = QStringLiteral("https://bench.example");

bool storeSecrets()
{
    KeyChainClass keyChain(QStringLiteral("halverin_software.ledora.RestApi"), nullptr);
    QString error;
    for (const char* name : {"api_key_chain", "api_secret_chain"}) {
        if (!keyChain.writeKeySync(makeRestKeychainKey(shop, QString::fromLatin1(name)),
                                   QStringLiteral("secret"), error)) {
            std::fprintf(stderr, "bench_start: %s\n", qPrintable(error));
            return false;
        }
    }
    return true;
}

/// Lays down what a host and an earlier start would leave. \return path of the host's file
QString layDown(const QTemporaryDir& folder)
{
    const QString ini = folder.filePath(QStringLiteral("options.ini"));
    const QMap<QString, QVariant> options {
        {QStringLiteral("mainurl"), shop},
        {QStringLiteral("b2c_handling"), QVariantList {1}},
        {QStringLiteral("skr"), QVariantList {4}},
        {QStringLiteral("buchungs_text_erloes"), QStringLiteral("Verkauf <NAME>")},
    };
    mod_form_qt::INFO::saveMapToIniFile(&options, ini, QStringLiteral("options"), false, nullptr,
                                        QString());
    QFile host(folder.filePath(QStringLiteral("host.txt")));
    if (host.open(QIODevice::WriteOnly))
        host.write(ini.toUtf8() + "\n3\n1;2;3\n4;5;6\n7;8;9\n"
                   + folder.filePath(QStringLiteral("output.csv")).toUtf8() + "\n0\n-\n"
                   + folder.path().toUtf8() + '\n');
    return host.fileName();
}

/// \return milliseconds; -1 if the program did not get there
double startOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LEDORA_BENCH_START"), QString::number(bench::nowNs()));
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationDirPath() + QLatin1Char('/') + program, arguments);
    if (!process.waitForFinished(30000) || process.exitCode() != 0)
        return -1;
    return process.readAllStandardOutput().trimmed().toDouble() / 1e6;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    const QString hostFile = layDown(folder);
    if (!storeSecrets())
        return 2;
    QList<double> plain;
    QList<double> ledora;
    for (int round = 0; round <= iRounds; ++round) {
        const double plainMs = startOf(QStringLiteral("start_plain"), {});
        const double ledoraMs = startOf(QStringLiteral("start_ledora"), {hostFile});
        if (plainMs < 0 || ledoraMs < 0) {
            std::fprintf(stderr, "bench_start: a program did not show its window\n");
            return 2;
        }
        if (round == 0)
            continue; // reads the files from the disk
        plain.append(plainMs);
        ledora.append(ledoraMs);
    }
    bench::Limits limits;
    bench::report("plain window, process start to first paint", bench::median(plain), "ms");
    bench::report("ledora, process start to first paint", bench::median(ledora), "ms");
    limits.report("ledora against the plain window", bench::median(ledora) / bench::median(plain),
                  "times", 2.5, 1.5);
    return limits.exitStatus();
}
