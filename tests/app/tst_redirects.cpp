#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include <QLabel>

using demo_shop::ShopAnswer;
using demo_shop::ShopRequest;

/// Redirects carry the shop's credentials along, so they are followed with care.
class tst_redirects : public QObject
{
    Q_OBJECT

public:
    explicit tst_redirects(const StartFolder& startFolder)
        : folder(startFolder)
    {
    }

private slots:
    void init();
    void cleanup();
    void followsToAnotherPathOfTheHost_data();
    void followsToAnotherPathOfTheHost();
    void refusesAnotherHost_data();
    void refusesAnotherHost();
    void refusesAnotherHostAtALaterStep();
    void aRefusedRedirectIsRepeatedLikeAnyFailure();
    void aCircleOfRedirectsIsAFailure();

private:
    MainWindow& window() const { return *fixture->window; }

    QString failureOf(const QString& target, int retries);
    /// Targets asked for, each once: the toolkit may ask anew on a second connection when the first
    /// one still holds the body of a redirect.
    QStringList targets() const;
    /// "/old" leads to \a location, "/old2" to "/old", and "/new" answers.
    void redirectTo(const QByteArray& location, int status = 302);
    QByteArray otherName() const;

    const StartFolder& folder;
    std::unique_ptr<RunFixture> fixture;
    QJsonDocument doc;
};

void tst_redirects::init()
{
    fixture = std::make_unique<RunFixture>(folder);
    fixture->start();
    window().Reset();
    window().apiKey = QStringLiteral("ck_1");
    window().apiSecret = QStringLiteral("cs_2");
    window().statusLabel->setText(QStringLiteral("untouched"));
    doc = QJsonDocument();
}

void tst_redirects::cleanup()
{
    fixture.reset();
}

QString tst_redirects::failureOf(const QString& target, int retries)
{
    try {
        window().executeRequest(QUrl(fixture->shop.baseUrl() + target), &doc, retries);
    } catch (const std::runtime_error& failure) {
        return QString::fromUtf8(failure.what());
    }
    return {};
}

QStringList tst_redirects::targets() const
{
    QStringList list = fixture->targets();
    list.removeDuplicates();
    return list;
}

void tst_redirects::redirectTo(const QByteArray& location, int status)
{
    fixture->shop.setHandler([location, status](const ShopRequest& request) {
        ShopAnswer answer;
        answer.body = R"({"found":true})";
        if (request.path != QLatin1String("/new")) {
            const bool second = request.path == QLatin1String("/old2");
            answer.status = status;
            answer.headers.append({"Location", second ? QByteArray("/old") : location});
        }
        return answer;
    });
}

QByteArray tst_redirects::otherName() const
{
    QUrl url(fixture->shop.baseUrl());
    url.setHost(QStringLiteral("localhost"));
    return url.toEncoded();
}

void tst_redirects::followsToAnotherPathOfTheHost_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("absolute");
    QTest::newRow("301, path alone") << 301 << false;
    QTest::newRow("302, whole address") << 302 << true;
    QTest::newRow("307, path alone") << 307 << false;
    QTest::newRow("308, whole address") << 308 << true;
}

void tst_redirects::followsToAnotherPathOfTheHost()
{
    QFETCH(int, status);
    QFETCH(bool, absolute);
    redirectTo((absolute ? fixture->shop.baseUrl().toLatin1() : QByteArray()) + "/new", status);
    QCOMPARE(failureOf(QStringLiteral("/old"), 1), QString());
    QVERIFY(doc.object().value(QLatin1String("found")).toBool());
    QCOMPARE(targets(), QStringList({QStringLiteral("/old"), QStringLiteral("/new")}));
    for (const ShopRequest& request : fixture->shop.requests())
        QCOMPARE(request.authorization, QByteArray("Basic Y2tfMTpjc18y"));
}

void tst_redirects::refusesAnotherHost_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("301") << 301;
    QTest::newRow("302") << 302;
    QTest::newRow("307") << 307;
    QTest::newRow("308") << 308;
}

void tst_redirects::refusesAnotherHost()
{
    QFETCH(int, status);
    // The same server under another name, so that a request that is let through is seen.
    redirectTo(otherName() + "/new", status);
    const QString failure = failureOf(QStringLiteral("/old"), 1);
    QVERIFY2(failure.startsWith(QLatin1String("Netzwerkfehler nach 1 Versuchen: ")),
             qPrintable(failure));
    QCOMPARE(targets(), QStringList({QStringLiteral("/old")}));
    QVERIFY(doc.isNull());
}

void tst_redirects::refusesAnotherHostAtALaterStep()
{
    redirectTo(otherName() + "/new");
    QVERIFY(!failureOf(QStringLiteral("/old2"), 1).isEmpty());
    QCOMPARE(targets(), QStringList({QStringLiteral("/old2"), QStringLiteral("/old")}));
}

void tst_redirects::aRefusedRedirectIsRepeatedLikeAnyFailure()
{
    redirectTo(otherName() + "/new");
    QVERIFY(failureOf(QStringLiteral("/old"), 2)
                .startsWith(QLatin1String("Netzwerkfehler nach 2 Versuchen: ")));
    QCOMPARE(targets(), QStringList({QStringLiteral("/old")}));
    QVERIFY(fixture->shop.requests().size() >= 2);
    QVERIFY(window().statusLabel->text().endsWith(QLatin1String("Wiederholung 1/2...</b><br>")));
}

void tst_redirects::aCircleOfRedirectsIsAFailure()
{
    redirectTo("/old");
    QVERIFY(failureOf(QStringLiteral("/old"), 1)
                .startsWith(QLatin1String("Netzwerkfehler nach 1 Versuchen: ")));
}

LEDORA_APP_TEST_MAIN(tst_redirects)

#include "tst_redirects.moc"
