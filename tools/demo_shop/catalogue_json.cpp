#include "tools/demo_shop/catalogue.h"

#include "tools/demo_shop/json_writer.h"

#include <algorithm>

namespace demo_shop {

namespace {

constexpr char kDate[] = "2025-11-20T16:04:50";
constexpr char kDateGmt[] = "2025-11-20T15:04:50";

void writeLink(JsonWriter& json, const char* key, const QString& href, bool withHints)
{
    json.array(key);
    json.object();
    json.text("href", href);
    if (withHints) {
        json.object("targetHints");
        json.raw("allow", R"(["GET","POST","PUT","PATCH","DELETE"])");
        json.end();
    }
    json.end();
    json.end();
}

QString priceText(qint64 cents)
{
    return cents == 0 ? QStringLiteral("0") : QString::fromLatin1(amountText(cents));
}

QString priceHtml(qint64 cents)
{
    return QStringLiteral("<span class=\"woocommerce-Price-amount amount\"><bdi>%1&nbsp;"
                          "<span class=\"woocommerce-Price-currencySymbol\" translate=\"no\">"
                          "&euro;</span></bdi></span>")
        .arg(QString::fromLatin1(amountText(cents)).replace(u'.', u','));
}

void writeHead(JsonWriter& json, const Product& product, const QString& baseUrl, const char* type)
{
    json.number("id", product.id);
    json.text("name", product.name);
    json.text("slug", product.slug);
    json.text("permalink", baseUrl + "/product/" + QString::fromLatin1(product.slug) + "/");
    json.text("date_created", kDate);
    json.text("date_created_gmt", kDateGmt);
    json.text("date_modified", kDate);
    json.text("date_modified_gmt", kDateGmt);
    json.text("type", type);
    json.text("status", "publish");
    json.flag("featured", false);
    json.text("catalog_visibility", "visible");
    json.text("description", "");
    json.text("short_description", "");
    json.text("sku", product.sku);
}

void writePrices(JsonWriter& json, const Product& product, bool isVariable)
{
    json.text("price", priceText(product.gross));
    json.text("regular_price", isVariable ? QString() : priceText(product.gross));
    json.text("sale_price", "");
    for (const char* key :
         {"date_on_sale_from", "date_on_sale_from_gmt", "date_on_sale_to", "date_on_sale_to_gmt"})
        json.null(key);
    json.flag("on_sale", false);
    json.flag("purchasable", true);
    json.number("total_sales", 12);
    json.flag("virtual", product.isVirtual);
    json.flag("downloadable", product.isDownload);
}

void writeDownloads(JsonWriter& json, const Product& product, const QString& baseUrl)
{
    json.array("downloads");
    if (product.isDownload) {
        json.object();
        json.text("id", "345ba848-ca52-4d91-867a-2cf3b8d7180e");
        json.text("name", product.name);
        json.text("file", baseUrl + "/wp-content/uploads/datei.pdf");
        json.end();
    }
    json.end();
    json.number("download_limit", -1);
    json.number("download_expiry", -1);
    json.text("external_url", "");
    json.text("button_text", "");
}

void writeStockAndShipping(JsonWriter& json, const Product& product)
{
    json.text("tax_status", "taxable");
    json.text("tax_class", product.taxClass);
    json.flag("manage_stock", false);
    json.null("stock_quantity");
    json.text("backorders", "no");
    json.flag("backorders_allowed", false);
    json.flag("backordered", false);
    json.null("low_stock_amount");
    json.flag("sold_individually", false);
    json.text("weight", "");
    json.raw("dimensions", R"({"length":"","width":"","height":""})");
    json.flag("shipping_required", !product.isVirtual);
    json.flag("shipping_taxable", !product.isVirtual);
    json.text("shipping_class", "");
    json.number("shipping_class_id", 0);
    json.flag("reviews_allowed", product.parentId == 0);
    json.text("average_rating", "0.00");
    json.number("rating_count", 0);
    json.emptyArray("upsell_ids");
    json.emptyArray("cross_sell_ids");
    json.number("parent_id", product.parentId);
    json.text("purchase_note", "");
}

void writeAttributes(JsonWriter& json, const Product& product, const std::vector<int>& variations)
{
    const bool isVariation = product.parentId != 0;
    json.raw("categories",
             isVariation ? "[]" : R"([{"id":15,"name":"Uncategorized","slug":"uncategorized"}])");
    for (const char* key : {"brands", "tags", "images"})
        json.emptyArray(key);
    if (isVariation)
        json.raw("attributes",
                 QByteArray(R"([{"id":0,"name":"Format","slug":"format","option":")")
                     + product.format + R"("}])");
    else
        json.raw("attributes",
                 variations.empty() ? "[]"
                                    : R"([{"id":0,"name":"Format","slug":"Format","position":0,)"
                                      R"("visible":true,"variation":true,"options":["A4","A3"]}])");
    json.emptyArray("default_attributes");
    json.array("variations");
    for (const int id : variations)
        json.number(nullptr, id);
    json.end();
    json.emptyArray("grouped_products");
    json.number("menu_order", 0);
    json.text("price_html", priceHtml(product.gross));
    json.emptyArray("related_ids");
    json.emptyArray("meta_data");
    json.text("stock_status", "instock");
    json.flag("has_options", !variations.empty());
    json.text("post_password", "");
    json.text("global_unique_id", "");
}

// The fields of the extension Germanized.
void writeExtension(JsonWriter& json)
{
    json.emptyArray("unit");
    json.raw("unit_price",
             R"({"base":"","product":"","price_auto":false,"price":"","price_regular":"",)"
             R"("price_sale":"","price_html":""})");
    for (const char* key : {"mini_desc", "defect_description", "min_age", "gtin", "mpn"})
        json.text(key, "");
    for (const char* key :
         {"sale_price_label", "sale_price_regular_label", "manufacturer", "safety_attachment_ids"})
        json.emptyArray(key);
    json.text("safety_instructions", "");
    json.emptyArray("delivery_time");
    json.emptyArray("country_specific_delivery_times");
    for (const char* key : {"free_shipping", "wireless_electronic_device",
                            "device_contains_power_supply", "device_charging_supports_usb_pd"})
        json.flag(key, false);
    json.text("device_charging_watt_min", "");
    json.text("device_charging_watt_max", "");
    for (const char* key :
         {"service", "used_good", "defective_copy", "photovoltaic_system", "differential_taxation"})
        json.flag(key, false);
    json.text("warranty_attachment_id", "");
    json.flag("is_food", false);
    json.raw("food",
             R"({"deposit_type":[],"deposit_quantity":1,"deposit":0,"ingredients":"",)"
             R"("nutrient_reference_value":"","nutri_score":"","alcohol_content":"",)"
             R"("is_non_alcoholic":false,"allergen_ids":[],)"
             R"("nutrient_ids":[{"term":0,"value":"","ref_value":""}],"net_filling_quantity":"",)"
             R"("drained_weight":"","description":"","distributor":"","place_of_origin":""})");
}

} // namespace

QByteArray taxRatesJson(const QString& baseUrl, qint64 first, qint64 count)
{
    const std::vector<TaxRate>& rates = taxRates();
    const qint64 end = std::min<qint64>(first + count, qint64(rates.size()));
    const QString address = baseUrl + "/wp-json/wc/v3/taxes";
    JsonWriter json;
    json.array();
    for (qint64 i = first; i < end; ++i) {
        const TaxRate& rate = rates[std::size_t(i)];
        json.object();
        json.number("id", rate.id);
        json.text("country", rate.country);
        for (const char* key : {"state", "postcode", "city"})
            json.text(key, "");
        json.text("rate", rate.rate);
        json.text("name", rate.name);
        json.number("priority", 1);
        json.flag("compound", false);
        json.flag("shipping", true);
        json.number("order", i);
        json.text("class", rate.taxClass);
        json.emptyArray("postcodes");
        json.emptyArray("cities");
        json.object("_links");
        writeLink(json, "self", address + "/" + QString::number(rate.id), true);
        writeLink(json, "collection", address, false);
        json.end();
        json.end();
    }
    json.end();
    return json.bytes();
}

QByteArray productJson(const Product& product, const QString& baseUrl)
{
    std::vector<int> variations;
    for (const Product& other : products()) {
        if (other.parentId == product.id)
            variations.push_back(other.id);
    }
    const char* type = product.parentId != 0 ? "variation"
        : variations.empty()                 ? "simple"
                                             : "variable";
    JsonWriter json;
    json.object();
    writeHead(json, product, baseUrl, type);
    writePrices(json, product, !variations.empty());
    writeDownloads(json, product, baseUrl);
    writeStockAndShipping(json, product);
    writeAttributes(json, product, variations);
    writeExtension(json);
    json.object("_links");
    const QString address = baseUrl + "/wp-json/wc/v3/products";
    writeLink(json, "self", address + "/" + QString::number(product.id), true);
    writeLink(json, "collection", address, false);
    if (product.parentId != 0)
        writeLink(json, "up", address + "/" + QString::number(product.parentId), false);
    json.end();
    json.end();
    return json.bytes();
}

} // namespace demo_shop
