#pragma once

/// \file
/// Everything a user of the form engine needs.

/// \namespace mod_form_qt
/// The form engine: rows, which describe a form, and what builds and runs it.

/// \namespace mod_form_qt::helper
/// The widgets and windows of the engine's own that forms are made of.

#include "form/dialog/dialog_base.h"
#include "form/dialog/password_dialogs.h"
#include "form/events/event_filter.h"
#include "form/events/validator.h"
#include "form/menus/menu_entries.h"
#include "form/menus/menu_search.h"
#include "form/menus/tree_menu.h"
#include "form/model/attributes.h"
#include "form/model/callback.h"
#include "form/model/info.h"
#include "form/model/info_option.h"
#include "form/model/list_data.h"
#include "form/model/map_key_type.h"
#include "form/model/rowtypes.h"
#include "form/model/widget_info.h"
#include "form/values/data.h"
#include "form/values/snapshot.h"
#include "form/values/trigger_emit.h"
#include "form/widgets/check_combo_box.h"
#include "form/widgets/dump_widget.h"
#include "form/widgets/flow_layout.h"
#include "form/widgets/focus_wheel_combo_box.h"
#include "form/widgets/helper_windows.h"
#include "form/widgets/image_widget.h"
#include "form/widgets/path_chars.h"
#include "form/widgets/qcheck_menu.h"
#include "form/widgets/wheel_guard.h"
#include "form/widgets/widget_attr.h"
