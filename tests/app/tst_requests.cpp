#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include <QLabel>
#include <QNetworkAccessManager>
#include <QNetworkReply>

using demo_shop::Fault;
using demo_shop::ShopRequest;

/// One request of a run: what is sent, what counts as an answer, what is shown.
class tst_requests : public QObject
{
    Q_OBJECT

public:
    explicit tst_requests(const StartFolder& startFolder)
        : folder(startFolder)
    {
    }

private slots:
    void init();
    void cleanup();
    void sendsTrimmedCredentials_data();
    void sendsTrimmedCredentials();
    void readsTheCredentialsAnewAtEachAttempt();
    void setsNoOtherHeader();
    void returnsTheBodyAndParsesIt();
    void withoutADocumentTheBodyIsNotLookedAt();
    void withoutADocumentAnHttpErrorIsStillAFailure();
    void oneAttemptFailsAtOnceWithoutALabelChange();
    void anUnexpectedShapeIsNoFailure_data();
    void anUnexpectedShapeIsNoFailure();
    void oddButWholeAnswersAreNoFailure_data();
    void oddButWholeAnswersAreNoFailure();
    void readingLineWhileTheSizesDiffer();
    void totalsLineOnceTheSizesAreEqual_data();
    void totalsLineOnceTheSizesAreEqual();
    void bytesAreCountedAgainOnEachSignal();
    void counterLineFollowsTheWindowsLocale();
    void anAnswerEndsWithTheTotalsLine();
    void missingLabelsAreTolerated();

private:
    QUrl url(const QString& target) const { return QUrl(fixture->shop.baseUrl() + target); }

    MainWindow& window() const { return *fixture->window; }

    const StartFolder& folder;
    std::unique_ptr<RunFixture> fixture;
};

namespace {

QSet<QByteArray> headerNames(const ShopRequest& request)
{
    QSet<QByteArray> names;
    for (const auto& [name, value] : request.headers)
        names.insert(name.toLower());
    return names;
}

} // namespace

void tst_requests::init()
{
    fixture = std::make_unique<RunFixture>(folder);
    fixture->serve(QStringLiteral("/x"), R"({"a":[1,2]})");
    fixture->start();
    window().Reset();
    window().statusLabel->setText(QStringLiteral("untouched"));
}

void tst_requests::cleanup()
{
    fixture.reset();
}

void tst_requests::sendsTrimmedCredentials_data()
{
    QTest::addColumn<QVariant>("key");
    QTest::addColumn<QVariant>("secret");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("blanks and line ends around")
        << QVariant(QStringLiteral(" ck_1\n")) << QVariant(QStringLiteral("\tcs_2 "))
        << QByteArray("Basic Y2tfMTpjc18y");
    QTest::newRow("umlauts") << QVariant(QString::fromUtf8("ck_\xC3\xBC"))
                             << QVariant(QString::fromUtf8("cs_\xC3\x9F"))
                             << QByteArray("Basic Y2tfw7w6Y3Nfw58=");
    QTest::newRow("nothing typed") << QVariant() << QVariant() << QByteArray("Basic Og==");
}

void tst_requests::sendsTrimmedCredentials()
{
    QFETCH(QVariant, key);
    QFETCH(QVariant, secret);
    window().apiKey = key;
    window().apiSecret = secret;
    QJsonDocument doc;
    window().executeRequest(url(QStringLiteral("/x")), &doc, 3);
    QCOMPARE(fixture->shop.requests().size(), 1);
    QCOMPARE(fixture->shop.requests().first().method, QByteArray("GET"));
    QTEST(fixture->shop.requests().first().authorization, "expected");
}

void tst_requests::readsTheCredentialsAnewAtEachAttempt()
{
    window().apiKey = QStringLiteral("old");
    window().apiSecret = QStringLiteral("cs_2");
    fixture->shop.setFaultPlan([this](const ShopRequest& request) {
        window().apiKey = QStringLiteral("ck_1");
        return request.number == 1 ? Fault {Fault::Status, 401} : Fault {};
    });
    QJsonDocument doc;
    window().executeRequest(url(QStringLiteral("/x")), &doc, 3);
    const auto requests = fixture->shop.requests();
    QCOMPARE(requests.size(), 2);
    QCOMPARE(QByteArray::fromBase64(requests.at(0).authorization.mid(6)), QByteArray("old:cs_2"));
    QCOMPARE(QByteArray::fromBase64(requests.at(1).authorization.mid(6)), QByteArray("ck_1:cs_2"));
}

void tst_requests::setsNoOtherHeader()
{
    QNetworkAccessManager plain;
    const std::unique_ptr<QNetworkReply> reply(
        plain.get(QNetworkRequest(url(QStringLiteral("/x")))));
    QTRY_VERIFY(reply->isFinished());
    QJsonDocument doc;
    window().executeRequest(url(QStringLiteral("/x")), &doc, 3);

    const auto requests = fixture->shop.requests();
    QCOMPARE(requests.size(), 2);
    QCOMPARE(headerNames(requests.at(1)) - headerNames(requests.at(0)),
             QSet<QByteArray> {"authorization"});
    for (const auto& [name, value] : requests.at(0).headers)
        QCOMPARE(requests.at(1).header(name), value);
}

void tst_requests::returnsTheBodyAndParsesIt()
{
    QJsonDocument doc;
    QCOMPARE(window().executeRequest(url(QStringLiteral("/x")), &doc, 3),
             QByteArray(R"({"a":[1,2]})"));
    QCOMPARE(doc.object().value(QLatin1String("a")).toArray().size(), 2);
    QCOMPARE(window().statusLabel->text(), QStringLiteral("untouched"));
}

void tst_requests::withoutADocumentTheBodyIsNotLookedAt()
{
    fixture->serve(QStringLiteral("/x"), "<html>no JSON");
    QCOMPARE(window().executeRequest(url(QStringLiteral("/x")), nullptr, 3),
             QByteArray("<html>no JSON"));
    QCOMPARE(fixture->shop.requests().size(), 1);
    QCOMPARE(window().statusLabel->text(), QStringLiteral("untouched"));
}

void tst_requests::withoutADocumentAnHttpErrorIsStillAFailure()
{
    fixture->serve(QStringLiteral("/x"), "{}", 404);
    QVERIFY_THROWS_EXCEPTION(std::runtime_error,
                             window().executeRequest(url(QStringLiteral("/x")), nullptr, 1));
}

void tst_requests::oneAttemptFailsAtOnceWithoutALabelChange()
{
    fixture->serve(QStringLiteral("/x"), "{}", 500);
    QJsonDocument doc;
    QVERIFY_THROWS_EXCEPTION(std::runtime_error,
                             window().executeRequest(url(QStringLiteral("/x")), &doc, 1));
    QCOMPARE(fixture->shop.requests().size(), 1);
    QCOMPARE(window().statusLabel->text(), QStringLiteral("untouched"));
}

void tst_requests::anUnexpectedShapeIsNoFailure_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("object for an array") << QByteArray(R"({"code":"rest_forbidden"})");
    QTest::newRow("empty object") << QByteArray("{}");
    QTest::newRow("array of other things") << QByteArray("[1,\"x\",null]");
}

void tst_requests::anUnexpectedShapeIsNoFailure()
{
    QFETCH(QByteArray, body);
    fixture->serve(QStringLiteral("/x"), body);
    QJsonDocument doc;
    QCOMPARE(window().executeRequest(url(QStringLiteral("/x")), &doc, 3), body);
    QCOMPARE(doc, QJsonDocument::fromJson(body));
    QCOMPARE(fixture->shop.requests().size(), 1);
}

void tst_requests::oddButWholeAnswersAreNoFailure_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("byte order mark") << int(Fault::ByteOrderMark);
    QTest::newRow("no announced length") << int(Fault::Chunked);
    QTest::newRow("bit by bit") << int(Fault::Trickle);
}

void tst_requests::oddButWholeAnswersAreNoFailure()
{
    QFETCH(int, kind);
    fixture->shop.setFaultPlan([kind](const ShopRequest&) {
        Fault fault;
        fault.kind = Fault::Kind(kind);
        return fault;
    });
    QJsonDocument doc;
    window().executeRequest(url(QStringLiteral("/x")), &doc, 1);
    QCOMPARE(doc.object().value(QLatin1String("a")).toArray().size(), 2);
    QCOMPARE(fixture->shop.requests().size(), 1);
}

void tst_requests::readingLineWhileTheSizesDiffer()
{
    window().setLocale(QLocale::c());
    for (const qint64 total : {-1LL, 4000LL}) {
        window().iBytesReceived = 0;
        window().onDownloadProgress(1536, total);
        const QRegularExpression line(
            QStringLiteral("^Lese 1\\.50 KiB Bytes\\. Zeit 0 min \\(\\d+ ms\\)\\.$"));
        const QString text = window().progressLabel->text();
        QVERIFY2(line.match(text).hasMatch(), qPrintable(text));
    }
}

void tst_requests::totalsLineOnceTheSizesAreEqual_data()
{
    QTest::addColumn<qint64>("size");
    QTest::addColumn<QString>("sizeText");
    QTest::newRow("an answer") << 1536LL << "1.50 KiB";
    QTest::newRow("an empty answer") << 0LL << "0 bytes";
}

void tst_requests::totalsLineOnceTheSizesAreEqual()
{
    QFETCH(qint64, size);
    QFETCH(QString, sizeText);
    window().setLocale(QLocale::c());
    window().iExportCount = 12;
    window().iPdfCount = 5;
    window().onDownloadProgress(size, size);
    const QRegularExpression line(
        QString::fromUtf8("^12 Einträge\\. Zeit 0 min \\(\\d+ ms\\)\\. Empfangen: %1\\. "
                          "PDF-Dateien erstellt: 5\\.$")
            .arg(QRegularExpression::escape(sizeText)));
    const QString text = window().progressLabel->text();
    QVERIFY2(line.match(text).hasMatch(), qPrintable(text));
}

void tst_requests::bytesAreCountedAgainOnEachSignal()
{
    window().onDownloadProgress(10, 100);
    window().onDownloadProgress(60, 100);
    window().onDownloadProgress(100, 100);
    QCOMPARE(window().iBytesReceived, 170);
    window().onDownloadProgress(5, -1);
    QCOMPARE(window().iBytesReceived, 175);
}

void tst_requests::counterLineFollowsTheWindowsLocale()
{
    window().setLocale(QLocale(QLocale::German, QLocale::Germany));
    window().onDownloadProgress(1536, 1536);
    QVERIFY(window().progressLabel->text().contains(QStringLiteral("Empfangen: 1,50 KiB.")));
}

void tst_requests::anAnswerEndsWithTheTotalsLine()
{
    window().setLocale(QLocale::c());
    QJsonDocument doc;
    const QByteArray body = window().executeRequest(url(QStringLiteral("/x")), &doc, 3);
    QVERIFY(window().progressLabel->text().startsWith(QString::fromUtf8("0 Einträge. Zeit ")));
    QVERIFY(window().iBytesReceived >= body.size());
}

void tst_requests::missingLabelsAreTolerated()
{
    delete window().statusLabel;
    delete window().progressLabel;
    fixture->shop.setFaultPlan([](const ShopRequest& request) {
        return request.number == 1 ? Fault {Fault::Status, 503} : Fault {};
    });
    QJsonDocument doc;
    window().executeRequest(url(QStringLiteral("/x")), &doc, 3);
    QCOMPARE(doc.object().size(), 1);
    QVERIFY(window().iBytesReceived > 0);
}

LEDORA_APP_TEST_MAIN(tst_requests)

#include "tst_requests.moc"
