#include "form/events/connect_inputs.h"

#include "form/events/button_actions.h"
#include "form/events/change_flow.h"
#include "form/values/list_widgets.h"
#include "form/values/trigger_emit.h"
#include "form/widgets/check_combo_box.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDateTimeEdit>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTextEdit>

#include <optional>
#include <utility>

namespace mod_form_qt {

namespace {

/// Calls `handler(row, widget)` on the signal, as long as the form is not being taken down.
template <typename W, typename Signal, typename Handler>
void listen(const RowHandle& row, W* widget, Signal signal, const char* name,
            QList<QString>& signalNames, Handler handler)
{
    QObject::connect(widget, signal, widget, [row, widget, handler] {
        if (row->live())
            handler(*row, widget);
    });
    signalNames.append(QString::fromLatin1(name));
}

template <typename W, typename Signal>
void listenToInput(const RowHandle& row, W* widget, Signal signal, const char* name,
                   QList<QString>& signalNames)
{
    listen(row, widget, signal, name, signalNames, takeInputChange);
}

template <typename W, typename Signal>
void listenToSelection(const RowHandle& row, W* widget, Signal signal, const char* name,
                       QList<QString>& signalNames)
{
    listen(row, widget, signal, name, signalNames, takeSelection);
}

/// Takes the value that is there when editing ends. A callback that opens a box takes the focus
/// away, which ends the editing of the same value once more.
template <typename W, typename Signal>
void listenToEnd(const RowHandle& row, W* widget, Signal signal, QList<QString>& signalNames)
{
    const auto inHand = std::make_shared<std::optional<QVariant>>();
    listen(row, widget, signal, "editingFinished", signalNames,
           [inHand](const RowContext& context, QWidget* edit) {
               QVariant shown;
               INFO::getSetData(edit, false, false, shown);
               if (*inHand == shown && !emitHelper::active)
                   return;
               const std::optional<QVariant> outer = std::exchange(*inHand, shown);
               takeInputChange(context, edit);
               *inHand = outer;
           });
}

template <typename W, typename Signal>
void listenToSpin(const RowHandle& row, W* widget, Signal changed, const char* changedName,
                  QList<QString>& signalNames)
{
    if (isBitSet(row->row.attr, A_IMMEDIATE_DATA_UPDATE))
        listenToInput(row, widget, changed, changedName, signalNames);
    else
        listenToEnd(row, widget, &QAbstractSpinBox::editingFinished, signalNames);
}

template <typename Handler>
void listenToCheckState(const RowHandle& row, QCheckBox* box, const char* name,
                        QList<QString>& signalNames, Handler handler)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 7, 0)
    listen(row, box, &QCheckBox::checkStateChanged, name, signalNames, handler);
#else
    listen(row, box, &QCheckBox::stateChanged, name, signalNames, handler);
#endif
}

void uncheckOthers(const QMenu* menu, const QAction* chosen)
{
    for (QAction* action : menu->actions()) {
        if (action != chosen && action->isChecked())
            action->setChecked(false);
    }
}

} // namespace

void connectLineEdit(const RowHandle& row, QWidget* widget, QList<QString>& signalNames)
{
    auto* edit = qobject_cast<QLineEdit*>(widget);
    if (isBitSet(row->row.attr, A_LINEEDIT_UPDATE_ON_FINISH))
        listenToEnd(row, edit, &QLineEdit::editingFinished, signalNames);
    else
        listenToInput(row, edit, &QLineEdit::textChanged, "textChanged", signalNames);
}

void connectTextEdit(const RowHandle& row, QWidget* widget, QList<QString>& signalNames)
{
    listenToInput(row, qobject_cast<QTextEdit*>(widget), &QTextEdit::textChanged, "textChanged",
                  signalNames);
}

void connectPlainTextEdit(const RowHandle& row, QWidget* widget, QList<QString>& signalNames)
{
    listenToInput(row, qobject_cast<QPlainTextEdit*>(widget), &QPlainTextEdit::textChanged,
                  "textChanged", signalNames);
}

void connectCheckBox(const RowHandle& row, QWidget* widget, QList<QString>& signalNames)
{
    listenToCheckState(row, qobject_cast<QCheckBox*>(widget), "checkStateChanged", signalNames,
                       takeInputChange);
}

void connectRadioButton(const RowHandle& row, QWidget* widget, QList<QString>& signalNames)
{
    listenToInput(row, qobject_cast<QRadioButton*>(widget), &QRadioButton::toggled, "toggled",
                  signalNames);
}

void connectComboBox(const RowHandle& row, QWidget* widget, QList<QString>& signalNames)
{
    // The selection is always read from the box: code raises the signal with any index.
    listenToSelection(row, qobject_cast<QComboBox*>(widget), &QComboBox::currentIndexChanged,
                      "currentIndexChanged", signalNames);
}

void connectCheckComboBox(const RowHandle& row, QWidget* widget, QList<QString>& signalNames)
{
    listenToSelection(row, qobject_cast<helper::CheckComboBox*>(widget),
                      &helper::CheckComboBox::checkedChanged, "checkedChanged", signalNames);
}

void connectListWidget(const RowHandle& row, QWidget* widget, QList<QString>& signalNames)
{
    auto* list = qobject_cast<QListWidget*>(widget);
    if (isBitSet(row->row.attr, A_CHECKBOX))
        listenToSelection(row, list, &QListWidget::itemChanged, "itemChanged", signalNames);
    else
        listenToSelection(row, list, &QListWidget::itemSelectionChanged, "itemSelectionChanged",
                          signalNames);
}

void connectSpinBox(const RowHandle& row, QWidget* widget, QList<QString>& signalNames)
{
    listenToSpin(row, qobject_cast<QSpinBox*>(widget), &QSpinBox::valueChanged, "valueChanged",
                 signalNames);
}

void connectDoubleSpinBox(const RowHandle& row, QWidget* widget, QList<QString>& signalNames)
{
    listenToSpin(row, qobject_cast<QDoubleSpinBox*>(widget), &QDoubleSpinBox::valueChanged,
                 "valueChanged", signalNames);
}

void connectDateEdit(const RowHandle& row, QWidget* widget, QList<QString>& signalNames)
{
    listenToSpin(row, qobject_cast<QDateEdit*>(widget), &QDateEdit::dateChanged, "dateChanged",
                 signalNames);
}

void connectDateTimeEdit(const RowHandle& row, QWidget* widget, QList<QString>& signalNames)
{
    listenToSpin(row, qobject_cast<QDateTimeEdit*>(widget), &QDateTimeEdit::dateTimeChanged,
                 "dateChanged", signalNames);
}

void connectDateSwitch(const RowHandle& row, QWidget* widget, QList<QString>& signalNames)
{
    listenToCheckState(row, qobject_cast<QCheckBox*>(widget), "stateChanged", signalNames,
                       takeDateSwitch);
}

void connectButton(const RowHandle& row, QWidget* widget, QList<QString>& signalNames)
{
    auto* button = qobject_cast<QPushButton*>(widget);
    QObject::connect(button, &QPushButton::clicked, button, [row, button] {
        if (row->live())
            runButtonAction(row, button);
    });
    signalNames.append(QStringLiteral("clicked"));
}

void connectMenuButton(const RowHandle& row, QWidget* widget, QList<QString>& signalNames)
{
    auto* button = qobject_cast<QPushButton*>(widget);
    QMenu* menu = button->menu();
    if (menu == nullptr)
        return;
    QObject::connect(menu, &QMenu::triggered, button, [row, button, menu](QAction* action) {
        if (!row->live())
            return;
        if (action->isChecked() && !isMultiSelection(row->row.eleType, row->row.attr))
            uncheckOthers(menu, action);
        takeSelection(*row, button);
    });
    signalNames.append(QStringLiteral("triggered"));
}

} // namespace mod_form_qt
