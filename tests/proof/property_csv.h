#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace property {

/// Reads a table as RFC 4180 defines it, but with ";" between the fields and a line feed behind
/// each record. Stricter than most readers: whatever the grammar does not allow is a problem.
class CsvReader
{
public:
    /// \param bytes  UTF-8; invalid bytes are a problem too
    explicit CsvReader(const QByteArray& bytes);

    /// Where the grammar is broken; empty if it is not.
    QString problem() const { return m_problem; }

    const QList<QStringList>& records() const { return m_records; }

private:
    bool readField(QString& field);
    bool readQuoted(QString& field);
    bool fail(const char* what);

    QString m_text;
    qsizetype m_at = 0;
    QString m_problem;
    QList<QStringList> m_records;
};

/// The same by the csv module of Python, which runs as a process of its own. The first
/// \a linesToSkip lines of the file are passed over.
/// \param problem  out: why it failed
QList<QStringList> readWithPython(const QString& file, int linesToSkip, QString& problem);

} // namespace property
