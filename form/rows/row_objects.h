#pragma once

#include <QObject>
#include <QVariant>

namespace mod_form_qt {

/// \return  true if a row's data is a pointer to an object, null or not
inline bool holdsObject(const QVariant& data)
{
    return (data.metaType().flags() & QMetaType::PointerToQObject) != 0;
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
