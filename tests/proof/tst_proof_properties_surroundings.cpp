#include "tests/proof/proof_size.h"
#include "tests/proof/property_run.h"
#include "tests/proof/property_shop.h"
#include "tests/support/app_test.h"

#include "tools/demo_shop/invented_shop.h"

#include <QProcess>
#include <QTimeZone>

#include <optional>

using property::Outcome;
using property::Surroundings;

namespace {

QString s(const char* text)
{
    return QString::fromUtf8(text);
}

/// Zones with all kinds of offsets and of clock changes.
const QList<const char*>& zones()
{
    static const QList<const char*> sample {"Pacific/Kiritimati", "America/St_Johns"};
    static const QList<const char*> all {
        "Pacific/Kiritimati", "Europe/Berlin",     "America/St_Johns",
        "America/New_York",   "America/Sao_Paulo", "Asia/Kathmandu",
        "Asia/Kolkata",       "Asia/Tehran",       "Australia/Lord_Howe",
        "Pacific/Apia",       "Pacific/Chatham",   "Pacific/Pago_Pago",
        "Africa/Casablanca",  "Europe/Dublin",     "Antarctica/Troll",
        "Etc/GMT+12",         "Europe/Istanbul",   "UTC"};
    return proof::isFull() ? all : sample;
}

/// The wall clocks of a zone around its clock changes, between which dates are left out.
struct Night
{
    qint64 from;
    qint64 to;
};

QList<Night> nights()
{
    constexpr qint64 reach = 3 * 3600; // as far as the German zone is ahead of UTC, and an hour
    const QDateTime first(QDate(2004, 1, 1), QTime(0, 0), Qt::UTC);
    const QDateTime last(QDate(2038, 1, 1), QTime(0, 0), Qt::UTC);
    QList<Night> list;
    for (const char* name : zones()) {
        const QTimeZone zone(name);
        int before = zone.offsetFromUtc(first);
        const auto changes = zone.transitions(first, last);
        for (const QTimeZone::OffsetData& change : changes) {
            const int after = change.offsetFromUtc;
            const qint64 moment = change.atUtc.toSecsSinceEpoch();
            if (after != before)
                list.append(
                    {moment + qMin(before, after) - reach, moment + qMax(before, after) + reach});
            before = after;
        }
    }
    return list;
}

} // namespace

/// The same orders exported on machines of other languages and zones.
class tst_proof_properties_surroundings : public QObject
{
    Q_OBJECT

public:
    explicit tst_proof_properties_surroundings(const StartFolder& folder)
        : m_folder(folder)
    {
    }

private slots:
    void initTestCase();
    void theSameInputGivesTheSameBytes();
    void noCellDependsOnTheZone();
    void noCellDependsOnTheLocale();
    void noCellDependsOnALocaleOfTheCLibrary();
    void cleanupTestCase();

private:
    Outcome runIn(const Surroundings& surroundings);
    void compare(const Surroundings& surroundings, const QString& name, const QString& sign = {});
    QString compileLocale(const QString& name, const QString& charset);

    const StartFolder& m_folder;
    demo_shop::ShopServer m_server {{}};
    quint32 m_seed = 0;
    QByteArray m_expected;
    int m_tried = 0;
    int m_same = 0;
};

void tst_proof_properties_surroundings::initTestCase()
{
    m_seed = property::seed();
    qInfo("LEDORA_SEED=%u", m_seed);
    const QList<Night> left = nights();
    const auto isDay = [&left](const QDateTime& wallClock) {
        const qint64 seconds = wallClock.toSecsSinceEpoch();
        return std::ranges::none_of(left, [seconds](const Night& night) {
            return night.from <= seconds && seconds <= night.to;
        });
    };
    m_server.setHandler(property::Shop(m_seed, proof::sized(2000, 130), isDay));
    m_server.setRecording(false);
    QVERIFY(m_server.listen());
    const Outcome first = runIn({{{s("LC_ALL"), s("C.UTF-8")}, {s("TZ"), s("UTC")}}, {}});
    QVERIFY2(first.ok, qPrintable(first.problem));
    QVERIFY2(first.surroundings.startsWith(s("1234.5 ")) && first.surroundings.endsWith(s(" 0")),
             qPrintable(first.surroundings));
    QVERIFY(first.bytes.count('\n') > proof::sized(4000, 260));
    m_expected = first.bytes;
}

Outcome tst_proof_properties_surroundings::runIn(const Surroundings& surroundings)
{
    const QString folder = m_folder.path(s("Rechnungen"));
    QDir(folder).removeRecursively();
    // The host's folder has to exist to be taken.
    QDir().mkpath(folder);
    return property::runIn(surroundings, m_server.baseUrl(), folder);
}

void tst_proof_properties_surroundings::compare(const Surroundings& surroundings,
                                                const QString& name, const QString& sign)
{
    ++m_tried;
    const Outcome outcome = runIn(surroundings);
    QVERIFY2(outcome.ok, qPrintable(name + u' ' + outcome.problem));
    if (!sign.isEmpty())
        QVERIFY2(outcome.surroundings.contains(sign),
                 qPrintable(name + s(" is not in force: ") + outcome.surroundings));
    if (outcome.bytes != m_expected) {
        const auto lines = outcome.bytes.split('\n');
        const auto expected = m_expected.split('\n');
        for (qsizetype i = 0; i < qMin(lines.size(), expected.size()); ++i)
            QVERIFY2(lines.at(i) == expected.at(i),
                     (name.toUtf8() + ", seed " + QByteArray::number(m_seed) + ":\n" + lines.at(i)
                      + "\ninstead of\n" + expected.at(i))
                         .constData());
        QCOMPARE(lines.size(), expected.size());
    }
    ++m_same;
}

void tst_proof_properties_surroundings::theSameInputGivesTheSameBytes()
{
    compare({{{s("LC_ALL"), s("C.UTF-8")}, {s("TZ"), s("UTC")}}, {}}, s("again"));
}

void tst_proof_properties_surroundings::noCellDependsOnTheZone()
{
    for (const char* name : zones()) {
        const QTimeZone zone(name);
        const int offset = zone.offsetFromUtc(QDateTime(QDate(2026, 1, 5), QTime(12, 0), Qt::UTC));
        compare({{{s("TZ"), s(name)}}, {}}, s(name), s(" %1").arg(offset));
    }
    if (proof::isFull()) {
        // A rule instead of a name, an unknown name, none at all.
        compare({{{s("TZ"), s("CET-1CEST,M3.5.0,M10.5.0/3")}}, {}}, s("a rule"), s(" 3600"));
        compare({{{s("TZ"), s(":Europe/Berlin")}}, {}}, s("a colon"), s(" 3600"));
        compare({{{s("TZ"), s("Nowhere/Nothing")}}, {}}, s("no such zone"), s(" 0"));
        compare({{{s("TZ"), QString()}}, {}}, s("an empty zone"), s(" 0"));
    }
}

void tst_proof_properties_surroundings::noCellDependsOnTheLocale()
{
    struct Known
    {
        const char* name;
        const char* sign; ///< a number as that locale writes it
    };

    static const QList<Known> all {{"de_DE", "1.234,5"}, {"fa_IR", "۱٬۲۳۴٫۵"}, {"tr_TR", "1.234,5"},
                                   {"ar_EG", "١٬٢٣٤٫٥"}, {"hi_IN", "1,234.5"}, {"de_CH", "1’234.5"},
                                   {"fr_FR", "234,5"},   {"en_US", "1,234.5"}, {"ne_NP", "१,२३४.५"},
                                   {"C", "1234.5"}};
    const QList<Known> chosen = proof::isFull() ? all : all.first(2);
    for (const Known& locale : chosen) {
        // By the environment, as a desktop tells it, and by the toolkit's default.
        compare({{{s("LC_ALL"), s(locale.name) + s(".UTF-8")}, {s("TZ"), s("UTC")}}, {}},
                s(locale.name), s(locale.sign));
        if (proof::isFull())
            compare({{{s("LC_ALL"), s("C.UTF-8")}, {s("TZ"), s("UTC")}}, s(locale.name)},
                    s("default ") + s(locale.name), s(locale.sign));
    }
    if (proof::isFull()) {
        compare({{{s("LC_ALL"), s("C")}}, {}}, s("plain C"));
        compare({{{s("LANG"), s("tr_TR")}, {s("LANGUAGE"), s("tr:de")}}, {}}, s("by LANG"));
        compare({{{s("LC_ALL"), s("tr_TR.UTF-8")}, {s("TZ"), s("Asia/Kathmandu")}}, s("ar_EG")},
                s("all at once"), s("١٬٢٣٤٫٥"));
    }
}

QString tst_proof_properties_surroundings::compileLocale(const QString& name,
                                                         const QString& charset)
{
    const QString folder = m_folder.path(s("locales"));
    QDir().mkpath(folder);
    QProcess compiler;
    compiler.start(s("localedef"),
                   {s("--no-archive"), s("-c"), s("-i"), name, s("-f"), charset,
                    folder + u'/' + name + u'.' + charset});
    compiler.waitForFinished(60000);
    return QFile::exists(folder + u'/' + name + u'.' + charset + s("/LC_NUMERIC")) ? folder
                                                                                   : QString();
}

void tst_proof_properties_surroundings::noCellDependsOnALocaleOfTheCLibrary()
{
    // The C library, unlike the toolkit, knows compiled locales only, and few machines have them.
    struct Known
    {
        const char* name;
        const char* charset;
        const char* sign;
    };

    const QList<Known> known {{"tr_TR", "UTF-8", "1234,5 1.234,5"},
                              {"de_DE", "UTF-8", "1234,5 1.234,5"},
                              {"de_DE", "ISO-8859-1", nullptr},
                              {"fa_IR", "UTF-8", "۱٬۲۳۴٫۵"}};
    for (const Known& locale : proof::isFull() ? known : known.first(1)) {
        const QString folder = compileLocale(s(locale.name), s(locale.charset));
        if (folder.isEmpty())
            QSKIP("The C library's locales cannot be compiled here (Debian: package locales).");
        const QString name = s(locale.name) + u'.' + s(locale.charset);
        compare({{{s("LC_ALL"), name}, {s("LOCPATH"), folder}, {s("TZ"), s("UTC")}}, {}}, name,
                s(locale.sign));
    }
}

void tst_proof_properties_surroundings::cleanupTestCase()
{
    proof::report("properties: same_bytes tried=" + std::to_string(m_tried) + " ok="
                  + std::to_string(m_same) + " rows=" + std::to_string(m_expected.count('\n') - 2)
                  + " seed=" + std::to_string(m_seed));
}

int main(int argc, char** argv)
{
    const int status = property::runIfAsked(argc, argv);
    return status >= 0 ? status : runAppTest<tst_proof_properties_surroundings>(argc, argv);
}

#include "tst_proof_properties_surroundings.moc"
