#include "app/contentfit.h"

#include <QEvent>
#include <QScrollArea>
#include <QScrollBar>

namespace {

class ContentLimit : public QObject
{
public:
    explicit ContentLimit(QScrollArea* area)
        : QObject(area)
        , m_area(area)
    {
        area->installEventFilter(this);
        area->widget()->installEventFilter(this);
        apply();
    }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest)
            apply();
        return QObject::eventFilter(object, event);
    }

private:
    void apply()
    {
        int height = fullSize(m_area).height();
        // The bar below takes its height from the content.
        if (m_area->width() < fullSize(m_area).width())
            height += m_area->horizontalScrollBar()->sizeHint().height();
        m_area->setMaximumHeight(height);
    }

    QScrollArea* m_area;
};

} // namespace

void limitToContent(QScrollArea* area)
{
    new ContentLimit(area);
}

QSize fullSize(const QScrollArea* area)
{
    const int frame = 2 * area->frameWidth();
    return area->widget()->sizeHint() + QSize(frame, frame);
}
