#include "tools/form_gallery/page_rows.h"

#include <QDateTime>

namespace gallery {

using namespace mod_form_qt;

QList<INFO> numbers(PageContext&)
{
    const auto spin = [](const QString& title, Option::Map options = {}) {
        options.insert(Option::spinBoxKey, true);
        return with(title, options);
    };
    const Option::Map percent {{Option::minKey, 0}, {Option::maxKey, 100}};
    Option::Map corrected = percent;
    corrected.insert(Option::suffixKey, " %");
    const Option::Map price {{Option::precisionKey, 3},
                             {Option::prefixKey, "EUR "},
                             {Option::spinBoxSingleStepKey, 0.25}};

    QList<INFO> rows;
    // clang-format off
    rows << group(tr("Drei Gestalten"))
         <<     sample({E_NUMBER, A_NONE, tr("Zeile, ganz"), 42, "line_int"})
         <<     sample({E_NUMBER, A_NONE, tr("Zeile, mit Komma"), 1234.5, "line_double"})
         <<     sample({E_NUMBER, A_NONE, spin(tr("Drehfeld, ganz")), 1234567, "spin_int"})
         <<     sample({E_NUMBER, A_NONE, spin(tr("Drehfeld, mit Komma")), 1234.5, "spin_double"})
         << end()
         << group(tr("Grenzen"))
         <<     sample({E_NUMBER, A_NONE, with(tr("Zeile, 0 bis 100"), percent), 7, "line_bounds"})
         <<     sample({E_NUMBER, A_AUTO_CORRECT_MINMAX,
                        spin(tr("Zieht auf die Grenze"), corrected), 50, "corrected"})
         <<     sample({E_NUMBER, A_NONE,
                        spin(tr("Typ ohne Wert"), {{Option::metaTypeKey, int(QMetaType::UShort)}}),
                        {}, "meta_type"})
         << end()
         << group(tr("Aussehen und Bedienung"))
         <<     sample({E_NUMBER, A_NONE, spin(tr("Vorsatz, Schritt, Stellen"), price), 9.75,
                        "price"})
         <<     sample({E_NUMBER, A_NONE,
                        spin(tr("Ohne Tausenderpunkt"), {{Option::groupSepKey, false}}),
                        1234567, "no_groups"})
         <<     sample({E_NUMBER, A_SPINBOX_LINEEDIT_READONLY, spin(tr("Nur über die Pfeile")), 3,
                        "arrows"})
         <<     sample({E_NUMBER, A_STRONG_FOCUS, spin(tr("Mausrad nur mit Fokus")), 3,
                        "strong_focus"})
         <<     sample({E_NUMBER, A_READONLY, spin(tr("Nur lesen")), 3, "readonly"})
         << end()
         << group(tr("Zeitpunkt der Meldung"))
         <<     sample({E_NUMBER, A_NONE, spin(tr("Am Ende der Eingabe")), 1, "finished"})
         <<     sample({E_NUMBER, A_IMMEDIATE_DATA_UPDATE, spin(tr("Bei jedem Schritt")), 1,
                        "immediate"})
         << end();
    // clang-format on
    return rows;
}

QList<INFO> dates(PageContext&)
{
    const QDate day(2024, 2, 29);
    const QDateTime moment(day, QTime(13, 45));
    const QVariant bounded =
        with(tr("Nur im Jahr 2024"),
             {{Option::minKey, QDate(2024, 1, 1)}, {Option::maxKey, QDate(2024, 12, 31)}});
    const QVariant english =
        with(tr("In anderer Sprache"), {{Option::localeKey, QLocale(QLocale::English)}});

    QList<INFO> rows;
    // clang-format off
    rows << group(tr("Datum"))
         <<     sample({E_DATE, A_NONE, tr("Mit Kalender"), day, "date"})
         <<     sample({E_DATE, A_SPINBOX, tr("Mit Pfeilen"), day, "date_spin"})
         <<     sample({E_DATE, A_NONE, bounded, day, "date_bounded"})
         <<     sample({E_DATE, A_READONLY, tr("Nur lesen"), day, "date_readonly"})
         <<     sample({E_DATE, A_NONE, english, day, "date_english"})
         <<     sample({E_DATE, A_NONE, tr("Julianischer Tag"), day.toJulianDay(), "date_number"})
         << end()
         << group(tr("Datum, das fehlen darf"))
         <<     sample({E_DATE, A_INVALID_CHECKBOX, tr("Vorhanden"), day, "date_present"})
         <<     sample({E_DATE, A_INVALID_CHECKBOX, tr("Fehlt"), INFO::dateInvalid, "date_absent"})
         << end()
         << group(tr("Datum und Uhrzeit"))
         <<     sample({E_DATETIME, A_NONE, tr("Mit Kalender"), moment, "moment"})
         <<     sample({E_DATETIME, A_SPINBOX, tr("Mit Pfeilen"), moment, "moment_spin"})
         << end()
         << group(tr("Zeitpunkt der Meldung"))
         <<     sample({E_DATE, A_IMMEDIATE_DATA_UPDATE, tr("Bei jedem Schritt"), day,
                        "date_immediate"})
         << end();
    // clang-format on
    return rows;
}

} // namespace gallery
