#include "form/persist/ini_texts.h"

#include <QStringDecoder>

namespace mod_form_qt {

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool isSpace(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

bool isLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

/// Two characters can make one end of a line.
bool isLineEndOfTwo(QByteArrayView text, qsizetype position)
{
    return position + 1 < text.size() && isLineEnd(text[position]) && isLineEnd(text[position + 1])
        && text[position] != text[position + 1];
}

/// -1 if it is no digit of numbers to that base.
int digitOf(char c, int base)
{
    const int digit = c >= '0' && c <= '9' ? c - '0'
        : c >= 'a' && c <= 'f'             ? c - 'a' + 10
        : c >= 'A' && c <= 'F'             ? c - 'A' + 10
                                           : base;
    return digit < base ? digit : -1;
}

/// The lines of a file. A line goes on over its end inside quotes, and ends before a comment.
class IniLines
{
public:
    explicit IniLines(QByteArrayView file)
        : m_file(file)
    {
    }

    /// Takes the next line that has a value.
    /// \return  false behind the last
    bool next(QByteArrayView& value)
    {
        while (m_position < m_file.size()) {
            const QByteArrayView line = takeLine();
            if (m_equals >= 0 && !line.startsWith('[')) {
                value = line.sliced(m_equals + 1);
                return true;
            }
        }
        return false;
    }

private:
    QByteArrayView takeLine()
    {
        skipBlanks();
        if (m_position < m_file.size() && m_file[m_position] == ';')
            skipComment();
        const qsizetype begin = m_position;
        bool quoted = false;
        m_equals = -1;
        for (; m_position < m_file.size(); ++m_position) {
            const char c = m_file[m_position];
            if (!quoted && m_position > begin && (isLineEnd(c) || c == ';'))
                break;
            if (c == '=' && !quoted && m_equals < 0)
                m_equals = m_position - begin;
            else if (c == '"')
                quoted = !quoted;
            else if (c == '\\') // what it stands before neither ends the line nor a quote
                m_position += isLineEndOfTwo(m_file, m_position + 1) ? 2 : 1;
        }
        m_position = qMin(m_position, m_file.size());
        return m_file.sliced(begin, m_position - begin);
    }

    void skipBlanks()
    {
        while (m_position < m_file.size() && isBlank(m_file[m_position]))
            ++m_position;
    }

    void skipComment()
    {
        while (m_position < m_file.size() && m_file[m_position] == ';') {
            while (m_position < m_file.size() && !isLineEnd(m_file[m_position]))
                ++m_position;
            skipBlanks();
        }
    }

    QByteArrayView m_file;
    qsizetype m_position = 0;
    qsizetype m_equals = -1;
};

/// The texts of one value: it is a list if a comma stands outside of quotes.
class IniTexts
{
public:
    explicit IniTexts(QByteArrayView value)
        : m_value(value)
    {
    }

    /// Takes the next text.
    /// \return  false behind the last
    bool next(QString& text)
    {
        if (m_ended)
            return false;
        text.clear();
        skipSpaces();
        bool quoted = false;
        bool everQuoted = false;
        qsizetype kept = 0; // what escapes have written is no blank around the text
        while (m_position < m_value.size()) {
            const char c = m_value[m_position];
            if (c == ',' && !quoted)
                break;
            if (c == '\\') {
                ++m_position;
                text += takeEscape();
                kept = text.size();
            } else if (c == '"') {
                ++m_position;
                quoted = !quoted;
                everQuoted = true;
                if (!quoted)
                    skipSpaces();
            } else {
                text += takePlain();
            }
        }
        while (!everQuoted && text.size() > kept && isSpace(text.back()))
            text.chop(1);
        m_ended = m_position++ >= m_value.size();
        return true;
    }

private:
    void skipSpaces()
    {
        while (m_position < m_value.size() && isSpace(QLatin1Char(m_value[m_position])))
            ++m_position;
    }

    QString takePlain()
    {
        const qsizetype begin = m_position++;
        while (m_position < m_value.size() && m_value[m_position] != '\\'
               && m_value[m_position] != '"' && m_value[m_position] != ',')
            ++m_position;
        return m_utf8(m_value.sliced(begin, m_position - begin));
    }

    QString takeEscape()
    {
        if (m_position >= m_value.size())
            return {};
        const char c = m_value[m_position++];
        constexpr char names[] = "abfnrtv\"?'\\";
        constexpr char meanings[] = "\a\b\f\n\r\t\v\"?'\\";
        for (int i = 0; names[i] != '\0'; ++i) {
            if (c == names[i])
                return QString(QLatin1Char(meanings[i]));
        }
        if (c == 'x')
            return takeNumber(16);
        if (digitOf(c, 8) >= 0) {
            --m_position;
            return takeNumber(8);
        }
        if (isLineEndOfTwo(m_value, m_position - 1))
            ++m_position;
        return {}; // the end of a line, or a character that means nothing there
    }

    /// Of any length, and what is too large for a character is cut.
    QString takeNumber(int base)
    {
        const qsizetype begin = m_position;
        char16_t character = 0;
        for (; m_position < m_value.size() && digitOf(m_value[m_position], base) >= 0; ++m_position)
            character = char16_t(character * base + digitOf(m_value[m_position], base));
        return m_position > begin ? QString(QChar(character)) : QString();
    }

    QByteArrayView m_value;
    qsizetype m_position = 0;
    bool m_ended = false;
    QStringDecoder m_utf8 {QStringDecoder::Utf8};
};

} // namespace

bool visitIniTexts(QByteArrayView file, const std::function<bool(const QString&)>& visit)
{
    IniLines lines(file);
    QByteArrayView value;
    while (lines.next(value)) {
        IniTexts texts(value);
        QString text;
        while (texts.next(text)) {
            if (!visit(text))
                return false;
        }
    }
    return true;
}

} // namespace mod_form_qt
