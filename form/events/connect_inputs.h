#pragma once

#include "form/events/form_context.h"

namespace mod_form_qt {

// Each wires a widget of the class in its name and appends the name of the signal.

void connectLineEdit(const RowHandle& row, QWidget* widget, QList<QString>& signalNames);
void connectTextEdit(const RowHandle& row, QWidget* widget, QList<QString>& signalNames);
void connectPlainTextEdit(const RowHandle& row, QWidget* widget, QList<QString>& signalNames);
void connectCheckBox(const RowHandle& row, QWidget* widget, QList<QString>& signalNames);
void connectRadioButton(const RowHandle& row, QWidget* widget, QList<QString>& signalNames);
void connectComboBox(const RowHandle& row, QWidget* widget, QList<QString>& signalNames);
void connectCheckComboBox(const RowHandle& row, QWidget* widget, QList<QString>& signalNames);
void connectListWidget(const RowHandle& row, QWidget* widget, QList<QString>& signalNames);
void connectSpinBox(const RowHandle& row, QWidget* widget, QList<QString>& signalNames);
void connectDoubleSpinBox(const RowHandle& row, QWidget* widget, QList<QString>& signalNames);
void connectDateEdit(const RowHandle& row, QWidget* widget, QList<QString>& signalNames);
void connectDateTimeEdit(const RowHandle& row, QWidget* widget, QList<QString>& signalNames);
/// The check box of a date row.
void connectDateSwitch(const RowHandle& row, QWidget* widget, QList<QString>& signalNames);
void connectButton(const RowHandle& row, QWidget* widget, QList<QString>& signalNames);
/// Listens to the button's menu, whose actions come and go.
void connectMenuButton(const RowHandle& row, QWidget* widget, QList<QString>& signalNames);

} // namespace mod_form_qt
