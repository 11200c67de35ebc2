#include "form/events/event_filter.h"

#include "form/build/run_window.h"
#include "form/events/close_flow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QStatusBar>
#include <QStatusTipEvent>

namespace mod_form_qt {

INFO::UserEventFilter::UserEventFilter(QObject* parent)
    : QObject(parent)
{
}

void INFO::UserEventFilter::setEventData(QMap<QString, QVariant>* map,
                                         const std::pair<bool, QSet<QString>>& saveKeys,
                                         const INFO& mainRow, QWidget* mainWidget, bool,
                                         MainFlags flags)
{
    auto form = std::make_shared<FormContext>();
    form->mainRow = mainRow;
    form->mainWidget = mainWidget;
    form->map = map;
    form->flags = flags;
    form->saveKeys = saveKeys;
    form->armed = formArmed(mainWidget);
    setForm(form);
}

void INFO::UserEventFilter::setForm(const std::shared_ptr<FormContext>& form)
{
    m_form = form;
    if (const auto* dialog = form ? qobject_cast<QDialog*>(form->mainWidget) : nullptr)
        connect(dialog, &QDialog::finished, this, &UserEventFilter::cleanUp, Qt::UniqueConnection);
}

bool INFO::UserEventFilter::eventFilter(QObject* object, QEvent* event)
{
    // Callbacks may delete the window and this filter with it.
    const std::shared_ptr<FormContext> form = m_form;
    if (!form || object != form->mainWidget || !form->live())
        return QObject::eventFilter(object, event);
    switch (event->type()) {
    case QEvent::StatusTip:
        if (passStatusTip(static_cast<QStatusTipEvent*>(event)->tip()))
            return true;
        break;
    case QEvent::KeyPress:
        if (takesKey(*static_cast<QKeyEvent*>(event))) {
            // Taken in any case: a dialog's own class would close it without asking.
            if (QApplication::activePopupWidget() == nullptr)
                closeForm(form, form->mainRow, form->mainWidget, kReject);
            return true;
        }
        break;
    case QEvent::Close:
        return filterClose(static_cast<QCloseEvent*>(event));
    case QEvent::Hide:
        if (!event->spontaneous() && hasEnded())
            cleanUp();
        return false;
    case QEvent::DeferredDelete:
        cleanUp();
        return false;
    case QEvent::WindowActivate:
        setActive(true);
        return false;
    case QEvent::WindowDeactivate:
        setActive(false);
        return false;
    default:
        break;
    }
    return QObject::eventFilter(object, event);
}

/// \return  true if a status bar of the form shows the tip; the window's own must not show it over
///          the label
bool INFO::UserEventFilter::passStatusTip(const QString& tip) const
{
    if (qobject_cast<QDialog*>(m_form->mainWidget))
        return false;
    bool shown = false;
    const QList<QPointer<QStatusBar>> bars = statusBars(m_form->map);
    for (const QPointer<QStatusBar>& bar : bars) {
        if (!bar)
            continue;
        shown = true;
        if (auto* label = bar->findChild<QLabel*>())
            label->setText(tip);
        else
            bar->showMessage(tip);
    }
    return shown;
}

bool INFO::UserEventFilter::takesKey(const QKeyEvent& key) const
{
    return key.key() == Qt::Key_Escape
        && (qobject_cast<QDialog*>(m_form->mainWidget)
            || qobject_cast<QMainWindow*>(m_form->mainWidget));
}

bool INFO::UserEventFilter::filterClose(QCloseEvent* event)
{
    const std::shared_ptr<FormContext> form = m_form;
    const QPointer<QWidget> window = form->mainWidget;
    const bool isDialog = qobject_cast<QDialog*>(window) != nullptr;
    if (!isDialog && !qobject_cast<QMainWindow*>(window))
        return false;
    if (isDialog ? !window->isVisible() : closingDecided(window)) {
        m_closed = true;
        return false;
    }
    if (isDialog && !form->closing) {
        const ClosingGuard guard(form);
        if (canClose(window, window, kClose, form->mainRow, form->mainRow, form->map,
                     form->saveKeys)) {
            // The dialog's class does the rest; if a callback has deleted it, nobody does.
            return window == nullptr;
        }
    } else if (!isDialog) {
        closeForm(form, form->mainRow, window, kClose);
    }
    event->ignore();
    return true;
}

/// \return  true if the window has been hidden for good
bool INFO::UserEventFilter::hasEnded() const
{
    if (qobject_cast<QMainWindow*>(m_form->mainWidget))
        return m_closed;
    // Nothing but this event tells that hide() has ended a running dialog.
    const auto* dialog = qobject_cast<QDialog*>(m_form->mainWidget);
    return dialog && isExecuting(dialog);
}

void INFO::UserEventFilter::setActive(bool active)
{
    if (m_active == active || m_cleanedUp)
        return;
    m_active = active;
    tell(active ? kSetActive : kKillActive);
}

void INFO::UserEventFilter::cleanUp()
{
    if (m_cleanedUp || !m_form || !m_form->live())
        return;
    const QPointer<UserEventFilter> guard(this);
    // The window system reports it only after the window has gone.
    setActive(false);
    if (!guard || m_cleanedUp)
        return;
    m_cleanedUp = true;
    tell(kCleanup);
}

void INFO::UserEventFilter::tell(CallbackType type) const
{
    const std::shared_ptr<FormContext> form = m_form;
    ExecCallBack(form->mainRow.callback, form->mainWidget, form->mainWidget, QVariant(), type,
                 form->mainRow, form->map, nullptr, nullptr);
}

} // namespace mod_form_qt
