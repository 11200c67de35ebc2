#pragma once

#include <QString>

namespace mod_form_qt {

/// The key by which rows and entries of a form data map are found. A number and its decimal text
/// are the same key.
class MAP_KEY_TYPE
{
public:
    MAP_KEY_TYPE() = default;
    MAP_KEY_TYPE(const QString& key);
    /// \param key  UTF-8; null gives an empty key
    MAP_KEY_TYPE(const char* key);
    MAP_KEY_TYPE(long long key);
    /// The literal 0 would otherwise be a number as well as a null text.
    MAP_KEY_TYPE(int key);

    const QString& toString() const { return m_key; }

    operator const QString&() const { return m_key; }

    /// \return  the key as a decimal number, 0 if it is none
    long long toInt64() const;

    bool isEmpty() const { return m_key.isEmpty(); }

    friend bool operator==(const MAP_KEY_TYPE& one, const MAP_KEY_TYPE& other)
    {
        return one.m_key == other.m_key;
    }

    friend bool operator<(const MAP_KEY_TYPE& one, const MAP_KEY_TYPE& other)
    {
        return one.m_key < other.m_key;
    }

private:
    QString m_key;
};

} // namespace mod_form_qt
