#include "app/orderscan.h"

#include "accounting/shopdates.h"
#include "app/csvrow.h"

#include <QJsonArray>
#include <QSet>
#include <QVarLengthArray>

#include <algorithm>

namespace {

const QSet<QString>& excludedKeys()
{
    static const QSet<QString> keys {
        QStringLiteral("_links"),
        QStringLiteral("cart_hash"),
        QStringLiteral("cart_tax"),
        QStringLiteral("created_via"),
        QStringLiteral("currency_symbol"),
        QStringLiteral("customer_ip_address"),
        QStringLiteral("customer_note"),
        QStringLiteral("customer_user_agent"),
        QStringLiteral("direct_debit_bic"),
        QStringLiteral("direct_debit_holder"),
        QStringLiteral("direct_debit_iban"),
        QStringLiteral("direct_debit_mandate_id"),
        QStringLiteral("is_editable"),
        QStringLiteral("needs_confirmation"),
        QStringLiteral("needs_payment"),
        QStringLiteral("needs_processing"),
        QStringLiteral("payment_url"),
        QStringLiteral("parent_id"),
        QStringLiteral("prices_include_tax"),
        QStringLiteral("date_completed_gmt"),
        QStringLiteral("date_created_gmt"),
        QStringLiteral("date_modified_gmt"),
        QStringLiteral("date_paid_gmt"),
        QStringLiteral("version"),
    };
    return keys;
}

QString textOf(const QJsonValue& value)
{
    return value.toVariant().toString();
}

using Entries = QVarLengthArray<std::pair<QString, QJsonValue>, 64>;

/// An object's entries in ascending order of their keys' code units, which is the order of the
/// columns. The object's own order differs for keys beyond the basic plane, depending on how the
/// shop has written them.
Entries sortedEntries(const QJsonObject& object)
{
    Entries entries;
    for (auto it = object.constBegin(); it != object.constEnd(); ++it)
        entries.append({it.key(), it.value()});
    const auto lessByKey = [](const auto& a, const auto& b) { return a.first < b.first; };
    if (!std::is_sorted(entries.cbegin(), entries.cend(), lessByKey))
        std::sort(entries.begin(), entries.end(), lessByKey);
    return entries;
}

/// The fee in the meta data of the PayPal extension; of several the last one counts.
QVariant feeIn(const QJsonArray& metaData)
{
    QVariant fee;
    for (const auto element : metaData) {
        const QJsonObject entry = element.toObject();
        if (textOf(entry.value(QLatin1String("key"))) != QLatin1String("_ppcp_paypal_fees"))
            continue;
        const QJsonObject paypalFee = entry.value(QLatin1String("value"))
                                          .toObject()
                                          .value(QLatin1String("paypal_fee"))
                                          .toObject();
        if (!paypalFee.isEmpty())
            fee = paypalFee.value(QLatin1String("value")).toVariant().toDouble();
    }
    return fee;
}

/// What a key means beyond its column. The handler may replace \a value, which the column then
/// shows.
using MarkReader = void (*)(OrderScan&, const QJsonObject& order, const QString& key,
                            QJsonValue& value);

void readDate(OrderScan& scan, const QJsonObject& order, const QString& key, QJsonValue& value)
{
    const QString local = ConvertUTCDateToLocalDate(order, key);
    if (bUseUTC)
        value = local;
    if (key == QLatin1String("date_created"))
        scan.dateCreated = local;
}

const QHash<QString, MarkReader>& markReaders()
{
    static const QHash<QString, MarkReader> readers {
        {QStringLiteral("id"),
         [](OrderScan& scan, const QJsonObject&, const QString&, QJsonValue& value) {
             scan.id = value.toVariant().toInt();
         }},
        {QStringLiteral("payment_method"),
         [](OrderScan& scan, const QJsonObject&, const QString&, QJsonValue& value) {
             if (textOf(value).startsWith(QLatin1String("ppcp-gateway"), Qt::CaseInsensitive))
                 scan.paypal = true;
         }},
        {QStringLiteral("payment_method_title"),
         // Anywhere in the title, unlike the method: titles are worded by the shop.
         [](OrderScan& scan, const QJsonObject&, const QString&, QJsonValue& value) {
             if (textOf(value).contains(QLatin1String("paypal"), Qt::CaseInsensitive))
                 scan.paypal = true;
         }},
        {QStringLiteral("date_completed"), readDate},
        {QStringLiteral("date_created"), readDate},
        {QStringLiteral("date_modified"), readDate},
        {QStringLiteral("date_paid"), readDate},
        {QStringLiteral("transaction_id"),
         [](OrderScan& scan, const QJsonObject&, const QString&, QJsonValue& value) {
             scan.transactionId = textOf(value).trimmed();
         }},
        {QStringLiteral("status"),
         [](OrderScan& scan, const QJsonObject&, const QString&, QJsonValue& value) {
             scan.status = textOf(value).trimmed();
         }},
        {QStringLiteral("refunds"),
         [](OrderScan& scan, const QJsonObject&, const QString&, QJsonValue& value) {
             if (!value.toArray().isEmpty())
                 scan.hasRefunds = true;
         }},
    };
    return readers;
}

void addObject(OrderScan& scan, const QString& key, const QJsonObject& object)
{
    const bool billing = key == QLatin1String("billing");
    const bool address = billing || key == QLatin1String("shipping");
    const QString prefix = key + QLatin1Char('_');
    const Entries entries = sortedEntries(object);
    for (const auto& [subkey, value] : entries) {
        if (address
            && (subkey == QLatin1String("title") || subkey == QLatin1String("title_formatted")))
            continue;
        const QString text = textOf(value);
        if (billing && subkey == QLatin1String("email"))
            scan.email = text.trimmed();
        else if (billing && subkey == QLatin1String("last_name"))
            scan.lastName = text.trimmed();
        scan.fields.append({text, quoteHeader(prefix, subkey)});
    }
}

void addColumns(OrderScan& scan, const QString& key, const QJsonValue& value)
{
    if (key == QLatin1String("line_items") || key == QLatin1String("tax_lines"))
        return;
    if (value.isObject()) {
        addObject(scan, key, value.toObject());
    } else if (value.isArray()) {
        if (key == QLatin1String("meta_data"))
            scan.paypalFee = feeIn(value.toArray());
    } else {
        scan.fields.append({textOf(value), quoteHeader(key)});
    }
}

} // namespace

OrderScan scanOrder(const QJsonObject& order)
{
    OrderScan scan;
    scan.fields.reserve(96);
    scan.paymentTitle = textOf(order.value(QLatin1String("payment_method_title")));
    scan.paymentMethod = textOf(order.value(QLatin1String("payment_method")));

    for (auto& [key, value] : sortedEntries(order)) {
        if (excludedKeys().contains(key))
            continue;
        if (const MarkReader read = markReaders().value(key))
            read(scan, order, key, value);
        addColumns(scan, key, value);
    }
    return scan;
}

bool isPaypalOrder(const OrderScan& scan)
{
    return scan.paypal
        || (scan.paypalFee.isValid() && !scan.paypalFee.toString().trimmed().isEmpty());
}
