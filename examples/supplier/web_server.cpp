#include "web_server.h"

#include "files.h"

#include <httplib.h>

#include <algorithm>

namespace supplier {
namespace {

constexpr const char* kLoopback = "127.0.0.1";
constexpr const char* kXml = "text/xml; charset=utf-8";
constexpr const char* kBytes = "application/octet-stream";
constexpr const char* kHtml = "text/html; charset=utf-8";
// A whole link document of 200,000 links has 11 MB.
constexpr std::size_t kLargestRequest = 64 << 20;
// What a handler leaves for the log line; taken out before the answer goes to the client.
constexpr const char* kNoteHeader = "X-Note";

constexpr const char* kPage = "<html><head><title>Supplier</title></head>"
                              "<body><p>The supplier's web service is running.</p></body></html>\n";

// The head says that all of it will come; the connection is closed before.
void breakOff(httplib::Response& response, std::string bytes, std::size_t end) {
    const std::size_t length = bytes.size();
    response.set_content_provider(
        length, kBytes,
        [bytes = std::move(bytes), end](std::size_t offset, std::size_t wanted, httplib::DataSink& sink) {
            sink.write(bytes.data() + offset, std::min(wanted, end));
            return false;
        });
}

void describeFault(httplib::Response& response, std::exception_ptr fault) {
    std::string text = "The service failed.";
    try {
        std::rethrow_exception(fault);
    } catch (const std::exception& error) {
        text = error.what();
    } catch (...) {
        // What it is, nobody knows.
    }
    response.status = 500;
    response.set_content(refusal(text), kXml);
}

} // namespace

WebServer::WebServer(const DataFolder& folder)
    : m_folder(folder), m_log(folder.path("requests.log")), m_service(folder) {}

WebServer::~WebServer() {
    {
        const std::scoped_lock lock(m_mutex);
        m_ending = true;
    }
    m_ended.notify_all();
    for (const auto& server : m_servers) {
        server->stop();
    }
    for (std::thread& thread : m_threads) {
        thread.join();
    }
}

int WebServer::listenHttp(int port) {
    return listen(std::make_unique<httplib::Server>(), port, "http");
}

int WebServer::listenHttps(int port, const std::string& certificate, const std::string& key) {
    return listen(std::make_unique<httplib::SSLServer>(certificate.c_str(), key.c_str()), port, "https");
}

int WebServer::listen(std::unique_ptr<httplib::Server> server, int port, const char* scheme) {
    if (!server->is_valid()) {
        return 0;
    }
    route(*server, scheme);
    if (port == 0) {
        port = std::max(server->bind_to_any_port(kLoopback), 0);
    } else if (!server->bind_to_port(kLoopback, port)) {
        port = 0;
    }
    if (port != 0) {
        // The socket listens already, so a client that knows the number need not wait for this thread.
        m_threads.emplace_back([listener = server.get()] { listener->listen_after_bind(); });
        m_servers.push_back(std::move(server));
    }
    return port;
}

void WebServer::route(httplib::Server& server, const char* scheme) {
    server.set_payload_max_length(kLargestRequest);
    // Seconds; also what a client may take from its handshake to its request, and on a busy machine that is long. The
    // end waits that long for idle connections that clients keep.
    server.set_keep_alive_timeout(5);
    server.Get("/", [](const httplib::Request&, httplib::Response& response) { response.set_content(kPage, kHtml); });
    server.Get("/files/(.+)",
               [this](const httplib::Request& request, httplib::Response& response) { sendFile(request, response); });
    server.Post("/",
                [this](const httplib::Request& request, httplib::Response& response) { execute(request, response); });
    server.set_exception_handler([](const httplib::Request&, httplib::Response& response, std::exception_ptr fault) {
        describeFault(response, std::move(fault));
    });
    server.set_error_handler([](const httplib::Request& request, httplib::Response& response) {
        if (response.body.empty()) {
            response.set_content(std::to_string(response.status) + ": " + asWord(request.path) + "\n", "text/plain");
        }
    });
    // Before the answer goes out: a client that has it finds it in the log.
    server.set_post_routing_handler([this, scheme](const httplib::Request& request, httplib::Response& response) {
        const std::string note = response.get_header_value(kNoteHeader);
        response.headers.erase(kNoteHeader);
        m_log.write(std::string(scheme) + " " + asWord(request.method) + " " + asWord(request.path) + " bytes=" +
                    std::to_string(request.body.size()) + " status=" + std::to_string(response.status) + note);
    });
}

void WebServer::execute(const httplib::Request& request, httplib::Response& response) {
    holdBack(Behaviour(m_folder).wait());
    Answer answer = m_service.execute(request.body);
    response.status = answer.status;
    response.set_content(answer.body, kXml);
    response.headers.emplace(kNoteHeader, std::move(answer.note));
}

void WebServer::sendFile(const httplib::Request& request, httplib::Response& response) {
    const Behaviour behaviour(m_folder);
    holdBack(behaviour.wait());
    const std::string name = request.matches[1].str();
    auto download = findDownload(m_folder, name);
    if (!download) {
        response.status = 404;
        return;
    }
    response.set_header("ETag", download->etag);
    response.set_header("Accept-Ranges", "bytes");
    if (const auto end = behaviour.cutOf(name); end && request.ranges.empty()) {
        breakOff(response, std::move(download->bytes), *end);
        return;
    }
    response.body = std::move(download->bytes);
    response.set_header("Content-Type", kBytes);
    // The library cuts the ranges out of the body. One of another version of the file is none of this one.
    if (request.has_header("If-Range") && request.get_header_value("If-Range") != download->etag) {
        const_cast<httplib::Request&>(request).ranges.clear(); // its own object, which it shows us as const
    }
}

void WebServer::holdBack(std::chrono::milliseconds time) {
    std::unique_lock lock(m_mutex);
    m_ended.wait_for(lock, time, [this] { return m_ending; });
}

} // namespace supplier
