#pragma once

#include "form/model/info.h"

namespace mod_form_qt {

/// Lists a menu and, depth first, everything in it, and writes it to the debug log.
/// \param level  depth of `menu`, 0 for a top-level one
/// \param out    gets the entries appended; null lists to the log only
void showTree(QMenu* menu, int level, std::vector<MenuEntry>* out);

} // namespace mod_form_qt
