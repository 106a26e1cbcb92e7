// What the tests of files share: a directory of their own, and a second process.
#pragma once

#include <core/component/Utf8.h>
#include <core/files/FileException.h>
#include <core/files/FileMode.h>
#include <core/files/FileObject.h>
#include <core/files/FileSystemFunctions.h>
#include <core/files/IFileIOManager.h>

#include "support/ProcessTest.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

namespace test {

namespace fs = std::filesystem;
using Error = core::FileException::Error;

// The code of the exception that `action` throws; `None` when it throws none.
inline Error error_of(const std::function<void()>& action) {
    try {
        action();
    } catch (const core::FileException& exception) {
        return exception.error();
    }
    return Error::None;
}

class FilesTest : public ProcessTest {
protected:
    FilesTest() {
        std::string name = (fs::temp_directory_path() / "files_test.XXXXXX").string();
        directory_ = ::mkdtemp(name.data());
    }
    ~FilesTest() { fs::remove_all(directory_); }

    fs::path file(const char* name, const std::string& contents) const {
        std::ofstream(directory_ / name, std::ios::binary) << contents;
        return directory_ / name;
    }
    static std::string contents(const fs::path& path) {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    static stdx::ustring wide(const fs::path& path) { return stdx::ustring(path.u16string()); }
    static core::InterfacePtr<core::SCOM_Object<core::FileObject>> open(const fs::path& path,
                                                                        int mode) {
        return core::make_object<core::FileObject>(core::file_url(wide(path)), wide(path), mode);
    }

    fs::path directory_;
};

inline std::string read_all(core::IFile& file) {
    std::string all;
    char block[1000];
    while (const unsigned got = file.read(block, sizeof block)) all.append(block, got);
    return all;
}
inline void write(core::IFile& file, std::string_view text) {
    file.write(text.data(), static_cast<unsigned>(text.size()));
}

// Another process that does with its I/O manager what it is told. It must be made before the files
// in question are opened here, or it would inherit them.
class Peer {
public:
    Peer() {
        int down[2], up[2];
        if (::pipe(down) != 0 || ::pipe(up) != 0) throw std::runtime_error("pipe");
        child_ = ::fork();
        if (child_ == 0) {
            ::close(down[1]);
            ::close(up[0]);
            serve(down[0], up[1]);
            ::_exit(0);
        }
        ::close(down[0]);
        ::close(up[1]);
        commands_ = down[1];
        answers_ = up[0];
    }
    ~Peer() {
        ::close(commands_);
        ::close(answers_);
        ::waitpid(child_, nullptr, 0);
    }

    // A handle, or minus the code of the exception.
    int open(const fs::path& path, int flags) {
        Command command = {'o', flags, 0, 0, {}};
        path.string().copy(command.path, sizeof command.path - 1);
        return ask(command);
    }
    void close(int handle) { ask({'c', handle, 0, 0, {}}); }
    bool lock(int handle, unsigned long long offset, unsigned length,
              int type = core::kExclusiveFileLock) {
        return ask({type == core::kExclusiveFileLock ? 'x' : 's', handle, offset, length, {}});
    }
    void unlock(int handle, unsigned long long offset, unsigned length) {
        ask({'u', handle, offset, length, {}});
    }

private:
    struct Command {
        char what;
        int number;
        unsigned long long offset;
        unsigned length;
        char path[200];
    };

    int ask(const Command& command) {
        int answer = 0;
        if (::write(commands_, &command, sizeof command) != sizeof command ||
            ::read(answers_, &answer, sizeof answer) != sizeof answer)
            throw std::runtime_error("the other process is gone");
        return answer;
    }

    static int perform(const Command& command) {
        core::IFileIOManager& manager = core::file_io_manager();
        const auto [what, number, offset, length, path] = command;
        switch (what) {
        case 'o':
            try {
                return manager.open(stdx::ustring(fs::path(path).u16string()), number);
            } catch (const core::FileException& exception) {
                return -static_cast<int>(exception.error());
            }
        case 'c':
            manager.close(number);
            return 0;
        case 'u':
            return manager.tryUnlock(number, offset, length);
        default:
            return manager.lockTyped(number, offset, length,
                                     what == 'x' ? core::kExclusiveFileLock
                                                 : core::kSharedFileLock);
        }
    }

    static void serve(int commands, int answers) {
        Command command;
        while (::read(commands, &command, sizeof command) == sizeof command) {
            const int answer = perform(command);
            if (::write(answers, &answer, sizeof answer) != sizeof answer) return;
        }
    }

    pid_t child_;
    int commands_;
    int answers_;
};

} // namespace test
