#include "accounting/payment_import.h"

#include "accounting/payment_import_tables.h"

namespace payment_import {

namespace {

constexpr int OhneKonto = -1;

int indexOfSKR(int skr)
{
    switch (skr) {
    case 3:
        return 0;
    case 4:
        return 1;
    case 49:
        return 2;
    default:
        return -1;
    }
}

bool isIndex(int index)
{
    return index >= 0 && index <= 2;
}

template <typename Triple>
auto& element(Triple& triple, int index)
{
    switch (index) {
    case 0:
        return std::get<0>(triple);
    case 1:
        return std::get<1>(triple);
    default:
        return std::get<2>(triple);
    }
}

} // namespace

void InitDefaultKonten(std::map<KontenTypen, std::tuple<int, int, int>>& konten, int mode,
                       bool firmaKU, const std::tuple<int, int, int>& ebay,
                       const std::tuple<int, int, int>& paypal,
                       const std::tuple<int, int, int>& woocommerce)
{
    if (!konten.empty())
        return;

    const bool kleinunternehmer = mode <= 0 && firmaKU;
    for (const KontenZeile& zeile : kontenZeilen()) {
        switch (zeile.herkunft) {
        case KontenHerkunft::Fest:
            konten[zeile.typ] = zeile.konten;
            break;
        case KontenHerkunft::OhneSteuer:
            konten[zeile.typ] = kleinunternehmer ? KleinunternehmerKonten : zeile.konten;
            break;
        case KontenHerkunft::Ebay:
            konten[zeile.typ] = ebay;
            break;
        case KontenHerkunft::Paypal:
            konten[zeile.typ] = paypal;
            break;
        case KontenHerkunft::Woocommerce:
            konten[zeile.typ] = woocommerce;
            break;
        case KontenHerkunft::Keine:
            break;
        }
    }
}

bool getKontoByIndex(const KontenMap& konten, KontenTypen role, int index, int& konto)
{
    if (!isIndex(index))
        return false;
    const auto entry = konten.find(role);
    konto = entry == konten.end() ? OhneKonto : element(entry->second, index);
    return true;
}

bool getKontoBySKR(const KontenMap& konten, KontenTypen role, int skr, int& konto)
{
    return getKontoByIndex(konten, role, indexOfSKR(skr), konto);
}

void upDateKontoByIndex(KontenMap& konten, KontenTypen role, int index, int konto)
{
    if (!isIndex(index))
        return;
    const KontenTriple unset {OhneKonto, OhneKonto, OhneKonto};
    element(konten.try_emplace(role, unset).first->second, index) = konto;
}

void upDateKontoBySKR(KontenMap& konten, KontenTypen role, int skr, int konto)
{
    upDateKontoByIndex(konten, role, indexOfSKR(skr), konto);
}

} // namespace payment_import
