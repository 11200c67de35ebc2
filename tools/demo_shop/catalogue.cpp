#include "tools/demo_shop/catalogue.h"

#include <algorithm>

namespace demo_shop {

const std::vector<TaxRate>& taxRates()
{
    // clang-format off
    static const std::vector<TaxRate> rates {
        { 1, "DE", 190, "19",  "19.0000", QStringLiteral("19 % MwSt."), "standard", "DE-19 % MWST.-1" },
        { 2, "DE",  70, "7",   "7.0000",  QStringLiteral("7 % MwSt."), "reduced-rate", "DE-7 % MWST.-1" },
        { 3, "DE",   0, "0",   "0.0000",  QStringLiteral("0 % MwSt. (Photovoltaik)"), "zero-rate", "DE-0 % MWST. (PHOTOVOLTAIK)-1" },
        { 4, "AT", 200, "20",  "20.0000", QStringLiteral("20 % USt. AT"), "standard", "AT-20 % UST. AT-1" },
        { 5, "AT", 100, "10",  "10.0000", QStringLiteral("10 % USt. AT"), "reduced-rate", "AT-10 % UST. AT-1" },
        { 6, "FR", 200, "20",  "20.0000", QStringLiteral("20 % TVA"), "standard", "FR-20 % TVA-1" },
        { 7, "FR",  55, "5.5", "5.5000",  QStringLiteral("5,5 % TVA"), "reduced-rate", "FR-5,5 % TVA-1" },
        { 8, "AT", 130, "13",  "13.0000", QStringLiteral("13 % USt. AT"), "zwischensatz", "AT-13 % UST. AT-1" },
    };
    // clang-format on
    return rates;
}

const TaxRate* rateFor(const QByteArray& country, const QByteArray& taxClass)
{
    const QByteArray wanted = taxClass.isEmpty() ? QByteArray("standard") : taxClass;
    const auto it = std::find_if(taxRates().begin(), taxRates().end(), [&](const TaxRate& rate) {
        return country == rate.country && wanted == rate.taxClass;
    });
    return it == taxRates().end() ? nullptr : &*it;
}

const TaxRate* rateById(int id)
{
    const auto it = std::find_if(taxRates().begin(), taxRates().end(),
                                 [id](const TaxRate& rate) { return rate.id == id; });
    return it == taxRates().end() ? nullptr : &*it;
}

const std::vector<Product>& products()
{
    // clang-format off
    static const std::vector<Product> all {
        { 14, QStringLiteral("Skizzenbuch B5 blanko"), "skizzenbuch-b5-blanko", "SKIZZE", 1190, "", false, false, 0, "" },
        { 15, QStringLiteral("Kugelschreiber „Förde“"), "kugelschreiber-foerde", "KULI", 2450, "", false, false, 0, "" },
        { 16, QStringLiteral("Stempelkissen blau; groß"), "stempelkissen-blau-gross", "STEMPEL", 890, "", false, false, 0, "" },
        { 17, QStringLiteral("Gartenkalender"), "gartenkalender", "GARTEN", 1650, "reduced-rate", false, false, 0, "" },
        { 18, QStringLiteral("Kochbuch \"Nord & Süd\""), "kochbuch-nord-sued", "KOCH", 2995, "reduced-rate", false, false, 0, "" },
        { 19, QStringLiteral("Kurs Buchbinden"), "kurs-buchbinden", "KURS", 7500, "", true, false, 0, "" },
        { 20, QStringLiteral("Schnittmuster (PDF)"), "schnittmuster-pdf", "MUSTER-PDF", 590, "", true, true, 0, "" },
        { 21, QStringLiteral("Geschenkanhänger"), "geschenkanhaenger", "ANHANG", 180, "", false, false, 0, "" },
        { 22, QStringLiteral("Farbkarte (gratis)"), "farbkarte-gratis", "GRATIS", 0, "", false, false, 0, "" },
        { 23, QStringLiteral("Brieföffner 7\" Edelstahl"), "briefoeffner-7-edelstahl", "OEFFNER", 1295, "", false, false, 0, "" },
        { 24, QStringLiteral("Sammelmappe"), "sammelmappe", "MAPPE", 990, "", false, false, 0, "" },
        { 25, QStringLiteral("Sammelmappe - A4"), "sammelmappe-a4", "MAPPE-1", 990, "", false, false, 24, "A4" },
        { 26, QStringLiteral("Sammelmappe - A3"), "sammelmappe-a3", "MAPPE-2", 1490, "", false, false, 24, "A3" },
        { 27, QStringLiteral("Solarmodul 430 W"), "solarmodul-430-w", "SOLAR", 12900, "zero-rate", false, false, 0, "" },
        { 28, QStringLiteral("Arbeitstisch Eiche"), "arbeitstisch-eiche", "TISCH", 149900, "", false, false, 0, "" },
        { 29, QStringLiteral("Zeitschrift 'Papier'"), "zeitschrift-papier", "ZEIT", 720, "reduced-rate", false, false, 0, "" },
    };
    // clang-format on
    return all;
}

const Product* productById(int id)
{
    const auto it = std::find_if(products().begin(), products().end(),
                                 [id](const Product& product) { return product.id == id; });
    return it == products().end() ? nullptr : &*it;
}

} // namespace demo_shop
