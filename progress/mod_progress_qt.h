#pragma once

/// \file
/// Everything a user of the progress framework needs.

/// \namespace mod_progress_qt
/// The progress framework: work on a thread or in a loop, shown in a dialog or a status bar.

#include "progress/controller.h"
#include "progress/create_modal.h"
#include "progress/custom_progress_bar.h"
#include "progress/progress_dialog.h"
#include "progress/status_update.h"
#include "progress/translation.h"
#include "progress/worker.h"
