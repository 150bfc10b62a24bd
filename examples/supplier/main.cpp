// supplier: the example web service as a program.
//
//   supplier --data FOLDER [--port N] [--https-port N --certificate FILE --key FILE]
//
// Listens on 127.0.0.1; port 0, the default, takes a free one. When it is ready it writes the ports into FOLDER/ports
// ("http=40001", "https=40002", a line each). Ends on SIGTERM and SIGINT with exit code 0.
#include "web_server.h"

#include <charconv>
#include <csignal>
#include <cstdio>
#include <map>
#include <string>

namespace {

struct Options {
    std::string data;
    std::string certificate;
    std::string key;
    int port = 0;
    int httpsPort = 0;
};

bool readPort(const std::string& text, int& port) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    return error == std::errc() && end == text.data() + text.size() && port >= 0 && port <= 65535;
}

bool readOptions(int count, char** words, Options& options) {
    const std::map<std::string, std::string*> texts{
        {"--data", &options.data}, {"--certificate", &options.certificate}, {"--key", &options.key}};
    const std::map<std::string, int*> ports{{"--port", &options.port}, {"--https-port", &options.httpsPort}};
    for (int i = 1; i < count; i += 2) {
        if (i + 1 == count) {
            return false;
        }
        if (const auto text = texts.find(words[i]); text != texts.end()) {
            *text->second = words[i + 1];
        } else if (const auto port = ports.find(words[i]);
                   port == ports.end() || !readPort(words[i + 1], *port->second)) {
            return false;
        }
    }
    return !options.data.empty() && options.certificate.empty() == options.key.empty();
}

int serve(const Options& options) {
    // Before any thread is there: all of them leave these to sigwait below.
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGTERM);
    sigaddset(&ends, SIGINT);
    pthread_sigmask(SIG_BLOCK, &ends, nullptr);
    std::signal(SIGPIPE, SIG_IGN);

    const supplier::DataFolder folder(options.data);
    supplier::WebServer server(folder);
    const int http = server.listenHttp(options.port);
    const int https = options.key.empty() ? 0 : server.listenHttps(options.httpsPort, options.certificate, options.key);
    if (http == 0 || (https == 0 && !options.key.empty())) {
        std::fprintf(stderr, "supplier: cannot listen on the %s port\n", http == 0 ? "HTTP" : "HTTPS");
        return 1;
    }
    folder.replace("ports",
                   "http=" + std::to_string(http) + "\n" + (https == 0 ? "" : "https=" + std::to_string(https) + "\n"));
    int signal = 0;
    sigwait(&ends, &signal);
    return 0;
}

} // namespace

int main(int count, char** words) {
    Options options;
    if (!readOptions(count, words, options)) {
        std::fputs("usage: supplier --data FOLDER [--port N] [--https-port N --certificate FILE --key FILE]\n", stderr);
        return 2;
    }
    try {
        return serve(options);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "supplier: %s\n", error.what());
        return 1;
    }
}
