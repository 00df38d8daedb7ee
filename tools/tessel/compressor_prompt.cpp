#include "compressor_prompt.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>
#include <span>
#include <string>

#include "compressor_list.h"
#include "four_character_code.h"

namespace tessel::cli {

namespace {

constexpr size_t MAX_ANSWER = 200;  // characters of a line kept; the rest is read and dropped

// One line of in without its end and the blanks around it; false at the end of the input.
bool ReadAnswer(FILE* in, std::string& answer) {
  answer.clear();
  int c = std::fgetc(in);
  if (c == EOF) return false;
  for (; c != EOF && c != '\n'; c = std::fgetc(in))
    if (answer.size() < MAX_ANSWER) answer += char(c);
  size_t first = answer.find_first_not_of(" \t\r");
  size_t last = answer.find_last_not_of(" \t\r");
  answer = first == std::string::npos ? "" : answer.substr(first, last - first + 1);
  return true;
}

bool ParseWhole(const std::string& text, long maximum, long& value) {
  char* end = nullptr;
  errno = 0;
  long parsed = std::strtol(text.c_str(), &end, 10);
  if (text.empty() || *end != '\0' || errno != 0 || parsed < 0 || parsed > maximum) return false;
  value = parsed;
  return true;
}

// Reads a value of a question: Enter keeps value as it is; an answer that read refuses
// is asked again after hint. False at the end of the input.
bool AskValue(FILE* in, FILE* out, const std::string& question, const std::string& shown, const char* hint,
              const std::function<bool(const std::string&)>& read) {
  for (;;) {
    std::fprintf(out, "%s [%s]: ", question.c_str(), shown.c_str());
    std::fflush(out);
    std::string answer;
    if (!ReadAnswer(in, answer)) return false;
    if (answer.empty() || read(answer)) return true;
    std::fprintf(out, "  %s\n", hint);
  }
}

std::string QualityText(LONG quality) {
  if (quality == LONG(ICQUALITY_DEFAULT)) return "the compressor's own";
  char text[32];
  std::snprintf(text, sizeof text, "%g", quality / 10000.0);
  return text;
}

bool AskQuality(FILE* in, FILE* out, LONG& quality) {
  return AskValue(in, out, "Quality, 0 to 1", QualityText(quality), "a number from 0 to 1, such as 0.75",
                  [&quality](const std::string& answer) {
                    char* end = nullptr;
                    double value = std::strtod(answer.c_str(), &end);
                    if (*end != '\0' || !(value >= 0 && value <= 1)) return false;
                    quality = LONG(value * 10000 + 0.5);
                    return true;
                  });
}

bool AskWhole(FILE* in, FILE* out, const std::string& question, LONG& value) {
  return AskValue(in, out, question, std::to_string(value), "a whole number, 0 or more",
                  [&value](const std::string& answer) {
                    long parsed = 0;
                    if (!ParseWhole(answer, std::numeric_limits<LONG>::max(), parsed)) return false;
                    value = LONG(parsed);
                    return true;
                  });
}

void PrintList(FILE* out, const TesselChooserRequest& request, std::span<const TesselCompressor> compressors) {
  std::fprintf(out, "%s\n", request.title ? request.title : "Compressor");
  for (size_t i = 0; i < compressors.size(); ++i) {
    const TesselCompressor& compressor = compressors[i];
    bool marked = SameCompressorCode(compressor.fccHandler, request.preselection.fccHandler);
    char line[160];
    std::snprintf(line, sizeof line, "%s%3zu  %-5s %-32s %s", marked ? " *" : "  ", i + 1,
                  FourCharacterText(compressor.fccHandler).c_str(), compressor.name, SupportsText(compressor).c_str());
    std::string text = line;
    std::fprintf(out, "%s\n", text.substr(0, text.find_last_not_of(' ') + 1).c_str());
  }
}

// The compressor whose number the user gives; null for a cancel.
const TesselCompressor* AskCompressor(FILE* in, FILE* out, std::span<const TesselCompressor> compressors) {
  for (;;) {
    std::fprintf(out, "Compressor number (Enter or q cancels): ");
    std::fflush(out);
    std::string answer;
    if (!ReadAnswer(in, answer) || answer.empty() || answer == "q") return nullptr;
    long number = 0;
    if (ParseWhole(answer, long(compressors.size()), number) && number >= 1) return &compressors[size_t(number - 1)];
    std::fprintf(out, "  a number from 1 to %zu, or q\n", compressors.size());
  }
}

}  // namespace

bool AskForCompressor(FILE* in, FILE* out, const TesselChooserRequest& request, TesselCompressorChoice& choice) {
  std::span<const TesselCompressor> compressors(request.compressors, request.compressorCount);
  choice = request.preselection;
  PrintList(out, request, compressors);
  const TesselCompressor* chosen = AskCompressor(in, out, compressors);
  if (!chosen) return false;
  if (!SameCompressorCode(chosen->fccHandler, choice.fccHandler)) {
    choice.state = nullptr;
    choice.stateSize = 0;
  }
  choice.fccHandler = chosen->fccHandler;
  if (SupportsQuality(*chosen) && !AskQuality(in, out, choice.quality)) return false;
  if (SupportsKeyFrames(*chosen) && (request.flags & ICMF_CHOOSE_KEYFRAME) &&
      !AskWhole(in, out, "Key frame every N frames (0: the compressor's own)", choice.keyFrameEvery))
    return false;
  if (SupportsDataRate(*chosen) && (request.flags & ICMF_CHOOSE_DATARATE) &&
      !AskWhole(in, out, "Data rate in kilobytes per second (0: no limit)", choice.dataRate))
    return false;
  return true;
}

}  // namespace tessel::cli
