#include "form/events/config_selector.h"
#include "form/rows/row_family.h"
#include "form/widgets/focus_wheel_combo_box.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace mod_form_qt {

namespace {

class MulticonfigRows : public RowFamily
{
public:
    BuiltRow build(const PreparedRow& row, BuildContext& context) const override
    {
        auto* group = new QGroupBox(row.texts.first(), context.container());
        auto* layout = new QHBoxLayout(group);
        auto* label = new QLabel(INFO::tr("Einstellungen:"), group);
        QComboBox* const names = row.has(A_ALLOW_WHEEL) || !INFO::bGlobalWheelGuard
            ? new QComboBox(group)
            : new helper::FocusWheelComboBox(group);
        auto* add = new QPushButton(QStringLiteral("+"), group);
        auto* remove = new QPushButton(QStringLiteral("-"), group);
        label->setBuddy(names);
        layout->addWidget(label);
        layout->addWidget(names, 1);
        layout->addWidget(add);
        layout->addWidget(remove);
        add->setAutoDefault(false);
        remove->setAutoDefault(false);

        BuiltRow built;
        built.add(group, E_MULTICONFIG);
        for (const auto& [widget, type] : {std::pair<QWidget*, int>(label, E_LABEL),
                                           {names, E_COMBOBOX},
                                           {add, E_BUTTON},
                                           {remove, E_BUTTON}})
            built.widgets.push_back({widget, type, true, true, -1});
        // The names are no value of the form: the selector reads and switches them by itself.
        built.wired = true;
        if (row.option.iniUseMultiConf())
            setUpConfigSelector(context.form, row.option, names, add, remove);
        return built;
    }
};

} // namespace

const RowFamily& multiconfigRows()
{
    return theFamily<MulticonfigRows>();
}

} // namespace mod_form_qt
