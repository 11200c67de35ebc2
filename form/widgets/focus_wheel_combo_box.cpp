#include "form/widgets/focus_wheel_combo_box.h"

#include <QWheelEvent>

namespace mod_form_qt::helper {

FocusWheelComboBox::FocusWheelComboBox(QWidget* parent)
    : QComboBox(parent)
{
    // By default the wheel itself gives a combo box the focus, and the test below would never fail.
    setFocusPolicy(Qt::StrongFocus);
}

void FocusWheelComboBox::wheelEvent(QWheelEvent* event)
{
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

} // namespace mod_form_qt::helper
