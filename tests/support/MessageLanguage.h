// While it lives, the calling thread reads messages in one language.
#pragma once

#include <core/concurrency/Thread.h>
#include <core/locale/Locale.h>

namespace test {

class MessageLanguage {
public:
    explicit MessageLanguage(const char16_t* locale) {
        core::current_thread()->setResourceLocale(core::Locale(locale));
    }
    ~MessageLanguage() { core::current_thread()->resetResourceLocale(); }
    MessageLanguage(const MessageLanguage&) = delete;
    MessageLanguage& operator=(const MessageLanguage&) = delete;
};

} // namespace test
