#pragma once

#include "form/rows/build_context.h"

namespace mod_form_qt {

/// Gives the widgets of a row their properties, names and place, wires them and records them in the
/// form data map.
void placeRow(const PreparedRow& row, BuiltRow& built, BuildContext& context);

} // namespace mod_form_qt
