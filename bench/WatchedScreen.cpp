#include "WatchedScreen.h"

#include "Keyboard.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XShm.h>
#include <X11/extensions/Xdamage.h>
#include <poll.h>
#include <sys/ipc.h>
#include <sys/shm.h>

#include <algorithm>
#include <fstream>
#include <utility>

struct WatchedScreen::Parts {
    Display* display = nullptr;
    Window root = 0;
    Damage damage = 0;
    int damageEvent = 0;
    XImage* image = nullptr;
    XShmSegmentInfo segment = {};
    int windowPixels = 0;

    void takeEvents(bool& drawn);
};

namespace {

/// A smaller window is not the program's window but a tool tip, a hidden helper window or a splash screen.
constexpr int LeastWindowPixels = 200 * 150;

bool shareImage(Display* display, XImage*& image, XShmSegmentInfo& segment) {
    const int number = DefaultScreen(display);
    image =
        XShmCreateImage(display, DefaultVisual(display, number), static_cast<unsigned>(DefaultDepth(display, number)),
                        ZPixmap, nullptr, &segment, static_cast<unsigned>(DisplayWidth(display, number)),
                        static_cast<unsigned>(DisplayHeight(display, number)));
    if (image == nullptr)
        return false;
    const auto bytes = static_cast<std::size_t>(image->bytes_per_line) * static_cast<std::size_t>(image->height);
    segment.shmid = shmget(IPC_PRIVATE, bytes, IPC_CREAT | 0600);
    if (segment.shmid < 0)
        return false;
    segment.shmaddr = static_cast<char*>(shmat(segment.shmid, nullptr, 0));
    shmctl(segment.shmid, IPC_RMID, nullptr);
    image->data = segment.shmaddr;
    return XShmAttach(display, &segment) != 0 && XSync(display, False) != 0;
}

/// Ignores X errors: a window may disappear between two requests.
int passOver(Display*, XErrorEvent*) {
    return 0;
}

}  // namespace

void WatchedScreen::Parts::takeEvents(bool& drawn) {
    while (XPending(display) > 0) {
        XEvent event;
        XNextEvent(display, &event);
        if (event.type == damageEvent + XDamageNotify) {
            drawn = true;
            XDamageSubtract(display, damage, None, None);
        } else if (event.type == MapNotify) {
            XWindowAttributes seen;
            if (XGetWindowAttributes(display, event.xmap.window, &seen) != 0 &&
                seen.width * seen.height >= LeastWindowPixels)
                windowPixels = std::max(windowPixels, seen.width * seen.height);
        }
    }
}

WatchedScreen::WatchedScreen() : m_parts(std::make_unique<Parts>()) {
    Parts& my = *m_parts;
    XSetErrorHandler(passOver);
    my.display = XOpenDisplay(nullptr);
    int errorBase = 0;
    if (my.display == nullptr || XDamageQueryExtension(my.display, &my.damageEvent, &errorBase) == 0 ||
        !shareImage(my.display, my.image, my.segment))
        return;
    my.root = DefaultRootWindow(my.display);
    XSelectInput(my.display, my.root, SubstructureNotifyMask);
    my.damage = XDamageCreate(my.display, my.root, XDamageReportNonEmpty);
    XSync(my.display, False);
}

WatchedScreen::~WatchedScreen() {
    if (m_parts->display != nullptr)
        XCloseDisplay(m_parts->display);
}

bool WatchedScreen::isOpen() const {
    return m_parts->damage != 0;
}

bool WatchedScreen::wasDrawn(int milliseconds) {
    bool drawn = false;
    m_parts->takeEvents(drawn);
    if (drawn)
        return true;
    XFlush(m_parts->display);
    pollfd incoming = {ConnectionNumber(m_parts->display), POLLIN, 0};
    if (poll(&incoming, 1, milliseconds) > 0)
        m_parts->takeEvents(drawn);
    return drawn;
}

WatchedScreen::Picture WatchedScreen::picture() {
    return picture({0, m_parts->image->height});
}

/// The image of the whole screen is asked for fewer rows, which come to its beginning.
WatchedScreen::Picture WatchedScreen::picture(Rows rows) {
    Parts& my = *m_parts;
    const int height = std::exchange(my.image->height, rows.count);
    XShmGetImage(my.display, my.root, my.image, 0, rows.first, AllPlanes);
    my.image->height = height;
    Picture taken(static_cast<std::size_t>(my.image->width) * static_cast<std::size_t>(rows.count));
    std::size_t at = 0;
    for (int row = 0; row < rows.count; ++row) {
        const char* line = my.image->data + static_cast<std::ptrdiff_t>(row) * my.image->bytes_per_line;
        for (int column = 0; column < my.image->width; ++column)
            taken[at++] = static_cast<std::uint8_t>(line[column * 4 + 1]);
    }
    return taken;
}

WatchedScreen::Rows WatchedScreen::topmostChange(const Picture& one, const Picture& other) const {
    const auto width = static_cast<std::size_t>(m_parts->image->width);
    const auto differs = [&](int row) {
        const auto from = static_cast<std::ptrdiff_t>(static_cast<std::size_t>(row) * width);
        const auto to = from + static_cast<std::ptrdiff_t>(width);
        return !std::equal(one.begin() + from, one.begin() + to, other.begin() + from);
    };
    Rows rows;
    while (rows.first < m_parts->image->height && !differs(rows.first))
        ++rows.first;
    while (rows.first + rows.count < m_parts->image->height && differs(rows.first + rows.count))
        ++rows.count;
    return rows;
}

int WatchedScreen::changedWidth(const Picture& one, const Picture& other) const {
    const auto width = static_cast<std::size_t>(m_parts->image->width);
    std::size_t left = width;
    std::size_t right = 0;
    for (std::size_t at = 0; at < one.size(); ++at) {
        if (one[at] == other[at])
            continue;
        left = std::min(left, at % width);
        right = std::max(right, at % width + 1);
    }
    return right > left ? static_cast<int>(right - left) : 0;
}

int WatchedScreen::windowPixels() const {
    return m_parts->windowPixels;
}

bool WatchedScreen::hasFocusedWindow() const {
    Window focused = None;
    int revert = 0;
    XGetInputFocus(m_parts->display, &focused, &revert);
    if (focused == None || focused == PointerRoot)
        return false;
    // While no program has the focus, a tiny window of the window manager may have it; this one does not count.
    Window top = focused;
    while (top != m_parts->root) {
        Window root = None;
        Window parent = None;
        Window* children = nullptr;
        unsigned count = 0;
        if (XQueryTree(m_parts->display, top, &root, &parent, &children, &count) == 0)
            return false;
        XFree(children);
        if (parent == root)
            break;
        top = parent;
    }
    XWindowAttributes seen;
    return XGetWindowAttributes(m_parts->display, top, &seen) != 0 && seen.width * seen.height >= LeastWindowPixels;
}

void WatchedScreen::press(const std::string& key, bool control) {
    Keyboard(m_parts->display).press(control ? "ctrl+" + key : key);
}

bool WatchedScreen::write(const Picture& picture, const std::string& path) const {
    std::ofstream file(path, std::ios::binary);
    file << "P5\n" << m_parts->image->width << ' ' << m_parts->image->height << "\n255\n";
    file.write(reinterpret_cast<const char*>(picture.data()), static_cast<std::streamsize>(picture.size()));
    return file.good();
}

int differingPixels(const WatchedScreen::Picture& one, const WatchedScreen::Picture& other) {
    int count = 0;
    for (std::size_t at = 0; at < one.size(); ++at)
        count += one[at] != other[at] ? 1 : 0;
    return count;
}
