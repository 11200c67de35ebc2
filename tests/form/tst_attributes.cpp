#include "form/mod_form_qt.h"

#include <QTest>

using namespace mod_form_qt;

namespace {

/// \return  the numbers of the set bits
QString bitsOf(const std::bitset<256>& bits)
{
    QStringList numbers;
    for (unsigned bit = 0; bit < bits.size(); ++bit) {
        if (bits[bit])
            numbers << QString::number(bit);
    }
    return numbers.join(' ');
}

void attribute(const char* name, const std::bitset<256>& bits, const QString& expected)
{
    QTest::newRow(name) << bitsOf(bits) << expected;
}

void attribute(const char* name, const std::bitset<256>& bits, int expected)
{
    attribute(name, bits, QString::number(expected));
}

/// Attributes that are numbered in their names.
void group(const char* name, int firstNumber, int firstBit,
           std::initializer_list<std::bitset<256>> bits)
{
    int index = 0;
    for (const std::bitset<256>& entry : bits) {
        const QByteArray row = QByteArray(name) + QByteArray::number(firstNumber + index);
        attribute(row.constData(), entry, firstBit + index);
        ++index;
    }
}

void pixels(const char* name, int firstBit, std::initializer_list<std::bitset<256>> bits)
{
    int index = 0;
    for (const std::bitset<256>& entry : bits) {
        const QByteArray row = QByteArray(name) + QByteArray::number(2 * index);
        attribute(row.constData(), entry, firstBit + index);
        ++index;
    }
}

} // namespace

class tst_attributes : public QObject
{
    Q_OBJECT

private slots:
    void eachHasItsBit_data();
    void eachHasItsBit();
    void aliasesAreTheSameBit_data();
    void aliasesAreTheSameBit();
    void compositesJoinTheirParts_data();
    void compositesJoinTheirParts();
    void isBitSetAsksForOneCommonBit();
    void lastBitSetTellsTheDistanceOfTheHighest_data();
    void lastBitSetTellsTheDistanceOfTheHighest();
    void lastBitSetWithNoneOfTheRangeIsMinusOne();
    void ofSeveralHeightsTheHighestCounts();
    void ofSeveralGridColumnsTheHighestWins();
    void marginsAndSpacingsAreTwiceTheDistance();
    void theLabelMaskHoldsWhatConcernsALabel();
    void labelFlagsAreExtractedByTheMask();
    void bitArraysHoldBitForBit();
    void aBitArrayOf255BitsGivesNone();
    void bitArraysOfOtherSizesGiveNone();
};

#define BIT(name, number) attribute(#name, name, number)

void tst_attributes::eachHasItsBit_data()
{
    QTest::addColumn<QString>("bits");
    QTest::addColumn<QString>("expected");

    attribute("A_NONE", A_NONE, "");
    BIT(A_READONLY, 0);
    BIT(A_GROUP, 1);
    BIT(A_FLIP_LABEL_BOLD, 2);
    BIT(A_PWD, 3);
    BIT(A_PWD_ECHO, 4);
    BIT(A_SORTED, 5);
    BIT(A_MULTISEL, 6);
    BIT(A_CHECKBOX, 7);
    BIT(A_CAN_HIDE_ITEMS, 8);
    BIT(A_MANDATORY, 9);
    BIT(A_USE_MAP_VALUE, 10);
    BIT(A_RICH_TEXT, 11);
    BIT(A_CHECKBUTTON_RIGHT, 12);
    BIT(A_FILE_MUST_EXIST, 13);
    BIT(A_HIDE, 14);
    BIT(A_ADJUST_WIDTH_TO_CONTENTS, 15);
    BIT(A_CALLBACK_VALIDATOR, 16);
    BIT(A_NO_MANDATORY_MARKER, 17);
    BIT(A_USE_BEFORE_EVENT, 18);
    BIT(A_NO_LABEL, 19);
    BIT(A_BUTTON_LABEL_BOLD, 20);
    BIT(A_ADJUST_HEIGHT_TO_CONTENTS, 21);
    BIT(A_DONT_USE_MAP_VALUE, 22);
    BIT(A_SPINBOX_LINEEDIT_READONLY, 23);
    BIT(A_AUTO_CORRECT_MINMAX, 24);
    BIT(A_IMMEDIATE_DATA_UPDATE, 25);
    BIT(A_LABEL_WORDWRAP, 26);
    BIT(A_STRONG_FOCUS, 27);
    BIT(A_NO_TITLE_SPLIT, 28);
    BIT(A_DEFAULT_BUTTON, 29);
    BIT(A_INIT_EMIT, 30);
    BIT(A_INIT_EMIT_VALID, 31);
    group("A_GRID_COL", 1, 32,
          {A_GRID_COL1, A_GRID_COL2, A_GRID_COL3, A_GRID_COL4, A_GRID_COL5, A_GRID_COL6,
           A_GRID_COL7, A_GRID_COL8, A_GRID_COL9, A_GRID_COL10});
    group("A_GRID_COLSPAN", 1, 50,
          {A_GRID_COLSPAN1, A_GRID_COLSPAN2, A_GRID_COLSPAN3, A_GRID_COLSPAN4, A_GRID_COLSPAN5,
           A_GRID_COLSPAN6, A_GRID_COLSPAN7, A_GRID_COLSPAN8, A_GRID_COLSPAN9, A_GRID_COLSPAN10});
    BIT(A_GRID_COLSPAN_ALL, 60);
    BIT(A_SPINBOX, 70);
    BIT(A_INVALID_CHECKBOX, 71);
    BIT(A_SKIP_SETDATA, 72);
    BIT(A_H_ALLOW_SHRINK, 73);
    BIT(A_RADIOBUTTON_RIGHT, 74);
    BIT(A_EXCLUDE_LABEL_FROM_HLAYOUT, 75);
    BIT(A_SCROLLAREA, 76);
    BIT(A_STRETCH_COLUMN_END, 77);
    BIT(A_LINEEDIT_UPDATE_ON_FINISH, 78);
    BIT(A_ALLOW_WHEEL, 79);
    BIT(A_ALIGN_LEFT, 80);
    BIT(A_ALIGN_RIGHT, 81);
    BIT(A_ALIGN_HCENTER, 82);
    BIT(A_ALIGN_JUSTIFY, 83);
    BIT(A_ALIGN_TOP, 84);
    BIT(A_ALIGN_BOTTOM, 85);
    BIT(A_ALIGN_VCENTER, 86);
    BIT(A_ALIGN_BASELINE, 87);
    BIT(A_ALIGN_CENTER, 88);
    BIT(A_ALIGN_TOP_LEFT, 89);
    BIT(A_LABEL_ALIGN_LEFT, 90);
    BIT(A_LABEL_ALIGN_RIGHT, 91);
    BIT(A_LABEL_ALIGN_HCENTER, 92);
    BIT(A_LABEL_ALIGN_JUSTIFY, 93);
    BIT(A_LABEL_ALIGN_TOP, 94);
    BIT(A_LABEL_ALIGN_BOTTOM, 95);
    BIT(A_LABEL_ALIGN_VCENTER, 96);
    BIT(A_LABEL_ALIGN_BASELINE, 97);
    BIT(A_LABEL_ALIGN_CENTER, 98);
    BIT(A_LABEL_ALIGN_TOP_LEFT, 99);
    group("A_HEIGHT_", 1, 100,
          {A_HEIGHT_1, A_HEIGHT_2, A_HEIGHT_3, A_HEIGHT_4, A_HEIGHT_5, A_HEIGHT_6, A_HEIGHT_7,
           A_HEIGHT_8, A_HEIGHT_9, A_HEIGHT_10});
    BIT(A_H_EXPAND, 110);
    BIT(A_V_EXPAND, 111);
    BIT(A_H_MINIMUM_EXPAND, 112);
    BIT(A_V_MINIMUM_EXPAND, 113);
    BIT(A_H_PREFERRED, 114);
    BIT(A_V_PREFERRED, 115);
    BIT(A_H_MAXIMUM, 116);
    BIT(A_V_MAXIMUM, 117);
    group("A_STRETCH_", 0, 120,
          {A_STRETCH_0, A_STRETCH_1, A_STRETCH_2, A_STRETCH_3, A_STRETCH_4, A_STRETCH_5,
           A_STRETCH_6, A_STRETCH_7, A_STRETCH_8, A_STRETCH_9});
    group("A_STRETCH_FACTOR_", 0, 130,
          {A_STRETCH_FACTOR_0, A_STRETCH_FACTOR_1, A_STRETCH_FACTOR_2, A_STRETCH_FACTOR_3,
           A_STRETCH_FACTOR_4, A_STRETCH_FACTOR_5, A_STRETCH_FACTOR_6, A_STRETCH_FACTOR_7,
           A_STRETCH_FACTOR_8, A_STRETCH_FACTOR_9});
    group("A_GROUP_ID", 1, 140,
          {A_GROUP_ID1, A_GROUP_ID2, A_GROUP_ID3, A_GROUP_ID4, A_GROUP_ID5, A_GROUP_ID6,
           A_GROUP_ID7, A_GROUP_ID8, A_GROUP_ID9, A_GROUP_ID10});
    BIT(A_COMBO_AUTO_WIDTH_FIRST_OPEN, 150);
    BIT(A_COMBO_AUTO_WIDTH_COMPACT, 151);
    pixels("A_LAYOUT_MARGINS_", 160,
           {A_LAYOUT_MARGINS_0, A_LAYOUT_MARGINS_2, A_LAYOUT_MARGINS_4, A_LAYOUT_MARGINS_6,
            A_LAYOUT_MARGINS_8, A_LAYOUT_MARGINS_10});
    pixels("A_LAYOUT_SPACING_", 166,
           {A_LAYOUT_SPACING_0, A_LAYOUT_SPACING_2, A_LAYOUT_SPACING_4, A_LAYOUT_SPACING_6,
            A_LAYOUT_SPACING_8, A_LAYOUT_SPACING_10});
}

void tst_attributes::eachHasItsBit()
{
    QFETCH(QString, bits);
    QTEST(bits, "expected");
}

void tst_attributes::aliasesAreTheSameBit_data()
{
    QTest::addColumn<QString>("bits");
    QTest::addColumn<QString>("expected");

    BIT(A_COMBO_AUTO_WIDTH_FULL_TEXT, 15);
    BIT(A_GRID_COL_MAX_INTERNAL, 41);
    BIT(A_GRID_COLSPAN_MAX_INTERNAL, 59);
    BIT(A_H_FILL, 110);
    BIT(A_V_FILL, 111);
    BIT(A_H_NATURAL, 114);
    BIT(A_V_NATURAL, 115);
    BIT(A_H_KEEP_SIZE, 116);
    BIT(A_V_KEEP_SIZE, 117);
    BIT(A_LAYOUT_NO_MARGINS, 160);
    BIT(A_LAYOUT_TINY_MARGINS, 161);
    BIT(A_LAYOUT_SMALL_MARGINS, 162);
    BIT(A_LAYOUT_NORMAL_MARGINS, 163);
    BIT(A_LAYOUT_MEDIUM_MARGINS, 164);
    BIT(A_LAYOUT_LARGE_MARGINS, 165);
    BIT(A_LAYOUT_NO_SPACING, 166);
    BIT(A_LAYOUT_TINY_SPACING, 167);
    BIT(A_LAYOUT_SMALL_SPACING, 168);
    BIT(A_LAYOUT_NORMAL_SPACING, 169);
    BIT(A_LAYOUT_MEDIUM_SPACING, 170);
    BIT(A_LAYOUT_LARGE_SPACING, 171);
}

void tst_attributes::aliasesAreTheSameBit()
{
    QFETCH(QString, bits);
    QTEST(bits, "expected");
}

void tst_attributes::compositesJoinTheirParts_data()
{
    QTest::addColumn<QString>("bits");
    QTest::addColumn<QString>("expected");

    BIT(A_FILL_BOTH, "110 111");
    BIT(A_FILL_H, "110 117");
    BIT(A_FILL_V, "111 116");
    BIT(A_KEEP_SIZE, "116 117");
}

void tst_attributes::compositesJoinTheirParts()
{
    QFETCH(QString, bits);
    QTEST(bits, "expected");
}

void tst_attributes::isBitSetAsksForOneCommonBit()
{
    QVERIFY(isBitSet(A_HIDE | A_SORTED, A_SORTED));
    QVERIFY(isBitSet(A_SORTED, A_SORTED | A_HIDE));
    QVERIFY(!isBitSet(A_SORTED, A_HIDE));
    QVERIFY(!isBitSet(A_SORTED, A_NONE));
    QVERIFY(!isBitSet(A_NONE, A_NONE));
}

void tst_attributes::lastBitSetTellsTheDistanceOfTheHighest_data()
{
    QTest::addColumn<QVariant>("bits");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<int>("expected");

    const auto array = [](std::initializer_list<unsigned> bits) {
        return QVariant(toBitArray(attributeBits(bits)));
    };
    QTest::newRow("the first of the range") << array({100}) << 100 << 109 << 0;
    QTest::newRow("the last of the range") << array({109}) << 100 << 109 << 9;
    QTest::newRow("below the range") << array({99}) << 100 << 109 << -1;
    QTest::newRow("above the range") << array({110}) << 100 << 109 << -1;
    QTest::newRow("above and in the range") << array({101, 110}) << 100 << 109 << 1;
    QTest::newRow("a range of one bit") << array({60}) << 60 << 60 << 0;
    QTest::newRow("the last bit of a word") << array({63}) << 60 << 70 << 3;
    QTest::newRow("a range across words") << array({63, 64}) << 60 << 70 << 4;
    QTest::newRow("the whole set") << array({255}) << 0 << 255 << 255;
    QTest::newRow("nothing is set") << array({}) << 0 << 255 << -1;
}

void tst_attributes::lastBitSetTellsTheDistanceOfTheHighest()
{
    QFETCH(QVariant, bits);
    QFETCH(int, first);
    QFETCH(int, last);
    QTEST(lastBitSet(fromBitArray(bits.toBitArray()), attributeBit(unsigned(first)),
                     attributeBit(unsigned(last))),
          "expected");
}

void tst_attributes::lastBitSetWithNoneOfTheRangeIsMinusOne()
{
    QCOMPARE(lastBitSet(A_NONE, A_HEIGHT_1, A_HEIGHT_10), -1);
    QCOMPARE(lastBitSet(A_HIDE | A_GRID_COL3, A_HEIGHT_1, A_HEIGHT_10), -1);
    QCOMPARE(lastBitSet(A_HEIGHT_1, A_NONE, A_HEIGHT_10), -1);
}

void tst_attributes::ofSeveralHeightsTheHighestCounts()
{
    QCOMPARE(lastBitSet(A_HEIGHT_3 | A_HEIGHT_7, A_HEIGHT_1, A_HEIGHT_10), 6);
}

void tst_attributes::ofSeveralGridColumnsTheHighestWins()
{
    QCOMPARE(
        lastBitSet(A_GRID_COL2 | A_GRID_COL5 | A_GRID_COL4, A_GRID_COL1, A_GRID_COL_MAX_INTERNAL),
        4);
}

void tst_attributes::marginsAndSpacingsAreTwiceTheDistance()
{
    QCOMPARE(2 * lastBitSet(A_LAYOUT_MARGINS_4, A_LAYOUT_MARGINS_0, A_LAYOUT_MARGINS_10), 4);
    QCOMPARE(2 * lastBitSet(A_LAYOUT_SPACING_10, A_LAYOUT_SPACING_0, A_LAYOUT_SPACING_10), 10);
}

void tst_attributes::theLabelMaskHoldsWhatConcernsALabel()
{
    QCOMPARE(bitsOf(CreateLabelFlagMask()), "2 14 26 28 90 91 92 93 94 95 96 97 98 99");
}

void tst_attributes::labelFlagsAreExtractedByTheMask()
{
    QCOMPARE(bitsOf(ExtractLabelFlags(A_MANDATORY | A_HIDE | A_ALIGN_LEFT | A_LABEL_ALIGN_RIGHT)),
             "14 91");
    QCOMPARE(ExtractLabelFlags(~A_NONE), CreateLabelFlagMask());
}

void tst_attributes::bitArraysHoldBitForBit()
{
    for (unsigned bit = 0; bit < 256; ++bit) {
        const QBitArray array = toBitArray(attributeBit(bit));
        QCOMPARE(array.size(), 256);
        QCOMPARE(array.count(true), 1);
        QVERIFY(array.testBit(qsizetype(bit)));
        QCOMPARE(bitsOf(fromBitArray(array)), QString::number(bit));
    }
    QCOMPARE(toBitArray(A_NONE), QBitArray(256));
    QCOMPARE(fromBitArray(toBitArray(~A_NONE)), ~A_NONE);
}

void tst_attributes::aBitArrayOf255BitsGivesNone()
{
    QVERIFY(fromBitArray(QBitArray(255, true)).none());
}

void tst_attributes::bitArraysOfOtherSizesGiveNone()
{
    QVERIFY(fromBitArray(QBitArray()).none());
    QVERIFY(fromBitArray(QBitArray(257, true)).none());
    QVERIFY(fromBitArray(QBitArray(512, true)).none());
}

QTEST_APPLESS_MAIN(tst_attributes)
#include "tst_attributes.moc"
