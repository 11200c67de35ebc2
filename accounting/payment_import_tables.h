#pragma once

#include "accounting/payment_import.h"

#include <QString>

#include <map>
#include <span>
#include <vector>

namespace payment_import {

/// Where the default accounts of a role come from.
enum class KontenHerkunft {
    Fest, ///< from the row
    OhneSteuer, ///< from the row, or the small-business accounts
    Ebay, ///< from the host's clearing accounts, likewise the next two
    Paypal,
    Woocommerce,
    Keine, ///< the default table has no entry for the role
};

/// All that is known of a role by default.
struct KontenZeile
{
    KontenTypen typ;
    const char* titel; ///< UTF-8
    const char* buchungsText; ///< UTF-8
    KontenHerkunft herkunft;
    KontenTriple konten; ///< as default-constructed where they do not come from the row
};

/// The accounts of untaxed domestic sales of a small business.
inline constexpr KontenTriple KleinunternehmerKonten {8192, 4185, 8000};

/// All 37 roles, ascending by number.
std::span<const KontenZeile> kontenZeilen();

/// The title of each of the 37 roles.
extern const std::map<KontenTypen, QString> DefaultKontenTitel;

/// The booking-text template of each of the 37 roles, with placeholders in angle brackets.
extern const std::map<KontenTypen, QString> DefaultBuchungsTexte;

/// All 37 roles in the order in which a reader looks for them.
extern const std::vector<KontenTypen> KontenTypenOrder;

/// The templates of the form's six booking-text fields: key of the field -> default text. Their
/// placeholders are filled by the host.
extern const std::map<QString, QString> DefaultFormBuchungsTexte;

} // namespace payment_import

/// The kinds of search by which the host assigns documents: number -> title. There is no number 5.
extern const std::map<int, QString> SuchTypenBelegZuordnungMap;
