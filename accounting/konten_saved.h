#pragma once

#include "accounting/payment_import.h"

#include <QVariantList>

namespace payment_import {

/// The account table as it is saved: for each entry, ascending by role, one `QStringList` of four
/// decimal texts, which are role, SKR03, SKR04, SKR49.
QVariantList kontenToSavedList(const KontenMap& konten);

/// Takes a saved table over into `konten`; roles that it does not name keep their accounts.
/// \param saved  a list as `kontenToSavedList` makes it, an element being a list of texts or of
///               values that convert to texts; an invalid value counts as an empty list
///
/// An element is dropped silently unless it has four parts and a role from 1 to 37. An account that
/// is no number or exceeds an int reads as 0.
void restoreKonten(const QVariant& saved, KontenMap& konten);

} // namespace payment_import
