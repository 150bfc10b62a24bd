// Memory that runs out at any moment raises error 7: never a crash, never half a document that looks whole.
#include "base/runtime_error.h"
#include "xml/xml_document.h"

#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <libxml/xmlmemory.h>
#include <string>
#include <utility>
#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

// AddressSanitizer would stop the program at a size that cannot be served.
extern "C" const char* __asan_default_options(); // NOLINT(bugprone-reserved-identifier): the sanitizer asks for it
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1";
}

namespace {

// The library's allocations left until the first that fails; below zero: none does.
long g_allocationsLeft = -1;
xmlFreeFunc g_free = nullptr;
xmlMallocFunc g_malloc = nullptr;
xmlReallocFunc g_realloc = nullptr;
xmlStrdupFunc g_strdup = nullptr;

// A size that the real allocator cannot serve, so that whoever watches it sees a real failure.
std::size_t allowed(std::size_t size) {
    if (g_allocationsLeft < 0) {
        return size;
    }
    return g_allocationsLeft > 0 && g_allocationsLeft-- > 0 ? size : PTRDIFF_MAX;
}

void* countedMalloc(std::size_t size) {
    return g_malloc(allowed(size));
}

void* countedRealloc(void* memory, std::size_t size) {
    return g_realloc(memory, allowed(size));
}

char* countedStrdup(const char* text) {
    const std::size_t size = std::strlen(text) + 1;
    auto* copy = static_cast<char*>(countedMalloc(size));
    return copy != nullptr ? static_cast<char*>(std::memcpy(copy, text, size)) : nullptr;
}

// The library itself forgets pieces when memory runs out in the middle of its work; that is not the subject here.
struct LibraryMayLeak {
#ifdef __SANITIZE_ADDRESS__
    LibraryMayLeak() {
        __lsan_disable();
    }
    ~LibraryMayLeak() {
        __lsan_enable();
    }
#else
    LibraryMayLeak() {}
    ~LibraryMayLeak() {}
#endif
    LibraryMayLeak(const LibraryMayLeak&) = delete;
    LibraryMayLeak& operator=(const LibraryMayLeak&) = delete;
};

class OutOfMemory : public testing::Test {
protected:
    void SetUp() override {
        static_cast<void>(xml::XmlDocument()); // what the library takes once is not the subject
        xmlMemGet(&g_free, &g_malloc, &g_realloc, &g_strdup);
        xmlMemSetup(g_free, countedMalloc, countedRealloc, countedStrdup);
    }
    void TearDown() override {
        g_allocationsLeft = -1;
        xmlMemSetup(g_free, g_malloc, g_realloc, g_strdup);
    }

    // Runs `step` with 0, 1, 2 ... allocations until it needs no more; each run must raise 7 or succeed whole.
    template <typename Step>
    static void exhaust(Step&& step) {
        const LibraryMayLeak leaksAreAllowed;
        for (long count = 0;; ++count) {
            ASSERT_LT(count, 5000);
            g_allocationsLeft = count;
            try {
                step();
                const bool enough = g_allocationsLeft > 0;
                g_allocationsLeft = -1;
                if (enough) {
                    return;
                }
            } catch (const base::RuntimeError& e) {
                g_allocationsLeft = -1;
                ASSERT_EQ(e.number(), base::error::kOutOfMemory) << "after " << count << ": " << e.description();
            }
        }
    }
};

TEST_F(OutOfMemory, LoadingIsWholeOrRaises) {
    const std::string source = "<images><p f1='a long code of a product' f2='a long name of a file &amp; more.jpg'/>"
                               "<p f1='short' f2='x'>text that is long enough for a place of its own</p></images>";
    xml::XmlDocument whole;
    ASSERT_TRUE(whole.load(source));
    const std::string expected = whole.xml();
    exhaust([&] {
        xml::XmlDocument document;
        const bool isLoaded = document.load(source);
        const std::string reason = document.parseError();
        const long left = std::exchange(g_allocationsLeft, -1);
        ASSERT_TRUE(isLoaded) << reason;
        ASSERT_EQ(document.xml(), expected);
        g_allocationsLeft = left;
    });
}

// Searches are left out: this version of the library frees twice when one finds no memory.
TEST_F(OutOfMemory, WritingAndChangingAreWholeOrRaise) {
    xml::XmlDocument document;
    ASSERT_TRUE(document.load("<images><p f1='a' f2='b'/><p f1='a' f2='c'/></images>"));
    const std::string expected = document.xml();
    exhaust([&] { ASSERT_EQ(document.xml(), expected); });
    exhaust([&] {
        xml::XmlNode link = document.createElement("p");
        link.setAttribute("f1", "a code that is longer than any small buffer");
        const long left = std::exchange(g_allocationsLeft, -1);
        ASSERT_EQ(link.getAttribute("f1"), "a code that is longer than any small buffer");
        g_allocationsLeft = left;
    });
    ASSERT_EQ(document.xml(), expected);
    exhaust([&] {
        xml::XmlDocument target;
        const xml::XmlNode copy = target.node().appendChild(document.documentElement());
        const long left = std::exchange(g_allocationsLeft, -1);
        ASSERT_EQ(copy.xml(), expected);
        g_allocationsLeft = left;
    });
}

} // namespace
