#pragma once

#include "tests/e2e/desktop.h"
#include "tests/e2e/ledora_process.h"
#include "tests/e2e/run_setup.h"

#include <QObject>

/// What the tests of the real program share: a shop in this process, a folder and a secret store as
/// a user finds them who has filled in everything, and that user's first steps.
class ProgramTest : public QObject
{
public:
    explicit ProgramTest(const StartFolder& folder);

protected:
    static const QString question;
    static const QString startButton;
    static const QString okButton;
    static const QString cancelButton;
    static const QString mainWindow;
    static const QString anyError;

    /// Puts the shop back to one without faults and with nothing asked yet, and the folder to the
    /// settings of run_setup::completeOptions. Fails the test if that cannot be done.
    void prepare();
    /// The settings, secrets and host's file alone.
    void layDownSettings(const QMap<QString, QVariant>& options);

    /// What the same run inside this process exports.
    QByteArray exportOfThisProcess(const QJsonArray& orders);

    /// Starts the program. \return false unless its window comes up without any box before it
    bool startProgram(LedoraProcess& program) const;
    /// Starts a run with the mouse. \return false if it ends in anything but the question
    static bool runToQuestion(const LedoraProcess& program);
    /// Clicks a button of the question, and waits until the question has gone.
    static bool answer(const LedoraProcess& program, const QString& button);
    /// Waits for a box of that title that says \a text, closes it with Return and waits until it
    /// has gone.
    static bool closeBox(const LedoraProcess& program, const QString& title, const QString& text);
    /// Id of the main window on the X server, empty if it is not there.
    static QString windowOf(const LedoraProcess& program);

    /// How many of the requests seen have a path that ends so.
    int requestsFor(const char* ending) const;
    /// True if every request seen, and at least one, carried that header.
    bool allCarried(const QByteArray& authorization) const;

    const StartFolder& m_folder;
    RunFixture m_fixture;
};
