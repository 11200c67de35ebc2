#include "tests/tools/http_client.h"

#include "tools/demo_shop/fault_switch.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTest>

#include <csignal>
#include <sys/types.h>

using demo_shop::Fault;
using demo_shop::ShopRequest;

namespace {

constexpr int kPatience = 30000;

const QByteArray kDemo = "Basic " + QByteArray("ck_demo:cs_demo").toBase64();

/// The program as a process of its own, which ends with the object.
class DemoShop
{
public:
    explicit DemoShop(const QStringList& arguments)
    {
        m_process.start(QStringLiteral(LEDORA_BIN_DIR "/demo_shop"), arguments);
    }

    ~DemoShop()
    {
        m_process.kill();
        m_process.waitForFinished(kPatience);
    }
    Q_DISABLE_COPY_MOVE(DemoShop)

    /// The first line of the output without its end.
    QString firstLine()
    {
        while (!m_process.canReadLine()) {
            if (!m_process.waitForReadyRead(kPatience))
                return {};
        }
        return QString::fromUtf8(m_process.readLine()).chopped(1);
    }

    QString restOfOutput() { return QString::fromUtf8(m_process.readAllStandardOutput()); }

    QString errors() { return QString::fromUtf8(m_process.readAllStandardError()); }

    bool sendSignal(int number) { return ::kill(pid_t(m_process.processId()), number) == 0; }

    bool hasEnded() { return m_process.waitForFinished(kPatience); }

    int exitCode() const
    {
        return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }

private:
    QProcess m_process;
};

QJsonArray firstPage(HttpClient& client, const QString& base)
{
    const ClientReply reply = client.get(
        base + "/wp-json/wc/v3/orders?per_page=100&status=completed,%20refunded&order=asc", kDemo);
    return QJsonDocument::fromJson(reply.body).array();
}

} // namespace

class tst_demo_shop : public QObject
{
    Q_OBJECT

private slots:
    void firstLineIsTheAddressAlone();
    void servesTheOrdersAskedFor();
    void equalSwitchesServeEqualShops();
    void takesThePortAskedFor();
    void takesKeyAndSecretFromTheSwitches();
    void replaysAFolder();
    void spoilsTheRequestsOfTheSwitch();
    void putsProductZeroIntoSomeLines();
    void endsOnSignal_data();
    void endsOnSignal();
    void showsItsSwitches();
    void refusesBadArguments_data();
    void refusesBadArguments();
    void refusesAPortThatIsTaken();

    void readsFaults_data();
    void readsFaults();
    void refusesFaultsThatAreNone_data();
    void refusesFaultsThatAreNone();
    void lastFaultThatFitsHolds();
    void everyKindOfFaultHasAName();
};

void tst_demo_shop::firstLineIsTheAddressAlone()
{
    DemoShop shop({});
    const QString line = shop.firstLine();
    static const QRegularExpression address("^http://127\\.0\\.0\\.1:\\d+$");
    QVERIFY2(address.match(line).hasMatch(), qPrintable(line));
    HttpClient client;
    QCOMPARE(client.get(line + "/wp-json/wc/v3/taxes", kDemo).status, 200);
    QCOMPARE(shop.restOfOutput(), QString());
}

void tst_demo_shop::servesTheOrdersAskedFor()
{
    DemoShop shop({"--orders", "12", "--seed", "3"});
    HttpClient client;
    QCOMPARE(firstPage(client, shop.firstLine()).size(), 12);
}

void tst_demo_shop::equalSwitchesServeEqualShops()
{
    HttpClient client;
    QList<QJsonArray> lines;
    for (const char* seed : {"3", "3", "4"}) {
        DemoShop shop({"--orders", "5", "--seed", seed});
        QJsonArray parts;
        const QJsonArray orders = firstPage(client, shop.firstLine());
        for (const QJsonValue order : orders)
            parts << order["line_items"];
        lines << parts;
    }
    QCOMPARE(lines[0].size(), 5);
    QCOMPARE(lines[0], lines[1]);
    QVERIFY(lines[0] != lines[2]);
}

void tst_demo_shop::takesThePortAskedFor()
{
    QTcpServer probe;
    QVERIFY(probe.listen(QHostAddress::LocalHost));
    const QString port = QString::number(probe.serverPort());
    probe.close();
    DemoShop shop({"--port", port});
    QCOMPARE(shop.firstLine(), "http://127.0.0.1:" + port);
}

void tst_demo_shop::takesKeyAndSecretFromTheSwitches()
{
    DemoShop shop({"--key", "ck_mine", "--secret", "cs_mine"});
    const QString taxes = shop.firstLine() + "/wp-json/wc/v3/taxes";
    HttpClient client;
    QCOMPARE(client.get(taxes, kDemo).status, 401);
    QCOMPARE(client.get(taxes, "Basic " + QByteArray("ck_mine:cs_mine").toBase64()).status, 200);
}

void tst_demo_shop::replaysAFolder()
{
    DemoShop shop({"--replay", QStringLiteral(LEDORA_TEST_DATA "/recordings")});
    HttpClient client;
    const ClientReply reply =
        client.get(shop.firstLine() + "/wp-json/wc/v3/orders/58/refunds", kDemo);
    QCOMPARE(reply.status, 200);
    QCOMPARE(QJsonDocument::fromJson(reply.body).array().size(), 2);
}

void tst_demo_shop::spoilsTheRequestsOfTheSwitch()
{
    DemoShop shop({"--fault", "2:status:503", "--fault", "4+:html"});
    const QString taxes = shop.firstLine() + "/wp-json/wc/v3/taxes";
    HttpClient client;
    QCOMPARE(client.get(taxes, kDemo).status, 200);
    QCOMPARE(client.get(taxes, kDemo).status, 503);
    QVERIFY(client.get(taxes, kDemo).body.startsWith('['));
    QVERIFY(client.get(taxes, kDemo).body.startsWith("<!DOCTYPE"));
    QVERIFY(client.get(taxes, kDemo).body.startsWith("<!DOCTYPE"));
}

void tst_demo_shop::putsProductZeroIntoSomeLines()
{
    DemoShop shop({"--orders", "60", "--deleted-product"});
    HttpClient client;
    const QString base = shop.firstLine();
    const QJsonArray orders = firstPage(client, base);
    int deleted = 0;
    for (const QJsonValue order : orders) {
        const QJsonArray lines = order["line_items"].toArray();
        deleted += !lines.isEmpty() && lines[0]["product_id"].toInt() == 0 ? 1 : 0;
    }
    QVERIFY(deleted > 0);
    QCOMPARE(client.get(base + "/wp-json/wc/v3/products/0", kDemo).status, 404);
}

void tst_demo_shop::endsOnSignal_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
}

void tst_demo_shop::endsOnSignal()
{
    QFETCH(int, number);
    DemoShop shop({});
    const QString base = shop.firstLine();
    HttpClient client;
    QCOMPARE(client.get(base + "/wp-json/wc/v3/taxes", kDemo).status, 200);
    QVERIFY(shop.sendSignal(number));
    QVERIFY(shop.hasEnded());
    QCOMPARE(shop.exitCode(), 0);
    QCOMPARE(shop.errors(), QString());
}

void tst_demo_shop::showsItsSwitches()
{
    DemoShop shop({"--help"});
    QVERIFY(shop.hasEnded());
    QCOMPARE(shop.exitCode(), 0);
    const QString help = shop.restOfOutput();
    for (const char* name : {"--orders", "--seed", "--replay", "--key", "--secret", "--port",
                             "--fault", "--deleted-product"})
        QVERIFY2(help.contains(name), name);
}

void tst_demo_shop::refusesBadArguments_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    QTest::newRow("unknown switch")
        << QStringList {"--ordres", "5"} << "demo_shop: Unknown option 'ordres'.";
    QTest::newRow("no value") << QStringList {"--orders"}
                              << "demo_shop: Missing value after '--orders'.";
    QTest::newRow("stray word") << QStringList {"now"} << "demo_shop: Unexpected argument 'now'.";
    QTest::newRow("orders") << QStringList {"--orders", "many"}
                            << "demo_shop: 'many' is not a number from 0 to 10000000 for --orders.";
    QTest::newRow("negative orders")
        << QStringList {"--orders=-1"}
        << "demo_shop: '-1' is not a number from 0 to 10000000 for --orders.";
    QTest::newRow("seed") << QStringList {"--seed", "1.5"}
                          << "demo_shop: '1.5' is not a number from 0 to 4294967295 for --seed.";
    QTest::newRow("port") << QStringList {"--port", "65536"}
                          << "demo_shop: '65536' is not a number from 0 to 65535 for --port.";
    QTest::newRow("fault") << QStringList {
        "--fault",
        "1:fire"} << "demo_shop: '1:fire' is not a fault; --help shows how they are written.";
    QTest::newRow("no folder") << QStringList {"--replay", ""}
                               << "demo_shop: --replay needs a folder.";
    QTest::newRow("no recordings")
        << QStringList {"--replay", "/nonexistent"}
        << "demo_shop: /nonexistent/index.json: No such file or directory";
}

void tst_demo_shop::refusesBadArguments()
{
    QFETCH(QStringList, arguments);
    DemoShop shop(arguments);
    QVERIFY(shop.hasEnded());
    QCOMPARE(shop.exitCode(), 2);
    QCOMPARE(shop.restOfOutput(), QString());
    QTEST(shop.errors().trimmed(), "message");
}

void tst_demo_shop::refusesAPortThatIsTaken()
{
    QTcpServer taken;
    QVERIFY(taken.listen(QHostAddress::LocalHost));
    DemoShop shop({"--port", QString::number(taken.serverPort())});
    QVERIFY(shop.hasEnded());
    QCOMPARE(shop.exitCode(), 2);
    QVERIFY(shop.errors().contains(QString::number(taken.serverPort())));
}

void tst_demo_shop::readsFaults_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("andLater");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("status");
    QTest::newRow("one") << "3:html" << 3 << false << int(Fault::Html) << 500;
    QTest::newRow("from one on") << "3+:drop-body" << 3 << true << int(Fault::DropInsideBody)
                                 << 500;
    QTest::newRow("status") << "1:status" << 1 << false << int(Fault::Status) << 500;
    QTest::newRow("status given") << "1:status:404" << 1 << false << int(Fault::Status) << 404;
}

void tst_demo_shop::readsFaults()
{
    QFETCH(QString, text);
    QFETCH(int, status);
    const auto planned = demo_shop::plannedFault(text);
    QVERIFY(planned.has_value());
    QTEST(planned->number, "number");
    QTEST(planned->andLater, "andLater");
    QTEST(int(planned->fault.kind), "kind");
    QCOMPARE(planned->fault.status, status);
}

void tst_demo_shop::refusesFaultsThatAreNone_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text :
         {"", "html", "0:html", "-1:html", "x:html", "1:", "1:HTML", "1:html:", "1:html:500",
          "1:status:99", "1:status:600", "1:status:5000", "1 :html", "1++:html"})
        QTest::addRow("'%s'", text) << QString(text);
}

void tst_demo_shop::refusesFaultsThatAreNone()
{
    QFETCH(QString, text);
    QVERIFY(!demo_shop::plannedFault(text).has_value());
}

void tst_demo_shop::lastFaultThatFitsHolds()
{
    const auto plan = demo_shop::faultPlan(
        {*demo_shop::plannedFault("2+:html"), *demo_shop::plannedFault("3:empty")});
    const auto kind = [&plan](int number) {
        ShopRequest request;
        request.number = number;
        return plan(request).kind;
    };
    QCOMPARE(kind(1), Fault::None);
    QCOMPARE(kind(2), Fault::Html);
    QCOMPARE(kind(3), Fault::EmptyBody);
    QCOMPARE(kind(4), Fault::Html);
}

void tst_demo_shop::everyKindOfFaultHasAName()
{
    const QStringList names = demo_shop::faultNames();
    QCOMPARE(names.size(), int(Fault::Chunked) + 1);
    for (qsizetype i = 0; i < names.size(); ++i) {
        const auto planned = demo_shop::plannedFault("1:" + names[i]);
        QVERIFY(planned.has_value());
        QCOMPARE(int(planned->fault.kind), int(i));
    }
}

QTEST_GUILESS_MAIN(tst_demo_shop)
#include "tst_demo_shop.moc"
