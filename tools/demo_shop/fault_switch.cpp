#include "tools/demo_shop/fault_switch.h"

#include <QRegularExpression>

namespace demo_shop {

namespace {

struct KindName
{
    const char* name;
    Fault::Kind kind;
};

constexpr KindName kNames[] = {
    {"none", Fault::None},
    {"status", Fault::Status},
    {"drop", Fault::DropBeforeHeaders},
    {"drop-headers", Fault::DropInsideHeaders},
    {"drop-body", Fault::DropInsideBody},
    {"cut-json", Fault::CutJson},
    {"html", Fault::Html},
    {"empty", Fault::EmptyBody},
    {"trickle", Fault::Trickle},
    {"silence", Fault::Silence},
    {"stall", Fault::StallInsideBody},
    {"wrong-length", Fault::WrongLength},
    {"notice", Fault::LeadingNotice},
    {"bom", Fault::ByteOrderMark},
    {"chunked", Fault::Chunked},
};

std::optional<Fault::Kind> kindOf(const QString& name)
{
    for (const KindName& known : kNames) {
        if (name == QLatin1String(known.name))
            return known.kind;
    }
    return std::nullopt;
}

} // namespace

std::optional<PlannedFault> plannedFault(const QString& text)
{
    static const QRegularExpression shape(
        QStringLiteral("^([1-9]\\d{0,8})(\\+?):([a-z-]+)(?::([1-5]\\d\\d))?$"));
    const QRegularExpressionMatch match = shape.match(text);
    const auto kind = kindOf(match.captured(3));
    const bool hasStatus = match.hasCaptured(4);
    if (!match.hasMatch() || !kind || (hasStatus && *kind != Fault::Status))
        return std::nullopt;
    PlannedFault planned;
    planned.number = match.captured(1).toInt();
    planned.andLater = !match.captured(2).isEmpty();
    planned.fault.kind = *kind;
    if (hasStatus)
        planned.fault.status = match.captured(4).toInt();
    return planned;
}

QStringList faultNames()
{
    QStringList names;
    for (const KindName& known : kNames)
        names << QLatin1String(known.name);
    return names;
}

ShopServer::FaultPlan faultPlan(const QList<PlannedFault>& faults)
{
    return [faults](const ShopRequest& request) {
        Fault fault;
        for (const PlannedFault& planned : faults) {
            if (request.number == planned.number
                || (planned.andLater && request.number > planned.number))
                fault = planned.fault;
        }
        return fault;
    };
}

} // namespace demo_shop
