#include "tests/e2e/close_request.h"

#include <X11/Xlib.h>

bool sendCloseRequest(unsigned long window)
{
    Display* display = XOpenDisplay(nullptr);
    if (!display)
        return false;
    constexpr long fromAPager = 2;
    XEvent event {};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(display, "_NET_CLOSE_WINDOW", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = CurrentTime;
    event.xclient.data.l[1] = fromAPager;
    XSendEvent(display, DefaultRootWindow(display), False,
               SubstructureRedirectMask | SubstructureNotifyMask, &event);
    XCloseDisplay(display);
    return true;
}
