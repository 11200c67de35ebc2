#include "form/rows/row_family.h"
#include "form/rows/row_objects.h"

namespace mod_form_qt {

namespace {

class WidgetRows : public RowFamily
{
public:
    BuiltRow build(const PreparedRow& row, BuildContext& context) const override
    {
        BuiltRow built;
        auto* widget = objectOf<QWidget>(row.row.data);
        if (widget == nullptr)
            return built;
        // Now, and not when the layout is installed: the order of the rows is the order of the
        // focus.
        if (context.container() && widget->parentWidget() != context.container())
            widget->setParent(context.container());
        QVariant value = valueBeside(row, context);
        if (value.isValid())
            INFO::getSetData(widget, true, true, value);
        context.addLabel(row, built);
        context.menuHost = widget;
        built.add(widget, E_WIDGET);
        return built;
    }
};

} // namespace

const RowFamily& widgetRows()
{
    return theFamily<WidgetRows>();
}

} // namespace mod_form_qt
