#pragma once

#include "form/export.h"

#include <QImage>
#include <QWidget>

#include <bitset>

namespace mod_form_qt {

namespace helper {

/// Shows an image, as large as the widget allows and with its proportions.
class MOD_FORM_QT_EXPORT ImageWidget : public QWidget
{
    Q_OBJECT

public:
    /// A widget without an image.
    explicit ImageWidget(QWidget* parent = nullptr);

    /// The image in its own size; null if there is none.
    const QImage& image() const { return m_image; }

    /// \param image  a null image leaves the widget empty
    void setImage(const QImage& image);

    /// \return  the image's size, drawn down to a size that fits into a form
    QSize sizeHint() const override;

protected:
    /// Draws the image in the middle.
    void paintEvent(QPaintEvent* event) override;

private:
    QImage m_image;
};

} // namespace helper

/// Fills an image widget.
/// \param value       an image, what converts to one, or the path of an image file; a pointer to
///                    such a value is followed. A file that cannot be read empties the widget
/// \param widget      may be null
/// \param attributes  whether the image's width or height become the widget's
MOD_FORM_QT_EXPORT void initImage(const QVariant& value, helper::ImageWidget* widget,
                                  const std::bitset<256>& attributes);

} // namespace mod_form_qt
