#pragma once

#include "tests/app/fault_run.h"
#include "tests/proof/reentrancy_dice.h"
#include "tests/proof/reentrancy_export.h"
#include "tests/proof/reentrancy_user.h"

#include <QMap>
#include <QPair>
#include <QPointer>

#include <functional>
#include <optional>
#include <vector>

class QMessageBox;

namespace proof {

/// What was tried, over all roads.
struct Tally
{
    int roads = 0;
    int steps = 0;
    int questions = 0;
    QMap<QString, int> places; ///< kind of loop -> steps in it
    QMap<QString, int> kinds; ///< kind of step -> steps
    QMap<QString, int> ends; ///< what the road ended with -> roads
    QMap<QPair<QString, QString>, int> pairs; ///< kind of loop, kind of step
};

/// What a road starts with.
struct RoadStart
{
    bool savedAddress = false; ///< the start looks for the secrets of this shop
    bool forgetSecrets = false; ///< and does not find them
    bool credentials = true; ///< both secrets are typed in
    bool b2c = true; ///< what the start button asks for has been chosen
    bool blockedExport = false; ///< something stands in the place of the export that can't go
    int faultPhase = -1; ///< request that fails, by index; -1 for none
    int faults = 0; ///< how often
    int failedPasses = 0; ///< passes that count as failed before
};

/// The life of one window: from its start through runs, boxes and dialogs, with steps of the user
/// in the middle of each loop, to its end and the end of the program's main loop.
class Road : public QObject
{
public:
    Road(FaultRun& run, const ReferenceExport& reference, Tally& tally, quint32 seed);
    ~Road() override;

    /// \param canFailForGood  a request may fail in every pass, which takes its time
    /// \return empty if all went well, else what went wrong
    QString walk(bool canFailForGood);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// A nested loop that has reported itself.
    struct Loop
    {
        int level;
        QString name;
        bool isRequest;
    };

    /// What stood in the file when the export was handed over.
    struct HandOver
    {
        QByteArray bytes;
        bool inPass;
        bool stopped;
    };

    MainWindow* window() const { return m_run.fixture.window.get(); }

    QByteArray exported() const { return m_run.fixture.folder.exported(); }

    RoadStart draw(bool canFailForGood);
    void prepare(const RoadStart& start);
    void post(std::function<void()> action);

    // What happens on the way
    void drive();
    void driveIdle();
    void leave();
    demo_shop::Fault onRequest(const demo_shop::ShopRequest& request);
    void onDialogShown(QDialog* dialog);
    void onQuestion();
    void enterDialog(const QPointer<QDialog>& dialog);
    void turnOf(const QPointer<QDialog>& dialog, int steps);
    void stepSoon();
    void step();
    void stepAs(Step kind);
    QString place();

    // What must hold
    void fail(const QString& what);
    void observe();
    void noteDecision();
    void checkFile();
    void checkEnd();
    void checkNothingLeft();

    FaultRun& m_run;
    const ReferenceExport& m_reference;
    Tally& m_tally;
    Dice m_dice;
    User m_user;
    RoadStart m_start;

    QString m_failure;
    int m_steps = 0; ///< that may still be done
    int m_posted = 0;
    int m_ticks = 0;
    int m_leaves = 0;
    bool m_walking = false;
    std::vector<Loop> m_loops;
    std::vector<int> m_stepLevels;

    QSet<QByteArray> m_optionTexts;
    bool m_stopAsked = false;
    int m_runs = 0;
    QPair<int, int> m_askedAt {-1, -1};
    std::optional<bool> m_accepted;
    HandOver m_handOver;
};

} // namespace proof
