#include "tools/form_gallery/describe.h"

#include "form/mod_form_qt.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QLocale>

namespace gallery {

using namespace mod_form_qt;

namespace {

QString joined(const QVariantList& values)
{
    QStringList texts;
    for (const QVariant& value : values)
        texts << valueText(value);
    return QLatin1Char('[') + texts.join(QLatin1String(", ")) + QLatin1Char(']');
}

QString listText(const T_LISTDATA& list)
{
    QStringList texts;
    for (const auto& [text, selected, value, roles] : list)
        texts << (selected ? QStringLiteral("\u2714") + text : text);
    return QLatin1Char('{') + texts.join(QLatin1String(", ")) + QLatin1Char('}');
}

QString objectText(const QVariant& value)
{
    const auto* object = *static_cast<QObject* const*>(value.constData());
    return object ? QLatin1String(object->metaObject()->className()) + QLatin1Char('*')
                  : QStringLiteral("nullptr");
}

QString widgetsText(const QVariant& value)
{
    const WIDGET_INFO* record = static_cast<const WIDGET_INFO*>(value.constData());
    QStringList names;
    for (const QPointer<QWidget>& widget : record->widgets())
        names << (widget ? QLatin1String(widget->metaObject()->className())
                         : QLatin1String("nullptr"));
    return names.join(QLatin1String(", "));
}

QString pointerText(const QVariant& value)
{
    const auto* list = INFO::isListDataPtr(value) ? value.value<T_LISTDATA_PTR>() : nullptr;
    const auto* variable = INFO::isVariantPtr(value) ? value.value<T_VARIANT_PTR>() : nullptr;
    QString text = QStringLiteral("nullptr");
    if (list)
        text = listText(*list);
    else if (variable)
        text = valueText(*variable);
    return QStringLiteral("\u2192 ") + text;
}

QString plainText(const QVariant& value)
{
    constexpr qsizetype longest = 80;
    QString text = value.toString().simplified();
    if (text.size() > longest)
        text = text.left(longest) + QStringLiteral("\u2026");
    return QLatin1Char('"') + text + QLatin1Char('"');
}

QString guiText(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::QColor:
        return value.value<QColor>().name();
    case QMetaType::QFont: {
        const auto font = value.value<QFont>();
        return QStringLiteral("%1, %2pt").arg(font.family(), QString::number(font.pointSize()));
    }
    case QMetaType::QImage: {
        const auto image = value.value<QImage>();
        return QStringLiteral("QImage %1 x %2").arg(image.width()).arg(image.height());
    }
    case QMetaType::QLocale:
        return value.toLocale().name();
    default:
        return {};
    }
}

QStringList optionTexts(const INFO& row)
{
    QStringList texts;
    const INFO::Option::Map options = row.param.toMap();
    for (auto option = options.cbegin(); option != options.cend(); ++option) {
        if (option.key() != INFO::Option::titleKey
            && !option.key().startsWith(QLatin1String("ini")))
            texts << option.key() + QLatin1Char('=') + valueText(option.value());
    }
    return texts;
}

} // namespace

QString describe(const INFO& row)
{
    QStringList parts {typeName(row.eleType)};
    parts << attributeNames(row.attr) << optionTexts(row);
    if (INFO::isVariantPtr(row.data))
        parts << QStringLiteral("QVariant*");
    else if (INFO::isListDataPtr(row.data))
        parts << QStringLiteral("T_LISTDATA*");
    if (IsCallbackSet(row.callback))
        parts << QStringLiteral("Callback");
    return parts.join(QLatin1Char(' '));
}

QString valueText(const QVariant& value)
{
    if (INFO::isListData(value))
        return listText(value.value<T_LISTDATA>());
    if (INFO::isVariantPtr(value) || INFO::isListDataPtr(value))
        return pointerText(value);
    if (INFO::isWidgetInfo(value))
        return widgetsText(value);
    if (INFO::isQVariantListType(value))
        return joined(value.toList());
    if (value.metaType().flags().testFlag(QMetaType::PointerToQObject))
        return objectText(value);
    if (value.typeId() == QMetaType::QDate)
        return value.toDate() < INFO::dateInvalid ? value.toDate().toString(Qt::ISODate)
                                                  : QStringLiteral("dateInvalid");
    if (value.typeId() == QMetaType::QDateTime)
        return value.toDateTime().toString(Qt::ISODate);
    if (value.typeId() == QMetaType::QString)
        return plainText(value);
    QString text = guiText(value);
    if (!text.isEmpty())
        return text;
    if (!value.isValid())
        return QStringLiteral("-");
    return value.canConvert<QString>() ? value.toString() : QLatin1String(value.metaType().name());
}

} // namespace gallery
