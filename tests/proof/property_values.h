#pragma once

#include "tests/proof/property_shop.h"

#include "tools/demo_shop/counter_random.h"

/// What random orders are put together from.
namespace property {

using Random = demo_shop::CounterRandom;

/// A value as the shop writes it, and the text that has to reach the export.
struct Value
{
    QByteArray json;
    QString cell;
};

/// A text with whatever may hurt a table: quotes, separators, line ends, letters of other scripts.
Value awkwardText(Random& random);
/// A number, switch, null or numeric text.
Value awkwardNumber(Random& random);
/// A text as it is.
Value plainText(const QString& text);
Value wholeNumber(int number);
/// "12.50": how a shop writes cents.
Value amount(qint64 cents);

/// A moment in UTC as a shop writes it, in one of the forms that have no zone; its cell is the wall
/// clock of Germany.
Value date(Random& random, const ClockFilter& useClock);

/// Joins the members of a JSON object while keeping what came out as cells.
class ObjectText
{
public:
    /// Adds a member; its cell goes under \a column, and nowhere if that is empty.
    void add(const QString& key, const Value& value, const QString& column);
    /// Adds a member without a cell.
    void add(const QString& key, const QByteArray& json);

    /// Keeps a cell that came out of a nested object.
    void keep(const QString& column, const QString& cell) { m_cells.insert(column, cell); }

    QByteArray json() const { return '{' + m_members.join(',') + '}'; }

    const Cells& cells() const { return m_cells; }

private:
    QByteArrayList m_members;
    Cells m_cells;
};

/// A text in quotes, escaped.
QByteArray quoted(const QString& text);

} // namespace property
