#pragma once

#include <map>
#include <tuple>

namespace payment_import {

/// The booking roles. Their numbers stand in saved files and in the option string for the host, so
/// they never change; `DefaultKontenTitel` says what each is for.
enum KontenTypen : int {
    ErloesInlandNormal = 1,
    ErloesInlandErmaessigt = 2,
    ErloesInlandOhneSteuer = 3,
    VersandInlandNormal = 4,
    VersandInlandErmaessigt = 5,
    VersandInlandOhneSteuer = 6,
    EbayProvision = 7,
    SonstigeKosten = 8,
    AndereGebuehr = 9,
    PositiveDifferenz = 10,
    NegativeDifferenz = 11,
    LieferungDrittland = 12,
    LieferungEuB2B = 13,
    LieferungEuB2COss = 14,
    VersandDrittland = 15,
    VersandEuB2B = 16,
    VersandEuB2COss = 17,
    FinanzkontoAuszahlung = 18,
    FinanzkontoAuszahlungSekundaer = 19,
    EbayVerrechnungskonto = 20,
    Geldtransit = 21,
    LeistungDrittland = 22,
    LeistungEuB2B = 23,
    LeistungEuB2COss = 24,
    LieferungEuB2CErmaessigt = 25,
    LieferungEuB2CNormal = 26,
    VersandEuB2CErmaessigt = 27,
    VersandEuB2CNormal = 28,
    LeistungEuB2CErmaessigt = 29,
    LeistungEuB2CNormal = 30,
    PaypalGebuehr = 31,
    PaypalKonto = 32,
    WoocommerceVerrechnungskonto = 33,
    ErloeseKleinunternehmer = 34,
    VersandKleinunternehmer = 35,
    AmazonKonto = 36,
    AmazonGebuehr = 37,
};

/// One account number for each chart: SKR03, SKR04, SKR49 at the indexes 0, 1, 2. 0 is a chart
/// without a default, -1 an account that is not set.
using KontenTriple = std::tuple<int, int, int>;

/// The account table, ascending by role number.
using KontenMap = std::map<KontenTypen, KontenTriple>;

/// Fills an empty account table with the defaults: every role but `VersandKleinunternehmer`.
/// \param konten       a table that already has an entry stays as it is
/// \param mode         above 0: the regular accounts, whatever `firmaKU` says
/// \param firmaKU      true for a small business, whose untaxed sales have accounts of their own
/// \param ebay         the host's clearing accounts for eBay, and so on for the other two
void InitDefaultKonten(std::map<KontenTypen, std::tuple<int, int, int>>& konten, int mode,
                       bool firmaKU, const std::tuple<int, int, int>& ebay,
                       const std::tuple<int, int, int>& paypal,
                       const std::tuple<int, int, int>& woocommerce);

/// Looks up an account by its index.
/// \param konto  out: the account, -1 for a role that the table lacks
/// \return       false for an index outside 0 to 2, with `konto` untouched
bool getKontoByIndex(const KontenMap& konten, KontenTypen role, int index, int& konto);

/// Looks up an account by the number of its chart: 3, 4 or 49.
/// \param konto  out: the account, -1 for a role that the table lacks
/// \return       false for any other chart, with `konto` untouched
bool getKontoBySKR(const KontenMap& konten, KontenTypen role, int skr, int& konto);

/// Sets one account by its index; an index outside 0 to 2 changes nothing. A role that the table
/// lacks is created, with -1 in the two other charts.
void upDateKontoByIndex(KontenMap& konten, KontenTypen role, int index, int konto);

/// Sets one account by the number of its chart; any other chart than 3, 4 or 49 changes nothing. A
/// role that the table lacks is created, with -1 in the two other charts.
void upDateKontoBySKR(KontenMap& konten, KontenTypen role, int skr, int konto);

} // namespace payment_import
