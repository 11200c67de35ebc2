#include "accounting/rounding.h"

#include <QLocale>
#include <QRandomGenerator>
#include <QTest>

#include <bit>
#include <cmath>
#include <limits>

class tst_rounding : public QObject
{
    Q_OBJECT

private slots:
    void roundsTheBinaryValue_data();
    void roundsTheBinaryValue();
    void isTheTripThroughTheText_data();
    void isTheTripThroughTheText();
    void keepsTheSignOfZero();
    void keepsInfinitiesAndNaN();
    void ignoresTheLocaleOfTheUser();
    void nudgesAwayFromZero_data();
    void nudgesAwayFromZero();
    void nudgesNothingThatIsZeroAtSixPlaces_data();
    void nudgesNothingThatIsZeroAtSixPlaces();
    void nudgeDependsOnTheValueAlone_data();
    void nudgeDependsOnTheValueAlone();
    void nudgeKeepsNaN();
    void grossFromPercentAndNet_data();
    void grossFromPercentAndNet();
};

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

/// The definition itself, step by step.
double trip(double value, int digits)
{
    QLocale locale(QLocale::C, QLocale::AnyScript, QLocale::AnyTerritory);
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale.toString(value, 'f', digits).toDouble();
}

} // namespace

void tst_rounding::roundsTheBinaryValue_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("digits");
    QTest::addColumn<double>("expected");
    QTest::newRow("1.005 lies below the half") << 1.005 << 2 << 1.00;
    QTest::newRow("2.675 lies below the half") << 2.675 << 2 << 2.67;
    QTest::newRow("-1.005 lies above the half") << -1.005 << 2 << -1.00;
    QTest::newRow("1.15 lies below the half") << 1.15 << 1 << 1.1;
    QTest::newRow("an exact half goes up") << 0.125 << 2 << 0.13;
    QTest::newRow("a negative exact half goes down") << -0.125 << 2 << -0.13;
    QTest::newRow("no digits") << 2.5 << 0 << 3.0;
    QTest::newRow("six digits") << 0.1234567 << 6 << 0.123457;
    QTest::newRow("whole number") << 12.0 << 2 << 12.0;
    QTest::newRow("thousands") << 1234567.891 << 2 << 1234567.89;
    QTest::newRow("carry") << 9.999 << 2 << 10.0;
}

void tst_rounding::roundsTheBinaryValue()
{
    QFETCH(double, value);
    QFETCH(int, digits);
    QFETCH(double, expected);
    QVERIFY2(Round(value, digits) == expected, qPrintable(QString::number(Round(value, digits))));
}

void tst_rounding::isTheTripThroughTheText_data()
{
    QTest::addColumn<int>("digits");
    for (const int digits : {-1, 0, 1, 2, 3, 6, 15})
        QTest::addRow("%d digits", digits) << digits;
}

void tst_rounding::isTheTripThroughTheText()
{
    QFETCH(int, digits);
    QRandomGenerator random(4711);
    const auto same = [digits](double value) {
        return std::bit_cast<quint64>(Round(value, digits))
            == std::bit_cast<quint64>(trip(value, digits));
    };
    for (int i = 0; i < 3000; ++i) {
        const int cents = random.bounded(-10'000'000, 10'000'000);
        for (const double value : {cents / 100.0, cents / 1000.0, cents / 19.0, cents * 0.01 / 7,
                                   std::ldexp(cents, -7), random.generateDouble()})
            QVERIFY2(same(value), qPrintable(QString::number(value, 'g', 17)));
    }
    // Any bit pattern at all: subnormal, huge, infinite. Not every NaN, since none has a text.
    for (int i = 0; i < 1000; ++i) {
        const double value = std::bit_cast<double>(random.generate64());
        if (!std::isnan(value))
            QVERIFY2(same(value), qPrintable(QString::number(value, 'g', 17)));
    }
}

void tst_rounding::keepsTheSignOfZero()
{
    QVERIFY(Round(-0.001, 2) == 0.0);
    QVERIFY(std::signbit(Round(-0.001, 2)));
    QVERIFY(!std::signbit(Round(0.001, 2)));
}

void tst_rounding::keepsInfinitiesAndNaN()
{
    QCOMPARE(Round(Infinity, 2), Infinity);
    QCOMPARE(Round(-Infinity, 2), -Infinity);
    QVERIFY(std::isnan(Round(NaN, 2)));
}

void tst_rounding::ignoresTheLocaleOfTheUser()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const double rounded = Round(1234567.891, 2);
    QLocale::setDefault(before);
    QCOMPARE(rounded, 1234567.89);
}

void tst_rounding::nudgesAwayFromZero_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("digits");
    QTest::addColumn<double>("expected");
    QTest::newRow("1.005") << 1.005 << 2 << 1.01;
    QTest::newRow("-1.005") << -1.005 << 2 << -1.01;
    QTest::newRow("1.15") << 1.15 << 1 << 1.2;
    QTest::newRow("-1.15") << -1.15 << 1 << -1.2;
    QTest::newRow("2.675") << 2.675 << 2 << 2.68;
    QTest::newRow("too far below the half") << 1.00499 << 2 << 1.00;
    QTest::newRow("as far below as the nudge reaches") << 1.0049995 << 2 << 1.01;
    QTest::newRow("a value as it is") << 11.9 << 2 << 11.9;
}

void tst_rounding::nudgesAwayFromZero()
{
    QFETCH(double, value);
    QFETCH(int, digits);
    QFETCH(double, expected);
    QVERIFY(RundungsKorrektur(value, digits, 0.0) == expected);
}

void tst_rounding::nudgesNothingThatIsZeroAtSixPlaces_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("expected");
    // At seven digits a nudge would show.
    QTest::newRow("below half a millionth") << 4e-07 << 4e-07;
    QTest::newRow("negative") << -4e-07 << -4e-07;
    QTest::newRow("zero") << 0.0 << 0.0;
    QTest::newRow("just above is nudged") << 6e-07 << 1.6e-06;
    QTest::newRow("just below is nudged") << -6e-07 << -1.6e-06;
}

void tst_rounding::nudgesNothingThatIsZeroAtSixPlaces()
{
    QFETCH(double, value);
    QFETCH(double, expected);
    QVERIFY(RundungsKorrektur(value, 7, 0.0) == expected);
}

void tst_rounding::nudgeDependsOnTheValueAlone_data()
{
    QTest::addColumn<double>("third");
    QTest::newRow("negative") << -5.0;
    QTest::newRow("positive") << 5.0;
    QTest::newRow("infinite") << Infinity;
    QTest::newRow("NaN") << NaN;
}

void tst_rounding::nudgeDependsOnTheValueAlone()
{
    QFETCH(double, third);
    QVERIFY(RundungsKorrektur(1.005, 2, third) == 1.01);
    QVERIFY(RundungsKorrektur(-1.005, 2, third) == -1.01);
    QVERIFY(RundungsKorrektur(4e-07, 7, third) == 4e-07);
}

void tst_rounding::nudgeKeepsNaN()
{
    QVERIFY(std::isnan(RundungsKorrektur(NaN, 2, 0.0)));
}

void tst_rounding::grossFromPercentAndNet_data()
{
    QTest::addColumn<double>("percent");
    QTest::addColumn<double>("net");
    QTest::addColumn<double>("gross");
    QTest::newRow("19 percent") << 19.0 << 10.0 << 11.9;
    QTest::newRow("7 percent") << 7.0 << 4.67 << 5.0;
    QTest::newRow("no tax") << 0.0 << 4.9 << 4.9;
    QTest::newRow("negative net") << 19.0 << -10.0 << -11.9;
    QTest::newRow("ends in a half") << 5.0 << 0.1 << 0.11;
    QTest::newRow("ends in a negative half") << 5.0 << -0.1 << -0.11;
}

void tst_rounding::grossFromPercentAndNet()
{
    QFETCH(double, percent);
    QFETCH(double, net);
    QFETCH(double, gross);
    QVERIFY(B_From_PS_N_ROUND(percent, net, 2) == gross);
}

QTEST_APPLESS_MAIN(tst_rounding)
#include "tst_rounding.moc"
