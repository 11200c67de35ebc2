#include "progress/mailbox.h"

#include <QMetaObject>

#include <utility>

namespace mod_progress_qt {

namespace {

template <std::size_t Position>
void takeValid(ProgressValues& into, const ProgressValues& from)
{
    if (std::get<Position>(from).isValid())
        std::get<Position>(into) = std::get<Position>(from);
}

void merge(Mail& mail, const ProgressValues& values)
{
    ++mail.updates;
    if (asksForStep(values)) {
        ++mail.steps;
        mail.stepIsLatest = true;
        return;
    }
    takeValid<0>(mail.values, values);
    takeValid<1>(mail.values, values);
    takeValid<2>(mail.values, values);
    if (!std::get<3>(values).isValid())
        return;
    // Together, since a current value without a total means something else than one with.
    std::get<3>(mail.values) = std::get<3>(values);
    std::get<4>(mail.values) = std::get<4>(values);
    mail.stepIsLatest = false;
}

} // namespace

Mailbox::Mailbox(QObject* reader)
    : m_reader(reader)
{
}

void Mailbox::put(const ProgressValues& values)
{
    const std::lock_guard lock(m_mutex);
    if (m_reader == nullptr)
        return;
    merge(m_mail, values);
    wakeReader();
}

void Mailbox::put(const std::any& data)
{
    // What it replaces goes after the lock: it may be anything of the caller's.
    std::optional<std::any> latest(data);
    const std::lock_guard lock(m_mutex);
    if (m_reader == nullptr)
        return;
    m_mail.data.swap(latest);
    wakeReader();
}

void Mailbox::wakeReader()
{
    if (m_readerIsAwake)
        return;
    m_readerIsAwake = true;
    // Under the lock, so that the reader cannot go meanwhile.
    QMetaObject::invokeMethod(m_reader, "readMail", Qt::QueuedConnection);
}

Mail Mailbox::take()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_mail, {});
}

Mail Mailbox::takeOrRest()
{
    const std::lock_guard lock(m_mutex);
    if (m_mail.isEmpty())
        m_readerIsAwake = false;
    return std::exchange(m_mail, {});
}

void Mailbox::close()
{
    Mail lost;
    const std::lock_guard lock(m_mutex);
    m_reader = nullptr;
    std::swap(m_mail, lost);
}

bool Mailbox::isClosed()
{
    const std::lock_guard lock(m_mutex);
    return m_reader == nullptr;
}

} // namespace mod_progress_qt
