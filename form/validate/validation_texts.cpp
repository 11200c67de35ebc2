#include "form/model/info_option.h"

namespace mod_form_qt {

QMap<QString, QString> INFO::defaultValidationText()
{
    static const QMap<QString, QString> texts = {
        {Option::minKey + "_1", tr("Feld '%1': Der Wert (%2) muss größer %3 sein.")},
        {Option::maxKey + "_1", tr("Feld '%1': Der Wert (%2) muss kleiner oder gleich %3 sein.")},
        {Option::minKey + "_2", tr("Feld '%1': Der Text (%2) muss länger als %3 Zeichen sein.")},
        {Option::maxKey + "_2", tr("Feld '%1': Der Text (%2) muss kürzer als %3 Zeichen sein.")},
        {Option::mandatoryKey,
         tr("Feld '%1': Es muss ein Wert eingetragen oder ausgewählt werden.")},
        {Option::regexPatternKey,
         tr("Feld '%1': Der Wert (%2) entspricht nicht dem Abfragemuster.")},
        {Option::fileMustExistKey, tr("Feld '%1': Die Datei oder Ordner existieren nicht (%2).")},
    };
    return texts;
}

} // namespace mod_form_qt
