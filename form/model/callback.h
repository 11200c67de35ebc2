#pragma once

#include "form/export.h"

#include <QMap>
#include <QPointer>
#include <QString>
#include <QVariant>
#include <QWidget>

#include <functional>
#include <variant>

namespace mod_form_qt {

class INFO;

/// What a form reports to its callbacks.
enum CallbackType {
    kInit = 0, ///< the form has been built
    kAccept = 1, ///< an accept is asked for
    kReject = 2, ///< a reject is asked for
    kClose = 3, ///< the window is being closed
    kBeforeDataChanged = 4, ///< a value is about to be taken
    kAfterDataChanged = 5, ///< a value was taken
    kBeforeAction = 6, ///< a button or action is about to act
    kAfterAction = 7, ///< a button or action has acted
    kValidate = 8, ///< a typed text is put before the callbacks
    kTimer = 9, ///< a timer of the form fired
    kSetActive = 10, ///< the window or tab page has become the active one
    kKillActive = 11, ///< the window or tab page is no longer the active one
    kCleanup = 12 ///< the form is going away
};

/// The names of the kinds, for messages and logs.
MOD_FORM_QT_EXPORT inline const QMap<CallbackType, QString> callbackTypeNames = {
    {kInit, QStringLiteral("kInit")},
    {kAccept, QStringLiteral("kAccept")},
    {kReject, QStringLiteral("kReject")},
    {kClose, QStringLiteral("kClose")},
    {kBeforeDataChanged, QStringLiteral("kBeforeDataChanged")},
    {kAfterDataChanged, QStringLiteral("kAfterDataChanged")},
    {kBeforeAction, QStringLiteral("kBeforeAction")},
    {kAfterAction, QStringLiteral("kAfterAction")},
    {kValidate, QStringLiteral("kValidate")},
    {kTimer, QStringLiteral("kTimer")},
    {kSetActive, QStringLiteral("kSetActive")},
    {kKillActive, QStringLiteral("kKillActive")},
    {kCleanup, QStringLiteral("kCleanup")},
};

/// One event of a form. Valid while the callback runs.
struct MOD_FORM_QT_EXPORT CallbackContext
{
    QPointer<QWidget> mainWidget; ///< the window, or the widget that holds the form
    QPointer<QWidget> widget; ///< the widget that raised the event
    QVariant value; ///< the row's current value or the action's data
    CallbackType type = kInit; ///< what has happened
    const INFO& row; ///< the row that raised the event
    QMap<QString, QVariant>* map = nullptr; ///< the form data map
    QVariant* result = nullptr; ///< where a callback may put another value; may be null
    const QVariant* previous = nullptr; ///< the value before the change; may be null
};

/// A callback with the members of `CallbackContext` as arguments. 0 refuses.
using LegacyCallback =
    std::function<int(const QPointer<QWidget>& mainWidget, const QPointer<QWidget>& widget,
                      const QVariant& value, CallbackType type, const INFO& row,
                      QMap<QString, QVariant>* map, QVariant* result, const QVariant* previous)>;

/// A callback with one argument. 0 refuses.
using ContextCallback = std::function<int(const CallbackContext&)>;

/// Either kind of callback, or none.
using Callback = std::variant<std::monostate, LegacyCallback, ContextCallback>;

/// \return  true if there is something to call
MOD_FORM_QT_EXPORT bool IsCallbackSet(const Callback& cb);

/// Calls a callback.
/// \param result    where the callback may put another value; may be null
/// \param previous  the value before the change; may be null
/// \return          what the callback returned, 0 for a refusal; 1 if none is set
MOD_FORM_QT_EXPORT int ExecCallBack(const Callback& cb, const QPointer<QWidget>& mainWidget,
                                    const QPointer<QWidget>& widget, const QVariant& value,
                                    CallbackType type, const INFO& row,
                                    QMap<QString, QVariant>* map, QVariant* result,
                                    const QVariant* previous);

/// Asks the row's callback and, if that agrees, the main row's.
/// \return  0 if one of them refuses, 1 otherwise; 1 without a call if the widget's events are
///          blocked
MOD_FORM_QT_EXPORT int BeforeCallBack(const INFO& row, const INFO& mainRow,
                                      QPointer<QWidget> mainWidget, QWidget* widget,
                                      const QVariant& value, CallbackType type,
                                      QMap<QString, QVariant>* map, QVariant* result,
                                      const QVariant* previous);

/// Tells the row's callback and then the main row's. No effect if the widget's events are blocked.
MOD_FORM_QT_EXPORT void AfterCallBack(const INFO& row, const INFO& mainRow,
                                      QPointer<QWidget> mainWidget, QWidget* widget,
                                      const QVariant& value, CallbackType type,
                                      QMap<QString, QVariant>* map, QVariant* result,
                                      const QVariant* previous);

} // namespace mod_form_qt
