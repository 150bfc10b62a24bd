// A list view's messages carry pointers, which mean something in its own process only: so the text is asked for through
// memory that is allocated there.
#include "drive/list_view.h"

#include "drive/failure.h"
#include "drive/screen.h"
#include "drive/wide.h"
#include "windows/base/handles.h"

#include <array>
#include <cstddef>

#include <commctrl.h>

namespace drive {
namespace {

constexpr int kLongest = 260; // characters of a cell

struct Request {
    LVITEMW item;
    std::array<wchar_t, kLongest> text;
};

class OtherProcess {
public:
    explicit OtherProcess(HWND window) {
        DWORD id = 0;
        GetWindowThreadProcessId(window, &id);
        m_process.reset(OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id));
        m_memory = VirtualAllocEx(m_process.get(), nullptr, sizeof(Request), MEM_COMMIT, PAGE_READWRITE);
        if (m_memory == nullptr) {
            throw Failure("the list's process cannot be read: error " + std::to_string(GetLastError()));
        }
    }
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;
    ~OtherProcess() { VirtualFreeEx(m_process.get(), m_memory, 0, MEM_RELEASE); }

    std::string textOf(HWND list, int row, int column) const {
        Request request{};
        request.item.iSubItem = column;
        request.item.cchTextMax = kLongest;
        request.item.pszText = reinterpret_cast<wchar_t*>(static_cast<std::byte*>(m_memory) + offsetof(Request, text));
        WriteProcessMemory(m_process.get(), m_memory, &request, sizeof request, nullptr);
        ask(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(m_memory));
        ReadProcessMemory(m_process.get(), m_memory, &request, sizeof request, nullptr);
        request.text.back() = L'\0';
        return narrow(request.text.data());
    }

private:
    windows::UniqueHandle m_process;
    void* m_memory;
};

} // namespace

std::vector<std::string> rowsOf(HWND listView) {
    constexpr int kTicked = 2; // the second of the two state images
    const OtherProcess process(listView);
    const auto header = reinterpret_cast<HWND>(ask(listView, LVM_GETHEADER));
    const auto columns = static_cast<int>(ask(header, HDM_GETITEMCOUNT));
    const auto count = static_cast<int>(ask(listView, LVM_GETITEMCOUNT));
    std::vector<std::string> rows;
    for (int row = 0; row < count; ++row) {
        const LRESULT state = ask(listView, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_STATEIMAGEMASK);
        std::string text = (state >> 12) == kTicked ? "+" : "-";
        for (int column = 0; column < columns; ++column) {
            text += (column == 0 ? "" : "|") + process.textOf(listView, row, column);
        }
        rows.push_back(text);
    }
    return rows;
}

} // namespace drive
