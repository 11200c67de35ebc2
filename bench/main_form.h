#pragma once

#include "app/mainform.h"

#include "bench/main_form_by_hand.h"

namespace bench {

/// \return  the variables that rows are bound to, with these values
MainFormValues boundValues(const SampleValues& values);

/// Builds the program's main form into a window by the form engine.
/// \param values, map  outlive the window
void buildByEngine(QMainWindow& window, MainFormValues& values, QMap<QString, QVariant>& map);

} // namespace bench
