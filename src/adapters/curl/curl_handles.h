// Owners of libcurl's handles.
#pragma once

#include "base/runtime_error.h"

#include <curl/curl.h>

#include <memory>

namespace adapters {

// libcurl counts its users itself.
class CurlLibrary {
public:
    CurlLibrary() {
        if (curl_global_init(CURL_GLOBAL_DEFAULT) != CURLE_OK) {
            throw base::RuntimeError(base::error::kOutOfMemory);
        }
    }
    CurlLibrary(const CurlLibrary&) = delete;
    CurlLibrary& operator=(const CurlLibrary&) = delete;
    ~CurlLibrary() { curl_global_cleanup(); }
};

// libcurl's closing functions return numbers that nobody could act on.
struct CloseMulti {
    void operator()(CURLM* multi) const noexcept { curl_multi_cleanup(multi); }
};
struct CloseEasy {
    void operator()(CURL* easy) const noexcept { curl_easy_cleanup(easy); }
};
struct FreeList {
    void operator()(curl_slist* list) const noexcept { curl_slist_free_all(list); }
};
struct CloseUrl {
    void operator()(CURLU* url) const noexcept { curl_url_cleanup(url); }
};
struct FreeText {
    void operator()(char* text) const noexcept { curl_free(text); }
};
using Multi = std::unique_ptr<CURLM, CloseMulti>;
using Easy = std::unique_ptr<CURL, CloseEasy>;
using List = std::unique_ptr<curl_slist, FreeList>;
using Url = std::unique_ptr<CURLU, CloseUrl>;
using CurlText = std::unique_ptr<char, FreeText>;

// Raises 7 for what libcurl could not make.
template <typename Owner>
Owner made(Owner owner) {
    if (!owner) {
        throw base::RuntimeError(base::error::kOutOfMemory);
    }
    return owner;
}
inline Multi makeMulti() {
    return made(Multi(curl_multi_init()));
}
inline Easy makeEasy() {
    return made(Easy(curl_easy_init()));
}

} // namespace adapters
