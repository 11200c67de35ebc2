#pragma once

#include <QObject>
#include <QString>

/// Reads, writes and deletes secrets in the desktop's secret store.
///
/// Every operation exists in a synchronous form, which runs an event loop until the store has
/// answered, and in an asynchronous one, which answers with a signal. The synchronous forms thus
/// serve timers and user events meanwhile. All of it belongs to the GUI thread and needs a
/// QCoreApplication.
class KeyChainClass : public QObject
{
    Q_OBJECT

public:
    /// \param service  name under which the store keeps this application's secrets; equal keys of
    ///                 two services are two secrets
    KeyChainClass(const QString& service, QObject* parent);

    /// Reads the secret stored under `key`.
    /// \param value  out: the secret; untouched on failure
    /// \param error  out: the store's message on failure, otherwise untouched
    /// \return       false if the store cannot be reached or refuses, or has no such secret
    bool readKeySync(const QString& key, QString& value, QString& error);

    /// Stores `value` under `key`, in place of what lay there.
    /// \param error  out: the store's message on failure, otherwise untouched
    /// \return       false if the store cannot be reached or refuses
    bool writeKeySync(const QString& key, const QString& value, QString& error);

    /// Deletes the secret stored under `key`.
    /// \param error  out: the store's message on failure, otherwise untouched
    /// \return       false if the store cannot be reached or refuses; whether a missing secret
    ///               counts as a failure is up to the store
    bool deleteKeySync(const QString& key, QString& error);

    /// Starts to read a secret; answers with `keyRestored` or `error`.
    void readKey(const QString& key);

    /// Starts to store a secret; answers with `keyStored` or `error`.
    void writeKey(const QString& key, const QString& value);

    /// Starts to delete a secret; answers with `keyDeleted` or `error`.
    void deleteKey(const QString& key);

signals:
    /// A secret begun with `writeKey` has been stored.
    void keyStored(const QString& key);

    /// A secret asked for with `readKey` has arrived; `value` is the secret itself.
    void keyRestored(const QString& key, const QString& value);

    /// A secret named to `deleteKey` is gone.
    void keyDeleted(const QString& key);

    /// An asynchronous operation failed; `message` names the operation and the store's reason.
    void error(const QString& message);

private:
    QString m_service;
};
