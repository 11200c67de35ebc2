#include "form/widgets/image_widget.h"

#include "form/model/info.h"

#include <QPainter>

namespace mod_form_qt {

namespace helper {

namespace {

/// A photograph in its own size would make a form larger than the screen.
constexpr QSize largestHint(480, 480);

} // namespace

ImageWidget::ImageWidget(QWidget* parent)
    : QWidget(parent)
{
}

void ImageWidget::setImage(const QImage& image)
{
    m_image = image;
    updateGeometry();
    update();
}

QSize ImageWidget::sizeHint() const
{
    if (m_image.isNull())
        return QWidget::sizeHint();
    const QSize size = m_image.size();
    const bool fits = size.boundedTo(largestHint) == size;
    return fits ? size : size.scaled(largestHint, Qt::KeepAspectRatio);
}

void ImageWidget::paintEvent(QPaintEvent*)
{
    if (m_image.isNull())
        return;
    const QSize size = m_image.size().scaled(this->size(), Qt::KeepAspectRatio);
    const QPoint corner((width() - size.width()) / 2, (height() - size.height()) / 2);
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRect(corner, size), m_image);
}

} // namespace helper

void initImage(const QVariant& value, helper::ImageWidget* widget,
               const std::bitset<256>& attributes)
{
    if (widget == nullptr)
        return;
    const QVariant source = INFO::getBaseValue(value);
    QImage image;
    if (source.canConvert<QImage>())
        image = source.value<QImage>();
    else
        image.load(source.toString());

    if (!image.isNull()) {
        if (isBitSet(attributes, A_ADJUST_WIDTH_TO_CONTENTS))
            widget->setFixedWidth(image.width());
        if (isBitSet(attributes, A_ADJUST_HEIGHT_TO_CONTENTS))
            widget->setFixedHeight(image.height());
    }
    widget->setImage(image);
    widget->update();
}

} // namespace mod_form_qt
