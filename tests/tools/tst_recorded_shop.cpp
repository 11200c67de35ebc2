#include "tests/tools/http_client.h"

#include "tools/demo_shop/authorised.h"
#include "tools/demo_shop/recorded_shop.h"
#include "tools/demo_shop/shop_server.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using demo_shop::RecordedShop;
using demo_shop::ShopServer;

namespace {

const QString kFolder = QStringLiteral(LEDORA_TEST_DATA "/recordings");

QByteArray contentOf(const QString& name)
{
    QFile file(kFolder + '/' + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s", qPrintable(file.errorString()));
    return file.readAll();
}

QByteArray basic(const QByteArray& pair)
{
    return "Basic " + pair.toBase64();
}

} // namespace

class tst_recorded_shop : public QObject
{
    Q_OBJECT

    RecordedShop m_shop {kFolder};
    ShopServer m_server {m_shop};
    HttpClient m_client;

private slots:
    void initTestCase();
    void servesEveryRecording_data();
    void servesEveryRecording();
    void ignoresDifferencesOfEncoding_data();
    void ignoresDifferencesOfEncoding();
    void replacesTheAddressInLinks();
    void answers404ForWhatWasNotRecorded();
    void refusesWrongCredentialsAsRecorded_data();
    void refusesWrongCredentialsAsRecorded();
    void letsTheRightCredentialsPass();
    void tellsWhatIsWrongWithAFolder_data();
    void tellsWhatIsWrongWithAFolder();
};

void tst_recorded_shop::initTestCase()
{
    QVERIFY2(m_shop.isValid(), qPrintable(m_shop.errorString()));
    QVERIFY(m_server.listen());
}

void tst_recorded_shop::servesEveryRecording_data()
{
    QTest::addColumn<QJsonObject>("entry");
    const QJsonArray entries =
        QJsonDocument::fromJson(contentOf("index.json"))["entries"].toArray();
    QVERIFY(!entries.isEmpty());
    for (const QJsonValue entry : entries) {
        if (!entry.toObject().contains("credentials"))
            QTest::newRow(qPrintable(entry["file"].toString())) << entry.toObject();
    }
}

void tst_recorded_shop::servesEveryRecording()
{
    QFETCH(QJsonObject, entry);
    const ClientReply reply = m_client.get(m_server.baseUrl() + entry["request"].toString());
    QCOMPARE(reply.status, entry["status"].toInt());
    QCOMPARE(reply.header("Content-Type"), entry["content_type"].toString().toLatin1());
    if (entry.contains("x_wp_total")) {
        QCOMPARE(reply.header("X-WP-Total").toInt(), entry["x_wp_total"].toInt());
        QCOMPARE(reply.header("X-WP-TotalPages").toInt(), entry["x_wp_totalpages"].toInt());
    }
    const QByteArray recorded = contentOf(entry["file"].toString());
    QCOMPARE(recorded.size(), entry["bytes"].toInt());

    // With the address put back, the bytes are those of the recording.
    QByteArray body = reply.body;
    const QByteArray address = m_server.baseUrl().toLatin1();
    body.replace(address, "https://shop.example");
    body.replace(QByteArray(address).replace("/", "\\/"), R"(https:\/\/shop.example)");
    QCOMPARE(body, recorded);
}

void tst_recorded_shop::ignoresDifferencesOfEncoding_data()
{
    QTest::addColumn<QString>("query");
    const char rest[] = "&page=1&orderby=date&order=asc&dates_are_gmt=true&after=";
    QTest::newRow("as recorded") << QString("per_page=100&status=completed,%20refunded") + rest
            + "2026-03-31T22:00:00Z";
    QTest::newRow("comma encoded")
        << QString("per_page=100&status=completed%2C%20refunded") + rest + "2026-03-31T22:00:00Z";
    QTest::newRow("colons encoded")
        << QString("per_page=100&status=completed,%20refunded") + rest + "2026-03-31T22%3A00%3a00Z";
}

void tst_recorded_shop::ignoresDifferencesOfEncoding()
{
    QFETCH(QString, query);
    const ClientReply reply = m_client.get(m_server.baseUrl() + "/wp-json/wc/v3/orders?" + query);
    QCOMPARE(reply.status, 200);
    QCOMPARE(QJsonDocument::fromJson(reply.body).array().size(), 10);
}

void tst_recorded_shop::replacesTheAddressInLinks()
{
    const ClientReply invoices =
        m_client.get(m_server.baseUrl() + "/wp-json/wc/v3/orders/31/invoices");
    const QString href =
        QJsonDocument::fromJson(invoices.body)[0]["_links"]["pdf"][0]["href"].toString();
    QCOMPARE(href, m_server.baseUrl() + "/wp-json/wc/v3/invoices/501/pdf");
    const ClientReply file = m_client.get(href);
    QVERIFY(QByteArray::fromBase64(QJsonDocument::fromJson(file.body)["file"].toString().toLatin1())
                .startsWith("%PDF-"));
    QVERIFY(!invoices.body.contains("shop.example"));
}

void tst_recorded_shop::answers404ForWhatWasNotRecorded()
{
    const ClientReply reply = m_client.get(m_server.baseUrl() + "/wp-json/wc/v3/products/4711");
    QCOMPARE(reply.status, 404);
    QCOMPARE(QJsonDocument::fromJson(reply.body)["data"]["status"].toInt(), 404);
    QCOMPARE(m_client.post(m_server.baseUrl() + "/wp-json/wc/v3/products/14", "{}").status, 404);
}

void tst_recorded_shop::refusesWrongCredentialsAsRecorded_data()
{
    QTest::addColumn<QByteArray>("authorization");
    QTest::addColumn<QString>("file");
    QTest::newRow("none") << QByteArray() << "errors/unknown-key.json";
    QTest::newRow("unknown key") << basic("ck_other:cs_demo") << "errors/unknown-key.json";
    QTest::newRow("wrong secret") << basic("ck_demo:cs_other") << "errors/wrong-secret.json";
    QTest::newRow("no secret") << basic("ck_demo:") << "errors/wrong-secret.json";
    QTest::newRow("no pair") << basic("ck_demo") << "errors/unknown-key.json";
    QTest::newRow("another scheme")
        << QByteArray("Bearer Y2tfZGVtbzpjc19kZW1v") << "errors/unknown-key.json";
}

void tst_recorded_shop::refusesWrongCredentialsAsRecorded()
{
    QFETCH(QByteArray, authorization);
    QFETCH(QString, file);
    ShopServer server(demo_shop::authorised(m_shop, "ck_demo", "cs_demo"));
    QVERIFY(server.listen());
    const ClientReply reply =
        m_client.get(server.baseUrl() + "/wp-json/wc/v3/products/14", authorization);
    QCOMPARE(reply.status, 401);
    QCOMPARE(reply.body, contentOf(file));
}

void tst_recorded_shop::letsTheRightCredentialsPass()
{
    ShopServer server(demo_shop::authorised(m_shop, "ck_demo", "cs:demo"));
    QVERIFY(server.listen());
    const ClientReply reply =
        m_client.get(server.baseUrl() + "/wp-json/wc/v3/products/14", basic("ck_demo:cs:demo"));
    QCOMPARE(reply.status, 200);
    QCOMPARE(server.requests().first().authorization, basic("ck_demo:cs:demo"));
}

void tst_recorded_shop::tellsWhatIsWrongWithAFolder_data()
{
    QTest::addColumn<QByteArray>("index");
    QTest::addColumn<QString>("expected");
    QTest::newRow("no index") << QByteArray() << "index.json: No such file or directory";
    QTest::newRow("no JSON") << QByteArray("{") << "index.json: unterminated object";
    QTest::newRow("no entries") << QByteArray("{}") << "index.json: no entries";
    QTest::newRow("missing file") << QByteArray(R"({"entries":[{"request":"/x","file":"x.json"}]})")
                                  << "x.json: No such file or directory";
}

void tst_recorded_shop::tellsWhatIsWrongWithAFolder()
{
    QFETCH(QByteArray, index);
    QFETCH(QString, expected);
    QTemporaryDir folder;
    if (!index.isEmpty()) {
        QFile file(folder.filePath("index.json"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(index);
    }
    const RecordedShop shop(folder.path());
    QVERIFY(!shop.isValid());
    QCOMPARE(shop.errorString(), folder.path() + '/' + expected);
}

QTEST_GUILESS_MAIN(tst_recorded_shop)
#include "tst_recorded_shop.moc"
