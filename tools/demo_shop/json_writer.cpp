#include "tools/demo_shop/json_writer.h"

#include <QLocale>

namespace demo_shop {

namespace {

void appendUnit(QByteArray& out, char16_t unit)
{
    static const char digits[] = "0123456789abcdef";
    out += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4)
        out += digits[(unit >> shift) & 0xF];
}

void appendCharacter(QByteArray& out, char16_t unit)
{
    switch (unit) {
    case u'"':
    case u'\\':
    case u'/':
        out += '\\';
        out += char(unit);
        break;
    case u'\n':
        out += "\\n";
        break;
    case u'\r':
        out += "\\r";
        break;
    case u'\t':
        out += "\\t";
        break;
    default:
        if (unit >= 0x20 && unit < 0x7F)
            out += char(unit);
        else
            appendUnit(out, unit);
    }
}

} // namespace

QByteArray amountText(qint64 cents)
{
    const qint64 size = cents < 0 ? -cents : cents;
    QByteArray text = cents < 0 ? "-" : "";
    text += QByteArray::number(size / 100) + '.';
    return text + QByteArray::number(size % 100).rightJustified(2, '0');
}

void JsonWriter::open(const char* key)
{
    if (!m_first)
        m_out += ',';
    m_first = false;
    if (key) {
        m_out += '"';
        m_out += key;
        m_out += "\":";
    }
}

void JsonWriter::object(const char* key)
{
    open(key);
    m_out += '{';
    m_ends += '}';
    m_first = true;
}

void JsonWriter::array(const char* key)
{
    open(key);
    m_out += '[';
    m_ends += ']';
    m_first = true;
}

void JsonWriter::end()
{
    m_out += m_ends.back();
    m_ends.chop(1);
    m_first = false;
}

void JsonWriter::text(const char* key, QStringView value)
{
    open(key);
    quoted(value);
}

void JsonWriter::text(const char* key, const char* ascii)
{
    open(key);
    m_out += '"';
    for (const char* c = ascii; *c != '\0'; ++c)
        appendCharacter(m_out, uchar(*c));
    m_out += '"';
}

void JsonWriter::amount(const char* key, qint64 cents)
{
    open(key);
    m_out += '"' + amountText(cents) + '"';
}

void JsonWriter::number(const char* key, qint64 value)
{
    open(key);
    m_out += QByteArray::number(value);
}

void JsonWriter::real(const char* key, double value)
{
    open(key);
    m_out += QByteArray::number(value, 'g', QLocale::FloatingPointShortest);
}

void JsonWriter::flag(const char* key, bool value)
{
    open(key);
    m_out += value ? "true" : "false";
}

void JsonWriter::null(const char* key)
{
    open(key);
    m_out += "null";
}

void JsonWriter::emptyArray(const char* key)
{
    array(key);
    end();
}

void JsonWriter::raw(const char* key, const QByteArray& json)
{
    open(key);
    m_out += json;
}

void JsonWriter::quoted(QStringView value)
{
    m_out += '"';
    for (const QChar c : value)
        appendCharacter(m_out, c.unicode());
    m_out += '"';
}

} // namespace demo_shop
