#pragma once

#include "tools/demo_shop/counter_random.h"

#include <QString>

namespace demo_shop {

/// An invented person with an address.
struct Person
{
    QString firstName;
    QString lastName;
    QString company;
    QString address1;
    QString address2;
    QString city;
    QString state;
    QString postcode;
    QString country;
    QString email;
    QString phone;
};

/// Invents a person who lives in a country ("DE", "AT", "FR", "CH").
/// \param number   makes the mail address the person's own
/// \param awkward  with a company whose name holds a line break, quotes and a semicolon
Person inventPerson(CounterRandom& random, const QString& country, qint64 number, bool awkward);

/// An invented customer's note. Some hold line breaks, quotes and semicolons.
QString inventNote(CounterRandom& random, bool awkward);

} // namespace demo_shop
