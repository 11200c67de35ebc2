#pragma once

/// Small answers that go with the one under attack.
namespace sample_answers {

/// One refunded order with two rates, shipping, a fee and two lines.
inline constexpr char order[] = R"([{"id":46,"status":"refunded","number":"46",
"date_created":"2026-03-06T18:30:00","date_created_gmt":"2026-03-06T17:30:00","total":"70.90",
"payment_method":"ppcp-gateway","payment_method_title":"PayPal",
"billing":{"last_name":"Weber","email":"jana@kunde.example"},
"meta_data":[{"key":"_ppcp_paypal_fees","value":{"paypal_fee":{"value":"1.12"}}}],
"line_items":[{"id":55,"product_id":15,"quantity":1,"total":"53.78","total_tax":"10.22",
"taxes":[{"id":1,"total":"10.22"}]},{"id":56,"product_id":14,"quantity":1,"total":"1.87",
"total_tax":"0.13","taxes":[{"id":2,"total":"0.13"}]}],
"tax_lines":[{"rate_id":1,"rate_percent":19,"tax_total":"10.22","shipping_tax_total":"0.78"}],
"shipping_lines":[{"total":"4.12","total_tax":"0.78","taxes":[{"id":1,"total":"0.78"}]}],
"refunds":[{"id":51,"total":"-64.00"}]}])";

/// What it has in the export without its refunds: a row for each of its two lines.
inline constexpr int orderRows = 2;

/// A refund by amount whose lines are zero.
inline constexpr char refund[] = R"([{"id":51,"date_created":"2026-03-07T19:03:00",
"date_created_gmt":"2026-03-07T18:03:00","amount":"64.00","line_items":[{"id":71,"product_id":15,
"total":"0.00","total_tax":"0.00","taxes":[{"id":1,"total":""}]}],"shipping_lines":[],
"tax_lines":[]}])";

/// An invoice with a file.
inline constexpr char invoice[] = R"([{"number":"1","order_number":"46",
"formatted_number":"R26-00001","date_created_gmt":"2026-03-06T17:40:00",
"_links":{"pdf":[{"href":"http://shop.example/wp-json/wc/v3/invoices/501/pdf"}]}}])";

} // namespace sample_answers
