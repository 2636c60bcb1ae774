#include "base/RunTimeError.h"
#include "simulator/Options.h"
#include "simulator/Program.h"

#include <exception>
#include <iostream>
#include <string_view>
#include <vector>

namespace {

constexpr int failed = 1;
constexpr int badUsage = 2;

int Send(const simulator::Options& options) {
    const auto path = simulator::ControlPath(options);
    if (!path)
        throw RunTimeError("--send needs the instrument's place: --com, --link or --control");
    const simulator::Answer answer = simulator::SendCommand(*path, options.commandToSend);
    if (!answer.text.empty())
        (answer.ok ? std::cout : std::cerr) << answer.text << '\n';
    return answer.ok ? 0 : failed;
}

int Perform(const simulator::Options& options) {
    switch (options.task) {
    case simulator::Options::Task::showHelp:
        std::cout << simulator::OptionHelp();
        return 0;
    case simulator::Options::Task::showVersion:
        std::cout << "vantrel-instrument " << VANTREL_VERSION << '\n';
        return 0;
    case simulator::Options::Task::send:
        return Send(options);
    case simulator::Options::Task::run:
        break;
    }
    simulator::Program(options).Run();
    return 0;
}

} // namespace

int main(int count, char** texts) {
    const std::vector<std::string_view> arguments(texts + 1, texts + count);
    simulator::Options options;
    try {
        options = simulator::ParseOptions(arguments);
    } catch (const RunTimeError& error) {
        std::cerr << "vantrel-instrument: " << error.what() << '\n';
        return badUsage;
    }
    try {
        return Perform(options);
    } catch (const std::exception& error) {
        std::cerr << "vantrel-instrument: " << error.what() << '\n';
        return failed;
    }
}
