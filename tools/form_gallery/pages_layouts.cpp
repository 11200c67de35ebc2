#include "tools/form_gallery/describe.h"
#include "tools/form_gallery/page_rows.h"

namespace gallery {

using namespace mod_form_qt;

namespace {

INFO button(const QString& text, const std::bitset<256>& attr = {})
{
    return {E_BUTTON, attr, text};
}

/// A button that is content with less than the style gives it.
INFO narrowButton(const QString& text, const std::bitset<256>& attr = {})
{
    return {E_BUTTON, attr, with(text, {{Option::buildKey(Option::minWidthKey, E_BUTTON), 34}})};
}

QList<INFO> three(const QString& title, int eleType)
{
    return {group(title, {}, eleType), button(tr("eins")), button(tr("zwei")), button(tr("drei")),
            end()};
}

QList<INFO> twoFields(int eleType)
{
    return {group(typeName(eleType), {}, eleType),
            INFO(E_LINEEDIT, A_NONE, tr("Name"), tr("Lovelace")),
            INFO(E_LINEEDIT, A_NONE, tr("Vorname"), tr("Ada")), end()};
}

/// More than fits into its height.
QList<INFO> scrolled()
{
    const QString height = Option::buildKey(Option::fixedHeightKey, E_LAYOUT_V);
    QList<INFO> rows {INFO(E_LAYOUT_V, A_SCROLLAREA, with("A_SCROLLAREA", {{height, 128}}))};
    for (int number = 1; number <= 8; ++number)
        rows << INFO(E_CHECKBOX, A_NONE, tr("Zeile %1").arg(number), number % 2 == 0);
    return rows << end();
}

QList<INFO> flow()
{
    QList<INFO> rows {group(tr("E_LAYOUT_FLOW bricht um wie Text"), {}, E_LAYOUT_FLOW)};
    const QStringList words {tr("Ein"),   tr("Fluss"), tr("füllt"),  tr("die"),   tr("Zeile"),
                             tr("und"),   tr("geht"),  tr("danach"), tr("zur"),   tr("nächsten"),
                             tr("über;"), tr("so"),    tr("bleibt"), tr("alles"), tr("sichtbar")};
    for (const QString& word : words)
        rows << INFO(E_BUTTON, A_NO_TITLE_SPLIT, word);
    return rows << end();
}

/// A template with two gaps, of which the engine has filled one.
QList<INFO> inserted()
{
    QList<INFO> rows;
    // clang-format off
    rows << group(tr("E_INSERT_POINT: in eine Vorlage eingesetzt; eine freie Stelle macht nichts"),
                  {}, E_LAYOUT_H)
         <<     button(tr("aus der Vorlage"))
         <<     INFO(E_INSERT_POINT, {}, {}, {}, "filled")
         <<     button(tr("aus der Vorlage"))
         <<     INFO(E_INSERT_POINT, {}, {}, {}, "free")
         << end();
    // clang-format on
    INFO::insertLayout(rows, {button(tr("eingesetzt"), A_BUTTON_LABEL_BOLD)}, "filled");
    return rows;
}

} // namespace

QList<INFO> layouts(PageContext&)
{
    const auto outside = A_EXCLUDE_LABEL_FROM_HLAYOUT;

    QList<INFO> rows;
    // clang-format off
    rows << open(E_LAYOUT_H)
         <<     three("E_LAYOUT_V", E_LAYOUT_V)
         <<     open(E_LAYOUT_V)
         <<         three("E_LAYOUT_H", E_LAYOUT_H)
         <<         twoFields(E_LAYOUT_FORM)
         <<     end()
         <<     scrolled()
         << end()
         << flow()
         << group(tr("Eine Beschriftung verlässt ihre waagerechte Box"), {}, E_LAYOUT_GRID)
         <<     INFO(E_LINEEDIT, A_NONE, tr("Straße"), tr("Hauptstraße 1"), "street") << nextRow()
         <<     open(E_LAYOUT_H)
         <<         INFO(E_LINEEDIT, outside, tr("Ort, mit A_EXCLUDE_LABEL_FROM_HLAYOUT"), "12345",
                         "zip")
         <<         INFO(E_LINEEDIT, A_STRETCH_FACTOR_2, {}, tr("Musterstadt"), "town")
         <<     end() << nextRow()
         <<     open(E_LAYOUT_H)
         <<         INFO(E_LINEEDIT, A_NONE, tr("Ort, ohne"), "12345", "zip_inside")
         <<         INFO(E_LINEEDIT, A_STRETCH_FACTOR_2, {}, tr("Musterstadt"), "town_inside")
         <<     end() << nextRow()
         << end()
         << inserted()
         << open(E_LAYOUT_H)
         <<     group({}, A_GROUP) << note(tr("A_GROUP: ein Rahmen ohne Titel")) << end()
         <<     group(tr("A_BUTTON_LABEL_BOLD"), A_BUTTON_LABEL_BOLD)
         <<         note(tr("Der Titel des Rahmens ist fett"))
         <<     end()
         << end();
    // clang-format on
    return rows;
}

QList<INFO> linesAndSpacers(PageContext&)
{
    QList<INFO> rows;
    // clang-format off
    rows << group(tr("Senkrechte Linien, Abstände nach rechts"), {}, E_LAYOUT_H)
         <<     button(tr("eins")) << INFO(E_VLINE, {}, {}, 1) << button(tr("E_VLINE davor"))
         <<     INFO(E_HSPACER, {}, {}, 60) << button(tr("E_HSPACER 60"))
         <<     INFO(E_STRETCH, {}, {}, 1) << button(tr("E_STRETCH 1"))
         << end()
         << open(E_LAYOUT_H)
         <<     group(tr("Linien waagerecht"))
         <<         button(tr("eins")) << INFO(E_HLINE, {}, {}, 1) << button(tr("E_HLINE davor"))
         <<         INFO(E_HLINE) << button(tr("und noch eine"))
         <<     end()
         <<     group(tr("Abstände nach unten"))
         <<         button(tr("eins")) << INFO(E_VSPACER, {}, {}, 40) << button(tr("E_VSPACER 40"))
         <<         INFO(E_VSPACER, {}, {}, 10) << button(tr("E_VSPACER 10"))
         <<     end()
         << end()
         << group(tr("E_STRETCH verteilt den freien Platz im Verhältnis 1 : 3"), {}, E_LAYOUT_H)
         <<     button(tr("links")) << INFO(E_STRETCH, {}, {}, 1)
         <<     button(tr("ein Viertel")) << INFO(E_STRETCH, {}, {}, 3)
         <<     button(tr("rechts"))
         << end()
         << group(tr("In einem Raster dehnt E_STRETCH die Spalte davor"), {}, E_LAYOUT_GRID)
         <<     button("1") << button(tr("gedehnt")) << INFO(E_STRETCH, {}, {}, 1)
         <<     button("3") << nextRow()
         <<     button("4") << button("5") << button("6") << nextRow()
         << end();
    // clang-format on
    return rows;
}

namespace {

/// Each row holds a button that spans n columns and one that stands in column n.
QList<INFO> staircase()
{
    QList<INFO> rows {group(tr("A_GRID_COLSPANn links, A_GRID_COLn rechts davon"),
                            A_LAYOUT_TINY_SPACING, E_LAYOUT_GRID)};
    for (int column = 0; column <= 10; ++column)
        rows << INFO(E_LABEL, A_ALIGN_HCENTER, QString::number(column));
    rows << nextRow();
    for (int n = 1; n <= 10; ++n)
        rows << narrowButton(QStringLiteral("SPAN%1").arg(n), A_GRID_COLSPAN1 << (n - 1))
             << narrowButton(QStringLiteral("COL%1").arg(n), A_GRID_COL1 << (n - 1)) << nextRow();
    return rows << button(tr("A_GRID_COLSPAN_ALL reicht bis zur letzten Spalte"),
                          A_GRID_COLSPAN_ALL)
                << nextRow() << end();
}

QList<INFO> smallGrid(const QString& title, const std::bitset<256>& attr)
{
    QList<INFO> rows;
    // clang-format off
    rows << group(title, attr, E_LAYOUT_GRID)
         <<     button("1") << button("2") << nextRow()
         <<     button("3") << button("4") << nextRow()
         << end();
    // clang-format on
    return rows;
}

/// A box that shows the room around and between what it holds.
QList<INFO> room(const std::bitset<256>& attr, const QString& title)
{
    return {group(title, attr), narrowButton(tr("a")), narrowButton(tr("b")), end()};
}

} // namespace

QList<INFO> grids(PageContext&)
{
    QList<INFO> rows = staircase();
    // clang-format off
    rows << open(E_LAYOUT_H)
         <<     smallGrid("A_STRETCH_COLUMN_END", A_STRETCH_COLUMN_END)
         <<     smallGrid(tr("ohne"), {})
         << end();
    // clang-format on
    return rows;
}

QList<INFO> margins(PageContext&)
{
    const auto packed = A_LAYOUT_NO_MARGINS | A_LAYOUT_NO_SPACING;

    QList<INFO> rows {
        group(tr("A_LAYOUT_MARGINS_n: Abstand ringsum in Bildpunkten"), {}, E_LAYOUT_H)};
    for (int n = 0; n <= 5; ++n)
        rows << room(A_LAYOUT_MARGINS_0 << n | A_LAYOUT_SPACING_2, QString::number(2 * n));
    rows << end() << group(tr("A_LAYOUT_SPACING_n: Abstand dazwischen"), {}, E_LAYOUT_H);
    for (int n = 0; n <= 5; ++n)
        rows << room(A_LAYOUT_SPACING_0 << n | A_LAYOUT_MARGINS_2, QString::number(2 * n));
    rows << end();
    // clang-format off
    rows << open(E_LAYOUT_H)
         <<     room(packed, tr("Ganz dicht: A_LAYOUT_NO_MARGINS, A_LAYOUT_NO_SPACING"))
         <<     room({}, tr("Wie der Stil es vorgibt"))
         << end();
    // clang-format on
    return rows;
}

} // namespace gallery
