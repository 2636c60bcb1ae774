#include "platform/System.h"

#include <array>
#include <nettle/sha2.h>

namespace platform {

namespace {

class NettleDigest : public Digest {
public:
    NettleDigest() { sha256_init(&state_); }

    void Add(std::span<const char> bytes) override {
        sha256_update(&state_, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
    }

    std::string Hex() const override {
        sha256_ctx state = state_; // taking the sum ends the one that it is taken of
        std::array<std::uint8_t, SHA256_DIGEST_SIZE> sum{};
        sha256_digest(&state, sum.size(), sum.data());
        return HexText(sum);
    }

private:
    sha256_ctx state_{};
};

} // namespace

std::unique_ptr<Digest> MakeSha256() {
    return std::make_unique<NettleDigest>();
}

} // namespace platform
