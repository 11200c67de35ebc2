#include "tests/app/golden_case.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace {

QByteArray bytesOf(const QString& path, QString& problem)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        problem = path + QLatin1String(": ") + file.errorString();
    return file.readAll();
}

QVariant numberOf(double number)
{
    if (std::trunc(number) == number)
        return static_cast<int>(number);
    return number;
}

/// A value as the options hold it; a date and a list are written as objects.
QVariant optionOf(const QJsonValue& value, QString& problem)
{
    // toVariant would give a null in a valid variant.
    if (value.isNull())
        return {};
    if (value.isDouble())
        return numberOf(value.toDouble());
    if (!value.isObject())
        return value.toVariant();
    const QJsonObject object = value.toObject();
    if (object.contains(QLatin1String("date")))
        return QDate::fromString(object.value(QLatin1String("date")).toString(), Qt::ISODate);
    if (!object.contains(QLatin1String("list")))
        problem = QStringLiteral("An option is an object of an unknown kind.");
    QVariantList list;
    const QJsonArray elements = object.value(QLatin1String("list")).toArray();
    for (const auto element : elements)
        list.append(optionOf(element, problem));
    return list;
}

QStringList textsOf(const QJsonValue& list)
{
    QStringList texts;
    const QJsonArray elements = list.toArray();
    for (const auto element : elements)
        texts.append(element.toString());
    return texts;
}

QMap<QString, QByteArray> filesOf(const QJsonValue& object)
{
    QMap<QString, QByteArray> files;
    const QJsonObject texts = object.toObject();
    for (auto it = texts.constBegin(); it != texts.constEnd(); ++it)
        files.insert(it.key(), it.value().toString().toUtf8());
    return files;
}

payment_import::KontenMap kontenOf(const QJsonObject& object)
{
    payment_import::KontenMap konten;
    for (auto it = object.constBegin(); it != object.constEnd(); ++it) {
        const QJsonArray triple = it.value().toArray();
        konten[static_cast<payment_import::KontenTypen>(it.key().toInt())] = {
            triple.at(0).toInt(), triple.at(1).toInt(), triple.at(2).toInt()};
    }
    return konten;
}

} // namespace

QStringList goldenCaseNames(const QString& root)
{
    QStringList names;
    const QDir dir(root);
    const QStringList folders = dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& folder : folders)
        if (!folder.startsWith(QLatin1String("__")))
            names.append(folder);
    return names;
}

GoldenCase readGoldenCase(const QString& folder, const QString& shop, const QString& pdfs)
{
    GoldenCase result;
    const auto filled = [&](QByteArray bytes) {
        return bytes.replace("@SHOP@", shop.toUtf8()).replace("@PDF@", pdfs.toUtf8());
    };
    QJsonParseError error;
    const QByteArray text = filled(bytesOf(folder + QLatin1String("/case.json"), result.problem));
    const QJsonObject settings = QJsonDocument::fromJson(text, &error).object();
    if (result.problem.isEmpty() && error.error != QJsonParseError::NoError)
        result.problem = folder + QLatin1String("/case.json: ") + error.errorString();

    result.shopFolder =
        folder + QLatin1Char('/') + settings.value(QLatin1String("shop")).toString();
    const QJsonObject options = settings.value(QLatin1String("options")).toObject();
    for (auto it = options.constBegin(); it != options.constEnd(); ++it)
        result.options.insert(it.key(), optionOf(it.value(), result.problem));
    result.konten = kontenOf(settings.value(QLatin1String("konten")).toObject());
    result.pdfsBefore = filesOf(settings.value(QLatin1String("pdfs_before")));

    result.expectedExport =
        filled(bytesOf(folder + QLatin1String("/expected.csv"), result.problem));
    result.expectedPdfs = textsOf(settings.value(QLatin1String("pdfs")));
    result.expectedPdfTexts = filesOf(settings.value(QLatin1String("pdf_texts")));
    result.expectedLog = textsOf(settings.value(QLatin1String("log")));
    result.expectedRequests = textsOf(settings.value(QLatin1String("requests")));
    result.finished = settings.value(QLatin1String("finished")).toBool();
    return result;
}
