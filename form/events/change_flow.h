#pragma once

#include "form/events/form_context.h"

#include <functional>

class QCheckBox;
class QDateEdit;

namespace mod_form_qt {

/// What has become of a change.
enum class ChangeOutcome {
    Refused, ///< a callback refused it, or the form has gone
    Unchanged, ///< it was none
    Taken
};

/// A change that a widget has made and that is to be taken or refused.
struct ValueChange
{
    QWidget* widget = nullptr; ///< the widget that changed
    QVariant value; ///< what it shows now
    QVariant previous; ///< what it showed before
    std::function<void(const QVariant&)> show; ///< puts another value into the widget, silently
    std::function<void(const QVariant&)> store; ///< takes the value; not called for an equal one
    bool always = false; ///< callbacks run and the value is stored even if it is equal
    bool keyless = false; ///< the value lives nowhere; a callback of the row still gets to know it
    bool restore = true; ///< a refusal shows the previous value again
    CallbackType before = kBeforeDataChanged;
    CallbackType after = kAfterDataChanged;
};

/// Takes what is still being edited: nothing ends the editing of the field that has the focus when
/// a button is pressed by its shortcut or from code.
void endEditing(QWidget* mainWidget);

/// Asks the callbacks, stores, tells the callbacks.
ChangeOutcome offerChange(const INFO& row, const INFO& mainRow, const QPointer<QWidget>& mainWidget,
                          QMap<QString, QVariant>* map, const ValueChange& change);

/// Offers the change of an input whose value `INFO::getSetData` reads.
ChangeOutcome offerInput(const RowContext& row, QWidget* widget);

/// Offers a value that is not read from the widget: a colour, a path, a group's state.
/// \param show  puts a value into the widget, silently
ChangeOutcome offerValue(const RowContext& row, QWidget* widget, const QVariant& value,
                         const std::function<void(const QVariant&)>& show);

// As above.
// \return  0 if the change was refused, and the previous value is shown again, or is none

int takeChange(const INFO& row, const INFO& mainRow, const QPointer<QWidget>& mainWidget,
               QMap<QString, QVariant>* map, const ValueChange& change);
int takeInputChange(const RowContext& row, QWidget* widget);
int takeValue(const RowContext& row, QWidget* widget, const QVariant& value,
              const std::function<void(const QVariant&)>& show);

/// Takes the present selection of a list widget (combo box, check combo box, list, menu button)
/// into the row's list data. The callbacks get the selected values: a list if several may be
/// selected, otherwise the one value. Those of a menu button get it as an action.
int takeSelection(const RowContext& row, QWidget* widget);

/// Takes the change of the check box of a date row: unchecked stands for no date, checked brings
/// back the last good one.
int takeDateSwitch(const RowContext& row, QCheckBox* box);

/// Notes what a widget shows when it is wired, as the previous value of its first change. Only
/// for rows whose value does not live anywhere yet.
void rememberShown(const RowContext& row, QWidget* widget);

} // namespace mod_form_qt
