#include "form/persist/ini_map.h"

#include "form/model/info.h"
#include "form/persist/ini_check.h"

#include <QSettings>

#include <algorithm>

namespace mod_form_qt {

namespace {

QString sumMapKey(const QString& sumMapName)
{
    return sumMapName.isEmpty() ? INFO::getDefaultIniSumMapName() : sumMapName;
}

bool isPersistableAt(const QVariant& value, int depth);

template <typename Container>
bool holdsOnlyPersistable(const QVariant& value, int depth)
{
    const auto* values = static_cast<const Container*>(value.constData());
    return std::all_of(values->cbegin(), values->cend(), [depth](const QVariant& inner) {
        return isPersistableAt(inner, depth + 1);
    });
}

/// \param depth  number of values that it stands in
bool isPersistableAt(const QVariant& value, int depth)
{
    if (depth > maxValueDepth)
        return false;
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        return true;
    case QMetaType::QVariantList:
        return holdsOnlyPersistable<QVariantList>(value, depth);
    case QMetaType::QVariantMap:
        return holdsOnlyPersistable<QVariantMap>(value, depth);
    case QMetaType::QVariantHash:
        return holdsOnlyPersistable<QVariantHash>(value, depth);
    case QMetaType::QVariant:
        return isPersistableAt(*static_cast<const QVariant*>(value.constData()), depth + 1);
    case QMetaType::QVariantPair: {
        const auto* pair = static_cast<const QVariantPair*>(value.constData());
        return isPersistableAt(pair->first, depth + 1) && isPersistableAt(pair->second, depth + 1);
    }
    default:
        return value.metaType().hasRegisteredDataStreamOperators();
    }
}

void removeTempEntries(QMap<QString, QVariant>& map)
{
    map.removeIf([](std::pair<const QString&, QVariant&> entry) {
        return INFO::isTempKeyName(entry.first);
    });
}

void readSumMap(QSettings& settings, const QString& sumKey, QMap<QString, QVariant>& map)
{
    // Asked for by its name: one with a slash is in no list of the group's keys.
    const QVariant stored = INFO::isTempKeyName(sumKey) ? QVariant() : settings.value(sumKey);
    if (INFO::isVariantMap(stored)) {
        map = stored.toMap();
        removeTempEntries(map);
    }
}

void readSeparateKeys(QSettings& settings, const QString& sumKey, QMap<QString, QVariant>& map)
{
    const QStringList keys = settings.childKeys();
    for (const QString& key : keys) {
        if (!INFO::isTempKeyName(key) && key != sumKey)
            map.insert(key, settings.value(key));
    }
}

} // namespace

bool isPersistable(const QVariant& value)
{
    return isPersistableAt(value, 0);
}

QMap<QString, QVariant> persistedEntries(const QMap<QString, QVariant>& map,
                                         const QSet<QString>* keys)
{
    QMap<QString, QVariant> entries;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        if (INFO::isTempKeyName(entry.key()) || (keys && !keys->contains(entry.key())))
            continue;
        const QVariant value = INFO::getBaseValue(entry.value(), false, false);
        if (isPersistable(value))
            entries.insert(entry.key(), value);
    }
    return entries;
}

bool INFO::isTempKeyName(const QString& key)
{
    return key.startsWith(automatikVarName) || key.startsWith(widgetDataVarName)
        || key.startsWith(objectDataVarName);
}

QString INFO::getDefaultIniSumMapName()
{
    return iniVariantMapKey;
}

void INFO::saveMapToIniFile(const QMap<QString, QVariant>* map, const QString& fileName,
                            const QString& group, bool separateKeys, const QSet<QString>* keys,
                            const QString& sumMapName)
{
    if (map == nullptr || !canOpenIni(fileName))
        return;
    try {
        const QMap<QString, QVariant> entries = persistedEntries(*map, keys);
        QSettings settings(fileName, QSettings::IniFormat);
        settings.beginGroup(group);
        if (separateKeys) {
            for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry)
                settings.setValue(entry.key(), entry.value());
        } else {
            settings.setValue(sumMapKey(sumMapName), entries);
        }
        settings.endGroup();
    } catch (...) { // NOLINT(bugprone-empty-catch): nothing of a failed save may reach the caller
    }
}

bool INFO::loadMapFromIniFile(QMap<QString, QVariant>* map, const QString& fileName,
                              const QString& group, bool separateKeys, const QString& sumMapName)
{
    if (map == nullptr || !canOpenIni(fileName))
        return false;
    try {
        QSettings settings(fileName, QSettings::IniFormat);
        settings.beginGroup(group);
        if (separateKeys)
            readSeparateKeys(settings, sumMapKey(sumMapName), *map);
        else
            readSumMap(settings, sumMapKey(sumMapName), *map);
        settings.endGroup();
        return true;
    } catch (...) {
        return false;
    }
}

} // namespace mod_form_qt
