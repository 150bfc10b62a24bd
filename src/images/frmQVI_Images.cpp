#include "images/frmQVI_Images.h"

#include "base/resume_next.h"
#include "base/text.h"
#include "ports/ensure_folder.h"
#include "ui/desktop.h"

#include <memory>
#include <optional>
#include <utility>

namespace images {
namespace {

// The preview asks the decoder for pictures of at most this size and shrinks them further to its own.
constexpr int kPreviewExtent = 640;

constexpr std::string_view kPreviewHint = "Select a linked picture to see it here.";
constexpr std::string_view kNoPreview = "No preview available.";

// A picked path relative to the folder: what stands behind the folder and one separator. A file picked outside the
// folder gives a meaningless rest; that is not checked.
std::string relativeName(std::string_view path, std::string_view folder) {
    return base::fromPosition(path, base::utf16Length(folder) + 2);
}

} // namespace

frmQVI_Images::frmQVI_Images(const ImageServices& services)
    : Form(services.desktop, "frmQVI_Images"),
      m_services(services),
      m_images(LinkKind::Images, services.fileSystem, services.clock, services.ansi),
      m_specifications(LinkKind::Specifications, services.fileSystem, services.clock, services.ansi) {
    setTexts();
    setHandlers();
    setAnchors();
}

void frmQVI_Images::setTexts() {
    setCaption("Image linking facility");

    fraStep1.setText("Step 1 - General image preperation");
    cmdAutoLink.setText("&Auto link images");
    lblAutoLink.setText("Link all images to a product of the same name.");
    chkExactMatch.setText("Exact match search for JPEG images. (ie. productcode_1.jpg)");
    cmdCleanUp.setText("Clean up");
    cmdWhatsLinked.setText("Whats linked");
    cmdWhatsNotLinked.setText("Whats not linked");
    CheckRTF.setText("Do not check for Product Specs in Whats not linked report.");

    fraImages.setText("Step 2 - Link images to this product");
    cmdbrowse.setText("&Add"); // shares Alt+A with "&Auto link images"; which one answers depends on the focus
    cmdDelete.setText("&Delete");

    fraSpecifications.setText("Step 2 - Link product specifications to this product");
    cmdAddSpec.setText("Add");
    cmdDeletSpec.setText("Delete");

    fraPreview.setText("Preview");
    picPreview.setText(kPreviewHint);

    fraUpload.setText("Step 3 - Upload image links to QuorVantis server");
    cmdUpload.setText("Upload image links");
    lblUpload.setText("Once you have lined your images, you still need to send them to the server. All users will "
                      "receive these links once they perform a send/receive.");

    fraExport.setText("Step 4 - Cut CD");
    cmdExport.setText("&Export linked images");
    lblExport.setText("Export all linked images to an export folder. You can then distribute these pictures to your "
                      "customers. You will also be asked if you want to encrypt the images.");
    lblBurn.setText("Then burn the exported 'Images' folder to a CD and distribute CD's to the customers.");

    cmdCancel.setText("&Close");
}

void frmQVI_Images::setHandlers() {
    cmdbrowse.onClick = [this] { cmdbrowse_Click(); };
    cmdDelete.onClick = [this] { cmdDelete_Click(); };
    cmdAddSpec.onClick = [this] { cmdAddSpec_Click(); };
    cmdDeletSpec.onClick = [this] { cmdDeletSpec_Click(); };
    cmdUpload.onClick = [this] { cmdUpload_Click(); };
    cmdCancel.onClick = [this] { cmdCancel_Click(); };
    lImages.onClick = [this] { lImages_Click(); };

    cmdAutoLink.onClick = [this] { cmdAutoLink_Click(); };
    cmdCleanUp.onClick = [this] { cmdCleanUp_Click(); };
    cmdWhatsLinked.onClick = [this] { cmdWhatsLinked_Click(); };
    cmdWhatsNotLinked.onClick = [this] { cmdWhatsNotLinked_Click(); };
    cmdExport.onClick = [this] { cmdExport_Click(); };
}

// Room that a larger window offers goes to the lists in height and to the preview in both directions.
void frmQVI_Images::setAnchors() {
    constexpr ui::Anchors kAcrossTop{.right = true};
    constexpr ui::Anchors kTall{.bottom = true};
    constexpr ui::Anchors kTallAtRight{.left = false, .right = true, .bottom = true};
    constexpr ui::Anchors kAll{.right = true, .bottom = true};
    constexpr ui::Anchors kBottom{.top = false, .bottom = true};
    constexpr ui::Anchors kAcrossBottom{.top = false, .right = true, .bottom = true};
    constexpr ui::Anchors kBottomRight{.left = false, .top = false, .right = true, .bottom = true};

    fraStep1.anchors = kAcrossTop;
    fraImages.anchors = lImages.anchors = kTall;
    cmdbrowse.anchors = cmdDelete.anchors = kBottom;
    fraPreview.anchors = picPreview.anchors = kAll;
    fraSpecifications.anchors = lRTF.anchors = kTallAtRight;
    cmdAddSpec.anchors = cmdDeletSpec.anchors = kBottomRight;
    fraUpload.anchors = cmdUpload.anchors = lblUpload.anchors = kBottom;
    fraExport.anchors = lblExport.anchors = lblBurn.anchors = kAcrossBottom;
    cmdExport.anchors = kBottom;
    List1.anchors = prgTool.anchors = kAcrossBottom;
    cmdCancel.anchors = kBottomRight;
}

void frmQVI_Images::Form_Load() {
    m_images.open(gQuorVantisPath);
    m_specifications.open(gQuorVantisPath);
    List1.setVisible(false);
    prgTool.setVisible(false);
    DeleteLink = false;
    NewImageFile.clear();
    setCaption("Link an image to " + ProductCode);
    fraImages.setText("Step 2 - Link an image to " + ProductCode);

    // A list that cannot be read (a code with an apostrophe) stays as it is; the form opens all the same.
    const auto fill = [this](ui::ListBox& list, const LinkDocument& document) {
        base::resumeNext([&] {
            for (const std::string& file : document.linkedFiles(ProductCode)) {
                list.add(file);
            }
        });
    };
    fill(lImages, m_images);
    fill(lRTF, m_specifications);
    showPreview();
}

void frmQVI_Images::Form_KeyPress(char16_t& key) {
    if (key == ui::key::kReturn) {
        key = 0;
        hide();
    } else if (key == ui::key::kEscape) {
        key = 0;
        cmdCancel_Click();
    }
}

void frmQVI_Images::cmdbrowse_Click() {
    const std::string folder = gQuorVantisPath + "images";
    if (!m_services.fileSystem.folderExists(folder)) {
        desktop().messageBox("Please create an image folder and place your images in that folder.\r\n"
                             "The folder should be called: " +
                                 folder,
                             ui::Buttons::Ok, ui::Icon::Critical);
        return;
    }
    const std::string picked(base::trim(desktop().openFile({.initialFolder = folder, .fileName = {}, .filter = {}})));
    if (picked.empty()) {
        return;
    }
    const std::string file = relativeName(picked, folder);
    lImages.add(file);
    markModified();
    if (!m_images.findLink(ProductCode, file)) {
        m_images.add(ProductCode, file);
        m_images.saveText();
    }
}

void frmQVI_Images::cmdAddSpec_Click() {
    const std::string folder = gQuorVantisPath + "rtf";
    ports::requireFolder(m_services.fileSystem, folder);
    const std::string picked =
        desktop().openFile({.initialFolder = folder,
                            .fileName = "*",
                            .filter = "Rich Text Format (*.rtf)|*.rtf|Adobe Acrobat Format (*.pdf)|*.pdf|"
                                      "Excel Format (*.xls)|*.xls"});
    if (!m_services.fileSystem.fileExists(picked)) {
        return;
    }
    const std::string file = relativeName(picked, folder);
    const std::string description = desktop().inputBox("Enter a description", "Description");
    lRTF.add(file + " (" + description + ")");
    markModified();
    // Never finds anything in rtf.xml: a document can be linked once more with another description.
    if (!m_specifications.findLink(ProductCode, file)) {
        m_specifications.add(ProductCode, file, description);
        m_specifications.saveText();
    }
}

void frmQVI_Images::cmdDelete_Click() {
    deleteLink(lImages, m_images);
}

void frmQVI_Images::cmdDeletSpec_Click() {
    deleteLink(lRTF, m_specifications);
}

// Errors are ignored throughout: whatever fails, the lists are rebuilt from what is on disk.
void frmQVI_Images::deleteLink(const ui::ListBox& list, LinkDocument& document) {
    const std::string selected = list.selectedText();
    const auto found = base::resumeNext([&] { return document.findLinkAnywhere(ProductCode, selected); });
    if (found && *found) {
        base::resumeNext([&] { document.remove(*found); });
        base::resumeNext([&] { document.save(); });
    }
    lRTF.clear();
    lImages.clear();
    base::resumeNext([&] { Form_Load(); });
    base::resumeNext([&] { markModified(); });
}

void frmQVI_Images::cmdUpload_Click() {
    openSendReceive();
}

void frmQVI_Images::cmdCancel_Click() {
    NewImageFile.clear();
    hide();
}

void frmQVI_Images::lImages_Click() {
    showPreview();
}

// How the host and the send/receive window learn that links were changed. Nothing here clears it.
void frmQVI_Images::markModified() {
    m_services.settings.set("QuorVantis", "Main", "ImageModify", "Saved");
}

void frmQVI_Images::showPreview() {
    if (!lImages.selected()) {
        picPreview.setPicture(nullptr);
        picPreview.setText(kPreviewHint);
        return;
    }
    const std::string file = lImages.selectedText();
    std::optional<base::Picture> picture =
        m_services.pictures.decode(gQuorVantisPath + "images\\" + file, kPreviewExtent, kPreviewExtent);
    picPreview.setText(picture ? std::string_view(file) : kNoPreview); // a picture's name is for screen readers
    picPreview.setPicture(picture ? std::make_shared<const base::Picture>(std::move(*picture)) : nullptr);
}

} // namespace images
