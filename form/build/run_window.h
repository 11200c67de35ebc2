#pragma once

#include "form/events/form_context.h"

class QDialog;

namespace mod_form_qt {

/// \return  the flags with only the first of `MF_EXEC`, `MF_OPEN`, `MF_SHOW`
INFO::MainFlags withOneRunMode(INFO::MainFlags flags);

/// Prepares the window of a form: on top of others and, if it is to run, deleted when closed or
/// shared with the caller. The placement on the screen follows once the event loop runs; it is for
/// every window, also one that the form was only built for.
/// \param result  in/out: gets the shared window
void prepareWindow(const FormContext& form, INFO::Result& result);

/// Shows a window, or runs it until it closes. A dialog that is not shared has then been deleted,
/// and a main window that is not shared either. No effect without a run mode and for other widgets.
/// \return  1 for a window that is only shown; the result of a dialog, or the exit code of a main
///          window, that has run
int runWindow(const FormContext& form);

/// Runs a dialog until it closes.
/// \return  the result of the dialog
int execDialog(QDialog* dialog);

/// \return  true while `execDialog` runs the dialog
bool isExecuting(const QDialog* dialog);

/// What is left to do after a run that was accepted: checked actions of menus go into the map, and
/// pointer rows get what the map holds under their keys.
/// \param rows  the form's rows as they were bound
void keepAccepted(QMap<QString, QVariant>* map, const QList<INFO>& rows,
                  const std::vector<std::pair<QString, QPointer<QAction>>>& checkableActions);

} // namespace mod_form_qt
