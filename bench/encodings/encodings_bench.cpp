// Conversions beside their peers. What should hold: UTF-8 and UTF-16 within 1.5 times a copy of the
// UTF-16 on ASCII, and at a third to a half of ICU's and QString's time on every text; tables of one
// byte a character at half of ICU's.
//
// Ours and QString's make a new string; ICU and iconv write into a buffer that is there already.
#include <core/text/Converter.h>
#include <core/text/StreamConverter.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include <iconv.h>

#ifdef ORBCORE_PEER_QT
#include <QString>
#include <QTextCodec>
#endif
#ifdef ORBCORE_PEER_ICU
#include <unicode/ucnv.h>
#endif

namespace {

constexpr std::size_t kPiece = 8192;

struct Sample {
    const char* name;
    std::vector<std::u16string_view> words;
};
const Sample kSamples[] = {
    {"ascii", {u"invoice ", u"from ", u"2024, ", u"1,250.00 ", u"in ", u"a ", u"warehouse; "}},
    {"cyrillic", {u"счёт ", u"от ", u"января, ", u"сумма ", u"и ", u"подпись ", u"бухгалтера; "}},
    {"mixed", {u"счёт ", u"Invoice ", u"№ ", u"17 ", u"сумма, ", u"1250 ", u"€ — ", u"total; "}},
    {"chinese", {u"发票", u"日期", u"和", u"金额总计，", u"签名。"}},
};
constexpr std::size_t kSizes[] = {40, 1 << 20}; // bytes of UTF-8, about

// Words in no order: what a processor could learn of them is not what is measured.
std::u16string text_of(const Sample& sample, std::size_t size) {
    std::u16string text;
    unsigned state = 1;
    for (std::size_t bytes = 0; bytes < size;) {
        state = state * 1664525 + 1013904223;
        const std::u16string_view word = sample.words[(state >> 16) % sample.words.size()];
        text += word;
        bytes +=
            core::Converter::utf8().narrow(word.data(), static_cast<unsigned>(word.size())).size();
    }
    return text;
}

std::string bytes_of(const core::Converter& converter, const std::u16string& text) {
    const stdx::string bytes = converter.narrow(text.data(), static_cast<unsigned>(text.size()));
    return {bytes.data(), bytes.size()};
}

template <class Job> void run(benchmark::State& state, std::size_t bytes, Job job) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(job());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes) *
                            static_cast<std::int64_t>(state.iterations()));
}

// Registers a job for each sample and size; `make(text)` gives what is measured.
template <class Make>
void bench(const std::string& job, const std::string& who, const Make& make, bool both = true) {
    for (const Sample& sample : kSamples)
        for (const std::size_t size : kSizes) {
            if (!both && size == 40) continue;
            const std::string name =
                job + '/' + who + '/' + sample.name + '/' + std::to_string(size);
            benchmark::RegisterBenchmark(name.c_str(), [=, &sample](benchmark::State& state) {
                const std::u16string text = text_of(sample, size);
                run(state, size, make(text));
            });
        }
}

// ---- iconv.

class Iconv {
public:
    Iconv(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
    ~Iconv() { iconv_close(handle_); }
    Iconv(const Iconv&) = delete;
    Iconv& operator=(const Iconv&) = delete;

    std::size_t convert(const void* in, std::size_t size, std::vector<char>& out) {
        char* from = const_cast<char*>(static_cast<const char*>(in));
        char* to = out.data();
        std::size_t room = out.size();
        iconv(handle_, &from, &size, &to, &room);
        return room;
    }

private:
    iconv_t handle_;
};

// It leaves out what the encoding lacks.
void register_iconv(const std::string& job, const std::string& to, const char* from, bool widens) {
    bench(job, "iconv", [=](const std::u16string& text) {
        const auto converter = std::make_shared<Iconv>((to + "//IGNORE").c_str(), from);
        const char16_t* const source = std::strcmp(from, "UTF-8") == 0 ? u"UTF-8" : u"windows-1251";
        const std::string input =
            widens ? bytes_of(core::Converter(source), text)
                   : std::string(reinterpret_cast<const char*>(text.data()), 2 * text.size());
        return [=, out = std::vector<char>(4 * text.size() + 16)]() mutable {
            return converter->convert(input.data(), input.size(), out);
        };
    });
}

// ---- ICU.

#ifdef ORBCORE_PEER_ICU
void register_icu(const std::string& job, const char* encoding, bool widens) {
    using Handle = std::shared_ptr<UConverter>;
    const auto open = [=] {
        UErrorCode status = U_ZERO_ERROR;
        return Handle(ucnv_open(encoding, &status), ucnv_close);
    };
    if (widens)
        bench(job, "ICU", [=](const std::u16string& text) {
            UErrorCode status = U_ZERO_ERROR;
            std::string bytes(3 * text.size() + 16, '\0');
            const int size =
                ucnv_fromUChars(open().get(), bytes.data(), static_cast<int>(bytes.size()),
                                text.data(), static_cast<int>(text.size()), &status);
            return
                [=, converter = open(), out = std::vector<char16_t>(text.size() + 16)]() mutable {
                    UErrorCode error = U_ZERO_ERROR;
                    return ucnv_toUChars(converter.get(), out.data(), static_cast<int>(out.size()),
                                         bytes.data(), size, &error);
                };
        });
    else
        bench(job, "ICU", [=](const std::u16string& text) {
            return [=, converter = open(),
                    out = std::vector<char>(3 * text.size() + 16)]() mutable {
                UErrorCode error = U_ZERO_ERROR;
                return ucnv_fromUChars(converter.get(), out.data(), static_cast<int>(out.size()),
                                       text.data(), static_cast<int>(text.size()), &error);
            };
        });
}
#endif

// ---- Ours, and the jobs.

void register_whole(const std::string& bytes, const char16_t* name, const char* plainName) {
    const std::string widening = bytes + "_to_utf16", narrowing = "utf16_to_" + bytes;
    const core::Converter converter(name);
    bench(widening, "orbcore", [=](const std::u16string& text) {
        return [=, in = bytes_of(converter, text)] {
            return converter.widen(in.data(), static_cast<unsigned>(in.size()));
        };
    });
    bench(narrowing, "orbcore", [=](const std::u16string& text) {
        return [=] { return converter.narrow(text.data(), static_cast<unsigned>(text.size())); };
    });
    register_iconv(widening, "UTF-16LE", plainName, true);
    register_iconv(narrowing, plainName, "UTF-16LE", false);
#ifdef ORBCORE_PEER_ICU
    register_icu(widening, plainName, true);
    register_icu(narrowing, plainName, false);
#endif
#ifdef ORBCORE_PEER_QT
    QTextCodec* const codec = QTextCodec::codecForName(plainName);
    const bool isUtf8 = bytes == "utf8";
    bench(widening, "QString", [=](const std::u16string& text) {
        return [=, in = bytes_of(converter, text)] {
            const int size = static_cast<int>(in.size());
            return isUtf8 ? QString::fromUtf8(in.data(), size) : codec->toUnicode(in.data(), size);
        };
    });
    bench(narrowing, "QString", [=](const std::u16string& text) {
        return [=, in = QString::fromUtf16(text.data(), static_cast<int>(text.size()))] {
            return isUtf8 ? in.toUtf8() : codec->fromUnicode(in);
        };
    });
#endif
}

// A copy of the UTF-16 side, into a new string as well.
void register_copies() {
    for (const char* const job : {"utf8_to_utf16", "utf16_to_utf8"})
        bench(job, "memcpy", [](const std::u16string& text) {
            return [=] { return stdx::ustring(text.data(), static_cast<unsigned>(text.size())); };
        });
}

template <class From, class Convert>
std::size_t in_pieces(const From* in, const From* end, const Convert& convert) {
    std::size_t pieces = 0;
    for (; in != end; ++pieces) {
        const auto size =
            std::min<std::size_t>(kPiece / sizeof(From), static_cast<std::size_t>(end - in));
        convert(&in, static_cast<unsigned>(size));
    }
    return pieces;
}

void register_streams() {
    bench(
        "stream_utf8_to_utf16", "orbcore",
        [](const std::u16string& text) {
            const auto converter = std::make_shared<core::StreamConverterToUnicode>(u"UTF-8");
            return [=, bytes = bytes_of(core::Converter::utf8(), text)] {
                char16_t units[kPiece];
                return in_pieces(bytes.data(), bytes.data() + bytes.size(),
                                 [&](const char** in, unsigned size) {
                                     char16_t* out = units;
                                     converter->widen(in, size, &out, kPiece);
                                 });
            };
        },
        false);
    bench(
        "stream_utf16_to_utf8", "orbcore",
        [](const std::u16string& text) {
            const auto converter = std::make_shared<core::StreamConverterFromUnicode>(u"UTF-8");
            return [=] {
                char bytes[3 * kPiece];
                return in_pieces(text.data(), text.data() + text.size(),
                                 [&](const char16_t** in, unsigned size) {
                                     char* out = bytes;
                                     converter->narrow(in, size, &out, sizeof bytes);
                                 });
            };
        },
        false);
#ifdef ORBCORE_PEER_ICU
    const auto open = [] {
        UErrorCode status = U_ZERO_ERROR;
        return std::shared_ptr<UConverter>(ucnv_open("UTF-8", &status), ucnv_close);
    };
    bench(
        "stream_utf8_to_utf16", "ICU",
        [=](const std::u16string& text) {
            return [=, converter = open(), bytes = bytes_of(core::Converter::utf8(), text)] {
                char16_t units[kPiece];
                return in_pieces(bytes.data(), bytes.data() + bytes.size(),
                                 [&](const char** in, unsigned size) {
                                     UErrorCode status = U_ZERO_ERROR;
                                     char16_t* out = units;
                                     ucnv_toUnicode(converter.get(), &out, units + kPiece, in,
                                                    *in + size, nullptr, false, &status);
                                 });
            };
        },
        false);
    bench(
        "stream_utf16_to_utf8", "ICU",
        [=](const std::u16string& text) {
            return [=, converter = open()] {
                char bytes[3 * kPiece];
                return in_pieces(text.data(), text.data() + text.size(),
                                 [&](const char16_t** in, unsigned size) {
                                     UErrorCode status = U_ZERO_ERROR;
                                     char* out = bytes;
                                     ucnv_fromUnicode(converter.get(), &out, bytes + sizeof bytes,
                                                      in, *in + size, nullptr, false, &status);
                                 });
            };
        },
        false);
#endif
}

[[maybe_unused]] const bool kRegistered =
    (register_whole("utf8", u"UTF-8", "UTF-8"), register_copies(),
     register_whole("cp1251", u"windows-1251", "windows-1251"), register_streams(), true);

} // namespace
