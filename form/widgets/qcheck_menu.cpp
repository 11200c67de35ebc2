#include "form/widgets/qcheck_menu.h"

#include <QAction>
#include <QKeyEvent>

namespace mod_form_qt::helper {

void QCheckMenu::mouseReleaseEvent(QMouseEvent* event)
{
    QAction* action = activeAction();
    if (action != nullptr && action->isCheckable())
        action->activate(QAction::Trigger);
    else
        QMenu::mouseReleaseEvent(event);
}

void QCheckMenu::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    const bool triggers = key == Qt::Key_Space || key == Qt::Key_Select || key == Qt::Key_Return
        || key == Qt::Key_Enter;
    QAction* action = activeAction();
    if (triggers && action != nullptr && action->isCheckable()) {
        action->activate(QAction::Trigger);
        event->accept();
    } else {
        QMenu::keyPressEvent(event);
    }
}

} // namespace mod_form_qt::helper
