#include "accounting/order_taxes.h"
#include "accounting/shopdates.h"
#include "app/globals.h"

#include <QtTest>

/// What the process-wide values are before anything has happened.
class tst_globals : public QObject
{
    Q_OBJECT

private slots:
    void accountsOfAHostThatNamesNone();
    void firmAndChart();
    void timeZoneAndUtc();
    void collectionsAreEmpty();
    void namesAndMarks();
};

void tst_globals::accountsOfAHostThatNamesNone()
{
    QVERIFY(t_ebay_vr_konto == std::tuple(1362, 1462, 707));
    QVERIFY(t_paypal_konto == std::tuple(1220, 1820, 955));
    QVERIFY(t_woocommerce_konto == std::tuple(1361, 1461, 706));
}

void tst_globals::firmAndChart()
{
    QCOMPARE(nSKRDefault, 3);
    QVERIFY(!bFirmaKU);
}

void tst_globals::timeZoneAndUtc()
{
    QVERIFY(!tzLocal.isValid());
    QVERIFY(bUseUTC);
}

void tst_globals::collectionsAreEmpty()
{
    QVERIFY(globalTaxRates.empty());
    QVERIFY(importHash.empty());
    QVERIFY(payment_title_set.isEmpty());
    QVERIFY(csFileHashName.isEmpty());
}

void tst_globals::namesAndMarks()
{
    QCOMPARE(keyNameAPI, QStringLiteral("api_key_chain"));
    QCOMPARE(keyNameSECRET, QStringLiteral("api_secret_chain"));
    QCOMPARE(extParmsSep, QStringLiteral("|[]"));
    QCOMPARE(extParmsLinesSep, QStringLiteral("~"));
}

QTEST_GUILESS_MAIN(tst_globals)

#include "tst_globals.moc"
