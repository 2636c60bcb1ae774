#include "base/RunTimeError.h"
#include "platform/System.h"

#include <array>
#include <windows.h>

#include <bcrypt.h>

namespace platform {

namespace {

constexpr std::size_t sumLength = 32;

void Check(NTSTATUS status) {
    if (status < 0)
        throw RunTimeError("Computing a SHA-256: the system refuses");
}

class Win32Digest : public Digest {
public:
    Win32Digest() {
        Check(::BCryptOpenAlgorithmProvider(&algorithm_, BCRYPT_SHA256_ALGORITHM, nullptr, 0));
        if (::BCryptCreateHash(algorithm_, &hash_, nullptr, 0, nullptr, 0, 0) < 0) {
            ::BCryptCloseAlgorithmProvider(algorithm_, 0);
            throw RunTimeError("Computing a SHA-256: the system refuses");
        }
    }
    ~Win32Digest() override {
        ::BCryptDestroyHash(hash_);
        ::BCryptCloseAlgorithmProvider(algorithm_, 0);
    }
    Win32Digest(const Win32Digest&) = delete;
    Win32Digest& operator=(const Win32Digest&) = delete;

    void Add(std::span<const char> bytes) override {
        // The call takes no constant bytes, and changes none.
        auto* begin = reinterpret_cast<PUCHAR>(const_cast<char*>(bytes.data()));
        Check(::BCryptHashData(hash_, begin, static_cast<ULONG>(bytes.size()), 0));
    }

    std::string Hex() const override {
        BCRYPT_HASH_HANDLE copy = nullptr; // taking the sum ends the one that it is taken of
        Check(::BCryptDuplicateHash(hash_, &copy, nullptr, 0, 0));
        std::array<std::uint8_t, sumLength> sum{};
        const NTSTATUS status =
            ::BCryptFinishHash(copy, sum.data(), static_cast<ULONG>(sum.size()), 0);
        ::BCryptDestroyHash(copy);
        Check(status);
        return HexText(sum);
    }

private:
    BCRYPT_ALG_HANDLE algorithm_ = nullptr;
    BCRYPT_HASH_HANDLE hash_ = nullptr;
};

} // namespace

std::unique_ptr<Digest> MakeSha256() {
    return std::make_unique<Win32Digest>();
}

} // namespace platform
