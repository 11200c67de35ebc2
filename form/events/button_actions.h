#pragma once

#include "form/events/form_context.h"

class QPushButton;

namespace mod_form_qt {

/// What a click on the button of a row does, callbacks included.
void runButtonAction(const RowHandle& row, QPushButton* button);

/// Draws the swatch of a colour button: an icon as high as the button's font.
void showColor(QPushButton* button, const QVariant& color);

/// Writes the family and point size of a font on its button, in that font.
void showFont(QPushButton* button, const QVariant& font);

} // namespace mod_form_qt
