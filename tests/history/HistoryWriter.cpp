// Writes into a history until it is killed. A line of standard output is written after each entry
// whose writing has returned. Usage: history_writer FILE

#include "history/Histories.h"
#include "support/ToldProcess.h"

int main(int argc, char* argv[]) {
    if (argc != 2)
        return 1;
    const auto store = History::OpenStore(argv[1]);
    for (std::int64_t number = store->LastNumber() + 1;; ++number) {
        Say(*store, std::to_string(number));
        Tell(std::to_string(number));
    }
}
