#include "tests/proof/fault_access.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>

namespace proof {

namespace {

constexpr int kTimeoutMs = 5000;
constexpr uint kPushButton = 43;
constexpr char kAccessible[] = "org.a11y.atspi.Accessible";
constexpr char kRoot[] = "/org/a11y/atspi/accessible/root";

QDBusMessage ask(const QDBusConnection& bus, const QString& service, const QString& path,
                 const char* interface, const char* method, const QVariantList& arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, QLatin1String(interface),
                                                          QLatin1String(method));
    message.setArguments(arguments);
    return bus.call(message, QDBus::Block, kTimeoutMs);
}

QVariant firstOf(const QDBusMessage& reply)
{
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0) : QVariant();
}

} // namespace

// Found by the toolkit through the type.
QDBusArgument& operator<<(QDBusArgument& argument, const ScreenReader::Node& node)
{
    argument.beginStructure();
    argument << node.service << node.path;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ScreenReader::Node& node)
{
    argument.beginStructure();
    argument >> node.service >> node.path;
    argument.endStructure();
    return argument;
}

bool ScreenReader::connect()
{
    qDBusRegisterMetaType<Node>();
    const QString address =
        firstOf(ask(QDBusConnection::sessionBus(), QStringLiteral("org.a11y.Bus"),
                    QStringLiteral("/org/a11y/bus"), "org.a11y.Bus", "GetAddress", {}))
            .toString();
    m_bus = QDBusConnection::connectToBus(address, QStringLiteral("accessibility"));
    return m_bus.isConnected();
}

QDBusMessage ScreenReader::call(const Node& node, const char* interface, const char* method,
                                const QVariantList& arguments)
{
    return ask(m_bus, node.service, node.path.path(), interface, method, arguments);
}

QList<ScreenReader::Node> ScreenReader::children(const Node& node)
{
    QList<Node> list;
    const QVariant reply = firstOf(call(node, kAccessible, "GetChildren"));
    if (!reply.canConvert<QDBusArgument>())
        return list;
    const auto argument = reply.value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        Node child;
        argument >> child;
        list.append(child);
    }
    argument.endArray();
    return list;
}

QString ScreenReader::name(const Node& node)
{
    const QVariant reply = firstOf(call(node, "org.freedesktop.DBus.Properties", "Get",
                                        {QLatin1String(kAccessible), QStringLiteral("Name")}));
    return reply.value<QDBusVariant>().variant().toString();
}

ScreenReader::Node ScreenReader::application(qint64 pid)
{
    const Node registry {QStringLiteral("org.a11y.atspi.Registry"),
                         QDBusObjectPath(QLatin1String(kRoot))};
    const QList<Node> all = children(registry);
    for (const Node& node : all) {
        if (!m_pids.contains(node.service))
            m_pids.insert(node.service, m_bus.interface()->servicePid(node.service).value());
        if (m_pids.value(node.service) == pid)
            return node;
    }
    return {};
}

ScreenReader::Node ScreenReader::windowOf(qint64 pid, const QString& title)
{
    const Node program = application(pid);
    if (program.service.isEmpty())
        return {};
    const QList<Node> all = children(program);
    for (const Node& window : all) {
        if (name(window) == title)
            return window;
    }
    return {};
}

template <typename Wanted>
ScreenReader::Node ScreenReader::find(const Node& top, Wanted wanted)
{
    if (top.service.isEmpty())
        return {};
    QList<Node> open {top};
    while (!open.isEmpty()) {
        const Node node = open.takeFirst();
        if (wanted(node))
            return node;
        open += children(node);
    }
    return {};
}

bool ScreenReader::press(qint64 pid, const QString& window, const QStringList& names)
{
    const Node button = find(windowOf(pid, window), [&](const Node& node) {
        return names.contains(name(node))
            && firstOf(call(node, kAccessible, "GetRole")).toUInt() == kPushButton;
    });
    return !button.service.isEmpty()
        && firstOf(call(button, "org.a11y.atspi.Action", "DoAction", {0})).toBool();
}

QString ScreenReader::text(qint64 pid, const QString& window, const QString& part)
{
    QString found;
    find(windowOf(pid, window), [&](const Node& node) {
        const QString text = name(node);
        if (text.contains(part))
            found = text;
        return !found.isEmpty();
    });
    return found;
}

} // namespace proof
