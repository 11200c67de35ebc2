#include "tools/form_gallery/side_tabs.h"

#include <QStyleOptionTab>
#include <QStylePainter>
#include <QTabBar>

namespace gallery {

namespace {

class SideBar : public QTabBar
{
protected:
    QSize tabSizeHint(int index) const override { return QTabBar::tabSizeHint(index).transposed(); }

    void paintEvent(QPaintEvent*) override
    {
        constexpr int indent = 10;
        QStylePainter painter(this);
        for (int index = 0; index < count(); ++index) {
            QStyleOptionTab option;
            initStyleOption(&option, index);
            painter.drawControl(QStyle::CE_TabBarTabShape, option);
            const QRect text = option.rect.adjusted(indent, 0, 0, 0);
            painter.drawItemText(text, Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(),
                                 option.text, QPalette::WindowText);
        }
    }
};

} // namespace

SideTabs::SideTabs(QWidget* parent)
    : QTabWidget(parent)
{
    setTabBar(new SideBar);
    setTabPosition(QTabWidget::West);
}

} // namespace gallery
