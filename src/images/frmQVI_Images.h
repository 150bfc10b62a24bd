// The image manager: links pictures and specification documents to one product of the price list, by hand, and starts
// the tools that work on the whole list.
#pragma once

#include "images/link_document.h"
#include "images/link_report.h"
#include "ports/clock.h"
#include "ports/code_page.h"
#include "ports/file_system.h"
#include "ports/picture_decoder.h"
#include "ports/settings.h"
#include "ui/controls.h"
#include "ui/form.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace images {

// What the image manager works with. None is owned; all outlive the form.
struct ImageServices {
    ui::Desktop& desktop;
    ports::FileSystem& fileSystem;
    ports::Settings& settings;
    ports::Clock& clock;
    ports::PictureDecoder& pictures;
    ports::CodePage& ansi;
};

class frmQVI_Images : public ui::Form {
public:
    explicit frmQVI_Images(const ImageServices& services);

    // The host's values, copied in before the form is loaded.
    std::string gQuorVantisPath; // data folder with its final backslash; used by plain concatenation
    std::string ProductCode;
    std::string ImagesFile;
    bool DeleteLink = false;
    std::string NewImageFile;
    std::string gWebAddress;
    std::string gProfileNumber;
    std::string gSettingString;

    // Opens the send/receive window over this form; set by whoever shows the form.
    std::function<void()> openSendReceive;

    ui::Frame fraStep1{*this, "fraStep1"};
    ui::Button cmdAutoLink{*this, "cmdAutoLink"};
    ui::Label lblAutoLink{*this, "lblAutoLink"};
    ui::CheckBox chkExactMatch{*this, "chkExactMatch"};
    ui::Button cmdCleanUp{*this, "cmdCleanUp"};
    ui::Button cmdWhatsLinked{*this, "cmdWhatsLinked"};
    ui::Button cmdWhatsNotLinked{*this, "cmdWhatsNotLinked"};
    ui::CheckBox CheckRTF{*this, "CheckRTF"};

    ui::Frame fraImages{*this, "fraImages"};
    ui::ListBox lImages{*this, "lImages"};
    ui::Button cmdbrowse{*this, "cmdbrowse"};
    ui::Button cmdDelete{*this, "cmdDelete"};

    ui::Frame fraSpecifications{*this, "fraSpecifications"};
    ui::ListBox lRTF{*this, "lRTF"};
    ui::Button cmdAddSpec{*this, "cmdAddSpec"};
    ui::Button cmdDeletSpec{*this, "cmdDeletSpec"};

    ui::Frame fraPreview{*this, "fraPreview"};
    ui::PictureBox picPreview{*this, "picPreview"};

    ui::Frame fraUpload{*this, "fraUpload"};
    ui::Button cmdUpload{*this, "cmdUpload"};
    ui::Label lblUpload{*this, "lblUpload"};

    ui::Frame fraExport{*this, "fraExport"};
    ui::Button cmdExport{*this, "cmdExport"};
    ui::Label lblExport{*this, "lblExport"};
    ui::Label lblBurn{*this, "lblBurn"};

    ui::ListBox List1{*this, "List1"}; // messages of the tools that work on the whole list
    ui::ProgressBar prgTool{*this, "prgTool"};
    ui::Button cmdCancel{*this, "cmdCancel"};

protected:
    void Form_Load() override;
    void Form_KeyPress(char16_t& key) override; // Return hides, Escape runs Close
    void Form_CloseBox() override { cmdCancel_Click(); }

private:
    void setTexts();
    void setHandlers();
    void setAnchors();

    void cmdbrowse_Click();
    void cmdAddSpec_Click();
    void cmdDelete_Click();
    void cmdDeletSpec_Click();
    void cmdUpload_Click();
    void cmdCancel_Click();
    void lImages_Click();

    // The tools that work on the whole list: frmQVI_Images_tools.cpp.
    class Run;
    void cmdAutoLink_Click();
    void cmdCleanUp_Click();
    void cmdWhatsLinked_Click();
    void cmdWhatsNotLinked_Click();
    void cmdExport_Click();
    void report(ReportKind kind);
    void writeReport(ReportKind kind, const std::string& path, Run& run);
    [[nodiscard]] std::vector<std::string> readLines(const std::string& path);

    void deleteLink(const ui::ListBox& list, LinkDocument& document);
    void markModified();
    void showPreview();

    ImageServices m_services;
    LinkDocument m_images;
    LinkDocument m_specifications;
};

} // namespace images
