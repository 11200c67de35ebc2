#pragma once

#include <QByteArray>
#include <QList>
#include <QSet>
#include <QString>

namespace proof {

/// The export of a run that nobody disturbed, and what a disturbed one may leave of it.
class ReferenceExport
{
public:
    enum State {
        Gone, ///< no file
        Empty,
        Part, ///< whole orders, but neither a whole page nor the whole run
        FirstPage, ///< whole pages, but not all of them
        Whole,
        Torn, ///< anything else
    };

    /// \param bytes          the whole export
    /// \param rowsOfOrders   rows of each order, in the order of the export
    /// \param ordersOnPage   orders of the first of the two pages
    ReferenceExport(const QByteArray& bytes, const QList<int>& rowsOfOrders, int ordersOnPage);

    /// False if the rows told do not add up to the export.
    bool isSound() const { return m_sound; }

    /// \param options  every text that the first line may hold
    State stateOf(const QByteArray& bytes, const QSet<QByteArray>& options) const;

    static QString name(State state);

private:
    QByteArray m_rest; ///< behind the first line, which tells the options
    QSet<qsizetype> m_orderEnds;
    qsizetype m_pageEnd = 0;
    bool m_sound = false;
};

} // namespace proof
