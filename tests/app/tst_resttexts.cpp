#include "app/resttexts.h"

#include <QtTest>

class tst_resttexts : public QObject
{
    Q_OBJECT

private slots:
    void statusLineIsBoldBetweenLineBreaks_data();
    void statusLineIsBoldBetweenLineBreaks();
    void credentialsAreTrimmedAndEncoded_data();
    void credentialsAreTrimmedAndEncoded();
    void counterLines_data();
    void counterLines();
};

void tst_resttexts::statusLineIsBoldBetweenLineBreaks_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("plain") << QStringLiteral("Gestartet.")
                           << QStringLiteral("<br><b>Gestartet.</b><br>");
    QTest::newRow("empty") << QString() << QStringLiteral("<br><b></b><br>");
    QTest::newRow("with place marks")
        << QStringLiteral("a%2Fb %1 %%1") << QStringLiteral("<br><b>a%2Fb %1 %%1</b><br>");
    QTest::newRow("with mark-up") << QStringLiteral("<i>x</i>")
                                  << QStringLiteral("<br><b><i>x</i></b><br>");
}

void tst_resttexts::statusLineIsBoldBetweenLineBreaks()
{
    QFETCH(QString, text);
    QTEST(boldMessage(text), "expected");
}

void tst_resttexts::credentialsAreTrimmedAndEncoded_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("secret");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("plain") << "ck_1"
                           << "cs_2" << QByteArray("Basic Y2tfMTpjc18y");
    QTest::newRow("blanks around both") << " ck_1\t"
                                        << "\n cs_2  " << QByteArray("Basic Y2tfMTpjc18y");
    QTest::newRow("umlauts as UTF-8 bytes")
        << QString::fromUtf8("ck_\xC3\xBC") << QString::fromUtf8("cs_\xC3\x9F")
        << QByteArray("Basic Y2tfw7w6Y3Nfw58=");
    QTest::newRow("both empty") << QString() << QString() << QByteArray("Basic Og==");
    // '>' and '?' would become '-' and '_' in the alphabet for addresses.
    QTest::newRow("the standard alphabet") << "k>>>"
                                           << "s???" << QByteArray("Basic az4+PjpzPz8/");
}

void tst_resttexts::credentialsAreTrimmedAndEncoded()
{
    QFETCH(QString, key);
    QFETCH(QString, secret);
    QTEST(basicAuthorization(key, secret), "expected");
}

void tst_resttexts::counterLines_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<qint64>("elapsed");
    QTest::addColumn<QString>("reading");
    QTest::addColumn<QString>("totals");
    const QLocale german(QLocale::German, QLocale::Germany);
    QTest::newRow("nothing yet") << QLocale::c() << 0LL << 0LL
                                 << QStringLiteral("Lese 0 bytes Bytes. Zeit 0 min (0 ms).")
                                 << QString::fromUtf8(
                                        "7 Einträge. Zeit 0 min (0 ms). Empfangen: 0 bytes. "
                                        "PDF-Dateien erstellt: 3.");
    QTest::newRow("a minute not yet full")
        << QLocale::c() << 1536LL << 59999LL
        << QStringLiteral("Lese 1.50 KiB Bytes. Zeit 0 min (59999 ms).")
        << QString::fromUtf8("7 Einträge. Zeit 0 min (59999 ms). Empfangen: 1.50 KiB. "
                             "PDF-Dateien erstellt: 3.");
    QTest::newRow("a German comma, whole minutes")
        << german << 3145728LL << 121000LL
        << QStringLiteral("Lese 3,00 MiB Bytes. Zeit 2 min (121000 ms).")
        << QString::fromUtf8("7 Einträge. Zeit 2 min (121000 ms). Empfangen: 3,00 MiB. "
                             "PDF-Dateien erstellt: 3.");
}

void tst_resttexts::counterLines()
{
    QFETCH(QLocale, locale);
    QFETCH(qint64, bytes);
    QFETCH(qint64, elapsed);
    const RunFigures figures {bytes, elapsed, 7, 3};
    QTEST(readingLine(locale, figures), "reading");
    QTEST(totalsLine(locale, figures), "totals");
}

QTEST_GUILESS_MAIN(tst_resttexts)

#include "tst_resttexts.moc"
