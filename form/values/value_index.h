#pragma once

#include <QHash>
#include <QMetaType>
#include <QString>
#include <QVariant>

#include <vector>

namespace mod_form_qt {

/// Finds values in a list by `==`. Where the values are all texts, or all integers of one type, one
/// of them is found without a comparison with each.
class ValueIndex
{
public:
    /// \param values    none of them null; they outlive this
    /// \param searches  how many are expected; a few are not worth an index
    ValueIndex(const std::vector<const QVariant*>& values, qsizetype searches);

    /// \return  the indexes of the values that are equal to `wanted`, in ascending order
    std::vector<size_t> find(const QVariant& wanted) const;

private:
    const std::vector<const QVariant*>& m_values;
    QMetaType m_type; // of all values; invalid if there is no index
    QHash<QString, std::vector<size_t>> m_byText;
};

} // namespace mod_form_qt
