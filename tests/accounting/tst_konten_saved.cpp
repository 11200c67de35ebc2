#include "accounting/konten_saved.h"

#include <QTest>

using namespace payment_import;

class tst_konten_saved : public QObject
{
    Q_OBJECT

private slots:
    void savesFourTextsAnEntryAscendingByRole();
    void savesAnEmptyTableAsAnEmptyList();
    void restoresWhatItSaved();
    void takesListsOfTextsAndOfValues_data();
    void takesListsOfTextsAndOfValues();
    void savedEntryCreatesRole35();
    void savedAccountBeatsTheHostsClearingAccount();
    void unnamedRolesKeepTheirAccounts();
    void ignoresAnElementThatIsNoEntry_data();
    void ignoresAnElementThatIsNoEntry();
    void goesOnAfterAnElementThatIsNoEntry();
    void takesTheFirstAndTheLastRole();
    void unreadableAccountCountsAsZero_data();
    void unreadableAccountCountsAsZero();
    void missingListChangesNothing();
    void laterElementOfARoleCounts();
};

namespace {

KontenMap defaults()
{
    KontenMap konten;
    InitDefaultKonten(konten, 0, false, {1362, 1462, 707}, {1220, 1820, 955}, {1361, 1461, 706});
    return konten;
}

} // namespace

void tst_konten_saved::savesFourTextsAnEntryAscendingByRole()
{
    const KontenMap konten {{KontenTypen(32), {1220, 0, 955}}, {KontenTypen(4), {8400, -1, 8030}}};
    const QVariantList saved = kontenToSavedList(konten);
    QCOMPARE(saved.size(), 2);
    for (const QVariant& element : saved)
        QCOMPARE(element.typeId(), int(QMetaType::QStringList));
    QCOMPARE(saved[0].toStringList(), QStringList({"4", "8400", "-1", "8030"}));
    QCOMPARE(saved[1].toStringList(), QStringList({"32", "1220", "0", "955"}));
}

void tst_konten_saved::savesAnEmptyTableAsAnEmptyList()
{
    QCOMPARE(kontenToSavedList({}), QVariantList());
}

void tst_konten_saved::restoresWhatItSaved()
{
    KontenMap konten = defaults();
    upDateKontoByIndex(konten, KontenTypen(1), 0, 1234);
    upDateKontoByIndex(konten, KontenTypen(35), 2, 8001);
    KontenMap restored = defaults();
    restoreKonten(kontenToSavedList(konten), restored);
    QVERIFY(restored == konten);
}

void tst_konten_saved::takesListsOfTextsAndOfValues_data()
{
    QTest::addColumn<QVariant>("element");
    QTest::newRow("texts") << QVariant(QStringList {"7", "1", "2", "3"});
    QTest::newRow("texts as variants") << QVariant(QVariantList {"7", "1", "2", "3"});
    QTest::newRow("numbers") << QVariant(QVariantList {7, 1, 2, 3});
}

void tst_konten_saved::takesListsOfTextsAndOfValues()
{
    QFETCH(QVariant, element);
    KontenMap konten = defaults();
    restoreKonten(QVariantList {element}, konten);
    QVERIFY(konten.at(KontenTypen(7)) == KontenTriple(1, 2, 3));
}

void tst_konten_saved::savedEntryCreatesRole35()
{
    KontenMap konten = defaults();
    restoreKonten(QVariantList {QStringList {"35", "8193", "4186", "8001"}}, konten);
    QVERIFY(konten.at(KontenTypen(35)) == KontenTriple(8193, 4186, 8001));
}

void tst_konten_saved::savedAccountBeatsTheHostsClearingAccount()
{
    KontenMap konten;
    InitDefaultKonten(konten, 0, false, {1, 1, 1}, {99, 98, 97}, {1, 1, 1});
    restoreKonten(QVariantList {QStringList {"32", "1221", "1821", "956"}}, konten);
    QVERIFY(konten.at(KontenTypen(32)) == KontenTriple(1221, 1821, 956));
}

void tst_konten_saved::unnamedRolesKeepTheirAccounts()
{
    KontenMap konten = defaults();
    restoreKonten(QVariantList {QStringList {"7", "1", "2", "3"}}, konten);
    KontenMap expected = defaults();
    expected[KontenTypen(7)] = {1, 2, 3};
    QVERIFY(konten == expected);
}

void tst_konten_saved::ignoresAnElementThatIsNoEntry_data()
{
    QTest::addColumn<QVariant>("element");
    QTest::newRow("role 38") << QVariant(QStringList {"38", "1", "2", "3"});
    QTest::newRow("role 0") << QVariant(QStringList {"0", "1", "2", "3"});
    QTest::newRow("role -1") << QVariant(QStringList {"-1", "1", "2", "3"});
    QTest::newRow("role beyond int") << QVariant(QStringList {"4294967303", "1", "2", "3"});
    QTest::newRow("role no number") << QVariant(QStringList {"seven", "1", "2", "3"});
    QTest::newRow("role with a fraction") << QVariant(QStringList {"7.0", "1", "2", "3"});
    QTest::newRow("role empty") << QVariant(QStringList {"", "1", "2", "3"});
    QTest::newRow("three texts") << QVariant(QStringList {"7", "1", "2"});
    QTest::newRow("five texts") << QVariant(QStringList {"7", "1", "2", "3", "4"});
    QTest::newRow("empty list") << QVariant(QStringList {});
    QTest::newRow("one text") << QVariant("7,1,2,3");
    QTest::newRow("number") << QVariant(7);
    QTest::newRow("invalid") << QVariant();
}

void tst_konten_saved::ignoresAnElementThatIsNoEntry()
{
    QFETCH(QVariant, element);
    KontenMap konten = defaults();
    restoreKonten(QVariantList {element}, konten);
    QVERIFY(konten == defaults());
}

void tst_konten_saved::goesOnAfterAnElementThatIsNoEntry()
{
    KontenMap konten = defaults();
    restoreKonten(
        QVariantList {QStringList {"38", "1", "2", "3"}, QStringList {"7", "4", "5", "6"}}, konten);
    QVERIFY(konten.at(KontenTypen(7)) == KontenTriple(4, 5, 6));
}

void tst_konten_saved::takesTheFirstAndTheLastRole()
{
    KontenMap konten = defaults();
    restoreKonten(
        QVariantList {QStringList {"1", "1", "2", "3"}, QStringList {"37", "4", "5", "6"}}, konten);
    QVERIFY(konten.at(KontenTypen(1)) == KontenTriple(1, 2, 3));
    QVERIFY(konten.at(KontenTypen(37)) == KontenTriple(4, 5, 6));
}

void tst_konten_saved::unreadableAccountCountsAsZero_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("no number") << "abc";
    QTest::newRow("empty") << "";
    QTest::newRow("beyond int") << "2147483648";
    QTest::newRow("below int") << "-2147483649";
    QTest::newRow("fraction") << "8400.5";
}

void tst_konten_saved::unreadableAccountCountsAsZero()
{
    QFETCH(QString, text);
    KontenMap konten = defaults();
    restoreKonten(QVariantList {QStringList {"1", "5", text, "6"}}, konten);
    QVERIFY(konten.at(KontenTypen(1)) == KontenTriple(5, 0, 6));
}

void tst_konten_saved::missingListChangesNothing()
{
    KontenMap konten = defaults();
    restoreKonten(QVariant(), konten);
    restoreKonten(QVariant("text"), konten);
    restoreKonten(QVariantList(), konten);
    QVERIFY(konten == defaults());
}

void tst_konten_saved::laterElementOfARoleCounts()
{
    KontenMap konten = defaults();
    restoreKonten(QVariantList {QStringList {"7", "1", "2", "3"}, QStringList {"7", "4", "5", "6"}},
                  konten);
    QVERIFY(konten.at(KontenTypen(7)) == KontenTriple(4, 5, 6));
}

QTEST_APPLESS_MAIN(tst_konten_saved)
#include "tst_konten_saved.moc"
