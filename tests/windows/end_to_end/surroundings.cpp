#include "windows/end_to_end/surroundings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace end_to_end {

std::string environment(const std::string& name) {
    const char* const value = std::getenv(name.c_str());
    EXPECT_NE(value, nullptr) << name << " is not set: is this run beside the service and the peers?";
    return value == nullptr ? "" : value;
}

std::string peer(const std::string& name) {
    return environment("QVI_PEER_" + name);
}

std::string peerThatPlays(const std::string& paths) {
    return "http://127.0.0.1:" + peer("HTTP") + "/in-turn?" + paths;
}

std::string onDrive(std::string path) {
    std::ranges::replace(path, '/', '\\');
    return "Z:" + path;
}

std::string contentsOf(const std::string& path) {
    std::ifstream file(onDrive(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string supplierFile(const std::string& name) {
    return environment("SUPPLIER_DATA") + "/" + name;
}

void setSupplierBehaviour(const std::string& text) {
    std::ofstream(onDrive(supplierFile("behaviour.xml")), std::ios::binary) << text;
}

} // namespace end_to_end
