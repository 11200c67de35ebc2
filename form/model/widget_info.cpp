#include "form/model/widget_info.h"

#include "form/model/attributes.h"
#include "form/model/info.h"

#include <QBitArray>

#include <algorithm>

namespace mod_form_qt {

namespace {

QVariant propertyOf(const QPointer<QWidget>& widget, const char* name)
{
    return widget ? widget->property(name) : QVariant();
}

/// \return  the record that a map entry holds, null if it holds none
const WIDGET_INFO* recordIn(const QVariant& value)
{
    return INFO::isWidgetInfo(value) ? static_cast<const WIDGET_INFO*>(value.constData()) : nullptr;
}

const WIDGET_INFO* recordOf(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key)
{
    if (map == nullptr)
        return nullptr;
    const auto entry = map->constFind(WIDGET_INFO::buildWidgetDataKey(key.toString()));
    return entry != map->cend() ? recordIn(entry.value()) : nullptr;
}

QPointer<QWidget> labelOf(const WIDGET_INFO& row)
{
    for (const QPointer<QWidget>& widget : row.widgets()) {
        if (WIDGET_INFO::type(widget) == E_LABEL)
            return widget;
    }
    return {};
}

} // namespace

void WIDGET_INFO::add(QWidget* widget, int type, int typeExt, int pos, const QString& paramName,
                      const std::bitset<256>& attr, const QVariant& options,
                      PendingEmits* pendingEmits)
{
    if (widget == nullptr)
        return;
    static qlonglong serial = 0;
    widget->setProperty(typePropertyKey, type);
    widget->setProperty(typeExtPropertyKey, typeExt);
    widget->setProperty(posPropertyKey, pos);
    widget->setProperty(paramNamePropertyKey, paramName);
    widget->setProperty(flagsPropertyKey, toBitArray(attr));
    widget->setProperty(optionsPropertyKey, options);
    widget->setProperty(serialPropertyKey, ++serial);
    m_widgets.append(widget);
    if (pendingEmits && mod_form_qt::isBitSet(attr, A_INIT_EMIT | A_INIT_EMIT_VALID))
        pendingEmits->emplace_back(widget, mod_form_qt::isBitSet(attr, A_IMMEDIATE_DATA_UPDATE),
                                   mod_form_qt::isBitSet(attr, A_INIT_EMIT_VALID));
}

QPointer<QWidget> WIDGET_INFO::widgetAt(int index) const
{
    return checkIndex(index) ? m_widgets.at(index) : QPointer<QWidget>();
}

int WIDGET_INFO::type(const QPointer<QWidget>& widget)
{
    return propertyOf(widget, typePropertyKey).toInt();
}

int WIDGET_INFO::typeExt(const QPointer<QWidget>& widget)
{
    return propertyOf(widget, typeExtPropertyKey).toInt();
}

int WIDGET_INFO::pos(const QPointer<QWidget>& widget)
{
    return propertyOf(widget, posPropertyKey).toInt();
}

QString WIDGET_INFO::paramName(const QPointer<QWidget>& widget)
{
    return propertyOf(widget, paramNamePropertyKey).toString();
}

std::bitset<256> WIDGET_INFO::flags(const QPointer<QWidget>& widget)
{
    return fromBitArray(propertyOf(widget, flagsPropertyKey).toBitArray());
}

QVariant WIDGET_INFO::options(const QPointer<QWidget>& widget)
{
    return propertyOf(widget, optionsPropertyKey);
}

bool WIDGET_INFO::isBitSet(const QPointer<QWidget>& widget, const std::bitset<256>& bits)
{
    return mod_form_qt::isBitSet(flags(widget), bits);
}

void WIDGET_INFO::setType(const QPointer<QWidget>& widget, int type)
{
    if (widget)
        widget->setProperty(typePropertyKey, type);
}

bool WIDGET_INFO::isBaseEleType(int eleType)
{
    return eleType >= 20000 && eleType <= 49999;
}

bool WIDGET_INFO::isExtEleType(int eleType)
{
    return eleType >= 50000 && eleType <= 59999;
}

QString WIDGET_INFO::buildWidgetDataKey(const QString& key)
{
    return INFO::widgetDataVarName + key;
}

WIDGET_INFO WIDGET_INFO::widgets(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key)
{
    const WIDGET_INFO* row = recordOf(map, key);
    return row ? *row : WIDGET_INFO();
}

QPointer<QWidget> WIDGET_INFO::widgetAt(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key,
                                        int index)
{
    const WIDGET_INFO* row = recordOf(map, key);
    return row ? row->widgetAt(index) : QPointer<QWidget>();
}

QList<QPointer<QWidget>> WIDGET_INFO::all(const QMap<QString, QVariant>* map, int type)
{
    if (map == nullptr)
        return {};
    // A property is slow to read, and sorting compares each widget many times.
    std::vector<std::pair<qlonglong, QWidget*>> found;
    for (auto entry = map->lowerBound(INFO::widgetDataVarName);
         entry != map->cend() && entry.key().startsWith(INFO::widgetDataVarName); ++entry) {
        const WIDGET_INFO* row = recordIn(entry.value());
        if (row == nullptr)
            continue;
        for (const QPointer<QWidget>& widget : row->m_widgets) {
            if (widget && (type == 0 || WIDGET_INFO::type(widget) == type))
                found.emplace_back(widget->property(serialPropertyKey).toLongLong(), widget);
        }
    }
    std::sort(found.begin(), found.end());
    // A caller's widget may stand in several rows.
    found.erase(std::unique(found.begin(), found.end()), found.end());

    QList<QPointer<QWidget>> widgets;
    widgets.reserve(qsizetype(found.size()));
    for (const auto& [serial, widget] : found)
        widgets.append(widget);
    return widgets;
}

void WIDGET_INFO::clean(QMap<QString, QVariant>* map)
{
    if (map == nullptr)
        return;
    map->removeIf([](std::pair<const QString&, QVariant&> entry) {
        return entry.first.startsWith(INFO::widgetDataVarName);
    });
}

QWidget* WIDGET_INFO::find(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key, int type,
                           FindPos pos, QPointer<QWidget>* other, bool (*isOfClass)(QWidget*))
{
    const WIDGET_INFO* row = recordOf(map, key);
    if (other)
        *other = row ? labelOf(*row) : QPointer<QWidget>();
    if (row == nullptr)
        return nullptr;

    const bool isBase = isBaseEleType(type);
    if (!isBase && !isExtEleType(type)) {
        QWidget* widget = row->widgetAt(type);
        return isOfClass(widget) ? widget : nullptr;
    }
    const qsizetype count =
        pos == FIND_POS_FIRST ? std::min<qsizetype>(1, row->size()) : row->size();
    for (qsizetype index = 0; index < count; ++index) {
        const QPointer<QWidget>& widget = row->m_widgets.at(index);
        if (isOfClass(widget)
            && (isBase ? WIDGET_INFO::type(widget) : WIDGET_INFO::typeExt(widget)) == type)
            return widget;
    }
    return nullptr;
}

} // namespace mod_form_qt
