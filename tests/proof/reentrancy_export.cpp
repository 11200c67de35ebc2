#include "tests/proof/reentrancy_export.h"

namespace proof {

namespace {

QByteArray behindFirstLine(const QByteArray& bytes)
{
    return bytes.mid(bytes.indexOf('\n') + 1);
}

} // namespace

ReferenceExport::ReferenceExport(const QByteArray& bytes, const QList<int>& rowsOfOrders,
                                 int ordersOnPage)
    : m_rest(behindFirstLine(bytes))
{
    qsizetype end = m_rest.indexOf('\n') + 1;
    int orders = 0;
    for (const int rows : rowsOfOrders) {
        for (int row = 0; row < rows; ++row) {
            const qsizetype next = m_rest.indexOf('\n', end) + 1;
            if (next == 0)
                return;
            end = next;
        }
        m_orderEnds.insert(end);
        if (++orders == ordersOnPage)
            m_pageEnd = end;
    }
    m_sound = end == m_rest.size() && m_pageEnd > 0;
}

ReferenceExport::State ReferenceExport::stateOf(const QByteArray& bytes,
                                                const QSet<QByteArray>& options) const
{
    if (bytes.isNull())
        return Gone;
    if (bytes.isEmpty())
        return Empty;
    const QByteArray rest = behindFirstLine(bytes);
    if (!options.contains(bytes.left(bytes.indexOf('\n'))) || !m_rest.startsWith(rest)
        || !m_orderEnds.contains(rest.size()))
        return Torn;
    if (rest.size() == m_rest.size())
        return Whole;
    return rest.size() == m_pageEnd ? FirstPage : Part;
}

QString ReferenceExport::name(State state)
{
    switch (state) {
    case Gone:
        return QStringLiteral("gone");
    case Empty:
        return QStringLiteral("empty");
    case Part:
        return QStringLiteral("part");
    case FirstPage:
        return QStringLiteral("first page");
    case Whole:
        return QStringLiteral("whole");
    case Torn:
        break;
    }
    return QStringLiteral("torn");
}

} // namespace proof
