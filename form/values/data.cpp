#include "form/values/data.h"

#include <type_traits>

namespace mod_form_qt {

namespace {

template <typename T>
QVariant asVariant(const T& value)
{
    if constexpr (std::is_same_v<T, QVariant>)
        return value;
    else
        return QVariant::fromValue(value);
}

} // namespace

template <typename T>
INFO::DATA<T>::DATA(const QVariant& v)
{
    take(v);
}

template <typename T>
INFO::DATA<T>::DATA(QMap<QString, QVariant>* map, const QString& key, bool forWrite)
{
    if (map == nullptr)
        return;
    const auto entry = map->constFind(key);
    if (entry != map->constEnd())
        take(*entry);
    if (forWrite && !key.isEmpty()) {
        m_map = map;
        m_key = key;
    }
}

template <typename T>
void INFO::DATA<T>::take(const QVariant& v)
{
    constexpr bool wantsList = std::is_same_v<T, T_LISTDATA>;
    m_metaType = v.typeId();
    if (isVariantPtr(v)) {
        T_VARIANT_PTR variable = v.value<T_VARIANT_PTR>();
        if (variable == nullptr)
            return;
        if constexpr (wantsList) {
            m_other = v;
            m_own = variable->value<T_LISTDATA>();
        } else {
            m_pointee = variable;
        }
    } else if (isListDataPtr(v)) {
        T_LISTDATA_PTR list = v.value<T_LISTDATA_PTR>();
        if (list == nullptr)
            return;
        if constexpr (wantsList) {
            m_pointee = list;
        } else {
            m_other = v;
            m_own = QVariant::fromValue(*list);
        }
    } else if constexpr (wantsList) {
        m_own = v.value<T_LISTDATA>();
    } else if (m_metaType == QMetaType::QVariant) {
        m_own = *static_cast<const QVariant*>(v.constData());
    } else {
        m_own = v;
    }
}

template <typename T>
void INFO::DATA<T>::setValue(const T& value)
{
    if (m_pointee) {
        *m_pointee = value;
        return;
    }
    m_own = value;
    if (isVariantPtr(m_other))
        *m_other.value<T_VARIANT_PTR>() = asVariant(value);
    else if (isListDataPtr(m_other))
        *m_other.value<T_LISTDATA_PTR>() = asVariant(value).template value<T_LISTDATA>();
    else if (m_map)
        m_map->insert(m_key, asVariant(value));
}

template class INFO::DATA<QVariant>;
template class INFO::DATA<T_LISTDATA>;

} // namespace mod_form_qt
