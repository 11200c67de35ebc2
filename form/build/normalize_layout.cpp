#include "form/model/info_option.h"

#include <algorithm>
#include <vector>

namespace mod_form_qt {

namespace {

QString titleOf(const INFO& row)
{
    return INFO::Option::ofParam(row.param).title();
}

bool movesLabelOut(const INFO& row)
{
    return isBitSet(row.attr, A_EXCLUDE_LABEL_FROM_HLAYOUT);
}

/// For each opener of a horizontal box, the first row in it whose label moves out, -1 if there is
/// none. Other rows have -1.
std::vector<qsizetype> rowsThatMoveLabels(const QList<INFO>& rows)
{
    std::vector<qsizetype> moving(std::size_t(rows.size()), -1);
    std::vector<qsizetype> open;
    // Boxes that are still without such a row. Each of them gets at most one, so that this takes no
    // longer however deep they are nested.
    std::vector<qsizetype> waiting;
    for (qsizetype index = 0; index < rows.size(); ++index) {
        const INFO& row = rows[index];
        if (movesLabelOut(row)) {
            for (const qsizetype box : waiting)
                moving[std::size_t(box)] = index;
            waiting.clear();
        }
        if (isLayoutOpener(row.eleType)) {
            open.push_back(index);
            if (row.eleType == E_LAYOUT_H)
                waiting.push_back(index);
        } else if (row.eleType == E_LAYOUT_END && !open.empty()) {
            if (!waiting.empty() && waiting.back() == open.back())
                waiting.pop_back();
            open.pop_back();
        }
    }
    return moving;
}

INFO labelFor(const INFO& row, const QString& title)
{
    INFO label = row;
    label.eleType = E_LABEL;
    label.attr = ExtractLabelFlags(row.attr);
    if (INFO::isVariantMap(row.param)) {
        QVariantMap options = row.param.toMap();
        options.remove(INFO::Option::timerKey); // the row's own, or it would run twice
        label.param = options;
    } else {
        label.param = title;
    }
    label.key.clear();
    label.data = QVariant();
    return label;
}

void removeTitle(INFO& row)
{
    row.attr |= A_NO_LABEL;
    row.attr &= ~(CreateLabelFlagMask() & ~A_HIDE);
    if (INFO::isVariantMap(row.param)) {
        QVariantMap options = row.param.toMap();
        options.remove(INFO::Option::titleKey);
        row.param = options;
    } else {
        row.param = QString();
    }
}

QList<INFO> withLabelsMovedOut(const QList<INFO>& rows)
{
    const std::vector<qsizetype> moving = rowsThatMoveLabels(rows);
    QList<INFO> moved;
    moved.reserve(rows.size() + 8);
    for (qsizetype index = 0; index < rows.size(); ++index) {
        const qsizetype source = moving[std::size_t(index)];
        if (source >= 0) {
            const QString title = titleOf(rows[source]);
            if (!title.isEmpty())
                moved.append(labelFor(rows[source], title));
        }
        moved.append(rows[index]);
        if (movesLabelOut(rows[index]))
            removeTitle(moved.last());
    }
    return moved;
}

struct OpenLayout
{
    int eleType = 0;
    std::bitset<256> attr;
    bool hasStretch = false; // in the current line of a grid

    bool isGrid() const { return eleType == E_LAYOUT_GRID; }

    bool wantsStretch() const
    {
        return isGrid() && !hasStretch && isBitSet(attr, A_STRETCH_COLUMN_END);
    }
};

QList<INFO> withGridLinesEnded(const QList<INFO>& rows)
{
    QList<INFO> ended;
    ended.reserve(rows.size() + 8);
    std::vector<OpenLayout> open;
    for (const INFO& row : rows) {
        const bool endsLayout = row.eleType == E_LAYOUT_END;
        const bool endsLine = endsLayout || row.eleType == E_GRID_NEXT_ROW;
        if (endsLine && !open.empty() && open.back().wantsStretch())
            ended.append(INFO(E_STRETCH, A_NONE, QString(), QVariant(1), QString()));
        ended.append(row);

        if (isLayoutOpener(row.eleType))
            open.push_back({row.eleType, row.attr, false});
        else if (endsLayout && !open.empty())
            open.pop_back();
        else if (!open.empty() && open.back().isGrid() && (endsLine || row.eleType == E_STRETCH))
            open.back().hasStretch = !endsLine;
    }
    return ended;
}

bool anyRowHas(const QList<INFO>& rows, const std::bitset<256>& attribute)
{
    return std::any_of(rows.cbegin(), rows.cend(),
                       [&attribute](const INFO& row) { return isBitSet(row.attr, attribute); });
}

} // namespace

void INFO::NormalizeLayout(QList<INFO>& rows)
{
    if (anyRowHas(rows, A_EXCLUDE_LABEL_FROM_HLAYOUT))
        rows = withLabelsMovedOut(rows);
    if (anyRowHas(rows, A_STRETCH_COLUMN_END))
        rows = withGridLinesEnded(rows);
}

int INFO::insertLayout(QList<INFO>& target, const QList<INFO>& rows, const MAP_KEY_TYPE& key)
{
    for (qsizetype index = 0; index < target.size(); ++index) {
        if (target[index].eleType != E_INSERT_POINT || target[index].key != key.toString())
            continue;
        target = target.first(index) + rows + target.sliced(index + 1);
        return 1;
    }
    return 0;
}

} // namespace mod_form_qt
