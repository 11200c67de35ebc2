#pragma once

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QHash>
#include <QStringList>

namespace proof {

/// Presses buttons as a screen reader does, over the accessibility bus: no window needs to be in
/// front for that, so that many programs can be driven side by side.
class ScreenReader
{
public:
    /// Looks for the bus of the session. \return false if there is none
    bool connect();
    /// Presses a button. Quick, but only for a program that is idle or shows a box.
    /// \param window  title of the window it is in
    /// \param names   its text; one of several
    /// \return        false if it is not there
    bool press(qint64 pid, const QString& window, const QStringList& names);
    /// The first text in a window that holds \a part, empty if there is none.
    QString text(qint64 pid, const QString& window, const QString& part);

    struct Node
    {
        QString service;
        QDBusObjectPath path;
    };

private:
    QDBusMessage call(const Node& node, const char* interface, const char* method,
                      const QVariantList& arguments = {});
    QList<Node> children(const Node& node);
    QString name(const Node& node);
    Node application(qint64 pid);
    Node windowOf(qint64 pid, const QString& title);
    template <typename Wanted>
    Node find(const Node& top, Wanted wanted);

    QDBusConnection m_bus = QDBusConnection(QString());
    QHash<QString, qint64> m_pids;
};

} // namespace proof
