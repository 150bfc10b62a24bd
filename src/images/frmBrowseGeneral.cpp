#include "images/frmBrowseGeneral.h"

#include "base/resume_next.h"
#include "base/text.h"
#include "ui/desktop.h"

#include <algorithm>
#include <utility>

namespace images {
namespace {

// Folder names below their parents stand in by this much.
constexpr std::string_view kIndent = "   ";

std::string withBackslash(std::string_view path) {
    std::string out(path);
    if (!out.ends_with('\\')) {
        out += '\\';
    }
    return out;
}

// The folder and all above it, outermost first: C:\, C:\a, C:\a\b. A network share is the outermost of its paths.
std::vector<std::string> ancestry(const std::string& folder) {
    std::vector<std::string> paths;
    std::size_t from = 0;
    if (folder.starts_with("\\\\")) {
        from = folder.find('\\', 2);                                           // behind the server
        from = from == std::string::npos ? from : folder.find('\\', from + 1); // behind the share
        paths.push_back(folder.substr(0, from));
    } else {
        from = folder.find('\\');
        paths.push_back(withBackslash(folder.substr(0, from)));
    }
    while (from != std::string::npos && from + 1 < folder.size()) {
        from = folder.find('\\', from + 1);
        paths.push_back(folder.substr(0, from));
    }
    return paths;
}

std::string lastPart(const std::string& path) {
    const std::size_t slash = path.find_last_of('\\');
    return slash == std::string::npos || slash + 1 == path.size() ? path : path.substr(slash + 1);
}

} // namespace

frmBrowseGeneral::frmBrowseGeneral(ui::Desktop& desktop, ports::FileSystem& fileSystem)
    : Form(desktop, "frmBrowseGeneral"), m_fileSystem(fileSystem) {
    setCaption("Browse");
    lblDrive.setText("D&rive:");
    lblFolders.setText("&Folders:");
    lblFiles.setText("F&iles:");
    lblPath.setText("&Path:");
    OKButton.setText("OK");
    CancelButton.setText("Cancel");

    Drive1.onChange = [this] { Drive1_Change(); };
    Dir1.onDoubleClick = [this] { Dir1_DblClick(); };
    File1.onClick = [this] { File1_Click(); };
    Text1.onChange = [this] { Text1_Change(); };
    Text1.onValidate = [this](const ui::Control& gaining) { return Text1_Validate(gaining); };
    OKButton.onClick = [this] { OKButton_Click(); };
    CancelButton.onClick = [this] { CancelButton_Click(); };

    lblPrompt.anchors.right = true;
    Dir1.anchors.bottom = true;
    File1.anchors.bottom = true;
    File1.anchors.right = true;
    lblPath.anchors = {.left = true, .top = false, .right = false, .bottom = true};
    Text1.anchors = {.left = true, .top = false, .right = true, .bottom = true};
    OKButton.anchors = {.left = false, .top = false, .right = true, .bottom = true};
    CancelButton.anchors = OKButton.anchors;
}

void frmBrowseGeneral::Form_Load() {
    Drive1.setItems(m_fileSystem.drives());
    setFolder(m_fileSystem.currentFolder());
    setFocus(Dir1); // never the path: leaving it is checked
}

void frmBrowseGeneral::Form_KeyPress(char16_t& key) {
    if (key == ui::key::kReturn) {
        key = 0;
        if (focused() == &Dir1 && Dir1.selected()) {
            Dir1_DblClick();
        } else if (focused() == &CancelButton) {
            CancelButton_Click();
        } else {
            OKButton_Click();
        }
    } else if (key == ui::key::kEscape) {
        key = 0;
        CancelButton_Click();
    }
}

void frmBrowseGeneral::setFolder(std::string_view path) {
    if (!tryFolder(path)) {
        desktop().messageBox(base::standardText(base::error::kDeviceUnavailable));
    }
    selectDrive();
}

// Assigning a folder always shows it anew, also when it is the one shown already.
bool frmBrowseGeneral::tryFolder(std::string_view path) {
    std::string folder(path);
    if (folder.size() == 2 && folder.back() == ':') {
        folder += '\\'; // a bare drive would mean its current folder
    }
    std::vector<std::string> folders;
    std::vector<std::string> files;
    const bool listed = base::resumeNext([&] {
        m_fileSystem.listFolder(folder, [&](const ports::FolderEntry& entry) {
            (entry.isFolder ? folders : files).push_back(entry.name);
            return true;
        });
    });
    if (!listed) {
        return false;
    }
    const auto byName = [](const std::string& a, const std::string& b) {
        return base::upperCase(a) < base::upperCase(b);
    };
    std::sort(folders.begin(), folders.end(), byName);
    std::sort(files.begin(), files.end(), byName);
    while (folder.size() > 3 && folder.back() == '\\') {
        folder.pop_back();
    }
    m_folder = std::move(folder);
    m_files = std::move(files);
    listFolders(folders);
    Dir1_Change();
    return true;
}

// The folders above, each further in, and those inside.
void frmBrowseGeneral::listFolders(const std::vector<std::string>& inside) {
    m_folderPaths = ancestry(m_folder);
    Dir1.clear();
    std::string indent;
    for (const std::string& above : m_folderPaths) {
        Dir1.add(indent + lastPart(above));
        indent += kIndent;
    }
    const std::size_t current = m_folderPaths.size() - 1;
    for (const std::string& folder : inside) {
        Dir1.add(indent + folder);
        m_folderPaths.push_back(withBackslash(m_folder) + folder);
    }
    Dir1.setSelected(current);
}

void frmBrowseGeneral::Dir1_Change() {
    File1.clear();
    for (const std::string& file : m_files) {
        File1.add(file);
    }
    Text1.setText(withBackslash(m_folder));
}

void frmBrowseGeneral::Dir1_DblClick() {
    setFolder(std::string(m_folderPaths[*Dir1.selected()]));
}

void frmBrowseGeneral::Drive1_Change() {
    if (!m_selectingDrive && Drive1.selected()) {
        setFolder(Drive1.selectedText()); // back to the previous drive when the new one is not ready
    }
}

void frmBrowseGeneral::selectDrive() {
    const auto& drives = Drive1.items();
    const std::string drive = base::upperCase(std::string_view(m_folder).substr(0, 2));
    const auto found = std::find(drives.begin(), drives.end(), drive);
    m_selectingDrive = true;
    Drive1.setSelected(static_cast<std::size_t>(found - drives.begin())); // none of a network path
    m_selectingDrive = false;
}

void frmBrowseGeneral::File1_Click() {
    if (File1.selected()) {
        Text1.setText(withBackslash(m_folder) + File1.selectedText());
    }
}

void frmBrowseGeneral::Text1_Change() {
    const std::string& text = Text1.text();
    const std::size_t slash = text.find_last_of('\\');
    if (slash == 0) {
        desktop().messageBox("invalid file name");
    } else {
        BrowseFileName = slash == std::string::npos ? text : text.substr(slash + 1);
    }
}

bool frmBrowseGeneral::Text1_Validate(const ui::Control& gaining) {
    if (&gaining == &CancelButton || !Text1.text().ends_with('\\')) {
        return true;
    }
    desktop().messageBox("You must have a file name");
    return false;
}

void frmBrowseGeneral::OKButton_Click() {
    BrowseCancelled = false;
    hide();
}

void frmBrowseGeneral::CancelButton_Click() {
    BrowseCancelled = true;
    hide();
}

std::string frmBrowseGeneral::chosenFolder() const {
    std::string folder = Text1.text();
    if (!m_fileSystem.folderExists(folder)) {
        folder.erase(folder.find_last_of('\\') == std::string::npos ? 0 : folder.find_last_of('\\') + 1);
    }
    if (folder.ends_with('\\')) {
        folder.pop_back();
    }
    return folder;
}

} // namespace images
