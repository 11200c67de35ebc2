#include "tests/tools/http_client.h"

#include "tools/demo_shop/shop_server.h"

#include <QTcpSocket>
#include <QTest>

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

} // namespace

class tst_shop_server : public QObject
{
    Q_OBJECT

private slots:
    void answersWhatTheHandlerGives();
    void handsTheRequestToTheHandler();
    void keepsOneConnectionForManyRequests();
    void countsEachConnection();
    void listensOnLoopbackAlone();
    void refusesAPortThatIsTaken();
    void answers404WithoutAHandler();
    void passesStatusAndHeadersOn_data();
    void passesStatusAndHeadersOn();
    void sends500ForAStatusWithoutAName();
    void tellsTheMethod();
    void numbersRequestsAnewAfterClearing();
    void remembersNothingWhenNotRecording();
    void refusesConnectionsAfterClose();
    void servesAgainAfterASecondListen();
};

void tst_shop_server::answersWhatTheHandlerGives()
{
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    HttpClient client;
    const ClientReply reply = client.get(server.baseUrl() + "/wp-json/wc/v3/orders");
    QCOMPARE(reply.error, QNetworkReply::NoError);
    QCOMPARE(reply.status, 200);
    QCOMPARE(reply.body, sampleBody());
    QCOMPARE(reply.header("Content-Type"), "application/json; charset=UTF-8");
    QCOMPARE(reply.header("X-WP-Total"), "7");
    QCOMPARE(reply.header("Content-Length"), QByteArray::number(sampleBody().size()));
}

void tst_shop_server::handsTheRequestToTheHandler()
{
    ShopRequest seen;
    ShopServer server([&seen](const ShopRequest& request) {
        seen = request;
        return ShopAnswer {};
    });
    QVERIFY(server.listen());
    QSignalSpy announced(&server, &ShopServer::requestSeen);
    HttpClient client;
    client.get(
        server.baseUrl()
            + "/wp-json/wc/v3/orders?status=completed,%20refunded&after=2026-01-01T00:00:00Z",
        "Basic Y2s6Y3M=");

    QCOMPARE(seen.path, "/wp-json/wc/v3/orders");
    QCOMPARE(seen.queryValue("status"), "completed, refunded");
    QCOMPARE(seen.queryValue("after"), "2026-01-01T00:00:00Z");
    QCOMPARE(seen.queryValue("before"), QString());
    QCOMPARE(seen.rawTarget,
             "/wp-json/wc/v3/orders?status=completed,%20refunded&after=2026-01-01T00:00:00Z");
    QCOMPARE(seen.authorization, "Basic Y2s6Y3M=");
    QVERIFY(!seen.header("accept-encoding").isEmpty());
    QCOMPARE(seen.number, 1);
    QCOMPARE(seen.baseUrl, server.baseUrl());

    QCOMPARE(server.requests().size(), 1);
    QCOMPARE(server.requests().first().rawTarget, seen.rawTarget);
    QCOMPARE(announced.size(), 1);
    QCOMPARE(announced.first().first().toInt(), 1);
}

void tst_shop_server::keepsOneConnectionForManyRequests()
{
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    HttpClient client;
    for (int i = 0; i < 20; ++i)
        QCOMPARE(client.get(server.baseUrl() + "/x").body, sampleBody());
    QCOMPARE(server.requests().size(), 20);
    QCOMPARE(server.requests().last().number, 20);
    QCOMPARE(server.connectionCount(), 1);
}

void tst_shop_server::countsEachConnection()
{
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    for (int i = 0; i < 3; ++i) {
        HttpClient client;
        client.get(server.baseUrl() + "/x");
    }
    QCOMPARE(server.connectionCount(), 3);
}

void tst_shop_server::listensOnLoopbackAlone()
{
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    QVERIFY(server.baseUrl().startsWith("http://127.0.0.1:"));
    // Another address of the loopback net reaches a server that listens everywhere.
    QTcpSocket socket;
    socket.connectToHost("127.0.0.2", quint16(QUrl(server.baseUrl()).port()));
    QVERIFY(!socket.waitForConnected(5000));
    QCOMPARE(socket.error(), QAbstractSocket::ConnectionRefusedError);
}

void tst_shop_server::refusesAPortThatIsTaken()
{
    ShopServer first(sampleAnswer);
    QVERIFY(first.listen());
    ShopServer second(sampleAnswer);
    QVERIFY(!second.listen(quint16(QUrl(first.baseUrl()).port())));
    QVERIFY(!second.errorString().isEmpty());
    QCOMPARE(second.baseUrl(), QString());
}

void tst_shop_server::answers404WithoutAHandler()
{
    ShopServer server(nullptr);
    QVERIFY(server.listen());
    HttpClient client;
    const ClientReply reply = client.get(server.baseUrl() + "/x");
    QCOMPARE(reply.status, 404);
    QVERIFY(reply.body.contains("rest_no_route"));
}

void tst_shop_server::passesStatusAndHeadersOn_data()
{
    QTest::addColumn<int>("status");
    for (const int status : {200, 201, 301, 302, 400, 401, 403, 404, 429, 500, 502, 503, 504})
        QTest::addRow("%d", status) << status;
}

void tst_shop_server::passesStatusAndHeadersOn()
{
    QFETCH(int, status);
    ShopServer server([status](const ShopRequest&) {
        ShopAnswer answer;
        answer.status = status;
        answer.contentType = "text/plain";
        answer.body = "b";
        answer.headers = {{"X-One", "1"}, {"X-Two", "2"}};
        return answer;
    });
    QVERIFY(server.listen());
    HttpClient client;
    const ClientReply reply = client.get(server.baseUrl() + "/x");
    QCOMPARE(reply.status, status);
    QCOMPARE(reply.header("X-One"), "1");
    QCOMPARE(reply.header("X-Two"), "2");
    QCOMPARE(reply.header("Content-Type"), "text/plain");
}

void tst_shop_server::sends500ForAStatusWithoutAName()
{
    ShopServer server([](const ShopRequest&) {
        ShopAnswer answer;
        answer.status = 299;
        return answer;
    });
    QVERIFY(server.listen());
    HttpClient client;
    QTest::ignoreMessage(QtWarningMsg, "demo_shop: status 299 has no name, 500 is sent");
    QCOMPARE(client.get(server.baseUrl() + "/x").status, 500);
}

void tst_shop_server::tellsTheMethod()
{
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    HttpClient client;
    client.post(server.baseUrl() + "/x", "{}");
    client.get(server.baseUrl() + "/x");
    QCOMPARE(server.requests().at(0).method, "POST");
    QCOMPARE(server.requests().at(1).method, "GET");
}

void tst_shop_server::numbersRequestsAnewAfterClearing()
{
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    HttpClient client;
    client.get(server.baseUrl() + "/a");
    client.get(server.baseUrl() + "/b");
    server.clearRequests();
    QVERIFY(server.requests().isEmpty());
    client.get(server.baseUrl() + "/c");
    QCOMPARE(server.requests().size(), 1);
    QCOMPARE(server.requests().first().number, 1);
    QCOMPARE(server.requests().first().path, "/c");
}

void tst_shop_server::remembersNothingWhenNotRecording()
{
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    server.setRecording(false);
    QSignalSpy announced(&server, &ShopServer::requestSeen);
    HttpClient client;
    client.get(server.baseUrl() + "/a");
    client.get(server.baseUrl() + "/b");
    QVERIFY(server.requests().isEmpty());
    QCOMPARE(announced.last().first().toInt(), 2);
}

void tst_shop_server::refusesConnectionsAfterClose()
{
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    HttpClient client;
    client.get(server.baseUrl() + "/a");
    server.close();
    QCOMPARE(client.get(server.baseUrl() + "/a").error, QNetworkReply::ConnectionRefusedError);
    QCOMPARE(server.connectionCount(), 1);
}

void tst_shop_server::servesAgainAfterASecondListen()
{
    ShopServer server(sampleAnswer);
    QVERIFY(server.listen());
    const QString first = server.baseUrl();
    const auto port = quint16(QUrl(first).port());
    server.close();
    QVERIFY(server.listen(port));
    QCOMPARE(server.baseUrl(), first);
    HttpClient client;
    QCOMPARE(client.get(first + "/a").status, 200);
}

QTEST_GUILESS_MAIN(tst_shop_server)
#include "tst_shop_server.moc"
