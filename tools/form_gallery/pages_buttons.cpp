#include "tools/form_gallery/page_rows.h"

#include <QColor>
#include <QFont>

namespace gallery {

using namespace mod_form_qt;

QList<INFO> buttons(PageContext&)
{
    const T_LISTDATA colours = items({tr("Rot"), tr("Grün"), tr("Blau")}, {1});
    const T_LISTDATA fruits = items({tr("Quitte"), tr("Apfel"), tr("Birne")}, {0, 2});
    const QString address = QStringLiteral("https://www.halverin.example/");

    QList<INFO> rows;
    // clang-format off
    rows << group(tr("Schaltflächen ohne eigenen Wert"))
         <<     sample({E_BUTTON, A_NONE, tr("Schaltfläche"), {}, "button"})
         <<     sample({E_BUTTON, A_DEFAULT_BUTTON, tr("Vorgabe, im Dialog mit Enter"), {},
                        "default"})
         <<     sample({E_BUTTON, A_BUTTON_LABEL_BOLD, tr("Fette Schrift"), {}, "bold"})
         << end()
         << group(tr("Schaltflächen, die ein Fenster beenden"))
         <<     note(tr("Eine Seite ist kein Fenster: ihr Formular lehnt das Schließen ab, wie das "
                        "Protokoll zeigt. Die Texte bringt der Zeilentyp mit."))
         <<     sample({E_OK_BUTTON})
         <<     sample({E_CANCEL_BUTTON})
         <<     sample({E_CLOSE_BUTTON})
         <<     sample({E_HELP_BUTTON})
         << end()
         << group(tr("Schaltflächen mit einem Wert"))
         <<     sample({E_OPENURL_BUTTON, A_NONE, tr("Adresse öffnen"), address, "url"})
         <<     sample({E_COLOR_BUTTON, A_NONE, tr("Farbe"), QVariant(QColor(0x2a, 0x7f, 0xb8)),
                        "color"})
         <<     sample({E_FONT_BUTTON, A_NONE, tr("Schrift"), QVariant(QFont("DejaVu Serif", 12)),
                        "font"})
         << end()
         << group(tr("Menü an der Schaltfläche"))
         <<     sample({E_MENU_BUTTON, A_NONE, tr("Eine Farbe"), colours, "menu_single"})
         <<     sample({E_MENU_BUTTON, A_MULTISEL, tr("Mehrere Früchte"), fruits, "menu_multi"})
         <<     sample({E_MENU_BUTTON, A_MULTISEL | A_SORTED, tr("Sortiert"), fruits,
                        "menu_sorted"})
         << end();
    // clang-format on
    return rows;
}

} // namespace gallery
