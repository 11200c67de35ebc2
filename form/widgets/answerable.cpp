#include "form/widgets/answerable.h"

#include <QChildEvent>
#include <QEvent>

namespace mod_form_qt {

namespace {

/// Lives as long as its dialog.
class Keeper : public QObject
{
public:
    explicit Keeper(QDialog* dialog)
        : QObject(dialog)
        , m_dialog(dialog)
    {
        dialog->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::EnabledChange && watched == m_dialog && !m_dialog->isEnabled())
            m_dialog->setEnabled(true);
        return false;
    }

private:
    QDialog* m_dialog;
};

} // namespace

void keepAnswerable(QDialog* dialog)
{
    new Keeper(dialog);
}

AnswerableDialogs::AnswerableDialogs(QWidget* parentOfDialogs)
{
    parentOfDialogs->installEventFilter(this);
}

bool AnswerableDialogs::eventFilter(QObject* /*watched*/, QEvent* event)
{
    // Not when it is added: what it will be is not known yet in its base class's constructor.
    if (event->type() == QEvent::ChildPolished) {
        auto* child = static_cast<QChildEvent*>(event)->child();
        if (auto* dialog = qobject_cast<QDialog*>(child))
            keepAnswerable(dialog);
    }
    return false;
}

} // namespace mod_form_qt
