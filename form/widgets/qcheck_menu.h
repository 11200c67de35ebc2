#pragma once

#include "form/export.h"

#include <QMenu>

namespace mod_form_qt::helper {

/// A menu that stays open while its checkable actions are checked and unchecked.
class MOD_FORM_QT_EXPORT QCheckMenu : public QMenu
{
    Q_OBJECT

public:
    using QMenu::QMenu;

protected:
    /// Triggers a checkable action without closing the menu.
    void mouseReleaseEvent(QMouseEvent* event) override;
    /// So do the space bar, Select, Return and Enter.
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace mod_form_qt::helper
