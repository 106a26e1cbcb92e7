// Base64 beside its peers, by bytes of data. What should hold: ahead of every peer at a kilobyte and
// above, a fifth of a table-driven coder's time there; at a few bytes within some nanoseconds of the
// table. There a string's memory is the most of it, so jobs ending in `_into` use the caller's.
//
// Jobs ending in `_utf16` are on UTF-16 text, but for the peers from outside, which know 8-bit text
// only.
#include <core/text/Base64.h>

#include <benchmark/benchmark.h>

#include <array>
#include <string>
#include <type_traits>
#include <vector>

#ifdef ORBCORE_PEER_QT
#include <QByteArray>
#endif
#ifdef ORBCORE_PEER_GLIB
#include <glib.h>
#endif
#ifdef ORBCORE_PEER_OPENSSL
#include <openssl/evp.h>
#endif
#ifdef ORBCORE_PEER_ABSL
#include <absl/strings/escaping.h>
#endif

namespace {

// --- the table-driven forms, for text in either unit ---

template <class Unit> Unit* table_encode(const std::string& data, Unit* to) {
    static constexpr char kAlphabet[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const auto at = [&](std::size_t i) -> unsigned { return static_cast<unsigned char>(data[i]); };
    std::size_t i = 0;
    for (; i + 3 <= data.size(); i += 3) {
        const unsigned group = at(i) << 16 | at(i + 1) << 8 | at(i + 2);
        for (unsigned k = 0; k < 4; ++k) *to++ = Unit(kAlphabet[group >> (18 - 6 * k) & 63]);
    }
    if (i == data.size()) return to;
    const unsigned group = at(i) << 16 | (i + 1 < data.size() ? at(i + 1) << 8 : 0);
    *to++ = Unit(kAlphabet[group >> 18 & 63]);
    *to++ = Unit(kAlphabet[group >> 12 & 63]);
    *to++ = Unit(i + 1 < data.size() ? kAlphabet[group >> 6 & 63] : '=');
    *to++ = Unit('=');
    return to;
}

// Null for text that is not good.
template <class Unit> char* table_decode(const std::basic_string<Unit>& text, char* to) {
    static const auto kValues = [] {
        std::array<signed char, 256> values;
        values.fill(-1);
        for (int i = 0; i < 26; ++i) {
            values[static_cast<std::size_t>('A' + i)] = static_cast<signed char>(i);
            values[static_cast<std::size_t>('a' + i)] = static_cast<signed char>(26 + i);
        }
        for (int i = 0; i < 10; ++i)
            values[static_cast<std::size_t>('0' + i)] = static_cast<signed char>(52 + i);
        values['+'] = 62;
        values['/'] = 63;
        return values;
    }();
    const auto value = [&](std::size_t i) -> int {
        const auto code = static_cast<std::make_unsigned_t<Unit>>(text[i]);
        return code < 256 ? kValues[code] : -1;
    };
    std::size_t size = text.size();
    if (size % 4 != 0) return nullptr;
    unsigned padding = 0;
    for (; padding < 2 && size != 0 && text[size - 1] == Unit('='); ++padding) --size;
    std::size_t i = 0;
    for (; i + 4 <= size; i += 4) {
        const int group = value(i) << 18 | value(i + 1) << 12 | value(i + 2) << 6 | value(i + 3);
        if (group < 0) return nullptr;
        *to++ = static_cast<char>(group >> 16);
        *to++ = static_cast<char>(group >> 8);
        *to++ = static_cast<char>(group);
    }
    if (padding == 0) return to;
    const int group = value(i) << 18 | value(i + 1) << 12 | (padding == 1 ? value(i + 2) << 6 : 0);
    if (group < 0) return nullptr;
    *to++ = static_cast<char>(group >> 16);
    if (padding == 1) *to++ = static_cast<char>(group >> 8);
    return to;
}

// --- the jobs ---

std::string some_bytes(std::size_t n) {
    std::string bytes(n, '\0');
    unsigned state = 1;
    for (char& byte : bytes) byte = static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
    return bytes;
}

// What a benchmark works on: bytes and their text, without lines or in lines of 64 characters.
struct Sample {
    std::string data;
    std::string text;
    explicit Sample(std::int64_t n, unsigned lineLength)
        : data(some_bytes(static_cast<std::size_t>(n))) {
        stdx::string made;
        core::encode_base64(data, made, lineLength);
        text.assign(made.data(), made.size());
    }
};

using Sizes = std::vector<std::int64_t>;
const Sizes kSizes = {3, 16, 30, 1024, 1 << 20};
const Sizes kSmallSizes = {3, 16, 30};

// `prepare` gets the sample and gives what is measured.
template <class Prepare>
void add(std::string job, const char* who, const Sizes& sizes, Prepare prepare) {
    const bool inLines = job.find("lines") != job.npos;
    for (const std::int64_t n : sizes)
        benchmark::RegisterBenchmark((job + '/' + who).c_str(), [=](benchmark::State& state) {
            const Sample sample(state.range(0), inLines ? 64 : 0);
            auto measured = prepare(sample);
            for (auto _ : state) benchmark::DoNotOptimize(measured());
            state.SetBytesProcessed(state.range(0) * static_cast<std::int64_t>(state.iterations()));
        })->Arg(n);
}

void add_ours() {
    add("encode_base64", "orbcore", kSizes, [](const Sample& sample) {
        return [&] {
            stdx::string text;
            core::encode_base64(sample.data, text);
            return text;
        };
    });
    add("encode_base64_utf16", "orbcore", kSizes,
        [](const Sample& sample) { return [&] { return core::encode_base64(sample.data); }; });
    for (const char* const job : {"decode_base64", "decode_base64_lines"})
        add(job, "orbcore", kSizes, [](const Sample& sample) {
            return [&] {
                stdx::string data;
                core::decode_base64(sample.text, data);
                return data;
            };
        });
    add("decode_base64_utf16", "orbcore", kSizes, [](const Sample& sample) {
        const stdx::ustring wide(sample.text.begin(), sample.text.end());
        return [wide] {
            stdx::string data;
            core::decode_base64(wide, data);
            return data;
        };
    });
    add("encode_base64_into", "orbcore", kSmallSizes, [](const Sample& sample) {
        return [&, room = std::string(100, ' ')]() mutable {
            core::Base64Encoder encoder;
            return encoder.finish(
                encoder.encode(sample.data.data(), sample.data.size(), room.data()));
        };
    });
    add("decode_base64_into", "orbcore", kSmallSizes, [](const Sample& sample) {
        return [&, room = std::string(100, ' ')]() mutable {
            core::Base64Decoder decoder;
            std::uint8_t* end = decoder.decode(sample.text.data(), sample.text.size(),
                                               reinterpret_cast<std::uint8_t*>(room.data()));
            return decoder.finish(end) ? end : nullptr;
        };
    });
}

template <class Unit> void add_table_for(const char* suffix) {
    using Text = std::basic_string<Unit>;
    add(std::string("encode_base64") + suffix, "table", kSizes, [](const Sample& sample) {
        return [&] {
            Text text((sample.data.size() + 2) / 3 * 4, Unit());
            table_encode(sample.data, text.data());
            return text;
        };
    });
    add(std::string("decode_base64") + suffix, "table", kSizes, [](const Sample& sample) {
        return [text = Text(sample.text.begin(), sample.text.end())] {
            std::string data(text.size() / 4 * 3, '\0');
            data.resize(static_cast<std::size_t>(table_decode(text, data.data()) - data.data()));
            return data;
        };
    });
}

void add_table() {
    add("encode_base64_into", "table", kSmallSizes, [](const Sample& sample) {
        return [&, room = std::string(100, ' ')]() mutable {
            return table_encode(sample.data, room.data());
        };
    });
    add("decode_base64_into", "table", kSmallSizes, [](const Sample& sample) {
        return [&, room = std::string(100, ' ')]() mutable {
            return table_decode(sample.text, room.data());
        };
    });
    add_table_for<char>("");
    add_table_for<char16_t>("_utf16");
}

// `encode` and `decode` take a sample; `readsLines`: line breaks are no fault.
template <class Encode, class Decode>
[[maybe_unused]] void add_peer(const char* who, bool readsLines, Encode encode, Decode decode) {
    for (const char* const job : {"encode_base64", "encode_base64_utf16"})
        add(job, who, kSizes,
            [=](const Sample& sample) { return [=, &sample] { return encode(sample.data); }; });
    for (const char* const job : {"decode_base64", "decode_base64_utf16", "decode_base64_lines"})
        if (readsLines || std::string(job) != "decode_base64_lines")
            add(job, who, kSizes,
                [=](const Sample& sample) { return [=, &sample] { return decode(sample.text); }; });
}

void add_peers() {
#ifdef ORBCORE_PEER_QT
    add_peer(
        "QByteArray", true,
        [](const std::string& data) {
            return QByteArray::fromRawData(data.data(), static_cast<int>(data.size())).toBase64();
        },
        [](const std::string& text) {
            return QByteArray::fromBase64(
                QByteArray::fromRawData(text.data(), static_cast<int>(text.size())));
        });
#endif
#ifdef ORBCORE_PEER_GLIB
    add_peer(
        "glib", true,
        [](const std::string& data) {
            g_free(g_base64_encode(reinterpret_cast<const guchar*>(data.data()), data.size()));
            return 0;
        },
        [](const std::string& text) {
            gsize size = 0;
            g_free(g_base64_decode(text.c_str(), &size));
            return size;
        });
#endif
#ifdef ORBCORE_PEER_OPENSSL
    const auto bytes = [](const std::string& s) {
        return reinterpret_cast<const unsigned char*>(s.data());
    };
    const auto room = [](std::string& s) { return reinterpret_cast<unsigned char*>(s.data()); };
    add_peer(
        "OpenSSL", false,
        [=](const std::string& data) {
            std::string text((data.size() + 2) / 3 * 4 + 1, '\0');
            EVP_EncodeBlock(room(text), bytes(data), static_cast<int>(data.size()));
            return text;
        },
        [=](const std::string& text) {
            std::string data(text.size() / 4 * 3, '\0');
            EVP_DecodeBlock(room(data), bytes(text), static_cast<int>(text.size()));
            return data;
        });
#endif
#ifdef ORBCORE_PEER_ABSL
    add_peer(
        "abseil", true,
        [](const std::string& data) {
            std::string text;
            absl::Base64Escape(data, &text);
            return text;
        },
        [](const std::string& text) {
            std::string data;
            absl::Base64Unescape(text, &data);
            return data;
        });
#endif
}

[[maybe_unused]] const bool kRegistered = (add_ours(), add_table(), add_peers(), true);

} // namespace
