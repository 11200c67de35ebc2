#include "form/build/layouts.h"

#include <QBoxLayout>
#include <QFormLayout>
#include <QGridLayout>
#include <QSpacerItem>

namespace mod_form_qt {

namespace {

/// Takes cells of the open grid.
/// \return  the column of the first one
int takeColumns(OpenLayout& open, int gridColumn, int span)
{
    const int column = std::max(open.cell.x(), gridColumn);
    open.cell.setX(span < 0 ? 0 : column + std::max(span, 1));
    return column;
}

} // namespace

// Alignments are set on the items: given what is in it, a layout would look for that from its first
// item, which takes long in one of thousands.

void addWidgetToLayout(QWidget* widget, int stretch, Qt::Alignment alignment, int gridColumn,
                       int span, BuildContext& context)
{
    OpenLayout* const open = context.top();
    if (open == nullptr)
        return;
    if (auto* grid = qobject_cast<QGridLayout*>(open->layout)) {
        const int column = takeColumns(*open, gridColumn, span);
        grid->addWidget(widget, open->cell.y(), column, 1, span == 0 ? 1 : span, alignment);
    } else if (auto* box = qobject_cast<QBoxLayout*>(open->layout)) {
        box->addWidget(widget, stretch, alignment);
    } else if (auto* rows = qobject_cast<QFormLayout*>(open->layout)) {
        rows->addRow(widget);
        rows->itemAt(rows->rowCount() - 1, QFormLayout::SpanningRole)->setAlignment(alignment);
    } else {
        open->layout->addWidget(widget);
        open->layout->itemAt(open->layout->count() - 1)->setAlignment(alignment);
    }
}

void addLayoutToLayout(QLayout* layout, int stretch, Qt::Alignment alignment, int gridColumn,
                       int span, BuildContext& context)
{
    OpenLayout* const open = context.top();
    if (open == nullptr)
        return;
    if (auto* grid = qobject_cast<QGridLayout*>(open->layout)) {
        const int column = takeColumns(*open, gridColumn, span);
        grid->addLayout(layout, open->cell.y(), column, 1, span == 0 ? 1 : span, alignment);
        return;
    }
    if (auto* box = qobject_cast<QBoxLayout*>(open->layout))
        box->addLayout(layout, stretch);
    else if (auto* rows = qobject_cast<QFormLayout*>(open->layout))
        rows->addRow(layout);
    else
        open->layout->addItem(layout);
    if (alignment)
        layout->setAlignment(alignment);
}

void addItemToLayout(QSpacerItem* item, const PreparedRow& row, BuildContext& context)
{
    OpenLayout* const open = context.top();
    if (open == nullptr) {
        delete item;
    } else if (auto* grid = qobject_cast<QGridLayout*>(open->layout)) {
        const int column = takeColumns(*open, row.gridColumn, row.gridSpan);
        grid->addItem(item, open->cell.y(), column, 1, row.gridSpan == 0 ? 1 : row.gridSpan);
    } else if (auto* rows = qobject_cast<QFormLayout*>(open->layout)) {
        rows->setItem(rows->rowCount(), QFormLayout::SpanningRole, item);
    } else {
        open->layout->addItem(item);
    }
}

void addStretchBehind(int factor, BuildContext& context)
{
    if (auto* box = openAs<QBoxLayout>(context)) {
        box->addStretch(factor);
    } else if (auto* grid = openAs<QGridLayout>(context)) {
        const int column = context.top()->cell.x();
        grid->setColumnStretch(column > 0 ? column - 1 : grid->columnCount() - 1, factor);
    }
}

} // namespace mod_form_qt
