#include "app/csvrow.h"

#include <algorithm>

QString quoteHeader(const QString& a, const QString& b)
{
    // One piece of memory: this runs for every cell.
    QString name;
    name.reserve(a.size() + b.size() + 2);
    name += QLatin1Char('"');
    name += a;
    name += b;
    name += QLatin1Char('"');
    return name;
}

QString csvCell(const QString& value, QChar separator)
{
    const bool bare = std::none_of(value.cbegin(), value.cend(), [separator](QChar c) {
        return c == separator || c == QLatin1Char('"') || c == QLatin1Char('\r')
            || c == QLatin1Char('\n');
    });
    if (bare)
        return value;
    QString doubled = value;
    doubled.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + doubled + QLatin1Char('"');
}

qsizetype ColumnLookup::indexOf(const QStringList& headers, const QString& column)
{
    // Holding a copy keeps the list's memory ours: whoever changes the original gets memory of its
    // own, so equal addresses mean equal lists.
    if (headers.constData() != m_headers.constData() || headers.size() != m_headers.size()) {
        m_headers = headers;
        m_positions.clear();
        m_positions.reserve(headers.size());
        // Backwards, so that of equal names the first one stays.
        for (qsizetype i = headers.size() - 1; i >= 0; --i)
            m_positions.insert(headers.at(i), i);
    }
    return m_positions.value(column, -1);
}
