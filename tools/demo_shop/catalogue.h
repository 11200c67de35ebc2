#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace demo_shop {

/// A tax rate of the shop.
struct TaxRate
{
    int id;
    const char* country;
    int perMille; ///< 190 is 19 %
    const char* percent; ///< as a JSON number: "19", "5.5"
    const char* rate; ///< as the shop-wide list has it: "19.0000"
    QString name;
    const char* taxClass; ///< "standard", "reduced-rate", ...
    const char* code; ///< as tax lines have it
};

/// A product, or a variation of one.
struct Product
{
    int id;
    QString name;
    const char* slug;
    const char* sku;
    qint64 gross; ///< price in Germany with its tax, in cents
    const char* taxClass; ///< "" is the standard rate, else as in TaxRate
    bool isVirtual;
    bool isDownload;
    int parentId; ///< 0, or the product that this is a variation of
    const char* format; ///< the variation's attribute
};

/// The shop's tax rates, by id.
const std::vector<TaxRate>& taxRates();
/// The rate for a country and a product's tax class; null where no tax is taken.
const TaxRate* rateFor(const QByteArray& country, const QByteArray& taxClass);
/// A rate by its id, null if there is none.
const TaxRate* rateById(int id);

/// The products and their variations, by id.
const std::vector<Product>& products();
/// A product by its id, null if there is none.
const Product* productById(int id);

/// The list of tax rates from `first`, `count` of them, as JSON.
QByteArray taxRatesJson(const QString& baseUrl, qint64 first, qint64 count);
/// A product as JSON.
QByteArray productJson(const Product& product, const QString& baseUrl);

} // namespace demo_shop
