#include "progress_line.h"

#include <unistd.h>

#include <cstdio>

namespace tessel::cli {

namespace {

std::string Format(const char* format, double value) {
  char text[48];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

}  // namespace

std::string ProgressText(const vorna::host::ExportProgress& progress, double elapsedSeconds) {
  std::string text = "frame " + std::to_string(progress.frames);
  if (progress.frameCount > 0) text += "/" + std::to_string(progress.frameCount);
  text += Format("  %.2f s", progress.movieSeconds);
  if (elapsedSeconds <= 0 || progress.frames <= 0) return text;
  double speed = progress.movieSeconds / elapsedSeconds;
  text += Format("  %.2fx", speed);
  if (progress.frameCount > 0) {
    double left = elapsedSeconds * double(progress.frameCount - progress.frames) / double(progress.frames);
    text += Format("  %.0f s left", left);
  }
  return text;
}

ProgressLine::ProgressLine() : _show(::isatty(2) == 1), _start(std::chrono::steady_clock::now()), _last(_start) {}

double ProgressLine::ElapsedSeconds() const {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - _start).count();
}

void ProgressLine::Update(const vorna::host::ExportProgress& progress) {
  auto now = std::chrono::steady_clock::now();
  bool last = progress.frameCount > 0 && progress.frames == progress.frameCount;
  if (!_show || (!last && _shown && now - _last < std::chrono::milliseconds(100))) return;
  _last = now;
  _shown = true;
  std::fprintf(stderr, "\r%s\033[K", ProgressText(progress, ElapsedSeconds()).c_str());
  std::fflush(stderr);
}

void ProgressLine::Finish() {
  if (_shown) std::fputs("\n", stderr);
  _shown = false;
}

}  // namespace tessel::cli
