// Time from starting the program until the first pixels of its splash stand on the screen, under
// the display of the environment (empty, without a window manager): bench_start PROGRAM [STARTS].
// Fails when the median is above the bound.

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr double bound_ms = 300;
constexpr std::chrono::seconds patience{20};

unsigned long PixelInTheMiddle(Display* display) {
    const int screen = DefaultScreen(display);
    XImage* image =
        XGetImage(display, RootWindow(display, screen), DisplayWidth(display, screen) / 2,
                  DisplayHeight(display, screen) / 2, 1, 1, AllPlanes, ZPixmap);
    const unsigned long pixel = XGetPixel(image, 0, 0);
    XDestroyImage(image);
    return pixel;
}

/// Starts the program and ends it as soon as the middle of the screen has changed; -1 when it
/// never does.
double StartTime_ms(Display* display, char* program) {
    const unsigned long background = PixelInTheMiddle(display);
    char* arguments[] = {program, nullptr};
    pid_t id = 0;
    const auto begin = Clock::now();
    if (::posix_spawn(&id, program, nullptr, nullptr, arguments, environ) != 0)
        return -1;
    auto shown = begin;
    while (PixelInTheMiddle(display) == background) {
        shown = Clock::now();
        if (shown - begin > patience)
            break;
        ::usleep(500);
    }
    const bool visible = shown - begin <= patience;
    ::kill(id, SIGTERM);
    ::waitpid(id, nullptr, 0);
    while (PixelInTheMiddle(display) != background)
        ::usleep(500);
    return visible ? std::chrono::duration<double, std::milli>(shown - begin).count() : -1;
}

} // namespace

int main(int argc, char* argv[]) {
    Display* display = XOpenDisplay(nullptr);
    if (argc < 2 || display == nullptr) {
        std::fprintf(stderr, "usage, under a display: %s PROGRAM [STARTS]\n", argv[0]);
        return 2;
    }
    std::vector<double> times_ms(argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 10);
    std::ranges::generate(times_ms, [&] { return StartTime_ms(display, argv[1]); });
    std::ranges::sort(times_ms);
    const double median_ms = times_ms[times_ms.size() / 2];
    std::printf("start to visible splash: %.0f ms (%.0f to %.0f, %zu starts)\n", median_ms,
                times_ms.front(), times_ms.back(), times_ms.size());
    XCloseDisplay(display);
    return times_ms.front() >= 0 && median_ms <= bound_ms ? 0 : 1;
}
