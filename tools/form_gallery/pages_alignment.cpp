#include "tools/form_gallery/describe.h"
#include "tools/form_gallery/page_rows.h"

namespace gallery {

using namespace mod_form_qt;

namespace {

QString shortName(unsigned bit)
{
    return attributeName(bit).mid(2);
}

/// A box of a fixed height, so that there is room to align in.
INFO cell(const QString& title, int height)
{
    const QString key = Option::buildKey(Option::fixedHeightKey, E_LAYOUT_H);
    return {E_LAYOUT_H, A_LAYOUT_MARGINS_4, with(title, {{key, height}})};
}

INFO narrowButton(const QString& text, const std::bitset<256>& attr)
{
    return {E_BUTTON, attr, with(text, {{Option::buildKey(Option::minWidthKey, E_BUTTON), 30}})};
}

} // namespace

QList<INFO> stretches(PageContext&)
{
    const QString width = Option::buildKey(Option::fixedWidthKey, E_BUTTON);
    QList<INFO> rows {group(tr("A_STRETCH_n: hinter der Schaltfläche folgt freier Platz vom "
                               "Gewicht n"),
                            {}, E_LAYOUT_H)};
    for (int n = 0; n <= 9; ++n)
        rows << INFO(E_BUTTON, A_STRETCH_0 << n, with(QString::number(n), {{width, 30}}));
    rows << INFO(E_VLINE) << end()
         << group(tr("A_STRETCH_FACTOR_n: die Schaltfläche selbst wächst mit dem Gewicht n"), {},
                  E_LAYOUT_H);
    for (int n = 0; n <= 9; ++n)
        rows << narrowButton(QString::number(n), A_STRETCH_FACTOR_0 << n);
    rows << end();
    // clang-format off
    rows << group(tr("Auch Layouts haben ein Gewicht: 1 und 2"), {}, E_LAYOUT_H)
         <<     group(tr("A_STRETCH_FACTOR_1"), A_STRETCH_FACTOR_1) << INFO(E_LINEEDIT) << end()
         <<     group(tr("A_STRETCH_FACTOR_2"), A_STRETCH_FACTOR_2) << INFO(E_LINEEDIT) << end()
         << end()
         << group(tr("Größen als Option"))
         <<     sample({E_BUTTON, A_NONE, with(tr("Mindestens 40 hoch"),
                        {{Option::buildKey(Option::minHeightKey, E_BUTTON), 40}})})
         <<     sample({E_LINEEDIT, A_ALIGN_LEFT, with(tr("Höchstens 120 breit"),
                        {{Option::buildKey(Option::maxWidthKey, E_LINEEDIT), 120}})})
         << end();
    // clang-format on
    return rows;
}

QList<INFO> sizePolicies(PageContext&)
{
    QList<INFO> rows {group(tr("Waagerecht: was neben einem Feld ohne Vorgabe übrig bleibt"))};
    for (const unsigned bit : {110U, 112U, 114U, 116U})
        rows << open(E_LAYOUT_H) << INFO(E_BUTTON, attributeBit(bit), attributeName(bit))
             << INFO(E_LINEEDIT, A_READONLY, {}, tr("Zeile mit der Vorgabe Expanding")) << end();
    rows << end() << cell(tr("Senkrecht: in einer Box von 120 Bildpunkten"), 120);
    for (const unsigned bit : {111U, 113U, 115U, 117U})
        rows << INFO(E_BUTTON, attributeBit(bit), shortName(bit));
    rows << end() << cell(tr("Beides zusammen"), 120) << INFO(E_BUTTON, A_FILL_BOTH, "A_FILL_BOTH")
         << INFO(E_BUTTON, A_FILL_H, "A_FILL_H") << INFO(E_BUTTON, A_FILL_V, "A_FILL_V")
         << INFO(E_BUTTON, A_KEEP_SIZE, "A_KEEP_SIZE") << end();
    return rows;
}

QList<INFO> alignments(PageContext&)
{
    QList<INFO> rows {group(tr("Ein Feld in seiner Zelle"), A_LAYOUT_SMALL_SPACING, E_LAYOUT_GRID)};
    for (unsigned index = 0; index < 10; ++index) {
        rows << cell(shortName(80 + index), 92)
             << narrowButton(tr("Feld"), attributeBit(80 + index)) << end();
        if (index % 3 == 2)
            rows << nextRow();
    }
    rows << cell(tr("ohne Ausrichtung"), 92) << narrowButton(tr("Feld"), {}) << end()
         << cell(tr("ohne, V_FILL"), 92) << narrowButton(tr("Feld"), A_V_FILL) << end();
    rows << nextRow() << end();
    // clang-format off
    rows << group(tr("Ein Layout in seiner Zelle: A_ALIGN_RIGHT am Öffner"))
         <<     open(E_LAYOUT_H, A_ALIGN_RIGHT)
         <<         narrowButton(tr("rechts"), {}) << narrowButton(tr("außen"), {})
         <<     end()
         << end();
    // clang-format on
    return rows;
}

QList<INFO> labelAlignments(PageContext&)
{
    QList<INFO> rows {
        group(tr("Eine Beschriftung in ihrer Zelle"), A_LAYOUT_SMALL_SPACING, E_LAYOUT_GRID)};
    const QString width = Option::buildKey(Option::fixedWidthKey, E_PLAINTEXT);
    for (unsigned index = 0; index < 10; ++index)
        rows << INFO(E_PLAINTEXT, attributeBit(90 + index) | A_HEIGHT_2 | A_READONLY,
                     with(tr("Titel"), {{width, 320}}), attributeName(90 + index))
             << nextRow();
    rows << INFO(E_LABEL, A_NONE, tr("Diese Zeile macht die erste Spalte breit.")) << nextRow();
    return rows << end();
}

} // namespace gallery
