#include "tools/form_gallery/gallery_pages.h"

namespace gallery {

QList<Page> pages()
{
    // clang-format off
    return {
        {tr("Einzeilige Texte"),
         tr("Eine Zeile <i>E_LINEEDIT</i> macht eine Beschriftung und ein Eingabefeld. Rechts "
            "steht jeweils, woraus das Beispiel gemacht ist."),
         lineEdits, {}},
        {tr("Beschriftungen"),
         tr("Der Titel einer Zeile wird zu ihrer Beschriftung. Er kann Optionen tragen und, durch "
            "Semikolon getrennt, die Texte weiterer Teile."),
         labels, {}},
        {tr("Mehrzeilige Texte"),
         tr("<i>E_TEXTEDIT</i> kann Auszeichnung aufnehmen, <i>E_PLAINTEXT</i> nie."),
         textEdits, {}},
        {tr("Schaltflächen"),
         tr("Jede Schaltfläche meldet <i>kAfterAction</i>; die mit Wert legen ihn in der "
            "Datentabelle ab."),
         buttons, {}},
        {tr("Ankreuzen"),
         tr("Bei Ankreuzfeld und Auswahlknopf ist der Titel der Text; der Wert ist ein bool."),
         checks, {}},
        {tr("Listen"),
         tr("<i>E_LISTBOX</i> nimmt Listendaten: Text, Auswahl, Wert und Rollen je Eintrag. Der "
            "Haken \u2714 in der Datentabelle zeigt, was ausgewählt ist."),
         lists, {}},
        {tr("Klapplisten"),
         tr("<i>E_COMBOBOX</i> wählt einen Eintrag, <i>E_CHECKCOMBOBOX</i> mehrere."),
         comboBoxes, {}},
        {tr("Zahlen"),
         tr("<i>E_NUMBER</i> wird je nach Typ des Werts und Option <i>spinbox</i> eine Zeile, ein "
            "ganzzahliges Drehfeld oder eines mit Nachkommastellen."),
         numbers, {}},
        {tr("Datum und Zeit"),
         tr("<i>E_DATE</i> zeigt Jahre immer vierstellig. Ein fehlendes Datum ist "
            "<i>INFO::dateInvalid</i>."),
         dates, {}},
        {tr("Pfade"),
         tr("Ein Feld mit einer Schaltfläche, die den passenden Dialog öffnet, oder die "
            "Schaltfläche allein."),
         paths, {}},
        {tr("Bilder und Fremdes"),
         tr("<i>E_IMAGE</i> nimmt ein QImage oder einen Dateinamen, <i>E_WIDGET</i> ein fertiges "
            "Widget."),
         images, {}},
        {tr("Layouts"),
         tr("Öffner und <i>E_LAYOUT_END</i> schachteln Zeilen. Ein Titel macht aus dem Layout "
            "einen Rahmen."),
         layouts, {}},
        {tr("Linien und Abstände"),
         tr("Zeilen ohne Wert, die nur Platz brauchen oder trennen."),
         linesAndSpacers, {}},
        {tr("Raster"),
         tr("<i>E_LAYOUT_GRID</i> zählt Spalten ab 0; <i>E_GRID_NEXT_ROW</i> beginnt die nächste "
            "Zeile."),
         grids, {}},
        {tr("Ränder"),
         tr("Ränder und Abstände eines Layouts, von 0 bis 10 Bildpunkten."),
         margins, {}},
        {tr("Gewichte"),
         tr("Wer bekommt den freien Platz?"),
         stretches, {}},
        {tr("Größenverhalten"),
         tr("Die Attribute setzen die Regeln, nach denen ein Widget wächst und schrumpft."),
         sizePolicies, {}},
        {tr("Ausrichtung"),
         tr("Ein ausgerichtetes Widget behält seine Größe und rückt in seiner Zelle an den "
            "genannten Rand."),
         alignments, {}},
        {tr("Titel ausrichten"),
         tr("Die Beschriftung einer Zeile hat eine eigene Ausrichtung."),
         labelAlignments, {}},
        {tr("Registerkarten"),
         tr("<i>E_TABWIDGET</i>, dann je Seite ein <i>E_TAB</i>, am Ende <i>E_TAB_END</i>. Der "
            "Wert ist die Nummer der Seite."),
         tabs, {}},
        {tr("Menüs und Fenster"),
         tr("Menüs und Aktionen bringt der Aufrufer mit; die Engine hängt sie auf und verdrahtet "
            "sie."),
         menusAndWindows, {}},
        {tr("Menüs aus Text"),
         tr("Menüs entstehen aus Zeilen oder Eintrag für Eintrag. Oben hängen sie in der "
            "Menüleiste dieser Seite."),
         builtMenus, {}},
        {tr("Passwörter"),
         tr("Zwei fertige Dialoge: einer fragt nach einem Passwort, einer legt eines fest."),
         passwords, {}},
        {tr("Ereignisse"),
         tr("Erst wird die Zeile gefragt, dann das Formular. Eine 0 lehnt ab; das Protokoll zeigt "
            "es rot."),
         events, {}},
        {tr("Werte und Bindung"),
         tr("Der Wert einer Zeile steht in der Datentabelle oder in einer Variablen, auf die "
            "diese zeigt."),
         bindings, {}},
        {tr("Gruppen und Mausrad"),
         tr("Was sich ein- und ausblenden lässt, und was das Mausrad darf."),
         groupsAndWheel, mod_form_qt::INFO::MF_WHEEL_GUARD},
        {tr("Benannte Einstellungen"),
         tr("<i>E_MULTICONFIG</i> hält mehrere Einstellungen eines Formulars in einer Datei. "
            "„+“ legt die jetzige unter einem neuen Namen ab, „-“ löscht."),
         configurations, {}},
    };
    // clang-format on
}

} // namespace gallery
