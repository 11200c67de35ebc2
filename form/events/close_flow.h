#pragma once

#include "form/events/form_context.h"

namespace mod_form_qt {

/// Holds off further closings of a form while one is being decided.
class ClosingGuard
{
public:
    explicit ClosingGuard(std::shared_ptr<FormContext> form)
        : m_form(std::move(form))
    {
        m_form->closing = true;
    }

    ~ClosingGuard() { m_form->closing = false; }

    Q_DISABLE_COPY_MOVE(ClosingGuard)

private:
    std::shared_ptr<FormContext> m_form;
};

/// \return  true for a main window whose closing has been decided; it then closes by itself
bool closingDecided(const QWidget* window);

/// Closes a form the way a button, Escape or the window's own button asks for: asks once, through
/// `INFO::canClose`, and ends the window if nobody refuses. While such a question runs, and once a
/// main window's closing has been decided, further ones are ignored.
///
/// A dialog has closed when this returns. A main window gets its exit code, also as the property
/// `INFO::mainWndExitCodeKeyName`, and closes from the event loop. Any other widget stays.
/// \param row     the raising row; the form's main row for what the window raises
/// \param widget  the raising widget
/// \param type    kAccept, kReject or kClose
/// \return        true if the form closes
bool closeForm(const std::shared_ptr<FormContext>& form, const INFO& row, QWidget* widget,
               CallbackType type);

} // namespace mod_form_qt
