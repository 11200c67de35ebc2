#include "form/widgets/flow_layout.h"

#include <QWidget>

#include <algorithm>

namespace mod_form_qt::helper {

namespace {

int spaceAround(const QLayoutItem& item, int ownSpacing, Qt::Orientation orientation)
{
    if (ownSpacing != -1 || item.widget() == nullptr)
        return std::max(ownSpacing, 0);
    const int space = item.widget()->style()->layoutSpacing(QSizePolicy::PushButton,
                                                            QSizePolicy::PushButton, orientation);
    // A style that does not care says -1; items must not overlap for it.
    return std::max(space, 0);
}

QSize sizeOfMargins(const QMargins& margins)
{
    return {margins.left() + margins.right(), margins.top() + margins.bottom()};
}

} // namespace

FlowLayout::FlowLayout(QWidget* parent, int margin, int hSpacing, int vSpacing)
    : QLayout(parent)
    , m_hSpacing(hSpacing)
    , m_vSpacing(vSpacing)
{
    if (margin > -1)
        setContentsMargins(margin, margin, margin, margin);
}

FlowLayout::FlowLayout(int margin, int hSpacing, int vSpacing)
    : FlowLayout(nullptr, margin, hSpacing, vSpacing)
{
}

FlowLayout::~FlowLayout()
{
    while (QLayoutItem* item = FlowLayout::takeAt(0))
        delete item;
}

void FlowLayout::addItem(QLayoutItem* item)
{
    if (item == nullptr)
        return;
    if (QLayout* layout = item->layout(); layout != nullptr && layout->parent() == nullptr)
        addChildLayout(layout);
    m_items << item;
    invalidate();
}

int FlowLayout::horizontalSpacing() const
{
    return m_hSpacing >= 0 ? m_hSpacing : smartSpacing(QStyle::PM_LayoutHorizontalSpacing);
}

int FlowLayout::verticalSpacing() const
{
    return m_vSpacing >= 0 ? m_vSpacing : smartSpacing(QStyle::PM_LayoutVerticalSpacing);
}

int FlowLayout::spacing() const
{
    const int horizontal = horizontalSpacing();
    return horizontal == verticalSpacing() ? horizontal : -1;
}

void FlowLayout::setSpacing(int spacing)
{
    m_hSpacing = spacing;
    m_vSpacing = spacing;
    invalidate();
}

Qt::Orientations FlowLayout::expandingDirections() const
{
    return {};
}

bool FlowLayout::hasHeightForWidth() const
{
    return true;
}

int FlowLayout::heightForWidth(int width) const
{
    return doLayout(QRect(0, 0, width, 0), true);
}

int FlowLayout::count() const
{
    return int(m_items.size());
}

QLayoutItem* FlowLayout::itemAt(int index) const
{
    return m_items.value(index, nullptr);
}

QLayoutItem* FlowLayout::takeAt(int index)
{
    if (index < 0 || index >= m_items.size())
        return nullptr;
    return m_items.takeAt(index);
}

QSize FlowLayout::minimumSize() const
{
    QSize size(0, 0);
    for (const QLayoutItem* item : m_items)
        size = size.expandedTo(item->minimumSize());
    return size + sizeOfMargins(contentsMargins());
}

QSize FlowLayout::sizeHint() const
{
    return minimumSize();
}

void FlowLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    doLayout(rect, false);
}

int FlowLayout::doLayout(const QRect& rect, bool testOnly) const
{
    const QMargins margins = contentsMargins();
    const QRect area = rect.marginsRemoved(margins);
    const int rightEdge = area.x() + area.width();
    const int hSpacing = horizontalSpacing();
    const int vSpacing = verticalSpacing();
    int x = area.x();
    int y = area.y();
    int lineHeight = 0;

    for (QLayoutItem* item : m_items) {
        if (item->widget() != nullptr && item->isEmpty())
            continue; // hidden: no gap for it either
        const QSize size = item->sizeHint();
        if (x + size.width() > rightEdge && lineHeight > 0) {
            x = area.x();
            y += lineHeight + spaceAround(*item, vSpacing, Qt::Vertical);
            lineHeight = 0;
        }
        if (!testOnly)
            item->setGeometry(QRect(QPoint(x, y), size));
        x += size.width() + spaceAround(*item, hSpacing, Qt::Horizontal);
        lineHeight = std::max(lineHeight, size.height());
    }
    return y + lineHeight - rect.y() + margins.bottom();
}

int FlowLayout::smartSpacing(QStyle::PixelMetric metric) const
{
    const QObject* above = parent();
    if (above == nullptr)
        return -1;
    if (const auto* widget = qobject_cast<const QWidget*>(above))
        return widget->style()->pixelMetric(metric, nullptr, widget);
    const auto* layout = qobject_cast<const QLayout*>(above);
    return layout != nullptr ? layout->spacing() : -1;
}

} // namespace mod_form_qt::helper
