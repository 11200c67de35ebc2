#pragma once

/// Everything a user of the progress framework needs.

#include "progress/controller.h"
#include "progress/create_modal.h"
#include "progress/custom_progress_bar.h"
#include "progress/progress_dialog.h"
#include "progress/status_update.h"
#include "progress/worker.h"
