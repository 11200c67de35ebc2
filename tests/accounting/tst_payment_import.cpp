#include "accounting/payment_import.h"
#include "accounting/payment_import_tables.h"

#include <QTest>

#include <limits>

using namespace payment_import;

class tst_payment_import : public QObject
{
    Q_OBJECT

private slots:
    void roleHasItsTitleTextAndAccounts_data();
    void roleHasItsTitleTextAndAccounts();
    void tablesHold37Roles();
    void orderOfRolesIsFixed();
    void kindsOfSearchAreFixed();
    void formTextIsFixed_data();
    void formTextIsFixed();
    void defaultsHold36Entries();
    void defaultsAscendByRole();
    void smallBusinessAccountsOfUntaxedSales_data();
    void smallBusinessAccountsOfUntaxedSales();
    void smallBusinessTouchesNoOtherRole();
    void filledTableStaysAsItIs();
    void freshTableHasNoEntryForRole35();
    void looksUpEachChartByIndex_data();
    void looksUpEachChartByIndex();
    void refusesAnIndexOutsideTheTriple_data();
    void refusesAnIndexOutsideTheTriple();
    void looksUpEachChartByItsNumber_data();
    void looksUpEachChartByItsNumber();
    void refusesAnUnknownChart_data();
    void refusesAnUnknownChart();
    void missingRoleReadsAsUnsetInEachChart();
    void updatesOneChartByIndex_data();
    void updatesOneChartByIndex();
    void updatesOneChartByItsNumber_data();
    void updatesOneChartByItsNumber();
    void updateWithAWrongIndexChangesNothing_data();
    void updateWithAWrongIndexChangesNothing();
    void updateOfAnUnknownChartChangesNothing_data();
    void updateOfAnUnknownChartChangesNothing();
    void updateCreatesAMissingRole();
};

namespace {

const KontenTriple ebay {11, 12, 13};
const KontenTriple paypal {21, 22, 23};
const KontenTriple woocommerce {31, 32, 33};

KontenMap defaults(int mode = 0, bool firmaKU = false)
{
    KontenMap konten;
    InitDefaultKonten(konten, mode, firmaKU, ebay, paypal, woocommerce);
    return konten;
}

void addIndexes()
{
    QTest::addColumn<int>("index");
    QTest::newRow("below") << -1;
    QTest::newRow("above") << 3;
    QTest::newRow("lowest int") << std::numeric_limits<int>::min();
    QTest::newRow("highest int") << std::numeric_limits<int>::max();
}

void addUnknownCharts()
{
    QTest::addColumn<int>("skr");
    QTest::newRow("5") << 5;
    QTest::newRow("an index is no chart") << 0;
    QTest::newRow("the second index is none") << 1;
    QTest::newRow("negative") << -3;
    QTest::newRow("14") << 14;
    QTest::newRow("50") << 50;
}

} // namespace

void tst_payment_import::roleHasItsTitleTextAndAccounts_data()
{
    QTest::addColumn<int>("role");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("accounts");
    const auto row = [](int role, const char* title, const char* text, const QList<int>& accounts) {
        QTest::addRow("%d", role) << role << QString::fromUtf8(title) << QString::fromUtf8(text)
                                  << accounts;
    };
    // clang-format off
    row(1, "Erlöse Inland normale Steuer", "Erlös <BESTELLNUMMER>", {8400, 4400, 8030});
    row(2, "Erlöse Inland ermäßigte Steuer", "Erlös <BESTELLNUMMER>", {8300, 4300, 8026});
    row(3, "Erlöse Inland ohne Steuer", "Erlös <BESTELLNUMMER>", {8200, 4200, 8000});
    row(4, "Versandkosten Inland normale Steuer (Rechnungsausgang)", "Versandkosten <BESTELLNUMMER>", {8400, 4400, 8030});
    row(5, "Versandkosten Inland ermäßigte Steuer (Rechnungsausgang)", "Versandkosten <BESTELLNUMMER>", {8300, 4300, 8026});
    row(6, "Versandkosten Inland ohne Steuer (Rechnungsausgang)", "Versandkosten <BESTELLNUMMER>", {8200, 4200, 8000});
    row(7, "ebay-Provision", "ebay-Provision <BESTELLNUMMER>", {4760, 6770, 0});
    row(8, "Sonstige Kosten", "Sonstige Kosten <BESTELLNUMMER>", {4700, 6700, 0});
    row(9, "Andere Gebühr", "Andere Gebühr <BESCHREIBUNG>", {4700, 6700, 0});
    row(10, "Positive Differenz", "Positive Differenz <BESTELLNUMMER>", {2660, 4840, 8137});
    row(11, "Negative Differenz", "Negative Differenz <BESTELLNUMMER>", {2150, 6880, 8367});
    row(12, "Lieferung Drittland", "Erlös <BESTELLNUMMER>", {8120, 4120, 0});
    row(13, "Lieferung EU-B2B", "Erlös <BESTELLNUMMER>", {8125, 4125, 0});
    row(14, "Lieferung EU-B2C mit OSS / Lieferschwelle überschritten", "Erlös <BESTELLNUMMER>", {8320, 4320, 0});
    row(15, "Versandkosten Lieferung Drittland(Rechnungsausgang)", "Versandkosten <BESTELLNUMMER>", {8120, 4120, 0});
    row(16, "Versandkosten EU-B2B (Rechnungsausgang)", "Versandkosten <BESTELLNUMMER>", {8125, 4125, 0});
    row(17, "Versandkosten EU-B2C mit OSS oder Lieferschwelle überschritten(Rechnungsausgang)", "Versandkosten <BESTELLNUMMER>", {8320, 4320, 0});
    row(18, "Finanzkonto Auszahlung", "Auszahlung <AUSZAHLUNGSNUMMER>", {-1, -1, -1});
    row(19, "Finanzkonto Auszahlung sekundär", "Auszahlung <AUSZAHLUNGSNUMMER>", {-1, -1, -1});
    row(20, "eBay-Verrechnungskonto", "eBay-Sammel <DATUM>", {11, 12, 13});
    row(21, "Geldtransit", "eBay-Geldtransit <REFERENZNUMMER>", {1360, 1460, 705});
    row(22, "Leistung Drittland", "Erlös <BESTELLNUMMER>", {8338, 4338, 0});
    row(23, "Leistung EU-B2B", "Erlös <BESTELLNUMMER>", {8336, 4336, 0});
    row(24, "Leistung EU-B2C mit OSS / Lieferschwelle überschritten", "Erlös <BESTELLNUMMER>", {8331, 4331, 0});
    row(25, "Lieferung EU-B2C (ermäßigte St.) unter Lieferschwelle", "Erlös <BESTELLNUMMER>", {8310, 4310, 0});
    row(26, "Lieferung EU-B2C (normale St.) unter Lieferschwelle", "Erlös <BESTELLNUMMER>", {8315, 4315, 0});
    row(27, "Versandkosten EU-B2C (ermäßigte St.) unter Lieferschwelle (Rechnungsausgang)", "Versandkosten <BESTELLNUMMER>", {8310, 4310, 0});
    row(28, "Versandkosten EU-B2C (normale St.) unter Lieferschwelle (Rechnungsausgang)", "Versandkosten <BESTELLNUMMER>", {8315, 4315, 0});
    row(29, "Leistung EU-B2C (ermäßigte St.) unter Lieferschwelle", "Erlös <BESTELLNUMMER>", {8449, 4449, 0});
    row(30, "Leistung EU-B2C (normale St.) unter Lieferschwelle", "Erlös <BESTELLNUMMER>", {8449, 4449, 0});
    row(31, "paypal-Gebühr", "paypal-Gebühr", {4970, 6855, 4712});
    row(32, "paypal-Konto", "paypal-Sammel <DATUM>", {21, 22, 23});
    row(33, "woocommerce-Verrechnungskonto", "woocommerce-Sammel <DATUM>", {31, 32, 33});
    row(34, "Erlöse als Kleinunternehmer", "Erlös <BESTELLNUMMER>", {8192, 4185, 8000});
    row(35, "Versandkosten Kleinunternehmer", "Versandkosten <BESTELLNUMMER>", {});
    row(36, "Amazon-Konto (Marktplatz DE)", "Amazon-Bestellung (DE) <BESTELLNUMMER>", {0, 0, 0});
    row(37, "Amazon-Gebühr", "Amazon-Gebühr <BESTELLNUMMER>", {3123, 5923, 0});
    // clang-format on
}

void tst_payment_import::roleHasItsTitleTextAndAccounts()
{
    QFETCH(int, role);
    QFETCH(QString, title);
    QFETCH(QString, text);
    QFETCH(QList<int>, accounts);
    const KontenTypen typ = KontenTypen(role);

    QCOMPARE(DefaultKontenTitel.at(typ), title);
    QCOMPARE(DefaultBuchungsTexte.at(typ), text);
    const KontenMap konten = defaults();
    QList<int> found;
    if (const auto entry = konten.find(typ); entry != konten.end()) {
        const auto& [skr03, skr04, skr49] = entry->second;
        found = {skr03, skr04, skr49};
    }
    QCOMPARE(found, accounts);
}

void tst_payment_import::tablesHold37Roles()
{
    QCOMPARE(DefaultKontenTitel.size(), 37U);
    QCOMPARE(DefaultBuchungsTexte.size(), 37U);
    for (int role = 1; role <= 37; ++role) {
        QVERIFY(DefaultKontenTitel.count(KontenTypen(role)) == 1);
        QVERIFY(DefaultBuchungsTexte.count(KontenTypen(role)) == 1);
    }
}

void tst_payment_import::orderOfRolesIsFixed()
{
    const QList<int> expected {1,  2,  3,  34, 4,  5,  6,  35, 13, 23, 16, 14, 24,
                               17, 27, 26, 25, 30, 29, 28, 12, 22, 15, 18, 19, 20,
                               36, 21, 32, 33, 7,  31, 8,  9,  37, 10, 11};
    const QList<int> order(KontenTypenOrder.begin(), KontenTypenOrder.end());
    QCOMPARE(order, expected);
}

void tst_payment_import::kindsOfSearchAreFixed()
{
    const std::map<int, QString> expected {
        {1, "Erweiterte Suche alt"},
        {2, "Erweiterte Suche mit Wildcard"},
        {3, "Nicht mehr verwendet"},
        {4, "Regulärer Ausdruck"},
        {6, "Erweiterte Suche mit regulärem Ausdruck"},
    };
    QVERIFY(SuchTypenBelegZuordnungMap == expected);
}

void tst_payment_import::formTextIsFixed_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("buchungs_text_erloes") << "Erlös-<ORDER_NUMBER>-<COMPANY><,><NAME>";
    QTest::newRow("gm_buchungs_text_erloes") << "Erlös-<GM_INVOICE_NUMBER_COMPLETE>";
    QTest::newRow("buchungs_text_gebuehr") << "Gebühr-<ORDER_NUMBER>-<COMPANY><,><NAME>";
    QTest::newRow("gm_buchungs_text_gebuehr") << "Gebühr-<GM_INVOICE_NUMBER_COMPLETE>";
    QTest::newRow("buchungs_text_versand") << "Versand-<ORDER_NUMBER>-<COMPANY><,><NAME>";
    QTest::newRow("gm_buchungs_text_versand") << "Versand-<GM_INVOICE_NUMBER_COMPLETE>";
}

void tst_payment_import::formTextIsFixed()
{
    QCOMPARE(DefaultFormBuchungsTexte.size(), 6U);
    QTEST(DefaultFormBuchungsTexte.at(QTest::currentDataTag()), "text");
}

void tst_payment_import::defaultsHold36Entries()
{
    QCOMPARE(defaults().size(), 36U);
}

void tst_payment_import::defaultsAscendByRole()
{
    int last = 0;
    for (const auto& entry : defaults()) {
        QVERIFY(entry.first > last);
        last = entry.first;
    }
    QCOMPARE(last, 37);
}

void tst_payment_import::smallBusinessAccountsOfUntaxedSales_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("firmaKU");
    QTest::addColumn<bool>("small");
    QTest::newRow("small business") << 0 << true << true;
    QTest::newRow("small business, mode below 0") << -1 << true << true;
    QTest::newRow("small business, mode 1 forces the regular ones") << 1 << true << false;
    QTest::newRow("regular") << 0 << false << false;
    QTest::newRow("regular, mode below 0") << -1 << false << false;
    QTest::newRow("regular, mode 1") << 1 << false << false;
}

void tst_payment_import::smallBusinessAccountsOfUntaxedSales()
{
    QFETCH(int, mode);
    QFETCH(bool, firmaKU);
    QFETCH(bool, small);
    const KontenMap konten = defaults(mode, firmaKU);
    const KontenTriple expected =
        small ? KontenTriple {8192, 4185, 8000} : KontenTriple {8200, 4200, 8000};
    QVERIFY(konten.at(KontenTypen(3)) == expected);
    QVERIFY(konten.at(KontenTypen(6)) == expected);
    QVERIFY(konten.at(KontenTypen(34)) == KontenTriple(8192, 4185, 8000));
}

void tst_payment_import::smallBusinessTouchesNoOtherRole()
{
    KontenMap regular = defaults(0, false);
    KontenMap small = defaults(0, true);
    QVERIFY(regular != small);
    for (const int role : {3, 6}) {
        regular.erase(KontenTypen(role));
        small.erase(KontenTypen(role));
    }
    QVERIFY(regular == small);
}

void tst_payment_import::filledTableStaysAsItIs()
{
    KontenMap konten = defaults();
    const KontenMap before = konten;
    InitDefaultKonten(konten, 0, true, {1, 1, 1}, {2, 2, 2}, {3, 3, 3});
    QVERIFY(konten == before);

    KontenMap one {{KontenTypen(35), {1, 2, 3}}};
    InitDefaultKonten(one, 0, false, ebay, paypal, woocommerce);
    QCOMPARE(one.size(), 1U);
}

void tst_payment_import::freshTableHasNoEntryForRole35()
{
    int konto = 7;
    QVERIFY(getKontoByIndex(defaults(), KontenTypen(35), 0, konto));
    QCOMPARE(konto, -1);
}

void tst_payment_import::looksUpEachChartByIndex_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("konto");
    QTest::newRow("SKR03") << 0 << 8400;
    QTest::newRow("SKR04") << 1 << 4400;
    QTest::newRow("SKR49") << 2 << 8030;
}

void tst_payment_import::looksUpEachChartByIndex()
{
    QFETCH(int, index);
    int konto = 7;
    QVERIFY(getKontoByIndex(defaults(), KontenTypen(1), index, konto));
    QTEST(konto, "konto");
}

void tst_payment_import::refusesAnIndexOutsideTheTriple_data()
{
    addIndexes();
}

void tst_payment_import::refusesAnIndexOutsideTheTriple()
{
    QFETCH(int, index);
    for (const int role : {1, 35}) {
        int konto = 7;
        QVERIFY(!getKontoByIndex(defaults(), KontenTypen(role), index, konto));
        QCOMPARE(konto, 7);
    }
}

void tst_payment_import::looksUpEachChartByItsNumber_data()
{
    QTest::addColumn<int>("skr");
    QTest::addColumn<int>("konto");
    QTest::newRow("SKR03") << 3 << 8400;
    QTest::newRow("SKR04") << 4 << 4400;
    QTest::newRow("SKR49") << 49 << 8030;
}

void tst_payment_import::looksUpEachChartByItsNumber()
{
    QFETCH(int, skr);
    int konto = 7;
    QVERIFY(getKontoBySKR(defaults(), KontenTypen(1), skr, konto));
    QTEST(konto, "konto");
}

void tst_payment_import::refusesAnUnknownChart_data()
{
    addUnknownCharts();
}

void tst_payment_import::refusesAnUnknownChart()
{
    QFETCH(int, skr);
    int konto = 7;
    QVERIFY(!getKontoBySKR(defaults(), KontenTypen(1), skr, konto));
    QCOMPARE(konto, 7);
}

void tst_payment_import::missingRoleReadsAsUnsetInEachChart()
{
    for (const int skr : {3, 4, 49}) {
        int konto = 7;
        QVERIFY(getKontoBySKR({}, KontenTypen(1), skr, konto));
        QCOMPARE(konto, -1);
    }
}

void tst_payment_import::updatesOneChartByIndex_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("SKR03") << 0 << QList<int> {77, 4400, 8030};
    QTest::newRow("SKR04") << 1 << QList<int> {8400, 77, 8030};
    QTest::newRow("SKR49") << 2 << QList<int> {8400, 4400, 77};
}

void tst_payment_import::updatesOneChartByIndex()
{
    QFETCH(int, index);
    QFETCH(QList<int>, expected);
    KontenMap konten = defaults();
    KontenMap wanted = konten;
    upDateKontoByIndex(konten, KontenTypen(1), index, 77);
    wanted[KontenTypen(1)] = {expected[0], expected[1], expected[2]};
    QVERIFY(konten == wanted);
}

void tst_payment_import::updatesOneChartByItsNumber_data()
{
    QTest::addColumn<int>("skr");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("SKR03") << 3 << QList<int> {77, 4400, 8030};
    QTest::newRow("SKR04") << 4 << QList<int> {8400, 77, 8030};
    QTest::newRow("SKR49") << 49 << QList<int> {8400, 4400, 77};
}

void tst_payment_import::updatesOneChartByItsNumber()
{
    QFETCH(int, skr);
    QFETCH(QList<int>, expected);
    KontenMap konten = defaults();
    KontenMap wanted = konten;
    upDateKontoBySKR(konten, KontenTypen(1), skr, 77);
    wanted[KontenTypen(1)] = {expected[0], expected[1], expected[2]};
    QVERIFY(konten == wanted);
}

void tst_payment_import::updateWithAWrongIndexChangesNothing_data()
{
    addIndexes();
}

void tst_payment_import::updateWithAWrongIndexChangesNothing()
{
    QFETCH(int, index);
    KontenMap konten = defaults();
    upDateKontoByIndex(konten, KontenTypen(1), index, 77);
    upDateKontoByIndex(konten, KontenTypen(35), index, 77);
    QVERIFY(konten == defaults());
}

void tst_payment_import::updateOfAnUnknownChartChangesNothing_data()
{
    addUnknownCharts();
}

void tst_payment_import::updateOfAnUnknownChartChangesNothing()
{
    QFETCH(int, skr);
    KontenMap konten = defaults();
    upDateKontoBySKR(konten, KontenTypen(1), skr, 77);
    upDateKontoBySKR(konten, KontenTypen(35), skr, 77);
    QVERIFY(konten == defaults());
}

void tst_payment_import::updateCreatesAMissingRole()
{
    KontenMap konten = defaults();
    upDateKontoByIndex(konten, KontenTypen(35), 1, 4186);
    QCOMPARE(konten.size(), 37U);
    QVERIFY(konten.at(KontenTypen(35)) == KontenTriple(-1, 4186, -1));
}

QTEST_APPLESS_MAIN(tst_payment_import)
#include "tst_payment_import.moc"
