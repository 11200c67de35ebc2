#pragma once

#include "form/export.h"

class QString;
class QWidget;

namespace mod_form_qt::helper {

/// Writes what decides about a widget's look and size to the debug log, one line an entry.
/// \param label   heads the report
/// \param widget  may be null
MOD_FORM_QT_EXPORT void DumpWidgetDebug(const QString& label, QWidget* widget);

} // namespace mod_form_qt::helper
