#include "form/model/map_key_type.h"

namespace mod_form_qt {

MAP_KEY_TYPE::MAP_KEY_TYPE(const QString& key)
    : m_key(key)
{
}

MAP_KEY_TYPE::MAP_KEY_TYPE(const char* key)
    : m_key(QString::fromUtf8(key))
{
}

MAP_KEY_TYPE::MAP_KEY_TYPE(long long key)
    : m_key(QString::number(key))
{
}

MAP_KEY_TYPE::MAP_KEY_TYPE(int key)
    : m_key(QString::number(key))
{
}

long long MAP_KEY_TYPE::toInt64() const
{
    return m_key.toLongLong();
}

} // namespace mod_form_qt
