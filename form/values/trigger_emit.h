#pragma once

#include "form/export.h"

namespace mod_form_qt {

/// What `INFO::triggerEmit` tells the handlers that run under it.
class MOD_FORM_QT_EXPORT emitHelper
{
public:
    /// True while `INFO::triggerEmit` runs: a change that leaves the value as it is calls the
    /// callbacks all the same, and buttons act without asking the user anything.
    inline static bool active = false;
};

} // namespace mod_form_qt
