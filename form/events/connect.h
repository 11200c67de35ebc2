#pragma once

#include "form/events/form_context.h"

class QGroupBox;

namespace mod_form_qt {

/// Wires a widget of a row by its class, its type and the row's attributes. A widget of a class
/// that reports nothing, such as a label, is left alone.
/// \param signalNames  out: the names of the signals that were connected are appended
void connectRowWidget(const RowHandle& row, QWidget* widget, QList<QString>& signalNames);

/// Wires a checkable group: its contents are shown or hidden, its state is the row's value.
/// \param contents  the layout of the group box
void connectGroup(const RowHandle& row, QGroupBox* group, QLayout* contents,
                  QList<QString>& signalNames);

/// Wires a tab widget that has all its pages and shows its start page: the page number is the
/// row's value. The rows of the pages are told when their page becomes the active one and when it
/// no longer is.
/// \param pages  the rows of the pages by index; null where a page has none
void connectTabs(const RowHandle& row, QTabWidget* tabs, const std::vector<RowHandle>& pages,
                 QList<QString>& signalNames);

/// Wires an action: its check state goes into the map under the row's key, or else under the
/// action's "menuid". The callbacks get the row with that key.
void connectAction(const RowHandle& row, QAction* action, QList<QString>& signalNames);

/// Wires a timer of a form or row.
/// \param row  for a timer of the form itself: its main row, under the timer's key
void connectTimer(const RowHandle& row, QTimer* timer);

/// Shows or hides what is in a group, and leaves hidden what was hidden by itself. Only what was
/// hidden by this function is shown again.
void setGroupContentsVisible(QLayout* contents, bool visible);

} // namespace mod_form_qt
