#pragma once

#include "form/export.h"

#include <QComboBox>

namespace mod_form_qt::helper {

/// A combo box that takes the wheel only while it has the focus; otherwise what is around it
/// scrolls.
class MOD_FORM_QT_EXPORT FocusWheelComboBox : public QComboBox
{
    Q_OBJECT

public:
    /// An empty box, which gets the focus by a click or the tabulator key.
    explicit FocusWheelComboBox(QWidget* parent = nullptr);

protected:
    /// Passes the wheel on while the box has no focus.
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace mod_form_qt::helper
