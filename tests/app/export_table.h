#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

/// An export read back the way its host reads it: a line of options, a line of column names, rows.
/// It shares nothing with the code that writes.
class ExportTable
{
public:
    /// Reads \a bytes. problem() tells whether they follow the format.
    explicit ExportTable(const QByteArray& bytes);

    /// Where the format is broken; empty if it is not.
    QString problem() const { return m_problem; }

    /// The first line.
    QString options() const { return m_options; }

    /// Column names without their quotes.
    QStringList headers() const { return m_headers; }

    qsizetype rowCount() const { return m_rows.size(); }

    /// Cells of a row, without quotes.
    QStringList row(qsizetype index) const { return m_rows.value(index); }

    /// A cell by the name of its column; null if there is no such row or column.
    QString cell(qsizetype row, const QString& column) const;

    /// All cells of a column, top down.
    QStringList column(const QString& column) const;

private:
    void readHeaders(const QString& line);
    void readRows(const QString& text);

    QString m_options;
    QStringList m_headers;
    QList<QStringList> m_rows;
    QString m_problem;
};
