// The hosts in examples/hosts, run as a user would run them.
#include "contracts/scratch_folder.h"
#include "fakes/stored_cabinet.h"
#include "windows/adapters/windows_file_system.h"
#include "windows/base/wide.h"
#include "windows/com/com_support.h"

#include <gtest/gtest.h>

#include <string_view>

#include <commctrl.h>

namespace com_test {
namespace {

// Of the host that runs; other tests have windows of the same classes.
HWND visibleWindow(DWORD process, const wchar_t* windowClass) {
    HWND window = nullptr;
    while ((window = FindWindowExW(nullptr, window, windowClass, nullptr)) != nullptr) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner == process && IsWindowVisible(window)) {
            return window;
        }
    }
    return nullptr;
}

// Closes whatever the component shows in the host.
void closeForms(DWORD process) {
    for (const wchar_t* windowClass : {L"QVI_frmQVI_Images", L"QVI_frmQVI_sendreceive", L"#32770"}) {
        if (HWND window = visibleWindow(process, windowClass)) {
            PostMessageW(window, WM_CLOSE, 0, 0);
        }
    }
}

// A box means that something went wrong in the control.
void refuseBoxes(DWORD process) {
    if (HWND box = visibleWindow(process, L"#32770")) {
        wchar_t text[300] = L"";
        GetDlgItemTextW(box, 0xFFFF, text, 300);
        ADD_FAILURE() << testing::PrintToString(std::wstring(text));
        PostMessageW(box, WM_CLOSE, 0, 0);
    }
}

class SampleHost : public testing::Test {
protected:
    Registered registered;
};

TEST_F(SampleHost, TheFormsRunToTheirEnd) {
    const HostRun images = runScriptHost(L"hosts\\link_images.vbs", L"Z:\\nowhere O'NEIL", closeForms);
    EXPECT_EQ(images.exitCode, 0U);
    EXPECT_EQ(images.output, "ProductCode=O'NEIL\nNewImageFile=[]\nDeleteLink=0\nEND\n");
    const HostRun exchange = runScriptHost(L"hosts\\show_send_receive.js", L"Z:\\nowhere", closeForms);
    EXPECT_EQ(exchange.exitCode, 0U);
    EXPECT_EQ(exchange.output, "END\n");
}

TEST_F(SampleHost, AScriptSetsTheControlUpAndReadsBackWhatItSet) {
    const HostRun run = runScriptHost(L"hosts\\send_receive_control.js", besideThisProgram(L"hosts"), refuseBoxes);
    EXPECT_EQ(run.exitCode, 0U);
    EXPECT_EQ(run.output, "command prices\n"
                          "command orders\n"
                          "sWebAddress=http://localhost/\n"
                          "bLoginNotRequired=true\n"
                          "gUsingAlternate=false\n"
                          "Globals.gProfileNumber=1001\n"
                          "commands=2\n"
                          "trace: My host starts\n"
                          "trace: Sub SetMessage --> Ready\n"
                          "END\n");
}

TEST_F(SampleHost, TheirOwnDocumentsServeAsCommandsAndSettings) {
    const HostRun run = runScriptHost(L"hosts\\own_document.js", {}, refuseBoxes);
    EXPECT_EQ(run.exitCode, 0U);
    EXPECT_EQ(run.output, "the same object: true\nsettings: 1\nEND\n");
}

TEST_F(SampleHost, AScriptKeepsItsCommandsInAFileWithTheGlobalsOfTheComponent) {
    const contracts::ScratchFolder scratch;
    const std::wstring folder = scratch.path().wstring();
    const auto run = [&](const std::wstring& arguments) {
        return runScriptHost(L"hosts\\command_file.vbs", L"\"" + folder + arguments, refuseBoxes);
    };
    EXPECT_EQ(run(L"\" \"o'clock\" \"First text\"").output, "o'clock: First text\nEND\n");
    EXPECT_EQ(run(L"\" prices Prices").output, "o'clock: First text\nprices: Prices\nEND\n");
    const HostRun changed = run(L"\" \"o'clock\" \"Other text\"");
    EXPECT_EQ(changed.exitCode, 0U);
    EXPECT_EQ(changed.output, "o'clock: Other text\nprices: Prices\nEND\n");
    windows::WindowsFileSystem files;
    EXPECT_TRUE(files.fileExists(windows::fromWide(folder + L"\\quorvantis_sendreceive.txt")));

    files.replaceFile(windows::fromWide(folder + L"\\commands.xml"), "<commands>");
    EXPECT_EQ(run(L"\" a b").exitCode, 1U);
    EXPECT_EQ(files.readFile(windows::fromWide(folder + L"\\commands.xml")), "<commands>");
    const HostRun missing = run(L"\\nowhere\" a b");
    EXPECT_EQ(missing.exitCode, 1U);
    EXPECT_NE(missing.output.find("commands.xml failed: Path not found (error "), std::string::npos) << missing.output;
}

TEST_F(SampleHost, ACompiledHostConnectsToTheEvents) {
    const HostRun run = runProgram(besideThisProgram(L"event_host.exe"), refuseBoxes);
    EXPECT_EQ(run.exitCode, 0U);
    EXPECT_EQ(run.output, "connected\nEND\n");
}

TEST_F(SampleHost, AScriptListsAndExtractsACabinet) {
    const contracts::ScratchFolder scratch;
    windows::WindowsFileSystem files;
    const std::wstring folder = scratch.path().wstring();
    const auto in = [&](std::wstring_view name) { return windows::fromWide(folder + L"\\" + std::wstring(name)); };
    files.replaceFile(in(L"x.cab"), fakes::storedCabinet({{"a&b.txt", "top"}, {"sub\\c.txt", "below", 0x5D6F, 0}}));
    const std::wstring cabinet = L"\"" + folder + L"\\x.cab\"";
    const HostRun run = runScriptHost(L"hosts\\list_cabinet.vbs", cabinet + L" \"" + folder + L"\\out\"");
    EXPECT_EQ(run.exitCode, 0U);
    EXPECT_EQ(run.output, "2 files\n"
                          "a&b.txt | 3 | 11/15/2026 7:08:12 PM\n"
                          "sub\\c.txt | 5 | 11/15/2026\n"
                          "extracted\n"
                          "END\n");
    EXPECT_EQ(files.readFile(in(L"out\\a&b.txt")), "top");
    EXPECT_EQ(files.readFile(in(L"out\\sub\\c.txt")), "below");

    const HostRun missing = runScriptHost(L"hosts\\list_cabinet.vbs", L"Z:\\no.cab");
    EXPECT_EQ(missing.exitCode, 1U);
    EXPECT_EQ(missing.output, "GetXML failed: The system cannot find the file specified. (error 2, CabFile)\n");
}

BOOL CALLBACK findList(HWND child, LPARAM result) {
    wchar_t name[50];
    GetClassNameW(child, name, 50);
    if (std::wstring_view(name) != WC_LISTVIEWW) {
        return TRUE;
    }
    *reinterpret_cast<HWND*>(result) = child;
    return FALSE;
}

HWND listInside(HWND window) {
    HWND found = nullptr;
    EnumChildWindows(window, findList, reinterpret_cast<LPARAM>(&found));
    return found;
}

TEST_F(SampleHost, ACompiledHostShowsTheControlInTheSystemsContainer) {
    RECT list{};
    const HostRun run = runProgram(besideThisProgram(L"window_host.exe"), [&](DWORD process) {
        refuseBoxes(process);
        const HWND window = visibleWindow(process, L"WindowHost");
        const HWND commands = listInside(window);
        if (SendMessageW(commands, LVM_GETITEMCOUNT, 0, 0) == 2 && IsWindowVisible(commands)) {
            GetWindowRect(commands, &list);
            PostMessageW(window, WM_CLOSE, 0, 0);
        }
    });
    EXPECT_EQ(run.exitCode, 0U);
    EXPECT_EQ(run.output, "END\n");
    EXPECT_GT(list.right - list.left, 600) << "as wide as its window";
}

TEST(SampleHostWithout, ArgumentsOrRegistrationItExplainsWhatIsMissing) {
    EXPECT_EQ(runScriptHost(L"hosts\\link_images.vbs").exitCode, 2U);
    EXPECT_EQ(runScriptHost(L"hosts\\send_receive_control.js").exitCode, 2U);
    const HostRun images = runScriptHost(L"hosts\\link_images.vbs", L"Z:\\nowhere 1");
    EXPECT_EQ(images.exitCode, 1U);
    EXPECT_EQ(images.output.find("Creating the class failed: "), 0U) << images.output;
    const HostRun compiled = runProgram(besideThisProgram(L"event_host.exe"));
    EXPECT_EQ(compiled.exitCode, 1U);
    EXPECT_EQ(compiled.output, "Finding the class failed: 800401F3\n");
}

} // namespace
} // namespace com_test
