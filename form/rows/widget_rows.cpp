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
