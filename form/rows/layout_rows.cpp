#include "form/build/layouts.h"
#include "form/events/connect.h"
#include "form/rows/row_family.h"
#include "form/values/row_value.h"
#include "form/widgets/flow_layout.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

namespace mod_form_qt {

namespace {

/// The pixels that a group of attributes, one for each two pixels, asks for; -1 for none.
int pixels(const PreparedRow& row, const std::bitset<256>& first, const std::bitset<256>& last)
{
    const int distance = lastBitSet(row.row.attr, first, last);
    return distance < 0 ? -1 : 2 * distance;
}

QLayout* makeLayout(const PreparedRow& row)
{
    switch (row.row.eleType) {
    case E_LAYOUT_H:
        return new QHBoxLayout;
    case E_LAYOUT_GRID:
        return new QGridLayout;
    case E_LAYOUT_FLOW:
        return new helper::FlowLayout(-1, -1, -1);
    case E_LAYOUT_FORM: {
        auto* form = new QFormLayout;
        const auto [found, alignment] = row.option.alignByType(E_LABEL);
        if (found)
            form->setLabelAlignment(alignment);
        return form;
    }
    default:
        return new QVBoxLayout;
    }
}

/// What stands between a layout and its parent: nothing, a scroll area, a group box, or both.
struct Wrapping
{
    QWidget* outer = nullptr; // goes into the parent layout; null for the layout itself
    QWidget* container = nullptr; // parent of what the layout holds
    QGroupBox* group = nullptr;
};

QScrollArea* scrollAreaFor(QLayout* layout, QWidget* parent, Wrapping& wrapping)
{
    auto* area = new QScrollArea(parent);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    wrapping.container = new QWidget;
    wrapping.container->setLayout(layout);
    area->setWidget(wrapping.container);
    return area;
}

QGroupBox* groupBoxFor(const PreparedRow& row, BuildContext& context)
{
    auto* group = new QGroupBox(row.texts.first(), context.container());
    if (row.has(A_BUTTON_LABEL_BOLD) || context.isBold(row))
        group->setStyleSheet(QStringLiteral("QGroupBox { font-weight: bold; }"));
    auto* own = new QVBoxLayout(group);
    own->setContentsMargins(0, 0, 0, 0);
    context.groupBoxes.emplace_back(group);
    return group;
}

Wrapping wrap(QLayout* layout, const PreparedRow& row, BuildContext& context)
{
    Wrapping wrapping;
    wrapping.container = context.container();
    if (!row.texts.first().isEmpty() || row.has(A_GROUP)) {
        wrapping.group = groupBoxFor(row, context);
        wrapping.outer = wrapping.group;
        wrapping.container = wrapping.group;
    }
    if (row.has(A_SCROLLAREA)) {
        QScrollArea* const area = scrollAreaFor(layout, wrapping.container, wrapping);
        if (wrapping.group)
            wrapping.group->layout()->addWidget(area);
        else
            wrapping.outer = area;
    } else if (wrapping.group) {
        // The group's own layout has no margins; without some here its frame would touch the
        // widgets.
        const QStyle* style = wrapping.group->style();
        layout->setContentsMargins(style->pixelMetric(QStyle::PM_LayoutLeftMargin),
                                   style->pixelMetric(QStyle::PM_LayoutTopMargin),
                                   style->pixelMetric(QStyle::PM_LayoutRightMargin),
                                   style->pixelMetric(QStyle::PM_LayoutBottomMargin));
        static_cast<QVBoxLayout*>(wrapping.group->layout())->addLayout(layout);
    }
    return wrapping;
}

void applySpacing(QLayout* layout, const PreparedRow& row)
{
    const int margins = pixels(row, A_LAYOUT_MARGINS_0, A_LAYOUT_MARGINS_10);
    if (margins >= 0)
        layout->setContentsMargins(margins, margins, margins, margins);
    const int spacing = pixels(row, A_LAYOUT_SPACING_0, A_LAYOUT_SPACING_10);
    if (spacing >= 0)
        layout->setSpacing(spacing);
}

void openLayout(const PreparedRow& row, BuildContext& context, BuiltRow& built)
{
    const int type = row.row.eleType;
    QLayout* const layout = makeLayout(row);
    const Wrapping wrapping = wrap(layout, row, context);

    const int stretch = row.option.numbered(INFO::Option::stretchKey, type).toInt();
    auto [found, alignment] = row.option.alignByIndex(type);
    if (!found)
        std::tie(found, alignment) = row.option.alignByType(type);
    if (!found)
        alignment = context.defaultTypeAlign.value(type);
    if (wrapping.outer)
        addWidgetToLayout(wrapping.outer, stretch, alignment, row.gridColumn, row.gridSpan,
                          context);
    else
        addLayoutToLayout(layout, stretch, alignment, row.gridColumn, row.gridSpan, context);
    if (row.stretchBehind >= 0)
        addStretchBehind(row.stretchBehind, context);

    OpenLayout open;
    open.layout = layout;
    open.container = wrapping.container;
    open.lastTitle = row.plainTitle;
    if (const OpenLayout* around = context.top(); around && row.plainTitle.isEmpty()) {
        open.lastTitle = around->lastTitle;
        open.lastLabel = around->lastLabel;
    }
    if (wrapping.group == nullptr) {
        if (row.has(A_HIDE))
            open.hideAtEnd = layout;
        if (wrapping.outer && row.has(A_HIDE))
            wrapping.outer->hide();
    } else {
        QGroupBox* const group = wrapping.group;
        built.widgets.push_back({group, type, true, false, -1});
        if (row.has(A_CAN_HIDE_ITEMS)) {
            const QVariant value = context.valueOf(row);
            group->setCheckable(true);
            // A group that has no value yet shows what is in it.
            group->setChecked(!value.isValid() || value.toBool());
            if (!group->isChecked()) {
                open.hideAtEnd = group->layout();
                open.closedGroup = true;
            }
            built.handle = context.share(row);
            if (RowValue stored(row.row, context.map()); !value.isValid() && stored.exists())
                stored.write(true);
            QList<QString> signalNames;
            connectGroup(built.handle, group, group->layout(), signalNames);
            built.wired = true;
        }
    }
    applySpacing(layout, row);
    context.layouts.push_back(open);
}

void endLayout(BuildContext& context)
{
    // A page is closed by the next page or the end of its tab widget.
    if (!context.layouts.empty() && !context.layouts.back().page)
        context.closeLayout();
}

class LayoutRows : public RowFamily
{
public:
    BuiltRow build(const PreparedRow& row, BuildContext& context) const override
    {
        BuiltRow built;
        if (row.row.eleType == E_LAYOUT_END) {
            endLayout(context);
        } else if (row.row.eleType == E_GRID_NEXT_ROW) {
            if (openAs<QGridLayout>(context))
                context.top()->cell = {0, context.top()->cell.y() + 1};
        } else {
            openLayout(row, context, built);
        }
        return built;
    }
};

} // namespace

const RowFamily& layoutRows()
{
    return theFamily<LayoutRows>();
}

} // namespace mod_form_qt
