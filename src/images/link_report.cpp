#include "images/link_report.h"

#include "base/resume_next.h"
#include "base/text.h"

namespace images {
namespace {

struct Product {
    std::string code;
    std::string description;
};

Product parse(const std::string& line, bool withDescriptions) {
    const std::size_t comma = withDescriptions ? line.find(',') : std::string::npos;
    if (comma == std::string::npos) {
        return {line, {}};
    }
    return {line.substr(0, comma), line.substr(comma + 1)};
}

// Every "JPG" becomes "RTF", in folder names too.
std::string specificationName(std::string_view file) {
    std::string name = base::upperCase(file);
    for (std::size_t at = name.find("JPG"); at != std::string::npos; at = name.find("JPG", at + 3)) {
        name.replace(at, 3, "RTF");
    }
    return name;
}

// Builds the row of one product. The texts differ with and without descriptions in more than the description: they
// are taken from this table of eight, not from a formula.
class Row {
public:
    Row(const Product& product, const ReportOptions& options, const FolderFiles& files)
        : m_product(product), m_options(options), m_files(files) {}

    void pictureFound(const std::string& file) {
        m_picture = start(true) + ", Image found: " + file;
        m_usable = true;
    }
    void pictureMissing(const std::string& file) {
        m_picture = start(false) + ", Linked to " + file + "but NO Image found"; // no blank before "but"
        m_usable = false;
    }
    void pictureByName() {
        m_picture = start(true) + ",Linked to " + m_product.code + ".jpg";
        m_usable = true;
    }
    void noPicture() {
        m_picture = start(false) + (m_options.withDescriptions ? ", No Image" : ",No Image");
        m_usable = false;
    }

    [[nodiscard]] bool usable() const noexcept { return m_usable; }

    // `lastFile` is the file of the product's last link, "" without one.
    [[nodiscard]] std::string text(const std::string& lastFile) const {
        return m_options.checkSpecifications ? m_picture + specification(lastFile) : m_picture;
    }

private:
    // The columns before the picture: with a description always both; without one the empty column is written only
    // where a picture was found.
    [[nodiscard]] std::string start(bool found) const {
        if (m_options.withDescriptions) {
            return m_product.code + "," + m_product.description;
        }
        return found ? m_product.code + "," : m_product.code;
    }

    [[nodiscard]] std::string specification(const std::string& lastFile) const {
        if (const std::string name = m_product.code + ".rtf"; m_files.contains(name)) {
            return ", RTF found: " + name;
        }
        if (const std::string name = specificationName(lastFile); m_files.contains(name)) {
            return ", RTF found: " + name;
        }
        return ", No RTF";
    }

    const Product& m_product;
    const ReportOptions& m_options;
    const FolderFiles& m_files;
    std::string m_picture;
    bool m_usable = false;
};

// Two codes for which the loop has always yielded once more, one in each report. It has no other effect.
std::string_view yieldingCode(ReportKind kind) {
    return kind == ReportKind::Linked ? "STW01640012" : "ALULORESCKH";
}

// The rows for each link in turn overwrite each other: the last link of the product decides.
std::string describe(const Product& product, const ReportOptions& options, const LinkDocument& document,
                     const FolderFiles& files, ToolRun& run) {
    Row row(product, options, files);
    std::string lastFile;
    const auto linked = base::resumeNext([&] { return document.linkedFilesOfAnyStatus(product.code); });
    const std::string prefix = product.code + ":" + product.description;
    if (linked && !linked->empty()) {
        for (const std::string& file : *linked) {
            if (files.contains(file)) {
                row.pictureFound(file);
            } else {
                run.line(prefix + " linked to image " + file + ", but no jpeg file found.");
                row.pictureMissing(file);
            }
        }
        lastFile = linked->back();
    } else if (files.contains(product.code + ".jpg")) {
        row.pictureByName();
    } else {
        run.line(prefix + " has no image.");
        row.noPicture();
    }
    if (options.kind == ReportKind::NotLinked) {
        if (row.usable()) {
            return {};
        }
        row.noPicture(); // also for a link whose picture is missing
    }
    return row.text(lastFile) + "\r\n";
}

} // namespace

std::string makeReport(const std::vector<std::string>& lines, const ReportOptions& options,
                       const LinkDocument& document, const FolderFiles& files, ToolRun& run) {
    std::string report;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const Product product = parse(lines[i], options.withDescriptions);
        if (product.code == yieldingCode(options.kind) && !run.proceed()) {
            break;
        }
        run.caption("Searching for image for product code " + product.code);
        run.progress(i, lines.size());
        if (!run.proceed()) {
            break;
        }
        report += describe(product, options, document, files, run);
    }
    return report;
}

} // namespace images
