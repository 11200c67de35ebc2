#include "form/values/trigger_emit.h"

#include "form/model/info.h"
#include "form/values/list_widgets.h"
#include "form/widgets/check_combo_box.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTextEdit>

namespace mod_form_qt {

namespace {

/// Sets `emitHelper::active` for a scope, inside which a handler may raise further changes.
class ActiveScope
{
public:
    ActiveScope()
        : m_outer(emitHelper::active)
    {
        emitHelper::active = true;
    }

    ~ActiveScope() { emitHelper::active = m_outer; }

    Q_DISABLE_COPY_MOVE(ActiveScope)

private:
    bool m_outer;
};

bool isAbsent(QDateTimeEdit* edit)
{
    if (!qobject_cast<const QDateEdit*>(edit))
        return !edit->dateTime().isValid();
    // With a check box before it, the edit of an absent date shows the last one, disabled.
    return !edit->date().isValid() || edit->date() >= INFO::dateInvalid
        || (edit->testAttribute(Qt::WA_ForceDisabled)
            && WIDGET_INFO::isBitSet(edit, A_INVALID_CHECKBOX));
}

void emitSpinBox(QAbstractSpinBox* box, bool onlyValid, bool immediate)
{
    auto* dateTime = qobject_cast<QDateTimeEdit*>(box);
    if (onlyValid && dateTime && isAbsent(dateTime))
        return;
    if (!immediate)
        emit box->editingFinished();
    else if (auto* number = qobject_cast<QSpinBox*>(box))
        emit number->valueChanged(number->value());
    else if (auto* decimal = qobject_cast<QDoubleSpinBox*>(box))
        emit decimal->valueChanged(decimal->value());
    else if (auto* date = qobject_cast<QDateEdit*>(box))
        emit date->dateChanged(date->date());
    else if (dateTime)
        emit dateTime->dateTimeChanged(dateTime->dateTime());
}

bool emitText(QObject* object)
{
    if (auto* line = qobject_cast<QLineEdit*>(object)) {
        if (WIDGET_INFO::isBitSet(line, A_LINEEDIT_UPDATE_ON_FINISH))
            emit line->editingFinished();
        else
            emit line->textChanged(line->text());
    } else if (auto* text = qobject_cast<QTextEdit*>(object)) {
        emit text->textChanged();
    } else if (auto* plain = qobject_cast<QPlainTextEdit*>(object)) {
        emit plain->textChanged();
    } else {
        return false;
    }
    return true;
}

bool emitList(QObject* object, bool onlyValid)
{
    if (auto* checks = qobject_cast<helper::CheckComboBox*>(object)) {
        emit checks->checkedChanged();
    } else if (auto* combo = qobject_cast<QComboBox*>(object)) {
        if (!onlyValid || combo->currentIndex() >= 0)
            emit combo->currentIndexChanged(combo->currentIndex());
    } else if (auto* list = qobject_cast<QListWidget*>(object)) {
        const QPointer<QListWidget> guard = list;
        if (list->currentItem())
            emit list->itemChanged(list->currentItem());
        if (guard && !WIDGET_INFO::isBitSet(list, A_CHECKBOX))
            emit list->itemSelectionChanged();
    } else {
        return false;
    }
    return true;
}

/// Buttons that only do something have no value to raise.
bool isValueButton(int eleType)
{
    switch (eleType) {
    case E_OPENURL_BUTTON:
    case E_COLOR_BUTTON:
    case E_FONT_BUTTON:
    case E_BROWSE_FOLDER_BUTTON:
    case E_BROWSE_FILE_OPEN_BUTTON:
    case E_BROWSE_FILE_SAVE_BUTTON:
        return true;
    default:
        return false;
    }
}

QAction* itemToRaise(const QMenu* menu)
{
    QAction* item = nullptr;
    for (QAction* action : menu->actions()) {
        if (!action->isCheckable())
            continue;
        if (action->isChecked())
            return action;
        if (item == nullptr)
            item = action;
    }
    return item;
}

bool emitButton(QObject* object)
{
    if (auto* check = qobject_cast<QCheckBox*>(object)) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 7, 0)
        emit check->checkStateChanged(check->checkState());
#else
        emit check->stateChanged(check->checkState());
#endif
    } else if (auto* radio = qobject_cast<QRadioButton*>(object)) {
        emit radio->toggled(radio->isChecked());
    } else if (auto* group = qobject_cast<QGroupBox*>(object)) {
        if (group->isCheckable())
            emit group->clicked(group->isChecked());
    } else if (auto* button = qobject_cast<QPushButton*>(object)) {
        if (isValueButton(WIDGET_INFO::typeExt(button)))
            emit button->clicked(false);
        else if (QAction* item = isListWidget(button) ? itemToRaise(button->menu()) : nullptr)
            emit button->menu()->triggered(item);
    } else {
        return false;
    }
    return true;
}

} // namespace

void INFO::triggerEmit(QObject* object, bool onlyValid, bool immediate)
{
    if (object == nullptr)
        return;
    const ActiveScope active;
    if (auto* tabs = qobject_cast<QTabWidget*>(object)) {
        if (tabs->currentIndex() >= 0)
            emit tabs->currentChanged(tabs->currentIndex());
    } else if (auto* spin = qobject_cast<QAbstractSpinBox*>(object)) {
        emitSpinBox(spin, onlyValid, immediate);
    } else {
        emitText(object) || emitList(object, onlyValid) || emitButton(object);
    }
}

} // namespace mod_form_qt
