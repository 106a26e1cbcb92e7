// `orb cat`, `ls`, `stat`, `cp`, `mv`, `rm`: files of every scheme that the process knows, through its
// file system. A name without a scheme is a path.

#include "Command.h"
#include "Json.h"
#include "Words.h"

#include <core/component/SCOM_Process.h>
#include <core/component/Utf8.h>
#include <core/concurrency/Thread.h>
#include <core/files/FileSystemFunctions.h>

#include <atomic>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <memory>
#include <optional>
#include <vector>

#include <unistd.h>

namespace orb {

core::URL url_of(std::string_view word) {
    const stdx::ustring text = core::from_utf8(word);
    if (text.view().find(u"://") != std::u16string_view::npos) {
        core::URL url(text, false);
        if (!core::get_service<core::IFileSystem>()->getScheme(
                text.view().substr(0, text.view().find(u':'))))
            throw Failure("nothing is known of the scheme of '" + std::string(word) + "'");
        if (url.broken()) throw UsageError("'" + std::string(word) + "' is no URL");
        return url;
    }
    return core::file_url(core::from_utf8(std::filesystem::absolute(std::string(word)).string()));
}

namespace {

core::IFileSystem& files() {
    return *core::get_service<core::IFileSystem>();
}

std::string utf8(const stdx::ustring& text) {
    return std::string(core::to_utf8(text).view());
}

std::vector<core::URL> urls_of(const Arguments& arguments, std::size_t count, const char* what) {
    if (arguments.values.size() != count) throw UsageError(std::string("expected ") + what);
    std::vector<core::URL> urls;
    for (const char* const word : arguments.values) urls.push_back(url_of(word));
    return urls;
}

// The URLs and the mask of `URL [MASK]`.
std::pair<core::URL, std::optional<stdx::ustring>> url_and_mask(const Arguments& arguments) {
    if (arguments.values.empty() || arguments.values.size() > 2)
        throw UsageError("expected a URL and perhaps a mask");
    std::optional<stdx::ustring> mask;
    if (arguments.values.size() == 2) mask = core::from_utf8(arguments.values[1]);
    return {url_of(arguments.values[0]), mask};
}

core::InterfacePtr<core::IFileStat> existing(const core::URL& url) {
    auto stat = files().find(url, nullptr);
    if (!stat) throw Failure("there is no '" + utf8(url.securePresentation()) + "'");
    return stat;
}

bool is_directory(core::IFileStat& stat) {
    return (stat.attributes() & core::kFileDirectory) != 0;
}

std::string name_of(core::IFileStat& stat) {
    return utf8(core::URL::unescape(stat.url().part(core::URL::kFileName, 3)));
}

std::string date_of(const core::Date& date) {
    return date.empty() ? "-" : utf8(date.toXMLString());
}

void print(core::IFileStat& stat) {
    std::cout << std::right << std::setw(14) << stat.size() << "  "
              << date_of(stat.modificationDate()) << "  " << name_of(stat)
              << (is_directory(stat) ? "/" : "") << '\n';
}

void print_record(core::IFileStat& stat) {
    std::cout << "{\"url\":" << Quoted{utf8(stat.url().text())}
              << ",\"name\":" << Quoted{name_of(stat)} << ",\"size\":" << stat.size()
              << ",\"directory\":" << (is_directory(stat) ? "true" : "false")
              << ",\"readOnly\":" << (stat.attributes() & core::kFileReadOnly ? "true" : "false")
              << ",\"modified\":" << Quoted{date_of(stat.modificationDate())} << '}';
}

// While it lives, a line on a terminal tells each second how much of a file is there already.
class Progress {
public:
    Progress(const core::URL& from, const core::URL& to) {
        if (isatty(STDERR_FILENO) != 1) return;
        thread_ = core::create_thread([this, to, all = core::get_file_size(from)] {
            for (int tenths = 1; !done_; ++tenths) {
                core::Thread::sleep(100);
                if (tenths % 10 == 0) show(to, all);
            }
            if (shown_) std::cerr << '\n';
        });
        thread_->start();
    }
    ~Progress() {
        done_ = true;
        if (thread_) thread_->join();
    }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

private:
    void show(const core::URL& to, std::uint64_t all) {
        const auto stat = core::get_file_stat(to);
        if (!stat) return;
        std::cerr << "\rorb: " << (stat->size() >> 20) << " of " << (all >> 20) << " MiB"
                  << std::flush;
        shown_ = true;
    }

    std::atomic<bool> done_ = false;
    bool shown_ = false;
    core::InterfacePtr<core::Thread> thread_;
};

// Into a directory a file goes under its own name.
core::URL target_of(const core::URL& from, const core::URL& to) {
    const auto stat = core::get_file_stat(to);
    if (!stat || !is_directory(*stat)) return to;
    stdx::ustring text = to.normalize().text();
    text += u'/';
    text += from.normalize().part(core::URL::kFileName, 3);
    return core::URL(text, false);
}

int transfer(const Arguments& arguments,
             void (core::IFileSystem::*operation)(const core::URL&, const core::URL&)) {
    const std::vector<core::URL> urls = urls_of(arguments, 2, "a source and a target");
    existing(urls[0]);
    const core::URL to = target_of(urls[0], urls[1]);
    const Progress progress(urls[0], to);
    (files().*operation)(urls[0], to);
    return kSuccess;
}

} // namespace

int cat_files(const Arguments& arguments) {
    if (arguments.values.empty()) throw UsageError("expected a URL");
    constexpr unsigned kBlock = 0x10000;
    const auto block = std::make_unique<char[]>(kBlock);
    for (const char* const word : arguments.values) {
        const auto file = files().open(url_of(word), core::kFileOpenForRead);
        while (const unsigned size = file->read(block.get(), kBlock))
            if (!std::cout.write(block.get(), size)) throw Failure("the output cannot be written");
    }
    return kSuccess;
}

int list_files(const Arguments& arguments) {
    const auto [url, mask] = url_and_mask(arguments);
    const auto named = existing(url);
    const bool search = mask || is_directory(*named);
    const auto stat = search ? files().find(url, mask ? mask->c_str() : u"*") : named;
    if (arguments.json) std::cout << '[';
    for (bool first = true, more = static_cast<bool>(stat); more; more = stat->next()) {
        if (arguments.json) {
            std::cout << (first ? "\n" : ",\n");
            print_record(*stat);
        } else {
            print(*stat);
        }
        first = false;
    }
    if (arguments.json) std::cout << "\n]\n";
    return stat || !mask ? kSuccess : kFailure;
}

int stat_file(const Arguments& arguments) {
    const core::URL url = urls_of(arguments, 1, "a URL")[0];
    const auto stat = existing(url);
    if (arguments.json) {
        print_record(*stat);
        std::cout << '\n';
        return kSuccess;
    }
    std::cout << "url       " << utf8(stat->url().securePresentation()) << '\n'
              << "kind      " << (is_directory(*stat) ? "directory" : "file") << '\n'
              << "size      " << stat->size() << '\n'
              << "created   " << date_of(stat->creationDate()) << '\n'
              << "modified  " << date_of(stat->modificationDate()) << '\n'
              << "read only " << (stat->attributes() & core::kFileReadOnly ? "yes" : "no") << '\n';
    return kSuccess;
}

int copy_file(const Arguments& arguments) {
    return transfer(arguments, &core::IFileSystem::copy);
}

int move_file(const Arguments& arguments) {
    return transfer(arguments, &core::IFileSystem::move);
}

int remove_files(const Arguments& arguments) {
    const auto [url, mask] = url_and_mask(arguments);
    if (!mask) existing(url);
    files().remove(url, mask ? mask->c_str() : nullptr);
    return kSuccess;
}

} // namespace orb
