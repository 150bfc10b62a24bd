// The two reports for a spreadsheet: which picture and which specification each product of the price list has.
#pragma once

#include "images/folder_files.h"
#include "images/link_document.h"
#include "images/tool_run.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace images {

enum class ReportKind : std::uint8_t {
    Linked,   // every product
    NotLinked // only products without a usable picture
};

struct ReportOptions {
    ReportKind kind = ReportKind::Linked;
    bool withDescriptions = false;   // lines are "code,description"; else the code alone
    bool checkSpecifications = true; // say which specification the product has
};

// One row a product in the order of `lines`, each ended by CR LF, in UTF-8; ends early when the user ends the run.
// `files` are those of the images folder and have been listed. Errors are ignored statement by statement: a product
// whose links cannot be searched counts as having none.
[[nodiscard]] std::string makeReport(const std::vector<std::string>& lines, const ReportOptions& options,
                                     const LinkDocument& document, const FolderFiles& files, ToolRun& run);

} // namespace images
