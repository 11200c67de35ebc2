#include "form/model/info.h"

#include <QDebug>

namespace mod_form_qt {

namespace {

/// \return  the list behind list data or a pointer to it, null if there is none
const T_LISTDATA* listOf(const QVariant& value)
{
    if (INFO::isListDataPtr(value))
        return value.value<T_LISTDATA_PTR>();
    if (INFO::isListData(value))
        return static_cast<const T_LISTDATA*>(value.constData());
    return nullptr;
}

/// Follows pointers to variants to their end.
QVariant pointee(const QVariant& value)
{
    QSet<const QVariant*> seen;
    QVariant current = value;
    while (INFO::isVariantPtr(current)) {
        const QVariant* target = current.value<T_VARIANT_PTR>();
        if (target == nullptr || seen.contains(target))
            return {};
        seen.insert(target);
        current = *target;
    }
    return current;
}

} // namespace

bool INFO::isListData(const QVariant& value)
{
    return value.metaType() == QMetaType::fromType<T_LISTDATA>();
}

bool INFO::isListDataPtr(const QVariant& value)
{
    return value.metaType() == QMetaType::fromType<T_LISTDATA_PTR>();
}

bool INFO::isListDataOrListDataPtr(const QVariant& value)
{
    return isListData(value) || isListDataPtr(value);
}

bool INFO::isVariantPtr(const QVariant& value)
{
    return value.metaType() == QMetaType::fromType<T_VARIANT_PTR>();
}

bool INFO::isVariantMap(const QVariant& value)
{
    return value.typeId() == QMetaType::QVariantMap;
}

bool INFO::isQVariantListType(const QVariant& value)
{
    return value.typeId() == QMetaType::QVariantList;
}

bool INFO::isWidgetInfo(const QVariant& value)
{
    return value.metaType() == QMetaType::fromType<WIDGET_INFO>();
}

qint32 INFO::varToInt32(const QVariant& value)
{
    return pointee(value).toInt();
}

quint32 INFO::varToUInt32(const QVariant& value)
{
    return pointee(value).toUInt();
}

qint64 INFO::varToInt64(const QVariant& value)
{
    return pointee(value).toLongLong();
}

quint64 INFO::varToUInt64(const QVariant& value)
{
    return pointee(value).toULongLong();
}

void INFO::debugVariantAsListData(const QVariant& value)
{
    const QVariant data = pointee(value);
    const T_LISTDATA* items = listOf(data);
    if (items == nullptr) {
        qDebug() << "no list data";
        return;
    }
    for (const auto& [text, selected, userData, roles] : *items)
        qDebug() << text << selected << userData;
}

QVariant INFO::getSelectedListValue(const T_LISTDATA& list)
{
    for (const auto& [text, selected, value, roles] : list) {
        if (selected)
            return value;
    }
    return {};
}

QVariant INFO::getSelectedListValue(const QVariant& list)
{
    const QVariant data = pointee(list); // the list is looked at inside it
    const T_LISTDATA* items = listOf(data);
    return items ? getSelectedListValue(*items) : QVariant();
}

QVariantList INFO::getSelectedListValues(const T_LISTDATA& list)
{
    QVariantList values;
    for (const auto& [text, selected, value, roles] : list) {
        if (selected)
            values.append(value);
    }
    return values;
}

QVariantList INFO::getSelectedListValues(const QVariant& list)
{
    const QVariant data = pointee(list); // the list is looked at inside it
    const T_LISTDATA* items = listOf(data);
    return items ? getSelectedListValues(*items) : QVariantList();
}

QVariant INFO::getBaseValue(const QVariant& value, bool asList, bool single)
{
    QVariant base = pointee(value);
    if (!isListDataOrListDataPtr(base))
        return base;
    const QVariantList selected = getSelectedListValues(base);
    if (single && !asList && selected.size() == 1)
        return selected.first();
    return selected;
}

QVariant INFO::getBaseValue(const QMap<QString, QVariant>* map, const QString& key, bool asList,
                            bool single)
{
    return map ? getBaseValue(map->value(key), asList, single) : QVariant();
}

} // namespace mod_form_qt
