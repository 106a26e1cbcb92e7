// `orb list`: files of lists and storages of objects in all their forms. Files may be of any size: one
// item at a time is held in memory, and attachments pass through piece by piece.

#include "ListAttachments.h"
#include "ListScanner.h"
#include "SubCommand.h"

#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/component/Utf8.h>
#include <core/files/BufferedFile.h>
#include <core/files/IFileWriter.h>
#include <core/streams/LineSeparator.h>
#include <core/streams/ListStream.h>
#include <core/streams/StringStreams.h>

#include <cerrno>
#include <charconv>
#include <cstring>
#include <vector>

namespace orb {
namespace {

// ---- The command line.

struct Request {
    ListReading reading;
    bool bytes = false; // attachments are shown by these, not described
    bool raw = false;   // nothing but the bytes of one item
    std::vector<std::string> words;
};

constexpr struct {
    std::string_view name, help;
    void (*apply)(Request& request);
    std::string_view verbs = {}; // that have it: if none are named, all
} kOptions[] = {
    {"--text", "the file is a text, whatever it begins with",
     [](Request& request) { request.reading.form = ListForm::Text; }},
    {"--binary", "it is a list of bytes",
     [](Request& request) { request.reading.form = ListForm::Binary; }},
    {"--compact", "it is a text with sections",
     [](Request& request) { request.reading.form = ListForm::Compact; }},
    {"--attachments",
     "take each list that may be an attachment for one: in bytes {0, blobs}, beside sections {n}",
     [](Request& request) { request.reading.attachments = true; }},
    {"--bytes", "show attachments in base64, not by kind and size",
     [](Request& request) { request.bytes = true; }, "cat, get"},
    {"--raw", "write nothing but an attachment, bytes or a string as they are",
     [](Request& request) { request.raw = true; }, "get"},
};

Request parse_request(const Arguments& arguments, std::string_view verb, std::size_t count,
                      const char* what) {
    Request request;
    const std::size_t options = arguments.values.size() - arguments.plain.size();
    for (std::size_t i = 0; i != arguments.values.size(); ++i) {
        const std::string_view word = arguments.values[i];
        if (i >= options || !word.starts_with("--")) {
            request.words.emplace_back(word);
            continue;
        }
        const auto* const option =
            std::find_if(std::begin(kOptions), std::end(kOptions),
                         [&](const auto& known) { return known.name == word; });
        if (option == std::end(kOptions) ||
            (!option->verbs.empty() && option->verbs.find(verb) == option->verbs.npos))
            throw UsageError("'list " + std::string(verb) + "' has no option '" +
                             std::string(word) + "'");
        option->apply(request);
    }
    if (request.words.size() + 1 == count) request.words.emplace_back("-");
    if (request.words.size() != count) throw UsageError(std::string("expected ") + what);
    return request;
}

// The numbers of "0/2/1".
std::vector<std::uint64_t> parse_path(std::string_view text) {
    std::vector<std::uint64_t> path;
    do {
        const std::string_view part = text.substr(0, text.find('/'));
        std::uint64_t index;
        const auto end = std::from_chars(part.data(), part.data() + part.size(), index);
        if (end.ec != std::errc() || end.ptr != part.data() + part.size())
            throw UsageError("a path is numbers from 0 on with '/' between, like 0/2/1");
        path.push_back(index);
        text.remove_prefix(std::min(part.size() + 1, text.size()));
    } while (!text.empty());
    return path;
}

// ---- Output.

class Output
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<Output>
    , public core::IFile {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Output, core::IFile>();
    }
    core::URL url() override { return {}; }
    unsigned read(void*, unsigned) override { return 0; }
    void write(const void* from, unsigned n) override {
        if (!std::cout.write(static_cast<const char*>(from), n))
            throw Failure(std::string("cannot write the output: ") + std::strerror(errno));
    }
    void flush() override {}
};

// An item as lists write it. In UTF-8 pairs of surrogates need no escape: strings hold them as they
// are.
std::string shown(const ListItem& item) {
    if (const auto* const text = std::get_if<stdx::ustring>(&item)) {
        const stdx::string utf8 = core::to_utf8(text->view());
        std::string quoted = "\"";
        for (const char c : utf8.view()) quoted.append(c == '"' ? 2 : 1, c);
        return quoted + '"';
    }
    core::StringOutputStream to;
    to.open();
    core::ListOutStream out(to.writer());
    put_item(*out.get(), item);
    return std::string(core::to_utf8(to.close()->toString().view()).view());
}

// Prints events as an indented list.
class Printer {
public:
    explicit Printer(const Request& request) : bytes_(request.bytes) {}

    void print(ListEvent event, ListScanner& list) {
        if (event == ListEvent::End) {
            --depth_;
            if (afterList_) new_line();
            std::cout << '}';
        } else {
            if (behind_) std::cout << ',';
            if (event == ListEvent::Item) {
                std::cout << (behind_ ? " " : "") << shown(list.item());
            } else {
                if (started_) new_line();
                print_list(event, list);
            }
        }
        started_ = true;
        behind_ = event != ListEvent::Begin;
        afterList_ = event == ListEvent::End || event == ListEvent::Attachment;
    }
    void finish() {
        if (started_) std::cout << '\n';
    }

private:
    void print_list(ListEvent event, ListScanner& list) {
        if (event == ListEvent::Begin) {
            std::cout << '{';
            ++depth_;
        } else if (bytes_) {
            print_attachment(std::cout, list);
        } else {
            std::cout << describe_attachment(list);
        }
    }
    void new_line() { std::cout << '\n' << std::string(std::size_t{2} * depth_, ' '); }

    bool bytes_;
    unsigned depth_ = 0;
    bool behind_ = false, afterList_ = false, started_ = false;
};

// Writes all that there is to a stream; `put` writes an attachment.
template <class Put> void copy_list(ListScanner& list, core::ListOutStream& out, Put put) {
    for (ListEvent event; (event = list.next()) != ListEvent::EndOfFile;) {
        if (event == ListEvent::Begin)
            out->beginList();
        else if (event == ListEvent::End)
            out->endList();
        else if (event == ListEvent::Item)
            put_item(*out.get(), list.item());
        else
            put();
    }
}

// Passes what the event began; `seen` gets all of it.
template <class Seen> void pass(ListScanner& list, ListEvent event, Seen seen) {
    for (std::uint64_t open = 0;; event = list.next()) {
        seen(event);
        if (event == ListEvent::Begin) ++open;
        if (event == ListEvent::End) --open;
        if (open == 0) return;
    }
}

// ---- Verbs.

int show_list(const Arguments& arguments) {
    const Request request = parse_request(arguments, "cat", 1, "one file");
    const auto list = open_list(request.words[0], request.reading);
    Printer printer(request);
    for (ListEvent event; (event = list->next()) != ListEvent::EndOfFile;)
        printer.print(event, *list);
    printer.finish();
    return kSuccess;
}

int check_list(const Arguments& arguments) {
    const Request request = parse_request(arguments, "check", 1, "one file");
    const auto list = open_list(request.words[0], request.reading);
    std::uint64_t lists = 0, items = 0, depth = 0, deepest = 0, attachments = 0, attached = 0;
    for (ListEvent event; (event = list->next()) != ListEvent::EndOfFile;) {
        if (event == ListEvent::End) {
            --depth;
        } else if (event == ListEvent::Begin) {
            ++lists;
            deepest = std::max(deepest, ++depth);
        } else if (event == ListEvent::Item) {
            ++items;
        } else {
            ++attachments;
            attached += size_of_attachment(*list);
        }
    }
    if (lists + attachments == 0) throw Failure("'" + request.words[0] + "' holds no list");
    if (arguments.json)
        std::cout << "{\"form\":\"" << list->form() << "\",\"lists\":" << lists
                  << ",\"items\":" << items << ",\"depth\":" << deepest
                  << ",\"attachments\":" << attachments << ",\"attached\":" << attached << "}\n";
    else
        std::cout << list->form() << ", lists " << lists << ", items " << items << ", depth "
                  << deepest << ", attachments " << attachments << " of " << attached << " bytes\n";
    return kSuccess;
}

int write_binary(const Arguments& arguments) {
    const Request request = parse_request(arguments, "to-binary", 1, "one file");
    const auto list = open_list(request.words[0], request.reading);
    const auto file = core::create_buffered_file(core::make_object<Output>().get(), 0x8000);
    core::ListOutStream out(file.get());
    copy_list(*list, out, [&] { put_binary_attachment(*out.get(), *list); });
    out.close();
    return kSuccess;
}

int write_text(const Arguments& arguments) {
    const Request request = parse_request(arguments, "to-text", 1, "one file");
    const auto list = open_list(request.words[0], request.reading);
    const auto writer = core::create_file_writer();
    writer->open(core::make_object<Output>().get(), core::kUTF8Encoding, false);
    core::ListOutStream out(writer.get());
    copy_list(*list, out, [&] { put_text_attachment(*out.get(), *list); });
    out.close();
    writer->close();
    return kSuccess;
}

// The item at hand and nothing else.
void print_raw(ListEvent event, ListScanner& list) {
    if (event == ListEvent::Attachment) return print_bytes(std::cout, list);
    const bool isItem = event == ListEvent::Item;
    if (const auto* const blob = isItem ? std::get_if<Blob>(&list.item()) : nullptr)
        std::cout << blob->bytes.view();
    else if (const auto* const text = isItem ? std::get_if<stdx::ustring>(&list.item()) : nullptr)
        std::cout << core::to_utf8(text->view()).view();
    else
        throw Failure("the item is no attachment, bytes or a string");
}

void show_item(const Request& request, ListEvent event, ListScanner& list) {
    if (request.raw) return print_raw(event, list);
    Printer printer(request);
    pass(list, event, [&](ListEvent seen) { printer.print(seen, list); });
    printer.finish();
}

int get_item(const Arguments& arguments) {
    const Request request = parse_request(arguments, "get", 2, "a path and one file");
    const auto path = parse_path(request.words[0]);
    const auto list = open_list(request.words[1], request.reading);
    for (std::size_t level = 0; level != path.size(); ++level) {
        for (std::uint64_t index = 0;; ++index) {
            const ListEvent event = list->next();
            if (event == ListEvent::End || event == ListEvent::EndOfFile) return kFailure;
            if (index != path[level]) {
                pass(*list, event, [](ListEvent) {});
            } else if (level + 1 == path.size()) {
                show_item(request, event, *list);
                return kSuccess;
            } else if (event != ListEvent::Begin) {
                return kFailure;
            } else {
                break;
            }
        }
    }
    return kFailure;
}

// Both files side by side: what stands at the same place is compared.
class Comparison {
public:
    Comparison(ListScanner& a, ListScanner& b) : a_(a), b_(b) {}

    bool run() {
        for (path_ = {0};;) {
            const ListEvent a = a_.next(), b = b_.next();
            const bool aEnds = ends(a), bEnds = ends(b);
            if (aEnds && bEnds) {
                if (a == ListEvent::EndOfFile) return equal_;
                path_.pop_back();
            } else if (aEnds || bEnds) {
                rest(aEnds ? "+ " : "- ", aEnds ? b_ : a_, aEnds ? b : a);
                if (path_.size() == 1) return equal_;
                path_.pop_back();
            } else if (a == ListEvent::Begin && b == ListEvent::Begin) {
                path_.push_back(0);
                continue;
            } else if (a == ListEvent::Attachment && b == ListEvent::Attachment) {
                if (const std::string change = compare_attachments(a_, b_); !change.empty())
                    tell("  ", change);
            } else if (const std::string was = line(a_, a), is = line(b_, b); was != is) {
                tell("  ", was + " -> " + is);
            }
            ++path_.back();
        }
    }

private:
    static bool ends(ListEvent event) {
        return event == ListEvent::End || event == ListEvent::EndOfFile;
    }
    // An item, an attachment, or "{...}" for a list, which is passed.
    static std::string line(ListScanner& list, ListEvent event) {
        if (event == ListEvent::Item) return shown(list.item());
        if (event == ListEvent::Attachment) return describe_attachment(list);
        pass(list, event, [](ListEvent) {});
        return "{...}";
    }
    // What one list has more than the other.
    void rest(const char* sign, ListScanner& list, ListEvent event) {
        for (; !ends(event); event = list.next()) {
            tell(sign, line(list, event));
            ++path_.back();
        }
    }
    void tell(const char* sign, const std::string& text) {
        equal_ = false;
        std::cout << sign;
        for (std::size_t i = 0; i != path_.size(); ++i) std::cout << (i ? "/" : "") << path_[i];
        std::cout << ": " << text << '\n';
    }

    ListScanner &a_, &b_;
    std::vector<std::uint64_t> path_; // of the items at hand
    bool equal_ = true;
};

int compare_lists(const Arguments& arguments) {
    const Request request = parse_request(arguments, "diff", 2, "two files");
    const auto a = open_list(request.words[0], request.reading);
    const auto b = open_list(request.words[1], request.reading);
    const auto isBinary = [](const ListScanner& list) {
        return std::string_view(list.form()) == "binary";
    };
    if (isBinary(*a) != isBinary(*b))
        throw Failure("one list is text and the other binary: bring them to the same form first");
    return Comparison(*a, *b).run() ? kSuccess : kFailure;
}

constexpr Command kVerbs[] = {
    {"cat", "[FILE]", "show a list, indented", show_list},
    {"check", "[FILE]", "tell what it holds, or the place of the first fault", check_list},
    {"to-binary", "[FILE]", "write it as bytes, attachments as lists of 0 and blobs", write_binary},
    {"to-text", "[FILE]", "write it as text, attachments as base64", write_text},
    {"get", "PATH [FILE]", "show one item; 0/2 is the third of the first list", get_item},
    {"diff", "FILE FILE", "tell what differs, by paths; 1 if anything does", compare_lists},
};

void list_options() {
    std::cout << "\noptions:\n";
    for (const auto& option : kOptions) {
        std::cout << "  " << std::left << std::setw(15) << option.name;
        if (!option.verbs.empty()) std::cout << option.verbs << ": ";
        std::cout << option.help << '\n';
    }
}

} // namespace

int list_command(const Arguments& arguments) {
    const int status = run_verb("list", kVerbs, arguments);
    if (std::string_view(arguments.values[0]) == "help") list_options();
    return status;
}

} // namespace orb
