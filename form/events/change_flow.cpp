#include "form/events/change_flow.h"

#include "form/events/form_guard.h"
#include "form/values/exclusive_buttons.h"
#include "form/values/list_widgets.h"
#include "form/values/row_value.h"
#include "form/values/show_value.h"
#include "form/values/trigger_emit.h"
#include "form/widgets/check_combo_box.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QTextEdit>

#include <optional>

namespace mod_form_qt {

namespace {

/// Property in which the widget of a row whose value lives nowhere keeps the last one taken.
constexpr const char* lastValuePropertyKey = "mod_form_qt_last";
/// Property in which a date edit keeps the last good date.
constexpr const char* lastDatePropertyKey = "_lastDate";

/// The map entry of a widget of the caller's first holds the pointer to it.
bool isObject(const QVariant& value)
{
    return value.metaType().flags().testFlag(QMetaType::PointerToQObject);
}

QVariant lastValue(const QWidget* widget)
{
    return widget ? widget->property(lastValuePropertyKey) : QVariant();
}

void setLastValue(QWidget* widget, const QVariant& value)
{
    if (widget)
        widget->setProperty(lastValuePropertyKey, value);
}

/// \return  the previous value of a row whose value lives nowhere
QVariant lastTaken(const RowContext& row, const QWidget* widget)
{
    QVariant last = lastValue(widget);
    if (last.isValid() || row.row.eleType == E_WIDGET)
        return last;
    return INFO::getBaseValue(row.row.data);
}

// ------------------------------------------------------------------ dates

/// \return  the date that a row's value stands for, a number as a Julian day; invalid for none
QDate dateOf(const QVariant& value)
{
    const QDate date = dateOrInvalid(value);
    return date == INFO::dateInvalid ? QDate() : date;
}

/// \return  the next widget of class T behind, or before, one of the same row
template <typename T>
T* neighbour(const QMap<QString, QVariant>* map, QWidget* widget, int step)
{
    const WIDGET_INFO row = WIDGET_INFO::widgets(map, WIDGET_INFO::paramName(widget));
    const auto index = static_cast<int>(row.widgets().indexOf(QPointer<QWidget>(widget)));
    return index < 0 ? nullptr : qobject_cast<T*>(row.widgetAt(index + step).data());
}

/// \return  the check box of a date row that has one
QCheckBox* dateSwitchOf(const QMap<QString, QVariant>* map, QDateEdit* edit)
{
    auto* box = neighbour<QCheckBox>(map, edit, -1);
    return WIDGET_INFO::typeExt(box) == E_DATE ? box : nullptr;
}

void showDate(const QMap<QString, QVariant>* map, QDateEdit* edit, const QVariant& value)
{
    const QDate date = dateOf(value);
    if (QCheckBox* box = dateSwitchOf(map, edit)) {
        const QSignalBlocker silence(box);
        box->setChecked(date.isValid());
        edit->setEnabled(date.isValid());
    }
    // Where no date can be shown as absent, the last one stands for it.
    QVariant shown = date.isValid() ? QVariant(date) : edit->property(lastDatePropertyKey);
    if (date.isValid() || (dateSwitchOf(map, edit) == nullptr && shown.isValid()))
        INFO::getSetData(edit, true, true, shown);
}

void rememberDate(QDateEdit* edit, const QVariant& value)
{
    const QDate date = dateOf(value);
    if (edit && date.isValid())
        edit->setProperty(lastDatePropertyKey, date);
}

QDateEdit* dateEdit(QWidget* widget)
{
    auto* edit = qobject_cast<QDateEdit*>(widget);
    return edit && WIDGET_INFO::typeExt(edit) == E_DATE ? edit : nullptr;
}

// ------------------------------------------------------------------ inputs

QVariant shownValue(const QMap<QString, QVariant>* map, QWidget* widget)
{
    if (QDateEdit* edit = dateEdit(widget)) {
        const QCheckBox* box = dateSwitchOf(map, edit);
        if (box && !box->isChecked())
            return INFO::dateInvalid;
    }
    QVariant value;
    INFO::getSetData(widget, false, false, value);
    return value;
}

template <typename Edit>
void keepTextCursor(Edit* edit, const std::function<void()>& change)
{
    const int position = edit->textCursor().position();
    change();
    QTextCursor cursor = edit->textCursor();
    cursor.setPosition(qMin(position, edit->document()->characterCount() - 1));
    const QSignalBlocker silence(edit);
    edit->setTextCursor(cursor);
}

/// A refused keystroke must not throw the cursor to the other end of the text.
void keepCursor(QWidget* widget, const std::function<void()>& change)
{
    if (auto* line = qobject_cast<QLineEdit*>(widget)) {
        const int position = line->cursorPosition();
        change();
        const QSignalBlocker silence(line);
        line->setCursorPosition(position);
    } else if (auto* text = qobject_cast<QTextEdit*>(widget)) {
        keepTextCursor(text, change);
    } else if (auto* plain = qobject_cast<QPlainTextEdit*>(widget)) {
        keepTextCursor(plain, change);
    } else {
        change();
    }
}

void showInput(const QMap<QString, QVariant>* map, QWidget* widget, const QVariant& value)
{
    if (widget == nullptr)
        return;
    if (QDateEdit* edit = dateEdit(widget)) {
        showDate(map, edit, value);
        return;
    }
    keepCursor(widget, [map, widget, &value] {
        showValue(widget, value, map, WIDGET_INFO::paramName(widget));
    });
}

/// \param fallback  the previous value if the row's lives nowhere
ValueChange inputChange(const INFO& row, QMap<QString, QVariant>* map, QWidget* widget,
                        const QString& key, const QVariant& fallback)
{
    const RowValue stored(row, map, key);
    const QPointer<QWidget> source(widget);
    ValueChange change;
    change.widget = widget;
    change.value = shownValue(map, widget);
    change.keyless = !stored.exists();
    change.restore = stored.exists();
    change.previous = stored.exists() ? stored.read() : fallback;
    if (isObject(change.previous))
        change.previous = lastValue(widget);
    // A text or a day number is the same value as the date that it stands for.
    if (const QDate date = dateEdit(widget) ? dateOf(change.previous) : QDate(); date.isValid())
        change.previous = date;
    change.show = [map, source](const QVariant& value) { showInput(map, source, value); };
    change.store = [&row, map, key, source](const QVariant& value) {
        RowValue target(row, map, key);
        if (target.exists())
            target.write(value);
        else
            setLastValue(source, value);
        rememberDate(dateEdit(source), value);
    };
    return change;
}

// ------------------------------------------------------------------ selections

bool selectsSeveral(const RowContext& row, QWidget* widget)
{
    return isMultiSelection(row.row.eleType, row.row.attr)
        || qobject_cast<helper::CheckComboBox*>(widget) != nullptr;
}

/// \return  the items of a widget that the caller has made and filled
T_LISTDATA callersItems(QWidget* widget)
{
    T_LISTDATA list;
    auto* box = qobject_cast<QComboBox*>(widget);
    const auto* checks = qobject_cast<helper::CheckComboBox*>(widget);
    const int count = box ? box->count() : 0;
    for (int index = 0; index < count; ++index) {
        const bool selected = checks ? checks->isItemChecked(index) : index == box->currentIndex();
        list.push_back(ListItem(box->itemText(index), selected, box->itemData(index), {}));
    }
    return list;
}

void showCallersMarks(QWidget* widget, const T_LISTDATA& list)
{
    auto* box = qobject_cast<QComboBox*>(widget);
    auto* checks = qobject_cast<helper::CheckComboBox*>(widget);
    int current = -1;
    for (int index = 0; box && index < static_cast<int>(list.size()); ++index) {
        const bool selected = std::get<1>(list[static_cast<std::size_t>(index)]);
        if (checks)
            checks->setItemChecked(index, selected, false);
        else if (selected && current < 0)
            current = index;
    }
    if (box && !checks)
        box->setCurrentIndex(current);
}

/// \return  the items of a row with the marks that its widget shows
T_LISTDATA shownList(const RowContext& row, QWidget* widget, const T_LISTDATA& list)
{
    if (row.row.eleType == E_WIDGET)
        return callersItems(widget);
    return markedBy(widget, list, row.row.attr);
}

T_LISTDATA storedList(const RowContext& row, QWidget* widget)
{
    const RowValue stored(row.row, row.map());
    const QVariant last = lastValue(widget);
    const bool lives = stored.exists() && !isObject(stored.read());
    return !lives && INFO::isListData(last) ? last.value<T_LISTDATA>() : stored.readList();
}

QVariant selectionOf(const T_LISTDATA& list, bool several)
{
    if (several)
        return INFO::getSelectedListValues(list);
    return INFO::getSelectedListValue(list);
}

/// A selection before and after a change. Values alone do not tell two items with equal ones apart.
struct SelectionChange
{
    T_LISTDATA before;
    T_LISTDATA now;
    bool several = false;

    T_LISTDATA marksFor(const QVariant& selection) const
    {
        if (isSameValue(selection, selectionOf(now, several)))
            return now;
        if (isSameValue(selection, selectionOf(before, several)))
            return before;
        T_LISTDATA list = now;
        markSelection(list, selectionValues(selection), several);
        return list;
    }
};

void showSelection(const RowContext& row, QWidget* widget, const T_LISTDATA& list)
{
    if (widget == nullptr)
        return;
    const QSignalBlocker silence(widget);
    if (row.row.eleType == E_WIDGET)
        showCallersMarks(widget, list);
    else
        showMarks(widget, list, row.row.attr);
}

void storeSelection(const RowContext& row, QWidget* widget, const T_LISTDATA& list)
{
    RowValue target(row.row, row.map());
    if (target.exists())
        target.writeList(list);
    else
        setLastValue(widget, QVariant::fromValue(list));
}

} // namespace

// -------------------------------------------------------------------- the flow

ChangeOutcome offerChange(const INFO& row, const INFO& mainRow, const QPointer<QWidget>& mainWidget,
                          QMap<QString, QVariant>* map, const ValueChange& change)
{
    const QPointer<QWidget> widget(change.widget);
    const FormGuard form(mainWidget);
    const QVariant previous = change.previous;
    QVariant result = change.value;
    if (isBitSet(row.attr, A_USE_BEFORE_EVENT)) {
        const int agreed = BeforeCallBack(row, mainRow, mainWidget, widget, change.value,
                                          change.before, map, &result, &previous);
        if (!form.stands())
            return ChangeOutcome::Refused;
        if (agreed == 0) {
            if (change.restore)
                change.show(previous);
            return ChangeOutcome::Refused;
        }
        if (!isSameValue(result, change.value))
            change.show(result);
    }
    const bool differs = result != previous;
    const bool ownCallbackOnly = change.keyless && IsCallbackSet(row.callback);
    if (!differs && !change.always && !emitHelper::active && !ownCallbackOnly)
        return ChangeOutcome::Unchanged;
    if (differs || change.always)
        change.store(result);
    QVariant ignored = result;
    AfterCallBack(row, mainRow, mainWidget, widget, result, change.after, map, &ignored, &previous);
    return ChangeOutcome::Taken;
}

ChangeOutcome offerInput(const RowContext& row, QWidget* widget)
{
    return offerChange(row.row, row.mainRow(), row.mainWidget(), row.map(),
                       inputChange(row.row, row.map(), widget, QString(), lastTaken(row, widget)));
}

ChangeOutcome offerValue(const RowContext& row, QWidget* widget, const QVariant& value,
                         const std::function<void(const QVariant&)>& show)
{
    const RowValue stored(row.row, row.map());
    const QPointer<QWidget> source(widget);
    ValueChange change;
    change.widget = widget;
    change.value = value;
    change.keyless = !stored.exists();
    change.previous = stored.exists() ? stored.read() : lastTaken(row, widget);
    change.show = show;
    change.store = [&row, source](const QVariant& taken) {
        RowValue target(row.row, row.map());
        if (target.exists())
            target.write(taken);
        else
            setLastValue(source, taken);
    };
    return offerChange(row.row, row.mainRow(), row.mainWidget(), row.map(), change);
}

int takeChange(const INFO& row, const INFO& mainRow, const QPointer<QWidget>& mainWidget,
               QMap<QString, QVariant>* map, const ValueChange& change)
{
    return offerChange(row, mainRow, mainWidget, map, change) == ChangeOutcome::Taken ? 1 : 0;
}

void endEditing(QWidget* mainWidget)
{
    QWidget* const focus = mainWidget ? mainWidget->focusWidget() : nullptr;
    // Only what reports at the end of editing listens to this; an unchanged value is no change.
    if (auto* spin = qobject_cast<QAbstractSpinBox*>(focus)) {
        spin->interpretText();
        emit spin->editingFinished();
    } else if (auto* edit = qobject_cast<QLineEdit*>(focus); edit && edit->hasAcceptableInput()) {
        emit edit->editingFinished();
    }
}

int takeInputChange(const RowContext& row, QWidget* widget)
{
    if (!row.form->stands) {
        // A button that another one of its group unchecks, for instance.
        RowValue stored(row.row, row.map());
        if (stored.exists())
            stored.write(shownValue(row.map(), widget));
        return 0;
    }
    const QPointer<QAbstractButton> button = qobject_cast<QAbstractButton*>(widget);
    const bool checks = button && button->isChecked();
    if (button && !checks)
        noteReplaced(button);
    const ChangeOutcome outcome = offerInput(row, widget);
    if (outcome == ChangeOutcome::Refused && checks && button)
        undoChecked(button);
    return outcome == ChangeOutcome::Taken ? 1 : 0;
}

int takeValue(const RowContext& row, QWidget* widget, const QVariant& value,
              const std::function<void(const QVariant&)>& show)
{
    return offerValue(row, widget, value, show) == ChangeOutcome::Taken ? 1 : 0;
}

int takeSelection(const RowContext& row, QWidget* widget)
{
    SelectionChange selection;
    selection.several = selectsSeveral(row, widget);
    selection.before = storedList(row, widget);
    selection.now = shownList(row, widget, selection.before);
    const QPointer<QWidget> source(widget);
    ValueChange change;
    change.widget = widget;
    change.value = selectionOf(selection.now, selection.several);
    change.previous = selectionOf(selection.before, selection.several);
    change.always = true;
    change.show = [&row, &selection, source](const QVariant& value) {
        showSelection(row, source, selection.marksFor(value));
    };
    change.store = [&row, &selection, source](const QVariant& value) {
        storeSelection(row, source, selection.marksFor(value));
    };
    if (row.row.eleType == E_MENU_BUTTON) {
        change.before = kBeforeAction;
        change.after = kAfterAction;
    }
    return takeChange(row.row, row.mainRow(), row.mainWidget(), row.map(), change);
}

int takeDateSwitch(const RowContext& row, QCheckBox* box)
{
    auto* edit = neighbour<QDateEdit>(row.map(), box, 1);
    if (edit == nullptr)
        return 0;
    const bool on = box->isChecked();
    edit->setEnabled(on);
    QDate date = INFO::dateInvalid;
    if (on) {
        date = edit->property(lastDatePropertyKey).toDate();
        if (!date.isValid())
            date = QDate::currentDate();
        showDate(row.map(), edit, date);
    }
    // The date edit alone is blocked while code sets the date of the row.
    std::optional<INFO::EVENTBLOCK> block;
    if (INFO::eventBlocked(edit))
        block.emplace(box);
    ValueChange change = inputChange(row.row, row.map(), edit, QString(), lastTaken(row, edit));
    change.widget = box;
    change.value = date;
    change.restore = true;
    return takeChange(row.row, row.mainRow(), row.mainWidget(), row.map(), change);
}

void rememberShown(const RowContext& row, QWidget* widget)
{
    const bool lives = RowValue(row.row, row.map()).exists();
    // Whether a date is there is also up to the row's check box, which may not be known yet.
    if (widget == nullptr || (lives && row.row.eleType != E_WIDGET) || row.row.eleType == E_DATE)
        return;
    if (isListWidget(widget))
        setLastValue(widget, QVariant::fromValue(shownList(row, widget, storedList(row, widget))));
    else
        setLastValue(widget, shownValue(row.map(), widget));
}

int INFO::handleChangedValues(const INFO& row, const INFO& mainRow, QPointer<QWidget> mainWidget,
                              QWidget* widget, const QVariant& value, QMap<QString, QVariant>* map,
                              const QString& key)
{
    return takeChange(row, mainRow, mainWidget, map, inputChange(row, map, widget, key, value));
}

} // namespace mod_form_qt
