#include "accounting/payment_import_tables.h"
#include "credentials/keychain_class.h"
#include "credentials/keychain_key.h"
#include "form/mod_form_qt.h"

#include <QCoreApplication>
#include <QDate>
#include <QFile>
#include <QMap>
#include <QTextStream>
#include <QVariant>

namespace {

// As ledora names its own: it would not find secrets stored under another service or key.
const QString service = QStringLiteral("halverin_software.ledora.RestApi");
const QString keyNameAPI = QStringLiteral("api_key_chain");
const QString keyNameSECRET = QStringLiteral("api_secret_chain");

// Lists are kept by the values of their selected items.
QVariant selected(const QVariant& value)
{
    return QVariantList {value};
}

// What a user who has filled in everything for the demo shop would find saved.
QMap<QString, QVariant> savedOptions(const QString& shopUrl, const QString& pdfFolder)
{
    QMap<QString, QVariant> options {
        {QStringLiteral("mainurl"), shopUrl},
        {keyNameAPI, QString()},
        {keyNameSECRET, QString()},
        {QStringLiteral("date_filter_use"), false},
        {QStringLiteral("date_filter_after"), QDate(1970, 1, 1)},
        {QStringLiteral("date_filter_before"), QDate(2037, 1, 1)},
        {QStringLiteral("id_cache_use"), true},
        {QStringLiteral("germanized_use"), !pdfFolder.isEmpty()},
        {QStringLiteral("germanized_pdf_folder"), pdfFolder},
        {QStringLiteral("germanized_overwrite_pdf"), false},
        {QStringLiteral("paypal_use"), true},
        {QStringLiteral("woocommerce_use"), true},
        {QStringLiteral("customers_create"), 0},
        {QStringLiteral("belegdatum"), selected(1)},
        {QStringLiteral("b2c_handling"), selected(1)},
        {QStringLiteral("kostenstelle1"), selected(QString())},
        {QStringLiteral("kostenstelle2"), selected(QString())},
        {QStringLiteral("skr"), selected(3)},
    };
    for (const auto& [key, text] : payment_import::DefaultFormBuchungsTexte)
        options.insert(key, text);
    return options;
}

// Returns false, with the reason on standard error, if the secret store refuses.
bool storeSecret(KeyChainClass& keyChain, const QString& shopUrl, const QString& keyName,
                 const QString& secret)
{
    QString error;
    if (keyChain.writeKeySync(makeRestKeychainKey(shopUrl, keyName), secret, error))
        return true;
    QTextStream(stderr) << "demo_seed: the secret store refuses " << keyName << ": " << error
                        << '\n';
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    // Through the environment, since everybody on the machine can read a command line.
    const QString key = qEnvironmentVariable("LEDORA_DEMO_KEY");
    const QString secret = qEnvironmentVariable("LEDORA_DEMO_SECRET");
    if (arguments.size() != 4 || key.isEmpty() || secret.isEmpty()) {
        QTextStream(stderr) << "usage: LEDORA_DEMO_KEY=... LEDORA_DEMO_SECRET=... "
                               "demo_seed INI_FILE SHOP_URL PDF_FOLDER\n"
                               "An empty folder leaves the invoices out.\n";
        return 2;
    }
    const QString& iniPath = arguments.at(1);
    const QString& shopUrl = arguments.at(2);

    KeyChainClass keyChain(service, nullptr);
    if (!storeSecret(keyChain, shopUrl, keyNameAPI, key)
        || !storeSecret(keyChain, shopUrl, keyNameSECRET, secret))
        return 1;

    // The save is silent and its reading back comes from memory, so only the file itself can tell.
    const QMap<QString, QVariant> options = savedOptions(shopUrl, arguments.at(3));
    const QString group = QStringLiteral("options");
    mod_form_qt::INFO::saveMapToIniFile(&options, iniPath, group, false, nullptr, QString());
    QFile file(iniPath);
    if (!file.open(QIODevice::ReadOnly) || !file.readAll().contains("[options]")) {
        QTextStream(stderr) << "demo_seed: cannot write " << iniPath << '\n';
        return 1;
    }
    return 0;
}
