#include "form/model/info.h"
#include "form/values/row_value.h"
#include "form/widgets/check_combo_box.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTextEdit>

namespace mod_form_qt {

namespace {

/// \return  the variable that a value points at, null if it is no pointer
const void* targetOf(const QVariant& value)
{
    if (INFO::isVariantPtr(value))
        return value.value<T_VARIANT_PTR>();
    if (INFO::isListDataPtr(value))
        return value.value<T_LISTDATA_PTR>();
    return nullptr;
}

WIDGET_INFO rowOfVariable(const QMap<QString, QVariant>* map, const void* variable)
{
    if (map == nullptr || variable == nullptr)
        return {};
    for (auto entry = map->cbegin(); entry != map->cend(); ++entry) {
        if (targetOf(*entry) != variable)
            continue;
        WIDGET_INFO row = WIDGET_INFO::widgets(map, entry.key());
        if (!row.empty())
            return row;
    }
    // The entry may have been replaced by a plain value; the widgets still know the variable.
    const QString& prefix = INFO::widgetDataVarName;
    for (auto entry = map->lowerBound(prefix);
         entry != map->cend() && entry.key().startsWith(prefix); ++entry) {
        if (!INFO::isWidgetInfo(*entry))
            continue;
        auto row = entry->value<WIDGET_INFO>();
        if (targetOf(boundPointer(row)) == variable)
            return row;
    }
    return {};
}

} // namespace

WIDGET_INFO INFO::boundRow(const QMap<QString, QVariant>* map, const QVariant& variable)
{
    WIDGET_INFO row = rowOfVariable(map, &variable);
    if (row.empty())
        row = rowOfVariable(map, targetOf(variable));
    return row;
}

WIDGET_INFO INFO::boundRow(const QMap<QString, QVariant>* map, const T_LISTDATA& variable)
{
    return rowOfVariable(map, &variable);
}

QWidget* INFO::widgetByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key, int index,
                           FindPos pos, QPointer<QWidget>* other, bool flag)
{
    return WIDGET_INFO::widget<QWidget>(map, key, index, pos, other, flag);
}

QLabel* INFO::labelByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key, int index,
                         FindPos pos, QPointer<QWidget>* other, bool flag)
{
    return WIDGET_INFO::widget<QLabel>(map, key, index, pos, other, flag);
}

QLineEdit* INFO::lineEditByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key,
                               int index, FindPos pos, QPointer<QWidget>* other, bool flag)
{
    return WIDGET_INFO::widget<QLineEdit>(map, key, index, pos, other, flag);
}

QLineEdit* INFO::lineEditByVar(const QMap<QString, QVariant>* map, const QVariant& variable)
{
    return widgetFromVariantPtr<QLineEdit>(map, variable);
}

QPlainTextEdit* INFO::plainTextEditByKey(const QMap<QString, QVariant>* map,
                                         const MAP_KEY_TYPE& key, int index, FindPos pos,
                                         QPointer<QWidget>* other, bool flag)
{
    return WIDGET_INFO::widget<QPlainTextEdit>(map, key, index, pos, other, flag);
}

QPlainTextEdit* INFO::plainTextEditByVar(const QMap<QString, QVariant>* map,
                                         const QVariant& variable)
{
    return widgetFromVariantPtr<QPlainTextEdit>(map, variable);
}

QTextEdit* INFO::textEditByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key,
                               int index, FindPos pos, QPointer<QWidget>* other, bool flag)
{
    return WIDGET_INFO::widget<QTextEdit>(map, key, index, pos, other, flag);
}

QTextEdit* INFO::textEditByVar(const QMap<QString, QVariant>* map, const QVariant& variable)
{
    return widgetFromVariantPtr<QTextEdit>(map, variable);
}

QDateEdit* INFO::dateEditByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key,
                               int index, FindPos pos, QPointer<QWidget>* other, bool flag)
{
    return WIDGET_INFO::widget<QDateEdit>(map, key, index, pos, other, flag);
}

QDateEdit* INFO::dateEditByVar(const QMap<QString, QVariant>* map, const QVariant& variable)
{
    return widgetFromVariantPtr<QDateEdit>(map, variable);
}

QCheckBox* INFO::checkBoxByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key,
                               int index, FindPos pos, QPointer<QWidget>* other, bool flag)
{
    return WIDGET_INFO::widget<QCheckBox>(map, key, index, pos, other, flag);
}

QCheckBox* INFO::checkBoxByVar(const QMap<QString, QVariant>* map, const QVariant& variable)
{
    return widgetFromVariantPtr<QCheckBox>(map, variable);
}

QRadioButton* INFO::radioButtonByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key,
                                     int index, FindPos pos, QPointer<QWidget>* other, bool flag)
{
    return WIDGET_INFO::widget<QRadioButton>(map, key, index, pos, other, flag);
}

QRadioButton* INFO::radioButtonByVar(const QMap<QString, QVariant>* map, const QVariant& variable)
{
    return widgetFromVariantPtr<QRadioButton>(map, variable);
}

QComboBox* INFO::comboBoxByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key,
                               int index, FindPos pos, QPointer<QWidget>* other, bool flag)
{
    return WIDGET_INFO::widget<QComboBox>(map, key, index, pos, other, flag);
}

QComboBox* INFO::comboBoxByVar(const QMap<QString, QVariant>* map, const QVariant& variable)
{
    return widgetFromVariantPtr<QComboBox>(map, variable);
}

QComboBox* INFO::comboBoxByVar(const QMap<QString, QVariant>* map, const T_LISTDATA& variable)
{
    return widgetFromListDataPtr<QComboBox>(map, variable);
}

helper::CheckComboBox* INFO::checkComboBoxByKey(const QMap<QString, QVariant>* map,
                                                const MAP_KEY_TYPE& key, int index, FindPos pos,
                                                QPointer<QWidget>* other, bool flag)
{
    return WIDGET_INFO::widget<helper::CheckComboBox>(map, key, index, pos, other, flag);
}

helper::CheckComboBox* INFO::checkComboBoxByVar(const QMap<QString, QVariant>* map,
                                                const QVariant& variable)
{
    return widgetFromVariantPtr<helper::CheckComboBox>(map, variable);
}

helper::CheckComboBox* INFO::checkComboBoxByVar(const QMap<QString, QVariant>* map,
                                                const T_LISTDATA& variable)
{
    return widgetFromListDataPtr<helper::CheckComboBox>(map, variable);
}

QListWidget* INFO::listWidgetByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key,
                                   int index, FindPos pos, QPointer<QWidget>* other, bool flag)
{
    return WIDGET_INFO::widget<QListWidget>(map, key, index, pos, other, flag);
}

QListWidget* INFO::listWidgetByVar(const QMap<QString, QVariant>* map, const QVariant& variable)
{
    return widgetFromVariantPtr<QListWidget>(map, variable);
}

QListWidget* INFO::listWidgetByVar(const QMap<QString, QVariant>* map, const T_LISTDATA& variable)
{
    return widgetFromListDataPtr<QListWidget>(map, variable);
}

QSpinBox* INFO::spinBoxByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key, int index,
                             FindPos pos, QPointer<QWidget>* other, bool flag)
{
    return WIDGET_INFO::widget<QSpinBox>(map, key, index, pos, other, flag);
}

QSpinBox* INFO::spinBoxByVar(const QMap<QString, QVariant>* map, const QVariant& variable)
{
    return widgetFromVariantPtr<QSpinBox>(map, variable);
}

QDoubleSpinBox* INFO::doubleSpinBoxByKey(const QMap<QString, QVariant>* map,
                                         const MAP_KEY_TYPE& key, int index, FindPos pos,
                                         QPointer<QWidget>* other, bool flag)
{
    return WIDGET_INFO::widget<QDoubleSpinBox>(map, key, index, pos, other, flag);
}

QDoubleSpinBox* INFO::doubleSpinBoxByVar(const QMap<QString, QVariant>* map,
                                         const QVariant& variable)
{
    return widgetFromVariantPtr<QDoubleSpinBox>(map, variable);
}

QPushButton* INFO::pushButtonByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key,
                                   int index, FindPos pos, QPointer<QWidget>* other, bool flag)
{
    return WIDGET_INFO::widget<QPushButton>(map, key, index, pos, other, flag);
}

QPushButton* INFO::pushButtonByVar(const QMap<QString, QVariant>* map, const QVariant& variable)
{
    return widgetFromVariantPtr<QPushButton>(map, variable);
}

QPushButton* INFO::pushButtonByVar(const QMap<QString, QVariant>* map, const T_LISTDATA& variable)
{
    return widgetFromListDataPtr<QPushButton>(map, variable);
}

} // namespace mod_form_qt
