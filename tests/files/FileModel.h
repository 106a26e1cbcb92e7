// A file as plain bytes, and a machine that drives it and a real file object by the same random
// instructions. Used by the tests and by the fuzz target.
#pragma once

#include <core/files/IFile.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace test {

struct FileModel {
    std::string bytes = {};
    bool writable = true;
    // A window: a position behind its end is refused. Else what is written there leaves zeros.
    bool bounded = false;
    std::size_t position = 0;

    std::string read(std::size_t n) {
        if (position >= bytes.size()) return {};
        const std::string part = bytes.substr(position, n);
        position += part.size();
        return part;
    }
    void write(const std::string& text) {
        const std::size_t end = position + text.size();
        if (end > bytes.size()) bytes.resize(end);
        bytes.replace(position, text.size(), text);
        position = end;
    }
    void seek(std::size_t target) {
        if (!bounded || target <= bytes.size()) position = target;
    }
};

// Two bytes an instruction. What differs, or nothing.
inline std::optional<std::string> run_program(core::IFileEx& file, FileModel& model,
                                              std::span<const std::uint8_t> program) {
    const auto at = [&](const char* what) {
        return std::string(what) + " at position " + std::to_string(model.position);
    };
    for (std::size_t i = 0; i + 1 < program.size(); i += 2) {
        const std::uint8_t operand = program[i + 1];
        // Small numbers and some that pass any buffer of the tests.
        const std::size_t n = operand < 200 ? operand % 50 + 1 : (operand - 199u) * 300u;
        switch (program[i] % 8) {
        case 0:
        case 1: {
            std::string got(n, '#');
            const std::string expected = model.read(n);
            std::size_t size = 0;
            // By its window where the file has one, for every other instruction.
            const core::InterfacePtr<core::IByteWindow> window(program[i] % 8 == 1 ? &file
                                                                                   : nullptr);
            while (window && size < n) {
                unsigned part = 0;
                const std::uint8_t* const bytes = window->window(part);
                if (part == 0) break;
                part = static_cast<unsigned>(std::min<std::size_t>(part, n - size));
                std::copy_n(bytes, part, got.begin() + static_cast<std::ptrdiff_t>(size));
                window->advance(part);
                size += part;
            }
            while (!window && size < n) {
                const unsigned part = file.read(got.data() + size, static_cast<unsigned>(n - size));
                if (part == 0) break;
                size += part;
            }
            got.resize(size);
            if (got != expected) return at("read");
            break;
        }
        case 2:
        case 3: {
            if (!model.writable) break;
            std::string text(n, '\0');
            for (std::size_t k = 0; k < n; ++k) text[k] = static_cast<char>(operand * 31u + k + i);
            file.write(text.data(), static_cast<unsigned>(n));
            model.write(text);
            break;
        }
        case 4: {
            const std::size_t target = operand * 37u % (model.bytes.size() + 20);
            model.seek(target);
            if (file.seek(static_cast<long long>(target), core::kSeekFromStart) !=
                static_cast<long long>(model.position))
                return at("seek from start");
            break;
        }
        case 5: {
            const auto target = static_cast<long long>(model.position) + operand - 100;
            if (target < 0) break;
            model.seek(static_cast<std::size_t>(target));
            if (file.seek(operand - 100, core::kSeekFromCurrent) !=
                static_cast<long long>(model.position))
                return at("seek from current");
            break;
        }
        case 6: {
            if (file.seek(0, core::kSeekFromCurrent) != static_cast<long long>(model.position))
                return at("position");
            const std::size_t back = operand % (model.bytes.size() + 1);
            model.seek(model.bytes.size() - back);
            if (file.seek(-static_cast<long long>(back), core::kSeekFromEnd) !=
                static_cast<long long>(model.position))
                return at("seek from end");
            break;
        }
        default:
            if (!model.writable) break;
            if (operand % 4 == 0) {
                model.bytes.resize(model.position);
                if (file.setEOF() != static_cast<long long>(model.position)) return at("setEOF");
            } else {
                file.flush();
            }
        }
    }
    file.flush();
    if (file.seek(0, core::kSeekFromEnd) != static_cast<long long>(model.bytes.size()))
        return at("size");
    file.seek(0, core::kSeekFromStart);
    model.position = 0;
    std::string all(model.bytes.size() + 1, '#');
    std::size_t size = 0;
    while (const unsigned got =
               file.read(all.data() + size, static_cast<unsigned>(all.size() - size)))
        size += got;
    all.resize(size);
    if (all != model.bytes) return at("contents");
    return std::nullopt;
}

} // namespace test
