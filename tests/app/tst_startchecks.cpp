#include "app/startchecks.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

Q_DECLARE_METATYPE(StartSettings)

/// What has to be in order before a run.
class tst_startchecks : public QObject
{
    Q_OBJECT

private slots:
    void passesWithEverythingSet();
    void namesTheFirstThatFails_data();
    void namesTheFirstThatFails();
    void asksForNoFolderWithoutGermanized();
    void oneKindOfExportIsEnough_data();
    void oneKindOfExportIsEnough();
    void aFolderWithAPercentSignIsNamedAsItIs();
    void everyChartCounts();

private:
    StartSettings complete() const;

    QTemporaryDir m_folder;
};

StartSettings tst_startchecks::complete() const
{
    StartSettings settings;
    settings.bGermanized = true;
    settings.pdfFolder = m_folder.path();
    settings.outputFilePath = m_folder.filePath(QStringLiteral("output.csv"));
    settings.bWooCommerce = true;
    settings.bPaypal = true;
    settings.csPaypalLabel = QStringLiteral("paypal importieren");
    settings.csWooCommerceLabel = QStringLiteral("WooCommerce importieren");
    settings.csTxIdOnlyLabel = QStringLiteral("Nur paypal-TX-ID exportieren");
    settings.b2c_handling = 1;
    settings.belegdatum = 1;
    settings.skr = 3;
    return settings;
}

void tst_startchecks::passesWithEverythingSet()
{
    QVERIFY(!firstFailedCheck(complete()));
}

void tst_startchecks::namesTheFirstThatFails_data()
{
    QTest::addColumn<StartSettings>("settings");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");

    // From the last check to the first, each on top of all those that come after it.
    StartSettings settings = complete();
    settings.skr = QVariant();
    QTest::newRow("no chart") << settings << "SKR:"
                              << "Es muss zuerst unter 'SKR' ein Kontenrahmen ausgewählt werden.";
    settings.belegdatum = 0;
    QTest::newRow("no document date")
        << settings << "Belegdatum-Einstellung:"
        << "Es muss zuerst unter 'Belegdatum' eine Einstellung ausgewählt werden.";
    settings.belegdatum = QVariant();
    QTest::newRow("nothing selected as document date")
        << settings << "Belegdatum-Einstellung:"
        << "Es muss zuerst unter 'Belegdatum' eine Einstellung ausgewählt werden.";
    settings.b2c_handling = 0;
    QTest::newRow("no way with consumers")
        << settings << "B2C-Einstellung:"
        << "Es muss zuerst unter 'B2C' eine Einstellung ausgewählt werden.";
    settings.b2c_handling = QVariant();
    QTest::newRow("nothing selected for consumers")
        << settings << "B2C-Einstellung:"
        << "Es muss zuerst unter 'B2C' eine Einstellung ausgewählt werden.";
    settings.bWooCommerce = false;
    settings.bPaypal = false;
    QTest::newRow("nothing to export")
        << settings << "Keine Aktion ausgewählt:"
        << "Es muss eine der Einstellungen:\r\npaypal importieren\r\nWooCommerce importieren\r\n"
           "Nur paypal-TX-ID exportieren\r\naktiviert werden.";
    settings.bTxIdOnly = true;
    settings.outputFilePath = m_folder.filePath(QStringLiteral("fehlt/output.csv"));
    QTest::newRow("no folder for the transaction ids")
        << settings << "'Nur paypal-TX-ID exportieren':"
        << QStringLiteral("Der Ausgabeordner\r\n%1\r\nwurde nicht gefunden.")
               .arg(m_folder.filePath(QStringLiteral("fehlt")));
    settings.pdfFolder = m_folder.filePath(QStringLiteral("fort"));
    QTest::newRow("no folder for the invoices")
        << settings << "PDF-Ordner:"
        << QStringLiteral("Der Ordner\r\n%1\r\nwurde nicht gefunden.").arg(settings.pdfFolder);
    settings.pdfFolder.clear();
    QTest::newRow("an empty folder is none") << settings << "PDF-Ordner:"
                                             << "Der Ordner\r\n\r\nwurde nicht gefunden.";
}

void tst_startchecks::namesTheFirstThatFails()
{
    QFETCH(StartSettings, settings);
    const auto failed = firstFailedCheck(settings);
    QVERIFY(failed);
    QTEST(failed->title, "title");
    QTEST(failed->text, "text");
}

void tst_startchecks::asksForNoFolderWithoutGermanized()
{
    StartSettings settings = complete();
    settings.bGermanized = false;
    settings.pdfFolder.clear();
    QVERIFY(!firstFailedCheck(settings));
}

void tst_startchecks::oneKindOfExportIsEnough_data()
{
    QTest::addColumn<bool>("wooCommerce");
    QTest::addColumn<bool>("paypal");
    QTest::addColumn<bool>("txIdOnly");
    QTest::newRow("WooCommerce") << true << false << false;
    QTest::newRow("PayPal") << false << true << false;
    QTest::newRow("transaction ids") << false << false << true;
}

void tst_startchecks::oneKindOfExportIsEnough()
{
    StartSettings settings = complete();
    QFETCH(bool, wooCommerce);
    QFETCH(bool, paypal);
    QFETCH(bool, txIdOnly);
    settings.bWooCommerce = wooCommerce;
    settings.bPaypal = paypal;
    settings.bTxIdOnly = txIdOnly;
    QVERIFY(!firstFailedCheck(settings));
}

void tst_startchecks::aFolderWithAPercentSignIsNamedAsItIs()
{
    StartSettings settings = complete();
    settings.pdfFolder = QStringLiteral("/nirgends/%1 und %2");
    const auto failed = firstFailedCheck(settings);
    QVERIFY(failed);
    QCOMPARE(failed->text,
             QStringLiteral("Der Ordner\r\n/nirgends/%1 und %2\r\nwurde nicht gefunden."));
}

void tst_startchecks::everyChartCounts()
{
    StartSettings settings = complete();
    for (const int skr : {3, 4, 49}) {
        settings.skr = skr;
        QVERIFY(!firstFailedCheck(settings));
    }
}

QTEST_GUILESS_MAIN(tst_startchecks)

#include "tst_startchecks.moc"
