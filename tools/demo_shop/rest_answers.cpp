#include "tools/demo_shop/rest_answers.h"

#include "tools/demo_shop/json_writer.h"

#include <limits>
#include <optional>

namespace demo_shop {

namespace {

std::optional<int> numberOf(const ShopRequest& request, const QString& key, int missing, int limit)
{
    const QString text = request.queryValue(key);
    if (text.isEmpty())
        return missing;
    bool ok = false;
    const int number = text.toInt(&ok);
    if (!ok || number < 1 || number > limit)
        return std::nullopt;
    return number;
}

} // namespace

ShopAnswer errorAnswer(int status, const char* code, const QString& message)
{
    JsonWriter json;
    json.object();
    json.text("code", code);
    json.text("message", message);
    json.object("data");
    json.number("status", status);
    json.end();
    json.end();

    ShopAnswer answer;
    answer.status = status;
    answer.body = json.bytes();
    return answer;
}

ShopAnswer noRouteAnswer()
{
    return errorAnswer(404, "rest_no_route",
                       QStringLiteral("No route was found matching the URL and request method."));
}

ShopAnswer badParameterAnswer(const QString& name)
{
    return errorAnswer(400, "rest_invalid_param",
                       QStringLiteral("Invalid parameter(s): %1").arg(name));
}

ShopAnswer listAnswer(QByteArray body, qint64 total, int perPage)
{
    ShopAnswer answer;
    answer.body = std::move(body);
    answer.headers = {{"X-WP-Total", QByteArray::number(total)},
                      {"X-WP-TotalPages", QByteArray::number((total + perPage - 1) / perPage)}};
    return answer;
}

std::variant<Page, ShopAnswer> pageOf(const ShopRequest& request)
{
    const QString perPageKey = QStringLiteral("per_page");
    const QString pageKey = QStringLiteral("page");
    const auto perPage = numberOf(request, perPageKey, 10, 100);
    if (!perPage)
        return badParameterAnswer(perPageKey);
    const auto number = numberOf(request, pageKey, 1, std::numeric_limits<int>::max());
    if (!number)
        return badParameterAnswer(pageKey);
    return Page {*number, *perPage};
}

} // namespace demo_shop
