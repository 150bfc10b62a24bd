// Addresses of the web as text.
#pragma once

#include <string>
#include <string_view>

namespace connection {

// An address as it goes out: a blank in it would end it.
[[nodiscard]] std::string withEncodedBlanks(std::string_view address);

// The absolute address of a file that the service names: from the service's own folder on, from the server's root for
// one that begins with "/", or the name itself where that is an http or https address. "" for what is not to be
// fetched: any other scheme, and an unencrypted address from a service that is encrypted.
[[nodiscard]] std::string fileAddress(std::string_view serviceAddress, std::string_view webname);

} // namespace connection
