#pragma once

#include "form/model/info.h"

#include <QLocale>

namespace mod_form_qt {

/// The text of a number in a line edit: whole numbers as their digits, others with the locale's
/// decimal point and up to `precision` decimals, none of them with group separators, so that it can
/// be typed on. A text is taken as it is.
QString numberText(const QVariant& value, const QLocale& locale, int precision);

} // namespace mod_form_qt
