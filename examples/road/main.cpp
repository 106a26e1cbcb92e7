// The road of one request: a file of any scheme holds an object; the host reads it, makes the object
// by the class that stands ahead of it, and asks it for properties by name, as a script does.
//
//   example_road URL [--ru] NAME...

#include <core/core.h>

#include <filesystem>
#include <iostream>
#include <vector>

namespace {

// "what failed", and a line for each cause.
void complain(const core::Exception& exception) {
    std::cout << core::to_utf8(exception.description()) << '\n';
    core::InterfacePtr<core::IExceptionObject> cause(exception.inner(), true);
    for (; cause; cause = {cause->exception()->inner(), true})
        std::cout << "  because: " << core::to_utf8(cause->exception()->description()) << '\n';
}

// A URL, or a path of the system.
core::URL url_of(std::string_view word) {
    if (word.find("://") != word.npos) return core::URL(core::from_utf8(word), false);
    return core::file_url(core::from_utf8(std::filesystem::absolute(word).native()));
}

class Host : public core::Process {
public:
    explicit Host(std::vector<std::string_view> words) : words_(std::move(words)) {}
    int status() const noexcept { return status_; }

private:
    void run() override {
        core::SCOM_Process* const process = core::current_process();
        const bool isRussian = std::erase(words_, "--ru") != 0;
        process->setResourceLocale(core::Locale(isRussian ? u"ru" : u"en"));
        try {
            process->loadComponentEx("invoice");
            print(url_of(words_.at(0)));
            status_ = 0;
        } catch (const core::Exception& exception) {
            complain(exception);
        }
    }

    void print(const core::URL& url) {
        const core::Value object(core::load_object(url));
        for (std::size_t i = 1; i < words_.size(); ++i) {
            const core::Value value = core::get_property(object, core::from_utf8(words_[i]));
            std::cout << words_[i] << ": " << core::to_utf8(core::to_string(value)) << '\n';
        }
    }

    std::vector<std::string_view> words_;
    int status_ = 1;
};

} // namespace

int main(int count, char** words) {
    if (count < 2) {
        std::cerr << "usage: example_road URL [--ru] NAME...\n";
        return 2;
    }
    core::CoreInitManager init;
    Host host({words + 1, words + count});
    host.construct(nullptr);
    host.start();
    return host.status();
}
