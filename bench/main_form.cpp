#include "bench/main_form.h"

#include <QVBoxLayout>

using namespace mod_form_qt;

namespace bench {

namespace {

T_LISTDATA listData(const Choices& choices)
{
    T_LISTDATA list;
    list.reserve(static_cast<std::size_t>(choices.size()));
    for (const auto& [text, value] : choices)
        list.push_back({text, list.empty(), value, {}});
    return list;
}

/// The options of the account's number.
QVariantMap accountOptions()
{
    using Option = INFO::Option;
    return {{Option::titleKey, QStringLiteral("Konto:")},
            {Option::buildKey(Option::maxWidthKey, E_NUMBER), 100},
            {Option::buildKey(Option::typeAlignKey, E_NUMBER), 33},
            {Option::metaTypeKey, 3},
            {Option::groupSepKey, false},
            {Option::precisionKey, 0},
            {Option::signedDataTypeKey, false},
            {Option::spinBoxKey, true},
            {Option::minKey, QStringLiteral("1")},
            {Option::maxKey, QStringLiteral("9999")}};
}

QList<INFO> mainFormRows(MainFormValues& values, const Callback& callback)
{
    const auto list = [](const Choices& choices) { return QVariant::fromValue(listData(choices)); };
    const MAP_KEY_TYPE noKey;
    // clang-format off
    return {
        INFO(E_LAYOUT_GRID, A_GROUP | A_CAN_HIDE_ITEMS | A_FLIP_LABEL_BOLD, "Server", 1,
             "server_group_show"),
        INFO(E_LINEEDIT, A_MANDATORY, "Webseite:", &values.mainurl, "mainurl"),
        INFO(E_GRID_NEXT_ROW),
        INFO(E_LINEEDIT, A_PWD | A_MANDATORY, "API-Key:", &values.apiKey, "api_key"),
        INFO(E_LINEEDIT, A_PWD | A_MANDATORY, "API-Secret:", &values.apiSecret, "api_secret"),
        INFO(E_GRID_NEXT_ROW),
        INFO(E_CHECKBOX, A_NONE, "Datumsfilter von:", &values.dateFilterUse, "date_filter_use"),
        INFO(E_DATE, A_NONE, QVariant(), &values.dateFilterAfter, "date_filter_after"),
        INFO(E_DATE, A_NONE, "Bis:", &values.dateFilterBefore, "date_filter_before"),
        INFO(E_GRID_NEXT_ROW),
        INFO(E_CHECKBOX, A_NONE, "ID-Cache aktivieren:", &values.idCacheUse, "id_cache_use"),
        INFO(E_BUTTON, A_NONE, "Löschen", QVariant(), noKey, callback),
        INFO(E_LAYOUT_END),
        INFO(E_LAYOUT_GRID, A_GROUP, "Germanized", 1, "germanized_group_show"),
        INFO(E_CHECKBOX, A_NONE, "Verwenden", &values.germanizedUse, "germanized_use"),
        INFO(E_BROWSE_FOLDER, A_NONE, "PDF-Ordner:", &values.germanizedPdfFolder,
             "germanized_pdf_folder"),
        INFO(E_CHECKBOX, A_NONE, "PDF überschreiben", &values.germanizedOverwritePdf,
             "germanized_overwrite_pdf"),
        INFO(E_LAYOUT_END),
        INFO(E_LAYOUT_GRID, A_GROUP, "Buchungstexte", 1, "buchungs_text_group_show"),
        INFO(E_LINEEDIT, A_NONE, "Erlös:", "Erlöstext", "buchungs_text_erloes"),
        INFO(E_LINEEDIT, A_NONE, "Erlös Germanized:", "Erlöstext", "gm_buchungs_text_erloes"),
        INFO(E_GRID_NEXT_ROW),
        INFO(E_LINEEDIT, A_NONE, "Gebühr:", "Gebührentext", "buchungs_text_gebuehr"),
        INFO(E_LINEEDIT, A_NONE, "Gebühr Germanized:", "Gebührentext", "gm_buchungs_text_gebuehr"),
        INFO(E_GRID_NEXT_ROW),
        INFO(E_LINEEDIT, A_NONE, "Versandkosten:", "Versandtext", "buchungs_text_versand"),
        INFO(E_LINEEDIT, A_NONE, "Versandkosten Germanized:", "Versandtext",
             "gm_buchungs_text_versand"),
        INFO(E_LAYOUT_END),
        INFO(E_LAYOUT_GRID, A_GROUP, "Sonstiges", 1, "sonstiges_group_show"),
        INFO(E_CHECKBOX, A_NONE, "paypal importieren", &values.paypalUse, "paypal_use"),
        INFO(E_CHECKBOX, A_NONE, "WooCommerce importieren", &values.woocommerceUse,
             "woocommerce_use"),
        INFO(E_CHECKBOX, A_NONE, "Kunden anlegen", 0, "customers_create"),
        INFO(E_BUTTON, A_NONE, "'Zahlmethode (kurz)' bearbeiten", QVariant(), noKey, callback),
        INFO(E_GRID_NEXT_ROW),
        INFO(E_COMBOBOX, A_MANDATORY, "Belegdatum:", list(dateChoices()), "belegdatum"),
        INFO(E_COMBOBOX, A_MANDATORY, "B2C:", list(b2cChoices()), "b2c_handling"),
        INFO(E_GRID_NEXT_ROW),
        INFO(E_COMBOBOX, A_NONE, "Kostenstelle 1:", list(costCentreChoices()), "kostenstelle1"),
        INFO(E_COMBOBOX, A_NONE, "Kostenstelle 2:", list(costCentreChoices()), "kostenstelle2"),
        INFO(E_GRID_NEXT_ROW),
        INFO(E_COMBOBOX, A_ADJUST_WIDTH_TO_CONTENTS, "Kontenrahmen:", list(skrChoices()), "skr",
             callback),
        INFO(E_LABEL, A_NONE, "Typ:"),
        INFO(E_LAYOUT_H),
        INFO(E_COMBOBOX, A_NO_LABEL, QVariant(), list(roleChoices()), "buchungs_typ", callback),
        INFO(E_NUMBER, A_AUTO_CORRECT_MINMAX | A_IMMEDIATE_DATA_UPDATE, accountOptions(), 0,
             "buchungs_konto", callback),
        INFO(E_LAYOUT_END),
        INFO(E_LAYOUT_END),
        INFO(E_HLINE),
        INFO(E_LAYOUT_H),
        INFO(E_BUTTON, A_NONE, "Daten vom Server abrufen", QVariant(), "start_button", callback),
        INFO(E_BUTTON, A_NONE, "Anhalten", QVariant(), noKey, callback),
        INFO(E_OPENURL_BUTTON, A_NONE, "Hilfe", "https://help.example", noKey),
        INFO(E_OK_BUTTON, A_NONE, "Import starten", QVariant(), "ok_button"),
        INFO(E_CANCEL_BUTTON, A_NONE, "Abbrechen und Beenden"),
        INFO(E_LAYOUT_END),
        INFO(E_HLINE),
    };
    // clang-format on
}

} // namespace

void buildByEngine(QMainWindow& window, MainFormValues& values, QMap<QString, QVariant>& map)
{
    const Callback agree = ContextCallback([](const CallbackContext&) { return 1; });
    const INFO::Result form = INFO::getLayout(
        &window, true, QString(), mainFormRows(values, agree), INFO::MainFlags::fromInt(0x24806),
        F_DIALOG_TITLE_MINMAX_CLOSE, &map, nullptr, agree, &window);
    auto* central = new QWidget(&window);
    auto* layout = new QVBoxLayout(central);
    layout->addLayout(form.layout);
    window.setCentralWidget(central);
}

Choices skrChoices()
{
    return {{QString(), QVariant()},
            {QStringLiteral("SKR03"), 3},
            {QStringLiteral("SKR04"), 4},
            {QStringLiteral("SKR049"), 49}};
}

Choices roleChoices()
{
    Choices choices;
    for (int role = 1; role <= 36; ++role)
        choices.append({QStringLiteral("Erlöse der Rolle %1 im Inland").arg(role), role});
    return choices;
}

Choices costCentreChoices()
{
    return {{QStringLiteral("Nicht zuordnen"), QString()},
            {QStringLiteral("Produktname"), QStringLiteral("PRODUCT_NAME")},
            {QStringLiteral("Zahlmethode"), QStringLiteral("PAYMENT_METHOD")},
            {QStringLiteral("Zahlmethode (kurz)"), QStringLiteral("PAYMENT_METHOD_S")}};
}

Choices b2cChoices()
{
    return {{QString(), 0},
            {QStringLiteral("OSS"), 1},
            {QStringLiteral("Lieferschwelle nicht überschritten"), 2},
            {QStringLiteral("Lieferschwelle überschritten"), 3}};
}

Choices dateChoices()
{
    return {{QStringLiteral("Automatisch"), 1},
            {QStringLiteral("Erstellt"), 2},
            {QStringLiteral("Abgeschlossen"), 3},
            {QStringLiteral("Bezahlt"), 4}};
}

} // namespace bench
