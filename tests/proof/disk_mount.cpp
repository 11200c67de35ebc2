#include "tests/proof/disk_mount.h"

#include <QByteArray>
#include <QDir>
#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace proof {

namespace {

bool writeTo(const char* path, const QByteArray& text)
{
    const int file = ::open(path, O_WRONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    const bool ok = ::write(file, text.constData(), size_t(text.size())) == text.size();
    ::close(file);
    return ok;
}

// Who is not root becomes one that may mount, in a world of its own, and stays who it is.
bool enterUserSpace()
{
    const QByteArray user = QByteArray::number(geteuid());
    const QByteArray group = QByteArray::number(getegid());
    return unshare(CLONE_NEWUSER) == 0 && writeTo("/proc/self/setgroups", "deny")
        && writeTo("/proc/self/uid_map", user + ' ' + user + " 1")
        && writeTo("/proc/self/gid_map", group + ' ' + group + " 1");
}

} // namespace

bool enterMountSpace()
{
    if (geteuid() != 0 && !enterUserSpace())
        return false;
    return unshare(CLONE_NEWNS) == 0
        && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

SmallDisk::SmallDisk(const QString& folder, qint64 bytes)
    : m_folder(folder)
{
    QDir().mkpath(folder);
    const QByteArray options = "size=" + QByteArray::number(bytes);
    m_isMounted =
        mount("none", QFile::encodeName(folder).constData(), "tmpfs", 0, options.constData()) == 0;
}

SmallDisk::~SmallDisk()
{
    if (m_isMounted)
        umount2(QFile::encodeName(m_folder).constData(), MNT_DETACH);
}

QString SmallDisk::filler() const
{
    return m_folder + QStringLiteral("/.filler");
}

bool SmallDisk::fill() const
{
    const int file = ::open(QFile::encodeName(filler()).constData(),
                            O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (file < 0)
        return false;
    const QByteArray block(4096, 'x');
    while (::write(file, block.constData(), size_t(block.size())) > 0) { }
    const bool isFull = errno == ENOSPC;
    ::close(file);
    return isFull;
}

void SmallDisk::clear() const
{
    QFile::remove(filler());
}

bool SmallDisk::setReadOnly(bool on) const
{
    return mount(nullptr, QFile::encodeName(m_folder).constData(), nullptr,
                 MS_REMOUNT | (on ? MS_RDONLY : 0), nullptr)
        == 0;
}

} // namespace proof
