#pragma once

#include "form/export.h"
#include "form/model/info.h"

#include <memory>

namespace mod_form_qt {

/// What all handlers of one form share.
struct MOD_FORM_QT_EXPORT FormContext
{
    INFO mainRow; ///< title, options and callback of the form
    QPointer<QWidget> mainWidget; ///< null for a form that is laid out into nothing
    QMap<QString, QVariant>* map = nullptr; ///< the form data map
    QSharedPointer<QMap<QString, QVariant>> owner; ///< keeps a map alive that the engine made
    INFO::MainFlags flags; ///< how the form is built and run
    std::pair<bool, QSet<QString>> saveKeys; ///< whether only certain keys are saved, and which
    std::shared_ptr<bool> armed; ///< see `formArmed`
    bool closing = false; ///< a closing question or callback is running
    bool stands = true; ///< false while the form is being built: changes are stored, nobody is told
    QPointer<QObject> life; ///< goes with the form, even if its main widget stays

    /// \return  false once the form is being taken down: neither map nor callbacks may then be
    ///          touched
    bool live() const { return armed == nullptr || *armed; }
};

/// A row and the form it is in, shared by the handlers of the row's widgets.
struct MOD_FORM_QT_EXPORT RowContext
{
    std::shared_ptr<FormContext> form; ///< never null
    INFO row; ///< the row, as it was built

    /// `FormContext::mainRow` of the form.
    const INFO& mainRow() const { return form->mainRow; }

    /// `FormContext::mainWidget` of the form.
    const QPointer<QWidget>& mainWidget() const { return form->mainWidget; }

    /// `FormContext::map` of the form.
    QMap<QString, QVariant>* map() const { return form->map; }

    /// `FormContext::live` of the form.
    bool live() const { return form->live(); }
};

/// How the handlers of one row hold its context.
using RowHandle = std::shared_ptr<const RowContext>;

/// \return  the flag that all handlers of the forms on a main widget test; it is true until
///          `disarmForm`. Null for a null widget
MOD_FORM_QT_EXPORT std::shared_ptr<bool> formArmed(QWidget* mainWidget);

/// Ends the handlers of the forms on a main widget. To be called by the destructor of a window
/// class: children that die after it may still send signals, when map and callbacks are gone.
MOD_FORM_QT_EXPORT void disarmForm(QWidget* mainWidget);

} // namespace mod_form_qt
