#include "app/mainform.h"

#include "accounting/payment_import_tables.h"
#include "app/globals.h"

#include <QCoreApplication>

using namespace mod_form_qt;

namespace {

struct MainForm
{
    Q_DECLARE_TR_FUNCTIONS(MainWindow)
};

QString tr(const char* text)
{
    return MainForm::tr(text);
}

ListItem item(const QString& text, bool selected, const QVariant& value)
{
    return {text, selected, value, {}};
}

DataVariant skrList(int nSKR)
{
    return T_LISTDATA {
        item(QString(), nSKR <= 0, QVariant()),
        item(QStringLiteral("SKR03"), nSKR == 3, 3),
        item(QStringLiteral("SKR04"), nSKR == 4, 4),
        item(QStringLiteral("SKR049"), nSKR == 49, 49),
    };
}

DataVariant kontenList(const payment_import::KontenMap& konten)
{
    T_LISTDATA list;
    list.reserve(konten.size());
    for (const auto& [role, triple] : konten) {
        const auto title = payment_import::DefaultKontenTitel.find(role);
        list.push_back(item(title != payment_import::DefaultKontenTitel.end()
                                ? title->second
                                : QString::number(static_cast<int>(role)),
                            list.empty(), static_cast<int>(role)));
    }
    return list;
}

DataVariant kostenstelleList()
{
    return T_LISTDATA {
        item(tr("Nicht zuordnen"), true, QString()),
        item(tr("Produktname"), false, QStringLiteral("PRODUCT_NAME")),
        item(tr("Zahlmethode"), false, QStringLiteral("PAYMENT_METHOD")),
        item(tr("Zahlmethode (kurz)"), false, QStringLiteral("PAYMENT_METHOD_S")),
    };
}

DataVariant b2cList()
{
    return T_LISTDATA {
        item(QString(), true, 0),
        item(QStringLiteral("OSS"), false, 1),
        item(QStringLiteral("Lieferschwelle nicht überschritten"), false, 2),
        item(QStringLiteral("Lieferschwelle überschritten"), false, 3),
    };
}

DataVariant belegdatumList()
{
    return T_LISTDATA {
        item(QStringLiteral("Automatisch"), true, 1),
        item(QStringLiteral("Erstellt"), false, 2),
        item(QStringLiteral("Abgeschlossen"), false, 3),
        item(QStringLiteral("Bezahlt"), false, 4),
    };
}

QVariantMap kontoOptions()
{
    using Option = INFO::Option;
    return {
        {Option::titleKey, QStringLiteral("Konto:")},
        {Option::buildKey(Option::maxWidthKey, E_NUMBER), 100},
        {Option::buildKey(Option::typeAlignKey, E_NUMBER), 33},
        {Option::metaTypeKey, int(QMetaType::UInt)},
        {Option::groupSepKey, false},
        {Option::precisionKey, 0},
        {Option::signedDataTypeKey, false},
        {Option::spinBoxKey, true},
        {Option::minKey, QStringLiteral("1")},
        {Option::maxKey, QStringLiteral("9999")},
    };
}

// Short names for the table: one line a row.

INFO group(const QString& title, const char* key, const std::bitset<256>& attr = A_GROUP)
{
    return INFO(E_LAYOUT_GRID, attr, title, 1, key);
}

INFO end()
{
    return INFO(E_LAYOUT_END);
}

INFO nextRow()
{
    return INFO(E_GRID_NEXT_ROW);
}

INFO bound(int eleType, const QString& title, const QString& key, QVariant& value,
           const std::bitset<256>& attr = A_NONE)
{
    return INFO(eleType, attr, title.isEmpty() ? QVariant() : QVariant(title), &value, key);
}

INFO combo(const QString& title, const char* key, const DataVariant& list,
           const std::bitset<256>& attr = A_NONE, const Callback& callback = {})
{
    return INFO(E_COMBOBOX, attr, title.isEmpty() ? QVariant() : QVariant(title), list, key,
                callback);
}

INFO button(const QString& title, const Callback& callback, const MAP_KEY_TYPE& key = {})
{
    return INFO(E_BUTTON, A_NONE, title, QVariant(), key, callback);
}

INFO buchungsText(const QString& title, const QString& key)
{
    return INFO(E_LINEEDIT, A_NONE, title,
                QVariant(payment_import::DefaultFormBuchungsTexte.at(key)), key);
}

INFO pdfFolder(bool bHostFolder, QVariant& folder)
{
    const QString title = tr("PDF-Ordner:");
    const QString key = QStringLiteral("germanized_pdf_folder");
    return bHostFolder ? bound(E_SHOW_FOLDER, title, key, folder, A_READONLY)
                       : bound(E_BROWSE_FOLDER, title, key, folder);
}

} // namespace

const QString defaultPaymentMethods =
    QStringList {
        QStringLiteral("beliebte zahlungsmethoden;andere"),
        QStringLiteral("google pay (woocommerce payments);google pay"),
        QStringLiteral("apple pay (woocommerce payments);apple pay"),
        QStringLiteral("sepa direct debit;sepa"),
        QStringLiteral("giropay;giropay"),
        QStringLiteral("paypal;paypal"),
        QStringLiteral("sofort;sofort"),
        QStringLiteral("direkte banküberweisung;vorausüberweisung"),
        QStringLiteral("payment request (woocommerce payments);rechnung"),
        QStringLiteral("amex prepaid-karte;amex"),
        QStringLiteral("amex debit-karte;amex"),
        QStringLiteral("amex kredit-karte;amex"),
        QStringLiteral("visa prepaid-karte;visa"),
        QStringLiteral("visa debit-karte;visa"),
        QStringLiteral("visa kredit-karte;visa"),
        QStringLiteral("mastercard prepaid-karte;mastercard"),
        QStringLiteral("mastercard kredit-karte;mastercard"),
        QStringLiteral("mastercard debit-karte;mastercard"),
    }
        .join(QLatin1String("\r\n"));

QList<INFO> mainFormRows(const MainFormSource& source, const MainFormCallbacks& callbacks)
{
    MainFormValues& v = source.values;
    const INFO konto(E_NUMBER, A_AUTO_CORRECT_MINMAX | A_IMMEDIATE_DATA_UPDATE, kontoOptions(), 0,
                     "buchungs_konto", callbacks.buchungs_konto_change);
    QList<INFO> rows;
    // clang-format off
    rows << group(tr("Server"), "server_group_show", A_GROUP | A_CAN_HIDE_ITEMS | A_FLIP_LABEL_BOLD)
         <<     bound(E_LINEEDIT, tr("Webseite:"), "mainurl", v.mainurl, A_MANDATORY)
         <<     nextRow()
         <<     bound(E_LINEEDIT, tr("API-Key:"), keyNameAPI, v.apiKey, A_PWD | A_MANDATORY)
         <<     bound(E_LINEEDIT, tr("API-Secret:"), keyNameSECRET, v.apiSecret, A_PWD | A_MANDATORY)
         <<     nextRow()
         <<     bound(E_CHECKBOX, tr("Datumsfilter von:"), "date_filter_use", v.date_filter_use)
         <<     bound(E_DATE, QString(), "date_filter_after", v.date_filter_after)
         <<     bound(E_DATE, tr("Bis:"), "date_filter_before", v.date_filter_before)
         <<     nextRow()
         <<     bound(E_CHECKBOX, tr("ID-Cache aktivieren:"), "id_cache_use", v.id_cache_use)
         <<     button(tr("Löschen"), callbacks.id_cache_del)
         << end()
         << group(tr("Germanized"), "germanized_group_show")
         <<     bound(E_CHECKBOX, tr("Verwenden"), "germanized_use", v.germanized_use)
         <<     pdfFolder(source.bHostFolder, v.germanized_pdf_folder)
         <<     bound(E_CHECKBOX, tr("PDF überschreiben"), "germanized_overwrite_pdf",
                      v.germanized_overwrite_pdf)
         << end()
         << group(tr("Buchungstexte"), "buchungs_text_group_show")
         <<     buchungsText(tr("Erlös:"), "buchungs_text_erloes")
         <<     buchungsText(tr("Erlös Germanized:"), "gm_buchungs_text_erloes")
         <<     nextRow()
         <<     buchungsText(tr("Gebühr:"), "buchungs_text_gebuehr")
         <<     buchungsText(tr("Gebühr Germanized:"), "gm_buchungs_text_gebuehr")
         <<     nextRow()
         <<     buchungsText(tr("Versandkosten:"), "buchungs_text_versand")
         <<     buchungsText(tr("Versandkosten Germanized:"), "gm_buchungs_text_versand")
         << end()
         << group(tr("Sonstiges"), "sonstiges_group_show")
         <<     bound(E_CHECKBOX, source.csPaypalLabel, "paypal_use", v.paypal_use)
         <<     bound(E_CHECKBOX, source.csWooCommerceLabel, "woocommerce_use", v.woocommerce_use)
         <<     INFO(E_CHECKBOX, A_NONE, tr("Kunden anlegen"), 0, "customers_create")
         <<     button(tr("'Zahlmethode (kurz)' bearbeiten"), callbacks.edit_payment_method_sort)
         <<     nextRow()
         <<     combo(tr("Belegdatum:"), "belegdatum", belegdatumList(), A_MANDATORY)
         <<     combo(tr("B2C:"), "b2c_handling", b2cList(), A_MANDATORY)
         <<     nextRow()
         <<     combo(tr("Kostenstelle 1:"), "kostenstelle1", kostenstelleList())
         <<     combo(tr("Kostenstelle 2:"), "kostenstelle2", kostenstelleList())
         <<     nextRow()
         <<     combo(tr("Kontenrahmen:"), "skr", skrList(source.nSKRDefault),
                      A_ADJUST_WIDTH_TO_CONTENTS, callbacks.skr_change)
         <<     INFO(E_LABEL, A_NONE, tr("Typ:"))
         <<     INFO(E_LAYOUT_H)
         <<         combo(QString(), "buchungs_typ", kontenList(source.konten), A_NO_LABEL,
                          callbacks.skr_change)
         <<         konto
         <<     end()
         << end()
         << INFO(E_HLINE)
         << INFO(E_LAYOUT_H)
         <<     button(tr("Daten vom Server abrufen"), callbacks.fnc_start, "start_button")
         <<     button(tr("Anhalten"), callbacks.fnc_stop)
         <<     INFO(E_OPENURL_BUTTON, A_NONE, tr("Hilfe"), QVariant(link_main_help))
         <<     INFO(E_OK_BUTTON, A_NONE, tr("Import starten"), QVariant(), "ok_button")
         <<     INFO(E_CANCEL_BUTTON, A_NONE, tr("Abbrechen und Beenden"))
         << end()
         << INFO(E_HLINE);
    // clang-format on
    return rows;
}

QList<INFO> paymentMethodRows(const QString& replacements)
{
    return {
        INFO(E_TEXTEDIT, A_LABEL_ALIGN_TOP, tr("Ersetzungen:"), QVariant(replacements), "value"),
        INFO(E_LAYOUT_H),
        INFO(E_OK_BUTTON),
        INFO(E_CANCEL_BUTTON),
        INFO(E_OPENURL_BUTTON, A_NONE, tr("Hilfe"), QVariant(link_def_payment_method_s)),
        INFO(E_LAYOUT_END),
    };
}

QVariant selectedValue(const QMap<QString, QVariant>& options, const QString& key)
{
    const QVariantList values = INFO::getBaseValue(&options, key, true).toList();
    return values.isEmpty() ? QVariant() : values.first();
}
