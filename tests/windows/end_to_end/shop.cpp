// Folders, files, settings and the script host of the end-to-end tests.
#include "windows/end_to_end/shop.h"

#include "drive/failure.h"
#include "drive/script.h"
#include "drive/wide.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace end_to_end {
namespace {

using drive::narrow;
using drive::wide;

constexpr const wchar_t* kSettings = L"Software\\VB and VBA Program Settings\\QuorVantis\\Main";
constexpr const wchar_t* kModified = L"ImageModify";
constexpr const wchar_t* kProductGroups = L"ProductGroups";
constexpr const wchar_t* kApplication = L"Software\\VB and VBA Program Settings\\EndToEnd";
constexpr const wchar_t* kConnection = L"Software\\VB and VBA Program Settings\\EndToEnd\\Dialup";

std::string freshFolder() {
    std::array<wchar_t, MAX_PATH> base{};
    GetTempPathW(MAX_PATH, base.data());
    // Two runs in one prefix must not meet; one process runs its tests one after another.
    static int count = 0;
    return narrow(base.data()) + "shop" + std::to_string(GetCurrentProcessId()) + "_" + std::to_string(++count) + "\\";
}

std::string utf16File(std::string_view text) {
    const std::wstring units = L"\xFEFF" + wide(text);
    return {reinterpret_cast<const char*>(units.data()), units.size() * sizeof(wchar_t)};
}

std::string codeFile(std::size_t index) {
    return "code" + std::to_string(index) + ".txt";
}

// An error would end the script silently with code 0, so it prints each one and ends with a code of its own.
// It reads the codes from UTF-16 files, as a script cannot hold every character itself.
std::string hostScript(std::string_view folder, std::string_view webAddress, std::size_t calls) {
    const std::string quotedFolder = "\"" + std::string(folder);
    std::string script = "On Error Resume Next\r\n"
                         "Set files = CreateObject(\"Scripting.FileSystemObject\")\r\n"
                         "Set link = CreateObject(\"QuorvantisImage.clsQVI_Link\")\r\n"
                         "If Err.Number <> 0 Then\r\n"
                         "    WScript.Echo \"no object: \" & Err.Number & \" \" & Err.Description\r\n"
                         "    WScript.Quit 9\r\n"
                         "End If\r\n"
                         "link.gQuorVantisPath = " +
                         quotedFolder +
                         "\"\r\n"
                         "link.gProfileNumber = \"1001\"\r\n"
                         "link.gSettingString = \"EndToEnd\"\r\n"
                         "link.gWebAddress = \"" +
                         std::string(webAddress) + "\"\r\n";
    for (std::size_t index = 0; index < calls; ++index) {
        script += "link.ProductCode = \"\"\r\n"
                  "link.ProductCode = files.OpenTextFile(" +
                  quotedFolder + codeFile(index) +
                  "\", 1, False, -1).ReadAll\r\n"
                  "Err.Clear\r\n"
                  "link.ShowForm\r\n"
                  "WScript.Echo \"error \" & Err.Number & \" [\" & Err.Source & \"] [\" & Err.Description & \"]\"\r\n"
                  "Err.Clear\r\n"
                  "WScript.Echo \"returned [\" & link.NewImageFile & \"] \" & link.DeleteLink\r\n";
    }
    return script + "WScript.Echo \"END\"\r\nWScript.Quit 0\r\n";
}

// Empty when there is none.
std::string registryText(const wchar_t* key, const wchar_t* value) {
    std::array<wchar_t, 256> text{};
    DWORD size = sizeof text;
    const LSTATUS status = RegGetValueW(HKEY_CURRENT_USER, key, value, RRF_RT_REG_SZ, nullptr, text.data(), &size);
    return status == ERROR_SUCCESS ? narrow(text.data()) : std::string();
}

// What was built beside this program.
std::string beside(const std::string& name) {
    std::array<wchar_t, MAX_PATH> program{};
    GetModuleFileNameW(nullptr, program.data(), MAX_PATH);
    const std::string path = narrow(program.data());
    return path.substr(0, path.find_last_of('\\') + 1) + name;
}

std::filesystem::path pathOf(const std::string& text) {
    return {wide(text)};
}

} // namespace

Shop::Shop() : m_folder(freshFolder()) {
    std::filesystem::create_directories(pathOf(m_folder + "images"));
    clearModified();
    RegDeleteTreeW(HKEY_CURRENT_USER, kApplication);
}

Shop::~Shop() {
    m_player.reset(); // ends the host before its folder goes
    std::error_code ignored;
    std::filesystem::remove_all(pathOf(m_folder), ignored);
}

void Shop::write(std::string_view name, std::string_view bytes) const {
    const std::filesystem::path path = pathOf(m_folder + std::string(name));
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string Shop::read(std::string_view name) const {
    std::ifstream file(pathOf(m_folder + std::string(name)), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool Shop::exists(std::string_view name) const {
    return std::filesystem::exists(pathOf(m_folder + std::string(name)));
}

std::vector<std::string> Shop::namesLike(std::string_view pattern) const {
    std::vector<std::string> names;
    WIN32_FIND_DATAW data{};
    const HANDLE search = FindFirstFileW(wide(m_folder + std::string(pattern)).c_str(), &data);
    for (BOOL more = search != INVALID_HANDLE_VALUE; more != FALSE; more = FindNextFileW(search, &data)) {
        names.push_back(narrow(data.cFileName));
    }
    FindClose(search);
    return names;
}

void Shop::setReadOnly(std::string_view name, bool readOnly) const {
    SetFileAttributesW(wide(m_folder + std::string(name)).c_str(),
                       readOnly ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL);
}

void Shop::startHost(const std::vector<std::string>& productCodes) {
    for (std::size_t index = 0; index < productCodes.size(); ++index) {
        write(codeFile(index), utf16File(productCodes[index]));
    }
    write("host.vbs", hostScript(m_folder, webAddress, productCodes.size()));
    start("cscript //nologo \"" + m_folder + "host.vbs\"");
}

void Shop::startScript(std::string_view name, std::string_view arguments) {
    start("cscript //nologo \"" + beside("hosts\\" + std::string(name)) + "\" " + std::string(arguments));
}

void Shop::startProgram(std::string_view name, std::string_view arguments) {
    start("\"" + beside(std::string(name) + ".exe") + "\" " + std::string(arguments));
}

void Shop::start(const std::string& commandLine) {
    m_player.emplace([](std::string_view) {});
    m_player->play({{1, "start", {commandLine}}});
}

void Shop::play(std::string_view script) {
    std::string text(script);
    constexpr std::string_view kPlaceholder = "{folder}";
    for (std::size_t at = text.find(kPlaceholder); at != std::string::npos; at = text.find(kPlaceholder)) {
        text.replace(at, kPlaceholder.size(), m_folder);
    }
    m_player->play(drive::parseScript(text));
}

std::string Shop::hostEnds() {
    m_player->play({{1, "wait-exit", {"0"}}});
    return m_player->host().output();
}

std::string Shop::modified() {
    return registryText(kSettings, kModified);
}

void Shop::setConnection(std::string_view key, std::string_view value) {
    setSetting("Dialup", key, value);
}

void Shop::setSetting(std::string_view section, std::string_view key, std::string_view value) {
    const std::wstring text = wide(value);
    RegSetKeyValueW(HKEY_CURRENT_USER, (kApplication + (L"\\" + wide(section))).c_str(), wide(key).c_str(), REG_SZ,
                    text.c_str(), static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

void Shop::goThrough(const std::string& type, const std::string& port, const std::string& password) {
    setConnection("UseProxy", "1");
    setConnection("FirewallType", type);
    setConnection("ProxyServer", "127.0.0.1");
    setConnection("ProxyPort", port);
    setConnection("ProxyUser", password.empty() ? "" : "me");
    setConnection("ProxyPassword", password);
}

std::string Shop::connection(std::string_view key) {
    return registryText(kConnection, wide(key).c_str());
}

void Shop::markProductGroups() {
    constexpr std::wstring_view kSaved = L"Saved";
    RegSetKeyValueW(HKEY_CURRENT_USER, kSettings, kProductGroups, REG_SZ, kSaved.data(),
                    static_cast<DWORD>((kSaved.size() + 1) * sizeof(wchar_t)));
}

bool Shop::productGroupsMarked() {
    return registryText(kSettings, kProductGroups) == "Saved";
}

void Shop::clearModified() {
    RegDeleteKeyValueW(HKEY_CURRENT_USER, kSettings, kModified);
}

void Shop::waitUntil(std::string_view what, const std::function<bool()>& condition) const {
    drive::Patience(m_player->host()).until(what, condition);
}

void Shop::waitUntilModified() const {
    waitUntil("ImageModify to be set", [] { return modified() == "Saved"; });
}

LockedFile::LockedFile(const std::string& path)
    : m_file(CreateFileW(wide(path).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)) {
    if (m_file == INVALID_HANDLE_VALUE) {
        throw drive::Failure("cannot lock " + path);
    }
}

LockedFile::~LockedFile() {
    CloseHandle(m_file);
}

} // namespace end_to_end
