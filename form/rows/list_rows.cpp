#include "form/rows/button_look.h"
#include "form/rows/row_family.h"
#include "form/values/list_widgets.h"
#include "form/values/row_value.h"
#include "form/widgets/check_combo_box.h"
#include "form/widgets/focus_wheel_combo_box.h"
#include "form/widgets/qcheck_menu.h"

#include <QListWidget>
#include <QPushButton>

namespace mod_form_qt {

namespace {

QWidget* comboBox(const PreparedRow& row, QWidget* parent)
{
    if (row.has(A_ALLOW_WHEEL) || !INFO::bGlobalWheelGuard)
        return new QComboBox(parent);
    return new helper::FocusWheelComboBox(parent);
}

QWidget* listBox(const PreparedRow& row, QWidget* parent)
{
    auto* list = new QListWidget(parent);
    list->setEnabled(!row.has(A_READONLY));
    if (row.has(A_MULTISEL))
        list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    return list;
}

QWidget* menuButton(const PreparedRow& row, QWidget* parent)
{
    QPushButton* const button = makePushButton(row.texts.first(), row, parent);
    button->setMenu(new helper::QCheckMenu(button));
    button->setEnabled(!row.has(A_READONLY));
    return button;
}

QWidget* makeList(const PreparedRow& row, QWidget* parent)
{
    switch (row.row.eleType) {
    case E_COMBOBOX:
        return comboBox(row, parent);
    case E_CHECKCOMBOBOX:
        return new helper::CheckComboBox(parent);
    case E_MENU_BUTTON:
        return menuButton(row, parent);
    default:
        return listBox(row, parent);
    }
}

class ListRows : public RowFamily
{
public:
    BuiltRow build(const PreparedRow& row, BuildContext& context) const override
    {
        const bool button = row.row.eleType == E_MENU_BUTTON;
        BuiltRow built;
        if (!button)
            context.addLabel(row, built);
        QWidget* const widget = makeList(row, context.container());
        fillListWidget(widget, RowValue(row.row, context.map()).readList(), row.row.attr);
        if (auto* list = qobject_cast<QListWidget*>(widget);
            list && row.has(A_ADJUST_WIDTH_TO_CONTENTS))
            list->setMinimumWidth(list->sizeHintForColumn(0) + 2 * list->frameWidth());
        if (button)
            context.menuHost = widget;
        built.add(widget, button ? E_BUTTON : row.row.eleType);
        return built;
    }
};

} // namespace

const RowFamily& listRows()
{
    return theFamily<ListRows>();
}

} // namespace mod_form_qt
