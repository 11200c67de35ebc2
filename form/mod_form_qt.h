#pragma once

/// Everything a user of the form engine needs.

#include "form/model/info.h"
#include "form/model/list_data.h"
