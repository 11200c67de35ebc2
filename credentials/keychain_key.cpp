#include "credentials/keychain_key.h"

#include <QCryptographicHash>
#include <QUrl>

QString normalizeRestUrlForKeychain(const QString& url)
{
    QUrl address(url.trimmed(), QUrl::TolerantMode);
    address.setScheme(address.scheme().toLower());
    address.setHost(address.host(QUrl::FullyDecoded).toLower(), QUrl::DecodedMode);
    address.setUserInfo(QString());
    address.setQuery(QString());
    address.setFragment(QString());

    QString path = address.path(QUrl::FullyDecoded);
    while (path.size() >= 2 && path.endsWith(QLatin1Char('/')))
        path.chop(1);
    address.setPath(path, QUrl::DecodedMode);

    QString text = address.toString(QUrl::RemoveUserInfo | QUrl::StripTrailingSlash);
    // StripTrailingSlash keeps the slash of a path that is nothing else, and the bare host with it
    // and without it would be two shops.
    if (!address.host().isEmpty() && path == QLatin1String("/") && text.endsWith(QLatin1Char('/')))
        text.chop(1);
    return text;
}

QString makeRestKeychainKey(const QString& url, const QString& keyName)
{
    const QByteArray address = normalizeRestUrlForKeychain(url).toUtf8();
    const QByteArray digits = QCryptographicHash::hash(address, QCryptographicHash::Sha256).toHex();
    return QString::fromLatin1(digits.left(16)) + QLatin1Char('.') + keyName;
}
