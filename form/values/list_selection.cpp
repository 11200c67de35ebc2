#include "form/model/info.h"
#include "form/values/list_widgets.h"
#include "form/values/row_value.h"

#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>

#include <algorithm>

namespace mod_form_qt {

namespace {

bool markRow(QMap<QString, QVariant>* map, const QString& key, const QVariant& selection,
             bool multi, QVariantList* matched)
{
    if (map == nullptr)
        return false;
    const QVariant bound = boundPointer(WIDGET_INFO::widgets(map, key));
    const T_LISTDATA* list = findList(bound, map, key);
    if (list == nullptr)
        return false;
    const std::vector<bool> marks =
        selectionMarks(*list, selectionValues(selection), multi, matched);
    if (hasMarks(*list, marks))
        return true;
    T_LISTDATA marked = *list;
    setMarks(marked, marks);
    storeList(bound, map, key, marked);
    return true;
}

std::vector<QWidget*> listWidgetsOf(const WIDGET_INFO& row)
{
    std::vector<QWidget*> widgets;
    for (const QPointer<QWidget>& widget : row.widgets()) {
        if (isListWidget(widget))
            widgets.push_back(widget);
    }
    return widgets;
}

/// Selects what was selected, if the new items still hold any of it.
void keepSelected(T_LISTDATA& list, const QVariantList& selected, bool multi)
{
    QVariantList matched;
    const std::vector<bool> marks = selectionMarks(list, selected, multi, &matched);
    if (!matched.isEmpty())
        setMarks(list, marks);
}

} // namespace

QVariantList INFO::getUserDataListValues(const T_LISTDATA& list)
{
    QVariantList values;
    values.reserve(qsizetype(list.size()));
    for (const auto& [text, selected, value, roles] : list)
        values.append(value);
    return values;
}

QVariantList INFO::getUserDataListValues(const QVariant& list)
{
    const T_LISTDATA* items = findList(list, nullptr, QString());
    return items ? getUserDataListValues(*items) : QVariantList();
}

bool INFO::setListSelData(QMap<QString, QVariant>* map, const QString& key,
                          const QVariant& selection, bool multi)
{
    return markRow(map, key, selection, multi, nullptr);
}

bool INFO::userSelDataToListData(QMap<QString, QVariant>* map, const QString& key,
                                 const QVariant& selection, bool multi, QList<QVariant>& matched)
{
    matched.clear();
    return markRow(map, key, selection, multi, &matched);
}

bool INFO::loadedSelDataToListData(const QVariant& loaded, QVariant& list, bool multi)
{
    const T_LISTDATA* items = findList(list, nullptr, QString());
    if (items == nullptr)
        return false;
    QVariantList matched;
    const std::vector<bool> marks =
        selectionMarks(*items, selectionValues(loaded), multi, &matched);
    // An item without a value stands for "nothing chosen", and that saved says nothing.
    const auto isChoice = [](const QVariant& value) { return value.isValid(); };
    if (!multi && std::none_of(matched.cbegin(), matched.cend(), isChoice))
        return false;
    if (hasMarks(*items, marks))
        return true;
    T_LISTDATA marked = *items;
    setMarks(marked, marks);
    if (isListDataPtr(list))
        *list.value<T_LISTDATA_PTR>() = std::move(marked);
    else if (isVariantPtr(list))
        *list.value<T_VARIANT_PTR>() = QVariant::fromValue(marked);
    else
        list = QVariant::fromValue(marked);
    return true;
}

bool INFO::updateListData(const QVariant& newData, QMap<QString, QVariant>* map, const QString& key,
                          EleInitEvent event, bool keepSelection, bool blockSignals, bool, bool)
{
    const T_LISTDATA* items = findList(newData, nullptr, QString());
    if (items == nullptr || map == nullptr || key.isEmpty())
        return false;
    const WIDGET_INFO row = WIDGET_INFO::widgets(map, key);
    const std::vector<QWidget*> widgets = listWidgetsOf(row);
    const QVariant bound = boundPointer(row);
    const T_LISTDATA* old = findList(bound, map, key);
    if (widgets.empty() && old == nullptr)
        return false;

    const QVariantList before = old ? getSelectedListValues(*old) : QVariantList();
    T_LISTDATA list = *items;
    if (keepSelection) {
        const bool multi = !widgets.empty()
            && isMultiSelection(WIDGET_INFO::typeExt(widgets.front()),
                                WIDGET_INFO::flags(widgets.front()));
        keepSelected(list, before, multi || before.size() > 1);
    }
    const QVariantList after = getSelectedListValues(list);
    storeList(bound, map, key, list);
    for (QWidget* widget : widgets)
        fillListWidget(widget, list, WIDGET_INFO::flags(widget));

    // Filling is silent in any case: a handler that ran halfway would store half the items.
    const bool raise = event == INIT_EVENT || (event == INIT_EVENT_VALID && !after.isEmpty())
        || (!blockSignals && before != after);
    if (!raise)
        return true;
    for (const QPointer<QWidget>& widget : row.widgets()) {
        if (isListWidget(widget))
            triggerEmit(widget, false, WIDGET_INFO::isBitSet(widget, A_IMMEDIATE_DATA_UPDATE));
    }
    return true;
}

bool INFO::selectListCtrlBySelData(const QMap<QString, QVariant>* map, const QString& key,
                                   const QVariant& selection, bool blockSignals)
{
    if (key.isEmpty())
        return false;
    const std::vector<QWidget*> widgets = listWidgetsOf(WIDGET_INFO::widgets(map, key));
    if (widgets.empty())
        return false;
    const QVariantList values = selectionValues(selection);
    for (QWidget* widget : widgets) {
        const bool wasBlocked = widget->blockSignals(blockSignals || widget->signalsBlocked());
        const QPointer<QWidget> guard = widget;
        showSelection(widget, values, WIDGET_INFO::flags(widget));
        if (guard)
            widget->blockSignals(wasBlocked);
    }
    return true;
}

} // namespace mod_form_qt
