#include "app/mainwindow.h"
#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

using payment_import::KontenTypen;
using Triple = std::tuple<int, int, int>;

/// The account table as the window offers it.
class tst_konten_window : public QObject
{
    Q_OBJECT

public:
    explicit tst_konten_window(const StartFolder& folder)
        : m_fixture(folder)
    {
    }

private slots:
    void init();

    void findsAnAccountByIndex_data();
    void findsAnAccountByIndex();
    void findsAnAccountByChart_data();
    void findsAnAccountByChart();
    void tellsAnUnknownRoleByMinusOne();
    void refusesAnUnknownIndex_data();
    void refusesAnUnknownIndex();
    void refusesAnUnknownChart_data();
    void refusesAnUnknownChart();
    void setsOneCellAlone_data();
    void setsOneCellAlone();
    void createsAnUnknownRole();
    void ignoresUpdatesOfUnknownCells();
    void savesAndRestoresAnEdit();

private:
    MainWindow& window() { return *m_fixture.window; }

    RunFixture m_fixture;
};

void tst_konten_window::init()
{
    m_fixture.start({{QStringLiteral("mainurl"), QString()}});
}

void tst_konten_window::findsAnAccountByIndex_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("konto");
    QTest::newRow("SKR03") << 0 << 8400;
    QTest::newRow("SKR04") << 1 << 4400;
    QTest::newRow("SKR49") << 2 << 8030;
}

void tst_konten_window::findsAnAccountByIndex()
{
    QFETCH(int, index);
    int found = -7;
    QVERIFY(window().getKontoByIndex(KontenTypen(1), index, found));
    QTEST(found, "konto");
}

void tst_konten_window::findsAnAccountByChart_data()
{
    QTest::addColumn<int>("skr");
    QTest::addColumn<int>("konto");
    QTest::newRow("3") << 3 << 8400;
    QTest::newRow("4") << 4 << 4400;
    QTest::newRow("49") << 49 << 8030;
}

void tst_konten_window::findsAnAccountByChart()
{
    QFETCH(int, skr);
    int found = -7;
    QVERIFY(window().getKontoBySKR(KontenTypen(1), skr, found));
    QTEST(found, "konto");
}

void tst_konten_window::tellsAnUnknownRoleByMinusOne()
{
    int found = -7;
    QVERIFY(window().getKontoByIndex(KontenTypen(35), 0, found));
    QCOMPARE(found, -1);
    found = -7;
    QVERIFY(window().getKontoBySKR(KontenTypen(35), 49, found));
    QCOMPARE(found, -1);
}

void tst_konten_window::refusesAnUnknownIndex_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("3") << 3;
    QTest::newRow("-1") << -1;
    QTest::newRow("the least int") << std::numeric_limits<int>::min();
}

void tst_konten_window::refusesAnUnknownIndex()
{
    QFETCH(int, index);
    int found = -7;
    QVERIFY(!window().getKontoByIndex(KontenTypen(1), index, found));
    QCOMPARE(found, -7);
}

void tst_konten_window::refusesAnUnknownChart_data()
{
    QTest::addColumn<int>("skr");
    QTest::newRow("5") << 5;
    QTest::newRow("0") << 0;
    QTest::newRow("-3") << -3;
}

void tst_konten_window::refusesAnUnknownChart()
{
    QFETCH(int, skr);
    int found = -7;
    QVERIFY(!window().getKontoBySKR(KontenTypen(1), skr, found));
    QCOMPARE(found, -7);
}

void tst_konten_window::setsOneCellAlone_data()
{
    QTest::addColumn<int>("skr");
    QTest::addColumn<int>("index");
    QTest::addColumn<Triple>("expected");
    QTest::newRow("SKR03") << 3 << 0 << Triple(17, 4400, 8030);
    QTest::newRow("SKR04") << 4 << 1 << Triple(8400, 17, 8030);
    QTest::newRow("SKR49") << 49 << 2 << Triple(8400, 4400, 17);
}

void tst_konten_window::setsOneCellAlone()
{
    QFETCH(int, skr);
    QFETCH(int, index);
    QFETCH(Triple, expected);
    window().upDateKontoBySKR(KontenTypen(1), skr, 17);
    QCOMPARE(window().kontenMap.at(KontenTypen(1)), expected);
    window().upDateKontoBySKR(KontenTypen(1), skr, 1);
    window().upDateKontoByIndex(KontenTypen(1), index, 17);
    QCOMPARE(window().kontenMap.at(KontenTypen(1)), expected);
    QCOMPARE(window().kontenMap.at(KontenTypen(2)), Triple(8300, 4300, 8026));
}

void tst_konten_window::createsAnUnknownRole()
{
    window().upDateKontoBySKR(KontenTypen(35), 4, 4185);
    QCOMPARE(window().kontenMap.at(KontenTypen(35)), Triple(-1, 4185, -1));
}

void tst_konten_window::ignoresUpdatesOfUnknownCells()
{
    const auto before = window().kontenMap;
    window().upDateKontoByIndex(KontenTypen(1), 3, 17);
    window().upDateKontoByIndex(KontenTypen(35), -1, 17);
    window().upDateKontoBySKR(KontenTypen(1), 5, 17);
    window().upDateKontoBySKR(KontenTypen(35), 0, 17);
    QCOMPARE(window().kontenMap, before);
}

void tst_konten_window::savesAndRestoresAnEdit()
{
    window().upDateKontoBySKR(KontenTypen(35), 4, 4185);
    window().upDateKontoBySKR(KontenTypen(32), 3, 1221);
    window().SaveConfig(false);
    m_fixture.restart();
    QCOMPARE(window().kontenMap.at(KontenTypen(35)), Triple(-1, 4185, -1));
    QCOMPARE(window().kontenMap.at(KontenTypen(32)), Triple(1221, 1820, 955));
}

LEDORA_APP_TEST_MAIN(tst_konten_window)
#include "tst_konten_window.moc"
