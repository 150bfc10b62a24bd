// drive.exe: plays the user of a Windows program from another process, by the lines of a script.
#include "drive/failure.h"
#include "drive/player.h"
#include "drive/script.h"
#include "drive/wide.h"

#include <windows.h>

#include <cstdio>
#include <cwchar>
#include <string>
#include <string_view>

namespace {

void printLine(std::string_view line) {
    std::fprintf(stdout, "%.*s\n", static_cast<int>(line.size()), line.data());
    std::fflush(stdout);
}

// False when the file cannot be opened.
bool readAll(const wchar_t* path, std::string& text) {
    std::FILE* const file = std::wcscmp(path, L"-") == 0 ? stdin : _wfopen(path, L"rb");
    if (file == nullptr) {
        return false;
    }
    char block[4096];
    while (const std::size_t count = std::fread(block, 1, sizeof block, file)) {
        text.append(block, count);
    }
    if (file != stdin) {
        std::fclose(file);
    }
    return true;
}

void printHost(const drive::HostProcess& host) {
    if (host.started()) {
        std::fputs(host.output().c_str(), stdout);
    }
}

} // namespace

// Exit codes: 0 all was as the script says, 1 it was not, 2 the script or the command line is wrong.
int wmain(int count, wchar_t** arguments) {
    if (count != 2) {
        std::fprintf(stderr, "usage: drive SCRIPT   (or - for standard input)\n\n%s",
                     drive::describeCommands().c_str());
        return 2;
    }
    std::string text;
    if (!readAll(arguments[1], text)) {
        std::fprintf(stderr, "drive: cannot read %s\n", drive::narrow(arguments[1]).c_str());
        return 2;
    }
    // Window rectangles and the screen in the same, real pixels.
    SetProcessDPIAware();
    try {
        drive::Player player(printLine);
        player.play(drive::parseScript(text));
        printHost(player.host());
        return 0;
    } catch (const drive::ScriptError& error) {
        std::fprintf(stderr, "drive: %s\n", error.what());
        return 2;
    } catch (const drive::Failure& failure) {
        std::fprintf(stderr, "drive: %s\n", failure.what());
        return 1;
    }
}
