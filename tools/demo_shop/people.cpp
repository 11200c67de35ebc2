#include "tools/demo_shop/people.h"

#include <iterator>
#include <vector>

namespace demo_shop {

namespace {

struct Name
{
    const char16_t* text;
    const char* mail;
};

constexpr Name kFirstNames[] = {{u"Sönke", "soenke"},          {u"Wiebke", "wiebke"},
                                {u"Jürgen", "juergen"},        {u"Ayşe", "ayse"},
                                {u"Anna-Maria", "anna.maria"}, {u"Zoë", "zoe"},
                                {u"Karl Heinz", "karl.heinz"}, {u"Käthe", "kaethe"},
                                {u"Oluwaseun", "oluwaseun"},   {u"Łukasz", "lukasz"},
                                {u"Margarethe", "margarethe"}, {u"Bjørn", "bjoern"}};

constexpr Name kLastNames[] = {{u"Großkopf", "grosskopf"},
                               {u"Übelacker", "uebelacker"},
                               {u"Äpfelbach", "aepfelbach"},
                               {u"O'Halloran", "ohalloran"},
                               {u"Öhlmann", "oehlmann"},
                               {u"von der Straßen", "strassen"},
                               {u"Müller-Lüdenscheidt", "mueller"},
                               {u"Kowalczyk", "kowalczyk"},
                               {u"D'Angelo", "dangelo"},
                               {u"Çelik", "celik"},
                               {u"Winter", "winter"},
                               {u"Nguyễn", "nguyen"}};

constexpr const char16_t* kStreets[] = {u"Beispielweg", u"Musterstraße", u"Am Teichgärtchen",
                                        u"Straße der Übung", u"Probegasse"};

constexpr const char16_t* kCompanies[] = {u"Bürohaus Muster GmbH & Co. KG",
                                          u"Tischlerei \"Holzwurm\"", u"Übelacker; Söhne oHG",
                                          u"Café Ähre"};

struct Place
{
    const char* country;
    const char16_t* city;
    const char* postcode;
    const char* state;
};

// Towns that do not exist, under post codes that are not in use.
constexpr Place kPlaces[] = {
    {"DE", u"Musterstadt", "00815", "NW"},   {"DE", u"Übungshausen", "00042", "BY"},
    {"DE", u"Groß Beispiel", "00123", "HH"}, {"DE", u"Probestätt", "00999", "SN"},
    {"AT", u"Musterkirchen", "0815", ""},    {"FR", u"Exempleville-sur-Mer", "00815", ""},
    {"CH", u"Musterligen", "0815", "ZH"}};

QString text(const char16_t* words)
{
    return QString::fromUtf16(words);
}

const Place& placeIn(CounterRandom& random, const QString& country)
{
    std::vector<const Place*> fitting;
    for (const Place& place : kPlaces) {
        if (country == QLatin1String(place.country))
            fitting.push_back(&place);
    }
    return *random.oneOf(fitting);
}

} // namespace

Person inventPerson(CounterRandom& random, const QString& country, qint64 number, bool awkward)
{
    const Name& first = random.oneOf(kFirstNames);
    const Name& last = random.oneOf(kLastNames);
    const Place& place = placeIn(random, country);

    Person person;
    person.firstName = text(first.text);
    person.lastName = text(last.text);
    if (random.percent(25))
        person.company = text(random.oneOf(kCompanies));
    if (awkward)
        person.company = QStringLiteral("Werkstatt \"Grün & Blau\";\nAbteilung Einkauf");
    person.address1 = text(random.oneOf(kStreets)) + u' ' + QString::number(random.between(1, 199));
    if (random.percent(15))
        person.address2 = QStringLiteral("Hinterhaus, 2. Stock");
    person.city = text(place.city);
    person.state = QLatin1String(place.state);
    person.postcode = QLatin1String(place.postcode);
    person.country = country;
    person.email =
        QStringLiteral("%1.%2.%3@example.org")
            .arg(QLatin1String(first.mail), QLatin1String(last.mail), QString::number(number));
    // A block of numbers that is kept for films.
    person.phone = QStringLiteral("030 23125%1").arg(random.below(1000), 3, 10, QChar(u'0'));
    return person;
}

QString inventNote(CounterRandom& random, bool awkward)
{
    if (awkward)
        return QStringLiteral("Bitte klingeln bei \"Öhlmann\";\r\nzweite Tür links\n\ttrocken "
                              "abstellen \\ danke");
    static constexpr const char16_t* notes[] = {
        u"Bitte als Geschenk verpacken.", u"Lieferung erst ab Freitag, danke schön!",
        u"Rechnung bitte ohne Preise;\nLieferschein genügt"};
    return random.percent(12) ? text(random.oneOf(notes)) : QString();
}

} // namespace demo_shop
