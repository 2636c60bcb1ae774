#include "tools/Options.h"

#include "base/RunTimeError.h"

#include <algorithm>
#include <array>

namespace tools {

namespace {

struct TaskName {
    std::string_view name;
    Options::Task task;
};

constexpr std::array<TaskName, 5> taskNames = {{
    {"info", Options::Task::info},
    {"csv", Options::Task::csv},
    {"verify", Options::Task::verify},
    {"seal", Options::Task::seal},
    {"recover", Options::Task::recover},
}};

Options::Task TaskOf(std::string_view name) {
    const auto found = std::ranges::find(taskNames, name, &TaskName::name);
    if (found == taskNames.end())
        throw RunTimeError("\"" + std::string(name) + "\" is no command; see --help");
    return found->task;
}

std::string TakeValue(std::string_view option, std::span<const std::string_view>& rest) {
    if (rest.empty())
        throw RunTimeError(std::string(option) + " needs a value");
    std::string value(rest.front());
    rest = rest.subspan(1);
    return value;
}

/// Takes an option; `rest` begins behind it and loses its value.
void TakeOption(Options& options, std::string_view option,
                std::span<const std::string_view>& rest) {
    if (option == "--json") {
        options.json = true;
    } else if (option == "--spreadsheet") {
        options.spreadsheet = true;
    } else if (option == "--force" || option == "-f") {
        options.force = true;
    } else if (option == "--output" || option == "-o") {
        options.output = TakeValue(option, rest);
    } else if (option == "--history") {
        options.history = TakeValue(option, rest);
    } else if (option == "--from") {
        options.recordings = TakeValue(option, rest);
    } else {
        throw RunTimeError("\"" + std::string(option) + "\" is no option; see --help");
    }
}

void CheckTogether(const Options& options) {
    if (options.files.empty())
        throw RunTimeError("a measurement file is wanted; see --help");
    const bool csv = options.task == Options::Task::csv;
    if ((options.output || options.spreadsheet) && !csv)
        throw RunTimeError("--output and --spreadsheet belong to csv");
    if (options.force && !csv && options.task != Options::Task::seal)
        throw RunTimeError("--force belongs to csv and seal");
    if (options.recordings && options.task != Options::Task::recover)
        throw RunTimeError("--from belongs to recover");
    const bool asksHistory =
        options.task == Options::Task::verify || options.task == Options::Task::recover;
    if (options.history && !asksHistory)
        throw RunTimeError("--history belongs to verify and recover");
    if (options.output && options.files.size() > 1)
        throw RunTimeError("--output takes one measurement file");
    if (options.json && csv)
        throw RunTimeError("csv has no --json");
}

} // namespace

Options ParseOptions(std::span<const std::string_view> arguments) {
    Options options;
    if (arguments.empty())
        throw RunTimeError("a command is wanted: info, csv, verify, seal or recover; see --help");
    const std::string_view command = arguments.front();
    if (command == "--help" || command == "-h")
        return options;
    options.task = command == "--version" ? Options::Task::showVersion : TaskOf(command);
    if (options.task == Options::Task::showVersion)
        return options;
    auto rest = arguments.subspan(1);
    bool optionsEnded = false;
    while (!rest.empty()) {
        const std::string_view word = rest.front();
        rest = rest.subspan(1);
        if (!optionsEnded && word == "--")
            optionsEnded = true;
        else if (!optionsEnded && word.size() > 1 && word.starts_with('-'))
            TakeOption(options, word, rest);
        else
            options.files.emplace_back(std::string(word));
    }
    CheckTogether(options);
    return options;
}

std::string_view OptionHelp() {
    return R"(vantrel-file COMMAND [OPTION]... FILE...
Measurement files without a display.

info      tell project, channels, calibrations, records and times
csv       write the records as comma-separated values, into FILE with the ending .csv
verify    compute each pH, ppm and mol/l anew and name the values that diverge
          and, where FILE.seal is there or the history knows the file, whether it is
          what was sealed
seal      write FILE.seal, by which verify knows the file again
recover   bring records into FILE that were left behind when a recording was cut off

--json             answer for a machine: an array with an object for each FILE
-o, --output FILE  csv: write here; - is standard output
--spreadsheet      csv: begin with a byte order mark
-f, --force        csv, seal: replace a file that is there
--history FILE     verify, recover: with this history, not that of the user's own program
--from FOLDER      recover: where the records were left behind, if not in /var/tmp
--help, --version

Exit status: 0 all is well, 1 values diverge or a file is damaged or cannot be read,
2 wrong use.
)";
}

} // namespace tools
