// Bytes as base64 text (RFC 4648, the standard alphabet with '=' padding), as the
// settings file keeps a compressor's own state.
#pragma once

#include <string>
#include <string_view>

namespace tessel::cli {

std::string Base64Encode(std::string_view bytes);
// False when text is not base64: a character outside the alphabet, a length that is no
// multiple of four, padding anywhere but at the end, or bits left over in the padding.
bool Base64Decode(std::string_view text, std::string& bytes);

}  // namespace tessel::cli
