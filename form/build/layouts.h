#pragma once

#include "form/rows/build_context.h"

class QBoxLayout;

namespace mod_form_qt {

// How something gets into the innermost open layout, by the layout's class. All advance the current
// column of a grid, and have no effect once every layout has been closed.

/// \param stretch    stretch factor, for boxes
/// \param alignment  0 fills the cell
/// \param span       columns of a grid: 0 counts as 1, below 0 covers all up to the last
void addWidgetToLayout(QWidget* widget, int stretch, Qt::Alignment alignment, int gridColumn,
                       int span, BuildContext& context);
void addLayoutToLayout(QLayout* layout, int stretch, Qt::Alignment alignment, int gridColumn,
                       int span, BuildContext& context);
/// Adds a spacer; the layout, or nobody, owns it.
void addItemToLayout(QSpacerItem* item, const PreparedRow& row, BuildContext& context);

/// Adds the stretch that a row wants behind it: an item of a box, the stretch of the last used
/// column of a grid.
void addStretchBehind(int factor, BuildContext& context);

} // namespace mod_form_qt
