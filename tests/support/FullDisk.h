#pragma once

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

/// No file of this process may grow beyond a size, as on a full disk, while the object lives.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) : oldHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &old_);
        const rlimit limit{bytes, old_.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~FullDisk() {
        ::setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, oldHandler_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit old_{};
    void (*oldHandler_)(int);
};
