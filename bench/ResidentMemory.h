#pragma once

#include <fstream>
#include <string>

/// Resident memory of this process in KiB; 0 where the system does not tell.
inline long ResidentMemory_KiB() {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word)
        if (word == "VmRSS:") {
            long kibibytes = 0;
            status >> kibibytes;
            return kibibytes;
        }
    return 0;
}
