// Host strings and errors as std::string, for what the command line prints.
#pragma once

#include <string>

#include "vorna/errorbase.h"
#include "vorna/string.h"

namespace tessel::cli {

// The text of a host string; empty when it cannot be had as a C string.
std::string ToStdString(const vorna::String& text);
// The class id and the message of the error behind a word.
std::string DescribeError(vorna::ErrorWord error);
// The message alone, or the whole description when the error has no message.
std::string ErrorMessage(vorna::ErrorWord error);

}  // namespace tessel::cli
