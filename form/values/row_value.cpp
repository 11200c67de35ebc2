#include "form/values/row_value.h"

#include "form/values/data.h"
#include "form/values/list_widgets.h"

namespace mod_form_qt {

namespace {

/// \return  true for a pointer to a variable, false also for a null pointer
bool isBinding(const QVariant& value)
{
    return (INFO::isVariantPtr(value) && value.value<T_VARIANT_PTR>())
        || (INFO::isListDataPtr(value) && value.value<T_LISTDATA_PTR>());
}

const T_LISTDATA* listIn(const QVariant& value)
{
    if (INFO::isListDataPtr(value))
        return value.value<T_LISTDATA_PTR>();
    if (INFO::isListData(value))
        return static_cast<const T_LISTDATA*>(value.constData());
    if (INFO::isVariantPtr(value)) {
        const QVariant* variable = value.value<T_VARIANT_PTR>();
        if (variable && INFO::isListData(*variable))
            return static_cast<const T_LISTDATA*>(variable->constData());
    }
    return nullptr;
}

void writeThrough(const QVariant& binding, const QVariant& value)
{
    if (INFO::isVariantPtr(binding)) {
        *binding.value<T_VARIANT_PTR>() = value;
        return;
    }
    T_LISTDATA& list = *binding.value<T_LISTDATA_PTR>();
    if (INFO::isListData(value))
        list = value.value<T_LISTDATA>();
    else
        markSelection(list, selectionValues(value), true);
}

QVariant readThrough(const QVariant& binding)
{
    return INFO::DATA<QVariant>(binding).value();
}

bool isListRow(int eleType)
{
    return eleType == E_LISTBOX || eleType == E_COMBOBOX || eleType == E_CHECKCOMBOBOX
        || eleType == E_MENU_BUTTON;
}

/// Marks a row's own list data, or the list it is bound to, by a stored selection.
void markByStored(const INFO& row, QVariant& list, const QVariant& stored)
{
    const bool multi = isMultiSelection(row.eleType, row.attr);
    // A stored "nothing" counts, except in a combo box, which then starts as the row says.
    if (!multi && row.eleType != E_COMBOBOX)
        INFO::loadedSelDataToListData(QVariantList(), list, true);
    INFO::loadedSelDataToListData(stored, list, multi);
}

bool isStoredSelection(const INFO& row, const QVariant& list, const QVariant& stored)
{
    return isListRow(row.eleType) && listIn(list) && !listIn(stored);
}

void takeMapValue(INFO& row, const QVariant& mapValue)
{
    if (isBinding(row.data)) {
        if (INFO::isVariantPtr(mapValue) || INFO::isListDataPtr(mapValue))
            return;
        if (isStoredSelection(row, row.data, mapValue))
            markByStored(row, row.data, mapValue);
        else
            writeThrough(row.data, mapValue);
        return;
    }
    if (!isStoredSelection(row, row.data, mapValue)) {
        row.data = mapValue;
        return;
    }
    markByStored(row, row.data, readThrough(mapValue));
    if (!isBinding(mapValue))
        return;
    // The variable has only the selection; its row brings the items.
    writeThrough(mapValue, row.data);
    row.data = mapValue;
}

QString nextAutomaticKey()
{
    static qint64 counter = 0;
    return INFO::buildAutomatikVarKeyForPtr(QString::number(++counter));
}

} // namespace

QVariant boundPointer(const WIDGET_INFO& row)
{
    // From the back, where the inputs are; the first is mostly a label.
    for (auto index = int(row.size()) - 1; index >= 0; --index) {
        const QPointer<QWidget> widget = row.widgetAt(index);
        QVariant bound = widget ? widget->property(boundPropertyKey) : QVariant();
        if (bound.isValid())
            return bound;
    }
    return {};
}

void storeValue(const QVariant& bound, QMap<QString, QVariant>* map, const QString& key,
                const QVariant& value)
{
    const bool isBound = isBinding(bound);
    if (isBound)
        writeThrough(bound, value);
    if (map == nullptr || key.isEmpty())
        return;
    const auto entry = map->constFind(key);
    if (entry == map->constEnd())
        map->insert(key, isBound ? bound : value);
    else if (!isBinding(*entry))
        map->insert(entry, key, value);
    else if (!isBound || *entry != bound)
        writeThrough(QVariant(*entry), value);
}

void storeList(const QVariant& bound, QMap<QString, QVariant>* map, const QString& key,
               const T_LISTDATA& list)
{
    storeValue(bound, map, key, QVariant::fromValue(list));
}

const T_LISTDATA* findList(const QVariant& bound, const QMap<QString, QVariant>* map,
                           const QString& key)
{
    if (const T_LISTDATA* list = listIn(bound))
        return list;
    if (map == nullptr)
        return nullptr;
    const auto entry = map->constFind(key);
    return entry != map->constEnd() ? listIn(*entry) : nullptr;
}

RowValue::RowValue(const INFO& row, QMap<QString, QVariant>* map, const QString& key)
    : m_bound(isBinding(row.data) ? row.data : QVariant())
    , m_row(row)
    , m_map(map)
    , m_key(row.key.isEmpty() ? key : row.key)
{
}

bool RowValue::exists() const
{
    return m_bound.isValid() || (m_map && !m_key.isEmpty());
}

QVariant RowValue::read() const
{
    if (m_bound.isValid())
        return readThrough(m_bound);
    return m_key.isEmpty() ? QVariant() : INFO::DATA<QVariant>(m_map, m_key, false).value();
}

void RowValue::write(const QVariant& value)
{
    storeValue(m_bound, m_map, m_key, value);
}

T_LISTDATA RowValue::readList() const
{
    const T_LISTDATA* list = findList(m_bound, m_key.isEmpty() ? nullptr : m_map, m_key);
    if (list == nullptr)
        list = listIn(m_row.data);
    return list ? *list : T_LISTDATA();
}

void RowValue::writeList(const T_LISTDATA& list)
{
    storeList(m_bound, m_map, m_key, list);
}

bool isSameText(const QString& one, const QString& other)
{
    if (one.size() != other.size())
        return false;
    return one.constData() == other.constData() || one == other;
}

bool isSameValue(const QVariant& one, const QVariant& other)
{
    if (one.metaType() != other.metaType())
        return false;
    if (one.metaType() != QMetaType::fromType<QString>())
        return one == other;
    return isSameText(*static_cast<const QString*>(one.constData()),
                      *static_cast<const QString*>(other.constData()));
}

bool isValueRow(int eleType)
{
    switch (eleType) {
    case E_NUMBER:
    case E_DATE:
    case E_DATETIME:
    case E_TEXTEDIT:
    case E_PLAINTEXT:
    case E_LINEEDIT:
    case E_CHECKBOX:
    case E_RADIOBUTTON:
        return true;
    default:
        return false;
    }
}

bool usesMapValue(const INFO& row, bool useMapValues, const QSet<QString>& loadedKeys)
{
    return !isBitSet(row.attr, A_DONT_USE_MAP_VALUE)
        && (useMapValues || isBitSet(row.attr, A_USE_MAP_VALUE) || loadedKeys.contains(row.key));
}

void bindRow(INFO& row, QMap<QString, QVariant>* map, bool useMapValues,
             const QSet<QString>& loadedKeys)
{
    if (row.key.isEmpty()) {
        if (!INFO::isVariantPtr(row.data) && !INFO::isListDataPtr(row.data))
            return;
        row.key = nextAutomaticKey();
    }
    if (map == nullptr)
        return;
    const bool isObject = row.data.metaType().flags().testFlag(QMetaType::PointerToQObject);
    if (usesMapValue(row, useMapValues, loadedKeys)) {
        const auto entry = map->constFind(row.key);
        // An object of an earlier form may be gone by now, and none is ever exchanged for a value:
        // the row that brings one shows what the map holds in it.
        const bool holdsObject = entry != map->constEnd()
            && entry->metaType().flags().testFlag(QMetaType::PointerToQObject);
        if (entry != map->constEnd() && !holdsObject) {
            if (isObject)
                return;
            takeMapValue(row, QVariant(*entry));
        }
    }
    map->insert(row.key, row.data);
}

} // namespace mod_form_qt
