#pragma once

#include <QSet>
#include <QString>

#include <tuple>
#include <unordered_set>

// The few process-wide values of the program. Those that a lower room reads belong to that room:
// globalTaxRates, bUseUTC and tzLocal live in accounting/.

/// Path of the host's configuration file; assigned by MainWindow's constructor.
extern QString csConfigFileName;
/// Path of the INI file that keeps the options; assigned by MainWindow's constructor, then by the
/// host.
extern QString csIniPath;
/// Chart of accounts that the host preselects: 3, 4, 49, or 0 for none.
extern int nSKRDefault;
/// The firm is a small business (Kleinunternehmer).
extern bool bFirmaKU;

/// Clearing accounts for SKR03, SKR04, SKR49, as the host gave them.
extern std::tuple<int, int, int> t_ebay_vr_konto;
extern std::tuple<int, int, int> t_paypal_konto;
extern std::tuple<int, int, int> t_woocommerce_konto;

/// Option keys of the two secrets; also the last part of their names in the secret store.
extern const QString keyNameAPI;
extern const QString keyNameSECRET;

/// Marks that must not occur in a value of the option string: the host splits it at them.
extern const QString extParmsSep;
/// Stands for a line end inside a value of the option string.
extern const QString extParmsLinesSep;

/// Targets of the help links.
extern const QString link_main_help;
extern const QString link_def_payment_method_s;

/// Every payment_method_title seen in this process.
extern QSet<QString> payment_title_set;

/// Ids of the ID cache; the run neither fills nor reads it.
extern std::unordered_set<int> importHash;
/// File of the ID cache; there is none yet.
extern QString csFileHashName;
