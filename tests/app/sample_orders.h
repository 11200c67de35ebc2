#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

/// Small invented answers of a shop, for tests that look at one behaviour.
namespace sample {

/// \a base with the fields of \a more set.
inline QJsonObject with(QJsonObject base, const QJsonObject& more)
{
    for (auto it = more.constBegin(); it != more.constEnd(); ++it)
        base.insert(it.key(), it.value());
    return base;
}

/// A list as an answer. There is none for objects, which one element in braces would be taken for.
inline QByteArray json(const QJsonArray& list)
{
    return QJsonDocument(list).toJson(QJsonDocument::Compact);
}

/// An untaxed line of 10.00 without a product, and thus without a further request.
inline QJsonObject line(int id, const QJsonObject& more = {})
{
    return with({{QStringLiteral("id"), id},
                 {QStringLiteral("taxes"), QJsonArray()},
                 {QStringLiteral("total"), QStringLiteral("10.00")},
                 {QStringLiteral("total_tax"), QStringLiteral("0.00")}},
                more);
}

/// A line with a product.
inline QJsonObject productLine(int id, const QJsonValue& product)
{
    return line(id, {{QStringLiteral("product_id"), product}});
}

/// A completed order of 2026-01-05, paid in advance.
inline QJsonObject order(int id, const QJsonArray& lines, const QJsonObject& more = {})
{
    return with({{QStringLiteral("id"), id},
                 {QStringLiteral("status"), QStringLiteral("completed")},
                 {QStringLiteral("billing"),
                  QJsonObject {{QStringLiteral("email"), QStringLiteral("eva@kunde.example")},
                               {QStringLiteral("last_name"), QStringLiteral("Meier")}}},
                 {QStringLiteral("date_created"), QStringLiteral("2026-01-05T09:15:00")},
                 {QStringLiteral("date_created_gmt"), QStringLiteral("2026-01-05T08:15:00")},
                 {QStringLiteral("line_items"), lines},
                 {QStringLiteral("payment_method"), QStringLiteral("bacs")},
                 {QStringLiteral("payment_method_title"), QStringLiteral("Vorkasse")}},
                more);
}

/// Meta data of an order with a fee of the payment service.
inline QJsonObject fee(const QJsonValue& value)
{
    const QJsonObject amount {{QStringLiteral("value"), value}};
    const QJsonObject fees {{QStringLiteral("paypal_fee"), amount}};
    const QJsonObject entry {{QStringLiteral("key"), QStringLiteral("_ppcp_paypal_fees")},
                             {QStringLiteral("value"), fees}};
    return {{QStringLiteral("meta_data"), QJsonArray {entry}}};
}

/// A refund of 2026-02-01.
inline QJsonObject refund(int id, const QJsonArray& lines, const QJsonObject& more = {})
{
    return with({{QStringLiteral("id"), id},
                 {QStringLiteral("date_created"), QStringLiteral("2026-02-01T11:00:00")},
                 {QStringLiteral("date_created_gmt"), QStringLiteral("2026-02-01T10:00:00")},
                 {QStringLiteral("line_items"), lines}},
                more);
}

} // namespace sample
