#include "form/values/list_widgets.h"

#include "form/values/list_items.h"
#include "form/values/value_index.h"
#include "form/widgets/check_combo_box.h"

#include <QActionGroup>
#include <QComboBox>
#include <QFont>
#include <QIcon>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QSignalBlocker>

#include <algorithm>
#include <memory>
#include <numeric>

namespace mod_form_qt {

namespace {

QMenu* menuOf(QWidget* widget)
{
    auto* button = qobject_cast<QPushButton*>(widget);
    return button ? button->menu() : nullptr;
}

/// \return  the places of a widget's items in the order of the list data
std::vector<int> placesInListOrder(const Items& items)
{
    std::vector<std::pair<int, int>> byIndex;
    byIndex.reserve(items.count());
    for (int place = 0; place < items.count(); ++place) {
        const int index = items.listIndex(place);
        byIndex.emplace_back(index < 0 ? items.count() + place : index, place);
    }
    std::sort(byIndex.begin(), byIndex.end());
    std::vector<int> places;
    places.reserve(byIndex.size());
    for (const auto& [index, place] : byIndex)
        places.push_back(place);
    return places;
}

bool sameValue(const QVariant& one, const QVariant& other)
{
    if (one.metaType() == other.metaType() && one.isValid()
        && !one.metaType().isEqualityComparable())
        return true; // nothing better can be told of such a type
    return one == other;
}

/// Marks which of `values` a selection holds.
std::vector<bool> marksOf(const std::vector<const QVariant*>& values, const QVariantList& selection,
                          bool multi, QVariantList* matched)
{
    std::vector<bool> marks(values.size(), false);
    const ValueIndex places(values, selection.size());
    for (const QVariant& wanted : selection) {
        const std::vector<size_t> found = places.find(wanted);
        if (found.empty())
            continue;
        if (matched)
            matched->append(wanted);
        if (!multi) {
            marks[found.front()] = true;
            break;
        }
        for (const size_t index : found)
            marks[index] = true;
    }
    return marks;
}

std::vector<int> showOrder(const T_LISTDATA& list, const std::bitset<256>& attr)
{
    std::vector<int> order(list.size());
    std::iota(order.begin(), order.end(), 0);
    if (isBitSet(attr, A_SORTED)) {
        std::stable_sort(order.begin(), order.end(), [&list](int one, int other) {
            return std::get<0>(list[one]) < std::get<0>(list[other]);
        });
    }
    return order;
}

void fillCombo(QComboBox* box, const T_LISTDATA& list, const std::vector<int>& order)
{
    box->clear();
    for (const int index : order) {
        const auto& [text, selected, value, roles] = list[index];
        const int place = box->count();
        box->addItem(text);
        for (const auto& [role, data] : roles)
            box->setItemData(place, data, role);
        box->setItemData(place, value, Qt::UserRole);
        box->setItemData(place, index, listIndexRole);
    }
}

void fillCheckCombo(helper::CheckComboBox* box, const T_LISTDATA& list,
                    const std::vector<int>& order)
{
    box->clear();
    for (const int index : order) {
        const auto& [text, selected, value, roles] = list[index];
        const int place = box->count();
        box->addCheckItem(text, value, selected, false);
        for (const auto& [role, data] : roles) {
            if (role != Qt::CheckStateRole && role != Qt::UserRole)
                box->setCheckItemData(place, data, role, false);
        }
        box->setCheckItemData(place, index, listIndexRole, false);
    }
}

void fillList(QListWidget* widget, const T_LISTDATA& list, const std::vector<int>& order,
              const std::bitset<256>& attr)
{
    const bool checkable = isBitSet(attr, A_CHECKBOX);
    widget->clear();
    if (isBitSet(attr, A_MULTISEL) && widget->selectionMode() == QAbstractItemView::SingleSelection)
        widget->setSelectionMode(QAbstractItemView::MultiSelection);
    for (const int index : order) {
        const auto& [text, selected, value, roles] = list[index];
        auto* item = new QListWidgetItem(text);
        for (const auto& [role, data] : roles) {
            if (role != Qt::CheckStateRole)
                item->setData(role, data);
        }
        item->setData(Qt::UserRole, value);
        item->setData(listIndexRole, index);
        if (checkable) {
            item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
            item->setCheckState(Qt::Unchecked);
        }
        widget->addItem(item);
    }
}

/// The keyboard starts at the selection; and a change can be raised for an item only.
void setFirstCurrent(QListWidget* widget, const std::bitset<256>& attr)
{
    const std::unique_ptr<Items> items = itemsOf(widget, attr);
    int current = isBitSet(attr, A_CHECKBOX) ? 0 : -1;
    for (int place = items->count() - 1; place >= 0; --place) {
        if (items->isMarked(place))
            current = place;
    }
    if (current < items->count())
        widget->setCurrentRow(current, QItemSelectionModel::NoUpdate);
}

void setActionData(QAction* action, Qt::ItemDataRole role, const QVariant& data)
{
    switch (role) {
    case Qt::ToolTipRole:
        action->setToolTip(data.toString());
        break;
    case Qt::StatusTipRole:
        action->setStatusTip(data.toString());
        break;
    case Qt::WhatsThisRole:
        action->setWhatsThis(data.toString());
        break;
    case Qt::DecorationRole:
        action->setIcon(data.value<QIcon>());
        break;
    case Qt::FontRole:
        action->setFont(data.value<QFont>());
        break;
    default:
        break; // an action has no place for it
    }
}

void fillMenu(QMenu* menu, const T_LISTDATA& list, const std::vector<int>& order,
              const std::bitset<256>& attr)
{
    for (QAction* action : menu->actions()) {
        if (!action->property(listIndexPropertyKey).isValid())
            continue;
        menu->removeAction(action);
        action->deleteLater(); // it may be the one that has just been triggered
    }
    const QString groupName = QStringLiteral("mod_form_qt_listitems");
    delete menu->findChild<QActionGroup*>(groupName, Qt::FindDirectChildrenOnly);
    auto* group = new QActionGroup(menu);
    group->setObjectName(groupName);
    group->setExclusionPolicy(isMultiSelection(E_MENU_BUTTON, attr)
                                  ? QActionGroup::ExclusionPolicy::None
                                  : QActionGroup::ExclusionPolicy::Exclusive);
    for (const int index : order) {
        const auto& [text, selected, value, roles] = list[index];
        QString shown = text;
        auto* action = new QAction(shown.replace(QLatin1Char('&'), QLatin1String("&&")), menu);
        action->setCheckable(true);
        for (const auto& [role, data] : roles)
            setActionData(action, role, data);
        action->setData(value);
        action->setProperty(listIndexPropertyKey, index);
        group->addAction(action);
        menu->addAction(action);
    }
}

} // namespace

bool isListWidget(const QWidget* widget)
{
    if (qobject_cast<const QComboBox*>(widget) || qobject_cast<const QListWidget*>(widget))
        return true;
    const auto* button = qobject_cast<const QPushButton*>(widget);
    if (button == nullptr || button->menu() == nullptr)
        return false;
    // Other buttons may have a menu that isn't made of list data.
    const QVariant type = button->property(WIDGET_INFO::typeExtPropertyKey);
    return !type.isValid() || type.toInt() == E_MENU_BUTTON;
}

bool isMultiSelection(int eleType, const std::bitset<256>& attr)
{
    switch (eleType) {
    case E_CHECKCOMBOBOX:
        return true;
    case E_LISTBOX:
        return isBitSet(attr, A_MULTISEL | A_CHECKBOX);
    case E_MENU_BUTTON:
        return isBitSet(attr, A_MULTISEL);
    default:
        return false;
    }
}

void fillListWidget(QWidget* widget, const T_LISTDATA& list, const std::bitset<256>& attr)
{
    if (widget == nullptr)
        return;
    const QSignalBlocker quiet(widget);
    const std::vector<int> order = showOrder(list, attr);
    auto* listWidget = qobject_cast<QListWidget*>(widget);
    if (auto* checkCombo = qobject_cast<helper::CheckComboBox*>(widget))
        fillCheckCombo(checkCombo, list, order);
    else if (auto* combo = qobject_cast<QComboBox*>(widget))
        fillCombo(combo, list, order);
    else if (listWidget)
        fillList(listWidget, list, order, attr);
    else if (QMenu* menu = menuOf(widget))
        fillMenu(menu, list, order, attr);
    showMarks(widget, list, attr);
    if (listWidget)
        setFirstCurrent(listWidget, attr);
}

void showMarks(QWidget* widget, const T_LISTDATA& list, const std::bitset<256>& attr)
{
    const std::unique_ptr<Items> items = itemsOf(widget, attr);
    if (!items)
        return;
    std::vector<bool> marks(items->count(), false);
    for (const int place : placesInListOrder(*items)) {
        const int index = items->listIndex(place);
        if (index < 0 || index >= int(list.size()) || !std::get<1>(list[index]))
            continue;
        marks[place] = true;
        if (!items->isMulti())
            break;
    }
    items->setMarks(marks);
}

void showSelection(QWidget* widget, const QVariantList& selection, const std::bitset<256>& attr)
{
    const std::unique_ptr<Items> items = itemsOf(widget, attr);
    if (!items)
        return;
    const std::vector<int> places = placesInListOrder(*items);
    std::vector<QVariant> held;
    held.reserve(places.size());
    std::vector<const QVariant*> values;
    values.reserve(places.size());
    for (const int place : places)
        values.push_back(&held.emplace_back(items->value(place)));
    const std::vector<bool> inListOrder = marksOf(values, selection, items->isMulti(), nullptr);
    std::vector<bool> marks(places.size(), false);
    for (size_t at = 0; at < places.size(); ++at)
        marks[places[at]] = inListOrder[at];
    items->setMarks(marks);
}

QVariantList selectedValues(QWidget* widget, const std::bitset<256>& attr)
{
    QVariantList values;
    const std::unique_ptr<Items> items = itemsOf(widget, attr);
    if (!items)
        return values;
    for (const int place : placesInListOrder(*items)) {
        if (items->isMarked(place))
            values.append(items->value(place));
    }
    return values;
}

T_LISTDATA markedBy(QWidget* widget, T_LISTDATA list, const std::bitset<256>& attr)
{
    const std::unique_ptr<Items> items = itemsOf(widget, attr);
    if (!items)
        return list;
    std::vector<bool> marks(list.size(), false);
    for (int place = 0; place < items->count(); ++place) {
        if (!items->isMarked(place))
            continue;
        const QVariant value = items->value(place);
        size_t index = size_t(items->listIndex(place));
        if (index >= list.size() || !sameValue(std::get<2>(list[index]), value)) {
            index = 0;
            while (index < list.size()
                   && (marks[index] || !sameValue(std::get<2>(list[index]), value)))
                ++index;
        }
        if (index < list.size())
            marks[index] = true;
    }
    setMarks(list, marks);
    return list;
}

QVariantList selectionValues(const QVariant& selection)
{
    const QVariant base = INFO::getBaseValue(selection, true);
    switch (base.typeId()) {
    case QMetaType::UnknownType:
        return {};
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
    case QMetaType::QByteArrayList:
        return base.toList();
    default:
        return {base};
    }
}

std::vector<bool> selectionMarks(const T_LISTDATA& list, const QVariantList& selection, bool multi,
                                 QVariantList* matched)
{
    std::vector<const QVariant*> values;
    values.reserve(list.size());
    for (const ListItem& item : list)
        values.push_back(&std::get<2>(item));
    return marksOf(values, selection, multi, matched);
}

bool hasMarks(const T_LISTDATA& list, const std::vector<bool>& marks)
{
    for (size_t index = 0; index < list.size(); ++index) {
        if (std::get<1>(list[index]) != marks[index])
            return false;
    }
    return true;
}

void setMarks(T_LISTDATA& list, const std::vector<bool>& marks)
{
    for (size_t index = 0; index < list.size(); ++index)
        std::get<1>(list[index]) = marks[index];
}

void markSelection(T_LISTDATA& list, const QVariantList& selection, bool multi)
{
    setMarks(list, selectionMarks(list, selection, multi));
}

} // namespace mod_form_qt
