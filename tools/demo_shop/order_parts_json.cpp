#include "tools/demo_shop/order_json.h"
#include "tools/demo_shop/shop_time.h"

namespace demo_shop {

namespace {

void writeLineMeta(JsonWriter& json, const OrderLine& line)
{
    qint64 id = line.id * 10;
    json.array("meta_data");
    if (line.refundedId != 0) {
        writeItemMeta(json, id, "_refunded_item_id", QString::number(line.refundedId));
    } else {
        if (line.product->parentId != 0)
            writeItemMeta(json, id++, "format", QString::fromLatin1(line.product->format),
                          "Format");
        for (const char* key : {"_unit", "_unit_base", "_unit_product", "_item_desc",
                                "_defect_description", "_delivery_time", "_min_age"})
            writeItemMeta(json, id++, key, QString());
    }
    json.end();
}

void writeTaxes(JsonWriter& json, const OrderLine& line)
{
    json.array("taxes");
    if (line.rate) {
        json.object();
        json.number("id", line.rate->id);
        json.amount("total", line.tax);
        json.amount("subtotal", line.taxBefore);
        json.end();
    }
    json.end();
}

const char* classOf(const TaxRate& rate)
{
    return qstrcmp(rate.taxClass, "standard") == 0 ? "" : rate.taxClass;
}

QString shareOf(const ShippingPart& part, const ShippingLine& line)
{
    const qint64 gross = line.net + line.tax;
    return QString::number(gross == 0 ? 1.0 : double(part.net + part.tax) / double(gross), 'g', 14);
}

QString itemList(const std::vector<OrderLine>& items)
{
    QStringList texts;
    for (const OrderLine& line : items)
        texts << QStringLiteral("%1 &times; %2")
                     .arg(line.product->name, QString::number(line.quantity));
    return texts.join(QStringLiteral(", "));
}

// The extension keeps how it shared the cost among the rates, as objects by tax class.
QByteArray splitTaxes(const ShippingLine& line)
{
    JsonWriter json;
    json.object();
    for (const ShippingPart& part : line.parts) {
        json.object(classOf(*part.rate));
        json.amount("taxable_amount", part.net + part.tax);
        json.text("tax_share", shareOf(part, line));
        json.array("tax_rates");
        json.text(nullptr, QString::number(part.rate->id));
        json.end();
        json.amount("net_amount", part.net);
        json.text("includes_tax", "1");
        json.end();
    }
    json.end();
    return json.bytes();
}

QByteArray taxShares(const ShippingLine& line, const std::vector<OrderLine>& items)
{
    JsonWriter json;
    json.object();
    for (const ShippingPart& part : line.parts) {
        qint64 net = 0;
        for (const OrderLine& item : items)
            net += item.rate == part.rate ? item.net : 0;
        json.object(classOf(*part.rate));
        json.amount("total", net);
        json.text("key", QString::number(part.rate->id));
        json.text("share", shareOf(part, line));
        json.end();
    }
    json.end();
    return json.bytes();
}

void writeObjectMeta(JsonWriter& json, qint64 id, const char* key, const QByteArray& object)
{
    json.object();
    json.number("id", id);
    json.text("key", key);
    json.raw("value", object);
    json.text("display_key", key);
    json.raw("display_value", object);
    json.end();
}

void writeShippingMeta(JsonWriter& json, const ShippingLine& line,
                       const std::vector<OrderLine>& items)
{
    const qint64 id = line.id * 10;
    json.array("meta_data");
    if (line.refundedId != 0) {
        writeItemMeta(json, id, "_refunded_item_id", QString::number(line.refundedId));
    } else {
        writeItemMeta(json, id, "Items", itemList(items));
        writeObjectMeta(json, id + 1, "_split_taxes", splitTaxes(line));
        writeObjectMeta(json, id + 2, "_tax_shares", taxShares(line, items));
    }
    json.end();
}

void writeRefund(JsonWriter& json, const Refund& refund, const QString& collection)
{
    json.object();
    json.number("id", refund.id);
    json.text("date_created", localText(refund.created));
    json.text("date_created_gmt", gmtText(refund.created));
    json.amount("amount", refund.amount);
    json.text("reason", refund.reason);
    json.number("refunded_by", 1);
    json.flag("refunded_payment", false);
    json.array("meta_data");
    json.object();
    json.number("id", refund.id * 10);
    json.text("key", "_refund_type");
    json.text("value", refund.isFull ? "full" : "partial");
    json.end();
    json.end();
    writeLines(json, refund.lines);
    writeShippingLines(json, refund.shipping, refund.lines);
    writeTaxLines(json, refund.taxes);
    json.emptyArray("fee_lines");

    json.object("_links");
    const auto link = [&json](const char* key, const QString& href, const char* hints) {
        json.array(key);
        json.object();
        json.text("href", href);
        if (hints)
            json.raw("targetHints", hints);
        json.end();
        json.end();
    };
    link("self", collection + u'/' + QString::number(refund.id), R"({"allow":["GET","DELETE"]})");
    link("collection", collection, nullptr);
    link("up", collection.chopped(int(qstrlen("/refunds"))), nullptr);
    json.end();
    json.end();
}

} // namespace

void writeItemMeta(JsonWriter& json, qint64 id, const char* key, const QString& value,
                   const char* displayKey)
{
    json.object();
    json.number("id", id);
    json.text("key", key);
    json.text("value", value);
    json.text("display_key", displayKey ? displayKey : key);
    json.text("display_value", value);
    json.end();
}

void writeLines(JsonWriter& json, const std::vector<OrderLine>& lines)
{
    json.array("line_items");
    for (const OrderLine& line : lines) {
        const Product& product = *line.product;
        const bool isVariation = product.parentId != 0;
        const int productId = isVariation ? product.parentId : product.id;
        json.object();
        json.number("id", line.id);
        json.text("name", product.name);
        json.number("product_id", line.isDeleted ? 0 : productId);
        json.number("variation_id", isVariation && !line.isDeleted ? product.id : 0);
        json.number("quantity", line.quantity);
        json.text("tax_class", product.taxClass);
        json.amount("subtotal", line.netBefore);
        json.amount("subtotal_tax", line.taxBefore);
        json.amount("total", line.net);
        json.amount("total_tax", line.tax);
        writeTaxes(json, line);
        writeLineMeta(json, line);
        json.text("sku", line.isDeleted ? "" : product.sku);
        json.text("global_unique_id", "");
        json.real("price", line.price);
        json.raw("image", isVariation ? R"({"id":0,"src":""})" : R"({"id":"","src":""})");
        if (isVariation)
            json.text("parent_name", productById(product.parentId)->name);
        else
            json.null("parent_name");
        json.end();
    }
    json.end();
}

void writeTaxLines(JsonWriter& json, const std::vector<TaxLine>& lines)
{
    json.array("tax_lines");
    for (const TaxLine& line : lines) {
        json.object();
        json.number("id", line.id);
        json.text("rate_code", line.rate->code);
        json.number("rate_id", line.rate->id);
        json.text("label", line.rate->name);
        json.flag("compound", false);
        json.amount("tax_total", line.tax);
        json.amount("shipping_tax_total", line.shippingTax);
        json.raw("rate_percent", line.rate->percent);
        json.emptyArray("meta_data");
        json.end();
    }
    json.end();
}

void writeShippingLines(JsonWriter& json, const std::vector<ShippingLine>& lines,
                        const std::vector<OrderLine>& items)
{
    json.array("shipping_lines");
    for (const ShippingLine& line : lines) {
        json.object();
        json.number("id", line.id);
        json.text("method_title", line.title);
        json.text("method_id", line.method);
        json.text("instance_id", line.instance);
        json.amount("total", line.net);
        json.amount("total_tax", line.tax);
        json.array("taxes");
        for (const ShippingPart& part : line.parts) {
            json.object();
            json.number("id", part.rate->id);
            json.amount("total", part.tax);
            json.text("subtotal", "");
            json.end();
        }
        json.end();
        json.text("tax_status", line.isTaxable ? "taxable" : "none");
        writeShippingMeta(json, line, items);
        json.end();
    }
    json.end();
}

QByteArray refundsJson(const Order& order, const QString& baseUrl)
{
    const QString collection = QStringLiteral("%1/wp-json/wc/v3/orders/%2/refunds")
                                   .arg(baseUrl, QString::number(order.id));
    JsonWriter json;
    json.array();
    for (const Refund& refund : order.refunds)
        writeRefund(json, refund, collection);
    json.end();
    return json.bytes();
}

} // namespace demo_shop
