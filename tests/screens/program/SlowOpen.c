// Preloaded into the program: opening the serial devices of its user takes four seconds, as with an
// adapter whose driver waits for it.
#define _GNU_SOURCE
#include <dlfcn.h>
#include <fcntl.h>
#include <limits.h>
#include <stdarg.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static int OpenSlowly(const char* symbol, const char* path, int flags, mode_t mode) {
    const char* slow = getenv("SLOW_DEVICE");
    int (*real)(const char*, int, ...) = dlsym(RTLD_NEXT, symbol);
    char device[PATH_MAX];
    if (slow != NULL && realpath(path, device) != NULL && strcmp(device, slow) == 0)
        sleep(4);
    return real(path, flags, mode);
}

int open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return OpenSlowly("open", path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return OpenSlowly("open64", path, flags, mode);
}
