#include "simulator/Console.h"

#include <cstddef>
#include <string_view>

namespace {

class NoHost : public simulator::Host {
public:
    void Unplug(std::optional<simulator::Seconds>) override { plugged_ = false; }
    void Replug() override { plugged_ = true; }
    bool Plugged() const override { return plugged_; }
    std::string Place() const override { return "COM1"; }
    void SetBitRate(std::optional<std::uint32_t>) override {}
    void Quit() override {}

private:
    bool plugged_ = true;
};

} // namespace

/// Lines of the input go to the simulated instrument in turn as a command and as bytes from the
/// program at the other end; time passes in between.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace simulator;
    Session session(Instrument(Instrument::Nature::believable, 1, Seconds(0)), 1);
    NoHost host;
    Console console(session, host);
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    Seconds now(0);
    bool asCommand = true;
    while (!rest.empty()) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        if (asCommand)
            console.Execute(line, now);
        else
            session.Receive({reinterpret_cast<const std::uint8_t*>(line.data()), line.size()}, now);
        asCommand = !asCommand;
        now += Seconds(0.02);
        session.Advance(now);
    }
    return 0;
}
