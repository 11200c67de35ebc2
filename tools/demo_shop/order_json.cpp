#include "tools/demo_shop/order_json.h"

#include "tools/demo_shop/shop_time.h"

#include <QCryptographicHash>

namespace demo_shop {

namespace {

using DateText = QString (*)(qint64);

void writeDate(JsonWriter& json, const char* key, std::optional<qint64> moment, DateText asText)
{
    if (moment)
        json.text(key, asText(*moment));
    else
        json.null(key);
}

// Texts that only have to look like the shop's and be the same every time.
QByteArray fingerprint(const Order& order, const char* salt)
{
    return QCryptographicHash::hash(QByteArray::number(order.id) + salt
                                        + order.billing.email.toUtf8(),
                                    QCryptographicHash::Md5)
        .toHex();
}

QString orderKey(const Order& order)
{
    return QStringLiteral("wc_order_") + QString::fromLatin1(fingerprint(order, "key").left(13));
}

void writeAddress(JsonWriter& json, const char* key, const Person& person, bool withEmail)
{
    json.object(key);
    json.text("first_name", person.firstName);
    json.text("last_name", person.lastName);
    json.text("company", person.company);
    json.text("address_1", person.address1);
    json.text("address_2", person.address2);
    json.text("city", person.city);
    json.text("state", person.state);
    json.text("postcode", person.postcode);
    json.text("country", person.country);
    if (withEmail)
        json.text("email", person.email);
    json.text("phone", person.phone);
    json.text("title", "");
    json.text("title_formatted", "");
    json.end();
}

void writeHead(JsonWriter& json, const Order& order)
{
    json.number("id", order.id);
    json.number("parent_id", 0);
    json.text("status", order.status);
    json.text("currency", "EUR");
    json.text("version", "11.0.1");
    json.flag("prices_include_tax", true);
    json.text("date_created", localText(order.created));
    json.text("date_modified", localText(order.modified));
    json.amount("discount_total", order.discount);
    json.amount("discount_tax", order.discountTax);
    json.amount("shipping_total", order.shippingNet);
    json.amount("shipping_tax", order.shippingTax);
    json.amount("cart_tax", order.cartTax);
    json.amount("total", order.total);
    json.amount("total_tax", order.cartTax + order.shippingTax);
    json.number("customer_id", order.customerId);
    json.text("order_key", orderKey(order));
    writeAddress(json, "billing", order.billing, true);
    writeAddress(json, "shipping", order.shippingTo, false);
}

void writePayment(JsonWriter& json, const Order& order)
{
    json.text("payment_method", order.payment.method);
    json.text("payment_method_title", order.payment.title);
    json.text("transaction_id", order.payment.transaction);
    json.text("customer_ip_address",
              order.fromBackOffice ? QString()
                                   : QStringLiteral("203.0.113.%1").arg(1 + order.index % 254));
    json.text("customer_user_agent",
              order.fromBackOffice ? ""
                                   : "Mozilla/5.0 (X11; Linux x86_64; rv:140.0) Gecko/20100101 "
                                     "Firefox/140.0");
    json.text("created_via", order.fromBackOffice ? "admin" : "checkout");
    json.text("customer_note", order.note);
    writeDate(json, "date_completed", order.completed, localText);
    writeDate(json, "date_paid", order.paid, localText);
    json.text("cart_hash",
              order.fromBackOffice ? QString() : QString::fromLatin1(fingerprint(order, "cart")));
    json.text("number", QString::number(order.id));
}

void writePayPalAmount(JsonWriter& json, const char* key, qint64 cents)
{
    json.object(key);
    json.text("currency_code", "EUR");
    json.amount("value", cents);
    json.end();
}

class MetaWriter
{
public:
    MetaWriter(JsonWriter& json, qint64 firstId)
        : m_json(json)
        , m_id(firstId)
    {
        m_json.array("meta_data");
    }

    ~MetaWriter() { m_json.end(); }
    Q_DISABLE_COPY_MOVE(MetaWriter)

    void text(const char* key, const QString& value)
    {
        begin(key);
        m_json.text("value", value);
        m_json.end();
    }

    void begin(const char* key)
    {
        m_json.object();
        m_json.number("id", m_id++);
        m_json.text("key", key);
    }

private:
    JsonWriter& m_json;
    qint64 m_id;
};

void writePayPalMeta(JsonWriter& json, MetaWriter& meta, const Order& order)
{
    const bool isCard = order.payment.method.contains(u"card");
    meta.text("_ppcp_paypal_order_id",
              QString::fromLatin1(fingerprint(order, "paypal").left(17).toUpper()));
    meta.text("_ppcp_paypal_intent", QStringLiteral("CAPTURE"));
    meta.text("_ppcp_paypal_payment_mode", QStringLiteral("live"));
    meta.text("_ppcp_paypal_payment_source",
              isCard ? QStringLiteral("card") : QStringLiteral("paypal"));
    meta.text("_ppcp_paypal_payer_email", order.billing.email);
    if (!order.payment.fee)
        return;
    meta.begin("_ppcp_paypal_fees");
    json.object("value");
    writePayPalAmount(json, "gross_amount", order.total);
    writePayPalAmount(json, "paypal_fee", *order.payment.fee);
    writePayPalAmount(json, "net_amount", order.total - *order.payment.fee);
    json.end();
    json.end();
}

void writeMeta(JsonWriter& json, const Order& order, const QString& baseUrl)
{
    MetaWriter meta(json, 1 + order.index * 32);
    if (!order.fromBackOffice)
        meta.text("is_vat_exempt", QStringLiteral("no"));
    meta.text("_additional_costs_include_tax", QStringLiteral("yes"));
    if (!order.shipping.empty() && order.shipping.front().parts.size() > 1)
        meta.text("_has_split_tax", QStringLiteral("yes"));
    meta.text("_gzd_version", QStringLiteral("4.0.10"));
    if (!order.fromBackOffice) {
        meta.text("_wc_order_attribution_source_type", QStringLiteral("organic"));
        meta.text("_wc_order_attribution_utm_source", QStringLiteral("suche"));
        meta.text("_wc_order_attribution_session_entry", baseUrl + "/shop/?q=a&b=c");
        meta.text("_wc_order_attribution_device_type", QStringLiteral("Desktop"));
    }
    if (order.payment.isPayPal)
        writePayPalMeta(json, meta, order);
}

void writeFees(JsonWriter& json, const std::vector<FeeLine>& fees)
{
    json.array("fee_lines");
    for (const FeeLine& fee : fees) {
        json.object();
        json.number("id", fee.id);
        json.text("name", fee.name);
        json.text("tax_class", "");
        json.text("tax_status", "taxable");
        // The shop keeps this one as it was typed in.
        json.text("amount", QString::number(double(fee.net + fee.tax) / 100));
        json.amount("total", fee.net);
        json.amount("total_tax", fee.tax);
        json.array("taxes");
        json.object();
        json.number("id", fee.rate->id);
        json.amount("total", fee.tax);
        json.text("subtotal", "");
        json.end();
        json.end();
        json.emptyArray("meta_data");
        json.end();
    }
    json.end();
}

void writeCoupons(JsonWriter& json, const std::vector<CouponLine>& coupons)
{
    json.array("coupon_lines");
    for (const CouponLine& coupon : coupons) {
        json.object();
        json.number("id", coupon.id);
        json.text("code", coupon.code);
        json.text("discount", QString::number(double(coupon.discount) / 100));
        json.text("discount_tax", QString::number(double(coupon.discountTax) / 100));
        json.array("meta_data");
        writeItemMeta(json, coupon.id * 10, "coupon_info",
                      QStringLiteral("[90,\"%1\",\"percent\",%2]")
                          .arg(coupon.code, QString::number(coupon.percent)));
        json.end();
        json.text("discount_type", "percent");
        json.number("nominal_amount", coupon.percent);
        json.flag("free_shipping", false);
        json.end();
    }
    json.end();
}

void writeRefundSummary(JsonWriter& json, const std::vector<Refund>& refunds)
{
    json.array("refunds");
    for (const Refund& refund : refunds) {
        json.object();
        json.number("id", refund.id);
        json.text("reason", refund.reason);
        json.amount("total", -refund.amount);
        json.amount("total_tax", refund.tax);
        json.end();
    }
    json.end();
}

void writeDirectDebit(JsonWriter& json, const Order& order)
{
    const bool isUsed = order.payment.method == u"direct-debit";
    const auto filled = [isUsed](const QString& text) { return isUsed ? text : QString(); };
    json.object("direct_debit");
    json.text("holder", filled(order.billing.firstName + u' ' + order.billing.lastName));
    // Its check digits are wrong, so it is nobody's.
    json.text("iban", filled(QStringLiteral("DE00000000%1").arg(order.index, 12, 10, QChar(u'0'))));
    json.text("bic", filled(QStringLiteral("BEISDEXXXXX")));
    json.text("mandate_id", filled(QStringLiteral("MANDAT%1").arg(order.id)));
    json.end();
}

void writeTail(JsonWriter& json, const Order& order, const QString& baseUrl)
{
    json.text("payment_url",
              QStringLiteral("%1/checkout/order-pay/%2/?pay_for_order=true&key=%3")
                  .arg(baseUrl, QString::number(order.id), orderKey(order)));
    const bool isPending = order.role == Role::Pending;
    json.flag("is_editable", isPending);
    json.flag("needs_payment", isPending);
    json.flag("needs_processing", order.role != Role::Download && order.role != Role::FeeOnly);
    writeDate(json, "date_created_gmt", order.created, gmtText);
    writeDate(json, "date_modified_gmt", order.modified, gmtText);
    writeDate(json, "date_completed_gmt", order.completed, gmtText);
    writeDate(json, "date_paid_gmt", order.paid, gmtText);
    json.text("currency_symbol", u"€");
    json.text("parcel_delivery_opted_in", "");
    writeDirectDebit(json, order);
}

void writeLinks(JsonWriter& json, const Order& order, const QString& baseUrl)
{
    const QString orders = baseUrl + "/wp-json/wc/v3/orders";
    const QString self = orders + u'/' + QString::number(order.id);
    const auto href = [&json](const char* key, const QString& address) {
        json.array(key);
        json.object();
        json.text("href", address);
    };
    json.object("_links");
    href("self", self);
    json.raw("targetHints", R"({"allow":["GET","POST","PUT","PATCH","DELETE"]})");
    json.end();
    json.end();
    href("collection", orders);
    json.end();
    json.end();
    json.array("email_templates");
    json.object();
    json.flag("embeddable", true);
    json.text("href", self + "/actions/email_templates");
    json.end();
    json.end();
    if (order.customerId > 0) {
        href("customer",
             QStringLiteral("%1/wp-json/wc/v3/customers/%2")
                 .arg(baseUrl, QString::number(order.customerId)));
        json.end();
        json.end();
    }
    json.end();
}

} // namespace

void writeOrder(JsonWriter& json, const Order& order, const QString& baseUrl)
{
    json.object();
    writeHead(json, order);
    writePayment(json, order);
    writeMeta(json, order, baseUrl);
    writeLines(json, order.lines);
    writeTaxLines(json, order.taxes);
    writeShippingLines(json, order.shipping, order.lines);
    writeFees(json, order.fees);
    writeCoupons(json, order.coupons);
    writeRefundSummary(json, order.refunds);
    writeTail(json, order, baseUrl);
    writeLinks(json, order, baseUrl);
    json.end();
}

} // namespace demo_shop
