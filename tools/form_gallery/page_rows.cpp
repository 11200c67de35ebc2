#include "tools/form_gallery/page_rows.h"

#include "tools/form_gallery/describe.h"

#include <QApplication>
#include <QStyle>

#include <algorithm>

namespace gallery {

using namespace mod_form_qt;

namespace {

constexpr int labelWidth = 150;
constexpr int descriptionWidth = 250;

bool bringsLabel(const INFO& row)
{
    static const QSet<int> without {E_BUTTON,
                                    E_LABEL,
                                    E_CHECKBOX,
                                    E_RADIOBUTTON,
                                    E_OK_BUTTON,
                                    E_CANCEL_BUTTON,
                                    E_CLOSE_BUTTON,
                                    E_HELP_BUTTON,
                                    E_OPENURL_BUTTON,
                                    E_MENU_BUTTON,
                                    E_MULTICONFIG,
                                    E_BROWSE_FOLDER_BUTTON,
                                    E_HLINE,
                                    E_BROWSE_FILE_OPEN_BUTTON,
                                    E_BROWSE_FILE_SAVE_BUTTON};
    return !without.contains(row.eleType) && !isBitSet(row.attr, A_NO_LABEL)
        && !Option::ofParam(row.param).title().isEmpty();
}

INFO withLabelWidth(INFO row)
{
    Option::Map options = Option::ofParam(row.param).map();
    options.insert(Option::buildKey(Option::fixedWidthKey, E_LABEL), labelWidth);
    row.param = options;
    return row;
}

INFO indent()
{
    Option option;
    option.setSizePolicyH(E_HSPACER, QSizePolicy::Fixed);
    option.setSizePolicyV(E_HSPACER, QSizePolicy::Fixed);
    // A spacer brings no space of its own behind it, as a label does.
    const int spacing = QApplication::style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing);
    return {E_HSPACER, {}, option.map(), labelWidth + std::max(spacing, 0)};
}

} // namespace

QVariant with(const QString& title, const Option::Map& options)
{
    Option::Map all = options;
    if (!title.isEmpty())
        all.insert(Option::titleKey, title);
    return all;
}

INFO group(const QString& title, const std::bitset<256>& attr, int eleType)
{
    return {eleType, attr | A_NO_TITLE_SPLIT, title};
}

INFO open(int eleType, const std::bitset<256>& attr)
{
    return {eleType, attr};
}

INFO end()
{
    return {E_LAYOUT_END};
}

INFO nextRow()
{
    return {E_GRID_NEXT_ROW};
}

INFO note(const QString& text)
{
    return {E_LABEL, A_LABEL_WORDWRAP | A_NO_TITLE_SPLIT, text};
}

INFO described(const INFO& row)
{
    const QString text = QStringLiteral("<small style=\"color:#56697c\">%1</small>")
                             .arg(describe(row).toHtmlEscaped());
    return {E_LABEL, A_LABEL_WORDWRAP | A_NO_TITLE_SPLIT,
            with(text, {{Option::buildKey(Option::fixedWidthKey, E_LABEL), descriptionWidth}})};
}

QList<INFO> sample(const INFO& row)
{
    QList<INFO> line {open(E_LAYOUT_H)};
    if (bringsLabel(row))
        line << withLabelWidth(row);
    else
        line << indent() << row;
    return line << described(row) << end();
}

T_LISTDATA items(const QStringList& texts, std::initializer_list<qsizetype> selected)
{
    T_LISTDATA list;
    for (qsizetype index = 0; index < texts.size(); ++index) {
        const bool marked = std::find(selected.begin(), selected.end(), index) != selected.end();
        list.emplace_back(texts.at(index), marked, texts.at(index).toLower(),
                          std::vector<std::pair<Qt::ItemDataRole, QVariant>>());
    }
    return list;
}

} // namespace gallery
