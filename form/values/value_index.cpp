#include "form/values/value_index.h"

#include <algorithm>

namespace mod_form_qt {

namespace {

/// \return  true if values of that type are equal exactly if their texts are
bool isToldByText(QMetaType type)
{
    switch (type.id()) {
    case QMetaType::QString:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return true;
    default:
        return false;
    }
}

} // namespace

ValueIndex::ValueIndex(const std::vector<const QVariant*>& values, qsizetype searches)
    : m_values(values)
{
    constexpr qsizetype iWorthIt = 8;
    if (searches < iWorthIt || values.empty())
        return;
    const QMetaType type = values.front()->metaType();
    const bool told = isToldByText(type)
        && std::all_of(values.begin(), values.end(),
                       [type](const QVariant* value) { return value->metaType() == type; });
    if (!told)
        return;
    m_type = type;
    m_byText.reserve(qsizetype(values.size()));
    for (size_t index = 0; index < values.size(); ++index)
        m_byText[values[index]->toString()].push_back(index);
}

std::vector<size_t> ValueIndex::find(const QVariant& wanted) const
{
    // Values of another type may be equal all the same, such as numbers.
    if (m_type.isValid() && wanted.metaType() == m_type)
        return m_byText.value(wanted.toString());
    std::vector<size_t> found;
    for (size_t index = 0; index < m_values.size(); ++index) {
        if (*m_values[index] == wanted)
            found.push_back(index);
    }
    return found;
}

} // namespace mod_form_qt
