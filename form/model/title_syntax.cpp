#include "form/model/info_option.h"

namespace mod_form_qt {

namespace {

/// \return  the position of `separator` behind `from`, -1 if it is not there or at the very start
qsizetype nextSeparator(const QString& title, const QString& separator, qsizetype from)
{
    const qsizetype found = title.indexOf(separator, from, Qt::CaseSensitive);
    return found > 0 ? found : -1;
}

} // namespace

bool INFO::Option::extractVars(const QStringList& separators, QString& title, Map& map)
{
    const bool hasValues = separators.size() == 3;
    bool taken = false;
    while (!title.isEmpty() && (hasValues || separators.size() == 2)) {
        const qsizetype begin = title.indexOf(separators[0], 0, Qt::CaseSensitive);
        if (begin < 0)
            break;
        const qsizetype keyBegin = begin + separators[0].size();
        const qsizetype keyEnd = nextSeparator(title, separators[1], keyBegin);
        if (keyEnd < 0)
            break;

        QString value = QStringLiteral("");
        qsizetype end = keyEnd + separators[1].size();
        if (hasValues) {
            const qsizetype valueBegin = end;
            const qsizetype valueEnd = nextSeparator(title, separators[2], valueBegin);
            if (valueEnd < 0)
                break;
            value = title.mid(valueBegin, valueEnd - valueBegin);
            end = valueEnd + separators[2].size();
        }

        const QString key = title.mid(keyBegin, keyEnd - keyBegin).trimmed();
        if (!key.isEmpty())
            map.insert(key, value);
        title.remove(begin, end - begin);
        taken = true;
    }
    return taken || title.isEmpty();
}

} // namespace mod_form_qt
