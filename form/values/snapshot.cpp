#include "form/values/snapshot.h"

#include "form/values/row_value.h"

namespace mod_form_qt {

SNAP_SHOT_MANAGER::SNAP_SHOT_MANAGER(QMap<QString, QVariant>* map)
    : m_map(map)
{
}

SNAP_SHOT_MANAGER::~SNAP_SHOT_MANAGER()
{
    if (m_autoRestore)
        restore();
}

void SNAP_SHOT_MANAGER::setVarMap(QMap<QString, QVariant>* map)
{
    m_map = map;
}

void SNAP_SHOT_MANAGER::enableAutoRestore(bool on)
{
    m_autoRestore = on;
}

void SNAP_SHOT_MANAGER::trackVariant(QVariant* variable)
{
    if (variable)
        m_variants.push_back(variable);
}

void SNAP_SHOT_MANAGER::trackWrappedVariant(const QVariant& value)
{
    if (INFO::isVariantPtr(value))
        trackVariant(value.value<T_VARIANT_PTR>());
}

void SNAP_SHOT_MANAGER::trackList(T_LISTDATA* list)
{
    if (list)
        m_lists.push_back(list);
}

void SNAP_SHOT_MANAGER::trackWrappedList(const QVariant& value)
{
    if (INFO::isListDataPtr(value))
        trackList(value.value<T_LISTDATA_PTR>());
}

void SNAP_SHOT_MANAGER::snapshot()
{
    m_savedMap.reset();
    m_savedVariants.clear();
    m_savedLists.clear();
    if (m_map)
        m_savedMap = *m_map;
    for (QVariant* variable : m_variants)
        m_savedVariants.emplace_back(variable, *variable);
    for (T_LISTDATA* list : m_lists)
        m_savedLists.emplace_back(list, *list);
    m_hasSnapshot = true;
}

void SNAP_SHOT_MANAGER::restore()
{
    if (!m_hasSnapshot)
        return;
    if (m_map && m_savedMap)
        *m_map = *m_savedMap;
    for (const auto& [variable, saved] : m_savedVariants)
        *variable = saved;
    for (const auto& [list, saved] : m_savedLists)
        *list = saved;
    m_autoRestore = false;
}

void SNAP_SHOT_MANAGER::clear()
{
    m_variants.clear();
    m_lists.clear();
    m_savedMap.reset();
    m_savedVariants.clear();
    m_savedLists.clear();
    m_hasSnapshot = false;
    m_autoRestore = false;
}

void SNAP_SHOT_MANAGER::fromData(QMap<QString, QVariant>* data, const QList<INFO>& rows)
{
    clear();
    setVarMap(data);
    for (const INFO& row : rows) {
        if (INFO::isVariantPtr(row.data))
            trackWrappedVariant(row.data);
        else
            trackWrappedList(row.data);
    }
    snapshot();
}

void takeFormSnapshot(SNAP_SHOT_MANAGER& snapshot, QMap<QString, QVariant>* data,
                      const QList<INFO>& rows, bool useMapValues)
{
    snapshot.fromData(data, rows);
    if (data == nullptr)
        return;
    for (const INFO& row : rows) {
        if (INFO::isVariantPtr(row.data) || INFO::isListDataPtr(row.data)
            || !usesMapValue(row, useMapValues, {}))
            continue;
        const QVariant value = data->value(row.key);
        snapshot.trackWrappedVariant(value);
        snapshot.trackWrappedList(value);
    }
    snapshot.snapshot();
}

} // namespace mod_form_qt
