#pragma once

#include <QLayout>
#include <QList>
#include <QStyle>

namespace mod_form_qt::helper {

/// Lays its items out from left to right and wraps, so that the height depends on the width.
class FlowLayout : public QLayout
{
public:
    /// \param margin    on all four sides in pixels; below 0 keeps the style's margins
    /// \param hSpacing  between the items of a line; below 0 takes the style's or parent's
    /// \param vSpacing  between the lines; below 0 takes the style's or parent's
    explicit FlowLayout(QWidget* parent, int margin = -1, int hSpacing = -1, int vSpacing = -1);
    explicit FlowLayout(int margin = -1, int hSpacing = -1, int vSpacing = -1);
    ~FlowLayout() override;
    Q_DISABLE_COPY_MOVE(FlowLayout)

    /// Takes over an item; a layout among them becomes a child of this one.
    void addItem(QLayoutItem* item) override;
    /// \return  -1 if neither this nor a parent settles it
    int horizontalSpacing() const;
    int verticalSpacing() const;
    /// \return  the spacing if it is the same in both directions, otherwise -1
    int spacing() const override;
    void setSpacing(int spacing) override;

    Qt::Orientations expandingDirections() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;
    int count() const override;
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    QSize minimumSize() const override;
    QSize sizeHint() const override;
    void setGeometry(const QRect& rect) override;

private:
    int doLayout(const QRect& rect, bool testOnly) const;
    int smartSpacing(QStyle::PixelMetric metric) const;

    QList<QLayoutItem*> m_items;
    int m_hSpacing;
    int m_vSpacing;
};

} // namespace mod_form_qt::helper
