#pragma once

#include "form/rows/build_context.h"

#include <QObject>
#include <QVariant>

namespace mod_form_qt {

/// \return  true if a row's data is a pointer to an object, null or not
inline bool holdsObject(const QVariant& data)
{
    return (data.metaType().flags() & QMetaType::PointerToQObject) != 0;
}

/// \return  the plain value that the map holds for a row that brings an object; invalid if there is
///          none
inline QVariant valueBeside(const PreparedRow& row, const BuildContext& context)
{
    const QVariant value = context.map()->value(row.row.key);
    return row.row.key.isEmpty() || holdsObject(value) ? QVariant() : INFO::getBaseValue(value);
}

/// \return  the object that a row's data points at, under QObject* or under its own class; null if
///          it is of another class
template <typename T>
T* objectOf(const QVariant& data)
{
    if (!holdsObject(data))
        return nullptr;
    return qobject_cast<T*>(*static_cast<QObject* const*>(data.constData()));
}

} // namespace mod_form_qt
