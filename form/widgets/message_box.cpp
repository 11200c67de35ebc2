#include "form/widgets/message_box.h"

#include <QEvent>
#include <QPointer>

namespace mod_form_qt {

namespace {

/// A box that can always be answered. Its parent may be a button that is disabled while the box is
/// open, and would take the box along.
class AnswerableBox : public QMessageBox
{
public:
    using QMessageBox::QMessageBox;

protected:
    void changeEvent(QEvent* event) override
    {
        QMessageBox::changeEvent(event);
        if (event->type() == QEvent::EnabledChange && !isEnabled())
            setEnabled(true);
    }
};

} // namespace

QMessageBox::StandardButton askUser(QMessageBox::Icon icon, QWidget* parent, const QString& title,
                                    const QString& text, QMessageBox::StandardButtons buttons)
{
    // Not on the stack: while it is open its parent may die, and then takes it along.
    const QPointer<QMessageBox> box = new AnswerableBox(icon, title, text, buttons, parent);
    box->setTextFormat(Qt::PlainText);
    box->exec();
    const auto answer = box ? box->standardButton(box->clickedButton()) : QMessageBox::NoButton;
    delete box;
    return answer;
}

} // namespace mod_form_qt
