// Links every picture of a folder to the products whose codes the picture names carry.
#pragma once

#include "images/folder_files.h"
#include "images/link_document.h"
#include "images/tool_run.h"

#include <cstdint>
#include <string>
#include <vector>

namespace images {

enum class AutoLinkMode : std::uint8_t {
    NumberedPictures, // CODE_1.JPG, CODE_2.JPG, ... without a gap; CODE.JPG itself is not looked for
    NameContainsCode  // any .JPG whose name contains the code, except CODE.JPG itself
};

struct AutoLinkResult {
    int counted = 0; // found new
    int written = 0; // linked
    bool changed = false;
};

// Works through the codes in their order, ignoring errors, until the codes or the user's patience end. `files` has been
// listed. Nothing is saved. The links that both modes make, their order and their duplicates are those of the plain
// double loop over codes and names; what is odd about them is said in the code.
AutoLinkResult autoLink(const std::vector<std::string>& codes, const FolderFiles& files, AutoLinkMode mode,
                        LinkDocument& document, ToolRun& run);

} // namespace images
