#pragma once

#include "form/export.h"

#include <bitset>

class QComboBox;
class QLayout;
class QVariant;

namespace mod_form_qt {

/// Shows or hides every widget of a layout and of the layouts in it; null has no effect.
MOD_FORM_QT_EXPORT void setLayoutVisible(QLayout* layout, bool visible);

namespace helper {

/// Lets the list of a combo box show that many items at most, whatever the style would do.
MOD_FORM_QT_EXPORT void setupLimitedPopup(QComboBox* box, int maxVisibleItems);

} // namespace helper
} // namespace mod_form_qt
