#include "platform/System.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Of(const std::string& bytes) {
    const auto digest = platform::MakeSha256();
    digest->Add(bytes);
    return digest->Hex();
}

} // namespace

// The examples of FIPS 180-4, as the standard's example values give them.
TEST(Digest, The_standards_examples_come_out) {
    EXPECT_EQ(Of(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(Of("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(Of("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
}

TEST(Digest, More_bytes_go_on_from_those_before) {
    const auto digest = platform::MakeSha256();
    digest->Add(std::string("a"));
    EXPECT_EQ(digest->Hex(), Of("a"));
    digest->Add(std::string("bc"));
    EXPECT_EQ(digest->Hex(), Of("abc"));
    EXPECT_EQ(digest->Hex(), Of("abc"));
}
