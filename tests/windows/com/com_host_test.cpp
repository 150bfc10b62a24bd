// Hosts that nobody here wrote: the system's script hosts create the classes by name.
#include "windows/com/com_support.h"

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

TEST(ScriptHost, VbScriptUsesTheControlAndItsXmlObjects) {
    const Registered registered;
    const HostRun run = runScriptHost(L"hosts\\xml_objects.vbs");
    EXPECT_EQ(run.exitCode, 0U);
    EXPECT_EQ(run.output, "create: no error\n"
                          "True _XmlDocument _XmlNode\n"
                          "False []\n"
                          "1;2;2 3\n"
                          "True True\n"
                          "<r><a i=\"1\"/><a i=\"2\"/><c n=\"7\">new</c></r>\n"
                          "so far: no error\n"
                          "invalid expression: error 16389 Invalid expression: //p[\n"
                          "foreign node refused: True\n"
                          "missing file: error 53 File not found\n"
                          "missing folder: error 76 Path not found\n"
                          "no document: error 438 Object doesn't support this property or method\n"
                          "puts: no error\n"
                          "True True True\n"
                          "upgrade: error 91 Object variable or With block variable not set\n"
                          "END\n");
}

TEST(ScriptHost, JScriptUsesThemToo) {
    const Registered registered;
    const HostRun run = runScriptHost(L"hosts\\xml_objects.js");
    EXPECT_EQ(run.exitCode, 0U);
    EXPECT_EQ(run.output, "1;2;2\n"
                          "changed changed\n"
                          "END\n");
}

} // namespace
} // namespace com_test
