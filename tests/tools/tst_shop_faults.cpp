#include "tests/tools/http_client.h"

#include "tools/demo_shop/fault_socket.h"
#include "tools/demo_shop/shop_server.h"

#include <QJsonDocument>
#include <QTest>

#include <map>

using demo_shop::Fault;
using demo_shop::ShopAnswer;
using demo_shop::ShopRequest;
using demo_shop::ShopServer;

namespace {

// Long enough to be sent in several chunks and to have two halves that both say something.
QByteArray sampleBody()
{
    return "[\"" + QByteArray(20000, 'x') + "\"]";
}

ShopAnswer sampleAnswer(const ShopRequest&)
{
    ShopAnswer answer;
    answer.body = sampleBody();
    answer.headers = {{"X-WP-Total", "7"}};
    return answer;
}

ShopServer::FaultPlan always(Fault fault)
{
    return [fault](const ShopRequest&) { return fault; };
}

bool parses(const QByteArray& body)
{
    QJsonParseError error;
    QJsonDocument::fromJson(body, &error);
    return error.error == QJsonParseError::NoError;
}

} // namespace

class tst_shop_faults : public QObject
{
    Q_OBJECT

private slots:
    void keepsTheBodyUnderAnotherStatus();
    void cutsTheJson();
    void answersAPageForPeople();
    void answersAnEmptyBody();
    void putsANoticeBeforeTheJson();
    void putsAByteOrderMarkBeforeTheJson();
    void dropsTheConnection_data();
    void dropsTheConnection();
    void serverSeesTheRepeatOfAQtClient();
    void announcesLessThanItSends();
    void staysSilent_data();
    void staysSilent();
    void tricklesTheWholeAnswer();
    void sendsChunksWithoutALength();
    void decidesFaultsRequestByRequest();
    void survivesAClientThatLeavesDuringTheTrickle();
    void replacesTheAnnouncedLength();
    void chunksEndWithAnEmptyOne();
};

void tst_shop_faults::keepsTheBodyUnderAnotherStatus()
{
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    server.setFaultPlan(always({Fault::Status, 503}));
    HttpClient client;
    const ClientReply reply = client.get(server.baseUrl() + "/x");
    QCOMPARE(reply.error, QNetworkReply::ServiceUnavailableError);
    QCOMPARE(reply.status, 503);
    QCOMPARE(reply.body, sampleBody());
}

void tst_shop_faults::cutsTheJson()
{
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    server.setFaultPlan(always({Fault::CutJson}));
    HttpClient client;
    const ClientReply reply = client.get(server.baseUrl() + "/x");
    QCOMPARE(reply.error, QNetworkReply::NoError);
    QCOMPARE(reply.body, sampleBody().left(sampleBody().size() / 2));
    QVERIFY(!parses(reply.body));
}

void tst_shop_faults::answersAPageForPeople()
{
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    server.setFaultPlan(always({Fault::Html}));
    HttpClient client;
    const ClientReply reply = client.get(server.baseUrl() + "/x");
    QCOMPARE(reply.status, 200);
    QCOMPARE(reply.header("Content-Type"), "text/html; charset=UTF-8");
    QVERIFY(reply.body.startsWith("<!DOCTYPE html>"));
    QVERIFY(!parses(reply.body));
}

void tst_shop_faults::answersAnEmptyBody()
{
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    server.setFaultPlan(always({Fault::EmptyBody}));
    HttpClient client;
    const ClientReply reply = client.get(server.baseUrl() + "/x");
    QCOMPARE(reply.error, QNetworkReply::NoError);
    QCOMPARE(reply.status, 200);
    QVERIFY(reply.body.isEmpty());
}

void tst_shop_faults::putsANoticeBeforeTheJson()
{
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    server.setFaultPlan(always({Fault::LeadingNotice}));
    HttpClient client;
    const ClientReply reply = client.get(server.baseUrl() + "/x");
    QVERIFY(reply.body.startsWith("<br />"));
    QVERIFY(reply.body.endsWith(sampleBody()));
    QVERIFY(!parses(reply.body));
}

void tst_shop_faults::putsAByteOrderMarkBeforeTheJson()
{
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    server.setFaultPlan(always({Fault::ByteOrderMark}));
    HttpClient client;
    const ClientReply reply = client.get(server.baseUrl() + "/x");
    QCOMPARE(reply.body, "\xEF\xBB\xBF" + sampleBody());
}

void tst_shop_faults::dropsTheConnection_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("expectedStatus");
    QTest::newRow("before the headers") << int(Fault::DropBeforeHeaders) << 0;
    QTest::newRow("inside the headers") << int(Fault::DropInsideHeaders) << 0;
    QTest::newRow("inside the body") << int(Fault::DropInsideBody) << 200;
}

void tst_shop_faults::dropsTheConnection()
{
    QFETCH(int, kind);
    QFETCH(int, expectedStatus);
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    server.setFaultPlan(always({Fault::Kind(kind)}));
    HttpClient client;
    const ClientReply reply = client.get(server.baseUrl() + "/x");
    QCOMPARE(reply.error, QNetworkReply::RemoteHostClosedError);
    QCOMPARE(reply.status, expectedStatus);
    QVERIFY(reply.body.size() < sampleBody().size());
    QVERIFY(sampleBody().startsWith(reply.body));

    server.setFaultPlan(nullptr);
    QCOMPARE(client.get(server.baseUrl() + "/x").body, sampleBody());
}

void tst_shop_faults::serverSeesTheRepeatOfAQtClient()
{
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    server.setFaultPlan([](const ShopRequest& request) {
        return request.number == 2 ? Fault {Fault::DropBeforeHeaders} : Fault {};
    });
    HttpClient client;
    client.get(server.baseUrl() + "/a");
    const ClientReply reply = client.get(server.baseUrl() + "/b");
    QCOMPARE(reply.error, QNetworkReply::NoError);
    QCOMPARE(server.requests().size(), 3);
    QCOMPARE(server.requests().at(1).path, "/b");
    QCOMPARE(server.requests().at(2).path, "/b");
    QCOMPARE(server.connectionCount(), 2);
}

void tst_shop_faults::announcesLessThanItSends()
{
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    server.setFaultPlan(always({Fault::WrongLength}));
    HttpClient client;
    const ClientReply reply = client.get(server.baseUrl() + "/x");
    QCOMPARE(reply.header("Content-Length"), QByteArray::number(sampleBody().size() / 2));
    QVERIFY(reply.body.size() <= sampleBody().size() / 2);
    QVERIFY(!parses(reply.body));
}

void tst_shop_faults::staysSilent_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("expectedStatus");
    QTest::newRow("from the start") << int(Fault::Silence) << 0;
    QTest::newRow("inside the body") << int(Fault::StallInsideBody) << 200;
}

void tst_shop_faults::staysSilent()
{
    QFETCH(int, kind);
    QFETCH(int, expectedStatus);
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    server.setFaultPlan(always({Fault::Kind(kind)}));
    HttpClient client(300);
    const ClientReply reply = client.get(server.baseUrl() + "/x");
    QCOMPARE(reply.error, QNetworkReply::OperationCanceledError);
    QCOMPARE(reply.status, expectedStatus);
    QCOMPARE(server.requests().size(), 1);
}

void tst_shop_faults::tricklesTheWholeAnswer()
{
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    server.setFaultPlan(always({Fault::Trickle, 0, 8, 1}));
    HttpClient client;

    QNetworkReply* reply = client.manager()->get(QNetworkRequest(QUrl(server.baseUrl() + "/x")));
    QSignalSpy finished(reply, &QNetworkReply::finished);
    QSignalSpy arrivals(reply, &QNetworkReply::readyRead);
    QVERIFY(finished.wait(30000));
    QCOMPARE(reply->error(), QNetworkReply::NoError);
    QCOMPARE(reply->readAll(), sampleBody());
    QVERIFY(arrivals.size() > 1);
    reply->deleteLater();

    QCOMPARE(client.get(server.baseUrl() + "/x").body, sampleBody());
    QCOMPARE(server.connectionCount(), 1);
}

void tst_shop_faults::sendsChunksWithoutALength()
{
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    server.setFaultPlan(always({Fault::Chunked}));
    HttpClient client;
    const ClientReply reply = client.get(server.baseUrl() + "/x");
    QCOMPARE(reply.error, QNetworkReply::NoError);
    QCOMPARE(reply.body, sampleBody());
    QVERIFY(reply.header("Content-Length").isEmpty());
    QCOMPARE(reply.header("Transfer-Encoding"), "chunked");

    QCOMPARE(client.get(server.baseUrl() + "/x").body, sampleBody());
    QCOMPARE(server.connectionCount(), 1);
}

void tst_shop_faults::decidesFaultsRequestByRequest()
{
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    const std::map<QString, Fault> faults {{"/status", {Fault::Status, 500}},
                                           {"/empty", {Fault::EmptyBody}}};
    server.setFaultPlan([&faults](const ShopRequest& request) {
        const auto it = faults.find(request.path);
        return it == faults.end() ? Fault {} : it->second;
    });
    HttpClient client;
    QCOMPARE(client.get(server.baseUrl() + "/good").body, sampleBody());
    QCOMPARE(client.get(server.baseUrl() + "/status").status, 500);
    QVERIFY(client.get(server.baseUrl() + "/empty").body.isEmpty());
    QCOMPARE(client.get(server.baseUrl() + "/good").body, sampleBody());
    QCOMPARE(server.connectionCount(), 1);
}

void tst_shop_faults::survivesAClientThatLeavesDuringTheTrickle()
{
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    server.setFaultPlan([](const ShopRequest& request) {
        return request.number == 1 ? Fault {Fault::Trickle, 0, 5000, 1} : Fault {};
    });
    HttpClient client;
    QNetworkReply* reply = client.manager()->get(QNetworkRequest(QUrl(server.baseUrl() + "/x")));
    QSignalSpy started(reply, &QNetworkReply::metaDataChanged);
    QVERIFY(started.wait(30000));
    reply->abort();
    reply->deleteLater();
    QCOMPARE(client.get(server.baseUrl() + "/x").body, sampleBody());
}

void tst_shop_faults::replacesTheAnnouncedLength()
{
    QCOMPARE(
        demo_shop::withContentLength("HTTP/1.1 200 OK\r\ncontent-length: 12\r\nX-A: b\r\n\r\n", 3),
        "HTTP/1.1 200 OK\r\nX-A: b\r\nContent-Length: 3\r\n\r\n");
}

void tst_shop_faults::chunksEndWithAnEmptyOne()
{
    QCOMPARE(demo_shop::chunked("HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\n", "abc"),
             "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n0\r\n\r\n");
    QVERIFY(demo_shop::chunked("HTTP/1.1 200 OK\r\n\r\n", "").endsWith("\r\n\r\n0\r\n\r\n"));
}

QTEST_GUILESS_MAIN(tst_shop_faults)
#include "tst_shop_faults.moc"
