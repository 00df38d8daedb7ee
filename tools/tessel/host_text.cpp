#include "host_text.h"

namespace tessel::cli {

std::string ToStdString(const vorna::String& text) {
  vorna::Result<vorna::CString> converted = text.GetCString();
  return converted.IsError() ? std::string() : std::string(converted.GetValue().GetCString());
}

std::string DescribeError(vorna::ErrorWord error) {
  vorna::ErrorInterface object = vorna::ErrorOf(error);
  std::string text = object ? ToStdString(object.ToString(nullptr)) : std::string();
  return text.empty() ? "unknown error" : text;
}

std::string ErrorMessage(vorna::ErrorWord error) {
  vorna::ErrorInterface object = vorna::ErrorOf(error);
  std::string message = object ? ToStdString(object.GetMessage()) : std::string();
  return message.empty() ? DescribeError(error) : message;
}

}  // namespace tessel::cli
