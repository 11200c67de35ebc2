#include "tools/demo_shop/authorised.h"

#include "tools/demo_shop/rest_answers.h"

#include <utility>

namespace demo_shop {

ShopServer::Handler authorised(ShopServer::Handler handler, const QByteArray& key,
                               const QByteArray& secret)
{
    return [handler = std::move(handler), key, secret](const ShopRequest& request) {
        const QByteArray scheme = "basic ";
        QByteArray pair;
        if (request.authorization.toLower().startsWith(scheme))
            pair = QByteArray::fromBase64(request.authorization.mid(scheme.size()).trimmed());
        const qsizetype colon = pair.indexOf(':');
        if (colon < 0 || pair.left(colon) != key)
            return errorAnswer(401, "woocommerce_rest_cannot_view",
                               QStringLiteral("Sorry, you cannot list resources."));
        if (pair.mid(colon + 1) != secret)
            return errorAnswer(401, "woocommerce_rest_authentication_error",
                               QStringLiteral("Consumer secret is invalid."));
        return handler(request);
    };
}

} // namespace demo_shop
