#include "tests/app/export_table.h"

#include <QStringDecoder>

namespace {

const QChar separator = QLatin1Char(';');
const QChar quote = QLatin1Char('"');
const QChar lineEnd = QLatin1Char('\n');

} // namespace

ExportTable::ExportTable(const QByteArray& bytes)
{
    QStringDecoder utf8(QStringConverter::Utf8, QStringConverter::Flag::ConvertInitialBom);
    const QString text = utf8(bytes);
    if (utf8.hasError())
        m_problem = QStringLiteral("The export is not UTF-8.");
    if (text.isEmpty())
        return;
    const qsizetype first = text.indexOf(lineEnd);
    const qsizetype second = text.indexOf(lineEnd, first + 1);
    if (first < 0 || second < 0) {
        m_problem = QStringLiteral("The export ends before its second line does.");
        return;
    }
    m_options = text.left(first);
    readHeaders(text.mid(first + 1, second - first - 1));
    readRows(text.mid(second + 1));
}

QString ExportTable::cell(qsizetype row, const QString& column) const
{
    const qsizetype position = m_headers.indexOf(column);
    if (position < 0 || row < 0 || row >= m_rows.size())
        return {};
    const QString text = m_rows.at(row).value(position);
    return text.isNull() ? QStringLiteral("") : text;
}

QStringList ExportTable::column(const QString& column) const
{
    QStringList cells;
    for (qsizetype row = 0; row < m_rows.size(); ++row)
        cells.append(cell(row, column));
    return cells;
}

void ExportTable::readHeaders(const QString& line)
{
    if (line.size() < 2 || !line.startsWith(quote) || !line.endsWith(quote)) {
        m_problem = QStringLiteral("A column name is not quoted: ") + line;
        return;
    }
    // No column of a shop has this sequence in its name.
    m_headers = line.mid(1, line.size() - 2).split(QStringLiteral("\";\""));
}

void ExportTable::readRows(const QString& text)
{
    QStringList row;
    QString cell;
    bool quoted = false;
    bool fresh = true; // nothing of the cell has been read yet
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (quoted && c == quote && text.mid(i + 1, 1) == quote) {
            cell += quote;
            ++i;
        } else if (c == quote && (quoted || fresh)) {
            quoted = !quoted;
            fresh = false;
        } else if (!quoted && (c == separator || c == lineEnd)) {
            row.append(cell);
            cell.clear();
            fresh = true;
            if (c == lineEnd) {
                m_rows.append(row);
                row.clear();
            }
        } else {
            if (c == quote)
                m_problem = QStringLiteral("A quote stands in the middle of a cell: ") + cell;
            cell += c;
            fresh = false;
        }
    }
    if (quoted || !row.isEmpty() || !cell.isEmpty())
        m_problem = QStringLiteral("The last row does not end.");
    for (const QStringList& cells : m_rows)
        if (cells.size() != m_headers.size())
            m_problem = QStringLiteral("A row has %1 cells and not %2.")
                            .arg(cells.size())
                            .arg(m_headers.size());
}
