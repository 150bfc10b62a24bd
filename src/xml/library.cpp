#include "xml/library.h"

#include "base/runtime_error.h"
#include "base/text.h"
#include "xml/code_page.h"

#include <cstdlib>
#include <cstring>
#include <libxml/encoding.h>
#include <libxml/parser.h>
#include <libxml/xmlerror.h>
#include <libxml/xmlmemory.h>
#include <mutex>

namespace xml {
namespace {

void ignoreMessage(void*, const char*, ...) {}

void ignoreError(void*, xmlErrorPtr) {}

xmlParserInputPtr refuseEntity(const char*, const char*, xmlParserCtxtPtr) {
    return nullptr;
}

// The library's converter protocol: bytes taken and written are returned through the lengths.
int fromWindows1252Bytes(unsigned char* out, int* outLength, const unsigned char* in, int* inLength) {
    int taken = 0;
    int written = 0;
    for (; taken < *inLength; ++taken) {
        char utf8[4];
        const int length = static_cast<int>(base::encodeUtf8(decodeWindows1252(in[taken]), utf8));
        if (written + length > *outLength) {
            break;
        }
        for (int i = 0; i < length; ++i) {
            out[written++] = static_cast<unsigned char>(utf8[i]);
        }
    }
    *outLength = written;
    *inLength = taken;
    return written;
}

thread_local bool allocationFailed = false;

template <typename T>
T* noted(T* memory) noexcept {
    if (memory == nullptr) {
        allocationFailed = true;
    }
    return memory;
}

void* watchedMalloc(std::size_t size) {
    return noted(std::malloc(size));
}

void* watchedRealloc(void* memory, std::size_t size) {
    return noted(std::realloc(memory, size));
}

char* watchedStrdup(const char* text) {
    const std::size_t size = std::strlen(text) + 1;
    auto* const copy = static_cast<char*>(watchedMalloc(size));
    return copy != nullptr ? static_cast<char*>(std::memcpy(copy, text, size)) : nullptr;
}

void start() {
    xmlMemSetup(std::free, watchedMalloc, watchedRealloc, watchedStrdup);
    xmlInitParser();
    // Threads that start later copy these; the one that is here gets them directly.
    xmlThrDefSetGenericErrorFunc(nullptr, ignoreMessage);
    xmlThrDefSetStructuredErrorFunc(nullptr, ignoreError);
    xmlSetGenericErrorFunc(nullptr, ignoreMessage);
    xmlSetStructuredErrorFunc(nullptr, ignoreError);
    xmlSetExternalEntityLoader(refuseEntity);
    // Documents are always written as UTF-8, so the way back is not needed.
    xmlNewCharEncodingHandler("windows-1252", fromWindows1252Bytes, nullptr);
    xmlAddEncodingAlias("windows-1252", "CP1252");
}

// The library has mutexes, tables and a thread-local value, which a DLL must not leave behind. Made before everything
// that has documents, and so gone after it.
struct Cleanup {
    Cleanup() = default;
    Cleanup(const Cleanup&) = delete;
    Cleanup& operator=(const Cleanup&) = delete;
    ~Cleanup() { xmlCleanupParser(); }
};

const Cleanup kCleanup;

} // namespace

void startLibrary() {
    static std::once_flag started;
    std::call_once(started, start);
}

MemoryWatch::MemoryWatch() noexcept {
    allocationFailed = false;
}

void MemoryWatch::check()
    const { // NOLINT(readability-convert-member-functions-to-static): it is about this object's life
    if (allocationFailed) {
        throw base::RuntimeError(base::error::kOutOfMemory);
    }
}

} // namespace xml
