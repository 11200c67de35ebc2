#include "app/globals.h"

QString csConfigFileName;
QString csIniPath;
int nSKRDefault = 3;
bool bFirmaKU = false;

std::tuple<int, int, int> t_ebay_vr_konto {1362, 1462, 707};
std::tuple<int, int, int> t_paypal_konto {1220, 1820, 955};
std::tuple<int, int, int> t_woocommerce_konto {1361, 1461, 706};

const QString keyNameAPI = QStringLiteral("api_key_chain");
const QString keyNameSECRET = QStringLiteral("api_secret_chain");

const QString extParmsSep = QStringLiteral("|[]");
const QString extParmsLinesSep = QStringLiteral("~");

const QString link_main_help = QStringLiteral("https://www.halverin.example/HTML/woocommerce.htm");
const QString link_def_payment_method_s =
    QStringLiteral("https://www.halverin.example/HTML/woocommerce.htm");

QSet<QString> payment_title_set;

std::unordered_set<int> importHash;
QString csFileHashName;
