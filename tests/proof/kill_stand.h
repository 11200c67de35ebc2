#pragma once

#include "tests/proof/fault_access.h"
#include "tests/proof/fault_screen.h"
#include "tests/support/start_folder.h"

#include "tools/demo_shop/shop_server.h"

#include <QProcess>

#include <functional>

namespace proof {

/// A place where the real program is run: a folder, a shop and a user who presses the start button
/// and answers the question with Yes. Any number can stand side by side.
class RunStand
{
public:
    enum State {
        Idle, ///< not started
        Starting, ///< its window is awaited
        Running, ///< the start button is pressed
        Answered, ///< the question is answered with Yes
        Refused, ///< the run has failed with its box, which is closed by now
        Ended, ///< the process has gone, by itself or not
        Stuck ///< see problem()
    };

    /// The shop listens from now on.
    explicit RunStand(demo_shop::ShopServer::Handler handler);
    ~RunStand();
    Q_DISABLE_COPY_MOVE(RunStand)

    const StartFolder& folder() const { return m_folder; }

    demo_shop::ShopServer& shop() { return m_shop; }

    /// Words that stand before the program's own, for what is to be changed around it.
    void setWrapper(const QStringList& words) { m_wrapper = words; }

    /// The settings of a user who has filled in everything, for the shop at \a address.
    static QMap<QString, QVariant> settings(const QString& address, const StartFolder& folder);
    /// Lays the host's file, the settings and the secrets down as a user has left them who never
    /// ran the program here. \return false if the secret store refuses
    bool layDown(const QString& address);

    /// Starts the program. \return false if that failed
    bool start();
    /// Looks at the program's windows and does what its user would do now.
    void step(const QList<ScreenWindow>& shown, ScreenReader& reader);
    /// Asks the program's main window to close, as its system button does.
    void closeWindow();

    State state() const { return m_state; }

    bool isOpen() const { return m_state != Ended && m_state != Stuck; }

    QString problem() const { return m_problem; }

    /// What the box said that the run failed with.
    QString box() const { return m_box; }

    qint64 pid() const { return m_process.processId(); }

    /// True if the process has ended of its own accord with status 0.
    bool hasEndedWell() const;
    bool wasKilled() const;

    QString output() const { return QString::fromUtf8(m_output); }

    /// The export with the names of this folder and shop taken out; null if there is none.
    QByteArray exported(const QString& address) const;
    /// The same for any folder.
    static QByteArray anonymous(QByteArray exported, const QString& address,
                                const StartFolder& folder);
    /// The saved options as a process started later would find them.
    QMap<QString, QVariant> savedOptions();

private:
    void takeBox(const QString& title, ScreenReader& reader);

    StartFolder m_folder;
    demo_shop::ShopServer m_shop;
    QProcess m_process;
    QStringList m_wrapper;
    QByteArray m_output;
    QString m_problem;
    QString m_box;
    unsigned long m_window = 0;
    int m_copies = 0;
    State m_state = Idle;
};

/// Steps all stands until \a done holds or the time is up. \return whether it holds
bool stepUntil(const QList<RunStand*>& stands, ScreenReader& reader,
               const std::function<bool()>& done, int seconds);

} // namespace proof
