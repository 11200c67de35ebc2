#include "app/optionstring.h"

#include "app/debuglog.h"
#include "app/globals.h"
#include "form/mod_form_qt.h"

#include <QDebug>
#include <QStringList>

using mod_form_qt::INFO;

namespace {

const int iExportVersion = 1;
const QString keyKonten = QStringLiteral("buchungs_konten");

bool isSecret(const QString& key)
{
    return key == keyNameAPI || key == keyNameSECRET;
}

void appendField(QString& text, const QString& key, const QString& value)
{
    text += QLatin1Char('|') + key + QLatin1Char('|') + value;
}

void appendKonten(QString& text, const payment_import::KontenMap& konten)
{
    for (const auto& [role, triple] : konten) {
        const QString number = QString::number(static_cast<int>(role));
        appendField(text, number + QLatin1String("_03"), QString::number(std::get<0>(triple)));
        appendField(text, number + QLatin1String("_04"), QString::number(std::get<1>(triple)));
        appendField(text, number + QLatin1String("_49"), QString::number(std::get<2>(triple)));
    }
}

} // namespace

QString withoutFieldMark(QString text)
{
    // What stands around a mark may be one itself once the mark is gone.
    while (text.contains(extParmsSep))
        text.remove(extParmsSep);
    return text;
}

QString optionText(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return QString::number(value.toInt());
    case QMetaType::QVariantList:
    case QMetaType::QStringList: {
        const QVariantList list = value.toList();
        return list.isEmpty() ? QString() : withoutFieldMark(list.first().toString());
    }
    default:
        return withoutFieldMark(value.toString().remove(QLatin1Char('\r')))
            .replace(QLatin1Char('\n'), extParmsLinesSep);
    }
}

QString optionsToHostText(const QMap<QString, QVariant>& options,
                          const payment_import::KontenMap& konten)
{
    const bool debug = isDebugLogged();
    QString text = QStringLiteral("export_version|%1").arg(iExportVersion);
    for (auto it = options.constBegin(); it != options.constEnd(); ++it) {
        const QString& key = it.key();
        if (isSecret(key) || INFO::isTempKeyName(key))
            continue;
        if (debug)
            qDebug() << key;
        if (key == keyKonten) {
            appendKonten(text, konten);
            continue;
        }
        const QVariant value = INFO::getBaseValue(it.value(), false, false);
        if (value.isValid())
            appendField(text, key, optionText(value));
    }
    return text;
}

QMap<QString, QVariant> withoutSecrets(QMap<QString, QVariant> options)
{
    for (const QString& key : {keyNameAPI, keyNameSECRET})
        if (options.contains(key))
            options.insert(key, QString());
    return options;
}

QMap<QString, QVariant> shownOptions(const QMap<QString, QVariant>& options)
{
    QMap<QString, QVariant> shown = withoutSecrets(options);
    for (QVariant& value : shown)
        value = INFO::getBaseValue(value);
    return shown;
}
