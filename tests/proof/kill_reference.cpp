#include "tests/proof/kill_reference.h"

#include "tests/app/run_fixture.h"
#include "tests/e2e/run_setup.h"
#include "tests/proof/kill_moment.h"
#include "tests/proof/kill_stand.h"

#include <QDir>

namespace proof {

QMap<QString, QVariant> WholeRun::comparable(QMap<QString, QVariant> options)
{
    options.remove(QStringLiteral("mainurl"));
    options.remove(QStringLiteral("germanized_pdf_folder"));
    return options;
}

WholeRun wholeRun(const StartFolder& folder, const demo_shop::ShopServer::Handler& handler)
{
    WholeRun whole;
    RunFixture fixture(folder);
    fixture.shop.setHandler(handler);
    const QString address = fixture.shop.baseUrl();
    if (!run_setup::storeSecrets(address))
        return whole;
    const auto takePage = [&](int requests) {
        const QByteArray bytes = folder.exported();
        whole.pages.append(RunStand::anonymous(bytes, address, folder));
        whole.sizes.append(bytes.size());
        whole.requests.append(requests);
    };
    fixture.start(RunStand::settings(address, folder));
    QDir().mkpath(folder.pdfFolder());
    MainWindow& window = fixture.restart();
    FileEventCount events(folder.path(QStringLiteral(".")));
    window.SaveConfig(false);
    whole.options = WholeRun::comparable(folder.savedOptions());
    QObject::connect(&fixture.shop, &demo_shop::ShopServer::requestSeen, &window, [&](int number) {
        const auto request = fixture.shop.requests().constLast();
        if (request.path.endsWith(QLatin1String("/v3/orders")))
            takePage(number - 1);
    });
    fixture.runToEnd();
    takePage(int(fixture.shop.requests().size()));
    whole.fileEvents = events.take();
    return whole;
}

} // namespace proof
