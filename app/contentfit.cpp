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
        const QSize full = fullSize(m_area);
        int height = full.height();
        // The bar below takes its height from the content.
        if (m_area->width() < full.width())
            height += m_area->horizontalScrollBar()->sizeHint().height();
        m_area->setMaximumHeight(height);

        // Two bars that are shown once need each other: each takes the room that makes the other
        // necessary.
        const bool fits = m_area->width() >= full.width() && m_area->height() >= full.height();
        const auto policy = fits ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded;
        m_area->setHorizontalScrollBarPolicy(policy);
        m_area->setVerticalScrollBarPolicy(policy);
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
