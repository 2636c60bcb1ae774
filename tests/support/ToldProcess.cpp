#include "support/ToldProcess.h"

#include <cstdio>
#include <cstdlib>

bool ToldProcess::AwaitWord() {
    return !said_.empty() || Read();
}

std::string ToldProcess::LastLine() {
    while (Read())
        continue;
    const auto end = said_.find_last_of('\n');
    if (end == std::string::npos)
        return {};
    const auto start = end == 0 ? std::string::npos : said_.rfind('\n', end - 1);
    std::string line = said_.substr(start + 1, end - start - 1);
    if (line.ends_with('\r'))
        line.pop_back();
    return line;
}

void Tell(const std::string& line) {
    if (std::fputs((line + "\n").c_str(), stdout) < 0 || std::fflush(stdout) != 0)
        std::exit(2);
}
