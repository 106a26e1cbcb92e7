// The file system of a new process, and a directory of its own for each test.
#pragma once

#include "Services.h"
#include "support/ProcessTest.h"

#include <core/component/SCOM_Process.h>
#include <core/component/Utf8.h>
#include <core/files/FileException.h>
#include <core/files/FileSystemFunctions.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <sstream>

namespace test {

using Error = core::FileException::Error;

// The code that `body` throws; none if it does not.
template <class Body> std::optional<Error> error_of(const Body& body) {
    try {
        body();
    } catch (const core::FileException& exception) {
        return exception.error();
    }
    return {};
}

class FileSystemTest : public ProcessTest {
protected:
    FileSystemTest() {
        Services::reset();
        char name[] = "/tmp/orb-filesystem-XXXXXX";
        directory_ = ::mkdtemp(name);
    }
    ~FileSystemTest() override {
        std::error_code ignored;
        std::filesystem::remove_all(directory_, ignored);
    }

    static core::IFileSystem& files() { return *core::get_service<core::IFileSystem>(); }

    std::string path(std::string_view name) const { return directory_ + "/" + std::string(name); }
    core::URL url(std::string_view name) const {
        return core::file_url(core::from_utf8(path(name)));
    }
    core::URL directory() const { return core::file_url(core::from_utf8(directory_)); }

    void put(std::string_view name, std::string_view text) const {
        std::ofstream(path(name), std::ios::binary) << text;
    }
    std::string text(std::string_view name) const {
        std::ostringstream text;
        text << std::ifstream(path(name), std::ios::binary).rdbuf();
        return text.str();
    }
    bool exists(std::string_view name) const {
        return std::filesystem::exists(std::filesystem::symlink_status(path(name)));
    }

    static std::string read_all(core::IFile* file) {
        std::string all(100, '\0');
        all.resize(file->read(all.data(), 100));
        return all;
    }

    // The names that a search finds, in order.
    static std::vector<std::string> names(const core::URL& url, const char16_t* mask) {
        std::vector<std::string> found;
        for (auto stat = files().find(url, mask); stat;) {
            found.emplace_back(core::to_utf8(core::URL::unescape(stat->url().part(14, 3))).view());
            if (!stat->next()) break;
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    std::string directory_;
};

} // namespace test
