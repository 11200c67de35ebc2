#include "form/values/unchanged_values.h"

#include "form/values/list_widgets.h"
#include "form/values/row_value.h"
#include "form/widgets/check_combo_box.h"

#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTextEdit>

#include <algorithm>

namespace mod_form_qt {

namespace {

bool isText(const QVariant& value)
{
    return value.metaType() == QMetaType::fromType<QString>();
}

/// \return  true if what an entry holds is not the row's value itself
bool isBehind(const QVariant& entry)
{
    return INFO::isVariantPtr(entry) || INFO::isListDataOrListDataPtr(entry);
}

/// \return  true for an input that is left alone if the map holds the value already. A line edit
///          may also belong to a row that is made to show it in any case
bool isLeftAlone(const QWidget* input, const QVariant& value)
{
    if (const auto* edit = qobject_cast<const QLineEdit*>(input))
        return edit->text() == value.toString();
    return qobject_cast<const QAbstractSpinBox*>(input) || qobject_cast<const QCheckBox*>(input)
        || qobject_cast<const QRadioButton*>(input) || qobject_cast<const QTextEdit*>(input)
        || qobject_cast<const QPlainTextEdit*>(input);
}

/// \return  true if both the list data and a combo box have selected the item of that value
bool showsOnly(const QComboBox* box, const T_LISTDATA& list, const QVariant& value)
{
    if (box == nullptr || qobject_cast<const helper::CheckComboBox*>(box))
        return false;
    const QVariant shown = box->currentData(listIndexRole);
    const auto index = shown.isValid() ? size_t(shown.toInt()) : list.size();
    return index < list.size() && std::get<1>(list[index]) && std::get<2>(list[index]) == value;
}

/// \return  true if a row of that entry has this value and need not show it again
bool rowHolds(const QVariant& entry, const QWidget* input, const QVariant& value)
{
    const auto* variable = INFO::isVariantPtr(entry) ? entry.value<T_VARIANT_PTR>() : nullptr;
    const T_LISTDATA* list = findList(entry, nullptr, QString());
    const bool unchanged = list
        ? showsOnly(qobject_cast<const QComboBox*>(input), *list, value)
        : isSameValue(variable ? *variable : entry, value) && isLeftAlone(input, value);
    if (!unchanged)
        return false;
    // A variable may be behind a plain entry that has replaced the pointer to it.
    static const QByteArray boundProperty(boundPropertyKey);
    return variable || INFO::isListDataPtr(entry)
        || !input->dynamicPropertyNames().contains(boundProperty);
}

/// Among the records of the widgets, with which it goes. No row has a key that is temporary itself.
QString plainRowsKey()
{
    return WIDGET_INFO::buildWidgetDataKey(INFO::buildObjectDataKey(QStringLiteral("plain")));
}

/// \return  the keys that have been noted, in ascending order
const QStringList* plainRows(const QMap<QString, QVariant>& map)
{
    static const QStringList none;
    const auto noted = map.constFind(plainRowsKey());
    const bool any =
        noted != map.constEnd() && noted->metaType() == QMetaType::fromType<QStringList>();
    return any ? static_cast<const QStringList*>(noted->constData()) : &none;
}

/// \return  the first text behind all that have a prefix
QString behindPrefix(QString prefix)
{
    if (!prefix.isEmpty())
        ++prefix.back().unicode();
    return prefix;
}

} // namespace

KeyCursor::KeyCursor(const QMap<QString, QVariant>* map, QString prefix)
    : m_map(map)
    , m_prefix(std::move(prefix))
{
}

bool KeyCursor::isNext(const QString& key) const
{
    if (m_next == m_end)
        return false;
    const QString& next = m_next.key();
    return next.size() == m_prefix.size() + key.size()
        && QStringView(next).sliced(m_prefix.size()) == key;
}

const KeyCursor::Entry* KeyCursor::find(const QString& key)
{
    if (!m_known || !isNext(key)) {
        search(key);
        if (!isNext(key))
            return nullptr;
    }
    m_found = m_next;
    ++m_next;
    return &m_found;
}

void KeyCursor::search(const QString& key)
{
    if (m_prefix.isEmpty()) {
        m_end = m_map->constEnd();
        m_next = m_map->lowerBound(key);
    } else {
        m_end = m_map->lowerBound(behindPrefix(m_prefix));
        m_next = m_map->lowerBound(m_prefix + key);
    }
    m_known = true;
}

UnchangedValues::UnchangedValues(const QMap<QString, QVariant>* map)
    : m_map(map)
    , m_entries(map)
    , m_records(map, INFO::widgetDataVarName)
{
}

void notePlainRows(const QSet<QString>& keys, QMap<QString, QVariant>* map)
{
    if (keys.isEmpty())
        return;
    QStringList sorted(keys.cbegin(), keys.cend());
    std::sort(sorted.begin(), sorted.end());
    map->insert(plainRowsKey(), sorted);
}

bool UnchangedValues::holds(const QString& key, const QVariant& value)
{
    const KeyCursor::Entry* found = m_entries.find(key);
    if (found == nullptr)
        return false;
    const QVariant& entry = found->value();
    const bool behind = !isText(entry) && isBehind(entry);
    if (!behind && !isSameValue(entry, value))
        return false;
    if (!behind && isPlain(found->key()))
        return true;
    const WIDGET_INFO* row = rowOf(key);
    if (row == nullptr || row->empty())
        return !behind || isSameValue(entry, value);
    const QWidget* input = row->widgets().constLast();
    return input && rowHolds(entry, input, value);
}

void UnchangedValues::forget()
{
    m_entries.forget();
    m_records.forget();
    m_plain = nullptr;
}

/// \param entryKey  as the map has it: its text is mostly the very same as that of the noted key
bool UnchangedValues::isPlain(const QString& entryKey)
{
    if (m_plain == nullptr)
        m_plain = plainRows(*m_map);
    if (m_plainNext >= m_plain->size() || !isSameText(m_plain->at(m_plainNext), entryKey)) {
        const auto place = std::lower_bound(m_plain->cbegin(), m_plain->cend(), entryKey);
        m_plainNext = place - m_plain->cbegin();
        if (place == m_plain->cend() || !isSameText(*place, entryKey))
            return false;
    }
    ++m_plainNext;
    return true;
}

const WIDGET_INFO* UnchangedValues::rowOf(const QString& key)
{
    const KeyCursor::Entry* record = m_records.find(key);
    return record && INFO::isWidgetInfo(record->value())
        ? static_cast<const WIDGET_INFO*>(record->value().constData())
        : nullptr;
}

} // namespace mod_form_qt
