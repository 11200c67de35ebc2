#include "app/csvrow.h"

#include <QtTest>

class tst_csvrow : public QObject
{
    Q_OBJECT

private slots:
    void columnNamesAreAlwaysQuoted_data();
    void columnNamesAreAlwaysQuoted();
    void cellsAreQuotedOnlyWhereNeeded_data();
    void cellsAreQuotedOnlyWhereNeeded();
    void theSeparatorOfTheRowDecides();
    void columnsAreFoundByTheirQuotedName();
    void ofEqualColumnsTheFirstIsFound();
    void columnsAddedLaterAreFound();
    void aListThatWasReplacedIsNoticed();
    void aListThatChangedInPlaceIsNoticed();
};

void tst_csvrow::columnNamesAreAlwaysQuoted_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<QString>("expected");

    QTest::newRow("one part") << "status"
                              << ""
                              << "\"status\"";
    QTest::newRow("two parts") << "billing"
                               << "_email"
                               << "\"billing_email\"";
    QTest::newRow("empty") << ""
                           << ""
                           << "\"\"";
    QTest::newRow("inner quotes are not doubled") << "a\"b"
                                                  << "_c\""
                                                  << "\"a\"b_c\"\"";
    QTest::newRow("a separator stays") << "a;b"
                                       << ""
                                       << "\"a;b\"";
}

void tst_csvrow::columnNamesAreAlwaysQuoted()
{
    QFETCH(QString, a);
    QFETCH(QString, b);
    QTEST(quoteHeader(a, b), "expected");
}

void tst_csvrow::cellsAreQuotedOnlyWhereNeeded_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("expected");

    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("plain text") << "Hamburg"
                                << "Hamburg";
    QTest::newRow("number") << "-12.50"
                            << "-12.50";
    QTest::newRow("leading zero") << "01067"
                                  << "01067";
    QTest::newRow("umlauts") << QStringLiteral("Jörg Weiß") << QStringLiteral("Jörg Weiß");
    QTest::newRow("blanks around") << " a "
                                   << " a ";
    QTest::newRow("comma") << "a,b"
                           << "a,b";
    QTest::newRow("tab") << "a\tb"
                         << "a\tb";
    QTest::newRow("apostrophe") << "it's"
                                << "it's";
    QTest::newRow("vertical bar") << "a|b"
                                  << "a|b";
    QTest::newRow("formula") << "=1+2"
                             << "=1+2";
    QTest::newRow("separator") << "a;b"
                               << "\"a;b\"";
    QTest::newRow("separator alone") << ";"
                                     << "\";\"";
    QTest::newRow("double quotes") << "say \"hi\""
                                   << "\"say \"\"hi\"\"\"";
    QTest::newRow("double quote alone") << "\""
                                        << "\"\"\"\"";
    QTest::newRow("line feed") << "a\nb"
                               << "\"a\nb\"";
    QTest::newRow("carriage return") << "a\rb"
                                     << "\"a\rb\"";
    QTest::newRow("both line ends") << "a\r\nb"
                                    << "\"a\r\nb\"";
    QTest::newRow("everything") << "a;\"b\"\r\n"
                                << "\"a;\"\"b\"\"\r\n\"";
}

void tst_csvrow::cellsAreQuotedOnlyWhereNeeded()
{
    QFETCH(QString, value);
    QTEST(csvCell(value, QLatin1Char(';')), "expected");
}

void tst_csvrow::theSeparatorOfTheRowDecides()
{
    QCOMPARE(csvCell(QStringLiteral("a;b,c"), QLatin1Char(',')), QStringLiteral("\"a;b,c\""));
    QCOMPARE(csvCell(QStringLiteral("a;b"), QLatin1Char(',')), QStringLiteral("a;b"));
}

void tst_csvrow::columnsAreFoundByTheirQuotedName()
{
    const QStringList headers {quoteHeader(QStringLiteral("id")),
                               quoteHeader(QStringLiteral("total"))};
    ColumnLookup lookup;
    QCOMPARE(lookup.indexOf(headers, QStringLiteral("\"id\"")), 0);
    QCOMPARE(lookup.indexOf(headers, QStringLiteral("\"total\"")), 1);
    QCOMPARE(lookup.indexOf(headers, QStringLiteral("total")), -1);
    QCOMPARE(lookup.indexOf(headers, QStringLiteral("\"Total\"")), -1);
    QCOMPARE(lookup.indexOf({}, QStringLiteral("\"id\"")), -1);
}

void tst_csvrow::ofEqualColumnsTheFirstIsFound()
{
    const QString name = quoteHeader(QStringLiteral("line_items_name"));
    ColumnLookup lookup;
    QCOMPARE(lookup.indexOf({quoteHeader(QStringLiteral("id")), name, name}, name), 1);
}

void tst_csvrow::columnsAddedLaterAreFound()
{
    QStringList headers {QStringLiteral("\"a\"")};
    ColumnLookup lookup;
    QCOMPARE(lookup.indexOf(headers, QStringLiteral("\"b\"")), -1);
    headers.append(QStringLiteral("\"b\""));
    QCOMPARE(lookup.indexOf(headers, QStringLiteral("\"b\"")), 1);
    headers.clear();
    QCOMPARE(lookup.indexOf(headers, QStringLiteral("\"a\"")), -1);
}

void tst_csvrow::aListThatWasReplacedIsNoticed()
{
    QStringList headers {QStringLiteral("\"a\""), QStringLiteral("\"b\"")};
    ColumnLookup lookup;
    QCOMPARE(lookup.indexOf(headers, QStringLiteral("\"b\"")), 1);
    headers = {QStringLiteral("\"b\""), QStringLiteral("\"a\"")};
    QCOMPARE(lookup.indexOf(headers, QStringLiteral("\"b\"")), 0);
}

void tst_csvrow::aListThatChangedInPlaceIsNoticed()
{
    QStringList headers {QStringLiteral("\"a\""), QStringLiteral("\"b\"")};
    ColumnLookup lookup;
    QCOMPARE(lookup.indexOf(headers, QStringLiteral("\"a\"")), 0);
    headers[0] = QStringLiteral("\"c\"");
    QCOMPARE(lookup.indexOf(headers, QStringLiteral("\"a\"")), -1);
    QCOMPARE(lookup.indexOf(headers, QStringLiteral("\"c\"")), 0);
}

QTEST_APPLESS_MAIN(tst_csvrow)
#include "tst_csvrow.moc"
