#include <core/component/ClassDescriptor.h>
#include <core/component/Exception.h>
#include <core/component/Logger.h>
#include <core/component/Object.h>
#include <core/component/SCOM_Process.h>
#include <core/component/Utf8.h>

#include "support/ProcessTest.h"

#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace core;

std::vector<std::string> records;
bool sinkFails = false;

// Notes each record as one line; lets pass what is at least `Info`.
class Sink
    : public ObjectRoot
    , public SCOM_Class<Sink, &CLSID_SCOM_LoggerSink>
    , public ISCOM_LoggerSink {
public:
    static const InterfaceEntry* _GetEntries() { return interface_map<Sink, ISCOM_LoggerSink>(); }

    void log(SCOM_LogLevel level, const char* component, const char* className, unsigned id,
             const char16_t* text, const SCOM_LogProperty* properties, unsigned count,
             IExceptionObject* exception) override {
        if (sinkFails) throw std::runtime_error("disk full");
        std::ostringstream line;
        line << static_cast<unsigned>(level) << ' ' << component << ' ' << className << ' ' << id
             << ' ' << to_utf8(text);
        for (unsigned i = 0; i != count; ++i)
            line << ' ' << to_utf8(properties[i].first) << '=' << to_utf8(properties[i].second);
        if (exception) line << " (" << *exception->exception() << ')';
        records.push_back(line.str());
    }
    InterfacePtr<IUnknown> logDelayed(SCOM_LogLevel level, const char* component,
                                      const char* className, unsigned id, const char16_t* text,
                                      const SCOM_LogProperty* properties, unsigned count) override {
        log(level, component, className, id, text, properties, count, nullptr);
        return InterfacePtr<IUnknown>(static_cast<ISCOM_LoggerSink*>(this));
    }
    bool isEnabled(SCOM_LogLevel level, const char*, const char*) override {
        return level >= SCOM_LogLevel::Info;
    }
};
ORBCORE_REGISTER(Sink);

constinit const SCOM_StaticLogger logger("tests", "LoggerTest");

class Logger : public test::ProcessTest {
protected:
    void SetUp() override {
        records.clear();
        sinkFails = false;
    }
};

TEST_F(Logger, HandsRecordsToTheSink) {
    const auto exception = Exception(u"why").object();
    const SCOM_LogProperty properties[] = {{kSCOM_LoggerFuncProp, u"run"},
                                           {kSCOM_LoggerLineProp, u"7"}};
    logger.log(SCOM_LogLevel::Info, 3, u"two", properties, 2, nullptr);
    logger.log(SCOM_LogLevel::Error, 4, u"none", nullptr, 0, exception.get());
    logger.logTrace(5, u"t", u"k", u"v", nullptr);
    logger.logDebug(5, u"d", u"k", u"v", nullptr);
    logger.logInfo(5, u"i", u"k", u"v", nullptr);
    logger.logWarning(5, u"w", u"k", nullptr, nullptr);
    logger.logError(5, u"e", u"k", u"v", exception.get());
    EXPECT_TRUE(logger.logDelayed(SCOM_LogLevel::Debug, 6, u"later", properties, 1));
    EXPECT_EQ(records, (std::vector<std::string>{
                           "2 tests LoggerTest 3 two func=run line=7",
                           "4 tests LoggerTest 4 none (why)",
                           "0 tests LoggerTest 5 t k=v",
                           "1 tests LoggerTest 5 d k=v",
                           "2 tests LoggerTest 5 i k=v",
                           "3 tests LoggerTest 5 w k=",
                           "4 tests LoggerTest 5 e k=v (why)",
                           "1 tests LoggerTest 6 later func=run",
                       }));
}

TEST_F(Logger, AsksTheSinkWhatPasses) {
    EXPECT_FALSE(logger.isEnabled(SCOM_LogLevel::Debug));
    EXPECT_TRUE(logger.isEnabled(SCOM_LogLevel::Info));
}

TEST_F(Logger, NeverFails) {
    sinkFails = true;
    logger.logError(1, u"x", u"k", u"v", nullptr);
    EXPECT_FALSE(logger.logDelayed(SCOM_LogLevel::Error, 1, u"x", nullptr, 0));
    EXPECT_TRUE(records.empty());
}

TEST_F(Logger, WithoutASinkWritesNothing) {
    revoke_SCOM_class(CLSID_SCOM_LoggerSink);
    EXPECT_FALSE(logger.isEnabled(SCOM_LogLevel::Error));
    EXPECT_FALSE(logger.logDelayed(SCOM_LogLevel::Error, 1, u"x", nullptr, 0));
    logger.logError(1, u"x", u"k", u"v", nullptr);
    EXPECT_TRUE(records.empty());
}

TEST(LoggerWithoutProcess, WritesNothing) {
    records.clear();
    EXPECT_FALSE(logger.isEnabled(SCOM_LogLevel::Error));
    logger.logError(1, u"x", u"k", u"v", nullptr);
    EXPECT_TRUE(records.empty());
}

TEST(LoggerProperties, ShowPointersInHexadecimal) {
    const struct {
        std::uintptr_t address;
        const char16_t* text;
    } rows[] = {
        {0, u"00000000"},
        {0xabc, u"00000ABC"},
        {0x7fff12345678, u"7FFF12345678"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(pointer_to_string(reinterpret_cast<void*>(row.address)), row.text);
}

} // namespace
