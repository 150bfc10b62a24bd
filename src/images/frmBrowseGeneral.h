// Picks a folder, or a file in it, from lists of drives, folders and files; the path can be typed too.
#pragma once

#include "ports/file_system.h"
#include "ui/controls.h"
#include "ui/form.h"

#include <string>
#include <string_view>
#include <vector>

namespace images {

class frmBrowseGeneral : public ui::Form {
public:
    // The ports are not owned and outlive the form.
    frmBrowseGeneral(ui::Desktop& desktop, ports::FileSystem& fileSystem);

    // Read by the caller after the modal show.
    bool BrowseCancelled = false;
    std::string BrowseFileName; // what stands behind the last backslash of the path

    // Shows this folder in the folder list, and so its files and its path. A folder that cannot be listed shows the
    // message "Device unavailable" and changes nothing. Once loaded.
    void setFolder(std::string_view path);

    // The folder that the path text means: the text where it names a folder, else its part up to the last backslash;
    // without one final backslash.
    [[nodiscard]] std::string chosenFolder() const;

    ui::Label lblPrompt{*this, "lblPrompt"};
    ui::Label lblDrive{*this, "lblDrive"};
    ui::ComboBox Drive1{*this, "Drive1"};
    ui::Label lblFolders{*this, "lblFolders"};
    ui::ListBox Dir1{*this, "Dir1"}; // the folder, the folders above it, and those in it
    ui::Label lblFiles{*this, "lblFiles"};
    ui::ListBox File1{*this, "File1"};
    ui::Label lblPath{*this, "lblPath"};
    ui::TextBox Text1{*this, "Text1"};
    ui::Button OKButton{*this, "OKButton"};
    ui::Button CancelButton{*this, "CancelButton"};

protected:
    void Form_Load() override;
    void Form_KeyPress(char16_t& key) override; // Return opens a folder or is OK, Escape is Cancel
    void Form_CloseBox() override { CancelButton_Click(); }

private:
    void Drive1_Change();
    void Dir1_Change();
    void Dir1_DblClick();
    void File1_Click();
    void Text1_Change();
    [[nodiscard]] bool Text1_Validate(const ui::Control& gaining);
    void OKButton_Click();
    void CancelButton_Click();

    [[nodiscard]] bool tryFolder(std::string_view path);
    void listFolders(const std::vector<std::string>& inside);
    void selectDrive();

    ports::FileSystem& m_fileSystem;
    std::string m_folder;                   // as the folder list shows it
    std::vector<std::string> m_folderPaths; // of the lines of Dir1
    std::vector<std::string> m_files;       // of m_folder
    bool m_selectingDrive = false;
};

} // namespace images
