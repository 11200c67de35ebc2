#pragma once

#include <QDebug>
#include <QStringList>

/// Collects the debug lines of the process for as long as it lives; warnings go on as before.
class DebugLines
{
public:
    DebugLines()
    {
        lines().clear();
        previous() = qInstallMessageHandler(collect);
    }

    ~DebugLines() { qInstallMessageHandler(previous()); }

    DebugLines(const DebugLines&) = delete;
    DebugLines& operator=(const DebugLines&) = delete;

    QStringList all() const { return lines(); }

    QStringList with(const QString& text) const { return lines().filter(text); }

private:
    static QStringList& lines()
    {
        static QStringList list;
        return list;
    }

    static QtMessageHandler& previous()
    {
        static QtMessageHandler handler = nullptr;
        return handler;
    }

    static void collect(QtMsgType type, const QMessageLogContext& context, const QString& text)
    {
        if (type == QtDebugMsg)
            lines().append(text);
        else if (previous())
            previous()(type, context, text);
    }
};
