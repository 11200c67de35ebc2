#pragma once

#include "form/export.h"
#include "form/model/info.h"

#include <memory>

class QCloseEvent;
class QKeyEvent;

namespace mod_form_qt {

struct FormContext;

/// Installed on the main widget of a form: passes status tips to the form's status bars, lets
/// Escape and the closing of the window ask the form first, and reports activation and the end.
class MOD_FORM_QT_EXPORT INFO::UserEventFilter : public QObject
{
public:
    /// Lets everything pass until a form is set.
    /// \param parent  owner, usually the main widget
    explicit UserEventFilter(QObject* parent);

    /// \param saveKeys  whether only certain keys are saved, and which
    /// \param save      has no effect: what is saved follows from how the form ends
    void setEventData(QMap<QString, QVariant>* map, const std::pair<bool, QSet<QString>>& saveKeys,
                      const INFO& mainRow, QWidget* mainWidget, bool save, MainFlags flags);
    /// As above, for a form whose handlers share a context.
    void setForm(const std::shared_ptr<FormContext>& form);

    /// \return  true for what the form has taken: status tips, Escape, a closing that it refuses
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    bool passStatusTip(const QString& tip) const;
    bool takesKey(const QKeyEvent& key) const;
    bool filterClose(QCloseEvent* event);
    bool hasEnded() const;
    void setActive(bool active);
    void cleanUp();
    void tell(CallbackType type) const;

    std::shared_ptr<FormContext> m_form;
    bool m_active = false;
    bool m_closed = false; // the window's closing has been let through
    bool m_cleanedUp = false; // kCleanup has been raised
};

} // namespace mod_form_qt
