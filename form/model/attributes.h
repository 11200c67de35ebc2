#pragma once

#include "form/export.h"

#include <QBitArray>

#include <array>
#include <bit>
#include <bitset>
#include <initializer_list>

namespace mod_form_qt {

/// \return  the set that holds nothing but the given bits, 0 to 255
constexpr std::bitset<256> attributeBits(std::initializer_list<unsigned> bits)
{
    // std::bitset cannot be set in a constant expression before C++23. A constant that is built at
    // run time would be built in each of the many files that include this one.
    std::array<unsigned long long, 4> words {};
    for (const unsigned bit : bits)
        words[bit / 64] |= 1ULL << (bit % 64);
    return std::bit_cast<std::bitset<256>>(words);
}

/// \return  true if that bit, 0 to 255, is in the set
constexpr bool hasBit(const std::bitset<256>& bits, unsigned bit)
{
    return bits[bit];
}

static_assert(hasBit(attributeBits({0}), 0) && hasBit(attributeBits({63}), 63)
                  && hasBit(attributeBits({64}), 64) && hasBit(attributeBits({255}), 255)
                  && !hasBit(attributeBits({255}), 254),
              "the words of std::bitset are not in the expected order");

/// \return  the set that holds nothing but the given bit, 0 to 255
constexpr std::bitset<256> attributeBit(unsigned bit)
{
    return attributeBits({bit});
}

// What a row may ask for beyond its type. The bit numbers are fixed: groups such as the grid
// columns are read as ranges.

/// No attribute at all.
inline constexpr std::bitset<256> A_NONE {};
/// Edits and spin boxes are read-only; combo boxes, lists, check and radio buttons disabled.
inline constexpr std::bitset<256> A_READONLY = attributeBit(0);
/// A layout opener is wrapped in a group box even without a title.
inline constexpr std::bitset<256> A_GROUP = attributeBit(1);
/// Inverts `MF_BOLD_LABELS` for this row.
inline constexpr std::bitset<256> A_FLIP_LABEL_BOLD = attributeBit(2);
/// A line edit shows dots.
inline constexpr std::bitset<256> A_PWD = attributeBit(3);
/// A line edit shows its text only while it is edited.
inline constexpr std::bitset<256> A_PWD_ECHO = attributeBit(4);
/// List data is shown sorted.
inline constexpr std::bitset<256> A_SORTED = attributeBit(5);
/// Several items may be selected; the row's value is then a list.
inline constexpr std::bitset<256> A_MULTISEL = attributeBit(6);
/// List items carry check boxes.
inline constexpr std::bitset<256> A_CHECKBOX = attributeBit(7);
/// The group box is checkable; unchecking hides what is in it.
inline constexpr std::bitset<256> A_CAN_HIDE_ITEMS = attributeBit(8);
/// A value is required.
inline constexpr std::bitset<256> A_MANDATORY = attributeBit(9);
/// The first value comes from the form data map.
inline constexpr std::bitset<256> A_USE_MAP_VALUE = attributeBit(10);
/// A text edit takes and gives HTML.
inline constexpr std::bitset<256> A_RICH_TEXT = attributeBit(11);
/// The check box indicator stands on the right.
inline constexpr std::bitset<256> A_CHECKBUTTON_RIGHT = attributeBit(12);
/// The path in the row has to exist.
inline constexpr std::bitset<256> A_FILE_MUST_EXIST = attributeBit(13);
/// The row starts hidden.
inline constexpr std::bitset<256> A_HIDE = attributeBit(14);
/// The width follows the contents.
inline constexpr std::bitset<256> A_ADJUST_WIDTH_TO_CONTENTS = attributeBit(15);
/// The same as `A_ADJUST_WIDTH_TO_CONTENTS`, for combo boxes.
inline constexpr std::bitset<256> A_COMBO_AUTO_WIDTH_FULL_TEXT = A_ADJUST_WIDTH_TO_CONTENTS;
/// Each keystroke in a line edit is put before the callbacks.
inline constexpr std::bitset<256> A_CALLBACK_VALIDATOR = attributeBit(16);
/// A mandatory row shows no marker.
inline constexpr std::bitset<256> A_NO_MANDATORY_MARKER = attributeBit(17);
/// The row raises `kBeforeDataChanged` and `kBeforeAction`.
inline constexpr std::bitset<256> A_USE_BEFORE_EVENT = attributeBit(18);
/// The title makes no label.
inline constexpr std::bitset<256> A_NO_LABEL = attributeBit(19);
/// The button's or group's title is bold.
inline constexpr std::bitset<256> A_BUTTON_LABEL_BOLD = attributeBit(20);
/// The height of an image follows its contents.
inline constexpr std::bitset<256> A_ADJUST_HEIGHT_TO_CONTENTS = attributeBit(21);
/// The first value never comes from the map; beats all that says so.
inline constexpr std::bitset<256> A_DONT_USE_MAP_VALUE = attributeBit(22);
/// A spin box is changed by its arrows only.
inline constexpr std::bitset<256> A_SPINBOX_LINEEDIT_READONLY = attributeBit(23);
/// A number beyond its bounds is drawn to the nearest one.
inline constexpr std::bitset<256> A_AUTO_CORRECT_MINMAX = attributeBit(24);
/// Every change reaches the map at once.
inline constexpr std::bitset<256> A_IMMEDIATE_DATA_UPDATE = attributeBit(25);
/// The label wraps.
inline constexpr std::bitset<256> A_LABEL_WORDWRAP = attributeBit(26);
/// The wheel is ignored without focus.
inline constexpr std::bitset<256> A_STRONG_FOCUS = attributeBit(27);
/// The title is not split at ";".
inline constexpr std::bitset<256> A_NO_TITLE_SPLIT = attributeBit(28);
/// The button is the default button.
inline constexpr std::bitset<256> A_DEFAULT_BUTTON = attributeBit(29);
/// The widget raises its change once when the form stands.
inline constexpr std::bitset<256> A_INIT_EMIT = attributeBit(30);
/// As `A_INIT_EMIT`, for a valid value only.
inline constexpr std::bitset<256> A_INIT_EMIT_VALID = attributeBit(31);

/// \{
/// Column of a grid, counted from 0: `A_GRID_COL1` is the second column. Of several the highest
/// counts, as in all groups below that are numbered.
inline constexpr std::bitset<256> A_GRID_COL1 = attributeBit(32);
inline constexpr std::bitset<256> A_GRID_COL2 = attributeBit(33);
inline constexpr std::bitset<256> A_GRID_COL3 = attributeBit(34);
inline constexpr std::bitset<256> A_GRID_COL4 = attributeBit(35);
inline constexpr std::bitset<256> A_GRID_COL5 = attributeBit(36);
inline constexpr std::bitset<256> A_GRID_COL6 = attributeBit(37);
inline constexpr std::bitset<256> A_GRID_COL7 = attributeBit(38);
inline constexpr std::bitset<256> A_GRID_COL8 = attributeBit(39);
inline constexpr std::bitset<256> A_GRID_COL9 = attributeBit(40);
inline constexpr std::bitset<256> A_GRID_COL10 = attributeBit(41);
/// \}
/// The last column that has an attribute.
inline constexpr std::bitset<256> A_GRID_COL_MAX_INTERNAL = A_GRID_COL10;

/// \{
/// Number of columns that the widget covers.
inline constexpr std::bitset<256> A_GRID_COLSPAN1 = attributeBit(50);
inline constexpr std::bitset<256> A_GRID_COLSPAN2 = attributeBit(51);
inline constexpr std::bitset<256> A_GRID_COLSPAN3 = attributeBit(52);
inline constexpr std::bitset<256> A_GRID_COLSPAN4 = attributeBit(53);
inline constexpr std::bitset<256> A_GRID_COLSPAN5 = attributeBit(54);
inline constexpr std::bitset<256> A_GRID_COLSPAN6 = attributeBit(55);
inline constexpr std::bitset<256> A_GRID_COLSPAN7 = attributeBit(56);
inline constexpr std::bitset<256> A_GRID_COLSPAN8 = attributeBit(57);
inline constexpr std::bitset<256> A_GRID_COLSPAN9 = attributeBit(58);
inline constexpr std::bitset<256> A_GRID_COLSPAN10 = attributeBit(59);
/// \}
/// The largest number of columns that has an attribute.
inline constexpr std::bitset<256> A_GRID_COLSPAN_MAX_INTERNAL = A_GRID_COLSPAN10;
/// Covers all columns up to the last.
inline constexpr std::bitset<256> A_GRID_COLSPAN_ALL = attributeBit(60);

/// A date has spin arrows instead of a calendar.
inline constexpr std::bitset<256> A_SPINBOX = attributeBit(70);
/// A date has a check box before it; unchecked means no date.
inline constexpr std::bitset<256> A_INVALID_CHECKBOX = attributeBit(71);
/// `INFO::setData` leaves the widget alone.
inline constexpr std::bitset<256> A_SKIP_SETDATA = attributeBit(72);
/// The widget may shrink to nothing unless it has a minimum width.
inline constexpr std::bitset<256> A_H_ALLOW_SHRINK = attributeBit(73);
/// The radio indicator stands on the right.
inline constexpr std::bitset<256> A_RADIOBUTTON_RIGHT = attributeBit(74);
/// The label of a row in a horizontal box moves in front of the box.
inline constexpr std::bitset<256> A_EXCLUDE_LABEL_FROM_HLAYOUT = attributeBit(75);
/// The opened layout scrolls.
inline constexpr std::bitset<256> A_SCROLLAREA = attributeBit(76);
/// Each row of the grid ends with a stretch.
inline constexpr std::bitset<256> A_STRETCH_COLUMN_END = attributeBit(77);
/// A line edit reports when editing ends, not with every key.
inline constexpr std::bitset<256> A_LINEEDIT_UPDATE_ON_FINISH = attributeBit(78);
/// The wheel works without focus in any case.
inline constexpr std::bitset<256> A_ALLOW_WHEEL = attributeBit(79);

/// \{
/// Where the widget stands in its cell, as the `Qt::Align...` of that name.
inline constexpr std::bitset<256> A_ALIGN_LEFT = attributeBit(80);
inline constexpr std::bitset<256> A_ALIGN_RIGHT = attributeBit(81);
inline constexpr std::bitset<256> A_ALIGN_HCENTER = attributeBit(82);
inline constexpr std::bitset<256> A_ALIGN_JUSTIFY = attributeBit(83);
inline constexpr std::bitset<256> A_ALIGN_TOP = attributeBit(84);
inline constexpr std::bitset<256> A_ALIGN_BOTTOM = attributeBit(85);
inline constexpr std::bitset<256> A_ALIGN_VCENTER = attributeBit(86);
inline constexpr std::bitset<256> A_ALIGN_BASELINE = attributeBit(87);
inline constexpr std::bitset<256> A_ALIGN_CENTER = attributeBit(88);
inline constexpr std::bitset<256> A_ALIGN_TOP_LEFT = attributeBit(89);
/// \}

/// \{
/// Where the label stands in its cell, as the `Qt::Align...` of that name.
inline constexpr std::bitset<256> A_LABEL_ALIGN_LEFT = attributeBit(90);
inline constexpr std::bitset<256> A_LABEL_ALIGN_RIGHT = attributeBit(91);
inline constexpr std::bitset<256> A_LABEL_ALIGN_HCENTER = attributeBit(92);
inline constexpr std::bitset<256> A_LABEL_ALIGN_JUSTIFY = attributeBit(93);
inline constexpr std::bitset<256> A_LABEL_ALIGN_TOP = attributeBit(94);
inline constexpr std::bitset<256> A_LABEL_ALIGN_BOTTOM = attributeBit(95);
inline constexpr std::bitset<256> A_LABEL_ALIGN_VCENTER = attributeBit(96);
inline constexpr std::bitset<256> A_LABEL_ALIGN_BASELINE = attributeBit(97);
inline constexpr std::bitset<256> A_LABEL_ALIGN_CENTER = attributeBit(98);
inline constexpr std::bitset<256> A_LABEL_ALIGN_TOP_LEFT = attributeBit(99);
/// \}

/// \{
/// Fixed height of a text edit in lines.
inline constexpr std::bitset<256> A_HEIGHT_1 = attributeBit(100);
inline constexpr std::bitset<256> A_HEIGHT_2 = attributeBit(101);
inline constexpr std::bitset<256> A_HEIGHT_3 = attributeBit(102);
inline constexpr std::bitset<256> A_HEIGHT_4 = attributeBit(103);
inline constexpr std::bitset<256> A_HEIGHT_5 = attributeBit(104);
inline constexpr std::bitset<256> A_HEIGHT_6 = attributeBit(105);
inline constexpr std::bitset<256> A_HEIGHT_7 = attributeBit(106);
inline constexpr std::bitset<256> A_HEIGHT_8 = attributeBit(107);
inline constexpr std::bitset<256> A_HEIGHT_9 = attributeBit(108);
inline constexpr std::bitset<256> A_HEIGHT_10 = attributeBit(109);
/// \}

// Size policies.

/// Horizontal policy `QSizePolicy::Expanding`.
inline constexpr std::bitset<256> A_H_EXPAND = attributeBit(110);
/// Vertical policy `QSizePolicy::Expanding`.
inline constexpr std::bitset<256> A_V_EXPAND = attributeBit(111);
/// The same as `A_H_EXPAND`.
inline constexpr std::bitset<256> A_H_FILL = A_H_EXPAND;
/// The same as `A_V_EXPAND`.
inline constexpr std::bitset<256> A_V_FILL = A_V_EXPAND;
/// Horizontal policy `QSizePolicy::MinimumExpanding`.
inline constexpr std::bitset<256> A_H_MINIMUM_EXPAND = attributeBit(112);
/// Vertical policy `QSizePolicy::MinimumExpanding`.
inline constexpr std::bitset<256> A_V_MINIMUM_EXPAND = attributeBit(113);
/// Horizontal policy `QSizePolicy::Preferred`.
inline constexpr std::bitset<256> A_H_PREFERRED = attributeBit(114);
/// Vertical policy `QSizePolicy::Preferred`.
inline constexpr std::bitset<256> A_V_PREFERRED = attributeBit(115);
/// The same as `A_H_PREFERRED`.
inline constexpr std::bitset<256> A_H_NATURAL = A_H_PREFERRED;
/// The same as `A_V_PREFERRED`.
inline constexpr std::bitset<256> A_V_NATURAL = A_V_PREFERRED;
/// Horizontal policy `QSizePolicy::Maximum`.
inline constexpr std::bitset<256> A_H_MAXIMUM = attributeBit(116);
/// Vertical policy `QSizePolicy::Maximum`.
inline constexpr std::bitset<256> A_V_MAXIMUM = attributeBit(117);
/// The same as `A_H_MAXIMUM`.
inline constexpr std::bitset<256> A_H_KEEP_SIZE = A_H_MAXIMUM;
/// The same as `A_V_MAXIMUM`.
inline constexpr std::bitset<256> A_V_KEEP_SIZE = A_V_MAXIMUM;
/// Grows in both directions: `A_H_FILL` and `A_V_FILL`.
inline constexpr std::bitset<256> A_FILL_BOTH = attributeBits({110, 111});
/// Grows in width only: `A_H_FILL` and `A_V_KEEP_SIZE`.
inline constexpr std::bitset<256> A_FILL_H = attributeBits({110, 117});
/// Grows in height only: `A_H_KEEP_SIZE` and `A_V_FILL`.
inline constexpr std::bitset<256> A_FILL_V = attributeBits({116, 111});
/// Grows in neither direction: `A_H_KEEP_SIZE` and `A_V_KEEP_SIZE`.
inline constexpr std::bitset<256> A_KEEP_SIZE = attributeBits({116, 117});

/// \{
/// A stretch of that factor follows the widget.
inline constexpr std::bitset<256> A_STRETCH_0 = attributeBit(120);
inline constexpr std::bitset<256> A_STRETCH_1 = attributeBit(121);
inline constexpr std::bitset<256> A_STRETCH_2 = attributeBit(122);
inline constexpr std::bitset<256> A_STRETCH_3 = attributeBit(123);
inline constexpr std::bitset<256> A_STRETCH_4 = attributeBit(124);
inline constexpr std::bitset<256> A_STRETCH_5 = attributeBit(125);
inline constexpr std::bitset<256> A_STRETCH_6 = attributeBit(126);
inline constexpr std::bitset<256> A_STRETCH_7 = attributeBit(127);
inline constexpr std::bitset<256> A_STRETCH_8 = attributeBit(128);
inline constexpr std::bitset<256> A_STRETCH_9 = attributeBit(129);
/// \}

/// \{
/// The widget's own stretch factor.
inline constexpr std::bitset<256> A_STRETCH_FACTOR_0 = attributeBit(130);
inline constexpr std::bitset<256> A_STRETCH_FACTOR_1 = attributeBit(131);
inline constexpr std::bitset<256> A_STRETCH_FACTOR_2 = attributeBit(132);
inline constexpr std::bitset<256> A_STRETCH_FACTOR_3 = attributeBit(133);
inline constexpr std::bitset<256> A_STRETCH_FACTOR_4 = attributeBit(134);
inline constexpr std::bitset<256> A_STRETCH_FACTOR_5 = attributeBit(135);
inline constexpr std::bitset<256> A_STRETCH_FACTOR_6 = attributeBit(136);
inline constexpr std::bitset<256> A_STRETCH_FACTOR_7 = attributeBit(137);
inline constexpr std::bitset<256> A_STRETCH_FACTOR_8 = attributeBit(138);
inline constexpr std::bitset<256> A_STRETCH_FACTOR_9 = attributeBit(139);
/// \}

/// \{
/// Number of the button group of a check box or radio button.
inline constexpr std::bitset<256> A_GROUP_ID1 = attributeBit(140);
inline constexpr std::bitset<256> A_GROUP_ID2 = attributeBit(141);
inline constexpr std::bitset<256> A_GROUP_ID3 = attributeBit(142);
inline constexpr std::bitset<256> A_GROUP_ID4 = attributeBit(143);
inline constexpr std::bitset<256> A_GROUP_ID5 = attributeBit(144);
inline constexpr std::bitset<256> A_GROUP_ID6 = attributeBit(145);
inline constexpr std::bitset<256> A_GROUP_ID7 = attributeBit(146);
inline constexpr std::bitset<256> A_GROUP_ID8 = attributeBit(147);
inline constexpr std::bitset<256> A_GROUP_ID9 = attributeBit(148);
inline constexpr std::bitset<256> A_GROUP_ID10 = attributeBit(149);
/// \}

/// A combo box is fitted to its contents when first shown.
inline constexpr std::bitset<256> A_COMBO_AUTO_WIDTH_FIRST_OPEN = attributeBit(150);
/// A combo box is as narrow as its minimum contents length allows.
inline constexpr std::bitset<256> A_COMBO_AUTO_WIDTH_COMPACT = attributeBit(151);

/// \{
/// Margins on all four sides of an opened layout in pixels.
inline constexpr std::bitset<256> A_LAYOUT_MARGINS_0 = attributeBit(160);
inline constexpr std::bitset<256> A_LAYOUT_MARGINS_2 = attributeBit(161);
inline constexpr std::bitset<256> A_LAYOUT_MARGINS_4 = attributeBit(162);
inline constexpr std::bitset<256> A_LAYOUT_MARGINS_6 = attributeBit(163);
inline constexpr std::bitset<256> A_LAYOUT_MARGINS_8 = attributeBit(164);
inline constexpr std::bitset<256> A_LAYOUT_MARGINS_10 = attributeBit(165);
/// \}
/// Margins of 0 pixels.
inline constexpr std::bitset<256> A_LAYOUT_NO_MARGINS = A_LAYOUT_MARGINS_0;
/// Margins of 2 pixels.
inline constexpr std::bitset<256> A_LAYOUT_TINY_MARGINS = A_LAYOUT_MARGINS_2;
/// Margins of 4 pixels.
inline constexpr std::bitset<256> A_LAYOUT_SMALL_MARGINS = A_LAYOUT_MARGINS_4;
/// Margins of 6 pixels.
inline constexpr std::bitset<256> A_LAYOUT_NORMAL_MARGINS = A_LAYOUT_MARGINS_6;
/// Margins of 8 pixels.
inline constexpr std::bitset<256> A_LAYOUT_MEDIUM_MARGINS = A_LAYOUT_MARGINS_8;
/// Margins of 10 pixels.
inline constexpr std::bitset<256> A_LAYOUT_LARGE_MARGINS = A_LAYOUT_MARGINS_10;

/// \{
/// Spacing of an opened layout in pixels.
inline constexpr std::bitset<256> A_LAYOUT_SPACING_0 = attributeBit(166);
inline constexpr std::bitset<256> A_LAYOUT_SPACING_2 = attributeBit(167);
inline constexpr std::bitset<256> A_LAYOUT_SPACING_4 = attributeBit(168);
inline constexpr std::bitset<256> A_LAYOUT_SPACING_6 = attributeBit(169);
inline constexpr std::bitset<256> A_LAYOUT_SPACING_8 = attributeBit(170);
inline constexpr std::bitset<256> A_LAYOUT_SPACING_10 = attributeBit(171);
/// \}
/// Spacing of 0 pixels.
inline constexpr std::bitset<256> A_LAYOUT_NO_SPACING = A_LAYOUT_SPACING_0;
/// Spacing of 2 pixels.
inline constexpr std::bitset<256> A_LAYOUT_TINY_SPACING = A_LAYOUT_SPACING_2;
/// Spacing of 4 pixels.
inline constexpr std::bitset<256> A_LAYOUT_SMALL_SPACING = A_LAYOUT_SPACING_4;
/// Spacing of 6 pixels.
inline constexpr std::bitset<256> A_LAYOUT_NORMAL_SPACING = A_LAYOUT_SPACING_6;
/// Spacing of 8 pixels.
inline constexpr std::bitset<256> A_LAYOUT_MEDIUM_SPACING = A_LAYOUT_SPACING_8;
/// Spacing of 10 pixels.
inline constexpr std::bitset<256> A_LAYOUT_LARGE_SPACING = A_LAYOUT_SPACING_10;

/// \return  true if the two sets share a bit
MOD_FORM_QT_EXPORT bool isBitSet(const std::bitset<256>& bits, const std::bitset<256>& wanted);

/// Finds the highest set bit of a group of attributes.
/// \param first  the group's first attribute, a single bit
/// \param last   the group's last attribute, a single bit
/// \return       its distance from the first attribute's bit, -1 if none of the group is set
MOD_FORM_QT_EXPORT int lastBitSet(const std::bitset<256>& bits, const std::bitset<256>& first,
                                  const std::bitset<256>& last);

/// \return  the attributes that concern a row's label
MOD_FORM_QT_EXPORT std::bitset<256> CreateLabelFlagMask();

/// \return  what of `attr` concerns the row's label
MOD_FORM_QT_EXPORT std::bitset<256> ExtractLabelFlags(const std::bitset<256>& attr);

/// \return  256 bits, as a widget's property can hold them
MOD_FORM_QT_EXPORT QBitArray toBitArray(const std::bitset<256>& bits);

/// \return  the bits of an array of exactly 256; none for an array of any other size
MOD_FORM_QT_EXPORT std::bitset<256> fromBitArray(const QBitArray& bits);

} // namespace mod_form_qt
