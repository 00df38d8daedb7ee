// Four-character codes (FOURCC) as the command line shows and reads them: the
// characters in order, with the blanks that pad a short code left off ("DIB " shows as
// "DIB", and "DIB" reads as "DIB ").
#pragma once

#include <cstdint>
#include <string>

namespace tessel::cli {

// The code's text; a code that holds other than printable ASCII shows as 0x and eight
// hexadecimal digits.
std::string FourCharacterText(uint32_t code);
// False for text that is empty, longer than four characters or not printable ASCII.
bool ParseFourCharacterCode(const std::string& text, uint32_t& code);

}  // namespace tessel::cli
