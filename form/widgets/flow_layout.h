#pragma once

#include "form/export.h"

#include <QLayout>
#include <QList>
#include <QStyle>

namespace mod_form_qt::helper {

/// Lays its items out from left to right and wraps, so that the height depends on the width.
class MOD_FORM_QT_EXPORT FlowLayout : public QLayout
{
public:
    /// \param margin    on all four sides in pixels; below 0 keeps the style's margins
    /// \param hSpacing  between the items of a line; below 0 takes the style's or parent's
    /// \param vSpacing  between the lines; below 0 takes the style's or parent's
    explicit FlowLayout(QWidget* parent, int margin = -1, int hSpacing = -1, int vSpacing = -1);
    /// As above, without a parent yet.
    explicit FlowLayout(int margin = -1, int hSpacing = -1, int vSpacing = -1);
    /// Deletes the items; the widgets in them belong to their parent.
    ~FlowLayout() override;
    Q_DISABLE_COPY_MOVE(FlowLayout)

    /// Takes over an item; a layout among them becomes a child of this one.
    void addItem(QLayoutItem* item) override;
    /// \return  -1 if neither this nor a parent settles it
    int horizontalSpacing() const;
    /// \return  -1 if neither this nor a parent settles it
    int verticalSpacing() const;
    /// \return  the spacing if it is the same in both directions, otherwise -1
    int spacing() const override;
    /// Sets both spacings, in pixels.
    void setSpacing(int spacing) override;

    /// None: the layout asks for no more than its items need.
    Qt::Orientations expandingDirections() const override;
    /// \return  true
    bool hasHeightForWidth() const override;
    /// \return  the height, in pixels, of all lines at that width
    int heightForWidth(int width) const override;
    /// Number of items.
    int count() const override;
    /// \return  null for an index out of range
    QLayoutItem* itemAt(int index) const override;
    /// \return  the item, which then belongs to the caller; null for an index out of range
    QLayoutItem* takeAt(int index) override;
    /// The room for the largest item, with the margins.
    QSize minimumSize() const override;
    /// As `minimumSize`.
    QSize sizeHint() const override;
    /// Places the items.
    void setGeometry(const QRect& rect) override;

private:
    int doLayout(const QRect& rect, bool testOnly) const;
    int smartSpacing(QStyle::PixelMetric metric) const;

    QList<QLayoutItem*> m_items;
    int m_hSpacing;
    int m_vSpacing;
};

} // namespace mod_form_qt::helper
