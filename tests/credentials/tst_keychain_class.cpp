#include "credentials/keychain_class.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

namespace {

/// The secret as another user of the service reads it, or the store's message.
QString stored(const QString& key)
{
    KeyChainClass other("ledora.test", nullptr);
    QString value;
    QString error;
    return other.readKeySync(key, value, error) ? value : error;
}

} // namespace

class tst_keychain_class : public QObject
{
    Q_OBJECT

    QString m_key;
    KeyChainClass m_keyChain {"ledora.test", nullptr};
    QString m_error;

private slots:
    void init();
    void readsBackWhatWasWritten_data();
    void readsBackWhatWasWritten();
    void laterWriteReplacesTheSecret();
    void deletedSecretIsGone();
    void missingSecretIsAnError();
    void successLeavesTheErrorTextAlone();
    void servicesKeepTheirSecretsApart();
    void signalsTheStoredSecret();
    void signalsTheReadSecret();
    void signalsTheDeletedSecret();
    void signalsAMissingSecretAsAnError();
    void goesOnWithItsJobWithoutTheCaller();
    void servesTimersWhileItWaits();
    void mayBeCalledWhileItWaits();
    void getsItsAnswerAlthoughTheProgramEnds();
};

/// Each test has a key of its own, since the store lasts for the whole program.
void tst_keychain_class::init()
{
    m_key = QString("0123456789abcdef.%1").arg(QTest::currentTestFunction());
    if (QTest::currentDataTag())
        m_key += QTest::currentDataTag();
    m_error = "untouched";
}

void tst_keychain_class::readsBackWhatWasWritten_data()
{
    QTest::addColumn<QString>("secret");

    QTest::newRow("plain") << "ck_0123456789abcdef";
    QTest::newRow("umlauts") << QString::fromUtf8("Schlüssel für Öl & Maß");
    QTest::newRow("beyond Latin") << QString::fromUtf8("€ 漢字 😀");
    QTest::newRow("marks and line ends") << "%1 %2 \"'\\ a=b;c\r\nd\t";
    QTest::newRow("blanks around") << "  x  ";
    QTest::newRow("long") << QString(5000, 'x');
    QTest::newRow("empty") << "";
}

void tst_keychain_class::readsBackWhatWasWritten()
{
    QFETCH(QString, secret);
    QVERIFY2(m_keyChain.writeKeySync(m_key, secret, m_error), qPrintable(m_error));

    QString value = "before";
    QVERIFY2(m_keyChain.readKeySync(m_key, value, m_error), qPrintable(m_error));
    QCOMPARE(value, secret);
}

void tst_keychain_class::laterWriteReplacesTheSecret()
{
    QVERIFY(m_keyChain.writeKeySync(m_key, "first", m_error));
    QVERIFY(m_keyChain.writeKeySync(m_key, "second", m_error));
    QCOMPARE(stored(m_key), "second");
}

void tst_keychain_class::deletedSecretIsGone()
{
    QVERIFY(m_keyChain.writeKeySync(m_key, "secret", m_error));
    QVERIFY(m_keyChain.writeKeySync(m_key + "2", "other", m_error));
    QVERIFY2(m_keyChain.deleteKeySync(m_key, m_error), qPrintable(m_error));
    QCOMPARE(stored(m_key), "Entry not found");
    QCOMPARE(stored(m_key + "2"), "other");
}

void tst_keychain_class::missingSecretIsAnError()
{
    QString value = "kept";
    QVERIFY(!m_keyChain.readKeySync(m_key, value, m_error));
    QCOMPARE(m_error, "Entry not found");
    QCOMPARE(value, "kept");
}

void tst_keychain_class::successLeavesTheErrorTextAlone()
{
    QString value;
    QVERIFY(m_keyChain.writeKeySync(m_key, "secret", m_error));
    QVERIFY(m_keyChain.readKeySync(m_key, value, m_error));
    QVERIFY(m_keyChain.deleteKeySync(m_key, m_error));
    QCOMPARE(m_error, "untouched");
}

void tst_keychain_class::servicesKeepTheirSecretsApart()
{
    KeyChainClass other("ledora.test.other", nullptr);
    QVERIFY(m_keyChain.writeKeySync(m_key, "mine", m_error));
    QString value;
    QVERIFY(!other.readKeySync(m_key, value, m_error));

    QVERIFY(other.writeKeySync(m_key, "theirs", m_error));
    QCOMPARE(stored(m_key), "mine");

    QVERIFY(other.deleteKeySync(m_key, m_error));
    QCOMPARE(stored(m_key), "mine");
}

void tst_keychain_class::signalsTheStoredSecret()
{
    QSignalSpy done(&m_keyChain, &KeyChainClass::keyStored);
    QSignalSpy failed(&m_keyChain, &KeyChainClass::error);
    m_keyChain.writeKey(m_key, QString::fromUtf8("später"));
    QCOMPARE(done.size(), 0);
    QVERIFY(done.wait());
    QCOMPARE(done.takeFirst(), QVariantList {m_key});
    QCOMPARE(failed.size(), 0);
    QCOMPARE(stored(m_key), QString::fromUtf8("später"));
}

void tst_keychain_class::signalsTheReadSecret()
{
    QVERIFY(m_keyChain.writeKeySync(m_key, QString::fromUtf8("Maß"), m_error));
    QSignalSpy done(&m_keyChain, &KeyChainClass::keyRestored);
    QSignalSpy failed(&m_keyChain, &KeyChainClass::error);
    m_keyChain.readKey(m_key);
    QVERIFY(done.wait());
    QCOMPARE(done.takeFirst(), QVariantList({m_key, QString::fromUtf8("Maß")}));
    QCOMPARE(failed.size(), 0);
}

void tst_keychain_class::signalsTheDeletedSecret()
{
    QVERIFY(m_keyChain.writeKeySync(m_key, "secret", m_error));
    QSignalSpy done(&m_keyChain, &KeyChainClass::keyDeleted);
    QSignalSpy failed(&m_keyChain, &KeyChainClass::error);
    m_keyChain.deleteKey(m_key);
    QVERIFY(done.wait());
    QCOMPARE(done.takeFirst(), QVariantList {m_key});
    QCOMPARE(failed.size(), 0);
    QCOMPARE(stored(m_key), "Entry not found");
}

void tst_keychain_class::signalsAMissingSecretAsAnError()
{
    QSignalSpy done(&m_keyChain, &KeyChainClass::keyRestored);
    QSignalSpy failed(&m_keyChain, &KeyChainClass::error);
    m_keyChain.readKey(m_key);
    QVERIFY(failed.wait());
    QCOMPARE(failed.takeFirst(), QVariantList {"Read key failed: Entry not found"});
    QCOMPARE(done.size(), 0);
}

void tst_keychain_class::goesOnWithItsJobWithoutTheCaller()
{
    auto keyChain = std::make_unique<KeyChainClass>("ledora.test", nullptr);
    keyChain->writeKey(m_key, "outlives");
    keyChain.reset();
    QTRY_COMPARE(stored(m_key), "outlives");
}

void tst_keychain_class::servesTimersWhileItWaits()
{
    bool served = false;
    QTimer::singleShot(0, this, [&served] { served = true; });
    QVERIFY(m_keyChain.writeKeySync(m_key, "secret", m_error));
    QVERIFY(served);
}

void tst_keychain_class::mayBeCalledWhileItWaits()
{
    QVERIFY(m_keyChain.writeKeySync(m_key, "outer", m_error));
    bool innerDone = false;
    QTimer::singleShot(0, this, [this, &innerDone] {
        QString error;
        innerDone = m_keyChain.writeKeySync(m_key + "2", "inner", error);
    });
    QString value;
    QVERIFY(m_keyChain.readKeySync(m_key, value, m_error));
    QVERIFY(innerDone);
    QCOMPARE(value, "outer");
    QCOMPARE(stored(m_key + "2"), "inner");
}

/// A quit ends every nested event loop at once, also those that are entered later.
void tst_keychain_class::getsItsAnswerAlthoughTheProgramEnds()
{
    QVERIFY(m_keyChain.writeKeySync(m_key, "first", m_error));
    bool written = false;
    bool read = false;
    QString value;
    QTimer::singleShot(0, this, [&] {
        QCoreApplication::quit();
        written = m_keyChain.writeKeySync(m_key, "last", m_error);
        read = m_keyChain.readKeySync(m_key, value, m_error);
    });
    QCoreApplication::exec();
    QVERIFY(written);
    QVERIFY(read);
    QCOMPARE(value, "last");
}

QTEST_GUILESS_MAIN(tst_keychain_class)

#include "tst_keychain_class.moc"
