#pragma once

#include "form/export.h"

class QString;

namespace mod_form_qt {

/// Removes what a path or file name must not hold.
/// \param text        in/out
/// \param isFileName  false: a path; backslashes become slashes, and slashes and colons stay
/// \return            the number of characters removed
MOD_FORM_QT_EXPORT int removeInvalidPathChars(QString& text, bool isFileName);

} // namespace mod_form_qt
