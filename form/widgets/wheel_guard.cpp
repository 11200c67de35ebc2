#include "form/widgets/wheel_guard.h"

#include <QEvent>
#include <QWidget>

namespace mod_form_qt::helper {

DynamicWidgetEventFilter::DynamicWidgetEventFilter(QObject* parent, std::set<QString> classNames)
    : QObject(parent)
    , m_classNames(std::move(classNames))
{
}

bool DynamicWidgetEventFilter::eventFilter(QObject* object, QEvent* event)
{
    const auto* widget = qobject_cast<QWidget*>(object);
    if (event->type() == QEvent::Wheel && widget != nullptr && !widget->hasFocus()) {
        const QString name = QString::fromUtf8(widget->metaObject()->className());
        if (m_classNames.empty() || m_classNames.count(name) > 0) {
            // Ignored, so that it goes on to what is around the widget.
            event->ignore();
            return true;
        }
    }
    return QObject::eventFilter(object, event);
}

} // namespace mod_form_qt::helper
