#include "app/hostconfig.h"

#include <QTextStream>
#include <QtTest>

using Triple = std::tuple<int, int, int>;
Q_DECLARE_METATYPE(std::optional<Triple>)
Q_DECLARE_METATYPE(std::optional<QString>)

namespace {

HostConfig configOf(const QByteArray& file)
{
    QTextStream text(file);
    text.setEncoding(QStringConverter::Utf8);
    return readHostConfig(text);
}

QList<QByteArray> fullFile()
{
    return {"/home/anna/options.ini", "4", "1;2;3", "4;5;6",         "7;8;9",
            "/home/anna/output.csv",  "1", "-",     "/home/anna/pdf"};
}

/// A full file with another line at one position.
HostConfig configWith(qsizetype position, const QByteArray& line)
{
    QList<QByteArray> lines = fullFile();
    lines[position] = line;
    return configOf(lines.join('\n'));
}

const std::optional<Triple> noTriple;

} // namespace

class tst_hostconfig : public QObject
{
    Q_OBJECT

private slots:
    void givesEachPositionItsMeaning();
    void givesNothingForAnEmptyFile();
    void leavesValuesBehindTheEndAbsent_data();
    void leavesValuesBehindTheEndAbsent();
    void readsTheLastLineWithoutALineEnd();
    void skipsBlankLines_data();
    void skipsBlankLines();
    void cleansTheLines_data();
    void cleansTheLines();
    void splitsAtLineFeedsOnly();
    void swallowsAByteOrderMark();
    void readsUmlauts();
    void readsTheChart_data();
    void readsTheChart();
    void readsClearingAccounts_data();
    void readsClearingAccounts();
    void keepsThePositionsBehindABadTriple_data();
    void keepsThePositionsBehindABadTriple();
    void removesQuotesFromTheExportPathOnly();
    void readsTheSmallBusinessSwitch_data();
    void readsTheSmallBusinessSwitch();
    void countsTheLineWithoutMeaning();
    void stopsBehindTheLastMeaning();
    void readsVeryLongLines();
};

void tst_hostconfig::givesEachPositionItsMeaning()
{
    const HostConfig config = configOf(fullFile().join('\n') + '\n');
    QCOMPARE(config.iniPath.value(), QStringLiteral("/home/anna/options.ini"));
    QCOMPARE(config.skr.value(), 4);
    QCOMPARE(config.ebayKonto.value(), Triple(1, 2, 3));
    QCOMPARE(config.paypalKonto.value(), Triple(4, 5, 6));
    QCOMPARE(config.woocommerceKonto.value(), Triple(7, 8, 9));
    QCOMPARE(config.outputFile.value(), QStringLiteral("/home/anna/output.csv"));
    QCOMPARE(config.firmaKU.value(), true);
    QCOMPARE(config.pdfFolder.value(), QStringLiteral("/home/anna/pdf"));
}

void tst_hostconfig::givesNothingForAnEmptyFile()
{
    for (const QByteArray& file : {QByteArray(), QByteArray("\n"), QByteArray(" \r\n\t\r\n")}) {
        const HostConfig config = configOf(file);
        QVERIFY(!config.iniPath && !config.skr && !config.ebayKonto && !config.paypalKonto);
        QVERIFY(!config.woocommerceKonto && !config.outputFile && !config.firmaKU);
        QVERIFY(!config.pdfFolder);
    }
}

void tst_hostconfig::leavesValuesBehindTheEndAbsent_data()
{
    QTest::addColumn<int>("lines");
    for (int lines = 0; lines <= 9; ++lines)
        QTest::addRow("%d lines", lines) << lines;
}

void tst_hostconfig::leavesValuesBehindTheEndAbsent()
{
    QFETCH(int, lines);
    const HostConfig config = configOf(fullFile().mid(0, lines).join('\n'));
    QCOMPARE(config.iniPath.has_value(), lines > 0);
    QCOMPARE(config.skr.has_value(), lines > 1);
    QCOMPARE(config.ebayKonto.has_value(), lines > 2);
    QCOMPARE(config.paypalKonto.has_value(), lines > 3);
    QCOMPARE(config.woocommerceKonto.has_value(), lines > 4);
    QCOMPARE(config.outputFile.has_value(), lines > 5);
    QCOMPARE(config.firmaKU.has_value(), lines > 6);
    QCOMPARE(config.pdfFolder.has_value(), lines > 8);
}

void tst_hostconfig::readsTheLastLineWithoutALineEnd()
{
    QCOMPARE(configOf("/options.ini\n49").skr.value(), 49);
}

void tst_hostconfig::skipsBlankLines_data()
{
    QTest::addColumn<QByteArray>("between");
    QTest::newRow("an empty line") << QByteArray("\n\n");
    QTest::newRow("several") << QByteArray("\n\n\n\n");
    QTest::newRow("an empty line, DOS ends") << QByteArray("\r\n\r\n");
    QTest::newRow("blanks and tabs") << QByteArray("\n \t \n");
    QTest::newRow("carriage returns alone") << QByteArray("\n\r\r\r\n");
}

void tst_hostconfig::skipsBlankLines()
{
    QFETCH(QByteArray, between);
    const HostConfig config = configOf(between + fullFile().join(between));
    QCOMPARE(config.iniPath.value(), QStringLiteral("/home/anna/options.ini"));
    QCOMPARE(config.skr.value(), 4);
    QCOMPARE(config.woocommerceKonto.value(), Triple(7, 8, 9));
    QCOMPARE(config.outputFile.value(), QStringLiteral("/home/anna/output.csv"));
    QCOMPARE(config.pdfFolder.value(), QStringLiteral("/home/anna/pdf"));
}

void tst_hostconfig::cleansTheLines_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("path");
    QTest::newRow("as it is") << QByteArray("/a b") << QStringLiteral("/a b");
    QTest::newRow("blanks around") << QByteArray("  /a b  ") << QStringLiteral("/a b");
    QTest::newRow("tabs around") << QByteArray("\t/a b\t") << QStringLiteral("/a b");
    QTest::newRow("DOS line end") << QByteArray("/a b\r") << QStringLiteral("/a b");
    QTest::newRow("doubled carriage return") << QByteArray("/a b\r\r") << QStringLiteral("/a b");
    QTest::newRow("carriage return inside") << QByteArray("/a\r b") << QStringLiteral("/a b");
    QTest::newRow("blank before the line end") << QByteArray("/a b \r") << QStringLiteral("/a b");
    QTest::newRow("two blanks inside stay") << QByteArray("/a  b") << QStringLiteral("/a  b");
}

void tst_hostconfig::cleansTheLines()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, path);
    QCOMPARE(configWith(0, line).iniPath.value(), path);
    QCOMPARE(configWith(5, line).outputFile.value(), path);
    QCOMPARE(configWith(8, line).pdfFolder.value(), path);
}

void tst_hostconfig::splitsAtLineFeedsOnly()
{
    // Other systems' ideas of a line end: vertical tab, form feed, the Unicode separators.
    const QByteArray path = "/a\vb\fc\xE2\x80\xA8"
                            "d\xE2\x80\xA9"
                            "e";
    const HostConfig config = configOf(path + "\n49\n");
    QCOMPARE(config.iniPath.value(), QString::fromUtf8(path));
    QCOMPARE(config.skr.value(), 49);
}

void tst_hostconfig::swallowsAByteOrderMark()
{
    const HostConfig config = configOf("\xEF\xBB\xBF/options.ini\r\n49\r\n");
    QCOMPARE(config.iniPath.value(), QStringLiteral("/options.ini"));
    QCOMPARE(config.skr.value(), 49);
}

void tst_hostconfig::readsUmlauts()
{
    const HostConfig config = configWith(8, "/home/j\xC3\xBCrgen/\xE2\x82\xAC Bel\xC3\xA4ge");
    QCOMPARE(config.pdfFolder.value(), QStringLiteral("/home/jürgen/€ Beläge"));
}

void tst_hostconfig::readsTheChart_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("skr");
    QTest::newRow("3") << QByteArray("3") << 3;
    QTest::newRow("4") << QByteArray("4") << 4;
    QTest::newRow("49") << QByteArray("49") << 49;
    QTest::newRow("blanks around") << QByteArray(" 3 ") << 3;
    QTest::newRow("leading zero") << QByteArray("03") << 3;
    QTest::newRow("another number") << QByteArray("5") << 0;
    QTest::newRow("zero") << QByteArray("0") << 0;
    QTest::newRow("negative") << QByteArray("-3") << 0;
    QTest::newRow("with decimals") << QByteArray("3.0") << 0;
    QTest::newRow("hexadecimal") << QByteArray("0x3") << 0;
    QTest::newRow("text") << QByteArray("SKR03") << 0;
    QTest::newRow("number, then text") << QByteArray("3 SKR") << 0;
    QTest::newRow("in quotes") << QByteArray("\"3\"") << 0;
    QTest::newRow("beyond an int") << QByteArray("2147483648") << 0;
    QTest::newRow("wraps around to 3") << QByteArray("4294967299") << 0;
    QTest::newRow("beyond 64 bits") << QByteArray("18446744073709551619") << 0;
}

void tst_hostconfig::readsTheChart()
{
    QFETCH(QByteArray, line);
    const HostConfig config = configWith(1, line);
    QVERIFY(config.skr);
    QTEST(config.skr.value(), "skr");
    QCOMPARE(config.ebayKonto.value(), Triple(1, 2, 3));
}

void tst_hostconfig::readsClearingAccounts_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<std::optional<Triple>>("triple");
    const auto row = [](const char* name, const char* line, std::optional<Triple> triple) {
        QTest::newRow(name) << QByteArray(line) << triple;
    };
    row("three numbers", "1362;1462;707", Triple(1362, 1462, 707));
    row("blanks around the numbers", " 1362 ; 1462 ;\t707 ", Triple(1362, 1462, 707));
    row("an empty part and a text", "1300;;abc", Triple(1300, 0, 0));
    row("all parts empty", ";;", Triple(0, 0, 0));
    row("a part beyond an int", "2147483648;2147483647;1", Triple(0, 2147483647, 1));
    row("a negative number", "-1;1;1", Triple(-1, 1, 1));
    row("decimals and hexadecimal", "1.0;0x10;010", Triple(0, 0, 10));
    row("quotes are text", "\"1\";2;3", Triple(0, 2, 3));
    row("one part", "1362", noTriple);
    row("two parts", "1362;1462", noTriple);
    row("four parts", "1362;1462;707;1", noTriple);
    row("three and an empty one", "1362;1462;707;", noTriple);
    row("commas", "1362,1462,707", noTriple);
    row("a text", "keine", noTriple);
}

void tst_hostconfig::readsClearingAccounts()
{
    QFETCH(QByteArray, line);
    QFETCH(std::optional<Triple>, triple);
    QCOMPARE(configWith(2, line).ebayKonto, triple);
    QCOMPARE(configWith(3, line).paypalKonto, triple);
    QCOMPARE(configWith(4, line).woocommerceKonto, triple);
}

void tst_hostconfig::keepsThePositionsBehindABadTriple_data()
{
    QTest::addColumn<int>("position");
    for (int position = 2; position <= 4; ++position)
        QTest::addRow("position %d", position) << position;
}

void tst_hostconfig::keepsThePositionsBehindABadTriple()
{
    QFETCH(int, position);
    const HostConfig config = configWith(position, "1220;1820");
    QCOMPARE(config.ebayKonto, position == 2 ? noTriple : Triple(1, 2, 3));
    QCOMPARE(config.paypalKonto, position == 3 ? noTriple : Triple(4, 5, 6));
    QCOMPARE(config.woocommerceKonto, position == 4 ? noTriple : Triple(7, 8, 9));
    QCOMPARE(config.outputFile.value(), QStringLiteral("/home/anna/output.csv"));
}

void tst_hostconfig::removesQuotesFromTheExportPathOnly()
{
    QCOMPARE(configWith(5, R"("/home/a b/out"put".csv")").outputFile.value(),
             QStringLiteral("/home/a b/output.csv"));
    QCOMPARE(configWith(0, R"("/home/a b/options.ini")").iniPath.value(),
             QStringLiteral(R"("/home/a b/options.ini")"));
    QCOMPARE(configWith(8, R"("/home/a b/pdf")").pdfFolder.value(),
             QStringLiteral(R"("/home/a b/pdf")"));
}

void tst_hostconfig::readsTheSmallBusinessSwitch_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("firmaKU");
    QTest::newRow("0") << QByteArray("0") << false;
    QTest::newRow("1") << QByteArray("1") << true;
    QTest::newRow("2") << QByteArray("2") << true;
    QTest::newRow("-1") << QByteArray("-1") << true;
    QTest::newRow("several zeros") << QByteArray("000") << false;
    QTest::newRow("a text") << QByteArray("true") << false;
    QTest::newRow("with decimals") << QByteArray("1.0") << false;
    QTest::newRow("beyond an int") << QByteArray("2147483648") << false;
    QTest::newRow("beyond 64 bits") << QByteArray("99999999999999999999") << false;
}

void tst_hostconfig::readsTheSmallBusinessSwitch()
{
    QFETCH(QByteArray, line);
    QTEST(configWith(6, line).firmaKU.value(), "firmaKU");
}

void tst_hostconfig::countsTheLineWithoutMeaning()
{
    const HostConfig config = configWith(7, "/not/the/folder");
    QCOMPARE(config.pdfFolder.value(), QStringLiteral("/home/anna/pdf"));
    QList<QByteArray> lines = fullFile();
    lines.removeAt(7);
    QVERIFY(!configOf(lines.join('\n')).pdfFolder);
}

void tst_hostconfig::stopsBehindTheLastMeaning()
{
    QByteArray file = fullFile().join('\n') + "\n49\n1;1;1\n";
    for (int line = 0; line < 100000; ++line)
        file += "/another/folder\n";
    QTextStream text(file);
    text.setEncoding(QStringConverter::Utf8);
    const HostConfig config = readHostConfig(text);
    QCOMPARE(config.skr.value(), 4);
    QCOMPARE(config.ebayKonto.value(), Triple(1, 2, 3));
    QCOMPARE(config.pdfFolder.value(), QStringLiteral("/home/anna/pdf"));
    QCOMPARE(text.readLine(), QStringLiteral("49"));
}

void tst_hostconfig::readsVeryLongLines()
{
    const QByteArray path(1'000'000, 'x');
    const HostConfig config = configWith(0, path);
    QCOMPARE(config.iniPath.value(), QString::fromLatin1(path));
    QCOMPARE(config.skr.value(), 4);
}

QTEST_APPLESS_MAIN(tst_hostconfig)
#include "tst_hostconfig.moc"
