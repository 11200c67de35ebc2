#include "tests/app/run_fixture.h"

#include "accounting/order_taxes.h"
#include "app/globals.h"
#include "form/mod_form_qt.h"

#include <QDir>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

namespace {

const int iPageSize = 100;
const int iNeverMs = 3600000;

void resetGlobals()
{
    nSKRDefault = 3;
    bFirmaKU = false;
    t_ebay_vr_konto = {1362, 1462, 707};
    t_paypal_konto = {1220, 1820, 955};
    t_woocommerce_konto = {1361, 1461, 706};
    globalTaxRates.clear();
    payment_title_set.clear();
    importHash.clear();
}

QByteArray json(const QJsonArray& array)
{
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

QJsonArray slice(const QJsonArray& all, int page)
{
    QJsonArray part;
    const qsizetype first = static_cast<qsizetype>(page - 1) * iPageSize;
    for (qsizetype i = first; i < qMin(first + iPageSize, all.size()); ++i)
        part.append(all.at(i));
    return part;
}

} // namespace

RunFixture::RunFixture(const StartFolder& startFolder)
    : folder(startFolder)
    , shop([this](const demo_shop::ShopRequest& request) { return answerTo(request); })
{
    if (!shop.listen())
        qFatal("The shop can't listen.");
}

RunFixture::~RunFixture() = default;

MainWindow& RunFixture::start(const QMap<QString, QVariant>& options, const QStringList& hostLines)
{
    window.reset();
    resetGlobals();
    QFile::remove(folder.iniFile());
    QFile::remove(folder.exportFile());
    QDir(folder.pdfFolder()).removeRecursively();
    folder.writeHostFile(hostLines.isEmpty() ? folder.hostLines() : hostLines);
    folder.saveOptions(options);
    makeWindow();
    // Not among the saved options, so that a start without a secret store shows no boxes.
    if (!options.contains(QStringLiteral("mainurl")))
        mod_form_qt::INFO::setData(&window->optionsMap, "mainurl", shop.baseUrl(), false);
    return *window;
}

void RunFixture::enterCredentials() const
{
    for (const QString& key : {keyNameAPI, keyNameSECRET})
        mod_form_qt::INFO::setData(&window->optionsMap, key, QStringLiteral("entered"), false);
}

MainWindow& RunFixture::restart()
{
    window.reset();
    resetGlobals();
    makeWindow();
    return *window;
}

void RunFixture::makeWindow()
{
    window = std::make_unique<MainWindow>(nullptr);
    // The window asks for the end of the program with its last window, which here is the test's.
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

void RunFixture::runOnePass()
{
    window->Reset();
    keepTicksAway();
    window->OnTimer();
}

void RunFixture::keepTicksAway()
{
    // Running, since a pass that fails starts a ticker that does not; too slow to come in between.
    window->runTimer->start(iNeverMs);
}

void RunFixture::runToEnd()
{
    window->Reset();
    tickToEnd();
}

void RunFixture::tickToEnd()
{
    keepTicksAway();
    // Three passes a page and one tick for the end, with room for any run of a test.
    for (int tick = 0; tick < 400; ++tick) {
        const bool ended = window->bFinished;
        window->OnTimer();
        if (ended)
            return;
    }
    QFAIL("The run does not end.");
}

void RunFixture::serveOrders(const QJsonArray& orders)
{
    m_orders = orders;
}

void RunFixture::serveTaxes(const QJsonArray& taxes)
{
    m_taxes = taxes;
}

void RunFixture::serve(const QString& path, const QByteArray& body, int status)
{
    m_answers.insert(path, {status, body});
}

void RunFixture::during(const QByteArray& part, std::function<void()> action)
{
    m_actions.append({part, std::move(action)});
}

void RunFixture::takeAction(const demo_shop::ShopRequest& request)
{
    for (qsizetype i = 0; i < m_actions.size(); ++i) {
        if (request.rawTarget.contains(m_actions.at(i).part)) {
            // Taken out first: the action may wait, and another request may arrive meanwhile.
            m_actions.takeAt(i).action();
            return;
        }
    }
}

demo_shop::ShopAnswer RunFixture::answerTo(const demo_shop::ShopRequest& request)
{
    takeAction(request);
    demo_shop::ShopAnswer answer;
    const int page = qMax(1, request.queryValue(QStringLiteral("page")).toInt());
    const auto own = m_answers.constFind(request.path);
    if (own != m_answers.constEnd()) {
        answer.status = own->first;
        answer.body = own->second;
    } else if (request.path.endsWith(QLatin1String("/taxes"))) {
        answer.body = json(slice(m_taxes, page));
    } else if (request.path.endsWith(QLatin1String("/v3/orders"))) {
        answer.body = json(slice(m_orders, page));
    } else if (request.path.contains(QLatin1String("/products/"))) {
        answer.body = R"({"virtual":false,"downloadable":false})";
    } else {
        answer.body = "[]";
    }
    return answer;
}

QStringList RunFixture::targets() const
{
    QStringList list;
    for (const auto& request : shop.requests())
        list.append(QString::fromLatin1(request.rawTarget));
    return list;
}

QStringList RunFixture::paths() const
{
    QStringList list;
    for (const auto& request : shop.requests())
        list.append(request.path);
    return list;
}

qsizetype RunFixture::countOf(const QString& part) const
{
    return targets().filter(part).size();
}

bool RunFixture::showsStatus(const QString& text) const
{
    return window && window->statusLabel
        && window->statusLabel->text()
        == QLatin1String("<br><b>") + text + QLatin1String("</b><br>");
}

QPushButton* RunFixture::button(const QString& text) const
{
    if (!window)
        return nullptr;
    const auto buttons = window->findChildren<QPushButton*>();
    for (QPushButton* candidate : buttons)
        if (candidate->text() == text)
            return candidate;
    return nullptr;
}

QPushButton* RunFixture::startButton() const
{
    return button(QStringLiteral("Daten vom Server abrufen"));
}

QPushButton* RunFixture::okButton() const
{
    return button(QStringLiteral("Import starten"));
}
