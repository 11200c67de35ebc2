#include "bench/main_form.h"

#include <QMainWindow>
#include <QVBoxLayout>

using namespace mod_form_qt;

namespace bench {

MainFormValues boundValues(const SampleValues& values)
{
    MainFormValues bound;
    bound.mainurl = values.mainurl;
    bound.apiKey = values.apiKey;
    bound.apiSecret = values.apiSecret;
    bound.date_filter_use = values.dateFilterUse;
    bound.date_filter_after = values.dateFilterAfter;
    bound.date_filter_before = values.dateFilterBefore;
    bound.id_cache_use = values.idCacheUse;
    bound.germanized_use = values.germanizedUse;
    bound.germanized_pdf_folder = values.germanizedPdfFolder;
    bound.germanized_overwrite_pdf = values.germanizedOverwritePdf;
    bound.paypal_use = values.paypalUse;
    bound.woocommerce_use = values.woocommerceUse;
    return bound;
}

void buildByEngine(QMainWindow& window, MainFormValues& values, QMap<QString, QVariant>& map)
{
    payment_import::KontenMap konten;
    payment_import::InitDefaultKonten(konten, 0, false, {}, {}, {});
    const LegacyCallback agree = [](const auto&...) { return 1; };
    const MainFormSource source {values,
                                 konten,
                                 3,
                                 false,
                                 QStringLiteral("paypal importieren"),
                                 QStringLiteral("WooCommerce importieren")};
    const INFO::Result form = INFO::getLayout(
        &window, true, QString(), mainFormRows(source, {agree, agree, agree, agree, agree, agree}),
        INFO::MainFlags::fromInt(0x24806), F_DIALOG_TITLE_MINMAX_CLOSE, &map, nullptr, agree,
        &window);
    auto* central = new QWidget(&window);
    auto* layout = new QVBoxLayout(central);
    layout->addLayout(form.layout);
    window.setCentralWidget(central);
}

} // namespace bench
