#pragma once

#include "form/rows/build_context.h"

class QLineEdit;

namespace mod_form_qt {

/// Limits what can be typed into the line edit of a row: its length, a pattern, or else what the
/// callbacks let pass.
void limitInput(QLineEdit* edit, const PreparedRow& row, const BuildContext& context);

} // namespace mod_form_qt
