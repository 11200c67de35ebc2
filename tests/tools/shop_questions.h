#pragma once

#include "tools/demo_shop/invented_shop.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <QUrl>

#include <algorithm>

// What the tests of the invented shop ask it, without a network.
namespace shop_questions {

using demo_shop::InventedShop;
using demo_shop::ShopAnswer;
using demo_shop::ShopRequest;

inline constexpr char kListed[] =
    "status=completed,%20refunded&orderby=date&order=asc&dates_are_gmt=true";

inline ShopAnswer ask(const InventedShop& shop, const QString& target,
                      const QByteArray& method = "GET")
{
    const QUrl url(target);
    ShopRequest request;
    request.path = url.path();
    request.query = QUrlQuery(url);
    request.baseUrl = "http://127.0.0.1:1";
    request.method = method;
    return shop(request);
}

inline ShopAnswer askApi(const InventedShop& shop, const QString& rest)
{
    return ask(shop, "/wp-json/wc/v3/" + rest);
}

inline QJsonDocument parsed(const ShopAnswer& answer)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(answer.body, &error);
    if (error.error != QJsonParseError::NoError)
        qFatal("no JSON: %s at %d", qPrintable(error.errorString()), int(error.offset));
    return document;
}

inline QByteArray header(const ShopAnswer& answer, const QByteArray& name)
{
    for (const auto& [key, value] : answer.headers) {
        if (key == name)
            return value;
    }
    return {};
}

inline QList<QJsonObject> ordersOf(const InventedShop& shop, const QString& query,
                                   int perPage = 100)
{
    QList<QJsonObject> orders;
    for (int page = 1;; ++page) {
        const QJsonArray array =
            parsed(askApi(shop,
                          QStringLiteral("orders?per_page=%1&page=%2&%3")
                              .arg(QString::number(perPage), QString::number(page), query)))
                .array();
        if (array.isEmpty())
            return orders;
        for (const QJsonValue order : array)
            orders << order.toObject();
    }
}

inline QJsonArray refundsOf(const InventedShop& shop, const QJsonObject& order)
{
    return parsed(askApi(shop, QStringLiteral("orders/%1/refunds").arg(order["id"].toInteger())))
        .array();
}

inline QJsonArray invoicesOf(const InventedShop& shop, const QJsonObject& order)
{
    return parsed(askApi(shop, QStringLiteral("orders/%1/invoices").arg(order["id"].toInteger())))
        .array();
}

// Amounts are texts with two decimals; anything else is a fault of the shop's shape.
inline qint64 cents(const QJsonValue& amount)
{
    static const QRegularExpression shape("^-?\\d+\\.\\d\\d$");
    const QString text = amount.toString();
    if (!shape.match(text).hasMatch())
        qFatal("no amount: '%s'", qPrintable(text));
    return QString(text).remove(u'.').toLongLong();
}

inline qint64 sumOf(const QJsonArray& lines, const char* key)
{
    qint64 sum = 0;
    for (const QJsonValue line : lines)
        sum += cents(line[QLatin1String(key)]);
    return sum;
}

inline bool isAllZero(const QJsonArray& lines)
{
    return std::all_of(lines.begin(), lines.end(), [](const QJsonValue& line) {
        return cents(line["total"]) == 0 && cents(line["total_tax"]) == 0;
    });
}

inline QJsonValue metaValue(const QJsonObject& order, const QString& key)
{
    const QJsonArray meta = order["meta_data"].toArray();
    for (const QJsonValue element : meta) {
        if (element["key"].toString() == key)
            return element["value"];
    }
    return QJsonValue(QJsonValue::Undefined);
}

inline QSet<int> ratesOf(const QJsonObject& order)
{
    QSet<int> rates;
    const QJsonArray lines = order["line_items"].toArray();
    for (const QJsonValue line : lines) {
        const QJsonArray taxes = line["taxes"].toArray();
        for (const QJsonValue tax : taxes)
            rates << tax["id"].toInt();
    }
    return rates;
}

} // namespace shop_questions
