#pragma once

#include <QMessageBox>

namespace mod_form_qt {

/// Shows a message and waits for the answer. Unlike the ready-made ones of QMessageBox it may be
/// shown by a form that dies meanwhile: the box then goes with it.
/// \param text  plain; what the user typed is shown as typed
/// \return      the button; NoButton if the box was closed without one or went with its parent
QMessageBox::StandardButton askUser(QMessageBox::Icon icon, QWidget* parent, const QString& title,
                                    const QString& text, QMessageBox::StandardButtons buttons);

} // namespace mod_form_qt
