#pragma once

#include "form/model/info.h"

#include <functional>

namespace gallery {

/// Gets each call of a callback.
/// \param ofRow   true: the row's own callback, false: the form's
/// \param answer  what the callback returned, 0 for a refusal
using Observer =
    std::function<void(const mod_form_qt::CallbackContext& ctx, bool ofRow, int answer)>;

/// \return  a callback that does what `callback` does, and tells the observer
mod_form_qt::Callback observed(const mod_form_qt::Callback& callback, bool ofRow,
                               const Observer& observer);

/// Puts the callbacks of rows under observation. Rows without one stay as they are.
QList<mod_form_qt::INFO> observed(QList<mod_form_qt::INFO> rows, const Observer& observer);

} // namespace gallery
