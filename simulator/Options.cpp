#include "simulator/Options.h"

#include "base/RunTimeError.h"
#include "simulator/CommandParser.h"
#include "simulator/LineSpeed.h"
#include "simulator/Words.h"

#include <array>
#include <charconv>

namespace simulator {

namespace {

constexpr int highestPort = 16;

class Arguments {
public:
    explicit Arguments(std::span<const std::string_view> arguments) : rest_(arguments) {}

    bool AtEnd() const { return rest_.empty(); }

    std::string_view Take() {
        const std::string_view argument = rest_.front();
        rest_ = rest_.subspan(1);
        return argument;
    }

    std::string TakeValue(std::string_view option) {
        if (AtEnd() || rest_.front().starts_with("--"))
            throw RunTimeError(std::string(option) + " needs a value");
        return std::string(Take());
    }

    /// All words up to the next option, as one line.
    std::string TakeWords(std::string_view option) {
        std::string line = TakeValue(option);
        while (!AtEnd() && !rest_.front().starts_with("--"))
            line += " " + std::string(Take());
        return line;
    }

private:
    std::span<const std::string_view> rest_;
};

/// Options that are commands: their words are the command's.
constexpr std::array<std::string_view, 4> commandOptions = {"electrode", "solution", "temperature",
                                                            "fault"};

std::uint64_t ParseSeed(const std::string& text) {
    std::uint64_t seed = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), seed);
    if (end.ec != std::errc{} || end.ptr != text.data() + text.size())
        throw RunTimeError("--seed: \"" + text + "\" is no whole number from 0");
    return seed;
}

void AddCommand(Options& options, const std::string& line) {
    ParseCommand(line); // a bad one is told before anything begins
    options.commands.push_back(line);
}

bool TakeCommandOption(Options& options, std::string_view option, Arguments& arguments) {
    for (std::string_view name : commandOptions) {
        if (option == "--" + std::string(name)) {
            AddCommand(options, std::string(name) + " " + arguments.TakeWords(option));
            return true;
        }
    }
    if (option == "--unsolicited") {
        AddCommand(options, "auto " + arguments.TakeValue(option));
        return true;
    }
    if (option == "--run") {
        AddCommand(options, arguments.TakeWords(option));
        return true;
    }
    return false;
}

bool TakePlaceOption(Options& options, std::string_view option, Arguments& arguments) {
    if (option == "--com") {
        Words words(arguments.TakeValue(option));
        options.comPort = words.TakeInteger("--com", 1, highestPort);
        words.ExpectEnd();
    } else if (option == "--link") {
        options.link = arguments.TakeValue(option);
    } else if (option == "--device") {
        options.device = arguments.TakeValue(option);
    } else if (option == "--control") {
        options.control = arguments.TakeValue(option);
    } else if (option == "--no-control") {
        options.withControl = false;
    } else if (option == "--attached") {
        options.attached = true;
    } else {
        return false;
    }
    return true;
}

bool TakeManner(Options& options, std::string_view option, Arguments& arguments) {
    if (option == "--log")
        options.log = arguments.TakeValue(option);
    else if (option == "--bitrate")
        options.bitRate = ParseBitRateText(arguments.TakeValue(option));
    else if (option == "--fast")
        options.fast = true;
    else if (option == "--ideal")
        options.ideal = true;
    else if (option == "--seed")
        options.seed = ParseSeed(arguments.TakeValue(option));
    else
        return false;
    return true;
}

bool TakeTask(Options& options, std::string_view option, Arguments& arguments) {
    if (option == "--help" || option == "-h") {
        options.task = Options::Task::showHelp;
    } else if (option == "--version") {
        options.task = Options::Task::showVersion;
    } else if (option == "--send") {
        options.task = Options::Task::send;
        options.commandToSend = arguments.TakeWords(option);
    } else {
        return false;
    }
    return true;
}

void CheckTogether(const Options& options) {
    if (options.device && options.link)
        throw RunTimeError("--device and --link exclude each other: a device needs no link");
    if (options.device && options.fast)
        throw RunTimeError("--device and --fast exclude each other: a real line has its own speed");
    if (options.control && !options.withControl)
        throw RunTimeError("--control and --no-control exclude each other");
}

} // namespace

Options ParseOptions(std::span<const std::string_view> list) {
    Options options;
    Arguments arguments(list);
    while (!arguments.AtEnd()) {
        const std::string_view option = arguments.Take();
        if (!TakeTask(options, option, arguments) && !TakePlaceOption(options, option, arguments) &&
            !TakeManner(options, option, arguments) &&
            !TakeCommandOption(options, option, arguments))
            throw RunTimeError("\"" + std::string(option) + "\" is no option; see --help");
        if (options.task == Options::Task::showHelp || options.task == Options::Task::showVersion)
            return options;
    }
    CheckTogether(options);
    return options;
}

std::string OptionHelp() {
    return R"(Usage: vantrel-instrument [OPTION]...
Stands in for the ion-measuring instrument: it answers the program over a
pseudo-terminal that appears as one of the program's COM ports, or over a real
serial device. While it runs it takes commands; type help for a list.

Place:
  --com N                 be the program's port COMN, 1 to 16 (1)
  --link PATH             make this link to the pseudo-terminal instead
  --device PATH           answer at a serial device, such as /dev/ttyUSB0
  --control PATH          take commands at this socket (beside the link, with
                          ".control" behind its name)
  --no-control            take commands from standard input only
  --attached              end when standard input ends, as a child of the program
                          that started it does
  --send COMMAND          send a command to the instrument that runs at this
                          place, show its answer, and end

Line:
  --bitrate RATE          speed in bit/s (as the program sets it; 9600 at a device)
  --fast                  answer at once, whatever the line's speed
  --unsolicited SECONDS   send a frame by itself every SECONDS
  --log PATH              append to this file every byte that goes out

Measuring:
  --electrode CHANNEL NAME ...    --solution CHANNEL CONTENT ...
  --temperature CHANNEL CELSIUS   --fault KIND ...
                          the commands of these names, carried out at the start
  --run COMMAND           any other command at the start
  --ideal                 electrodes without offset, drift, noise, detection
                          limit and waiting, at the full slope
  --seed NUMBER           another course of the noise (1)

  --help                  this text
  --version               the version

Example: a Ca electrode with 96 % of the slope, dipped into the first standard
  vantrel-instrument --electrode 1 Ca slope 96 --solution 1 Ca 1 ppm
and, from another terminal, into the next one
  vantrel-instrument --send solution 1 Ca 10 ppm
)";
}

} // namespace simulator
