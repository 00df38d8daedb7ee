// The file that the test module's recording saver writes: what a saver got from the host
// in an export. A header of "key value" lines ends with an empty line; the sound's bytes
// follow (as many as the header's "soundbytes" says); then one record per frame, a line
// "frame TIME PIXELFORMAT PROFILE ASKEDPROFILE FETCHES BYTES" and BYTES bytes of the
// frame's rows in the pixel format of the codec, top row first. PIXELFORMAT and PROFILE
// are what the frame's properties said, ASKEDPROFILE the profile the rows were asked in
// ("-" for none), FETCHES how many pixel handlers the row loop asked for.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace tessel::testmodule {

inline constexpr const char* RECORDING_MAGIC = "tessel recording 1";

struct RecordedFrame {
  double time = 0;
  std::string pixelFormat;
  std::string profile;
  std::string askedProfile;
  int fetches = 0;
  std::vector<uint8_t> rows;
};

struct Recording {
  std::map<std::string, std::string> header;
  std::vector<uint8_t> sound;
  std::vector<RecordedFrame> frames;
};

// False when the file is missing or is no whole recording.
inline bool ReadRecording(const std::string& path, Recording& recording) {
  std::ifstream in(path, std::ios::binary);
  std::string line;
  if (!std::getline(in, line) || line != RECORDING_MAGIC) return false;
  while (std::getline(in, line) && !line.empty()) {
    size_t blank = line.find(' ');
    recording.header[line.substr(0, blank)] = blank == std::string::npos ? "" : line.substr(blank + 1);
  }
  recording.sound.resize(std::strtoull(recording.header["soundbytes"].c_str(), nullptr, 10));
  if (!in.read(reinterpret_cast<char*>(recording.sound.data()), std::streamsize(recording.sound.size()))) return false;
  while (std::getline(in, line)) {
    std::istringstream fields(line);
    std::string word;
    RecordedFrame frame;
    size_t bytes = 0;
    if (!(fields >> word >> frame.time >> frame.pixelFormat >> frame.profile >> frame.askedProfile >> frame.fetches >>
          bytes) ||
        word != "frame")
      return false;
    frame.rows.resize(bytes);
    if (!in.read(reinterpret_cast<char*>(frame.rows.data()), std::streamsize(bytes))) return false;
    recording.frames.push_back(std::move(frame));
  }
  return true;
}

}  // namespace tessel::testmodule
