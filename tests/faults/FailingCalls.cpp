#include "faults/FailingCalls.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <optional>
#include <stdexcept>

namespace FailingCalls {

namespace {

/// Lies in memory that parent and child share.
Outcome* outcome = nullptr;
bool counting = false; ///< in the child, while it works
int failingCall = 0;
Fault faultToMeet = Fault::end;

Watcher* watcher = nullptr; ///< while it is told

enum class Verdict { succeeds, fails, half };

int ErrorOf(Fault fault) {
    switch (fault) {
    case Fault::noSpace:
        return ENOSPC;
    case Fault::permission:
        return EACCES;
    case Fault::interrupted:
        return EINTR;
    default:
        return EIO;
    }
}

/// Counts a call, and sets errno where it fails.
Verdict Judge() {
    if (!counting)
        return Verdict::succeeds;
    const int call = ++outcome->calls;
    const bool meets = failingCall != 0 &&
                       (call == failingCall || (faultToMeet == Fault::gone && call > failingCall));
    if (!meets)
        return Verdict::succeeds;
    if (faultToMeet == Fault::end)
        ::_exit(0);
    if (faultToMeet == Fault::partly)
        return Verdict::half;
    errno = ErrorOf(faultToMeet);
    return Verdict::fails;
}

bool Fails() {
    return Judge() == Verdict::fails;
}

/// The system's own function of this name.
template <class Function>
Function* Real(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

std::string PathOf(int file) {
    std::string name(PATH_MAX, '\0');
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    const ssize_t length = ::readlink(link.c_str(), name.data(), name.size());
    name.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
    return name;
}

bool Exists(const char* path) {
    return ::access(path, F_OK) == 0;
}

/// Where the next write to the file begins.
std::size_t PlaceIn(int file) {
    const bool atEnd = (::fcntl(file, F_GETFL) & O_APPEND) != 0;
    return static_cast<std::size_t>(::lseek(file, 0, atEnd ? SEEK_END : SEEK_CUR));
}

int ToldFlush(int result, int file) {
    if (watcher != nullptr && result == 0)
        watcher->Flushed(PathOf(file));
    return result;
}

int ToldRemoval(int result, const char* path) {
    if (watcher != nullptr && result == 0)
        watcher->Removed(path);
    return result;
}

int Open(const char* name, const char* path, int flags, mode_t mode) {
    if (Fails())
        return -1;
    const bool isNew = watcher != nullptr && !Exists(path);
    const int file = Real<int(const char*, int, ...)>(name)(path, flags, mode);
    if (watcher != nullptr && file >= 0 && (flags & (O_CREAT | O_TRUNC)) != 0) {
        if (isNew)
            watcher->Made(path);
        else if ((flags & O_TRUNC) != 0)
            watcher->Cut(path, 0);
    }
    return file;
}

/// How many of so many bytes a write is to take; nothing where it fails.
std::optional<std::size_t> Taken(std::size_t count) {
    const Verdict verdict = Judge();
    if (verdict == Verdict::fails)
        return std::nullopt;
    return verdict == Verdict::half && count > 1 ? count / 2 : count;
}

int CutTo(const char* name, int file, off_t length) {
    if (Fails())
        return -1;
    const int result = Real<int(int, off_t)>(name)(file, length);
    if (watcher != nullptr && result == 0)
        watcher->Cut(PathOf(file), static_cast<std::size_t>(length));
    return result;
}

Outcome* SharedOutcome() {
    void* memory =
        ::mmap(nullptr, sizeof(Outcome), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        throw std::runtime_error("no shared memory");
    return new (memory) Outcome;
}

} // namespace

std::string NameOf(Fault fault) {
    constexpr std::array names{"noSpace", "inputOutput", "permission", "interrupted",
                               "partly",  "gone",        "end"};
    return names.at(static_cast<std::size_t>(fault));
}

void Watch(Watcher& watching, const std::function<void()>& work) {
    watcher = &watching;
    work();
    watcher = nullptr;
}

Outcome InChild(const std::function<void()>& work, int failing, Fault fault) {
    outcome = SharedOutcome();
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child < 0)
        throw std::runtime_error("no child process");
    if (child == 0) {
        failingCall = failing;
        faultToMeet = fault;
        counting = true;
        work();
        counting = false;
        outcome->finished = true;
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    const Outcome result = *outcome;
    ::munmap(outcome, sizeof(Outcome));
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw std::runtime_error("the child process crashed at call " + std::to_string(failing) +
                                 " meeting " + NameOf(fault));
    return result;
}

} // namespace FailingCalls

using FailingCalls::Fails;
using FailingCalls::Real;
using FailingCalls::watcher;

// ---- The calls, in place of the system's -------------------------------------------------------

extern "C" {

int open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return FailingCalls::Open("open", path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return FailingCalls::Open("open64", path, flags, mode);
}

FILE* fopen(const char* path, const char* mode) {
    return Fails() ? nullptr : Real<FILE*(const char*, const char*)>("fopen")(path, mode);
}

FILE* fopen64(const char* path, const char* mode) {
    return Fails() ? nullptr : Real<FILE*(const char*, const char*)>("fopen64")(path, mode);
}

ssize_t read(int file, void* bytes, size_t count) {
    return Fails() ? -1 : Real<ssize_t(int, void*, size_t)>("read")(file, bytes, count);
}

ssize_t pread64(int file, void* bytes, size_t count, off64_t at) {
    return Fails() ? -1
                   : Real<ssize_t(int, void*, size_t, off64_t)>("pread64")(file, bytes, count, at);
}

ssize_t write(int file, const void* bytes, size_t count) {
    const auto taken = FailingCalls::Taken(count);
    if (!taken)
        return -1;
    const std::size_t at = watcher != nullptr ? FailingCalls::PlaceIn(file) : 0;
    const ssize_t written = Real<ssize_t(int, const void*, size_t)>("write")(file, bytes, *taken);
    if (watcher != nullptr && written > 0)
        watcher->Wrote(FailingCalls::PathOf(file), at,
                       {static_cast<const char*>(bytes), static_cast<std::size_t>(written)});
    return written;
}

ssize_t pwrite64(int file, const void* bytes, size_t count, off64_t at) {
    const auto taken = FailingCalls::Taken(count);
    return taken ? Real<ssize_t(int, const void*, size_t, off64_t)>("pwrite64")(file, bytes, *taken,
                                                                                at)
                 : -1;
}

int fsync(int file) {
    return Fails() ? -1 : FailingCalls::ToldFlush(Real<int(int)>("fsync")(file), file);
}

int fdatasync(int file) {
    return Fails() ? -1 : FailingCalls::ToldFlush(Real<int(int)>("fdatasync")(file), file);
}

int ftruncate(int file, off_t length) noexcept {
    return FailingCalls::CutTo("ftruncate", file, length);
}

int ftruncate64(int file, off64_t length) noexcept {
    return FailingCalls::CutTo("ftruncate64", file, length);
}

int fchmod(int file, mode_t mode) noexcept {
    return Fails() ? -1 : Real<int(int, mode_t)>("fchmod")(file, mode);
}

int rename(const char* from, const char* to) noexcept {
    if (Fails())
        return -1;
    const int result = Real<int(const char*, const char*)>("rename")(from, to);
    if (watcher != nullptr && result == 0)
        watcher->Renamed(from, to);
    return result;
}

int unlink(const char* path) noexcept {
    return Fails() ? -1 : FailingCalls::ToldRemoval(Real<int(const char*)>("unlink")(path), path);
}

int remove(const char* path) noexcept {
    return Fails() ? -1 : FailingCalls::ToldRemoval(Real<int(const char*)>("remove")(path), path);
}

int mkstemp(char* name) {
    if (Fails())
        return -1;
    const int file = Real<int(char*)>("mkstemp")(name);
    if (watcher != nullptr && file >= 0)
        watcher->Made(name);
    return file;
}

int flock(int file, int operation) noexcept {
    return Fails() ? -1 : Real<int(int, int)>("flock")(file, operation);
}

} // extern "C"
