#include "form/build/layouts.h"
#include "form/rows/row_family.h"

#include <QBoxLayout>
#include <QFrame>
#include <QGridLayout>
#include <QSpacerItem>

namespace mod_form_qt {

namespace {

void addStretch(int factor, BuildContext& context)
{
    if (auto* box = openAs<QBoxLayout>(context)) {
        box->addStretch(factor);
    } else if (auto* grid = openAs<QGridLayout>(context)) {
        const int columns = grid->columnCount();
        const int column = context.top()->cell.x();
        if (columns > 0)
            grid->setColumnStretch(column > 0 ? column - 1 : columns - 1, factor);
    }
}

QSizePolicy::Policy policy(const QVariant& wanted)
{
    return wanted.isValid() ? static_cast<QSizePolicy::Policy>(wanted.toInt())
                            : QSizePolicy::Minimum;
}

QSpacerItem* spacer(const PreparedRow& row, int size)
{
    const int type = row.row.eleType;
    const bool horizontal = type == E_HSPACER;
    return new QSpacerItem(horizontal ? size : 0, horizontal ? 0 : size,
                           policy(row.option.sizePolicyH(type)),
                           policy(row.option.sizePolicyV(type)));
}

class SpacerRows : public RowFamily
{
public:
    BuiltRow build(const PreparedRow& row, BuildContext& context) const override
    {
        const int type = row.row.eleType;
        const int number = context.valueOf(row).toInt();
        BuiltRow built;
        if (type == E_STRETCH) {
            addStretch(number, context);
        } else if (type == E_HSPACER || type == E_VSPACER) {
            addItemToLayout(spacer(row, number), row, context);
        } else {
            auto* line = new QFrame(context.container());
            line->setFrameShape(type == E_HLINE ? QFrame::HLine : QFrame::VLine);
            line->setFrameShadow(QFrame::Sunken);
            built.widgets.push_back({line, type, false, false, number});
        }
        return built;
    }
};

} // namespace

const RowFamily& spacerRows()
{
    return theFamily<SpacerRows>();
}

} // namespace mod_form_qt
