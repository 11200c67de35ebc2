#include "tests/proof/property_csv.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QStringDecoder>

namespace property {

namespace {

constexpr QChar quote = QLatin1Char('"');
constexpr QChar separator = QLatin1Char(';');
constexpr QChar lineFeed = QLatin1Char('\n');
constexpr QChar carriageReturn = QLatin1Char('\r');

} // namespace

CsvReader::CsvReader(const QByteArray& bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    m_text = decoder(bytes);
    if (decoder.hasError()) {
        fail("invalid UTF-8");
        return;
    }
    while (m_at < m_text.size()) {
        QStringList record;
        for (;;) {
            QString field;
            if (!readField(field))
                return;
            record.append(field);
            if (m_at == m_text.size()) {
                fail("the last record does not end");
                return;
            }
            if (m_text.at(m_at++) == lineFeed)
                break;
        }
        m_records.append(record);
    }
}

bool CsvReader::readField(QString& field)
{
    if (m_at < m_text.size() && m_text.at(m_at) == quote)
        return readQuoted(field);
    for (; m_at < m_text.size(); ++m_at) {
        const QChar c = m_text.at(m_at);
        if (c == separator || c == lineFeed)
            return true;
        if (c == quote || c == carriageReturn)
            return fail("a bare field holds a quote or a carriage return");
        field += c;
    }
    return true;
}

bool CsvReader::readQuoted(QString& field)
{
    for (++m_at; m_at < m_text.size(); ++m_at) {
        const QChar c = m_text.at(m_at);
        if (c != quote) {
            field += c;
            continue;
        }
        ++m_at;
        if (m_at < m_text.size() && m_text.at(m_at) == quote) {
            field += quote;
            continue;
        }
        if (m_at < m_text.size() && m_text.at(m_at) != separator && m_text.at(m_at) != lineFeed)
            return fail("something follows a quoted field");
        return true;
    }
    return fail("a quoted field does not end");
}

bool CsvReader::fail(const char* what)
{
    m_problem = QStringLiteral("Record %1, position %2: %3")
                    .arg(QString::number(m_records.size() + 1), QString::number(m_at),
                         QString::fromLatin1(what));
    return false;
}

QList<QStringList> readWithPython(const QString& file, int linesToSkip, QString& problem)
{
    static const QString program = QStringLiteral(R"(
import csv, json, sys
csv.field_size_limit(1 << 30)
with open(sys.argv[1], encoding="utf-8", newline="") as table:
    for _ in range(int(sys.argv[2])):
        table.readline()
    records = list(csv.reader(table, delimiter=";", strict=True))
json.dump(records, sys.stdout)
)");
    QProcess python;
    python.start(
        QStringLiteral("/usr/bin/python3"),
        {QStringLiteral("-I"), QStringLiteral("-c"), program, file, QString::number(linesToSkip)});
    const bool ended = python.waitForFinished(120000);
    if (!ended || python.exitStatus() != QProcess::NormalExit || python.exitCode() != 0) {
        problem = python.errorString() + QString::fromUtf8(python.readAllStandardError());
        python.kill();
        python.waitForFinished();
        return {};
    }
    const QJsonArray records = QJsonDocument::fromJson(python.readAllStandardOutput()).array();
    QList<QStringList> table;
    for (const auto record : records) {
        QStringList cells;
        const QJsonArray fields = record.toArray();
        for (const auto field : fields)
            cells.append(field.toString());
        table.append(cells);
    }
    return table;
}

} // namespace property
