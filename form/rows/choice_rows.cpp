#include "form/rows/row_family.h"

#include <QCheckBox>
#include <QRadioButton>

namespace mod_form_qt {

namespace {

class ChoiceRows : public RowFamily
{
public:
    BuiltRow build(const PreparedRow& row, BuildContext& context) const override
    {
        QAbstractButton* button = nullptr;
        if (row.row.eleType == E_CHECKBOX)
            button = new QCheckBox(row.texts.first(), context.container());
        else
            button = new QRadioButton(row.texts.first(), context.container());
        // Before it is in its button group it would uncheck its neighbours.
        const bool exclusive = button->autoExclusive();
        button->setAutoExclusive(false);
        button->setChecked(context.valueOf(row).toBool());
        button->setAutoExclusive(exclusive);
        if (row.has(A_CHECKBUTTON_RIGHT) || row.has(A_RADIOBUTTON_RIGHT))
            button->setLayoutDirection(Qt::RightToLeft);
        if (row.has(A_BUTTON_LABEL_BOLD)) {
            QFont font = button->font();
            font.setWeight(QFont::Bold);
            button->setFont(font);
        }
        BuiltRow built;
        built.add(button, row.row.eleType);
        return built;
    }
};

} // namespace

const RowFamily& choiceRows()
{
    return theFamily<ChoiceRows>();
}

} // namespace mod_form_qt
