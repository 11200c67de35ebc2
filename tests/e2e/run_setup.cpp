#include "tests/e2e/run_setup.h"

#include "app/globals.h"
#include "credentials/keychain_class.h"
#include "credentials/keychain_key.h"
#include "form/mod_form_qt.h"

#include <QJsonDocument>

namespace run_setup {

const QString apiKey = QStringLiteral("ck_4f3a90d1");
const QString apiSecret = QStringLiteral("cs_b8e27c55 ü");

namespace {

QJsonObject lineItem(int id, const char* total, const char* tax)
{
    constexpr int products = 12;
    return {{QStringLiteral("id"), id},
            {QStringLiteral("name"), QStringLiteral("Artikel; %1").arg(id)},
            {QStringLiteral("product_id"), 500 + id % products},
            {QStringLiteral("quantity"), 1},
            {QStringLiteral("total"), QString::fromLatin1(total)},
            {QStringLiteral("total_tax"), QString::fromLatin1(tax)},
            {QStringLiteral("taxes"),
             QJsonArray {QJsonObject {{QStringLiteral("id"), 1},
                                      {QStringLiteral("total"), QString::fromLatin1(tax)}}}}};
}

QJsonObject refundOf(int orderId)
{
    return {{QStringLiteral("id"), 9000 + orderId},
            {QStringLiteral("date_created"), QStringLiteral("2024-03-20T08:00:00")},
            {QStringLiteral("date_created_gmt"), QStringLiteral("2024-03-20T08:00:00")},
            {QStringLiteral("amount"), QStringLiteral("119.00")},
            {QStringLiteral("line_items"), QJsonArray {lineItem(orderId, "-100.00", "-19.00")}}};
}

} // namespace

QMap<QString, QVariant> completeOptions(const QString& shopUrl)
{
    return {
        {QStringLiteral("mainurl"), shopUrl},
        {keyNameAPI, QString()},
        {keyNameSECRET, QString()},
        {QStringLiteral("paypal_use"), true},
        {QStringLiteral("woocommerce_use"), true},
        {QStringLiteral("germanized_use"), false},
        {QStringLiteral("belegdatum"), QVariantList {1}},
        {QStringLiteral("b2c_handling"), QVariantList {2}},
        {QStringLiteral("skr"), QVariantList {4}},
    };
}

bool storeSecret(const QString& shopUrl, const QString& keyName, const QString& secret)
{
    KeyChainClass store(QStringLiteral("halverin_software.ledora.RestApi"), nullptr);
    QString error;
    return store.writeKeySync(makeRestKeychainKey(shopUrl, keyName), secret, error);
}

bool storeSecrets(const QString& shopUrl)
{
    return storeSecret(shopUrl, keyNameAPI, apiKey)
        && storeSecret(shopUrl, keyNameSECRET, apiSecret);
}

QByteArray authorization()
{
    return "Basic " + (apiKey + QLatin1Char(':') + apiSecret).toUtf8().toBase64();
}

QMap<QString, QVariant> optionsInTheFile(const StartFolder& folder)
{
    // A copy, since this process remembers what it has written under the file's own name.
    static int copies = 0;
    const QString copy = folder.path(QStringLiteral("copy%1.ini").arg(++copies));
    QFile::copy(folder.iniFile(), copy);
    QMap<QString, QVariant> options;
    mod_form_qt::INFO::loadMapFromIniFile(&options, copy, QStringLiteral("options"), false,
                                          QString());
    return options;
}

QJsonArray orders(int count, int refundEvery)
{
    QJsonArray list;
    for (int id = 1; id <= count; ++id) {
        const bool refunded = refundEvery > 0 && id % refundEvery == 0;
        QJsonArray refunds;
        if (refunded)
            refunds.append(QJsonObject {{QStringLiteral("id"), 9000 + id}});
        list.append(QJsonObject {
            {QStringLiteral("id"), id},
            {QStringLiteral("status"),
             refunded ? QStringLiteral("refunded") : QStringLiteral("completed")},
            {QStringLiteral("date_created"), QStringLiteral("2024-03-01T10:00:00")},
            {QStringLiteral("date_created_gmt"), QStringLiteral("2024-03-01T10:00:00")},
            {QStringLiteral("payment_method"), QStringLiteral("cod")},
            {QStringLiteral("payment_method_title"), QStringLiteral("Nachnahme")},
            {QStringLiteral("total"), QStringLiteral("119.00")},
            {QStringLiteral("billing"),
             QJsonObject {{QStringLiteral("last_name"), QStringLiteral("Müller-%1").arg(id)},
                          {QStringLiteral("email"), QStringLiteral("k%1@kunde.example").arg(id)}}},
            {QStringLiteral("line_items"), QJsonArray {lineItem(id, "100.00", "19.00")}},
            {QStringLiteral("refunds"), refunds},
        });
    }
    return list;
}

void serve(RunFixture& fixture, const QJsonArray& list)
{
    fixture.serveTaxes({QJsonObject {{QStringLiteral("id"), 1},
                                     {QStringLiteral("rate"), QStringLiteral("19.0000")}}});
    fixture.serveOrders(list);
    for (const auto& order : list) {
        const int id = order[QStringLiteral("id")].toInt();
        fixture.serve(QStringLiteral("/wp-json/wc/v3/orders/%1/refunds").arg(id),
                      QJsonDocument(QJsonArray {refundOf(id)}).toJson(QJsonDocument::Compact));
    }
}

} // namespace run_setup
