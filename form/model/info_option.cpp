#include "form/model/info_option.h"

#include <algorithm>
#include <array>

namespace mod_form_qt {

INFO::Option::Option(const Map& map)
    : m_map(QSharedPointer<Map>::create(map))
{
}

INFO::Option::Option(const QVariant& param)
    : Option(param.toMap())
{
}

INFO::Option::Option(const QString& title)
    : Option(Map {{titleKey, title}})
{
}

INFO::Option INFO::Option::ofParam(const QVariant& param)
{
    // The usual param by far; to ask a text for its map takes long.
    if (param.typeId() != QMetaType::QString) {
        const Map map = param.toMap();
        if (!map.isEmpty())
            return Option(map);
    }
    const QString title = param.toString();
    return title.isEmpty() ? Option(Map()) : Option(title);
}

INFO::Option INFO::Option::setValue(const QString& key, const QVariant& value)
{
    if (m_map.isNull())
        m_map = QSharedPointer<Map>::create();
    m_map->insert(key, value);
    return *this;
}

void INFO::Option::remove(const QString& key)
{
    if (m_map)
        m_map->remove(key);
}

QVariant INFO::Option::value(const QString& key, const QVariant& fallback) const
{
    return m_map ? m_map->value(key, fallback) : fallback;
}

const INFO::Option::Map& INFO::Option::map() const
{
    static const Map none;
    return m_map ? *m_map : none;
}

bool INFO::Option::isEmpty() const
{
    return map().isEmpty();
}

QString INFO::Option::buildKey(const QString& key, int n)
{
    return key + QString::number(n);
}

bool INFO::Option::containsKey(const QString& key, int n, bool numbered) const
{
    return m_map && m_map->contains(numbered ? buildKey(key, n) : key);
}

bool INFO::Option::mayHaveNumbered(const QString& key) const
{
    const Map& options = map();
    auto entry = options.lowerBound(key);
    if (entry != options.cend() && entry.key() == key)
        ++entry;
    return entry != options.cend() && entry.key().startsWith(key);
}

QVariant INFO::Option::numbered(const QString& key, int n) const
{
    return isEmpty() ? QVariant() : value(buildKey(key, n));
}

QString INFO::Option::title() const
{
    return text(titleKey);
}

QString INFO::Option::prefix() const
{
    return text(prefixKey);
}

QString INFO::Option::suffix() const
{
    return text(suffixKey);
}

QString INFO::Option::regexPattern() const
{
    return text(regexPatternKey);
}

QString INFO::Option::iniGroupName() const
{
    return text(iniGroupNameKey);
}

QString INFO::Option::iniSumMapName() const
{
    return text(iniSumMapNameKey);
}

QString INFO::Option::currentDir() const
{
    return text(currentDirKey);
}

QString INFO::Option::fileFilter() const
{
    return text(fileFilterKey);
}

QString INFO::Option::iniFileName() const
{
    return text(iniFileNameKey);
}

QVariant INFO::Option::metaType() const
{
    return value(metaTypeKey);
}

QVariant INFO::Option::min() const
{
    return value(minKey);
}

QVariant INFO::Option::max() const
{
    return value(maxKey);
}

QVariant INFO::Option::isSignedDataType() const
{
    return value(signedDataTypeKey);
}

QVariant INFO::Option::spinBoxSingleStep() const
{
    return value(spinBoxSingleStepKey);
}

QVariant INFO::Option::minWidth(int n) const
{
    return numbered(minWidthKey, n);
}

QVariant INFO::Option::sizePolicyH(int n) const
{
    return numbered(sizePolicyHKey, n);
}

QVariant INFO::Option::sizePolicyV(int n) const
{
    return numbered(sizePolicyVKey, n);
}

bool INFO::Option::iniUseMultiConf() const
{
    return value(iniUseMultiConfKey).toBool();
}

bool INFO::Option::iniSeparateKeys() const
{
    return value(iniSeparateKeysKey).toBool();
}

bool INFO::Option::useSpinBox() const
{
    return value(spinBoxKey, useNumberSpinBox).toBool();
}

std::pair<bool, Qt::Alignment> INFO::Option::alignByType(int n) const
{
    return alignment(typeAlignKey, n);
}

std::pair<bool, Qt::Alignment> INFO::Option::alignByIndex(int n) const
{
    return alignment(indexAlignKey, n);
}

void INFO::Option::setSizePolicyH(int n, QSizePolicy::Policy policy)
{
    setValue(buildKey(sizePolicyHKey, n), int(policy));
}

void INFO::Option::setSizePolicyV(int n, QSizePolicy::Policy policy)
{
    setValue(buildKey(sizePolicyVKey, n), int(policy));
}

void INFO::Option::setAlignByType(int n, Qt::Alignment alignment)
{
    setValue(buildKey(typeAlignKey, n), int(alignment));
}

bool INFO::Option::hasValidationRules() const
{
    const std::array<const QString*, 6> rules {&minKey,
                                               &maxKey,
                                               &mandatoryKey,
                                               &regexPatternKey,
                                               &regexPatternOptionsKey,
                                               &regexPatternWildcardKey};
    return !isEmpty() && std::any_of(rules.begin(), rules.end(), [this](const QString* key) {
        return containsKey(*key);
    });
}

QString INFO::Option::text(const QString& key) const
{
    return value(key).toString();
}

std::pair<bool, Qt::Alignment> INFO::Option::alignment(const QString& key, int n) const
{
    const QVariant found = numbered(key, n);
    if (!found.isValid())
        return {false, {}};
    return {true, Qt::Alignment::fromInt(found.toInt())};
}

} // namespace mod_form_qt
