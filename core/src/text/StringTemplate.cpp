#include <core/text/StringTemplate.h>

#include <core/component/ClassDescriptor.h>
#include <core/component/IllegalArgumentException.h>
#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/text/Characters.h>
#include <core/text/StringTemplateException.h>

#include <set>

namespace core {
namespace {

using Error = StringTemplateException::Error;

// Literals and parameters by turns, a literal first and last: literal, parameter, literal, …
struct Fragments {
    std::vector<stdx::ustring> literals{1};
    std::vector<std::size_t> params; // from 0
};

class TemplateReader {
public:
    explicit TemplateReader(int paramCount) : paramCount_(paramCount) {}

    Fragments read(std::u16string_view format) {
        for (; at_ < format.size(); ++at_) take(format[at_]);
        if (behindPercent_ || inParentheses_) failHere();
        closeNumber();
        if (seen_.size() < static_cast<std::size_t>(paramCount_))
            throw StringTemplateException(Error::TooMany);
        return std::move(fragments_);
    }

private:
    [[noreturn]] void failHere() const {
        throw StringTemplateException(Error::WrongParam, static_cast<unsigned int>(at_));
    }

    void take(char16_t c) {
        const int value = digit(c);
        if (value >= 0 && (behindPercent_ || inParentheses_ || inNumber_))
            takeDigit(value);
        else if (c == u')')
            takeClose();
        else if (inParentheses_)
            failHere();
        else if (c == u'%')
            takePercent();
        else if (c == u'(' && behindPercent_)
            open();
        else if (behindPercent_)
            failHere();
        else
            takeLiteral(c);
    }

    void takeDigit(int value) {
        behindPercent_ = false;
        inNumber_ = true;
        // Beyond every count the value does not matter any more.
        number_ = std::min(number_ * 10 + value, kTooLarge);
    }

    void takePercent() {
        if (behindPercent_) {
            behindPercent_ = false;
            takeLiteral(u'%');
        } else {
            closeNumber();
            behindPercent_ = true;
        }
    }

    void open() {
        behindPercent_ = false;
        inParentheses_ = true;
    }

    // A `)` that closes nothing is literal, and a `%` before it still waits for its number.
    void takeClose() {
        if (!inParentheses_) return takeLiteral(u')');
        if (!inNumber_) failHere();
        closeNumber();
        inParentheses_ = false;
    }

    void takeLiteral(char16_t c) {
        closeNumber();
        fragments_.literals.back().push_back(c);
    }

    void closeNumber() {
        if (!inNumber_) return;
        if (number_ == 0) failHere();
        if (number_ > paramCount_) throw StringTemplateException(Error::NotEnough);
        const auto param = static_cast<std::size_t>(number_ - 1);
        seen_.insert(param);
        fragments_.params.push_back(param);
        fragments_.literals.emplace_back();
        inNumber_ = false;
        number_ = 0;
    }

    static constexpr std::int64_t kTooLarge = std::int64_t{1} << 32;

    int paramCount_;
    std::size_t at_ = 0;
    bool behindPercent_ = false;
    bool inParentheses_ = false;
    bool inNumber_ = false;
    std::int64_t number_ = 0;
    std::set<std::size_t> seen_;
    Fragments fragments_;
};

} // namespace

class StringTemplate
    : public ObjectRoot
    , public SCOM_Class<StringTemplate, &CLSID_StringTemplate>
    , public IStringTemplate {
public:
    static constexpr bool kAggregatable = true;
    static const InterfaceEntry* _GetEntries() {
        return interface_map<StringTemplate, IStringTemplate>();
    }

    void parse(const stdx::ustring& format, int paramCount) override {
        ORB_ASSERT(paramCount >= 0);
        fragments_ = TemplateReader(paramCount).read(format);
        paramCount_ = static_cast<std::size_t>(paramCount);
    }

    stdx::ustring apply(const std::vector<stdx::ustring>& params) override {
        if (params.size() > paramCount_) throw StringTemplateException(Error::TooMany);
        if (params.size() < paramCount_) throw StringTemplateException(Error::NotEnough);
        stdx::ustring text = fragments_.literals.front();
        for (std::size_t i = 0; i < fragments_.params.size(); ++i) {
            text += params[fragments_.params[i]].view();
            text += fragments_.literals[i + 1].view();
        }
        return text;
    }

private:
    Fragments fragments_;
    std::size_t paramCount_ = 0;
};

} // namespace core

ORBCORE_REGISTER(core::StringTemplate);
