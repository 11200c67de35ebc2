#pragma once

#include "tools/form_gallery/gallery_pages.h"

#include <initializer_list>

// What makes a page read like a table.

namespace gallery {

using Option = mod_form_qt::INFO::Option;

/// \return  the param of a row that has a title and options
QVariant with(const QString& title, const Option::Map& options);

/// Opens a group box, with a vertical layout unless told otherwise.
mod_form_qt::INFO group(const QString& title, const std::bitset<256>& attr = {},
                        int eleType = mod_form_qt::E_LAYOUT_V);
/// Opens a layout without a box.
mod_form_qt::INFO open(int eleType, const std::bitset<256>& attr = {});
mod_form_qt::INFO end();
mod_form_qt::INFO nextRow();
/// A line of explanation; rich text.
mod_form_qt::INFO note(const QString& text);
/// The description of a row as a label, in small letters.
mod_form_qt::INFO described(const mod_form_qt::INFO& row);

/// A row and, on its right, what it is made of. Labels and descriptions have a fixed width, so that
/// such lines stand in columns.
QList<mod_form_qt::INFO> sample(const mod_form_qt::INFO& row);

/// \param selected  the numbers of the selected items; the values are the texts in lower case
mod_form_qt::T_LISTDATA items(const QStringList& texts,
                              std::initializer_list<qsizetype> selected = {});

} // namespace gallery
