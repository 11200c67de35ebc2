#pragma once

#include "form/export.h"
#include "form/model/info.h"

#include <optional>
#include <utility>
#include <vector>

namespace mod_form_qt {

/// Remembers the state of a form's data, so that it can be put back. Holds plain pointers: what is
/// tracked has to outlive it.
class MOD_FORM_QT_EXPORT SNAP_SHOT_MANAGER
{
public:
    /// Without a map, and with auto restore off.
    SNAP_SHOT_MANAGER() = default;
    /// Tracks a map; null tracks none. Nothing is remembered yet.
    explicit SNAP_SHOT_MANAGER(QMap<QString, QVariant>* map);
    /// Restores if auto restore is on.
    ~SNAP_SHOT_MANAGER();
    Q_DISABLE_COPY_MOVE(SNAP_SHOT_MANAGER)

    /// Tracks another map in place of the one before; null tracks none.
    void setVarMap(QMap<QString, QVariant>* map);
    /// Whether the destructor puts back what was remembered; off at first.
    void enableAutoRestore(bool on);
    /// Tracks a variable outside the map; null is ignored.
    void trackVariant(QVariant* variable);
    /// Tracks what the value points at; a value that holds no pointer to a variant is ignored.
    void trackWrappedVariant(const QVariant& value);
    /// Tracks list data outside the map; null is ignored.
    void trackList(T_LISTDATA* list);
    /// Tracks what the value points at; a value that holds no pointer to list data is ignored.
    void trackWrappedList(const QVariant& value);

    /// Remembers the map and everything tracked by now, in place of what was remembered before.
    void snapshot();

    /// \return  true once something has been remembered
    bool hasSnapshot() const { return m_hasSnapshot; }

    /// Puts everything back, as often as wanted, and turns auto restore off. Without a snapshot it
    /// has no effect.
    void restore();
    /// Forgets what is tracked and remembered and turns auto restore off.
    void clear();

    /// Tracks the map and the variables of the rows, in place of what was tracked before, and
    /// remembers them.
    void fromData(QMap<QString, QVariant>* data, const QList<INFO>& rows);

private:
    QMap<QString, QVariant>* m_map = nullptr;
    std::vector<QVariant*> m_variants;
    std::vector<T_LISTDATA*> m_lists;
    std::optional<QMap<QString, QVariant>> m_savedMap;
    std::vector<std::pair<QVariant*, QVariant>> m_savedVariants;
    std::vector<std::pair<T_LISTDATA*, T_LISTDATA>> m_savedLists;
    bool m_hasSnapshot = false;
    bool m_autoRestore = false;
};

/// Takes the snapshot of a form that is about to be built: as `fromData`, and of the variables that
/// rows without one of their own will take over from the map.
/// \param useMapValues  the form's `MF_USE_MAP_VALUES`
MOD_FORM_QT_EXPORT void takeFormSnapshot(SNAP_SHOT_MANAGER& snapshot, QMap<QString, QVariant>* data,
                                         const QList<INFO>& rows, bool useMapValues);

} // namespace mod_form_qt
