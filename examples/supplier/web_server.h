// The service on the network: HTTP and HTTPS on the loopback address, for as long as the object lives.
#pragma once

#include "data_folder.h"
#include "request_log.h"
#include "service.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace httplib {
class Server;
struct Request;
struct Response;
} // namespace httplib

namespace supplier {

class WebServer {
public:
    explicit WebServer(const DataFolder& folder);
    WebServer(const WebServer&) = delete;
    WebServer& operator=(const WebServer&) = delete;
    // Answers that are held back are given at once; returns when the last request is answered.
    ~WebServer();

    // Listens on this port (0: a free one) and returns its number; 0 when that cannot be.
    [[nodiscard]] int listenHttp(int port);
    // The same with TLS. Both files are PEM.
    [[nodiscard]] int listenHttps(int port, const std::string& certificate, const std::string& key);

private:
    [[nodiscard]] int listen(std::unique_ptr<httplib::Server> server, int port, const char* scheme);
    void route(httplib::Server& server, const char* scheme);
    void execute(const httplib::Request& request, httplib::Response& response);
    void sendFile(const httplib::Request& request, httplib::Response& response);
    void holdBack(std::chrono::milliseconds time);

    const DataFolder& m_folder;
    RequestLog m_log;
    Service m_service;
    std::mutex m_mutex;
    std::condition_variable m_ended;
    bool m_ending = false;
    std::vector<std::unique_ptr<httplib::Server>> m_servers;
    std::vector<std::thread> m_threads;
};

} // namespace supplier
