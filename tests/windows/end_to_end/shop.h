// What every end-to-end test has: a shop's data folder, a script host that opens the image manager on it, and a person
// who works the dialog from another process.
#pragma once

#include "drive/player.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace end_to_end {

class Shop : public testing::Test {
protected:
    // An empty folder with a sub-folder "images", and no "ImageModify" in the settings.
    Shop();
    ~Shop() override;

    // The data folder, with its final backslash.
    [[nodiscard]] const std::string& folder() const noexcept { return m_folder; }
    // Names are relative to the data folder.
    void write(std::string_view name, std::string_view bytes) const;
    [[nodiscard]] std::string read(std::string_view name) const; // empty when missing
    [[nodiscard]] bool exists(std::string_view name) const;
    // The names that match a pattern such as "images.*.xml".
    [[nodiscard]] std::vector<std::string> namesLike(std::string_view pattern) const;
    void setReadOnly(std::string_view name, bool readOnly) const;

    // Where the host says that the supplier is. Before startHost.
    std::string webAddress;

    // A value of the host's connection settings.
    static void setConnection(std::string_view key, std::string_view value);
    // A value of another section of the host's settings.
    static void setSetting(std::string_view section, std::string_view key, std::string_view value);
    [[nodiscard]] static std::string connection(std::string_view key);
    // The next request goes through a server on this port, of the kind that "FirewallType" numbers; with a login when
    // there is a password.
    static void goThrough(const std::string& type, const std::string& port, const std::string& password = "");

    // Starts a script host that calls ShowForm once for each of these product codes, then ends.
    void startHost(const std::vector<std::string>& productCodes);
    // Starts a script of examples/hosts.
    void startScript(std::string_view name, std::string_view arguments);
    // Starts another program that was built beside this one.
    void startProgram(std::string_view name, std::string_view arguments);
    // Plays the lines; {folder} in them is the data folder.
    void play(std::string_view script);
    // Waits until the host has ended, with code 0. Returns what it printed.
    std::string hostEnds();

    // The setting "ProductGroups" says that there is something to send, as it does when the host has saved them.
    static void markProductGroups();
    [[nodiscard]] static bool productGroupsMarked();
    [[nodiscard]] static std::string modified(); // the setting "ImageModify"; empty when there is none
    static void clearModified();
    // Fails when it does not become true, or the host ends before.
    void waitUntil(std::string_view what, const std::function<bool()>& condition) const;
    // The last thing that adding and deleting do is to set it.
    void waitUntilModified() const;

private:
    void start(const std::string& commandLine);

    std::string m_folder;
    std::optional<drive::Player> m_player;
};

// What the host prints about one call that succeeded.
inline constexpr std::string_view kSuccess = "error 0 [] []\r\nreturned [] False\r\n";

// Holds a file open so that nobody else can open it.
class LockedFile {
public:
    explicit LockedFile(const std::string& path);
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;
    ~LockedFile();

private:
    HANDLE m_file;
};

} // namespace end_to_end
