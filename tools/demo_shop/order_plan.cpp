#include "tools/demo_shop/order_plan.h"

#include "tools/demo_shop/counter_random.h"
#include "tools/demo_shop/shop_time.h"

#include <algorithm>

namespace demo_shop {

namespace {

constexpr quint32 kRoleStream = 1;
constexpr quint32 kDateStream = 2;

constexpr qint64 kSixHours = 21600;
constexpr qint64 kYear = qint64(365) * 86400;

bool isListed(Role role)
{
    return role <= Role::Plain;
}

} // namespace

QString statusOf(Role role)
{
    switch (role) {
    case Role::RefundFullByLines:
    case Role::RefundFullWithZeroLines:
    case Role::RefundByStatusChange:
        return QStringLiteral("refunded");
    case Role::Processing:
        return QStringLiteral("processing");
    case Role::Pending:
        return QStringLiteral("pending");
    case Role::Cancelled:
        return QStringLiteral("cancelled");
    default:
        return QStringLiteral("completed");
    }
}

OrderPlan::OrderPlan(qint64 listed, quint32 seed, QDate firstDay)
    : m_seed(seed)
    , m_start(startOfGermanDay(firstDay))
{
    // The shop ends with the last listed order, also in the middle of a block.
    qint64 left = listed % kListedPerBlock;
    m_total = listed / kListedPerBlock * kBlock;
    const Block last = block(listed / kListedPerBlock);
    for (const Role role : last) {
        if (left == 0)
            break;
        ++m_total;
        left -= isListed(role) ? 1 : 0;
    }
    // A year's orders, but not more than one in 20 seconds and not less than four a day.
    m_step = std::clamp<qint64>(kYear / std::max<qint64>(1, m_total), 20, kSixHours);
}

OrderPlan::Block OrderPlan::block(qint64 number) const
{
    Block roles;
    roles.fill(Role::Plain);
    for (int i = 0; i < int(Role::Plain); ++i)
        roles[std::size_t(i)] = Role(i);
    for (int i = 0; i < kBlock - kListedPerBlock; ++i)
        roles[std::size_t(kListedPerBlock) + std::size_t(i)] = Role(int(Role::Processing) + i);

    CounterRandom random(m_seed, kRoleStream, number);
    for (int i = kBlock - 1; i > 0; --i)
        std::swap(roles[std::size_t(i)], roles[std::size_t(random.below(i + 1))]);
    return roles;
}

Role OrderPlan::roleOf(qint64 index) const
{
    return block(index / kBlock)[std::size_t(index % kBlock)];
}

qint64 OrderPlan::createdAt(qint64 index) const
{
    CounterRandom random(m_seed, kDateStream, index);
    return m_start + index * m_step + random.below(int(m_step));
}

qint64 OrderPlan::countBefore(qint64 utc) const
{
    if (m_total == 0 || utc <= m_start)
        return 0;
    // Each order lies in a step of its own, so only the step of the moment itself is open.
    const qint64 index = (utc - m_start) / m_step;
    if (index >= m_total)
        return m_total;
    return index + (createdAt(index) < utc ? 1 : 0);
}

qint64 OrderPlan::countUpTo(qint64 index, const QStringList& states) const
{
    const auto counts = [&states](Role role) { return states.contains(statusOf(role)); };
    const Block open = block(index / kBlock);
    const auto perBlock = std::count_if(open.begin(), open.end(), counts);
    return index / kBlock * perBlock
        + std::count_if(open.begin(), open.begin() + index % kBlock, counts);
}

qint64 OrderPlan::indexOf(qint64 place, const QStringList& states) const
{
    const auto counts = [&states](Role role) { return states.contains(statusOf(role)); };
    const Block any = block(0);
    const qint64 perBlock = std::count_if(any.begin(), any.end(), counts);
    if (perBlock == 0)
        return m_total;
    const qint64 number = place / perBlock;
    qint64 left = place % perBlock;
    const Block open = block(number);
    for (int i = 0; i < kBlock; ++i) {
        if (counts(open[std::size_t(i)]) && left-- == 0)
            return number * kBlock + i;
    }
    return m_total;
}

} // namespace demo_shop
