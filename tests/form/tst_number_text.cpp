#include "form/values/number_text.h"
#include "tests/form/hand_made_form.h"

#include <QTest>

using namespace mod_form_qt;

class tst_number_text : public QObject
{
    Q_OBJECT

private slots:
    void numbersAsTexts_data();
    void numbersAsTexts();
    void numbersBehindPointersAreRead();
    void whatIsNoNumberReadsAsZero();
    void widgetRecordsAreToldFromOtherValues();
    void listDataIsWrittenToTheLog();
};

void tst_number_text::numbersAsTexts_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("german");
    QTest::addColumn<QString>("english");
    QTest::newRow("whole") << QVariant(1234567) << "1234567"
                           << "1234567";
    QTest::newRow("negative") << QVariant(-5) << "-5"
                              << "-5";
    QTest::newRow("largest") << QVariant(~0ULL) << "18446744073709551615"
                             << "18446744073709551615";
    QTest::newRow("decimals") << QVariant(1234.5) << "1234,5"
                              << "1234.5";
    QTest::newRow("no decimals needed") << QVariant(100.0) << "100"
                                        << "100";
    QTest::newRow("rounded") << QVariant(0.126) << "0,13"
                             << "0.13";
    QTest::newRow("no negative zero") << QVariant(-0.001) << "0"
                                      << "0";
    QTest::newRow("text") << QVariant("1.50") << "1.50"
                          << "1.50";
    QTest::newRow("bool") << QVariant(true) << "1"
                          << "1";
    QTest::newRow("invalid") << QVariant() << ""
                             << "";
}

void tst_number_text::numbersAsTexts()
{
    QFETCH(QVariant, value);
    QTEST(numberText(value, QLocale(QLocale::German), 2), "german");
    QTEST(numberText(value, QLocale(QLocale::English), 2), "english");
    QCOMPARE(numberText(10.0, QLocale::c(), 0), "10");
}

void tst_number_text::numbersBehindPointersAreRead()
{
    QVariant variable = 7;
    const QVariant pointer = QVariant::fromValue(&variable);
    QVariant outer = pointer;
    QCOMPARE(INFO::varToInt32(pointer), 7);
    QCOMPARE(INFO::varToUInt32(pointer), 7u);
    QCOMPARE(INFO::varToInt64(QVariant::fromValue(&outer)), qint64(7));
    variable = ~0ULL;
    QCOMPARE(INFO::varToUInt64(pointer), ~0ULL);
    QCOMPARE(INFO::varToInt32("-12"), -12);
    QCOMPARE(INFO::varToInt64(qint64(1) << 40), qint64(1) << 40);
}

void tst_number_text::whatIsNoNumberReadsAsZero()
{
    for (const QVariant& value :
         {QVariant(), QVariant("x"), QVariant::fromValue(T_VARIANT_PTR(nullptr)),
          QVariant::fromValue(letters("A", "A"))}) {
        QCOMPARE(INFO::varToInt32(value), 0);
        QCOMPARE(INFO::varToUInt32(value), 0u);
        QCOMPARE(INFO::varToInt64(value), qint64(0));
        QCOMPARE(INFO::varToUInt64(value), quint64(0));
    }
}

void tst_number_text::widgetRecordsAreToldFromOtherValues()
{
    QVERIFY(INFO::isWidgetInfo(QVariant::fromValue(WIDGET_INFO())));
    QVERIFY(!INFO::isWidgetInfo(QVariant()));
    QVERIFY(!INFO::isWidgetInfo(QVariant::fromValue(T_LISTDATA())));
}

void tst_number_text::listDataIsWrittenToTheLog()
{
    T_LISTDATA list = letters("AB", "B");
    for (int round = 0; round < 2; ++round) {
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression("\"A\" false .*\"a\""));
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression("\"B\" true .*\"b\""));
    }
    INFO::debugVariantAsListData(QVariant::fromValue(list));
    INFO::debugVariantAsListData(QVariant::fromValue(&list));
    QTest::ignoreMessage(QtDebugMsg, "no list data");
    INFO::debugVariantAsListData("text");
}

QTEST_MAIN(tst_number_text)
#include "tst_number_text.moc"
