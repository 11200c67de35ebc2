#include "form/widgets/message_box.h"

#include "form/widgets/answerable.h"

#include <QPointer>

namespace mod_form_qt {

QMessageBox::StandardButton askUser(QMessageBox::Icon icon, QWidget* parent, const QString& title,
                                    const QString& text, QMessageBox::StandardButtons buttons)
{
    // Not on the stack: while it is open its parent may die, and then takes it along.
    const QPointer<QMessageBox> box = new QMessageBox(icon, title, text, buttons, parent);
    // The parent may be a button that a callback disables.
    keepAnswerable(box);
    box->setTextFormat(Qt::PlainText);
    box->exec();
    const auto answer = box ? box->standardButton(box->clickedButton()) : QMessageBox::NoButton;
    delete box;
    return answer;
}

} // namespace mod_form_qt
