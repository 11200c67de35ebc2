#include "tools/demo_shop/authorised.h"
#include "tools/demo_shop/fault_switch.h"
#include "tools/demo_shop/invented_shop.h"
#include "tools/demo_shop/recorded_shop.h"
#include "tools/demo_shop/shop_server.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <cstdio>
#include <limits>
#include <optional>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int kBadArguments = 2;

int g_signalPipe[2] = {-1, -1};

// Only calls that a signal handler may make.
void onSignal(int)
{
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(g_signalPipe[0], &byte, 1);
}

bool endOnSignals(QCoreApplication& app)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, g_signalPipe) != 0)
        return false;
    auto* notifier = new QSocketNotifier(g_signalPipe[1], QSocketNotifier::Read, &app);
    QObject::connect(notifier, &QSocketNotifier::activated, &app, [] { QCoreApplication::quit(); });

    struct sigaction action = {};
    action.sa_handler = onSignal;
    action.sa_flags = SA_RESTART;
    return ::sigaction(SIGTERM, &action, nullptr) == 0
        && ::sigaction(SIGINT, &action, nullptr) == 0;
}

struct Settings
{
    qint64 orders = 250;
    quint32 seed = 1;
    QString replayFolder;
    QByteArray key;
    QByteArray secret;
    quint16 port = 0;
    QList<demo_shop::PlannedFault> faults;
    bool deletedProducts = false;
};

class Arguments
{
public:
    Arguments();

    /// Ends the program for --help and for switches that do not exist.
    void parse(const QStringList& arguments);
    /// Nothing if a value is not to be used; error() tells which.
    std::optional<Settings> settings();

    QString error() const { return m_error; }

private:
    template <typename Number>
    bool take(const QCommandLineOption& option, Number lowest, Number highest, Number& target);
    bool takeFaults(Settings& settings);

    QCommandLineParser m_parser;
    QCommandLineOption m_orders {"orders", "Number of invented orders (default 250).", "N"};
    QCommandLineOption m_seed {"seed", "Seed of the invented shop (default 1).", "S"};
    QCommandLineOption m_replay {"replay", "Serve the recordings in DIR instead.", "DIR"};
    QCommandLineOption m_key {"key", "API key to be accepted (default ck_demo).", "K", "ck_demo"};
    QCommandLineOption m_secret {"secret", "API secret to be accepted (default cs_demo).", "S",
                                 "cs_demo"};
    QCommandLineOption m_port {"port", "Port on 127.0.0.1 (default: a free one).", "P"};
    QCommandLineOption m_fault {
        "fault",
        "Spoil the N-th answer, with N+ all from the N-th on; KIND is one of: "
            + demo_shop::faultNames().join(", ") + ". May be given more than once.",
        "N[+]:KIND[:STATUS]"};
    QCommandLineOption m_deleted {"deleted-product",
                                  "Let some orders name a product that is gone (id 0)."};
    QString m_error;
};

Arguments::Arguments()
{
    m_parser.setApplicationDescription("A web shop for demonstrations, on this machine alone.\n"
                                       "The first line of its output is its address.");
    m_parser.addHelpOption();
    m_parser.addOptions({m_orders, m_seed, m_replay, m_key, m_secret, m_port, m_fault, m_deleted});
}

void Arguments::parse(const QStringList& arguments)
{
    if (!m_parser.parse(arguments))
        m_error = m_parser.errorText();
    else if (m_parser.isSet("help"))
        m_parser.showHelp(0);
    else if (!m_parser.positionalArguments().isEmpty())
        m_error = "Unexpected argument '" + m_parser.positionalArguments().first() + "'.";
}

template <typename Number>
bool Arguments::take(const QCommandLineOption& option, Number lowest, Number highest,
                     Number& target)
{
    if (!m_parser.isSet(option))
        return true;
    bool ok = false;
    const qint64 value = m_parser.value(option).toLongLong(&ok);
    if (!ok || value < qint64(lowest) || value > qint64(highest)) {
        m_error = QStringLiteral("'%1' is not a number from %2 to %3 for --%4.")
                      .arg(m_parser.value(option), QString::number(lowest),
                           QString::number(highest), option.names().first());
        return false;
    }
    target = Number(value);
    return true;
}

bool Arguments::takeFaults(Settings& settings)
{
    const QStringList texts = m_parser.values(m_fault);
    for (const QString& text : texts) {
        const auto fault = demo_shop::plannedFault(text);
        if (!fault) {
            m_error =
                QStringLiteral("'%1' is not a fault; --help shows how they are written.").arg(text);
            return false;
        }
        settings.faults << *fault;
    }
    return true;
}

std::optional<Settings> Arguments::settings()
{
    Settings settings;
    const bool ok = m_error.isEmpty() && take<qint64>(m_orders, 0, 10'000'000, settings.orders)
        && take<quint32>(m_seed, 0, std::numeric_limits<quint32>::max(), settings.seed)
        && take<quint16>(m_port, 0, std::numeric_limits<quint16>::max(), settings.port)
        && takeFaults(settings);
    if (!ok)
        return std::nullopt;
    settings.replayFolder = m_parser.value(m_replay);
    if (m_parser.isSet(m_replay) && settings.replayFolder.isEmpty()) {
        m_error = "--replay needs a folder.";
        return std::nullopt;
    }
    settings.key = m_parser.value(m_key).toUtf8();
    settings.secret = m_parser.value(m_secret).toUtf8();
    settings.deletedProducts = m_parser.isSet(m_deleted);
    return settings;
}

int fail(const QString& message)
{
    std::fprintf(stderr, "demo_shop: %s\n", qPrintable(message));
    return kBadArguments;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName("demo_shop");

    Arguments arguments;
    arguments.parse(QCoreApplication::arguments());
    const std::optional<Settings> settings = arguments.settings();
    if (!settings)
        return fail(arguments.error());

    demo_shop::InventedShop invented(settings->orders, settings->seed);
    invented.setDeletedProducts(settings->deletedProducts);
    demo_shop::ShopServer::Handler handler = invented;
    if (!settings->replayFolder.isEmpty()) {
        const demo_shop::RecordedShop recorded(settings->replayFolder);
        if (!recorded.isValid())
            return fail(recorded.errorString());
        handler = recorded;
    }

    demo_shop::ShopServer server(
        demo_shop::authorised(std::move(handler), settings->key, settings->secret));
    server.setRecording(false);
    server.setFaultPlan(demo_shop::faultPlan(settings->faults));
    if (!endOnSignals(app))
        return fail("Signals cannot be handled.");
    if (!server.listen(settings->port))
        return fail(QStringLiteral("Port %1: %2").arg(settings->port).arg(server.errorString()));

    std::printf("%s\n", qPrintable(server.baseUrl()));
    std::fflush(stdout);
    return QCoreApplication::exec();
}
