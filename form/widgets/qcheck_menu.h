#pragma once

#include <QMenu>

namespace mod_form_qt::helper {

/// A menu that stays open while its checkable actions are checked and unchecked.
class QCheckMenu : public QMenu
{
    Q_OBJECT

public:
    using QMenu::QMenu;

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace mod_form_qt::helper
