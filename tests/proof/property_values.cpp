#include "tests/proof/property_values.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTimeZone>

namespace property {

namespace {

const QStringList& pieces()
{
    // The invisible mark U+FEFF follows a letter, since the toolkit's JSON reader drops one that a
    // text begins with.
    static const QStringList list {
        QStringLiteral("\""),        QStringLiteral(";"),       QStringLiteral("\n"),
        QStringLiteral("\r"),        QStringLiteral("\r\n"),    QStringLiteral(","),
        QStringLiteral("\t"),        QStringLiteral("Müller"),  QStringLiteral("ß"),
        QStringLiteral("€"),         QStringLiteral("İıIi"),    QStringLiteral(" "),
        QStringLiteral("'"),         QStringLiteral("="),       QStringLiteral("%1"),
        QStringLiteral("|[]"),       QStringLiteral("~"),       QStringLiteral("\\"),
        QStringLiteral("\"\""),      QStringLiteral("\";\""),   QString(QChar(0x2028)),
        QString(QChar(0x85)),        QStringLiteral("x\ufeff"), QString(QChar(0)),
        QStringLiteral("日本語"),    QStringLiteral("😀"),       QStringLiteral("e\u0301"),
        QStringLiteral("\u202eabc"), QStringLiteral("12,5"),    QStringLiteral("1.234,56"),
        QStringLiteral("-1"),        QStringLiteral("Artikel"), QStringLiteral("\x7f"),
    };
    return list;
}

} // namespace

QByteArray quoted(const QString& text)
{
    const QByteArray list = QJsonDocument(QJsonArray {text}).toJson(QJsonDocument::Compact);
    return list.mid(1, list.size() - 2);
}

Value awkwardText(Random& random)
{
    QString text;
    for (int count = random.below(6); count > 0; --count)
        text += random.oneOf(pieces());
    QByteArray json = quoted(text);
    if (random.percent(30)) {
        // The other way to write a letter, which is the one that shops use.
        json = "\"";
        for (const QChar letter : std::as_const(text))
            json += "\\u" + QByteArray::number(letter.unicode(), 16).rightJustified(4, '0');
        json += '"';
    }
    return {json, text};
}

Value awkwardNumber(Random& random)
{
    struct Known
    {
        const char* json;
        const char* cell;
    };

    static const Known known[] = {
        {"0", "0"},
        {"5.0", "5"},
        {"1e3", "1000"},
        {"5.10", "5.1"},
        {"0.1", "0.1"},
        {"-0.35", "-0.35"},
        {"1.1e-7", "1.1e-07"},
        {"1e21", "1e+21"},
        {"9223372036854775807", "9223372036854775807"},
        {"1234567.89", "1234567.89"},
        {"0.30000000000000004", "0.30000000000000004"},
        {"true", "true"},
        {"false", "false"},
        {"null", ""},
        {"\"12.50\"", "12.50"},
        {"\"1.234,56\"", "1.234,56"},
        {"\"\"", ""},
    };
    const Known& one = random.oneOf(known);
    return {one.json, QString::fromLatin1(one.cell)};
}

Value plainText(const QString& text)
{
    return {quoted(text), text};
}

Value wholeNumber(int number)
{
    const QString text = QString::number(number);
    return {text.toLatin1(), text};
}

Value amount(qint64 cents)
{
    const qint64 size = qAbs(cents);
    const QString text = QStringLiteral("%1%2.%3").arg(
        cents < 0 ? QStringLiteral("-") : QString(), QString::number(size / 100),
        QString::number(size % 100).rightJustified(2, QLatin1Char('0')));
    return plainText(text);
}

Value date(Random& random, const ClockFilter& useClock)
{
    static const QTimeZone germany("Europe/Berlin");
    if (random.percent(3))
        return {"null", QString()};
    if (random.percent(3))
        return {"\"gestern\"", QString()};
    QDateTime utc;
    do {
        // From 2005 to 2036.
        const qint64 seconds = 1104537600 + qint64(random.next() % 1'000'000'000ULL);
        utc = QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC);
        if (random.percent(10))
            utc.setTime(QTime(0, 0));
    } while (useClock && !useClock(utc));

    const auto text = [](const QDateTime& time) {
        return time.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss"));
    };
    const QString local = text(utc.toTimeZone(germany));
    if (random.percent(5))
        return {quoted(text(utc) + QStringLiteral(".250")), local};
    if (random.percent(5))
        return {quoted(text(utc) + QLatin1Char('Z')), local + QLatin1Char('Z')};
    if (utc.time() == QTime(0, 0) && random.percent(50))
        return {quoted(text(utc).left(10)), local};
    return {quoted(text(utc)), local};
}

void ObjectText::add(const QString& key, const Value& value, const QString& column)
{
    add(key, value.json);
    if (!column.isEmpty())
        m_cells.insert(column, value.cell);
}

void ObjectText::add(const QString& key, const QByteArray& json)
{
    m_members.append(quoted(key) + ':' + json);
}

} // namespace property
