#include "accounting/payment_import_tables.h"

#include <QCoreApplication>

namespace payment_import {

namespace {

using enum KontenHerkunft;

constexpr const char* ErloesText = "Erlös <BESTELLNUMMER>";
constexpr const char* VersandText = "Versandkosten <BESTELLNUMMER>";

#define TITEL(text) QT_TRANSLATE_NOOP("payment_import", text)

// clang-format off
constexpr KontenZeile Zeilen[] = {
    {ErloesInlandNormal, TITEL("Erlöse Inland normale Steuer"),
     ErloesText, Fest, {8400, 4400, 8030}},
    {ErloesInlandErmaessigt, TITEL("Erlöse Inland ermäßigte Steuer"),
     ErloesText, Fest, {8300, 4300, 8026}},
    {ErloesInlandOhneSteuer, TITEL("Erlöse Inland ohne Steuer"),
     ErloesText, OhneSteuer, {8200, 4200, 8000}},
    {VersandInlandNormal, TITEL("Versandkosten Inland normale Steuer (Rechnungsausgang)"),
     VersandText, Fest, {8400, 4400, 8030}},
    {VersandInlandErmaessigt, TITEL("Versandkosten Inland ermäßigte Steuer (Rechnungsausgang)"),
     VersandText, Fest, {8300, 4300, 8026}},
    {VersandInlandOhneSteuer, TITEL("Versandkosten Inland ohne Steuer (Rechnungsausgang)"),
     VersandText, OhneSteuer, {8200, 4200, 8000}},
    {EbayProvision, TITEL("ebay-Provision"),
     "ebay-Provision <BESTELLNUMMER>", Fest, {4760, 6770, 0}},
    {SonstigeKosten, TITEL("Sonstige Kosten"),
     "Sonstige Kosten <BESTELLNUMMER>", Fest, {4700, 6700, 0}},
    {AndereGebuehr, TITEL("Andere Gebühr"),
     "Andere Gebühr <BESCHREIBUNG>", Fest, {4700, 6700, 0}},
    {PositiveDifferenz, TITEL("Positive Differenz"),
     "Positive Differenz <BESTELLNUMMER>", Fest, {2660, 4840, 8137}},
    {NegativeDifferenz, TITEL("Negative Differenz"),
     "Negative Differenz <BESTELLNUMMER>", Fest, {2150, 6880, 8367}},
    {LieferungDrittland, TITEL("Lieferung Drittland"),
     ErloesText, Fest, {8120, 4120, 0}},
    {LieferungEuB2B, TITEL("Lieferung EU-B2B"),
     ErloesText, Fest, {8125, 4125, 0}},
    {LieferungEuB2COss, TITEL("Lieferung EU-B2C mit OSS / Lieferschwelle überschritten"),
     ErloesText, Fest, {8320, 4320, 0}},
    {VersandDrittland, TITEL("Versandkosten Lieferung Drittland(Rechnungsausgang)"),
     VersandText, Fest, {8120, 4120, 0}},
    {VersandEuB2B, TITEL("Versandkosten EU-B2B (Rechnungsausgang)"),
     VersandText, Fest, {8125, 4125, 0}},
    {VersandEuB2COss,
     TITEL("Versandkosten EU-B2C mit OSS oder Lieferschwelle überschritten(Rechnungsausgang)"),
     VersandText, Fest, {8320, 4320, 0}},
    {FinanzkontoAuszahlung, TITEL("Finanzkonto Auszahlung"),
     "Auszahlung <AUSZAHLUNGSNUMMER>", Fest, {-1, -1, -1}},
    {FinanzkontoAuszahlungSekundaer, TITEL("Finanzkonto Auszahlung sekundär"),
     "Auszahlung <AUSZAHLUNGSNUMMER>", Fest, {-1, -1, -1}},
    {EbayVerrechnungskonto, TITEL("eBay-Verrechnungskonto"),
     "eBay-Sammel <DATUM>", Ebay, {}},
    {Geldtransit, TITEL("Geldtransit"),
     "eBay-Geldtransit <REFERENZNUMMER>", Fest, {1360, 1460, 705}},
    {LeistungDrittland, TITEL("Leistung Drittland"),
     ErloesText, Fest, {8338, 4338, 0}},
    {LeistungEuB2B, TITEL("Leistung EU-B2B"),
     ErloesText, Fest, {8336, 4336, 0}},
    {LeistungEuB2COss, TITEL("Leistung EU-B2C mit OSS / Lieferschwelle überschritten"),
     ErloesText, Fest, {8331, 4331, 0}},
    {LieferungEuB2CErmaessigt, TITEL("Lieferung EU-B2C (ermäßigte St.) unter Lieferschwelle"),
     ErloesText, Fest, {8310, 4310, 0}},
    {LieferungEuB2CNormal, TITEL("Lieferung EU-B2C (normale St.) unter Lieferschwelle"),
     ErloesText, Fest, {8315, 4315, 0}},
    {VersandEuB2CErmaessigt,
     TITEL("Versandkosten EU-B2C (ermäßigte St.) unter Lieferschwelle (Rechnungsausgang)"),
     VersandText, Fest, {8310, 4310, 0}},
    {VersandEuB2CNormal,
     TITEL("Versandkosten EU-B2C (normale St.) unter Lieferschwelle (Rechnungsausgang)"),
     VersandText, Fest, {8315, 4315, 0}},
    {LeistungEuB2CErmaessigt, TITEL("Leistung EU-B2C (ermäßigte St.) unter Lieferschwelle"),
     ErloesText, Fest, {8449, 4449, 0}},
    {LeistungEuB2CNormal, TITEL("Leistung EU-B2C (normale St.) unter Lieferschwelle"),
     ErloesText, Fest, {8449, 4449, 0}},
    {PaypalGebuehr, TITEL("paypal-Gebühr"),
     "paypal-Gebühr", Fest, {4970, 6855, 4712}},
    {PaypalKonto, TITEL("paypal-Konto"),
     "paypal-Sammel <DATUM>", Paypal, {}},
    {WoocommerceVerrechnungskonto, TITEL("woocommerce-Verrechnungskonto"),
     "woocommerce-Sammel <DATUM>", Woocommerce, {}},
    {ErloeseKleinunternehmer, TITEL("Erlöse als Kleinunternehmer"),
     ErloesText, Fest, KleinunternehmerKonten},
    {VersandKleinunternehmer, TITEL("Versandkosten Kleinunternehmer"),
     VersandText, Keine, {}},
    {AmazonKonto, TITEL("Amazon-Konto (Marktplatz DE)"),
     "Amazon-Bestellung (DE) <BESTELLNUMMER>", Fest, {0, 0, 0}},
    {AmazonGebuehr, TITEL("Amazon-Gebühr"),
     "Amazon-Gebühr <BESTELLNUMMER>", Fest, {3123, 5923, 0}},
};

// clang-format on

std::map<KontenTypen, QString> titel()
{
    std::map<KontenTypen, QString> result;
    for (const KontenZeile& zeile : Zeilen)
        result.emplace(zeile.typ, QCoreApplication::translate("payment_import", zeile.titel));
    return result;
}

// Not translated: these travel to the host, which knows the placeholders by these names.
std::map<KontenTypen, QString> buchungsTexte()
{
    std::map<KontenTypen, QString> result;
    for (const KontenZeile& zeile : Zeilen)
        result.emplace(zeile.typ, QString::fromUtf8(zeile.buchungsText));
    return result;
}

} // namespace

std::span<const KontenZeile> kontenZeilen()
{
    return Zeilen;
}

const std::map<KontenTypen, QString> DefaultKontenTitel = titel();

const std::map<KontenTypen, QString> DefaultBuchungsTexte = buchungsTexte();

const std::vector<KontenTypen> KontenTypenOrder = {
    ErloesInlandNormal,
    ErloesInlandErmaessigt,
    ErloesInlandOhneSteuer,
    ErloeseKleinunternehmer,
    VersandInlandNormal,
    VersandInlandErmaessigt,
    VersandInlandOhneSteuer,
    VersandKleinunternehmer,
    LieferungEuB2B,
    LeistungEuB2B,
    VersandEuB2B,
    LieferungEuB2COss,
    LeistungEuB2COss,
    VersandEuB2COss,
    VersandEuB2CErmaessigt,
    LieferungEuB2CNormal,
    LieferungEuB2CErmaessigt,
    LeistungEuB2CNormal,
    LeistungEuB2CErmaessigt,
    VersandEuB2CNormal,
    LieferungDrittland,
    LeistungDrittland,
    VersandDrittland,
    FinanzkontoAuszahlung,
    FinanzkontoAuszahlungSekundaer,
    EbayVerrechnungskonto,
    AmazonKonto,
    Geldtransit,
    PaypalKonto,
    WoocommerceVerrechnungskonto,
    EbayProvision,
    PaypalGebuehr,
    SonstigeKosten,
    AndereGebuehr,
    AmazonGebuehr,
    PositiveDifferenz,
    NegativeDifferenz,
};

const std::map<QString, QString> DefaultFormBuchungsTexte = {
    {QStringLiteral("buchungs_text_erloes"),
     QStringLiteral("Erlös-<ORDER_NUMBER>-<COMPANY><,><NAME>")},
    {QStringLiteral("gm_buchungs_text_erloes"),
     QStringLiteral("Erlös-<GM_INVOICE_NUMBER_COMPLETE>")},
    {QStringLiteral("buchungs_text_gebuehr"),
     QStringLiteral("Gebühr-<ORDER_NUMBER>-<COMPANY><,><NAME>")},
    {QStringLiteral("gm_buchungs_text_gebuehr"),
     QStringLiteral("Gebühr-<GM_INVOICE_NUMBER_COMPLETE>")},
    {QStringLiteral("buchungs_text_versand"),
     QStringLiteral("Versand-<ORDER_NUMBER>-<COMPANY><,><NAME>")},
    {QStringLiteral("gm_buchungs_text_versand"),
     QStringLiteral("Versand-<GM_INVOICE_NUMBER_COMPLETE>")},
};

} // namespace payment_import

namespace {

QString suchTyp(const char* text)
{
    return QCoreApplication::translate("payment_import", text);
}

} // namespace

const std::map<int, QString> SuchTypenBelegZuordnungMap = {
    {1, suchTyp(TITEL("Erweiterte Suche alt"))},
    {2, suchTyp(TITEL("Erweiterte Suche mit Wildcard"))},
    {3, suchTyp(TITEL("Nicht mehr verwendet"))},
    {4, suchTyp(TITEL("Regulärer Ausdruck"))},
    {6, suchTyp(TITEL("Erweiterte Suche mit regulärem Ausdruck"))},
};
