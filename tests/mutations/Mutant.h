#pragma once

// Put before every source of a mutated build, where each place that could be wrong asks here
// whether it shall be. VANTREL_MUTANT holds the number of the one fault that a run has; with
// VANTREL_MUTANTS_REACHED the run appends to that file the number of each place that it comes to.

#include <array>
#include <atomic>
#include <cstdlib>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace mutant {

constexpr int most = 1 << 16;

inline int Chosen() {
    static const char* const number = std::getenv("VANTREL_MUTANT");
    static const int chosen = number == nullptr ? -1 : std::atoi(number);
    return chosen;
}

/// Past the library, whose calls some tests let fail, and past a limit that some set; opened each
/// time, as a child that inherits no file reaches its places, too.
inline int OpenLog(const char* log) {
    rlimit before{};
    ::getrlimit(RLIMIT_NOFILE, &before);
    const rlimit highest{before.rlim_max, before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &highest);
    const auto file = static_cast<int>(
        ::syscall(SYS_openat, AT_FDCWD, log, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
    ::setrlimit(RLIMIT_NOFILE, &before);
    return file;
}

inline void Reach(int number) {
    static const char* const log = std::getenv("VANTREL_MUTANTS_REACHED");
    static std::array<std::atomic<bool>, most> reached{};
    if (log == nullptr || reached[static_cast<std::size_t>(number)].exchange(true))
        return;
    const int file = OpenLog(log);
    if (::syscall(SYS_write, file, &number, sizeof number) != sizeof number)
        std::abort();
    ::syscall(SYS_close, file);
}

inline bool On(int number) {
    Reach(number);
    return Chosen() == number;
}

inline bool Condition(int number, bool value) {
    return On(number) ? !value : value;
}

template <typename T>
T Number(int number, T value) {
    return On(number) ? static_cast<T>(value + T(1)) : value;
}

#define MUTANT_OPERATOR(name, right, wrong)                                                        \
    template <typename A, typename B>                                                              \
    auto name(int number, const A& a, const B& b) {                                                \
        return On(number) ? a wrong b : a right b;                                                 \
    }
MUTANT_OPERATOR(Add, +, -)
MUTANT_OPERATOR(Subtract, -, +)
MUTANT_OPERATOR(Multiply, *, +)
MUTANT_OPERATOR(Divide, /, *)
MUTANT_OPERATOR(Remainder, %, +)
MUTANT_OPERATOR(Less, <, <=)
MUTANT_OPERATOR(AtMost, <=, <)
MUTANT_OPERATOR(Greater, >, >=)
MUTANT_OPERATOR(AtLeast, >=, >)
MUTANT_OPERATOR(Equal, ==, !=)
MUTANT_OPERATOR(Unequal, !=, ==)
#undef MUTANT_OPERATOR

} // namespace mutant
