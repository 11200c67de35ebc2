#pragma once

#include "tests/app/run_fixture.h"
#include "tests/proof/reentrancy_dice.h"

#include <QDialog>
#include <QStringList>

class QGroupBox;

namespace proof {

/// What befalls the program from outside: the user, the desktop, the two timers, and the calls that
/// a host's form could make.
enum class Step {
    StartButton,
    StopButton,
    OkButton,
    CancelButton,
    ReplacementsButton,
    CacheButton,
    HelpButton,
    FolderButton,
    GroupHeading,
    SecretField,
    AddressField,
    KontoFields,
    Escape,
    EscapeBehind, ///< to the window itself, though a dialog stands before it
    CloseWindow,
    SessionEnd,
    RunTick,
    WaitTick,
    Restart, ///< the code's own restart: during a pass its button is dead
    HostCancel, ///< the callback that no button of this form has
};

const char* nameOf(Step step);
QStringList namesOfSteps();
/// Whether a step may end the program, with the export or without it.
bool endsTheProgram(Step step);

/// Carries steps out, whatever loop the program is in.
class User
{
public:
    User(RunFixture& fixture, Dice& dice)
        : m_fixture(fixture)
        , m_dice(dice)
    {
    }

    /// Any step; those that end the program come up less often than others.
    Step draw();
    /// False if there is nothing to do it to: a dead button, a timer that stands still, a window
    /// that is not there.
    bool can(Step step) const;
    void perform(Step step);
    /// Ends a message box or a dialog by one of its buttons, by Escape or by its own close button.
    /// \return what was done, for the journal
    QString answer(QDialog& dialog);
    /// Puts the shop's address back into its field, or shows that first where it is folded away.
    void mendAddress() const;
    /// Chooses what the start button's checks ask for.
    void chooseB2c() const;

private:
    MainWindow* window() const { return m_fixture.window.get(); }

    QPushButton* buttonOf(Step step) const;
    /// Folds away what stands below it, and shows it again.
    QGroupBox* heading() const;
    void type(const QString& key, const QString& text) const;
    void changeKonto();

    RunFixture& m_fixture;
    Dice& m_dice;
};

} // namespace proof
