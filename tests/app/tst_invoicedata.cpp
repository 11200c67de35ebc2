#include "app/invoicedata.h"

#include <QJsonDocument>
#include <QtTest>

namespace {

QJsonObject parse(const QByteArray& text)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError)
        qFatal("%s: %s", qPrintable(error.errorString()), text.constData());
    return document.object();
}

} // namespace

class tst_invoicedata : public QObject
{
    Q_OBJECT

private slots:
    void numbersAndTextsGiveTheSame_data();
    void numbersAndTextsGiveTheSame();
    void missingFieldsAreEmpty();
    void theDateBecomesLocalTime();
    void aDateWithoutItsGmtFieldIsEmpty();
    void fileAddressesAreTakenAsSent();
    void linksOfAnotherShapeGiveNone_data();
    void linksOfAnotherShapeGiveNone();
    void thePathIsFolderAndNumber_data();
    void thePathIsFolderAndNumber();
    void filesAreDecoded_data();
    void filesAreDecoded();
};

void tst_invoicedata::numbersAndTextsGiveTheSame_data()
{
    QTest::addColumn<QByteArray>("invoice");
    QTest::newRow("texts") << QByteArray(
        R"({"number":"17","order_number":"4711","formatted_number":"2026"})");
    QTest::newRow("numbers") << QByteArray(
        R"({"number":17,"order_number":4711,"formatted_number":2026})");
    QTest::newRow("whole doubles")
        << QByteArray(R"({"number":17.0,"order_number":4711.0,"formatted_number":2026.0})");
}

void tst_invoicedata::numbersAndTextsGiveTheSame()
{
    QFETCH(QByteArray, invoice);
    const InvoiceData data = readInvoice(parse(invoice));
    QCOMPARE(data.number, QStringLiteral("17"));
    QCOMPARE(data.orderNumber, QStringLiteral("4711"));
    QCOMPARE(data.formattedNumber, QStringLiteral("2026"));
}

void tst_invoicedata::missingFieldsAreEmpty()
{
    for (const char* text : {"{}", R"({"number":null,"order_number":[],"formatted_number":{}})"}) {
        const InvoiceData data = readInvoice(parse(text));
        QVERIFY(data.number.isEmpty());
        QVERIFY(data.orderNumber.isEmpty());
        QVERIFY(data.formattedNumber.isEmpty());
        QVERIFY(data.dateCreated.isEmpty());
        QVERIFY(data.hrefs.isEmpty());
    }
}

void tst_invoicedata::theDateBecomesLocalTime()
{
    const auto dateOf = [](const char* gmt) {
        return readInvoice({{QStringLiteral("date_created"), QStringLiteral("1999-01-01T00:00:00")},
                            {QStringLiteral("date_created_gmt"), QString::fromLatin1(gmt)}})
            .dateCreated;
    };
    QCOMPARE(dateOf("2026-01-05T23:30:00"), QStringLiteral("2026-01-06T00:30:00"));
    QCOMPARE(dateOf("2026-07-05T10:00:00"), QStringLiteral("2026-07-05T12:00:00"));
    QCOMPARE(dateOf("soon"), QString());
}

void tst_invoicedata::aDateWithoutItsGmtFieldIsEmpty()
{
    QVERIFY(readInvoice(parse(R"({"date_created":"2026-01-05T23:30:00"})")).dateCreated.isEmpty());
}

void tst_invoicedata::fileAddressesAreTakenAsSent()
{
    const InvoiceData data = readInvoice(parse(
        R"({"_links":{"pdf":[{"href":"http://a/1?x=%2F"},{"href":""},{"other":1},"x",
            {"href":" http://a/2"}],"self":[{"href":"http://a/3"}]}})"));
    QCOMPARE(data.hrefs,
             QStringList({QStringLiteral("http://a/1?x=%2F"), QString(), QString(), QString(),
                          QStringLiteral(" http://a/2")}));
}

void tst_invoicedata::linksOfAnotherShapeGiveNone_data()
{
    QTest::addColumn<QByteArray>("invoice");
    QTest::newRow("no links") << QByteArray("{}");
    QTest::newRow("links are a list") << QByteArray(R"({"_links":[{"pdf":[{"href":"a"}]}]})");
    QTest::newRow("links are text") << QByteArray(R"({"_links":"a"})");
    QTest::newRow("no files") << QByteArray(R"({"_links":{"self":[{"href":"a"}]}})");
    QTest::newRow("files are an object") << QByteArray(R"({"_links":{"pdf":{"href":"a"}}})");
    QTest::newRow("files are empty") << QByteArray(R"({"_links":{"pdf":[]}})");
}

void tst_invoicedata::linksOfAnotherShapeGiveNone()
{
    QFETCH(QByteArray, invoice);
    QVERIFY(readInvoice(parse(invoice)).hrefs.isEmpty());
}

void tst_invoicedata::thePathIsFolderAndNumber_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("expected");
    QTest::newRow("plain") << "/pdf/"
                           << "RE-1"
                           << "/pdf/RE-1.pdf";
    QTest::newRow("no number") << "/pdf/"
                               << ""
                               << "/pdf/.pdf";
    QTest::newRow("path separator") << "/pdf/"
                                    << "2026/15"
                                    << "/pdf/2026/15.pdf";
    QTest::newRow("parent folder") << "/pdf/"
                                   << "../a"
                                   << "/pdf/../a.pdf";
    QTest::newRow("blanks and percent") << "/pdf/"
                                        << " %1 %2F"
                                        << "/pdf/ %1 %2F.pdf";
    QTest::newRow("no folder") << ""
                               << "RE-1"
                               << "RE-1.pdf";
    QTest::newRow("backslash at the end") << "pdf\\"
                                          << "RE-1"
                                          << "pdf\\RE-1.pdf";
}

void tst_invoicedata::thePathIsFolderAndNumber()
{
    QFETCH(QString, folder);
    QFETCH(QString, number);
    InvoiceData invoice;
    invoice.formattedNumber = number;
    QTEST(invoicePath(folder, invoice), "expected");
}

void tst_invoicedata::filesAreDecoded_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("one line") << QByteArray(R"({"file":"JVBERi0xLjQK"})")
                              << QByteArray("%PDF-1.4\n");
    QTest::newRow("broken into lines")
        << QByteArray(R"({"file":"JVBE\r\nRi0x\nLjQK\n"})") << QByteArray("%PDF-1.4\n");
    QTest::newRow("escaped slash")
        << QByteArray(R"({"file":"\/\/\/\/"})") << QByteArray("\xff\xff\xff");
    QTest::newRow("padding") << QByteArray(R"({"file":"YQ=="})") << QByteArray("a");
    QTest::newRow("zero byte") << QByteArray(R"({"file":"AAE="})") << QByteArray("\0\1", 2);
    QTest::newRow("no file") << QByteArray(R"({"message":"none"})") << QByteArray();
    QTest::newRow("empty file") << QByteArray(R"({"file":""})") << QByteArray();
    QTest::newRow("null") << QByteArray(R"({"file":null})") << QByteArray();
    QTest::newRow("list") << QByteArray(R"({"file":["YQ=="]})") << QByteArray();
    QTest::newRow("nothing of the alphabet") << QByteArray(R"({"file":"---"})") << QByteArray();
}

void tst_invoicedata::filesAreDecoded()
{
    QFETCH(QByteArray, answer);
    QTEST(readInvoiceFile(parse(answer)), "expected");
}

QTEST_APPLESS_MAIN(tst_invoicedata)
#include "tst_invoicedata.moc"
