#pragma once

#include <QComboBox>

namespace mod_form_qt::helper {

/// A combo box that takes the wheel only while it has the focus; otherwise what is around it
/// scrolls.
class FocusWheelComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit FocusWheelComboBox(QWidget* parent = nullptr);

protected:
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace mod_form_qt::helper
