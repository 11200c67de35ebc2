#include "credentials/keychain_key.h"

#include <QRegularExpression>
#include <QTest>

class tst_keychain_key : public QObject
{
    Q_OBJECT

private slots:
    void normalizesTheAddress_data();
    void normalizesTheAddress();
    void likeAddressesGiveTheSameKey_data();
    void likeAddressesGiveTheSameKey();
    void otherAddressesGiveAnotherKey_data();
    void otherAddressesGiveAnotherKey();
    void keyIsTheHashOfTheAddress_data();
    void keyIsTheHashOfTheAddress();
    void keyNamesDifferOnlyBehindTheDot();
};

void tst_keychain_key::normalizesTheAddress_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("expected");

    QTest::newRow("plain") << "https://shop.example"
                           << "https://shop.example";
    QTest::newRow("blanks around") << " \t https://shop.example/wp \n"
                                   << "https://shop.example/wp";
    QTest::newRow("scheme and host in capitals") << "HTTPS://Shop.EXAMPLE"
                                                 << "https://shop.example";
    QTest::newRow("slash behind the host") << "https://shop.example/"
                                           << "https://shop.example";
    QTest::newRow("slashes behind the host") << "https://shop.example///"
                                             << "https://shop.example";
    QTest::newRow("slash behind the path") << "https://a/wp/"
                                           << "https://a/wp";
    QTest::newRow("slashes behind the path") << "https://a/wp//"
                                             << "https://a/wp";
    QTest::newRow("slash inside the path") << "https://a/wp//b/"
                                           << "https://a/wp//b";
    QTest::newRow("path keeps its case") << "https://A/WP"
                                         << "https://a/WP";
    QTest::newRow("port stays") << "https://a:8443/"
                                << "https://a:8443";
    QTest::newRow("port and path stay") << "http://a:80/wp/"
                                        << "http://a:80/wp";
    QTest::newRow("user and password") << "https://u:p%40@a/wp"
                                       << "https://a/wp";
    QTest::newRow("user alone") << "https://u@a"
                                << "https://a";
    QTest::newRow("query") << "https://a/wp?x=1&y=/"
                           << "https://a/wp";
    QTest::newRow("query behind a slash") << "https://a/?x=1"
                                          << "https://a";
    QTest::newRow("fragment") << "https://a/wp#top/"
                              << "https://a/wp";
    QTest::newRow("escaped blank") << "https://a/W%20p"
                                   << "https://a/W p";
    QTest::newRow("blank") << "https://a/W p"
                           << "https://a/W p";
    QTest::newRow("IPv6 host") << "https://[::1]:8443/"
                               << "https://[::1]:8443";
    QTest::newRow("IPv4 host") << "http://127.0.0.1:8080/wp/"
                               << "http://127.0.0.1:8080/wp";
    QTest::newRow("no scheme") << "Shop.Example/WP/"
                               << "Shop.Example/WP";
    QTest::newRow("slash alone") << "/"
                                 << "/";
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("blanks alone") << "  "
                                  << "";
}

void tst_keychain_key::normalizesTheAddress()
{
    QFETCH(QString, url);
    QTEST(normalizeRestUrlForKeychain(url), "expected");
}

void tst_keychain_key::likeAddressesGiveTheSameKey_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("other");

    QTest::newRow("case of the scheme") << "https://a/wp"
                                        << "HtTpS://a/wp";
    QTest::newRow("case of the host") << "https://shop.example/wp"
                                      << "https://SHOP.example/wp";
    QTest::newRow("trailing slash of a host") << "https://a"
                                              << "https://a/";
    QTest::newRow("trailing slash of a path") << "https://a/wp"
                                              << "https://a/wp/";
    QTest::newRow("user info") << "https://a/wp"
                               << "https://user:password@a/wp";
    QTest::newRow("query") << "https://a/wp"
                           << "https://a/wp?page=2";
    QTest::newRow("fragment") << "https://a/wp"
                              << "https://a/wp#end";
    QTest::newRow("all of it") << "https://a"
                               << " HTTPS://u:p@A/?q#f ";
}

void tst_keychain_key::likeAddressesGiveTheSameKey()
{
    QFETCH(QString, url);
    QFETCH(QString, other);
    QCOMPARE(normalizeRestUrlForKeychain(url), normalizeRestUrlForKeychain(other));
    QCOMPARE(makeRestKeychainKey(url, "name"), makeRestKeychainKey(other, "name"));
}

void tst_keychain_key::otherAddressesGiveAnotherKey_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("other");

    QTest::newRow("a path and none") << "https://a"
                                     << "https://a/wp";
    QTest::newRow("another path") << "https://a/wp"
                                  << "https://a/wp2";
    QTest::newRow("case of the path") << "https://a/wp"
                                      << "https://a/WP";
    QTest::newRow("another host") << "https://a"
                                  << "https://b";
    QTest::newRow("another scheme") << "https://a"
                                    << "http://a";
    QTest::newRow("another port") << "https://a"
                                  << "https://a:8443";
    QTest::newRow("case without a scheme") << "shop.example"
                                           << "Shop.example";
}

void tst_keychain_key::otherAddressesGiveAnotherKey()
{
    QFETCH(QString, url);
    QFETCH(QString, other);
    QVERIFY(makeRestKeychainKey(url, "name") != makeRestKeychainKey(other, "name"));
}

void tst_keychain_key::keyIsTheHashOfTheAddress_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("expected");

    // The digits come from another program's SHA-256.
    QTest::newRow("host") << "https://a/"
                          << "44f833239a3830c0.api_key_chain";
    QTest::newRow("host and path") << "https://Shop.example/wp/"
                                   << "659564aaff3ae8fa.api_key_chain";
}

void tst_keychain_key::keyIsTheHashOfTheAddress()
{
    QFETCH(QString, url);
    QTEST(makeRestKeychainKey(url, "api_key_chain"), "expected");
}

void tst_keychain_key::keyNamesDifferOnlyBehindTheDot()
{
    const QString key = makeRestKeychainKey("https://a/wp", "api_key_chain");
    const QString secret = makeRestKeychainKey("https://a/wp", "api_secret_chain");

    QVERIFY(QRegularExpression("^[0-9a-f]{16}\\.api_key_chain$").match(key).hasMatch());
    QVERIFY(QRegularExpression("^[0-9a-f]{16}\\.api_secret_chain$").match(secret).hasMatch());
    QCOMPARE(key.left(17), secret.left(17));
}

QTEST_GUILESS_MAIN(tst_keychain_key)

#include "tst_keychain_key.moc"
