#include "images/auto_link.h"

#include "base/resume_next.h"
#include "base/text.h"
#include "images/name_index.h"

#include <optional>
#include <string_view>
#include <utility>

namespace images {
namespace {

class AutoLinker {
public:
    AutoLinker(const FolderFiles& files, AutoLinkMode mode, LinkDocument& document, ToolRun& run)
        : m_files(files), m_mode(mode), m_document(document), m_run(run) {}

    AutoLinkResult run(const std::vector<std::string>& codes) {
        if (m_mode == AutoLinkMode::NameContainsCode) {
            buildIndex();
        }
        for (std::size_t i = 0; i < codes.size(); ++i) {
            const std::string& code = codes[i];
            m_run.caption("Searching for image for product code " + code);
            m_run.progress(i, codes.size());
            if (!m_run.proceed()) {
                break;
            }
            if (base::trim(code).empty()) { // an empty code would be found in every name
                continue;
            }
            if (!(m_mode == AutoLinkMode::NumberedPictures ? linkNumbered(code) : linkContaining(code))) {
                break;
            }
        }
        return m_result;
    }

private:
    // Only names with ".JPG" anywhere can match, so the index holds no others.
    void buildIndex() {
        std::vector<std::string> pictures;
        for (const std::string& name : m_files.upperNames()) {
            if (name.find(".JPG") != std::string::npos) {
                pictures.push_back(name);
            }
        }
        m_index.emplace(std::move(pictures));
    }

    bool linkNumbered(const std::string& code) {
        const std::string trimmed(base::trim(code));
        for (int n = 1;; ++n) {
            const std::string suffix = "_" + std::to_string(n);
            const std::string candidate = code + suffix + ".JPG";
            if (!m_files.contains(candidate)) {
                return true;
            }
            const auto linked = base::resumeNext([&] { return m_document.isLinked(trimmed, candidate); });
            if (linked.value_or(false)) {
                continue;
            }
            m_run.line("Added" + code + " linked to image " + code + suffix + ".jpg");
            add(trimmed, candidate);
            if (!m_run.proceed()) {
                return false;
            }
        }
    }

    // The search asks for CODE.JPG and not for the name found: a code whose own picture is linked by hand is left
    // alone, and a second run links the pictures of all others again. Its answer cannot change while one code is worked
    // on, so it is asked for once; only a code with an apostrophe can make an expression of another meaning, whose
    // answer may depend on the links just made.
    bool linkContaining(const std::string& code) {
        const std::string upper = base::upperCase(code);
        const std::string exactName = upper + ".JPG";
        m_index->find(upper, m_found);
        std::optional<bool> linked;
        for (const std::uint32_t position : m_found) {
            const std::string& name = m_index->names()[position];
            if (name == exactName) {
                continue;
            }
            const std::string trimmed(base::trim(code));
            if (!linked || code.find('\'') != std::string::npos) {
                // A search that fails counts as none found.
                const auto found =
                    base::resumeNext([&] { return m_document.findLinkAnywhere(trimmed, code + ".JPG"); });
                linked = found && *found;
            }
            if (*linked) {
                return true;
            }
            add(trimmed, name);
            m_run.line("Added" + code + " linked to image " + name);
            if (!m_run.proceed()) {
                return false;
            }
        }
        return true;
    }

    void add(std::string_view code, std::string_view file) {
        ++m_result.counted;
        base::resumeNext([&] { m_document.add(code, file); });
        m_result.changed = true;
        ++m_result.written;
    }

    const FolderFiles& m_files;
    AutoLinkMode m_mode;
    LinkDocument& m_document;
    ToolRun& m_run;
    std::optional<NameIndex> m_index;
    std::vector<std::uint32_t> m_found; // reused from code to code
    AutoLinkResult m_result;
};

} // namespace

AutoLinkResult autoLink(const std::vector<std::string>& codes, const FolderFiles& files, AutoLinkMode mode,
                        LinkDocument& document, ToolRun& run) {
    return AutoLinker(files, mode, document, run).run(codes);
}

} // namespace images
