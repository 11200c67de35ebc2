#pragma once

#include "form/export.h"

#include <QString>

namespace mod_form_qt {

/// The key by which rows and entries of a form data map are found. A number and its decimal text
/// are the same key.
class MOD_FORM_QT_EXPORT MAP_KEY_TYPE
{
public:
    /// An empty key.
    MAP_KEY_TYPE() = default;
    /// The text as it is.
    MAP_KEY_TYPE(const QString& key);
    /// \param key  UTF-8; null gives an empty key
    MAP_KEY_TYPE(const char* key);
    /// The number in decimal.
    MAP_KEY_TYPE(long long key);
    /// The number in decimal. Without this one the literal 0 would be a null text as well.
    MAP_KEY_TYPE(int key);

    /// The key as a text.
    const QString& toString() const { return m_key; }

    /// The key as a text.
    operator const QString&() const { return m_key; }

    /// \return  the key as a decimal number, 0 if it is none
    long long toInt64() const;

    /// \return  true for a key without a character
    bool isEmpty() const { return m_key.isEmpty(); }

    /// Compares the texts, case-sensitively.
    friend bool operator==(const MAP_KEY_TYPE& one, const MAP_KEY_TYPE& other)
    {
        return one.m_key == other.m_key;
    }

    /// The order of the texts, in which a map has its entries.
    friend bool operator<(const MAP_KEY_TYPE& one, const MAP_KEY_TYPE& other)
    {
        return one.m_key < other.m_key;
    }

private:
    QString m_key;
};

} // namespace mod_form_qt
