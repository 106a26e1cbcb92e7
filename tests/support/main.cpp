// The start of every test program: the library is up, and the locale is that of the environment, so
// that a run under another one shows what depends on it by mistake.

#include <core/component/Module.h>
#include <core/runtime/CoreInit.h>

#include <gmock/gmock.h>

#include <clocale>

ORBCORE_MODULE("tests", "1.0.0.0");

int main(int count, char** words) {
    std::setlocale(LC_ALL, "");
    CoreInit();
    testing::InitGoogleMock(&count, words);
    return RUN_ALL_TESTS();
}
