// OpenCV's VideoCapture seeking to each time given and reading one frame, as an
// application would use it for frame access by time.
//   opencv_seek CLIP T1 T2 ...
// Prints one line per time: the time, the milliseconds of set-and-read, and the frame
// number read from the picture's frame code (-1 when no frame came).
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include <opencv2/videoio.hpp>

#include "frame_code.h"

int main(int argc, char** argv) {
  if (argc < 3) return std::fprintf(stderr, "usage: opencv_seek CLIP T1 ...\n"), 2;
  cv::VideoCapture capture(argv[1], cv::CAP_FFMPEG);
  if (!capture.isOpened()) return std::fprintf(stderr, "cannot open %s\n", argv[1]), 1;
  cv::Mat frame;
  for (int i = 2; i < argc; ++i) {
    double t = std::atof(argv[i]);
    auto start = std::chrono::steady_clock::now();
    capture.set(cv::CAP_PROP_POS_MSEC, t * 1000.0);
    bool got = capture.read(frame);
    double ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    int number = -1;
    if (got) {
      auto luma = [&](int x, int y) {
        const cv::Vec3b& p = frame.at<cv::Vec3b>(y, x);  // BGR
        return (114 * p[0] + 587 * p[1] + 299 * p[2]) / 1000;
      };
      number = tessel::fixtures::ReadFrameCode(luma, frame.cols, frame.rows);
    }
    std::printf("%.6f %.3f %d\n", t, ms, number);
  }
  return 0;
}
