#pragma once

#include "form/events/form_context.h"
#include "form/model/info_option.h"

#include <QComboBox>
#include <QPushButton>

namespace mod_form_qt {

/// Lets the user keep several named configurations of a form in one group of its file: fills the
/// list of names, switches, adds and deletes. Every step works on the file at once. Without a file
/// or a group the list holds the first name only, and nothing reads or writes.
/// \param form    the form whose values are switched
/// \param option  file, group, first name and whether changes are saved without a question
/// \param list    the names; also owns what is connected here
void setUpConfigSelector(const std::shared_ptr<FormContext>& form, const INFO::Option& option,
                         QComboBox* list, QPushButton* add, QPushButton* remove);

} // namespace mod_form_qt
