#pragma once

#include "progress/controller.h"
#include "progress/progress_dialog.h"

namespace mod_progress_qt {

template <typename Worker>
std::pair<bool, ProgressDialog::Pointer>
ProgressDialog::createModal(QWidget* parent, const options& opts, const std::any& data,
                            std::function<int(std::type_identity_t<Worker>*)> work,
                            const WidgetAndLayout* before, const WidgetAndLayout* after)
{
    Pointer dialog = prepareModal(parent, opts, before, after);
    const auto [controller, worker, thread] = Controller::Create<Worker>(data, std::move(work));
    const bool completed = runModal(dialog, controller, worker, thread);
    return {completed, dialog};
}

} // namespace mod_progress_qt
