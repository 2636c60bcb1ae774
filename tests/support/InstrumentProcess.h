#pragma once

#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/types.h>

/// A running `vantrel-instrument`, ended with the object (and with the test program, whatever
/// becomes of it). All failures, and every wait of more than ten seconds, are thrown as
/// std::runtime_error.
///
///     InstrumentProcess instrument(configHome, {"--ideal", "--electrode", "1", "Ca"});
///     instrument.Command("solution 1 Ca 10 ppm");
///     OpenAsTheProgramDoes(instrument.Link()); // or instrument.Device()
class InstrumentProcess {
public:
    /// Starts it with XDG_CONFIG_HOME at `configHome`, and returns when it has said that it is
    /// ready. By default it is COM1 of a program with the same XDG_CONFIG_HOME.
    explicit InstrumentProcess(std::filesystem::path configHome,
                               std::vector<std::string> arguments = {});
    ~InstrumentProcess();
    InstrumentProcess(const InstrumentProcess&) = delete;
    InstrumentProcess& operator=(const InstrumentProcess&) = delete;

    /// What it said when it was ready: "Instrument on COM1 (/dev/pts/3), type help".
    const std::string& Greeting() const { return greeting_; }

    /// The device in that text, "/dev/pts/3"; after "replug" it is another one: read the link.
    std::string Device() const;

    /// The link "ports/comN" of `configHome`.
    std::filesystem::path Link(int number = 1) const;

    /// Carries out a command over the control socket of COM `number` and returns its answer. A
    /// refused command is thrown.
    std::string Command(const std::string& line, int number = 1) const;

    /// Writes a line to its standard input; the answer is a line, or some, of its output.
    void WriteInput(const std::string& line);

    /// Ends its standard input.
    void CloseInput();

    /// The next line of its standard output and error output.
    std::string ReadLine();

    /// Ends it by a signal and returns its exit code (128 and the signal's number where the signal
    /// killed it).
    int Stop(int signal = SIGTERM);

    /// Waits until it ends by itself.
    int WaitForEnd();

    pid_t Id() const { return id_; }

    struct Result {
        int exitCode = 0;
        std::string output; ///< standard output and error output
    };

    /// Starts it, waits for its end and returns what it said: for --help, --send and bad arguments.
    static Result RunToEnd(const std::filesystem::path& configHome,
                           const std::vector<std::string>& arguments);

private:
    struct Unstarted {};
    InstrumentProcess(std::filesystem::path configHome, Unstarted);
    void Start(const std::vector<std::string>& arguments);
    bool ReadMore();

    std::filesystem::path configHome_;
    pid_t id_ = -1;
    int exitCode_ = -1;
    int toInput_ = -1;
    int fromOutput_ = -1;
    std::string pending_;
    std::string greeting_;
};
