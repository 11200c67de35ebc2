#include "credentials/keychain_class.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <qt6keychain/keychain.h>

namespace {

/// Runs a job that lies on the stack to its end.
/// \return  true if it ended without an error, otherwise false with the store's message in `error`
bool runJob(QKeychain::Job& job, const QString& key, QString& error)
{
    job.setAutoDelete(false);
    job.setKey(key);

    QEventLoop loop;
    bool answered = false;
    QObject::connect(&job, &QKeychain::Job::finished, &loop, [&loop, &answered] {
        answered = true;
        loop.quit();
    });
    job.start();
    loop.exec();
    // The end of the program ends every nested loop at once. The store still answers, into a job
    // that has to live until then, and an open job would pass for one without an error.
    while (!answered && QCoreApplication::instance() != nullptr)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);

    if (!answered || job.error() != QKeychain::NoError) {
        error = job.errorString();
        return false;
    }
    return true;
}

QString localText(const QString& text)
{
    return QString::fromLocal8Bit(text.toLocal8Bit());
}

} // namespace

KeyChainClass::KeyChainClass(const QString& service, QObject* parent)
    : QObject(parent)
    , m_service(service)
{
}

bool KeyChainClass::readKeySync(const QString& key, QString& value, QString& error)
{
    QKeychain::ReadPasswordJob job(m_service);
    if (!runJob(job, key, error))
        return false;
    value = job.textData();
    return true;
}

bool KeyChainClass::writeKeySync(const QString& key, const QString& value, QString& error)
{
    QKeychain::WritePasswordJob job(m_service);
    job.setTextData(value);
    return runJob(job, key, error);
}

bool KeyChainClass::deleteKeySync(const QString& key, QString& error)
{
    QKeychain::DeletePasswordJob job(m_service);
    return runJob(job, key, error);
}

void KeyChainClass::readKey(const QString& key)
{
    auto* job = new QKeychain::ReadPasswordJob(m_service);
    job->setAutoDelete(true);
    job->setKey(key);
    connect(job, &QKeychain::Job::finished, this, [this, job, key] {
        if (job->error() != QKeychain::NoError)
            emit error(tr("Read key failed: %1").arg(localText(job->errorString())));
        else
            emit keyRestored(key, job->textData());
    });
    job->start();
}

void KeyChainClass::writeKey(const QString& key, const QString& value)
{
    auto* job = new QKeychain::WritePasswordJob(m_service);
    job->setAutoDelete(true);
    job->setKey(key);
    job->setTextData(value);
    connect(job, &QKeychain::Job::finished, this, [this, job, key] {
        if (job->error() != QKeychain::NoError)
            emit error(tr("Write key failed: %1").arg(localText(job->errorString())));
        else
            emit keyStored(key);
    });
    job->start();
}

void KeyChainClass::deleteKey(const QString& key)
{
    auto* job = new QKeychain::DeletePasswordJob(m_service);
    job->setAutoDelete(true);
    job->setKey(key);
    connect(job, &QKeychain::Job::finished, this, [this, job, key] {
        if (job->error() != QKeychain::NoError)
            emit error(tr("Delete key failed: %1").arg(localText(job->errorString())));
        else
            emit keyDeleted(key);
    });
    job->start();
}
