#pragma once

#include <QString>

/// Brings a shop's address into the one form from which its keychain key is made.
/// \param url  the address as typed; blanks around it do not count
/// \return     the address with scheme and host in lower case, without user info, query, fragment
///             and slashes at the end; port and path stay, and the path's escapes are decoded.
///             An address without a scheme is all path, so its case counts. Nothing fails.
QString normalizeRestUrlForKeychain(const QString& url);

/// Makes the key under which a secret of a shop lies in the secret store.
/// \param url      the shop's address; addresses that normalise alike give the same key
/// \param keyName  which of the shop's secrets is meant
/// \return         16 lower-case hexadecimal digits, a dot and `keyName`. Nothing fails.
QString makeRestKeychainKey(const QString& url, const QString& keyName);
