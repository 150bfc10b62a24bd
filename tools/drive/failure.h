// What went wrong while playing the user, in words for the person who reads the log.
#pragma once

#include <stdexcept>

namespace drive {

class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace drive
