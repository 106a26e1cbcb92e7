#include <core/component/Exception.h>

#include <core/component/LSEHelper.h>
#include <core/component/SCOM_Process.h>
#include <core/component/StackTrace.h>
#include <core/concurrency/Thread.h>

#include "ExceptionCounter.h"

namespace core {
namespace {

thread_local constinit unsigned expecting = 0;

// Of the frames that are captured, these belong to the capture: `get_stack_trace`, `initStackTrace`
// and the constructor or member that called it.
constexpr unsigned kFramesOfCapture = 3;
constexpr unsigned kFramesWalked = 100;

ExceptionCounter* counter_of_current_thread() noexcept {
    const Thread* const thread = current_thread();
    return thread ? thread->exceptionsCount() : nullptr;
}

constexpr std::size_t bit(ValuesExceptionCategory category) noexcept {
    return static_cast<std::size_t>(category);
}

} // namespace

[[gnu::noinline]] Exception::Exception(const _GUID& objectClass, const stdx::ustring& description,
                                       IExceptionObject* inner, const _GUID& uiHelper,
                                       const Categories& categories, const stdx::ustring& stackText)
    : objectClass_(objectClass),
      description_(description),
      inner_(inner, true),
      creationStack_(stackText),
      categories_(categories),
      uiHelper_(uiHelper),
      counter_(counter_of_current_thread(), true) {
    initStackTrace();
}

Exception::Exception(const Exception& other) = default;
Exception::Exception(Exception&& other) noexcept = default;
Exception& Exception::operator=(const Exception& other) = default;
Exception& Exception::operator=(Exception&& other) noexcept = default;
Exception::~Exception() = default;

InterfacePtr<IExceptionObject> Exception::object() const {
    const LSEHelper expected;
    auto object = create_object<IExceptionObject>(objectClass_);
    if (object) object->assign(*this);
    return object;
}

stdx::ustring Exception::creationStackTrace() const {
    if (!creationStack_.empty() || !frames_) return creationStack_;
    return print_stack_trace(*frames_);
}

[[gnu::noinline]] void Exception::initStackTrace() {
    if (inner_ || !creationStack_.empty() || StackCaptureOff::active()) return;
    frames_ = get_stack_trace(kFramesOfCapture, kFramesWalked);
}

[[gnu::noinline]] void Exception::setOnClientFromServer() {
    if (!creationStack_.empty()) {
        serverStack_ = std::exchange(creationStack_, {});
        initStackTrace();
    }
    if (categories_.test(bit(ValuesExceptionCategory::ExceptionRaisedFromScript))) return;
    categories_.reset(bit(ValuesExceptionCategory::LocalFileAccessError));
    categories_.reset(bit(ValuesExceptionCategory::PrinterError));
}

Exception Exception::as_plain() const {
    Exception plain(*this);
    plain.objectClass_ = CLSID_ExceptionObject;
    return plain;
}

InterfacePtr<IExceptionObject> get_exception_object(IExceptionObject* chain,
                                                    const _GUID& objectClass) {
    // Every object holds the next one, so the chain stays while its head does.
    IExceptionObject* object = chain;
    while (object && object->exception()->objectClass() != objectClass)
        object = object->exception()->inner();
    return {object, true};
}

const std::atomic<std::uint32_t>* current_ecxeptions_count() noexcept {
    const ExceptionCounter* const counter = counter_of_current_thread();
    return counter ? &counter->word() : nullptr;
}

LSEHelper::LSEHelper() noexcept {
    ++expecting;
}

LSEHelper::~LSEHelper() {
    --expecting;
}

bool LSEHelper::expected() noexcept {
    return expecting != 0;
}

} // namespace core
