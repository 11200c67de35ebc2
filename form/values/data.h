#pragma once

#include "form/export.h"
#include "form/model/info.h"

namespace mod_form_qt {

/// A value as a row or a form data map holds it: the value itself or a pointer to it. Instantiated
/// for QVariant and T_LISTDATA. Through a pointer to a variable of its own type it shows what the
/// variable holds at any time, otherwise what was there when it was built.
template <typename T>
class MOD_FORM_QT_EXPORT INFO::DATA
{
public:
    /// Holds nothing.
    DATA() = default;
    /// Takes a value. A pointer inside it is followed once, a variant inside the variant unwrapped
    /// once.
    explicit DATA(const QVariant& v);
    /// Takes the entry `key` of `map`. Reading never makes an entry.
    /// \param forWrite  notes the entry, so that `setValue` writes the entry of a plain value, and
    ///                  the variable behind a pointer, which then stays in the map
    DATA(QMap<QString, QVariant>* map, const QString& key, bool forWrite);

    /// The value, or what the pointer points at now; empty if there was nothing to take.
    const T& value() const { return m_pointee ? *m_pointee : m_own; }

    /// As `value`.
    operator const T&() const { return value(); }

    /// \return  false if there was nothing to take
    bool isValid() const { return m_metaType > QMetaType::UnknownType; }

    /// \return  true if what was taken is a pointer to a variable
    bool isPointer() const { return m_pointee != nullptr || m_other.isValid(); }

    /// \return  meta-type id of what was taken, of the pointer and not of what it points at; -1 for
    ///          a default-constructed one
    int metaTypeId() const { return m_metaType; }

    /// Writes the variable behind a pointer, and the map entry this was built for.
    void setValue(const T& value);

private:
    void take(const QVariant& v);

    T m_own {};
    T* m_pointee = nullptr;
    QVariant m_other; // a pointer to a variable of another type, from which m_own was read
    int m_metaType = -1;
    QMap<QString, QVariant>* m_map = nullptr;
    QString m_key;
};

extern template class INFO::DATA<QVariant>;
extern template class INFO::DATA<T_LISTDATA>;

} // namespace mod_form_qt
