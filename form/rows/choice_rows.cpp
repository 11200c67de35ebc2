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
        // A button that is about to get a group of its own has nothing to do with its neighbours.
        const bool exclusive = button->autoExclusive();
        const bool grouped = lastBitSet(row.row.attr, A_GROUP_ID1, A_GROUP_ID10) >= 0;
        button->setAutoExclusive(exclusive && !grouped);
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
