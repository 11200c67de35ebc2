#include "app/hostconfig.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>

namespace {

constexpr int kPatience = 60000;
const QString kSource = QStringLiteral(LEDORA_TEST_DATA "/../..");
const QString kExample = kSource + QStringLiteral("/docs/host-example/");
const QString kGolden = QStringLiteral(LEDORA_TEST_DATA "/golden/%1/expected.csv");

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

HostConfig exampleConfig()
{
    const QByteArray content = contentOf(kExample + QStringLiteral("host.txt"));
    QTextStream text(content);
    return readHostConfig(text);
}

QByteArray triple(const char* name, const std::tuple<int, int, int>& konten)
{
    const auto& [skr03, skr04, skr49] = konten;
    return QStringLiteral("|%1_03|%2|%1_04|%3|%1_49|%4|")
        .arg(QLatin1String(name), QString::number(skr03), QString::number(skr04),
             QString::number(skr49))
        .toUtf8();
}

} // namespace

/// Holds what the guide for hosts shows against what the program writes.
class tst_host_example : public QObject
{
    Q_OBJECT

private slots:
    void theHostFileReadsAsToldInTheGuide();
    void theExportIsPartOfAGoldenOne();
    void theExportBearsTheAccountsAndPathsOfTheHostFile();
    void theExampleHostReadsTheExport();
    void theExampleHostStartsTheProgram();
    void theRowsShownInTheGuideStandInGoldenExports();
};

void tst_host_example::theHostFileReadsAsToldInTheGuide()
{
    const HostConfig config = exampleConfig();
    QCOMPARE(config.iniPath, QStringLiteral("/home/erika/buchhaltung/ledora.ini"));
    QCOMPARE(config.skr, 3);
    QCOMPARE(config.outputFile, QStringLiteral("/home/erika/buchhaltung/export.csv"));
    QCOMPARE(config.firmaKU, false);
    QCOMPARE(config.pdfFolder, QStringLiteral("/home/erika/buchhaltung/rechnungen"));
    const QByteArray guide = contentOf(kSource + QStringLiteral("/docs/host-integration.md"));
    QVERIFY(guide.contains(contentOf(kExample + QStringLiteral("host.txt"))));
}

void tst_host_example::theExportIsPartOfAGoldenOne()
{
    const QByteArray whole = contentOf(kGolden.arg(QStringLiteral("recordings-germanized")))
                                 .replace("@SHOP@", "https://shop.example")
                                 .replace("@PDF@", exampleConfig().pdfFolder->toUtf8());
    const QList<QByteArray> lines = whole.split('\n');
    const QList<QByteArray> shown = contentOf(kExample + QStringLiteral("export.csv")).split('\n');
    QCOMPARE(shown.size(), 10);
    qsizetype at = 0;
    for (const QByteArray& line : shown) {
        at = lines.indexOf(line, at);
        QVERIFY2(at >= 0, line.constData());
        ++at;
    }
}

void tst_host_example::theExportBearsTheAccountsAndPathsOfTheHostFile()
{
    const HostConfig config = exampleConfig();
    const QByteArray options =
        contentOf(kExample + QStringLiteral("export.csv")).split('\n').first();
    QVERIFY(options.contains(triple("20", config.ebayKonto.value())));
    QVERIFY(options.contains(triple("32", config.paypalKonto.value())));
    QVERIFY(options.contains(triple("33", config.woocommerceKonto.value())));
    QVERIFY(options.contains("|skr|" + QByteArray::number(config.skr.value()) + '|'));
    QVERIFY(options.contains("|germanized_pdf_folder|" + config.pdfFolder->toUtf8() + '|'));
}

void tst_host_example::theExampleHostReadsTheExport()
{
    QProcess host;
    host.start(kExample + QStringLiteral("host.py"),
               {QStringLiteral("--read"), kExample + QStringLiteral("export.csv")});
    QVERIFY2(host.waitForFinished(kPatience), qPrintable(host.errorString()));
    QCOMPARE(QString::fromUtf8(host.readAllStandardError()), QString());
    const QByteArray printed = host.readAllStandardOutput();
    QCOMPARE(QString::fromUtf8(printed),
             QString::fromUtf8(contentOf(kExample + QStringLiteral("expected.txt"))));
    const QByteArray guide = contentOf(kSource + QStringLiteral("/docs/host-integration.md"));
    QVERIFY(guide.contains(printed));
}

void tst_host_example::theExampleHostStartsTheProgram()
{
    // In place of the program one that does what the program does for a user who agrees.
    const QTemporaryDir folder;
    QVERIFY(folder.isValid());
    QFile program(folder.filePath(QStringLiteral("ledora")));
    QVERIFY(program.open(QIODevice::WriteOnly));
    program.write("#!/bin/sh\ncp \"$LEDORA_TEST_EXPORT\" \"$(sed -n 6p \"$1\")\"\n");
    program.close();
    QVERIFY(program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PATH"),
                       folder.path() + QLatin1Char(':')
                           + environment.value(QStringLiteral("PATH")));
    environment.insert(QStringLiteral("LEDORA_TEST_EXPORT"),
                       kExample + QStringLiteral("export.csv"));
    QProcess host;
    host.setProcessEnvironment(environment);
    host.start(kExample + QStringLiteral("host.py"),
               {folder.filePath(QStringLiteral("buchhaltung"))});
    QVERIFY2(host.waitForFinished(kPatience), qPrintable(host.errorString()));
    QCOMPARE(QString::fromUtf8(host.readAllStandardError()), QString());
    QCOMPARE(QString::fromUtf8(host.readAllStandardOutput()),
             QString::fromUtf8(contentOf(kExample + QStringLiteral("expected.txt"))));
}

void tst_host_example::theRowsShownInTheGuideStandInGoldenExports()
{
    // Blocks are introduced by ```csv and the name of the golden case.
    const QString guide =
        QString::fromUtf8(contentOf(kSource + QStringLiteral("/docs/host-integration.md")));
    static const QRegularExpression block(QStringLiteral("```csv ([a-z0-9-]+)\n(.*?)```"),
                                          QRegularExpression::DotMatchesEverythingOption);
    int rows = 0;
    for (auto match = block.globalMatch(guide); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        const QString golden = QString::fromUtf8(contentOf(kGolden.arg(found.captured(1))));
        QVERIFY2(!golden.isEmpty(), qPrintable(found.captured(1)));
        const QStringList lines = found.captured(2).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        for (const QString& line : lines) {
            QVERIFY2(golden.contains(QLatin1Char('\n') + line + QLatin1Char('\n')),
                     qPrintable(line));
            ++rows;
        }
    }
    QVERIFY2(rows >= 10, "the guide shows no rows");
}

QTEST_GUILESS_MAIN(tst_host_example)
#include "tst_host_example.moc"
