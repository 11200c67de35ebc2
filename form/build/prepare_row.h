#pragma once

#include "form/model/info_option.h"

namespace mod_form_qt {

/// What the rows of a form inherit.
struct FormDefaults
{
    bool boldLabels = false;
    QVariant locale; ///< invalid if the main row has none
    std::any anyData; ///< the main row's
};

/// A row with everything settled that does not need a widget.
struct PreparedRow
{
    INFO row; ///< `anyData` inherited, otherwise as it came
    INFO::Option option; ///< the row's options and those its attributes and title stand for
    QStringList texts; ///< the parts of the title without markup of the engine's; never empty
    QString label; ///< the first part as a label shows it: bold and marked as the row asks for
    QString plainTitle; ///< the first part without any markup
    int gridColumn = -1; ///< -1 for none
    int gridSpan = 0; ///< -1 up to the last column, 0 for none
    int heightLines = -1; ///< -1 for none
    int stretchBehind = -1; ///< factor of a stretch that follows the row, -1 for none

    bool has(const std::bitset<256>& attribute) const { return isBitSet(row.attr, attribute); }
};

PreparedRow prepareRow(const INFO& row, const FormDefaults& defaults);

} // namespace mod_form_qt
