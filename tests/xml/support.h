// What the tests of the XML layer share.
#pragma once

#include "base/error_number.h"
#include "base/runtime_error.h"
#include "xml/xml_document.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string_view>

namespace xml {

inline XmlDocument loaded(std::string_view bytes) {
    XmlDocument document;
    EXPECT_TRUE(document.load(bytes)) << document.parseError();
    return document;
}

} // namespace xml
