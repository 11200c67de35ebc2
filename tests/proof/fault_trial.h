#pragma once

#include "tests/e2e/ledora_process.h"
#include "tests/proof/fault_access.h"
#include "tests/proof/fault_screen.h"
#include "tests/proof/fault_server.h"
#include "tests/proof/fault_table.h"
#include "tests/support/start_folder.h"

#include <QDeadlineTimer>
#include <QMap>
#include <QSet>

#include <chrono>

namespace proof {

/// What a run leaves behind, with the names of its own shop and folder taken out.
struct Leavings
{
    QByteArray exported;
    QMap<QString, QByteArray> invoices;
};

/// One run of the real program, as a process of its own with a home, a folder and a shop of its
/// own.
class FaultTrial
{
public:
    struct Plan
    {
        const FaultRow* fault = nullptr;
        const FaultPhase* phase = nullptr; ///< null for a run without faults
        bool isPermanent = false; ///< else the fault befalls the first request of the phase alone
        /// At the question the user answers Yes, and the program ends; else No, and the user closes
        /// the window.
        bool isAccepted = true;
    };

    enum Outcome {
        Open,
        Whole, ///< the export of a run without faults
        Emptied, ///< nothing in the export, and the box has told so
        Closed, ///< closed by the user on the way, and no export
        Failed
    };

    /// \param other      address of another host
    /// \param reference  what a run without faults leaves; filled once it is known
    FaultTrial(const Plan& plan, QByteArray other, const Leavings* reference);

    /// Ports of shops that are over, and the addresses for which the secrets are stored. To store
    /// one takes the longer the more there are, so that addresses are used again.
    struct Addresses
    {
        QList<quint16> ports;
        QSet<QString> stored;
    };

    /// Lays down folder and secrets, and starts the program. \return false if that failed
    bool start(Addresses& addresses);

    quint16 port() const { return m_server.port(); }

    /// Looks at the program's windows and does what its user would do now.
    void step(const QList<ScreenWindow>& shown, ScreenReader& reader);

    Outcome outcome() const { return m_outcome; }

    const Plan& plan() const { return m_plan; }

    /// Why it failed.
    QString problem() const { return m_problem; }

    bool isStarting() const { return m_outcome == Open && !m_isPressed; }

    /// True if the fault has befallen a request at all.
    bool hasBefallen() const { return m_isBefallen; }

    /// What the program has left behind by now.
    Leavings leavings() const;

    /// Every request that came to the shop itself, and what came besides.
    QList<WireRequest> requests() const { return m_server.requests(); }

    QByteArray garbage() const { return m_server.garbage(); }

private:
    WireAnswer answer(const WireRequest& request);
    bool befalls(const WireRequest& request);
    void leave(std::chrono::milliseconds outage);
    QByteArray location(const QByteArray& target) const;
    QString address() const;
    bool byName() const;
    bool listen(Addresses& addresses);
    bool storeSecrets(Addresses& addresses) const;
    bool startProgram();
    void giveTime();

    bool answerBox(const ScreenWindow& box, ScreenReader& reader);
    bool readError(ScreenReader& reader);
    void begin(const ScreenWindow& main, ScreenReader& reader);
    void close(const ScreenWindow& main);
    bool isDone() const;
    bool areInvoicesWhole(bool all) const;
    void end();
    Outcome result();
    void fail(const QString& problem);

    Plan m_plan;
    QByteArray m_other;
    const Leavings* m_reference;
    StartFolder m_folder;
    FaultServer m_server;
    LedoraProcess m_program;
    QDeadlineTimer m_limit;
    QDeadlineTimer m_untilClose {QDeadlineTimer::Forever};
    /// When a window may be touched again.
    QMap<unsigned long, QDeadlineTimer> m_touched;
    QDeadlineTimer m_untilCloseAgain;
    Outcome m_outcome = Open;
    QString m_problem;
    bool m_isPressed = false;
    bool m_isBefallen = false;
    int m_questions = 0;
    int m_boxes = 0;
    bool m_wasDone = false;
};

} // namespace proof
