#include "program/Desktop.h"

#include "Contents.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstring>

namespace {

/// In units of 4 bytes, as the X server counts.
constexpr long LongestProperty = 4096;

/// Writes the name of the display, and ends with the process that it is given, however that ends.
constexpr const char* Waiting = "echo \"$DISPLAY\"; exec >&-; while kill -0 \"$1\" 2>/dev/null; do sleep 1; done";

/// Ignores X errors: a window may disappear between two requests.
int passOver(Display*, XErrorEvent*) {
    return 0;
}

int endWithoutDisplay(Display*) {
    mustWork(false, "a display is gone");
    return 0;
}

/// The words of a property, or its bytes one a word; empty when the window has none.
std::vector<unsigned long> property(Display* display, Window window, const char* name) {
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long rest = 0;
    unsigned char* data = nullptr;
    std::vector<unsigned long> values;
    const Atom atom = XInternAtom(display, name, False);
    if (XGetWindowProperty(display, window, atom, 0, LongestProperty, False, AnyPropertyType, &type, &format, &count,
                           &rest, &data) != Success ||
        data == nullptr)
        return values;
    for (unsigned long i = 0; i < count; ++i) {
        unsigned long value = data[i];
        if (format == 32)
            std::memcpy(&value, data + i * sizeof value, sizeof value);
        values.push_back(value);
    }
    XFree(data);
    return values;
}

std::string titleOf(Display* display, Window window) {
    std::string title;
    for (const unsigned long byte : property(display, window, "_NET_WM_NAME"))
        title += static_cast<char>(byte);
    return title;
}

/// The first line that arrives; empty when the other end is closed before.
std::string readLine(int from) {
    std::string line;
    char each = 0;
    while (::read(from, &each, 1) == 1 && each != '\n')
        line += each;
    return line;
}

}  // namespace

Desktop::Desktop() {
    int ends[2];
    mustWork(::pipe2(ends, O_CLOEXEC) == 0, "cannot make a pipe");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    const std::string script = QUILLMARK_SCRIPTS "/with-display";
    std::vector<std::string> words{
        script, "--wm", "--size", "1000x700", "sh", "-c", Waiting, "sh", std::to_string(::getpid())};
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    mustWork(::posix_spawn(&m_process, arguments[0], &actions, nullptr, arguments.data(), environ) == 0,
             "cannot start a display");
    posix_spawn_file_actions_destroy(&actions);
    ::close(ends[1]);
    m_name = readLine(ends[0]);
    ::close(ends[0]);
    XSetErrorHandler(passOver);
    XSetIOErrorHandler(endWithoutDisplay);
    m_display = m_name.empty() ? nullptr : XOpenDisplay(m_name.c_str());
    mustWork(m_display != nullptr, "cannot open a display");
}

Desktop::~Desktop() {
    XCloseDisplay(m_display);
    ::kill(m_process, SIGTERM);
    ::waitpid(m_process, nullptr, 0);
}

std::vector<std::string> Desktop::titles() const {
    std::vector<std::string> titles;
    for (const Window window : property(m_display, DefaultRootWindow(m_display), "_NET_CLIENT_LIST"))
        titles.push_back(titleOf(m_display, window));
    return titles;
}

std::string Desktop::activeTitle() const {
    const std::vector<unsigned long> active = property(m_display, DefaultRootWindow(m_display), "_NET_ACTIVE_WINDOW");
    return active.empty() || active.front() == None ? std::string() : titleOf(m_display, active.front());
}
