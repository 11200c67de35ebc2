#pragma once

#include <bitset>

class QComboBox;
class QLayout;
class QVariant;

namespace mod_form_qt {

/// Shows or hides every widget of a layout and of the layouts in it; null has no effect.
void setLayoutVisible(QLayout* layout, bool visible);

namespace helper {

/// Lets the list of a combo box show that many items at most, whatever the style would do.
void setupLimitedPopup(QComboBox* box, int maxVisibleItems);

} // namespace helper
} // namespace mod_form_qt
