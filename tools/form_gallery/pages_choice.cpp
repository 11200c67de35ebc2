#include "tools/form_gallery/describe.h"
#include "tools/form_gallery/page_rows.h"

#include <QColor>

namespace gallery {

using namespace mod_form_qt;

namespace {

/// Ten pairs of buttons, in each of which one is on: five of radio buttons, five of check boxes.
QList<INFO> exclusivePairs()
{
    QList<INFO> rows {group(tr("A_GROUP_ID1 bis A_GROUP_ID10: je Gruppe ist nur eine an"),
                            A_STRETCH_COLUMN_END, E_LAYOUT_GRID)};
    for (int line = 0; line < 5; ++line) {
        for (const int number : {line, line + 5}) {
            const bool left = number < 5;
            const int type = left ? E_RADIOBUTTON : E_CHECKBOX;
            const auto place = left ? A_NONE : A_GRID_COL4;
            const auto id = A_GROUP_ID1 << number;
            const QString key = QStringLiteral("group%1_").arg(number + 1);
            rows << INFO(E_LABEL, place, attributeName(unsigned(140 + number)) + "   ")
                 << INFO(type, id, tr("eins"), number % 2 == 0, key + "1")
                 << INFO(type, id, tr("zwei"), number % 2 == 1, key + "2");
            if (left)
                rows << INFO(E_HSPACER, {}, {}, 40);
        }
        rows << nextRow();
    }
    return rows << end();
}

/// A list with a title over it.
QList<INFO> listColumn(const QString& title, const INFO& row)
{
    INFO list = row;
    list.param = with({}, {{Option::buildKey(Option::fixedHeightKey, E_LISTBOX), 86}});
    return {group(title), list, end()};
}

/// List data whose items look and speak for themselves.
T_LISTDATA decorated()
{
    T_LISTDATA list = items({tr("Normal"), tr("Warnung"), tr("Fehler")}, {1});
    const QList<QColor> colours {QColor("#2e7d32"), QColor("#b26a00"), QColor("#b00020")};
    for (std::size_t index = 0; index < list.size(); ++index)
        std::get<3>(list[index]) = {{Qt::DecorationRole, colours.at(qsizetype(index))},
                                    {Qt::ToolTipRole, tr("aus den Rollen des Eintrags")}};
    return list;
}

} // namespace

QList<INFO> checks(PageContext&)
{
    QList<INFO> rows;
    // clang-format off
    rows << group(tr("Ankreuzfelder"))
         <<     sample({E_CHECKBOX, A_NONE, tr("Angekreuzt"), true, "check"})
         <<     sample({E_CHECKBOX, A_CHECKBUTTON_RIGHT, tr("Kästchen rechts"), true,
                        "check_right"})
         <<     sample({E_CHECKBOX, A_BUTTON_LABEL_BOLD, tr("Fette Schrift"), false, "check_bold"})
         <<     sample({E_CHECKBOX, A_READONLY, tr("Nur lesen"), true, "check_readonly"})
         << end()
         << group(tr("Auswahlknöpfe"))
         <<     sample({E_RADIOBUTTON, A_NONE, tr("Erster"), true, "radio_1"})
         <<     sample({E_RADIOBUTTON, A_NONE, tr("Zweiter"), false, "radio_2"})
         <<     sample({E_RADIOBUTTON, A_RADIOBUTTON_RIGHT, tr("Knopf rechts"), false,
                        "radio_right"})
         <<     sample({E_RADIOBUTTON, A_READONLY, tr("Nur lesen"), false, "radio_readonly"})
         << end()
         << exclusivePairs();
    // clang-format on
    return rows;
}

QList<INFO> lists(PageContext&)
{
    const QStringList names {tr("Quitte"), tr("Apfel"), tr("Mirabelle"), tr("Birne")};
    const T_LISTDATA one = items(names, {1});
    const T_LISTDATA two = items(names, {0, 2});
    const QStringList longNames {tr("kurz"),
                                 tr("ein Eintrag, der ganz besonders viel Platz braucht")};

    QList<INFO> rows;
    // clang-format off
    rows << group(tr("Auswahl von Einträgen"), {}, E_LAYOUT_H)
         <<     listColumn(tr("Einer"), {E_LISTBOX, A_NONE, {}, one, "single"})
         <<     listColumn("A_MULTISEL", {E_LISTBOX, A_MULTISEL, {}, two, "multi"})
         <<     listColumn("A_CHECKBOX", {E_LISTBOX, A_CHECKBOX, {}, two, "checkable"})
         << end()
         << group(tr("Anzeige"), {}, E_LAYOUT_H)
         <<     listColumn("A_SORTED", {E_LISTBOX, A_SORTED, {}, one, "sorted"})
         <<     listColumn("A_READONLY", {E_LISTBOX, A_READONLY, {}, one, "readonly"})
         <<     listColumn(tr("Rollen der Einträge"),
                           {E_LISTBOX, A_NONE, {}, decorated(), "decorated"})
         << end()
         << group(tr("Breite"), {}, E_LAYOUT_H)
         <<     listColumn("A_ADJUST_WIDTH_TO_CONTENTS", {E_LISTBOX, A_ADJUST_WIDTH_TO_CONTENTS, {},
                           items(longNames), "wide"})
         <<     listColumn(tr("dazu A_H_ALLOW_SHRINK"),
                           {E_LISTBOX, A_ADJUST_WIDTH_TO_CONTENTS | A_H_ALLOW_SHRINK, {},
                            items(longNames), "shrinks"})
         <<     listColumn(tr("Ohne Vorgabe"),
                           {E_LISTBOX, A_NONE, {}, items(longNames), "as_it_comes"})
         << end();
    // clang-format on
    return rows;
}

QList<INFO> comboBoxes(PageContext&)
{
    const QStringList names {tr("Quitte"), tr("Apfel"), tr("Birne")};
    const T_LISTDATA widths = items({tr("kurz"), tr("ein Eintrag mit viel Platzbedarf")}, {0});

    QList<INFO> rows;
    // clang-format off
    rows << group(tr("Klappliste"))
         <<     sample({E_COMBOBOX, A_NONE, tr("Einfach"), items(names, {1}), "combo"})
         <<     sample({E_COMBOBOX, A_NONE, tr("Ohne Auswahl"), items(names), "combo_none"})
         <<     sample({E_COMBOBOX, A_SORTED, tr("Sortiert"), items(names, {0}), "combo_sorted"})
         <<     sample({E_COMBOBOX, A_READONLY, tr("Nur lesen"), items(names, {2}),
                        "combo_readonly"})
         <<     sample({E_COMBOBOX, A_NONE, tr("Einträge mit Rollen"), decorated(), "combo_roles"})
         << end()
         << group(tr("Klappliste mit Häkchen"))
         <<     sample({E_CHECKCOMBOBOX, A_NONE, tr("Mehrere"), items(names, {0, 2}), "checks"})
         <<     sample({E_CHECKCOMBOBOX, A_SORTED, tr("Sortiert"), items(names, {0, 1}),
                        "checks_sorted"})
         <<     sample({E_CHECKCOMBOBOX, A_READONLY, tr("Nur lesen"), items(names, {1}),
                        "checks_readonly"})
         << end()
         << group(tr("Breite"))
         <<     sample({E_COMBOBOX, A_ALIGN_LEFT | A_ADJUST_WIDTH_TO_CONTENTS, tr("Nach Inhalt"),
                        widths, "wide"})
         <<     sample({E_COMBOBOX, A_ALIGN_LEFT | A_COMBO_AUTO_WIDTH_FIRST_OPEN,
                        tr("Beim ersten Zeigen"), widths, "first_open"})
         <<     sample({E_COMBOBOX, A_ALIGN_LEFT | A_COMBO_AUTO_WIDTH_COMPACT, tr("Schmal"), widths,
                        "compact"})
         << end();
    // clang-format on
    return rows;
}

} // namespace gallery
