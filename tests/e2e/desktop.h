#pragma once

#include <QList>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

/// What a person does on the screen: looks for windows and buttons, clicks, types, closes. Each
/// call runs the event loop while it waits, so that a shop in this process goes on answering.
namespace desktop {

struct Outcome
{
    bool ok = false;
    QString output;
    QString problem;
};

/// Runs a program to its end, for \a seconds at most; ok means that it ended with status 0.
Outcome run(const QString& program, const QStringList& arguments, int seconds = 60);

/// Waits until one of the windows of \a titles is on screen. \return its title, empty if none came
QString waitForWindow(qint64 pid, const QStringList& titles, int seconds = 30);
/// Waits until some widget shows a text that \a pattern matches. \return the text
QString waitForText(qint64 pid, const QString& pattern, int seconds = 30);
/// Clicks a button with the mouse; \a name may hold several texts, separated by "|".
bool click(qint64 pid, const QString& name);
/// Clicks where the mouse stands, twice in quick succession.
bool clickAgainTwice();
/// Presses a key in a window, which gets the focus first.
bool key(const QString& window, const QString& name);

/// Presses a key in the window in front, \a times times.
bool key(const QString& name, int times = 1);
/// Types a text where the focus is.
bool type(const QString& text);
/// Replaces what the field that has the focus holds by a text, as a person types it.
bool retype(const QString& text);

/// A field or button of the window in front, as a screen reader tells of it.
struct Field
{
    QString role;
    QString name; ///< the text of the label before it, or its own
    QString content; ///< "on" or "off" of a check box, a star for each character of a password
};

/// All fields and buttons of the window in front, in the order of the screen.
QList<Field> fields(qint64 pid);
/// Content of the field of that name, of the first one where several have it; null if there is
/// none.
QString content(const QList<Field>& fields, const QString& name);
/// Presses Tab until the widget of that name has the focus; \a name may hold several texts,
/// separated by "|". \return the names that had the focus on the way, empty if it never came
QStringList tabTo(qint64 pid, const QString& name);
/// The names that have the focus one after the other while Tab is pressed, from the one that has it
/// now until it is back there.
QStringList tabOrder(qint64 pid);

/// Ids of the windows of \a pid on screen whose title \a pattern matches, as xdotool names them.
QStringList windows(qint64 pid, const QString& pattern);
/// Waits until the program has exactly one such window on screen. \return its id, empty if not
QString waitForWindowId(qint64 pid, const QString& pattern, int seconds = 30);
/// Asks the window manager to close a window, as its system button does.
bool closeWindow(const QString& id);
/// True if a window whose title \a pattern matches is on screen.
bool isShown(qint64 pid, const QString& pattern);

/// Runs this program again inside an accessibility session of its own, unless it is in one. Call it
/// first in main; it returns inside the session only.
void enterSession(char** argv);
/// The environment of a program that is to be driven.
QProcessEnvironment environment();

} // namespace desktop
