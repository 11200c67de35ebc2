#include "form/build/prepare_row.h"

#include <QTextDocumentFragment>

#include <array>

namespace mod_form_qt {

namespace {

using Option = INFO::Option;

constexpr std::bitset<256> anyAlignment = attributeBits({80, 81, 82, 83, 84, 85, 86, 87, 88, 89});
constexpr std::bitset<256> anyLabelAlignment =
    attributeBits({90, 91, 92, 93, 94, 95, 96, 97, 98, 99});
constexpr std::bitset<256> anySizePolicy = attributeBits({110, 111, 112, 113, 114, 115, 116, 117});

struct SizePolicyAttribute
{
    std::bitset<256> attribute;
    bool horizontal;
    QSizePolicy::Policy policy;
};

/// In the order in which they count: the last that is set wins.
constexpr std::array sizePolicies {
    SizePolicyAttribute {A_H_EXPAND, true, QSizePolicy::Expanding},
    SizePolicyAttribute {A_V_EXPAND, false, QSizePolicy::Expanding},
    SizePolicyAttribute {A_H_MINIMUM_EXPAND, true, QSizePolicy::MinimumExpanding},
    SizePolicyAttribute {A_V_MINIMUM_EXPAND, false, QSizePolicy::MinimumExpanding},
    SizePolicyAttribute {A_H_PREFERRED, true, QSizePolicy::Preferred},
    SizePolicyAttribute {A_V_PREFERRED, false, QSizePolicy::Preferred},
    SizePolicyAttribute {A_H_MAXIMUM, true, QSizePolicy::Maximum},
    SizePolicyAttribute {A_V_MAXIMUM, false, QSizePolicy::Maximum},
};

/// \param first  the first of ten alignment attributes
/// \return       the alignment of the first of them that is set, none if none is
Qt::Alignment firstAlignment(const std::bitset<256>& attr, const std::bitset<256>& first)
{
    constexpr std::array<Qt::Alignment, 10> alignments {
        Qt::AlignLeft,    Qt::AlignRight,
        Qt::AlignHCenter, Qt::AlignJustify,
        Qt::AlignTop,     Qt::AlignBottom,
        Qt::AlignVCenter, Qt::AlignBaseline,
        Qt::AlignCenter,  Qt::AlignLeft | Qt::AlignTop};
    for (std::size_t index = 0; index < alignments.size(); ++index) {
        if (isBitSet(attr, first << index))
            return alignments[index];
    }
    return {};
}

void takeRules(const INFO& row, Option& option)
{
    if (isBitSet(row.attr, A_MANDATORY))
        option.setValue(Option::mandatoryKey, true);
    if (isBitSet(row.attr, A_FILE_MUST_EXIST))
        option.setValue(Option::fileMustExistKey, true);
    if (isBitSet(row.attr, A_AUTO_CORRECT_MINMAX))
        option.setValue(Option::autoCorrectMinMaxKey, true);
}

void takeAlignment(const INFO& row, Option& option)
{
    if (isBitSet(row.attr, anyAlignment)) {
        const QString& key =
            isLayoutOpener(row.eleType) ? Option::indexAlignKey : Option::typeAlignKey;
        option.setValue(Option::buildKey(key, row.eleType),
                        int(firstAlignment(row.attr, A_ALIGN_LEFT)));
    }
    if (isBitSet(row.attr, anyLabelAlignment))
        option.setAlignByType(E_LABEL, firstAlignment(row.attr, A_LABEL_ALIGN_LEFT));
}

void takeSizes(const INFO& row, Option& option)
{
    if (isBitSet(row.attr, anySizePolicy)) {
        for (const SizePolicyAttribute& entry : sizePolicies) {
            if (!isBitSet(row.attr, entry.attribute))
                continue;
            if (entry.horizontal)
                option.setSizePolicyH(row.eleType, entry.policy);
            else
                option.setSizePolicyV(row.eleType, entry.policy);
        }
    }
    if (isBitSet(row.attr, A_H_ALLOW_SHRINK)
        && !option.containsKey(Option::minWidthKey, row.eleType, true))
        option.setValue(Option::buildKey(Option::minWidthKey, row.eleType), 0);
}

/// Takes options out of the title and splits it.
QStringList takeTitle(const INFO& row, Option& option)
{
    QString title = option.title();
    if (title.isEmpty())
        return {title};

    const qsizetype length = title.size();
    Option::Map variables;
    Option::extractVars(Option::varSeps, title, variables);
    if (title.size() != length) {
        option.setValue(Option::titleKey, title);
        for (auto variable = variables.cbegin(); variable != variables.cend(); ++variable)
            option.setValue(variable.key(), variable.value());
        if (title.isEmpty())
            title = option.title();
    }

    if (isBitSet(row.attr, A_NO_TITLE_SPLIT) || !title.contains(Option::titleSeparator))
        return {title};
    QStringList texts = title.split(Option::titleSeparator, Qt::KeepEmptyParts);
    option.setValue(Option::titleKey, texts.constFirst());
    return texts;
}

/// \param title  not empty
QString labelText(const INFO& row, const QString& title, bool isRichText, bool boldLabels)
{
    const bool bold = boldLabels != isBitSet(row.attr, A_FLIP_LABEL_BOLD)
        && !isBitSet(row.attr, A_NO_LABEL) && !title.contains(QLatin1String("<b>"))
        && !title.contains(QLatin1String("<strong>"));
    const bool marked =
        isBitSet(row.attr, A_MANDATORY) && !isBitSet(row.attr, A_NO_MANDATORY_MARKER);
    if (!bold && !marked)
        return title;

    QString label = title;
    // Markup makes a label read all of its text as rich text, which would end at the first of them.
    if (!isRichText)
        label.replace(u'<', QLatin1String("&lt;"));
    if (bold)
        label = QLatin1String("<b>") + label + QLatin1String("</b>");
    if (marked && !INFO::mandatoryTextLeft.isEmpty())
        label = INFO::mandatoryTextLeft + u' ' + label;
    if (marked && !INFO::mandatoryTextRight.isEmpty())
        label = label + u' ' + INFO::mandatoryTextRight;
    return label;
}

/// Reads a group of attributes that are numbered from 1.
int numberOf(const std::bitset<256>& attr, const std::bitset<256>& first,
             const std::bitset<256>& last, int none)
{
    const int distance = lastBitSet(attr, first, last);
    return distance < 0 ? none : distance + 1;
}

void takeNumbers(PreparedRow& ready)
{
    const std::bitset<256>& attr = ready.row.attr;
    ready.gridColumn = numberOf(attr, A_GRID_COL1, A_GRID_COL_MAX_INTERNAL, -1);
    ready.gridSpan = isBitSet(attr, A_GRID_COLSPAN_ALL)
        ? -1
        : numberOf(attr, A_GRID_COLSPAN1, A_GRID_COLSPAN_MAX_INTERNAL, 0);
    ready.heightLines = numberOf(attr, A_HEIGHT_1, A_HEIGHT_10, -1);
    ready.stretchBehind = lastBitSet(attr, A_STRETCH_0, A_STRETCH_9);
    const int factor = lastBitSet(attr, A_STRETCH_FACTOR_0, A_STRETCH_FACTOR_9);
    if (factor >= 0)
        ready.option.setValue(Option::buildKey(Option::stretchKey, ready.row.eleType), factor);
}

} // namespace

PreparedRow prepareRow(const INFO& row, const FormDefaults& defaults)
{
    PreparedRow ready;
    ready.row = row;
    if (!row.anyData.has_value())
        ready.row.anyData = defaults.anyData;
    ready.option = Option::ofParam(row.param);
    const bool hasAttributes = row.attr.any();
    if (hasAttributes) {
        takeRules(row, ready.option);
        takeAlignment(row, ready.option);
    }
    if (defaults.locale.isValid() && !ready.option.containsKey(Option::localeKey))
        ready.option.setValue(Option::localeKey, defaults.locale);
    if (hasAttributes)
        takeSizes(row, ready.option);

    ready.texts = takeTitle(row, ready.option);
    const QString& title = ready.texts.constFirst();
    if (!title.isEmpty()) {
        const bool isRichText = Qt::mightBeRichText(title);
        ready.plainTitle =
            isRichText ? QTextDocumentFragment::fromHtml(title).toPlainText() : title;
        ready.option.setValue(Option::plainTitleKey, ready.plainTitle);
        ready.label = labelText(row, title, isRichText, defaults.boldLabels);
    }
    if (hasAttributes)
        takeNumbers(ready);
    return ready;
}

} // namespace mod_form_qt
