#include "app/globals.h"
#include "app/mainform.h"

#include <QtTest>

using namespace mod_form_qt;

namespace {

/// One row as it has to be.
struct Row
{
    int eleType;
    std::bitset<256> attr;
    const char* title = "";
    const char* key = "";
};

const std::bitset<256> none;

// clang-format off
const QList<Row> expectedRows = {
    {E_LAYOUT_GRID, A_GROUP | A_CAN_HIDE_ITEMS | A_FLIP_LABEL_BOLD, "Server", "server_group_show"},
    {E_LINEEDIT, A_MANDATORY, "Webseite:", "mainurl"},
    {E_GRID_NEXT_ROW, none},
    {E_LINEEDIT, A_PWD | A_MANDATORY, "API-Key:", "api_key_chain"},
    {E_LINEEDIT, A_PWD | A_MANDATORY, "API-Secret:", "api_secret_chain"},
    {E_GRID_NEXT_ROW, none},
    {E_CHECKBOX, none, "Datumsfilter von:", "date_filter_use"},
    {E_DATE, none, "", "date_filter_after"},
    {E_DATE, none, "Bis:", "date_filter_before"},
    {E_GRID_NEXT_ROW, none},
    {E_CHECKBOX, none, "ID-Cache aktivieren:", "id_cache_use"},
    {E_BUTTON, none, "Löschen"},
    {E_LAYOUT_END, none},
    {E_LAYOUT_GRID, A_GROUP, "Germanized", "germanized_group_show"},
    {E_CHECKBOX, none, "Verwenden", "germanized_use"},
    {E_BROWSE_FOLDER, none, "PDF-Ordner:", "germanized_pdf_folder"},
    {E_CHECKBOX, none, "PDF überschreiben", "germanized_overwrite_pdf"},
    {E_LAYOUT_END, none},
    {E_LAYOUT_GRID, A_GROUP, "Buchungstexte", "buchungs_text_group_show"},
    {E_LINEEDIT, none, "Erlös:", "buchungs_text_erloes"},
    {E_LINEEDIT, none, "Erlös Germanized:", "gm_buchungs_text_erloes"},
    {E_GRID_NEXT_ROW, none},
    {E_LINEEDIT, none, "Gebühr:", "buchungs_text_gebuehr"},
    {E_LINEEDIT, none, "Gebühr Germanized:", "gm_buchungs_text_gebuehr"},
    {E_GRID_NEXT_ROW, none},
    {E_LINEEDIT, none, "Versandkosten:", "buchungs_text_versand"},
    {E_LINEEDIT, none, "Versandkosten Germanized:", "gm_buchungs_text_versand"},
    {E_LAYOUT_END, none},
    {E_LAYOUT_GRID, A_GROUP, "Sonstiges", "sonstiges_group_show"},
    {E_CHECKBOX, none, "paypal importieren", "paypal_use"},
    {E_CHECKBOX, none, "WooCommerce importieren", "woocommerce_use"},
    {E_CHECKBOX, none, "Kunden anlegen", "customers_create"},
    {E_BUTTON, none, "'Zahlmethode (kurz)' bearbeiten"},
    {E_GRID_NEXT_ROW, none},
    {E_COMBOBOX, A_MANDATORY, "Belegdatum:", "belegdatum"},
    {E_COMBOBOX, A_MANDATORY, "B2C:", "b2c_handling"},
    {E_GRID_NEXT_ROW, none},
    {E_COMBOBOX, none, "Kostenstelle 1:", "kostenstelle1"},
    {E_COMBOBOX, none, "Kostenstelle 2:", "kostenstelle2"},
    {E_GRID_NEXT_ROW, none},
    {E_COMBOBOX, A_ADJUST_WIDTH_TO_CONTENTS, "Kontenrahmen:", "skr"},
    {E_LABEL, none, "Typ:"},
    {E_LAYOUT_H, none},
    {E_COMBOBOX, A_NO_LABEL, "", "buchungs_typ"},
    {E_NUMBER, A_AUTO_CORRECT_MINMAX | A_IMMEDIATE_DATA_UPDATE, "", "buchungs_konto"},
    {E_LAYOUT_END, none},
    {E_LAYOUT_END, none},
    {E_HLINE, none},
    {E_LAYOUT_H, none},
    {E_BUTTON, none, "Daten vom Server abrufen", "start_button"},
    {E_BUTTON, none, "Anhalten"},
    {E_OPENURL_BUTTON, none, "Hilfe"},
    {E_OK_BUTTON, none, "Import starten", "ok_button"},
    {E_CANCEL_BUTTON, none, "Abbrechen und Beenden"},
    {E_LAYOUT_END, none},
    {E_HLINE, none},
};

// clang-format on

/// Items as "text=value", the selected ones with a star before them.
QStringList items(const INFO& row)
{
    QStringList texts;
    const auto list = row.data.value<T_LISTDATA>();
    for (const auto& [text, selected, value, roles] : list) {
        const QString shown = value.isValid() ? value.toString() : QStringLiteral("(invalid)");
        texts << (selected ? QStringLiteral("*") : QString()) + text + QLatin1Char('=') + shown;
    }
    return texts;
}

} // namespace

/// The rows of the main form, against the table they come from.
class tst_mainform : public QObject
{
    Q_OBJECT

private slots:
    void hasEveryRowInItsPlace_data();
    void hasEveryRowInItsPlace();
    void hasAsManyRows();
    void bindsItsVariables_data();
    void bindsItsVariables();
    void startsWithItsDefaults();
    void offersItsLists_data();
    void offersItsLists();
    void preselectsTheHostsChart_data();
    void preselectsTheHostsChart();
    void offersARoleForEachEntryOfTheTable();
    void limitsTheAccountNumber();
    void showsTheHostsFolderReadOnly();
    void callsWhatTheRowsAreFor_data();
    void callsWhatTheRowsAreFor();
    void opensTheHelp();
    void offersTheBuiltInReplacements();
    void cutsAnEmptySelection();

private:
    QList<INFO> rows(int nSKR = 3, bool hostFolder = false);
    INFO row(const QString& key);

    MainFormValues m_values;
    payment_import::KontenMap m_konten;
};

QList<INFO> tst_mainform::rows(int nSKR, bool hostFolder)
{
    if (m_konten.empty())
        payment_import::InitDefaultKonten(m_konten, 0, false, {1, 2, 3}, {4, 5, 6}, {7, 8, 9});
    const auto callback = [](const auto&...) { return 1; };
    return mainFormRows({m_values, m_konten, nSKR, hostFolder, QStringLiteral("paypal importieren"),
                         QStringLiteral("WooCommerce importieren")},
                        {callback, callback, callback, callback, callback, callback});
}

INFO tst_mainform::row(const QString& key)
{
    for (const INFO& candidate : rows()) {
        if (candidate.key == key)
            return candidate;
    }
    return {};
}

void tst_mainform::hasEveryRowInItsPlace_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < expectedRows.size(); ++i)
        QTest::addRow("%d %s", i + 1, expectedRows.at(i).title) << i;
}

void tst_mainform::hasEveryRowInItsPlace()
{
    QFETCH(int, index);
    const INFO actual = rows().value(index);
    const Row& expected = expectedRows.at(index);
    QCOMPARE(actual.eleType, expected.eleType);
    QVERIFY(actual.attr == expected.attr);
    QCOMPARE(actual.param.toString(), QString::fromUtf8(expected.title));
    QCOMPARE(actual.key, QString::fromUtf8(expected.key));
}

void tst_mainform::hasAsManyRows()
{
    QCOMPARE(rows().size(), 56);
    QCOMPARE(rows().size(), expectedRows.size());
}

void tst_mainform::bindsItsVariables_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant*>("variable");
    const std::pair<const char*, QVariant*> bound[] = {
        {"mainurl", &m_values.mainurl},
        {"api_key_chain", &m_values.apiKey},
        {"api_secret_chain", &m_values.apiSecret},
        {"date_filter_use", &m_values.date_filter_use},
        {"date_filter_after", &m_values.date_filter_after},
        {"date_filter_before", &m_values.date_filter_before},
        {"id_cache_use", &m_values.id_cache_use},
        {"germanized_use", &m_values.germanized_use},
        {"germanized_pdf_folder", &m_values.germanized_pdf_folder},
        {"germanized_overwrite_pdf", &m_values.germanized_overwrite_pdf},
        {"paypal_use", &m_values.paypal_use},
        {"woocommerce_use", &m_values.woocommerce_use},
    };
    for (const auto& [key, variable] : bound)
        QTest::newRow(key) << QString::fromLatin1(key) << variable;
}

void tst_mainform::bindsItsVariables()
{
    QFETCH(QString, key);
    QFETCH(QVariant*, variable);
    QCOMPARE(row(key).data.value<T_VARIANT_PTR>(), variable);
}

void tst_mainform::startsWithItsDefaults()
{
    const MainFormValues fresh;
    QCOMPARE(fresh.germanized_use, QVariant(false));
    QCOMPARE(fresh.germanized_overwrite_pdf, QVariant(false));
    QCOMPARE(fresh.germanized_pdf_folder, QVariant(QString()));
    QCOMPARE(fresh.woocommerce_use, QVariant(true));
    QCOMPARE(fresh.paypal_use, QVariant(true));
    QCOMPARE(fresh.date_filter_use, QVariant(false));
    QCOMPARE(fresh.date_filter_before, QVariant(QDate(2037, 1, 1)));
    QCOMPARE(fresh.date_filter_after, QVariant(QDate(1970, 1, 1)));
    QCOMPARE(fresh.id_cache_use, QVariant(true));
    for (const char* group : {"server_group_show", "germanized_group_show",
                              "buchungs_text_group_show", "sonstiges_group_show"})
        QCOMPARE(row(QString::fromLatin1(group)).data, QVariant(1));
    QCOMPARE(row(QStringLiteral("customers_create")).data, QVariant(0));
    QCOMPARE(row(QStringLiteral("buchungs_konto")).data, QVariant(0));
    QCOMPARE(row(QStringLiteral("buchungs_text_erloes")).data.toString(),
             QStringLiteral("Erlös-<ORDER_NUMBER>-<COMPANY><,><NAME>"));
    QCOMPARE(row(QStringLiteral("gm_buchungs_text_versand")).data.toString(),
             QStringLiteral("Versand-<GM_INVOICE_NUMBER_COMPLETE>"));
}

void tst_mainform::offersItsLists_data()
{
    QTest::addColumn<QStringList>("expected");
    const QStringList kostenstelle = {"*Nicht zuordnen=", "Produktname=PRODUCT_NAME",
                                      "Zahlmethode=PAYMENT_METHOD",
                                      "Zahlmethode (kurz)=PAYMENT_METHOD_S"};
    QTest::newRow("kostenstelle1") << kostenstelle;
    QTest::newRow("kostenstelle2") << kostenstelle;
    QTest::newRow("b2c_handling") << QStringList {
        "*=0", "OSS=1", QString::fromUtf8("Lieferschwelle nicht überschritten=2"),
        QString::fromUtf8("Lieferschwelle überschritten=3")};
    QTest::newRow("belegdatum") << QStringList {"*Automatisch=1", "Erstellt=2", "Abgeschlossen=3",
                                                "Bezahlt=4"};
}

void tst_mainform::offersItsLists()
{
    QTEST(items(row(QString::fromLatin1(QTest::currentDataTag()))), "expected");
}

void tst_mainform::preselectsTheHostsChart_data()
{
    QTest::addColumn<int>("nSKR");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("none") << 0 << QStringList {"*=(invalid)", "SKR03=3", "SKR04=4", "SKR049=49"};
    QTest::newRow("below") << -1 << QStringList {"*=(invalid)", "SKR03=3", "SKR04=4", "SKR049=49"};
    QTest::newRow("3") << 3 << QStringList {"=(invalid)", "*SKR03=3", "SKR04=4", "SKR049=49"};
    QTest::newRow("4") << 4 << QStringList {"=(invalid)", "SKR03=3", "*SKR04=4", "SKR049=49"};
    QTest::newRow("49") << 49 << QStringList {"=(invalid)", "SKR03=3", "SKR04=4", "*SKR049=49"};
}

void tst_mainform::preselectsTheHostsChart()
{
    QFETCH(int, nSKR);
    for (const INFO& candidate : rows(nSKR)) {
        if (candidate.key == QLatin1String("skr"))
            QTEST(items(candidate), "expected");
    }
}

void tst_mainform::offersARoleForEachEntryOfTheTable()
{
    QStringList roles = items(row(QStringLiteral("buchungs_typ")));
    QCOMPARE(roles.size(), 36);
    QCOMPARE(roles.first(), QString::fromUtf8("*Erlöse Inland normale Steuer=1"));
    QVERIFY(roles.filter(QRegularExpression(QStringLiteral("=35$"))).isEmpty());
    QVERIFY(roles.last().endsWith(QLatin1String("=37")));

    // Only what was saved makes it.
    payment_import::upDateKontoByIndex(m_konten, payment_import::VersandKleinunternehmer, 0, 8193);
    roles = items(row(QStringLiteral("buchungs_typ")));
    m_konten.clear();
    QCOMPARE(roles.size(), 37);
    QVERIFY(roles.at(34).endsWith(QLatin1String("=35")));
}

void tst_mainform::limitsTheAccountNumber()
{
    const INFO::Option option(row(QStringLiteral("buchungs_konto")).param);
    QCOMPARE(option.title(), QStringLiteral("Konto:"));
    QCOMPARE(option.map().value(QStringLiteral("maxwidth50006")), QVariant(100));
    QCOMPARE(option.map().value(QStringLiteral("typealign50006")), QVariant(33));
    QCOMPARE(option.metaType(), QVariant(int(QMetaType::UInt)));
    QCOMPARE(option.map().value(INFO::Option::groupSepKey), QVariant(false));
    QCOMPARE(option.map().value(INFO::Option::precisionKey), QVariant(0));
    QCOMPARE(option.isSignedDataType(), QVariant(false));
    QVERIFY(option.useSpinBox());
    QCOMPARE(option.min(), QVariant(QStringLiteral("1")));
    QCOMPARE(option.max(), QVariant(QStringLiteral("9999")));
}

void tst_mainform::showsTheHostsFolderReadOnly()
{
    const QList<INFO> list = rows(3, true);
    QCOMPARE(list.size(), 56);
    QCOMPARE(list.at(15).eleType, E_SHOW_FOLDER);
    QVERIFY(list.at(15).attr == A_READONLY);
    QCOMPARE(list.at(15).data.value<T_VARIANT_PTR>(), &m_values.germanized_pdf_folder);
}

void tst_mainform::callsWhatTheRowsAreFor_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("callback");
    QTest::newRow("delete the cache") << 11 << 5;
    QTest::newRow("edit the replacements") << 32 << 4;
    QTest::newRow("chart") << 40 << 2;
    QTest::newRow("role") << 43 << 2;
    QTest::newRow("account") << 44 << 3;
    QTest::newRow("start") << 49 << 0;
    QTest::newRow("stop") << 50 << 1;
}

void tst_mainform::callsWhatTheRowsAreFor()
{
    QFETCH(int, index);
    QFETCH(int, callback);
    QList<int> called;
    const auto note = [&called](int number) {
        return LegacyCallback([&called, number](const auto&...) {
            called.append(number);
            return 1;
        });
    };
    const QList<INFO> list = mainFormRows({m_values, m_konten, 3, false, QString(), QString()},
                                          {note(0), note(1), note(2), note(3), note(4), note(5)});
    const INFO& asked = list.at(index);
    ExecCallBack(asked.callback, nullptr, nullptr, QVariant(), kAfterAction, asked, nullptr,
                 nullptr, nullptr);
    QCOMPARE(called, QList<int> {callback});
    int set = 0;
    for (const INFO& candidate : list)
        set += IsCallbackSet(candidate.callback) ? 1 : 0;
    QCOMPARE(set, 7);
}

void tst_mainform::opensTheHelp()
{
    QCOMPARE(rows().at(51).data.toString(), link_main_help);
    QVERIFY(rows().at(51).key.isEmpty());
    QVERIFY(link_main_help.endsWith(QLatin1String("/HTML/woocommerce.htm")));
    const QList<INFO> dialog = paymentMethodRows(QStringLiteral("a;b"));
    QCOMPARE(dialog.size(), 6);
    QCOMPARE(dialog.at(0).param.toString(), QStringLiteral("Ersetzungen:"));
    QCOMPARE(dialog.at(0).data.toString(), QStringLiteral("a;b"));
    QCOMPARE(dialog.at(0).key, QStringLiteral("value"));
    QCOMPARE(dialog.at(4).data.toString(), link_def_payment_method_s);
}

void tst_mainform::offersTheBuiltInReplacements()
{
    const QStringList lines = defaultPaymentMethods.split(QStringLiteral("\r\n"));
    QCOMPARE(lines.size(), 18);
    QCOMPARE(lines.mid(0, 9),
             QStringList({"beliebte zahlungsmethoden;andere",
                          "google pay (woocommerce payments);google pay",
                          "apple pay (woocommerce payments);apple pay", "sepa direct debit;sepa",
                          "giropay;giropay", "paypal;paypal", "sofort;sofort",
                          QString::fromUtf8("direkte banküberweisung;vorausüberweisung"),
                          "payment request (woocommerce payments);rechnung"}));
    QStringList cards;
    for (const char* card :
         {"amex prepaid", "amex debit", "amex kredit", "visa prepaid", "visa debit", "visa kredit",
          "mastercard prepaid", "mastercard kredit", "mastercard debit"}) {
        const QString name = QString::fromLatin1(card);
        cards << name + QStringLiteral("-karte;") + name.section(QLatin1Char(' '), 0, 0);
    }
    QCOMPARE(lines.mid(9), cards);
}

void tst_mainform::cutsAnEmptySelection()
{
    const QMap<QString, QVariant> options {
        {QStringLiteral("none"), QVariantList {}},
        {QStringLiteral("one"), QVariantList {4}},
        {QStringLiteral("invalid"), QVariantList {QVariant()}},
    };
    QVERIFY(!selectedValue(options, QStringLiteral("none")).isValid());
    QVERIFY(!selectedValue(options, QStringLiteral("missing")).isValid());
    QVERIFY(!selectedValue(options, QStringLiteral("invalid")).isValid());
    QCOMPARE(selectedValue(options, QStringLiteral("one")), QVariant(4));
}

QTEST_GUILESS_MAIN(tst_mainform)

#include "tst_mainform.moc"
