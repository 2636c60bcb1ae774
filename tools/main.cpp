#include "base/RunTimeError.h"
#include "tools/Commands.h"
#include "tools/Headless.h"
#include "tools/OpenedFile.h"

#include <algorithm>
#include <exception>
#include <iostream>
#include <string_view>
#include <vector>

namespace {

using tools::Options;

int Complain(std::string_view what, int code) {
    std::cerr << "vantrel-file: " << what << '\n'; // UTF-8
    return code;
}

using Command = int (*)(const Options&, const std::filesystem::path&, tools::JsonArray&);

Command CommandOf(Options::Task task) {
    switch (task) {
    case Options::Task::info:
        return tools::Info;
    case Options::Task::csv:
        return tools::Csv;
    case Options::Task::verify:
        return tools::Verify;
    case Options::Task::seal:
        return tools::MakeSeal;
    case Options::Task::recover:
        return tools::Recover;
    case Options::Task::showHelp:
    case Options::Task::showVersion:
        break;
    }
    return nullptr;
}

int OnOneFile(Command command, const Options& options, const std::filesystem::path& file,
              tools::JsonArray& answers) {
    try {
        return command(options, file, answers);
    } catch (const std::exception& error) {
        if (options.json)
            answers.Add(tools::Json()
                            .Text("file", tools::NameOf(file))
                            .Text("error", tools::Utf8(error.what()))
                            .Object());
        return Complain(tools::Utf8(error.what()), tools::notFine);
    }
}

int Perform(const Options& options) {
    const Command command = CommandOf(options.task);
    if (command == nullptr) {
        if (options.task == Options::Task::showHelp)
            std::cout << tools::OptionHelp();
        else
            std::cout << "vantrel-file " << VANTREL_VERSION << '\n';
        return tools::fine;
    }
    const tools::Headless platform(options.recordings);
    tools::JsonArray answers;
    int worst = tools::fine;
    for (const auto& file : options.files)
        worst = std::max(worst, OnOneFile(command, options, file, answers));
    if (options.json)
        std::cout << answers.Text() << '\n';
    if (!std::cout.flush())
        return Complain("Writing to standard output: it takes no more", tools::notFine);
    return worst;
}

} // namespace

int main(int count, char** texts) {
    const std::vector<std::string_view> arguments(texts + std::min(count, 1), texts + count);
    Options options;
    try {
        options = tools::ParseOptions(arguments);
    } catch (const RunTimeError& error) {
        return Complain(error.what(), tools::wrongUse);
    }
    try {
        return Perform(options);
    } catch (const std::exception& error) {
        return Complain(tools::Utf8(error.what()), tools::notFine);
    }
}
