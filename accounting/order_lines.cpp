#include "accounting/order_lines.h"

#include "accounting/shopdates.h"

#include <QDebug>
#include <QJsonArray>
#include <QLoggingCategory>
#include <QSet>

#include <set>

using namespace Qt::Literals::StringLiterals;

namespace {

bool isExcluded(const QString& key)
{
    static const QSet<QString> names {u"image"_s, u"meta_data"_s, u"parent_name"_s,
                                      u"sku"_s,   u"tax_class"_s, u"variation_id"_s};
    return names.contains(key);
}

QMap<QString, QVariant> bookingMarks(const QJsonObject& order, bool isRefund, int errors)
{
    int refundId = -1;
    QString refundDate = u""_s;
    if (isRefund) {
        refundId = order.value("id"_L1).toVariant().toInt();
        refundDate = ConvertUTCDateToLocalDate(order, u"date_created"_s);
        if (QLoggingCategory::defaultCategory()->isDebugEnabled()) {
            const bool refundedPayment = order.value("refunded_payment"_L1).toVariant().toBool();
            qDebug() << "refund_id:" << refundId
                     << "refunded_payment:" << (refundedPayment ? "true" : "false")
                     << "refund_date_created:" << refundDate;
        }
    }

    QMap<QString, QVariant> marks {
        {u"is_refund"_s, isRefund}, {u"refund_id"_s, refundId}, {u"refund_date"_s, refundDate}};
    if (errors != 0)
        marks.insert(u"errors"_s, errors);
    return marks;
}

/// \param rateId  out: the id of the line's tax rate; unchanged for a line without taxes
QMap<QString, QVariant> lineFields(const QJsonObject& item, const OrderTaxMap& rates, int& rateId)
{
    QMap<QString, QVariant> fields;
    fields.insert(u"tax_rate"_s, u"0.00"_s);
    for (auto field = item.constBegin(); field != item.constEnd(); ++field) {
        const QString key = field.key();
        if (key != "taxes"_L1 && !isExcluded(key))
            fields.insert(key, field.value().toVariant());
    }

    // Last, so that the rate that was found stands even if the item has a field of its name.
    const double totalTax = item.value("total_tax"_L1).toVariant().toDouble();
    QString rateKey;
    QVariant rate;
    if (GetLineItemsTaxes(item, rates, totalTax, rateId, rateKey, rate))
        fields.insert(rateKey, rate);
    return fields;
}

} // namespace

int GetLineItems(const QJsonObject& order,
                 const std::map<int, std::tuple<QString, QString, QString>>& rates,
                 const std::map<int, double>& shipping, bool isRefund, int errors,
                 QList<std::pair<QMap<QString, QVariant>, QMap<QString, QVariant>>>& records)
{
    if (!isRefund)
        records.clear();
    const QJsonArray items = order.value("line_items"_L1).toArray();
    if (items.isEmpty())
        return 0;

    const QMap<QString, QVariant> marks = bookingMarks(order, isRefund, errors);
    std::set<int> usedRates;
    for (const QJsonValueConstRef entry : items) {
        int rateId = -1;
        QMap<QString, QVariant> fields = lineFields(entry.toObject(), rates, rateId);

        QString shippingPart = u""_s;
        const auto part = shipping.find(rateId);
        if (part != shipping.end() && usedRates.insert(rateId).second)
            shippingPart = QString::number(part->second, 'g', 6);
        fields.insert(u"shipping_part"_s, shippingPart);
        records.append({std::move(fields), marks});
    }
    return static_cast<int>(items.size());
}
