// A transfer by libcurl's simplest interface and nothing else: what the same library needs at least.
#pragma once

#include <cstddef>
#include <string>

namespace baselines {

class BareCurl {
public:
    BareCurl();
    BareCurl(const BareCurl&) = delete;
    BareCurl& operator=(const BareCurl&) = delete;
    ~BareCurl();

    // The number of bytes that came; 0 when the transfer failed. An empty `body` makes it a GET.
    [[nodiscard]] std::size_t transfer(const std::string& url, const std::string& body);

private:
    void* m_easy;
};

} // namespace baselines
