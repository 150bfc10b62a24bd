// The image manager's tools for the whole price list: auto-link, reports, clean-up, export. The work itself is in files
// of its own; here is what the user sees of it.
#include "images/frmQVI_Images.h"

#include "base/resume_next.h"
#include "base/scope_exit.h"
#include "base/text.h"
#include "images/auto_link.h"
#include "images/folder_files.h"
#include "images/frmBrowseGeneral.h"
#include "images/image_export.h"
#include "images/price_list.h"
#include "ports/ensure_folder.h"
#include "ui/desktop.h"

#include <optional>
#include <utility>

namespace images {
namespace {

// Written by the host, whatever its data folder is.
constexpr std::string_view kPriceList = "c:\\pl.dat";

// Controls that are out of sight for the length of a scope.
auto hidden(std::vector<ui::Control*> controls) {
    const auto show = [controls = std::move(controls)](bool visible) {
        for (ui::Control* const control : controls) {
            control->setVisible(visible);
        }
    };
    show(false);
    return base::ScopeExit([show] { show(true); });
}

} // namespace

// While one lives, a tool runs: of the buttons and check boxes only Close can be used, and using it, or any other way
// of closing, ends the run at its next item.
class frmQVI_Images::Run final : public ToolRun {
public:
    explicit Run(frmQVI_Images& form) : m_form(form), m_focused(form.focused()), m_caption(form.caption()) {
        m_form.setFocus(m_form.cmdCancel); // before the focused control is disabled
        for (ui::Control* const control : m_form.controls()) {
            const bool acts =
                dynamic_cast<ui::Button*>(control) != nullptr || dynamic_cast<ui::CheckBox*>(control) != nullptr;
            if (acts && control != &m_form.cmdCancel && control->enabled()) {
                control->setEnabled(false);
                m_disabled.push_back(control);
            }
        }
        m_form.List1.clear();
        m_form.List1.setVisible(true);
    }
    ~Run() override {
        m_form.prgTool.setVisible(false);
        m_form.setCaption(m_caption);
        for (ui::Control* const control : m_disabled) {
            control->setEnabled(true);
        }
        if (m_focused != nullptr) {
            m_form.setFocus(*m_focused);
        }
    }

    void caption(std::string_view text) override { m_form.setCaption(text); }
    void line(std::string_view text) override { m_form.List1.add(text); }
    void progress(std::size_t done, std::size_t total) override {
        m_form.prgTool.setProgress(done, total);
        m_form.prgTool.setVisible(total > 0);
    }
    bool proceed() override {
        m_form.desktop().doEvents();
        return !stopped();
    }
    [[nodiscard]] bool stopped() const { return !m_form.shown(); }

private:
    frmQVI_Images& m_form;
    ui::Control* m_focused;
    std::string m_caption;
    std::vector<ui::Control*> m_disabled;
};

// A file that cannot be read has no lines.
std::vector<std::string> frmQVI_Images::readLines(const std::string& path) {
    const auto lines =
        base::resumeNext([&] { return priceListLines(m_services.fileSystem.readFile(path), m_services.ansi); });
    return lines.value_or(std::vector<std::string>());
}

// Errors are ignored throughout.
void frmQVI_Images::cmdAutoLink_Click() {
    desktop().messageBox("This option will browse a desired folder. All JPG files \r\n"
                         "in the folder will be linked to there respective products \r\n"
                         "if the file name is the same as the product code.");
    const std::string imagesFolder = gQuorVantisPath + "images";
    base::resumeNext([&] { ports::requireFolder(m_services.fileSystem, imagesFolder); });
    frmBrowseGeneral browse(desktop(), m_services.fileSystem);
    browse.load();
    browse.setFolder(imagesFolder);
    browse.lblPrompt.setText("Browse for the folder where your images are stored");
    browse.showModal();
    if (browse.BrowseCancelled) {
        return;
    }
    desktop().messageBox("Any JPEG files in the folder which match product codes in QuorVantis will be linked\r\n"
                         "Press OK and wait a few minutes..");
    const AutoLinkMode mode = chkExactMatch.checked() ? AutoLinkMode::NumberedPictures : AutoLinkMode::NameContainsCode;
    AutoLinkResult result;
    {
        Run run(*this);
        run.caption("Gathering folder information");
        FolderFiles files(m_services.fileSystem, browse.chosenFolder());
        if (files.list(run)) {
            run.caption("Starting to Auto-link images");
            result = autoLink(readLines(std::string(kPriceList)), files, mode, m_images, run);
        }
        if (result.changed) {
            base::resumeNext([&] { m_images.saveText(); });
            base::resumeNext([&] { markModified(); });
        }
    }
    desktop().messageBox(std::to_string(result.written) + " of " + std::to_string(result.counted) +
                         " new images were linked to your priclist...");
    List1.setVisible(false);
}

void frmQVI_Images::cmdCleanUp_Click() {
    const ui::Answer answer = desktop().messageBox(
        "This routine will clean all uneccesary links including images that have been linked more than once to the "
        "same image.\r\nArou you sure you want to continue...",
        ui::Buttons::YesNo);
    if (answer != ui::Answer::Yes) {
        return;
    }
    Run run(*this);
    List1.setVisible(false); // a clean-up has nothing to tell
    // An expression that cannot be evaluated ends the pass where it is; what was removed so far stays removed.
    base::resumeNext([&] { m_images.cleanUp([&] { return run.proceed(); }); });
}

void frmQVI_Images::cmdWhatsLinked_Click() {
    report(ReportKind::Linked);
}

void frmQVI_Images::cmdWhatsNotLinked_Click() {
    report(ReportKind::NotLinked);
}

void frmQVI_Images::report(ReportKind kind) {
    const bool linked = kind == ReportKind::Linked;
    const std::string name = linked ? "WhatsLinked.csv" : "WhatsNotLinked.csv";
    // The second report's path has always had its backslash twice; the file system takes it for one.
    const std::string path = gQuorVantisPath + (linked ? "" : "\\") + name;
    std::optional<base::RuntimeError> failure;
    {
        Run run(*this);
        failure = base::attempt([&] { writeReport(kind, path, run); });
        if (run.stopped()) {
            return;
        }
    }
    if (failure) {
        List1.setVisible(false);
        desktop().messageBox("Could not open " + gQuorVantisPath + name +
                             ", Please ensure it is not already open in excel...[" + failure->description() + "]");
    } else {
        desktop().messageBox("Finished...\r\nResults also in " + gQuorVantisPath + name);
    }
}

// The report takes its place in one step at the end: whatever goes wrong, the old one is still there.
void frmQVI_Images::writeReport(ReportKind kind, const std::string& path, Run& run) {
    const auto hiddenControls = hidden({&cmdWhatsNotLinked, &CheckRTF});
    static_cast<void>(run.proceed());
    const std::string described = gQuorVantisPath + "pltemp2.dat";
    const bool withDescriptions = m_services.fileSystem.fileExists(described);
    const std::vector<std::string> lines = readLines(withDescriptions ? described : gQuorVantisPath + "pltemp.dat");
    m_services.fileSystem.requireWritable(path);
    FolderFiles files(m_services.fileSystem, gQuorVantisPath + "images");
    const ReportOptions options{.kind = kind,
                                .withDescriptions = withDescriptions,
                                .checkSpecifications = kind == ReportKind::Linked || !CheckRTF.checked()};
    std::string text;
    if (files.list(run)) {
        text = makeReport(lines, options, m_images, files, run);
    }
    m_services.fileSystem.replaceFile(path, m_services.ansi.encode(text));
}

void frmQVI_Images::cmdExport_Click() {
    if (desktop().messageBox("Do you want to encrypt the images?", ui::Buttons::YesNo) == ui::Answer::Yes) {
        // Never in clear what was to be encrypted.
        desktop().messageBox("The encryption component is not installed. No images were exported.");
        return;
    }
    frmBrowseGeneral browse(desktop(), m_services.fileSystem);
    browse.load();
    browse.lblPrompt.setText("Browse for the export folder");
    browse.showModal();
    if (browse.BrowseCancelled) {
        return;
    }
    const std::string target = browse.chosenFolder() + "\\Images";
    ExportResult result;
    {
        Run run(*this);
        run.caption("Exporting linked images");
        result = exportImages(m_images, m_services.fileSystem, gQuorVantisPath + "images\\", target, run);
    }
    desktop().messageBox(std::to_string(result.copied) + " of " + std::to_string(result.linked) +
                         " linked images were exported to " + target + ".");
}

} // namespace images
