#pragma once

#include <QString>

namespace proof {

/// Gives this process, and no other, file systems of its own from now on. To be called before any
/// thread is started. \return false where the system does not let it
bool enterMountSpace();

/// A small file system over a folder, gone with this object.
class SmallDisk
{
public:
    /// Mounts it; the folder is made if need be. See isMounted().
    SmallDisk(const QString& folder, qint64 bytes);
    ~SmallDisk();
    Q_DISABLE_COPY_MOVE(SmallDisk)

    bool isMounted() const { return m_isMounted; }

    /// Takes all room that is left. \return false if there is still some
    bool fill() const;
    /// Gives back what fill() took.
    void clear() const;
    /// Keeps everybody from writing; no file may be open for it. \return false if that failed
    bool setReadOnly(bool on) const;

private:
    QString filler() const;

    QString m_folder;
    bool m_isMounted = false;
};

} // namespace proof
