// The shop's address on its way to the name under which the secret store keeps its secrets.
#include "credentials/keychain_key.h"
#include "tests/fuzz/fuzz_input.h"

#include <QUrl>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    startFuzzing();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString address = QString::fromUtf8(inputOf(data, size));
    const QString normal = normalizeRestUrlForKeychain(address);
    if (normal != normalizeRestUrlForKeychain(QLatin1Char(' ') + address + QLatin1Char('\n')))
        qFatal("Blanks around an address count.");
    const QUrl url(normal);
    if (!url.userInfo().isEmpty() && !QUrl(address.trimmed()).host().isEmpty())
        qFatal("A user name is left in the address.");

    const QString key = makeRestKeychainKey(address, QStringLiteral("name"));
    const QString digits = key.left(16);
    for (const QChar c : digits) {
        if (!QStringLiteral("0123456789abcdef").contains(c))
            qFatal("The name does not begin with 16 digits.");
    }
    if (key.mid(16) != QLatin1String(".name"))
        qFatal("The name of the secret does not stand at the end.");
    if (key != makeRestKeychainKey(address, QStringLiteral("name")))
        qFatal("The same address gives two names.");
    return 0;
}
