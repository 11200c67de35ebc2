#include "tools/demo_shop/spoilt_answer.h"

namespace demo_shop {

namespace {

constexpr char kPage[] = "<!DOCTYPE html>\n<html lang=\"de\"><head><title>Wartung</title></head>\n"
                         "<body><h1>Kurz nicht verf&uuml;gbar</h1></body></html>\n";

constexpr char kNotice[] = "<br />\n<b>Notice</b>:  Undefined index: woo in "
                           "<b>/var/www/html/wp-content/plugins/beispiel/beispiel.php</b> "
                           "on line <b>42</b><br />\n";

} // namespace

ShopAnswer spoilt(ShopAnswer answer, const Fault& fault)
{
    switch (fault.kind) {
    case Fault::Status:
        answer.status = fault.status;
        break;
    case Fault::CutJson:
        answer.body.truncate(answer.body.size() / 2);
        break;
    case Fault::Html:
        answer.status = 200;
        answer.contentType = "text/html; charset=UTF-8";
        answer.body = kPage;
        break;
    case Fault::EmptyBody:
        answer.status = 200;
        answer.body.clear();
        break;
    case Fault::LeadingNotice:
        answer.body.prepend(kNotice);
        break;
    case Fault::ByteOrderMark:
        answer.body.prepend("\xEF\xBB\xBF");
        break;
    default:
        break;
    }
    return answer;
}

bool isOnTheWire(Fault::Kind kind)
{
    switch (kind) {
    case Fault::DropBeforeHeaders:
    case Fault::DropInsideHeaders:
    case Fault::DropInsideBody:
    case Fault::Trickle:
    case Fault::Silence:
    case Fault::StallInsideBody:
    case Fault::WrongLength:
    case Fault::Chunked:
        return true;
    default:
        return false;
    }
}

} // namespace demo_shop
