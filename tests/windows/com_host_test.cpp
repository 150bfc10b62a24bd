// Hosts that nobody here wrote: the system's script hosts create the classes by name.
#include "windows/com_support.h"

#include <gtest/gtest.h>

namespace com_test {
namespace {

TEST(ScriptHost, VbScriptReachesEveryMemberAndSeesTheErrors) {
    const Registered registered;
    const HostRun run = runScriptHost(L"hosts\\every_property.vbs");
    EXPECT_EQ(run.exitCode, 0U);
    EXPECT_EQ(run.output, "create: no error\n"
                          "fresh: [] 0\n"
                          "puts: no error\n"
                          "ProductCode=O'NEIL & SON\n"
                          "ImagesFile=a.jpg\n"
                          "DeleteLink=-1 Boolean\n"
                          "NewImageFile=[] String\n"
                          "gQuorVantisPath=C:\\QV\\\n"
                          "gWebAddress=http://localhost/\n"
                          "gProfileNumber=4711 String\n"
                          "gSettingString has 8 characters\n"
                          "wrong type: error 13\n"
                          "DeleteLink=-1\n"
                          "missing member: error 438\n"
                          "create: no error\n"
                          "1234\n"
                          "GetValue=Empty Empty\n"
                          "globals: no error\n"
                          "END\n");
}

TEST(ScriptHost, JScriptReachesTheClassesToo) {
    const Registered registered;
    const HostRun run = runScriptHost(L"hosts\\every_property.js");
    EXPECT_EQ(run.exitCode, 0U);
    EXPECT_EQ(run.output, "2 8364 55348\n"
                          "true boolean string\n"
                          "wrong type: error\n"
                          "undefined\n"
                          "END\n");
}

TEST(ScriptHost, FindsTheClassesWhileTheSystemsToolHasThemRegistered) {
    const std::wstring dll = L"\"" + dllPath() + L"\"";
    EXPECT_EQ(runProgram(L"regsvr32.exe /s " + dll).exitCode, 0U);
    EXPECT_NE(runScriptHost(L"hosts\\every_property.js").output.find("END"), std::string::npos);
    EXPECT_EQ(runProgram(L"regsvr32.exe /u /s " + dll).exitCode, 0U);
    EXPECT_EQ(runScriptHost(L"hosts\\every_property.js").output.find("END"), std::string::npos);
}

} // namespace
} // namespace com_test
