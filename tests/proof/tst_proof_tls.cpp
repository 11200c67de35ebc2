#include "tests/e2e/desktop.h"
#include "tests/e2e/run_setup.h"
#include "tests/proof/kill_reference.h"
#include "tests/proof/kill_stand.h"
#include "tests/proof/proof_size.h"
#include "tests/proof/tls_front.h"
#include "tests/support/app_test.h"

#include "tools/demo_shop/authorised.h"
#include "tools/demo_shop/invented_shop.h"

#include <QUrl>

#include <algorithm>
#include <memory>
#include <unistd.h>
#include <utility>

using proof::RunStand;
using proof::ServerIdentity;
using proof::TlsAuthority;

namespace {

constexpr int skipped = 77;
const QString here = QStringLiteral("IP:127.0.0.1,DNS:localhost");
const QString elsewhere = QStringLiteral("IP:127.0.0.2,DNS:shop.example");

/// Words before a program's own that let it run with \a folder in the place of the certificates
/// that the system trusts. Nobody else sees that, and the program is none the wiser. The toolkit
/// reads this folder alone: the variables that move OpenSSL's own do not reach it.
QStringList withTrust(const QString& folder)
{
    const QString mounted =
        QStringLiteral("mount --bind \"$1\" /etc/ssl/certs && shift && exec \"$@\"");
    QStringList words {QStringLiteral("unshare")};
    if (geteuid() != 0)
        words << QStringLiteral("--map-root-user");
    words << QStringLiteral("--mount") << QStringLiteral("sh") << QStringLiteral("-c") << mounted
          << QStringLiteral("sh") << folder;
    if (geteuid() != 0) // back to who it was, as the session bus wants it
        words << QStringLiteral("unshare") << QStringLiteral("--map-user=%1").arg(geteuid())
              << QStringLiteral("--map-group=%1").arg(getegid());
    return words;
}

/// Where a plain shop on the same host comes in.
enum class Redirect {
    None,
    ToPlain, ///< asked for the tax rates, the server leads on to http
    FromPlain ///< the address is one with http, where everything is led on to the server
};

struct TlsCase
{
    const char* name;
    ServerIdentity identity;
    bool isAccepted = false;
    bool isTrusted = true; ///< the authority is known to the program
    bool byName = false; ///< asked for as localhost
    /// What the server shows from the second page on; nothing else if empty.
    ServerIdentity later = {};
    Redirect redirect = Redirect::None;
};

demo_shop::ShopAnswer redirectTo(const QString& address, const demo_shop::ShopRequest& request)
{
    demo_shop::ShopAnswer answer;
    answer.status = 302;
    answer.headers = {{"Location", address.toUtf8() + request.rawTarget}};
    return answer;
}

/// What a server was asked for, in order. The toolkit asks anew by itself where it has just closed
/// the connection, so what follows itself counts once.
QList<QByteArray> targetsOf(const demo_shop::ShopServer& shop)
{
    QList<QByteArray> targets;
    for (const demo_shop::ShopRequest& request : shop.requests()) {
        if (targets.isEmpty() || targets.constLast() != request.rawTarget)
            targets.append(request.rawTarget);
    }
    return targets;
}

/// One case with a program of its own.
class TlsTrial
{
public:
    TlsTrial(TlsCase what, const demo_shop::ShopServer::Handler& handler, const QString& trust);

    RunStand& stand() { return m_stand; }

    const TlsCase& what() const { return m_case; }

    const proof::TlsFront& front() const { return *m_front; }

    /// Another server of the same host, which speaks no TLS.
    const demo_shop::ShopServer& plain() const { return m_plain; }

    QString address() const { return m_address; }

    bool begin();
    bool isOver() const;

private:
    demo_shop::ShopAnswer answer(demo_shop::ShopRequest request);

    TlsCase m_case;
    demo_shop::ShopServer::Handler m_handler;
    QString m_address;
    RunStand m_stand;
    demo_shop::ShopServer m_plain;
    std::unique_ptr<proof::TlsFront> m_front;
    bool m_isChanged = false;
};

TlsTrial::TlsTrial(TlsCase what, const demo_shop::ShopServer::Handler& handler,
                   const QString& trust)
    : m_case(std::move(what))
    , m_handler(handler)
    , m_stand([this](const demo_shop::ShopRequest& request) { return answer(request); })
    // It answers as the shop does, so that nothing but the program's own care keeps it out.
    , m_plain(handler)
    , m_front(std::make_unique<proof::TlsFront>(m_case.identity,
                                                quint16(QUrl(m_stand.shop().baseUrl()).port())))
{
    m_address = QStringLiteral("https://%1:%2")
                    .arg(m_case.byName ? QStringLiteral("localhost") : QStringLiteral("127.0.0.1"),
                         QString::number(m_front->port()));
    if (m_case.redirect != Redirect::None && !m_plain.listen())
        qFatal("The plain shop can't listen.");
    if (m_case.redirect == Redirect::FromPlain) {
        m_plain.setHandler([front = m_address](const demo_shop::ShopRequest& request) {
            return redirectTo(front, request);
        });
        m_address = m_plain.baseUrl();
    }
    if (m_case.isTrusted)
        m_stand.setWrapper(withTrust(trust));
}

demo_shop::ShopAnswer TlsTrial::answer(demo_shop::ShopRequest request)
{
    if (m_case.redirect == Redirect::ToPlain && request.path.endsWith(QLatin1String("/v3/taxes")))
        return redirectTo(m_plain.baseUrl(), request);
    // The links of its answers lead through the front.
    request.baseUrl = m_address;
    if (m_case.later.isValid() && request.path.endsWith(QLatin1String("/v3/orders"))
        && !std::exchange(m_isChanged, true)) {
        // Not from within: the request is on one of the connections that go.
        QMetaObject::invokeMethod(
            m_front.get(), [this] { m_front->setIdentity(m_case.later); }, Qt::QueuedConnection);
    }
    return m_handler(request);
}

bool TlsTrial::begin()
{
    return m_front->isListening() && m_stand.layDown(m_address) && m_stand.start();
}

bool TlsTrial::isOver() const
{
    return !m_stand.isOpen() || m_stand.state() == RunStand::Refused;
}

} // namespace

/// The real program before a server that speaks TLS, with certificates of a private authority.
class tst_proof_tls : public QObject
{
    Q_OBJECT

public:
    explicit tst_proof_tls(const StartFolder& folder)
        : m_folder(folder)
    {
    }

    static bool isTrustChangeable()
    {
        const QStringList words = withTrust(QStringLiteral("/tmp")) << QStringLiteral("true");
        return desktop::run(words.first(), words.mid(1)).ok;
    }

private slots:
    void initTestCase();
    void speaksOnlyWithAServerThatProvesWhoItIs();

private:
    QList<TlsCase> cases();
    void judge(TlsTrial& trial);
    void judgeAccepted(TlsTrial& trial);
    void judgeRefused(TlsTrial& trial);
    void judgeRefusedRedirect(TlsTrial& trial);
    void leave(TlsTrial& trial);

    const StartFolder& m_folder;
    const demo_shop::ShopServer::Handler m_handler = demo_shop::authorised(
        demo_shop::InventedShop(12, 7), run_setup::apiKey.toUtf8(), run_setup::apiSecret.toUtf8());
    TlsAuthority m_authority {QStringLiteral("proof")};
    proof::WholeRun m_whole;
    proof::ScreenReader m_reader;
};

void tst_proof_tls::initTestCase()
{
    QVERIFY2(m_authority.problem().isEmpty(), qPrintable(m_authority.problem()));
    QVERIFY(m_reader.connect());
    m_whole = proof::wholeRun(m_folder, m_handler);
    QVERIFY(m_whole.pages.constLast().count('\n') > 12);
}

QList<TlsCase> tst_proof_tls::cases()
{
    const ServerIdentity good = m_authority.identity({here});
    const ServerIdentity expired = m_authority.identity({here, -30, -1});
    QList<TlsCase> list {
        {"good", good, true},
        {"expired", expired},
        {"self-signed", m_authority.selfSigned(here)},
        {"another host's", m_authority.identity({elsewhere})},
        {"https, redirected to http of the same host",
         good,
         false,
         true,
         false,
         {},
         Redirect::ToPlain},
    };
    if (!proof::isFull())
        return list;
    const ServerIdentity lone = m_authority.identity({here, -1, 30, true});
    ServerIdentity whole = lone;
    whole.chain.append(m_authority.between());
    TlsAuthority stranger(QStringLiteral("stranger"));
    list << TlsCase {"good, asked for by name", good, true, true, true}
         << TlsCase {"good, of an authority in between", whole, true}
         << TlsCase {"of an authority in between that is not sent", lone}
         << TlsCase {"of an authority that the program does not know", good, false, false}
         << TlsCase {"of another authority of no standing", stranger.identity({here})}
         << TlsCase {"not yet valid", m_authority.identity({here, 2, 30})}
         << TlsCase {"another host's, asked for by name", m_authority.identity({elsewhere}), false,
                     true, true}
         << TlsCase {"good at first, expired later", good, false, true, false, expired}
         << TlsCase {"http, redirected to https with a good certificate",
                     good,
                     true,
                     true,
                     false,
                     {},
                     Redirect::FromPlain};
    return list;
}

void tst_proof_tls::judgeAccepted(TlsTrial& trial)
{
    QVERIFY2(trial.stand().hasEndedWell(), qPrintable(trial.stand().output()));
    QCOMPARE(trial.stand().exported(trial.address()), m_whole.pages.constLast());
    QVERIFY(trial.front().received().contains("authorization: " + run_setup::authorization())
            || trial.front().received().contains("Authorization: " + run_setup::authorization()));
    QCOMPARE(qsizetype(trial.stand().shop().requests().size()),
             qsizetype(m_whole.requests.constLast()));
    if (trial.what().redirect == Redirect::FromPlain)
        QCOMPARE(targetsOf(trial.plain()), targetsOf(trial.stand().shop()));
}

/// The server itself is trusted, and so are its answers; where they lead is not.
void tst_proof_tls::judgeRefusedRedirect(TlsTrial& trial)
{
    const auto requests = trial.stand().shop().requests();
    QCOMPARE(requests.size(), 9);
    for (const auto& request : requests) {
        QVERIFY2(request.path.endsWith(QLatin1String("/v3/taxes")), qPrintable(request.path));
        QCOMPARE(request.authorization, run_setup::authorization());
    }
    QVERIFY(trial.plain().requests().isEmpty());
    QCOMPARE(trial.plain().connectionCount(), 0);
}

void tst_proof_tls::judgeRefused(TlsTrial& trial)
{
    RunStand& stand = trial.stand();
    QVERIFY2(stand.state() == RunStand::Refused, qPrintable(stand.problem() + stand.output()));
    const bool isRedirect = trial.what().redirect == Redirect::ToPlain;
    const QString box = stand.box();
    const QString expected = QStringLiteral("Export auf Seite 1 nach 3 Versuchen fehlgeschlagen:\n"
                                            "Netzwerkfehler nach 3 Versuchen: ")
        + (isRedirect ? QStringLiteral("Operation canceled")
                      : QStringLiteral("SSL handshake failed"));
    QVERIFY2(box.startsWith(expected), qPrintable(box));
    // Emptied once the box is closed.
    QTRY_COMPARE_WITH_TIMEOUT(stand.exported(trial.address()), QByteArray(""), 10000);
    if (isRedirect) {
        judgeRefusedRedirect(trial);
        return;
    }
    QCOMPARE(trial.front().received(), QByteArray());
    if (trial.what().later.isValid()) {
        QVERIFY(!stand.shop().requests().isEmpty());
        return;
    }
    QCOMPARE(trial.front().attempts(), 9);
    QVERIFY(stand.shop().requests().isEmpty());
}

void tst_proof_tls::leave(TlsTrial& trial)
{
    if (trial.stand().state() != RunStand::Refused)
        return;
    // While the box goes, it still keeps the window behind it from being closed.
    const auto isBoxGone = [&] {
        return std::ranges::none_of(proof::screenWindows(), [&](const auto& window) {
            return window.pid == trial.stand().pid() && window.title == QLatin1String("Fehler:");
        });
    };
    QVERIFY(QTest::qWaitFor(isBoxGone, 30000));
    trial.stand().closeWindow();
    QVERIFY(QTest::qWaitFor([&] { return trial.stand().state() == RunStand::Ended; }, 30000));
    QVERIFY(trial.stand().hasEndedWell());
    QVERIFY(trial.stand().exported(trial.address()).isNull());
}

void tst_proof_tls::judge(TlsTrial& trial)
{
    if (trial.what().isAccepted)
        judgeAccepted(trial);
    else
        judgeRefused(trial);
    if (!QTest::currentTestFailed())
        leave(trial);
    if (QTest::currentTestFailed())
        qWarning("The case was: %s", trial.what().name);
}

void tst_proof_tls::speaksOnlyWithAServerThatProvesWhoItIs()
{
    std::vector<std::unique_ptr<TlsTrial>> trials;
    QList<RunStand*> stands;
    const QList<TlsCase> list = cases();
    QVERIFY2(m_authority.problem().isEmpty(), qPrintable(m_authority.problem()));
    for (const TlsCase& what : list) {
        QVERIFY2(what.identity.isValid(), what.name);
        trials.push_back(std::make_unique<TlsTrial>(what, m_handler, m_authority.trustFolder()));
        stands.append(&trials.back()->stand());
        QVERIFY(trials.back()->begin());
    }
    const auto areOver = [&] {
        return std::ranges::all_of(trials, [](const auto& trial) { return trial->isOver(); });
    };
    const bool isInTime = proof::stepUntil(stands, m_reader, areOver, 120);
    int accepted = 0;
    int refused = 0;
    for (const auto& trial : trials) {
        judge(*trial);
        if (QTest::currentTestFailed())
            break;
        ++(trial->what().isAccepted ? accepted : refused);
    }
    proof::report("tls: certificates tried=" + std::to_string(trials.size()) + " ok="
                  + std::to_string(accepted + refused) + " accepted=" + std::to_string(accepted)
                  + " refused=" + std::to_string(refused));
    QVERIFY(isInTime);
}

int main(int argc, char** argv)
{
    desktop::enterSession(argv);
    {
        const QCoreApplication application(argc, argv);
        if (!tst_proof_tls::isTrustChangeable()) {
            proof::report("tls: SKIP tried=0 ok=0: a process here can't be given certificate "
                          "authorities of its own (mounting is forbidden)");
            return skipped;
        }
    }
    return runAppTest<tst_proof_tls>(argc, argv);
}

#include "tst_proof_tls.moc"
