#pragma once

#include "form/model/info.h"

#include <bitset>
#include <vector>

namespace mod_form_qt {

// A list widget is a QComboBox, helper::CheckComboBox, QListWidget, or a QPushButton with a menu of
// checkable actions. Its items carry their value in Qt::UserRole, actions in QAction::data(), and
// in a role of their own the index of their item in the list data: two items may have equal values,
// and sorting moves them.

/// Role of the index in the list data.
inline constexpr int listIndexRole = Qt::UserRole + 0x5249;
/// As the role, for actions.
inline constexpr const char* listIndexPropertyKey = "mod_form_qt_listindex";

/// \return  true for a widget of the classes above
bool isListWidget(const QWidget* widget);

/// \return  true if several items of such a row may be selected
bool isMultiSelection(int eleType, const std::bitset<256>& attr);

/// Fills a list widget with items and their marks, in place of what it held; the widget stays
/// silent. With `A_SORTED` the items are shown by their texts, with `A_CHECKBOX` those of a list
/// carry check boxes, with `A_MULTISEL` a list or menu lets several be selected. Where only one may
/// be, the first mark counts; a combo box without a mark has the index -1. The actions of a menu
/// are made anew: handlers listen to the menu. A button without a menu stays as it is.
void fillListWidget(QWidget* widget, const T_LISTDATA& list, const std::bitset<256>& attr);

/// Shows the marks of the list data that the widget was filled with, and of no other item. The
/// widget is not silent by itself.
void showMarks(QWidget* widget, const T_LISTDATA& list, const std::bitset<256>& attr);

/// Selects or checks the items that have a value of the selection, and no others. Where only one
/// may be, it is the first item, in the order of the list data, that has the first of the values
/// that any has. The widget is not silent by itself.
void showSelection(QWidget* widget, const QVariantList& selection, const std::bitset<256>& attr);

/// \return  the values of the items that are selected or checked in the widget, in the order of the
///          list data
QVariantList selectedValues(QWidget* widget, const std::bitset<256>& attr);

/// Takes over what is selected or checked in the widget.
/// \param list  the list data that the widget was filled with; if it has changed since, items are
///              found by their value
/// \return      the list with the widget's marks and no others
T_LISTDATA markedBy(QWidget* widget, T_LISTDATA list, const std::bitset<256>& attr);

/// \return  the values of a selection: of a list its elements, of list data, or a pointer to it,
/// the
///          values of its marked items, of an invalid value none, otherwise the value itself
QVariantList selectionValues(const QVariant& selection);

/// \param multi    false: only the first item that has the first of the values that any has
/// \param matched  out, if given: the values that were found
/// \return         for each item whether it has a value of the selection
std::vector<bool> selectionMarks(const T_LISTDATA& list, const QVariantList& selection, bool multi,
                                 QVariantList* matched = nullptr);

// \param marks  one for each item

bool hasMarks(const T_LISTDATA& list, const std::vector<bool>& marks);
void setMarks(T_LISTDATA& list, const std::vector<bool>& marks);

/// Marks the items that have a value of the selection, as above, and no others.
void markSelection(T_LISTDATA& list, const QVariantList& selection, bool multi);

} // namespace mod_form_qt
