#include "form/rows/button_look.h"
#include "form/rows/input_limits.h"
#include "form/rows/row_family.h"

#include <QLineEdit>
#include <QPushButton>

namespace mod_form_qt {

namespace {

class PathRows : public RowFamily
{
public:
    BuiltRow build(const PreparedRow& row, BuildContext& context) const override
    {
        BuiltRow built;
        context.addLabel(row, built);
        auto* edit = new QLineEdit(context.valueOf(row).toString(), context.container());
        limitInput(edit, row, context);
        built.add(edit, E_LINEEDIT);
        const QString text = context.partText(row, 1, INFO::getDefaultWidgetText(row.row.eleType));
        built.add(makePushButton(text, row, context.container()), E_BUTTON);
        return built;
    }
};

} // namespace

const RowFamily& pathRows()
{
    return theFamily<PathRows>();
}

} // namespace mod_form_qt
