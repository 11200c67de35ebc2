#include "tools/form_gallery/page_rows.h"

namespace gallery {

using namespace mod_form_qt;

QList<INFO> lineEdits(PageContext&)
{
    const QVariant shortText = with(tr("Höchstens 5 Zeichen"), {{Option::maxCharsKey, 5}});
    const QVariant pattern =
        with(tr("Zwei Buchstaben, Ziffern"), {{Option::regexPatternKey, "[A-Z]{2}[0-9]*"}});
    const QVariant folded =
        with(tr("Ebenso, auch klein"),
             {{Option::regexPatternKey, "[A-Z]{2}[0-9]*"},
              {Option::regexPatternOptionsKey, int(QRegularExpression::CaseInsensitiveOption)}});

    QList<INFO> rows;
    // clang-format off
    rows << group(tr("Anzeige"))
         <<     sample({E_LINEEDIT, A_NONE, tr("Einfach"), "Ada Lovelace", "plain"})
         <<     sample({E_LINEEDIT, A_READONLY, tr("Nur lesen"), tr("unveränderlich"), "readonly"})
         <<     sample({E_LINEEDIT, A_PWD, tr("Kennwort"), "geheim", "pwd"})
         <<     sample({E_LINEEDIT, A_PWD_ECHO, tr("Beim Tippen lesbar"), "geheim", "pwd_echo"})
         <<     sample({E_LINEEDIT, A_ADJUST_WIDTH_TO_CONTENTS | A_ALIGN_LEFT,
                        tr("So breit wie der Text"), tr("gerade breit genug dafür"), "width"})
         << end()
         << group(tr("Eingabe"))
         <<     sample({E_LINEEDIT, A_NONE, shortText, "12345", "maxchars"})
         <<     sample({E_LINEEDIT, A_NONE, pattern, "DE123", "regex"})
         <<     sample({E_LINEEDIT, A_NONE, folded, "de123", "regex_folded"})
         << end()
         << group(tr("Zeitpunkt der Meldung"))
         <<     sample({E_LINEEDIT, A_NONE, tr("Bei jeder Taste"), "", "each_key"})
         <<     sample({E_LINEEDIT, A_LINEEDIT_UPDATE_ON_FINISH, tr("Nach Enter oder Tab"), "",
                        "finished"})
         << end();
    // clang-format on
    return rows;
}

QList<INFO> labels(PageContext&)
{
    const QString longTitle = tr("Eine Beschriftung, die für ihre Spalte zu lang ist");

    QList<INFO> rows;
    // clang-format off
    rows << group(tr("Beschriftungen von Eingaben"))
         <<     sample({E_LINEEDIT, A_NONE, tr("Gewöhnlich"), "", "plain"})
         <<     sample({E_LINEEDIT, A_FLIP_LABEL_BOLD, tr("Fett"), "", "bold"})
         <<     sample({E_LINEEDIT, A_NO_LABEL, tr("ohne"), tr("der Titel erscheint nicht"),
                        "no_label"})
         <<     sample({E_LINEEDIT, A_LABEL_WORDWRAP, longTitle, "", "wrapped"})
         <<     sample({E_BROWSE_FOLDER, A_NONE, tr("Titel;zwei Teile"), "", "split"})
         <<     sample({E_BROWSE_FOLDER, A_NO_TITLE_SPLIT, tr("Titel;ein Teil"), "", "unsplit"})
         <<     sample({E_LINEEDIT, A_NONE, tr("Im Titel{{maxchars}{3}}"), "abc", "title_option"})
         << end()
         << group(tr("Pflichtfelder"))
         <<     sample({E_LINEEDIT, A_MANDATORY, tr("Mit Stern"), "", "mandatory"})
         <<     sample({E_LINEEDIT, A_MANDATORY | A_NO_MANDATORY_MARKER, tr("Ohne Stern"), "",
                        "no_marker"})
         << end()
         << group(tr("Zeilen, die nur Text sind"))
         <<     sample({E_LABEL, A_NONE, tr("Ein Text")})
         <<     sample({E_LABEL, A_NONE, tr("<i>Rich Text</i> mit <b>Auszeichnung</b>")})
         <<     sample({E_LABEL, A_LABEL_WORDWRAP, tr("Ein langer Text bricht um, statt die Seite "
                                                      "breiter zu machen.")})
         << end();
    // clang-format on
    return rows;
}

namespace {

/// Ten edits, each one line higher than the one before.
QList<INFO> heights()
{
    QList<INFO> rows {
        group(tr("A_HEIGHT_1 bis A_HEIGHT_10: feste Höhe in Zeilen"), {}, E_LAYOUT_H)};
    QString text;
    for (int lines = 1; lines <= 10; ++lines) {
        text += (text.isEmpty() ? "" : "\n") + QString::number(lines);
        rows << INFO(E_PLAINTEXT, A_HEIGHT_1 << (lines - 1) | A_ALIGN_TOP,
                     with({}, {{Option::buildKey(Option::fixedWidthKey, E_PLAINTEXT), 54}}), text,
                     QStringLiteral("height_%1").arg(lines));
    }
    return rows << end();
}

} // namespace

QList<INFO> textEdits(PageContext&)
{
    const QString html = tr("<p>Text mit <b>fetten</b>, <i>schrägen</i> und "
                            "<span style=\"color:#b03030\">farbigen</span> Wörtern</p>");

    QList<INFO> rows;
    // clang-format off
    rows << group(tr("E_TEXTEDIT und E_PLAINTEXT"))
         <<     sample({E_TEXTEDIT, A_HEIGHT_2, tr("Ohne Auszeichnung"),
                        tr("<b>bleibt, wie es dasteht</b>"), "text"})
         <<     sample({E_TEXTEDIT, A_RICH_TEXT | A_HEIGHT_2, tr("Mit Auszeichnung"), html, "rich"})
         <<     sample({E_PLAINTEXT, A_HEIGHT_3, tr("Schlichter Text"), tr("eins\nzwei\ndrei"),
                        "plain"})
         <<     sample({E_PLAINTEXT, A_READONLY | A_HEIGHT_1, tr("Nur lesen"), tr("unveränderlich"),
                        "readonly"})
         << end()
         << heights();
    // clang-format on
    return rows;
}

} // namespace gallery
