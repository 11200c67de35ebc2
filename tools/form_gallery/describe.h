#pragma once

#include "form/model/info.h"

namespace gallery {

/// \return  all row types that have a name
QList<int> rowTypes();
/// \return  "E_LINEEDIT" and the like, empty for a number that is no row type
QString typeName(int eleType);
/// \return  "A_READONLY" and the like, of several names of a bit the one that is no alias; empty
/// for
///          a bit without a meaning
QString attributeName(unsigned bit);
/// \return  the names of all attributes of a set, in the order of the bits
QStringList attributeNames(const std::bitset<256>& attr);

/// \return  what a row is made of: type, attributes, options, kind of binding, on one line
QString describe(const mod_form_qt::INFO& row);

/// \return  a value as the tables of the gallery show it, on one line
QString valueText(const QVariant& value);

} // namespace gallery
