#pragma once

#include <QChar>
#include <QHash>
#include <QString>
#include <QStringList>

/// A column's name as it stands in the header: \a a and \a b together in double quotes, inner
/// quotes as they are. Column names are always compared in this form.
QString quoteHeader(const QString& a, const QString& b = {});

/// A cell's text: every double quote doubled, and the whole in double quotes if it then holds the
/// separator, a line end or a double quote. Anything else stays bare.
QString csvCell(const QString& value, QChar separator);

/// Finds columns by name. It notices by itself when it is asked about another list than last time.
class ColumnLookup
{
public:
    /// \return position of the first column of that name, or -1
    qsizetype indexOf(const QStringList& headers, const QString& column);

private:
    QStringList m_headers;
    QHash<QString, qsizetype> m_positions;
};
