#pragma once

#include "form/build/prepare_row.h"

class QPushButton;
class QWidget;

namespace mod_form_qt {

/// Makes the push button of a row: bold or the default button where the row asks for it.
QPushButton* makePushButton(const QString& text, const PreparedRow& row, QWidget* parent);

} // namespace mod_form_qt
