#include "form/dialog/password_generator.h"

#include <QtTest>

using namespace mod_form_qt;

class tst_password_generator : public QObject
{
    Q_OBJECT

private slots:
    void classesMakeUpTheAlphabetInTheirOrder_data();
    void classesMakeUpTheAlphabetInTheirOrder();
    void classesAreNamed();
    void lengthIsThatAskedFor_data();
    void lengthIsThatAskedFor();
    void withoutALengthThereIsNoPassword_data();
    void withoutALengthThereIsNoPassword();
    void withoutAnAlphabetThereIsNoPassword_data();
    void withoutAnAlphabetThereIsNoPassword();
    void everyCharacterIsDrawnButTheLast_data();
    void everyCharacterIsDrawnButTheLast();
    void charactersAreDrawnEvenly();
    void lowBitsOfANumberChooseTheCharacter_data();
    void lowBitsOfANumberChooseTheCharacter();
    void eachCharacterIsDrawnByItself();
    void twoPasswordsDiffer();
};

void tst_password_generator::classesMakeUpTheAlphabetInTheirOrder_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<QString>("alphabet");
    const QString digits = "0123456789";
    const QString special = "~!@#$%^&*-_+";
    const QString lower = "abcdefghijklmnopqrstuvwxyz";
    const QString upper = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    QTest::newRow("none") << 0 << "";
    QTest::newRow("digits") << 1 << digits;
    QTest::newRow("special") << 2 << special;
    QTest::newRow("lower case") << 4 << lower;
    QTest::newRow("upper case") << 8 << upper;
    QTest::newRow("digits and upper case") << 9 << digits + upper;
    QTest::newRow("all") << 15 << digits + special + lower + upper;
    QTest::newRow("unknown bits") << 16 + 32 + 4 << lower;
}

void tst_password_generator::classesMakeUpTheAlphabetInTheirOrder()
{
    QFETCH(int, flags);
    QTEST(passwordAlphabet(flags), "alphabet");
}

void tst_password_generator::classesAreNamed()
{
    QStringList labels;
    for (const PasswordClass& characters : passwordClasses())
        labels << characters.label;
    QCOMPARE(labels,
             (QStringList {"Zahlen", "Spezielle Zeichen", "Kleinbuchstaben", "Großbuchstaben"}));
}

void tst_password_generator::lengthIsThatAskedFor_data()
{
    QTest::addColumn<int>("length");
    for (const int length : {1, 2, 10, 1000})
        QTest::addRow("%d", length) << length;
}

void tst_password_generator::lengthIsThatAskedFor()
{
    QFETCH(int, length);
    QCOMPARE(drawPassword(length, "abc").size(), length);
}

void tst_password_generator::withoutALengthThereIsNoPassword_data()
{
    QTest::addColumn<int>("length");
    QTest::newRow("0") << 0;
    QTest::newRow("-1") << -1;
    QTest::newRow("lowest") << std::numeric_limits<int>::min();
}

void tst_password_generator::withoutALengthThereIsNoPassword()
{
    QFETCH(int, length);
    QCOMPARE(drawPassword(length, "abc"), QString());
}

void tst_password_generator::withoutAnAlphabetThereIsNoPassword_data()
{
    QTest::addColumn<QString>("alphabet");
    QTest::newRow("empty") << "";
    QTest::newRow("the last character only") << "a";
}

void tst_password_generator::withoutAnAlphabetThereIsNoPassword()
{
    QFETCH(QString, alphabet);
    QCOMPARE(drawPassword(10, alphabet), QString());
}

void tst_password_generator::everyCharacterIsDrawnButTheLast_data()
{
    QTest::addColumn<QString>("alphabet");
    QTest::newRow("two characters") << "ab";
    QTest::newRow("digits") << passwordAlphabet(1);
    QTest::newRow("all classes") << passwordAlphabet(15);
}

void tst_password_generator::everyCharacterIsDrawnButTheLast()
{
    QFETCH(QString, alphabet);
    QSet<QChar> drawn;
    for (const QChar character : drawPassword(100000, alphabet))
        drawn.insert(character);
    QVERIFY(!drawn.contains(alphabet.back()));
    alphabet.chop(1);
    QCOMPARE(drawn, QSet<QChar>(alphabet.cbegin(), alphabet.cend()));
}

void tst_password_generator::charactersAreDrawnEvenly()
{
    const QString password = drawPassword(100000, "abcde");
    // 25000 each; ten times the standard deviation of 137 lies between them and these bounds.
    for (const QChar character : QString("abcd")) {
        const qsizetype count = password.count(character);
        QVERIFY2(count > 23630 && count < 26370, qPrintable(QString::number(count)));
    }
}

void tst_password_generator::lowBitsOfANumberChooseTheCharacter_data()
{
    QTest::addColumn<quint64>("number");
    QTest::addColumn<QString>("character");
    // Of "abcd" three can be drawn.
    QTest::newRow("first") << quint64(0) << "a";
    QTest::newRow("last that can be") << quint64(2) << "c";
    QTest::newRow("first again") << quint64(3) << "a";
    QTest::newRow("high bits do not count") << (quint64(1) << 32) + 1 << "b";
    QTest::newRow("unsigned") << quint64(0xffffffff) << "a"; // 4294967295 is 3 times 1431655765
    QTest::newRow("sign bit") << quint64(0x80000000) << "c"; // 2147483648 leaves 2
}

void tst_password_generator::lowBitsOfANumberChooseTheCharacter()
{
    QFETCH(quint64, number);
    QTEST(drawPassword(1, "abcd", [number] { return number; }), "character");
}

void tst_password_generator::eachCharacterIsDrawnByItself()
{
    quint64 next = 0;
    QCOMPARE(drawPassword(5, "abcd", [&next] { return next++; }), "abcab");
    QCOMPARE(next, 5U);
}

void tst_password_generator::twoPasswordsDiffer()
{
    const QString alphabet = passwordAlphabet(15);
    QVERIFY(drawPassword(40, alphabet) != drawPassword(40, alphabet));
}

QTEST_GUILESS_MAIN(tst_password_generator)
#include "tst_password_generator.moc"
