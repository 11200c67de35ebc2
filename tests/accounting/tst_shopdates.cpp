#include "accounting/shopdates.h"

#include <QLoggingCategory>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

/// Runs in several time zones of the machine, by TZ. All that is tested holds in each of them, but
/// for the nights in which the machine's own clock changes.
class tst_shopdates : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void givesGermanWallClock_data();
    void givesGermanWallClock();
    void followsTheMachineInItsOwnClockChange_data();
    void followsTheMachineInItsOwnClockChange();
    void isSameAsTheGeneralWay_data();
    void isSameAsTheGeneralWay();
    void isSameAsTheGeneralWayForOddTexts();
    void blankTextComesBackUnchanged_data();
    void blankTextComesBackUnchanged();
    void textWithoutADateGivesEmptyText_data();
    void textWithoutADateGivesEmptyText();
    void keepsItsTextIfUtcIsNotUsed_data();
    void keepsItsTextIfUtcIsNotUsed();
    void findsTheGermanZoneOnFirstUse();
    void findsNoZoneForATextItDoesNotConvert();
    void keepsAZoneThatIsThere();
    void fallsBackOnTheMachinesZone_data();
    void fallsBackOnTheMachinesZone();
    void readsTheGmtField();
    void readsThePlainFieldIfUtcIsNotUsed();
    void ignoresThePlainFieldIfUtcIsUsed_data();
    void ignoresThePlainFieldIfUtcIsUsed();
    void reportsADateThatTheMachineWouldConvertOtherwise();
    void reportsNothingOnAGermanMachine();
    void reportsNothingWithoutDebugOutput();
    void resultIsTheSameWithDebugOutput();
};

namespace {

QByteArray machineZone()
{
    return qgetenv("TZ");
}

void setDebugOutput(bool on)
{
    QLoggingCategory::defaultCategory()->setEnabled(QtDebugMsg, on);
}

/// The conversion in its general form, with a parse for each of the two readings.
QString generalWay(const QString& dateText, const QTimeZone& zone)
{
    QDateTime utc = QDateTime::fromString(dateText, Qt::ISODate);
    utc.setTimeSpec(Qt::UTC);
    const QDateTime plain = QDateTime::fromString(dateText, Qt::ISODate);
    return plain.addSecs(zone.offsetFromUtc(utc)).toString(Qt::ISODate);
}

QStringList s_messages;

void collectMessage(QtMsgType, const QMessageLogContext&, const QString& text)
{
    s_messages.append(text);
}

/// The debug lines of one conversion.
QStringList linesOf(const QString& dateText)
{
    s_messages.clear();
    const QtMessageHandler before = qInstallMessageHandler(collectMessage);
    ConvertUTCDateToLocalDate(dateText);
    qInstallMessageHandler(before);
    return s_messages;
}

} // namespace

void tst_shopdates::init()
{
    QVERIFY2(QTimeZone("Europe/Berlin").isValid(), "the machine has no zone database");
    setDebugOutput(false);
    bUseUTC = true;
    tzLocal = QTimeZone();
}

void tst_shopdates::cleanup()
{
    setDebugOutput(true);
    bUseUTC = true;
    tzLocal = QTimeZone();
}

void tst_shopdates::givesGermanWallClock_data()
{
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* text, const char* expected) {
        QTest::newRow(text) << QString(expected);
    };
    row("2026-07-12T10:00:00", "2026-07-12T12:00:00");
    row("2026-01-12T10:00:00", "2026-01-12T11:00:00");
    row("2026-02-28T22:59:59", "2026-02-28T23:59:59");
    row("2026-02-28T23:00:00", "2026-03-01T00:00:00");
    row("2026-03-31T22:00:00", "2026-04-01T00:00:00");
    row("2026-04-30T21:59:59", "2026-04-30T23:59:59");
    row("2026-12-31T23:30:00", "2027-01-01T00:30:00");
    row("2028-02-28T23:30:00", "2028-02-29T00:30:00");
    row("1999-12-31T23:30:00", "2000-01-01T00:30:00");
    row("2036-12-31T23:30:00", "2037-01-01T00:30:00");
    row("1975-06-15T12:00:00", "1975-06-15T13:00:00"); // no summer time then
    row("2026-07-12T10:00", "2026-07-12T12:00:00");
    row("2026-07-12", "2026-07-12T02:00:00");
    row("2026-07-12 10:00:00", "2026-07-12T12:00:00");
    row("2026-07-12T10:00:00.750", "2026-07-12T12:00:00");
    row("2026-07-12T24:00:00", "2026-07-13T02:00:00");
    // The zone of the text is no zone to convert from, but stays in the text.
    row("2026-07-12T10:00:00Z", "2026-07-12T12:00:00Z");
    row("2026-01-12T10:00:00Z", "2026-01-12T11:00:00Z");
    row("2026-07-12T10:00:00+02:00", "2026-07-12T12:00:00+02:00");
    row("2026-07-12T10:00:00-05:30", "2026-07-12T12:00:00-05:30");
}

void tst_shopdates::givesGermanWallClock()
{
    QTEST(ConvertUTCDateToLocalDate(QString(QTest::currentDataTag())), "expected");
}

void tst_shopdates::followsTheMachineInItsOwnClockChange_data()
{
    QTest::addColumn<QString>("onUtc");
    QTest::addColumn<QString>("onBerlin");
    QTest::addColumn<QString>("onNewYork");
    const auto row = [](const char* text, const char* utc, const char* berlin, const char* york) {
        QTest::newRow(text) << utc << berlin << york;
    };
    // The night of 29 March in Germany: 02:00 to 03:00 does not exist.
    row("2026-03-29T00:59:59", "2026-03-29T01:59:59", "2026-03-29T01:59:59", "2026-03-29T01:59:59");
    row("2026-03-29T01:00:00", "2026-03-29T03:00:00", "2026-03-29T04:00:00", "2026-03-29T03:00:00");
    row("2026-03-29T01:30:00", "2026-03-29T03:30:00", "2026-03-29T04:30:00", "2026-03-29T03:30:00");
#if QT_VERSION < QT_VERSION_CHECK(6, 7, 0) // later versions move a time that does not exist
    row("2026-03-29T02:30:00", "2026-03-29T04:30:00", "", "2026-03-29T04:30:00");
#endif
    row("2026-03-29T03:00:00", "2026-03-29T05:00:00", "2026-03-29T05:00:00", "2026-03-29T05:00:00");
    // The night of 25 October in Germany: 02:00 to 03:00 comes twice.
    row("2026-10-25T00:30:00", "2026-10-25T02:30:00", "2026-10-25T02:30:00", "2026-10-25T02:30:00");
    row("2026-10-25T01:30:00", "2026-10-25T02:30:00", "2026-10-25T02:30:00", "2026-10-25T02:30:00");
    row("2026-10-25T03:30:00", "2026-10-25T04:30:00", "2026-10-25T04:30:00", "2026-10-25T04:30:00");
    // The night of 8 March in New York: 02:00 to 03:00 does not exist.
    row("2026-03-08T00:30:00", "2026-03-08T01:30:00", "2026-03-08T01:30:00", "2026-03-08T01:30:00");
    row("2026-03-08T01:30:00", "2026-03-08T02:30:00", "2026-03-08T02:30:00", "2026-03-08T03:30:00");
#if QT_VERSION < QT_VERSION_CHECK(6, 7, 0)
    row("2026-03-08T02:30:00", "2026-03-08T03:30:00", "2026-03-08T03:30:00", "");
#endif
    row("2026-03-08T03:30:00", "2026-03-08T04:30:00", "2026-03-08T04:30:00", "2026-03-08T04:30:00");
    // The night of 1 November in New York: 01:00 to 02:00 comes twice.
    row("2026-11-01T00:30:00", "2026-11-01T01:30:00", "2026-11-01T01:30:00", "2026-11-01T01:30:00");
    row("2026-11-01T02:30:00", "2026-11-01T03:30:00", "2026-11-01T03:30:00", "2026-11-01T03:30:00");
}

void tst_shopdates::followsTheMachineInItsOwnClockChange()
{
    const QMap<QByteArray, const char*> columns {
        {"UTC", "onUtc"}, {"Europe/Berlin", "onBerlin"}, {"America/New_York", "onNewYork"}};
    const char* column = columns.value(machineZone());
    QVERIFY2(column, "no results are known for this TZ");
    QTEST(ConvertUTCDateToLocalDate(QString(QTest::currentDataTag())), column);
}

void tst_shopdates::isSameAsTheGeneralWay_data()
{
    QTest::addColumn<QTimeZone>("zone");
    for (const char* zone : {"Europe/Berlin", "UTC", "America/New_York", "Asia/Kathmandu",
                             "Australia/Lord_Howe", "Pacific/Kiritimati", "Pacific/Pago_Pago"})
        QTest::newRow(zone) << QTimeZone(zone);
}

void tst_shopdates::isSameAsTheGeneralWay()
{
    QFETCH(QTimeZone, zone);
    QVERIFY(zone.isValid());
    tzLocal = zone;
    const auto check = [&zone](const QDateTime& utc) {
        QString text = utc.toString(Qt::ISODate);
        text.chop(1); // the "Z"
        const QString expected = generalWay(text, zone);
        const QString converted = ConvertUTCDateToLocalDate(text);
        if (converted != expected)
            qWarning() << text << converted << expected;
        return converted == expected;
    };

    QRandomGenerator random(4712);
    const QDateTime begin(QDate(1995, 1, 1), QTime(0, 0), Qt::UTC);
    const qint64 span = begin.secsTo(QDateTime(QDate(2042, 1, 1), QTime(0, 0), Qt::UTC));
    for (int i = 0; i < 5000; ++i)
        QVERIFY(check(begin.addSecs(qint64(random.generateDouble() * double(span)))));

    // Every quarter of an hour of the days around the clock changes of this zone and the machine's.
    for (const QTimeZone& changing : {zone, QTimeZone(machineZone())}) {
        const auto changes =
            changing.transitions(QDateTime(QDate(2025, 1, 1), QTime(0, 0), Qt::UTC),
                                 QDateTime(QDate(2027, 1, 1), QTime(0, 0), Qt::UTC));
        for (const QTimeZone::OffsetData& change : changes) {
            const QDateTime middle = change.atUtc.toUTC();
            for (int quarter = -3 * 96; quarter <= 3 * 96; ++quarter)
                QVERIFY(check(middle.addSecs(quarter * 900LL + random.bounded(2))));
        }
    }
}

void tst_shopdates::isSameAsTheGeneralWayForOddTexts()
{
    tzLocal = QTimeZone("Europe/Berlin");
    QRandomGenerator random(4713);
    const QString pool = QStringLiteral("0123456789019-:TZt+. /\u0663\u2212a");
    for (int i = 0; i < 20000; ++i) {
        QString text = QStringLiteral("2026-0%1-1%2T1%3:2%4:3%5")
                           .arg(random.bounded(1, 10))
                           .arg(random.bounded(10))
                           .arg(random.bounded(10))
                           .arg(random.bounded(10))
                           .arg(random.bounded(10));
        for (int change = random.bounded(4); change > 0; --change)
            text[random.bounded(int(text.size()))] = pool[random.bounded(int(pool.size()))];
        if (random.bounded(8) == 0)
            text.insert(random.bounded(int(text.size())), pool[random.bounded(int(pool.size()))]);
        if (random.bounded(8) == 0)
            text.truncate(random.bounded(1, int(text.size())));
        if (text.trimmed().isEmpty())
            continue;
        const QString converted = ConvertUTCDateToLocalDate(text);
        QVERIFY2(converted == generalWay(text, tzLocal), qPrintable(text + " -> " + converted));
    }
}

void tst_shopdates::blankTextComesBackUnchanged_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << "";
    QTest::newRow("blanks") << "   ";
    QTest::newRow("white space") << " \t\n ";
}

void tst_shopdates::blankTextComesBackUnchanged()
{
    QFETCH(QString, text);
    QCOMPARE(ConvertUTCDateToLocalDate(text), text);
}

void tst_shopdates::textWithoutADateGivesEmptyText_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("words") << "gestern";
    QTest::newRow("day that does not exist") << "2026-02-30T10:00:00";
    QTest::newRow("month 13") << "2026-13-01T10:00:00";
    QTest::newRow("month 0") << "2026-00-10T10:00:00";
    QTest::newRow("day 0") << "2026-01-00T10:00:00";
    QTest::newRow("hour 25") << "2026-01-12T25:00:00";
    QTest::newRow("minute 60") << "2026-01-12T10:60:00";
    QTest::newRow("29 February of another year") << "2027-02-29T10:00:00";
    QTest::newRow("German form") << "12.01.2026";
}

void tst_shopdates::textWithoutADateGivesEmptyText()
{
    QFETCH(QString, text);
    QVERIFY(ConvertUTCDateToLocalDate(text).isEmpty());
}

void tst_shopdates::keepsItsTextIfUtcIsNotUsed_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("date") << "2026-07-12T10:00:00";
    QTest::newRow("date in blanks") << " 2026-07-12T10:00:00 ";
    QTest::newRow("no date") << "gestern";
    QTest::newRow("empty") << "";
}

void tst_shopdates::keepsItsTextIfUtcIsNotUsed()
{
    QFETCH(QString, text);
    bUseUTC = false;
    QCOMPARE(ConvertUTCDateToLocalDate(text), text);
    QVERIFY(!tzLocal.isValid());
}

void tst_shopdates::findsTheGermanZoneOnFirstUse()
{
    QVERIFY(!tzLocal.isValid());
    ConvertUTCDateToLocalDate(QStringLiteral("2026-07-12T10:00:00"));
    QCOMPARE(tzLocal.id(), QByteArray("Europe/Berlin"));
}

void tst_shopdates::findsNoZoneForATextItDoesNotConvert()
{
    ConvertUTCDateToLocalDate(QStringLiteral("  "));
    QVERIFY(!tzLocal.isValid());
}

void tst_shopdates::keepsAZoneThatIsThere()
{
    tzLocal = QTimeZone("Asia/Tokyo");
    QCOMPARE(ConvertUTCDateToLocalDate(QStringLiteral("2026-07-12T10:00:00")),
             QStringLiteral("2026-07-12T19:00:00"));
    QCOMPARE(tzLocal.id(), QByteArray("Asia/Tokyo"));
}

void tst_shopdates::fallsBackOnTheMachinesZone_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text : {"2026-07-12T10:00:00", "2026-01-12T23:30:00", "2026-03-29T01:30:00"})
        QTest::newRow(text) << text;
}

void tst_shopdates::fallsBackOnTheMachinesZone()
{
    QFETCH(QString, text);
    const QDateTime plain = QDateTime::fromString(text, Qt::ISODate);
    const QDateTime utc = QDateTime::fromString(text + "Z", Qt::ISODate);
    const QDateTime local = wallClockOf(QTimeZone(), plain, utc);
    // Not by local time, which is what is tested.
    const int offset = QTimeZone(machineZone()).offsetFromUtc(utc);
    const QString expected = utc.addSecs(offset).toString(Qt::ISODate).chopped(1);
    QCOMPARE(local.toString(Qt::ISODate), expected);
    QCOMPARE(local.toUTC(), utc);
}

void tst_shopdates::readsTheGmtField()
{
    const QJsonObject order {{"date_created", "2026-07-12T12:34:56"},
                             {"date_created_gmt", "2026-07-12T10:00:00"}};
    QCOMPARE(ConvertUTCDateToLocalDate(order, "date_created"),
             QStringLiteral("2026-07-12T12:00:00"));
}

void tst_shopdates::readsThePlainFieldIfUtcIsNotUsed()
{
    bUseUTC = false;
    const QJsonObject order {{"date_created", "2026-07-12T12:34:56"},
                             {"date_created_gmt", "2026-07-12T10:00:00"}};
    QCOMPARE(ConvertUTCDateToLocalDate(order, "date_created"),
             QStringLiteral("2026-07-12T12:34:56"));
    QCOMPARE(ConvertUTCDateToLocalDate(order, "date_paid"), QString());
}

void tst_shopdates::ignoresThePlainFieldIfUtcIsUsed_data()
{
    QTest::addColumn<QJsonObject>("order");
    const QString date = QStringLiteral("2026-07-12T12:34:56");
    QTest::newRow("missing") << QJsonObject {{"date_created", date}};
    QTest::newRow("null") << QJsonObject {{"date_created", date},
                                          {"date_created_gmt", QJsonValue::Null}};
    QTest::newRow("object") << QJsonObject {{"date_created", date},
                                            {"date_created_gmt", QJsonObject()}};
}

void tst_shopdates::ignoresThePlainFieldIfUtcIsUsed()
{
    QFETCH(QJsonObject, order);
    QVERIFY(ConvertUTCDateToLocalDate(order, "date_created").isEmpty());
}

void tst_shopdates::reportsADateThatTheMachineWouldConvertOtherwise()
{
    setDebugOutput(true);
    // A zone that none of the machines is in.
    tzLocal = QTimeZone("Asia/Tokyo");
    const QStringList lines = linesOf(QStringLiteral("2026-07-12T10:00:00"));
    QCOMPARE(lines.size(), 1);
    // The text as it came, the result, both readings as UTC and on the machine, summer time.
    static const QRegularExpression form(
        "^\"2026-07-12T10:00:00\" QDateTime\\(2026-07-12 19:00:00[^)]* Qt::LocalTime\\) "
        "QDateTime\\(2026-07-12 10:00:00[^)]* Qt::UTC\\) "
        "QDateTime\\(2026-07-12 (10|12|06):00:00[^)]* Qt::LocalTime\\) false$");
    QVERIFY2(form.match(lines.first()).hasMatch(), qPrintable(lines.first()));
}

void tst_shopdates::reportsNothingOnAGermanMachine()
{
    setDebugOutput(true);
    const bool german = machineZone() == "Europe/Berlin";
    QCOMPARE(linesOf(QStringLiteral("2026-07-12T10:00:00")).isEmpty(), german);
    QCOMPARE(linesOf(QStringLiteral("2026-01-12")).isEmpty(), german);
    // The night in which even a German machine differs.
    QCOMPARE(linesOf(QStringLiteral("2026-03-29T01:30:00")).size(), 1);
}

void tst_shopdates::reportsNothingWithoutDebugOutput()
{
    tzLocal = QTimeZone("Asia/Tokyo");
    QVERIFY(linesOf(QStringLiteral("2026-07-12T10:00:00")).isEmpty());
    QVERIFY(linesOf(QStringLiteral("2026-07-12")).isEmpty());
}

void tst_shopdates::resultIsTheSameWithDebugOutput()
{
    const QStringList texts {"2026-07-12T10:00:00", "2026-01-12T23:30:00", "2026-03-29T01:30:00",
                             "2026-07-12T10:00:00Z"};
    for (const QString& text : texts) {
        setDebugOutput(false);
        const QString quiet = ConvertUTCDateToLocalDate(text);
        setDebugOutput(true);
        const QtMessageHandler before = qInstallMessageHandler(collectMessage);
        const QString loud = ConvertUTCDateToLocalDate(text);
        qInstallMessageHandler(before);
        QCOMPARE(loud, quiet);
    }
}

QTEST_APPLESS_MAIN(tst_shopdates)
#include "tst_shopdates.moc"
