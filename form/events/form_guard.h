#pragma once

#include "form/events/form_context.h"

namespace mod_form_qt {

/// Tells, after a callback or a dialog has run, whether the form it ran for still stands.
class FormGuard
{
public:
    explicit FormGuard(const QPointer<QWidget>& mainWidget)
        : m_mainWidget(mainWidget)
        , m_armed(formArmed(mainWidget))
        , m_hadMainWidget(mainWidget != nullptr)
    {
    }

    bool stands() const
    {
        return (!m_hadMainWidget || m_mainWidget) && (m_armed == nullptr || *m_armed);
    }

private:
    QPointer<QWidget> m_mainWidget;
    std::shared_ptr<bool> m_armed;
    bool m_hadMainWidget;
};

} // namespace mod_form_qt
