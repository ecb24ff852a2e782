// closewindow TITLE: asks the window of that title to close, as its frame's button does. 1 where
// there is none.

#include <X11/Xlib.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

std::string titleOf(Display *display, Window window)
{
    Atom type = None;
    int format = 0;
    unsigned long length = 0;
    unsigned long left = 0;
    unsigned char *bytes = nullptr;
    constexpr long longest = 256; // in units of 4 bytes
    XGetWindowProperty(display, window, XInternAtom(display, "_NET_WM_NAME", False), 0, longest,
                       False, XInternAtom(display, "UTF8_STRING", False), &type, &format, &length,
                       &left, &bytes);
    if (!bytes)
        return {};
    const std::string title(bytes, bytes + length);
    XFree(bytes);
    return title;
}

std::vector<Window> childrenOf(Display *display, Window window)
{
    Window root = 0;
    Window parent = 0;
    Window *children = nullptr;
    unsigned count = 0;
    if (!XQueryTree(display, window, &root, &parent, &children, &count) || !children)
        return {};
    const std::vector<Window> found(children, children + count);
    XFree(children);
    return found;
}

bool isShown(Display *display, Window window)
{
    XWindowAttributes attributes;
    return XGetWindowAttributes(display, window, &attributes) && attributes.map_state == IsViewable;
}

void askToClose(Display *display, Window window)
{
    XEvent event;
    std::memset(&event, 0, sizeof event);
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = long(XInternAtom(display, "WM_DELETE_WINDOW", False));
    event.xclient.data.l[1] = CurrentTime;
    XSendEvent(display, window, False, NoEventMask, &event);
    XSync(display, False);
}

} // namespace

int main(int argc, char *argv[])
{
    Display *display = argc == 2 ? XOpenDisplay(nullptr) : nullptr;
    if (!display)
        return 2;
    bool asked = false;
    for (const Window window : childrenOf(display, DefaultRootWindow(display))) {
        if (titleOf(display, window) == argv[1] && isShown(display, window)) {
            askToClose(display, window);
            asked = true;
        }
    }
    XCloseDisplay(display);
    return asked ? 0 : 1;
}
