#pragma once

#include "form/model/info.h"

namespace mod_form_qt {

/// \return  the date that a value stands for: a date, a text, or the number of a Julian day.
///          `INFO::dateInvalid` for none and for a day beyond it
QDate dateOrInvalid(const QVariant& value);

/// Shows the value of a row in one of its inputs, silently: a number in the row's locale, a date
/// together with the check box before it.
/// \param value  of an `E_DATE` row a date as `dateOrInvalid` gives it
/// \param key    of the row, whose other widgets are found in the map
void showValue(QWidget* widget, const QVariant& value, const QMap<QString, QVariant>* map,
               const QString& key);
/// As above.
/// \param eleType  type of the row
void showValue(QWidget* widget, int eleType, const QVariant& value,
               const QMap<QString, QVariant>* map, const QString& key);

} // namespace mod_form_qt
