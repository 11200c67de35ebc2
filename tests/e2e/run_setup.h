#pragma once

#include "tests/app/run_fixture.h"

#include <QJsonArray>
#include <QMap>
#include <QVariant>

/// What the tests of the real program put before it: a shop with orders, and the settings of a user
/// who has filled in everything.
namespace run_setup {

/// The secrets that storeSecrets stores.
extern const QString apiKey;
extern const QString apiSecret;

/// Settings with which the start button's checks pass.
QMap<QString, QVariant> completeOptions(const QString& shopUrl);
/// Puts one secret for a shop into the secret store. \return false if the store refuses
bool storeSecret(const QString& shopUrl, const QString& keyName, const QString& secret);
/// Puts the secrets for a shop into the secret store. \return false if the store refuses
bool storeSecrets(const QString& shopUrl);
/// What a request of the program must carry with these secrets.
QByteArray authorization();

/// The options that a process has saved, as a process started later would find them.
QMap<QString, QVariant> optionsInTheFile(const StartFolder& folder);

/// Orders with ids from 1; every \a refundEvery-th of them is refunded, none with 0. Their products
/// repeat, so that a page asks for a few of them only.
QJsonArray orders(int count, int refundEvery);
/// Makes the fixture's shop serve \a list with its refunds and a tax rate.
void serve(RunFixture& fixture, const QJsonArray& list);

} // namespace run_setup
