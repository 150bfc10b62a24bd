#include "baselines/bare_curl.h"

#include <curl/curl.h>

namespace baselines {
namespace {

std::size_t count(char* /*data*/, std::size_t, std::size_t size, void* total) noexcept {
    *static_cast<std::size_t*>(total) += size;
    return size;
}

} // namespace

BareCurl::BareCurl() {
    curl_global_init(CURL_GLOBAL_DEFAULT);
    m_easy = curl_easy_init();
}

BareCurl::~BareCurl() {
    curl_easy_cleanup(m_easy);
    curl_global_cleanup();
}

std::size_t BareCurl::transfer(const std::string& url, const std::string& body) {
    std::size_t total = 0;
    curl_easy_reset(m_easy);
    curl_slist* headers = curl_slist_append(nullptr, "Expect:");
    curl_easy_setopt(m_easy, CURLOPT_HTTPHEADER, headers);
    curl_easy_setopt(m_easy, CURLOPT_URL, url.c_str());
    curl_easy_setopt(m_easy, CURLOPT_PROXY, "");
    curl_easy_setopt(m_easy, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    curl_easy_setopt(m_easy, CURLOPT_WRITEFUNCTION, &count);
    curl_easy_setopt(m_easy, CURLOPT_WRITEDATA, &total);
    if (!body.empty()) {
        curl_easy_setopt(m_easy, CURLOPT_POSTFIELDS, body.data());
        curl_easy_setopt(m_easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    }
    const CURLcode result = curl_easy_perform(m_easy);
    curl_slist_free_all(headers);
    return result == CURLE_OK ? total : 0;
}

} // namespace baselines
