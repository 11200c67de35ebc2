#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QNetworkAccessManager>

using demo_shop::Fault;
using demo_shop::ShopRequest;

/// What makes a request fail, how it is repeated, and what is said about it.
class tst_request_failures : public QObject
{
    Q_OBJECT

public:
    explicit tst_request_failures(const StartFolder& startFolder)
        : folder(startFolder)
    {
    }

private slots:
    void init();
    void cleanup();
    void oneFaultIsFollowedByAnotherAttempt_data();
    void oneFaultIsFollowedByAnotherAttempt();
    void aServerErrorWithValidJsonIsAFailure();
    void anEmptyBodyIsAJsonFailureAndRetried();
    void namesTheParsersTextAndPosition_data();
    void namesTheParsersTextAndPosition();
    void labelCountsTheAttemptsAndPausesGrow();
    void labelShowsTheErrorAsItIs();
    void percentMarksAndUmlautsSurvive();
    void badAddressesAreNetworkFailures_data();
    void badAddressesAreNetworkFailures();
    void aClosedPortIsANetworkFailure();
    void aSilentTransferIsANetworkFailure_data();
    void aSilentTransferIsANetworkFailure();
    void aWaitThatEndedWithoutAnAnswerIsNotRepeated();

private:
    QUrl url(const QString& target) const { return QUrl(fixture->shop.baseUrl() + target); }

    MainWindow& window() const { return *fixture->window; }

    /// Text of the exception that the request ends with; null if there is none.
    QString failureOf(const QUrl& address, int retries);
    /// Every answer is spoilt until the label has announced the attempt after \a attempt.
    void spoilUntilAttempt(Fault fault, int attempt);

    const StartFolder& folder;
    std::unique_ptr<RunFixture> fixture;
    QJsonDocument doc;
};

void tst_request_failures::init()
{
    fixture = std::make_unique<RunFixture>(folder);
    fixture->serve(QStringLiteral("/x"), R"({"a":[1,2]})");
    fixture->start();
    window().Reset();
    window().statusLabel->setText(QStringLiteral("untouched"));
    doc = QJsonDocument();
}

void tst_request_failures::cleanup()
{
    fixture.reset();
}

QString tst_request_failures::failureOf(const QUrl& address, int retries)
{
    try {
        window().executeRequest(address, &doc, retries);
    } catch (const std::runtime_error& failure) {
        return QString::fromUtf8(failure.what());
    }
    return {};
}

void tst_request_failures::spoilUntilAttempt(Fault fault, int attempt)
{
    // Not by number of request: the toolkit itself repeats one whose connection broke early.
    fixture->shop.setFaultPlan([this, fault, attempt](const ShopRequest&) {
        const QString announced = QStringLiteral("Wiederholung %1/").arg(attempt);
        return window().statusLabel->text().contains(announced) ? Fault {} : fault;
    });
}

void tst_request_failures::oneFaultIsFollowedByAnotherAttempt_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("status");
    QTest::newRow("400") << int(Fault::Status) << 400;
    QTest::newRow("401") << int(Fault::Status) << 401;
    QTest::newRow("404") << int(Fault::Status) << 404;
    QTest::newRow("429") << int(Fault::Status) << 429;
    QTest::newRow("503") << int(Fault::Status) << 503;
    QTest::newRow("closed before the head") << int(Fault::DropBeforeHeaders) << 0;
    QTest::newRow("closed inside the head") << int(Fault::DropInsideHeaders) << 0;
    QTest::newRow("closed inside the body") << int(Fault::DropInsideBody) << 0;
    QTest::newRow("half a document") << int(Fault::CutJson) << 0;
    QTest::newRow("a page for people") << int(Fault::Html) << 0;
    QTest::newRow("empty body") << int(Fault::EmptyBody) << 0;
    QTest::newRow("silence") << int(Fault::Silence) << 0;
    QTest::newRow("silence inside the body") << int(Fault::StallInsideBody) << 0;
    QTest::newRow("wrong length") << int(Fault::WrongLength) << 0;
    QTest::newRow("a notice before the JSON") << int(Fault::LeadingNotice) << 0;
}

void tst_request_failures::oneFaultIsFollowedByAnotherAttempt()
{
    QFETCH(int, kind);
    QFETCH(int, status);
    Fault fault;
    fault.kind = Fault::Kind(kind);
    fault.status = status;
    if (fault.kind == Fault::Silence || fault.kind == Fault::StallInsideBody)
        window().networkManager->setTransferTimeout(1000);
    spoilUntilAttempt(fault, 1);
    QCOMPARE(failureOf(url(QStringLiteral("/x")), 2), QString());
    QCOMPARE(doc.object().value(QLatin1String("a")).toArray().size(), 2);
    QVERIFY(fixture->shop.requests().size() > 1);
    const QString label = window().statusLabel->text();
    QVERIFY2(label.startsWith(QLatin1String("<br><b>Netzwerkfehler ("))
                 && label.endsWith(QLatin1String("), Wiederholung 1/2...</b><br>")),
             qPrintable(label));
}

void tst_request_failures::aServerErrorWithValidJsonIsAFailure()
{
    fixture->serve(QStringLiteral("/x"), R"({"a":1})", 500);
    const QString address = fixture->shop.baseUrl() + QLatin1String("/x");
    QCOMPARE(failureOf(url(QStringLiteral("/x")), 1),
             QLatin1String("Netzwerkfehler nach 1 Versuchen: Error transferring ") + address
                 + QLatin1String(" - server replied: Internal Server Error (URL: ") + address
                 + QLatin1Char(')'));
    QVERIFY(doc.isNull());
}

void tst_request_failures::anEmptyBodyIsAJsonFailureAndRetried()
{
    spoilUntilAttempt({Fault::EmptyBody}, 1);
    QCOMPARE(failureOf(url(QStringLiteral("/x")), 3), QString());
    QCOMPARE(fixture->shop.requests().size(), 2);
    QVERIFY(fixture->showsStatus(
        QStringLiteral("Netzwerkfehler (JSON-Parse-Fehler: illegal value (Position 0)), "
                       "Wiederholung 1/3...")));
}

void tst_request_failures::namesTheParsersTextAndPosition_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("error");
    QTest::newRow("empty") << QByteArray("") << "illegal value (Position 0)";
    QTest::newRow("text behind the document")
        << QByteArray("[] x") << "garbage at the end of the document (Position 3)";
    QTest::newRow("a page") << QByteArray("<html>") << "illegal value (Position 1)";
    QTest::newRow("cut off") << QByteArray("[1,") << "unterminated array (Position 3)";
    QTest::newRow("a lone number") << QByteArray("5") << "illegal value (Position 1)";
}

void tst_request_failures::namesTheParsersTextAndPosition()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, error);
    fixture->serve(QStringLiteral("/x"), body);
    doc = QJsonDocument(QJsonArray {1});
    QCOMPARE(failureOf(url(QStringLiteral("/x")), 1),
             QLatin1String("Netzwerkfehler nach 1 Versuchen: JSON-Parse-Fehler: ") + error
                 + QLatin1String(" (URL: ") + fixture->shop.baseUrl() + QLatin1String("/x)"));
    QVERIFY(doc.isNull());
}

void tst_request_failures::labelCountsTheAttemptsAndPausesGrow()
{
    fixture->serve(QStringLiteral("/x"), "{}", 500);
    QElapsedTimer clock;
    clock.start();
    QList<qint64> times;
    QStringList labels;
    fixture->shop.setFaultPlan([&](const ShopRequest&) {
        times.append(clock.elapsed());
        labels.append(window().statusLabel->text().right(27));
        return Fault {};
    });
    QVERIFY(failureOf(url(QStringLiteral("/x")), 3)
                .startsWith(QLatin1String("Netzwerkfehler nach 3 Versuchen: ")));
    QCOMPARE(times.size(), 3);
    QCOMPARE(labels.at(0), QStringLiteral("untouched"));
    QVERIFY2(labels.at(1).endsWith(QLatin1String("Wiederholung 1/3...</b><br>")),
             qPrintable(labels.at(1)));
    QVERIFY2(labels.at(2).endsWith(QLatin1String("Wiederholung 2/3...</b><br>")),
             qPrintable(labels.at(2)));
    // The last failure shows nothing of its own.
    QCOMPARE(window().statusLabel->text().right(27), labels.at(2));
    QVERIFY(times.at(1) - times.at(0) >= 500);
    QVERIFY(times.at(2) - times.at(1) >= 1000);
}

void tst_request_failures::labelShowsTheErrorAsItIs()
{
    spoilUntilAttempt({Fault::Status, 404}, 1);
    fixture->serve(QStringLiteral("/a/b"), "{}");
    QCOMPARE(failureOf(url(QStringLiteral("/a%2Fb?x=%251&y=%2b")), 3), QString());
    QVERIFY2(fixture->showsStatus(
                 QLatin1String("Netzwerkfehler (Error transferring ") + fixture->shop.baseUrl()
                 + QLatin1String("/a%2Fb?x=%251&y=%2B - server replied: Not Found), "
                                 "Wiederholung 1/3...")),
             qPrintable(window().statusLabel->text()));
}

void tst_request_failures::percentMarksAndUmlautsSurvive()
{
    fixture->shop.setFaultPlan([](const ShopRequest&) { return Fault {Fault::Status, 404}; });
    const QUrl address = url(QString::fromUtf8("/l%C3%A4den%2F1?x=%251&status=a,%20b"));
    QCOMPARE(failureOf(address, 1),
             QLatin1String("Netzwerkfehler nach 1 Versuchen: Error transferring ")
                 + fixture->shop.baseUrl()
                 + QString::fromUtf8("/läden%2F1?x=%251&status=a, b - server replied: Not Found "
                                     "(URL: ")
                 + fixture->shop.baseUrl() + QString::fromUtf8("/läden%2F1?x=%251&status=a, b)"));
}

void tst_request_failures::badAddressesAreNetworkFailures_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("expected");
    QTest::newRow("no scheme") << "shop.example/x"
                               << "Netzwerkfehler nach 1 Versuchen: Protocol \"\" is unknown "
                                  "(URL: shop.example/x)";
    QTest::newRow("unknown scheme") << "shop://a/x"
                                    << "Netzwerkfehler nach 1 Versuchen: Protocol \"shop\" is "
                                       "unknown (URL: shop://a/x)";
}

void tst_request_failures::badAddressesAreNetworkFailures()
{
    QFETCH(QString, address);
    QTEST(failureOf(QUrl(address), 1), "expected");
}

void tst_request_failures::aClosedPortIsANetworkFailure()
{
    fixture->shop.close();
    const QUrl address = url(QStringLiteral("/x"));
    QCOMPARE(failureOf(address, 1),
             QLatin1String("Netzwerkfehler nach 1 Versuchen: Connection refused (URL: ")
                 + address.toString() + QLatin1Char(')'));
}

void tst_request_failures::aSilentTransferIsANetworkFailure_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("from the start") << int(Fault::Silence);
    QTest::newRow("inside the body") << int(Fault::StallInsideBody);
}

void tst_request_failures::aSilentTransferIsANetworkFailure()
{
    QFETCH(int, kind);
    window().networkManager->setTransferTimeout(300);
    fixture->shop.setFaultPlan([kind](const ShopRequest&) {
        Fault fault;
        fault.kind = Fault::Kind(kind);
        return fault;
    });
    QCOMPARE(failureOf(url(QStringLiteral("/x")), 1),
             QLatin1String("Netzwerkfehler nach 1 Versuchen: Operation canceled (URL: ")
                 + fixture->shop.baseUrl() + QLatin1String("/x)"));
}

void tst_request_failures::aWaitThatEndedWithoutAnAnswerIsNotRepeated()
{
    fixture->shop.setFaultPlan([](const ShopRequest&) {
        QMetaObject::invokeMethod(
            qApp, [] { QCoreApplication::exit(0); }, Qt::QueuedConnection);
        return Fault {Fault::Silence};
    });
    const QString failure = failureOf(url(QStringLiteral("/x")), 3);
    // The end of the program that was asked for would end all later waits of this process.
    QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    QCoreApplication::exec();

    QVERIFY2(failure.startsWith(QLatin1String("Netzwerkfehler nach ")), qPrintable(failure));
    QCOMPARE(fixture->shop.requests().size(), 1);
    QCOMPARE(window().statusLabel->text(), QStringLiteral("untouched"));
}

LEDORA_APP_TEST_MAIN(tst_request_failures)

#include "tst_request_failures.moc"
