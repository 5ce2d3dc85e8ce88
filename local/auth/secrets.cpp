// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/auth/secrets.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>

#include <array>
#include <cstdio>
#include <cstdlib>

#include <sys/random.h>

namespace velto::local
{

namespace
{

template<std::size_t Size>
std::array<unsigned char, Size> randomBytes()
{
    std::array<unsigned char, Size> bytes{};
    // A request of up to 256 bytes is never cut short once the source is ready.
    static_assert(Size <= 256);
    if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
        std::fputs("velto-local: the system's random source failed\n", stderr);
        std::abort();
    }
    return bytes;
}

std::string urlSafe(const unsigned char *data, std::size_t size)
{
    std::string text((size + 2) / 3 * 4 + 1, '\0');
    const int length = EVP_EncodeBlock(reinterpret_cast<unsigned char *>(text.data()), data,
                                       static_cast<int>(size));
    text.resize(static_cast<std::size_t>(length));
    while (text.ends_with('='))
        text.pop_back();
    for (char &c : text)
        c = c == '+' ? '-' : c == '/' ? '_' : c;
    return text;
}

} // namespace

std::string randomSecret()
{
    const auto bytes = randomBytes<32>();
    return urlSafe(bytes.data(), bytes.size());
}

std::string randomId(std::string_view prefix)
{
    static constexpr std::string_view Hex = "0123456789abcdef";
    std::string id(prefix);
    for (const unsigned char byte : randomBytes<16>()) {
        id += Hex[byte >> 4];
        id += Hex[byte & 15];
    }
    return id;
}

std::string sha256Text(std::string_view text)
{
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    unsigned int size = 0;
    if (EVP_Digest(text.data(), text.size(), digest.data(), &size, EVP_sha256(), nullptr) != 1) {
        std::fputs("velto-local: SHA-256 is not available\n", stderr);
        std::abort();
    }
    return urlSafe(digest.data(), size);
}

bool sameSecret(std::string_view left, std::string_view right)
{
    return left.size() == right.size() &&
           CRYPTO_memcmp(left.data(), right.data(), left.size()) == 0;
}

} // namespace velto::local
