#include "form/events/button_actions.h"
#include "form/rows/button_look.h"
#include "form/rows/row_family.h"

#include <QPushButton>

namespace mod_form_qt {

QPushButton* makePushButton(const QString& text, const PreparedRow& row, QWidget* parent)
{
    auto* button = new QPushButton(text, parent);
    button->setAutoDefault(row.has(A_DEFAULT_BUTTON));
    button->setDefault(row.has(A_DEFAULT_BUTTON));
    if (row.has(A_BUTTON_LABEL_BOLD)) {
        QFont font = button->font();
        font.setWeight(QFont::Bold);
        button->setFont(font);
    }
    return button;
}

namespace {

class ButtonRows : public RowFamily
{
public:
    BuiltRow build(const PreparedRow& row, BuildContext& context) const override
    {
        const int type = row.row.eleType;
        // The title of a colour or font button is its label, that of any other its text.
        const bool labelled = type == E_COLOR_BUTTON || type == E_FONT_BUTTON;
        BuiltRow built;
        if (labelled)
            context.addLabel(row, built);
        const QString text =
            context.partText(row, labelled ? 1 : 0, INFO::getDefaultWidgetText(type));
        QPushButton* const button = makePushButton(text, row, context.container());
        if (type == E_COLOR_BUTTON) {
            showColor(button, context.valueOf(row));
            button->setStyleSheet(QStringLiteral("QPushButton { text-align:left; }"));
        } else if (type == E_FONT_BUTTON) {
            showFont(button, context.valueOf(row));
        }
        if (type == E_BUTTON)
            context.menuHost = button;
        built.add(button, E_BUTTON);
        return built;
    }
};

} // namespace

const RowFamily& buttonRows()
{
    return theFamily<ButtonRows>();
}

} // namespace mod_form_qt
