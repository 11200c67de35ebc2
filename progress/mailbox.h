#pragma once

#include "progress/custom_progress_bar.h"

#include <any>
#include <mutex>
#include <optional>

namespace mod_progress_qt {

/// What a worker has sent since its dialog last looked.
struct Mail
{
    /// Each text is the latest valid one; current value and total are those of the latest tuple
    /// with a valid current value.
    ProgressValues values;
    qint64 updates = 0; ///< tuples that came, steps among them
    qint64 steps = 0; ///< tuples that asked for an automatic step
    bool stepIsLatest = false; ///< a step came, and no current value after it
    std::optional<std::any> data; ///< the latest

    bool isEmpty() const { return updates == 0 && !data.has_value(); }
};

/// Carries progress from a work thread to its dialog. As a dialog repaints eight times a second at
/// most, the worker may report as often as it likes: what is waiting is merged into one, so that
/// neither a queue grows nor the GUI thread drowns. All members may be called from any thread.
class Mailbox
{
public:
    /// \param reader  has an invokable method "readMail", which is called on its thread when the
    ///                first mail after rest() is waiting
    explicit Mailbox(QObject* reader);
    Q_DISABLE_COPY_MOVE(Mailbox)

    void put(const ProgressValues& values);
    void put(const std::any& data);

    /// All that is waiting.
    Mail take();
    /// As take(); if nothing is waiting, the reader will be called again.
    Mail takeOrRest();
    /// The reader is gone. What is put from now on is lost.
    void close();
    bool isClosed();

private:
    void wakeReader();

    std::mutex m_mutex;
    QObject* m_reader;
    bool m_readerIsAwake = false;
    Mail m_mail;
};

} // namespace mod_progress_qt
