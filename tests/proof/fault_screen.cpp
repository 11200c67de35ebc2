#include "tests/proof/fault_screen.h"

#include <memory>
#include <X11/Xatom.h>
#include <X11/Xlib.h>

namespace proof {

namespace {

// A window may go while it is being asked, which by default ends the process.
int ignoreError(Display* /*display*/, XErrorEvent* /*event*/)
{
    return 0;
}

Display* server()
{
    static Display* display = [] {
        XSetErrorHandler(ignoreError);
        return XOpenDisplay(nullptr);
    }();
    return display;
}

struct Property
{
    std::unique_ptr<unsigned char, decltype(&XFree)> data {nullptr, XFree};
    unsigned long count = 0;
};

Property property(Window window, const char* name, Atom type)
{
    constexpr long kMost = 4096;
    Property found;
    Atom foundType = None;
    int format = 0;
    unsigned long rest = 0;
    unsigned char* data = nullptr;
    const Atom atom = XInternAtom(server(), name, False);
    if (XGetWindowProperty(server(), window, atom, 0, kMost, False, type, &foundType, &format,
                           &found.count, &rest, &data)
        != Success)
        return {};
    found.data.reset(data);
    return found;
}

QList<unsigned long> numbers(Window window, const char* name, Atom type)
{
    const Property found = property(window, name, type);
    // Values of 32 bits come as longs.
    const auto* values = reinterpret_cast<const unsigned long*>(found.data.get());
    return values ? QList<unsigned long>(values, values + found.count) : QList<unsigned long>();
}

} // namespace

QList<ScreenWindow> screenWindows()
{
    QList<ScreenWindow> list;
    if (!server())
        return list;
    const Atom utf8 = XInternAtom(server(), "UTF8_STRING", False);
    const auto ids = numbers(DefaultRootWindow(server()), "_NET_CLIENT_LIST", XA_WINDOW);
    for (const unsigned long id : ids) {
        const Property name = property(id, "_NET_WM_NAME", utf8);
        const auto* text = reinterpret_cast<const char*>(name.data.get());
        const auto pids = numbers(id, "_NET_WM_PID", XA_CARDINAL);
        if (!pids.isEmpty())
            list.append({id, qint64(pids.first()), QString::fromUtf8(text, qsizetype(name.count))});
    }
    return list;
}

} // namespace proof
