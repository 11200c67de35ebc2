#pragma once

#include "progress/export.h"

#include <QLocale>

namespace mod_progress_qt {

/// Gives the application the framework's texts in another language. They are English until a
/// program calls this, once it has its application object and before it opens a dialog: what is
/// shown already stays as it is. GUI thread only.
/// \param locale  the first of its languages that the framework speaks is taken; a program that is
///                to follow the desktop passes `QLocale::system()`
/// \return        true if it speaks one of them, English among them; otherwise the texts are
///                English. What an earlier call has installed is taken back in either case
MOD_PROGRESS_QT_EXPORT bool installTranslation(const QLocale& locale);

} // namespace mod_progress_qt
