#pragma once

#include <QList>

class QAbstractButton;
class QWidget;

namespace mod_form_qt {

// Of check boxes in one group, and of radio buttons in one group or one parent, only one is
// checked: to check one unchecks another, with a signal of its own.

/// \return  the other buttons of the group; none for a button that stands alone and for a widget
///          that is no button
QList<QAbstractButton*> exclusiveSiblings(const QWidget* button);

/// Notes, when a button has been unchecked, which one took its place.
void noteReplaced(QAbstractButton* unchecked);

/// Takes back that a button was checked: the one it replaced is checked again, and reports it.
void undoChecked(QAbstractButton* checked);

} // namespace mod_form_qt
