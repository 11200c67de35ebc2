#pragma once

#include "form/model/info.h"

#include <memory>

namespace mod_form_qt {

/// What all handlers of one form share.
struct FormContext
{
    INFO mainRow;
    QPointer<QWidget> mainWidget; ///< null for a form that is laid out into nothing
    QMap<QString, QVariant>* map = nullptr;
    QSharedPointer<QMap<QString, QVariant>> owner; ///< keeps a map alive that the engine made
    INFO::MainFlags flags;
    std::pair<bool, QSet<QString>> saveKeys;
    std::shared_ptr<bool> armed; ///< see `formArmed`
    bool closing = false; ///< a closing question or callback is running
    bool stands = true; ///< false while the form is being built: changes are stored, nobody is told
    QPointer<QObject> life; ///< goes with the form, even if its main widget stays

    /// \return  false once the form is being taken down: neither map nor callbacks may then be
    ///          touched
    bool live() const { return armed == nullptr || *armed; }
};

/// A row and the form it is in, shared by the handlers of the row's widgets.
struct RowContext
{
    std::shared_ptr<FormContext> form;
    INFO row;

    const INFO& mainRow() const { return form->mainRow; }

    const QPointer<QWidget>& mainWidget() const { return form->mainWidget; }

    QMap<QString, QVariant>* map() const { return form->map; }

    bool live() const { return form->live(); }
};

using RowHandle = std::shared_ptr<const RowContext>;

/// \return  the flag that all handlers of the forms on a main widget test; it is true until
///          `disarmForm`. Null for a null widget
std::shared_ptr<bool> formArmed(QWidget* mainWidget);

/// Ends the handlers of the forms on a main widget. To be called by the destructor of a window
/// class: children that die after it may still send signals, when map and callbacks are gone.
void disarmForm(QWidget* mainWidget);

} // namespace mod_form_qt
