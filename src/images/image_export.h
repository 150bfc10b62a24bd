// Copies every linked picture to a folder, to be handed on.
#pragma once

#include "images/link_document.h"
#include "images/tool_run.h"
#include "ports/file_system.h"

#include <string>

namespace images {

struct ExportResult {
    int linked = 0; // different linked pictures
    int copied = 0;
};

// Copies each picture that a link names (links marked deleted do not count) once, under the link's file name and below
// `target`, making folders as needed. A picture that is missing, cannot be copied, or whose name would lead outside the
// target is told of in the list and passed over. `source` ends in a backslash, `target` does not. Ends early when the
// user ends the run. Links and settings stay as they are.
ExportResult exportImages(const LinkDocument& document, ports::FileSystem& fileSystem, const std::string& source,
                          const std::string& target, ToolRun& run);

} // namespace images
