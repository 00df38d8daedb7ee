// Allocation torture: the n-th allocation through the host's System fails, once, for
// n = 1, 2, ... until a run no longer reaches the n-th. A run that met the failure ends
// with the out-of-memory error, the platform's out-of-memory status, or the static
// null-reference error that a copy-on-write reference gives when no block can be had
// for it; or it gets through where the code that met it can do without that memory (a
// read-ahead that reads directly instead). None crashes, and the asan preset's leak
// check sees that none leaks. Walked for the analysis of a clip, its first frame, and
// one export; what the test itself builds (urls, requests) is built before the walk.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>

#include "fixtures.h"
#include "loaded_module.h"
#include "vorna/errorbase.h"
#include "vorna/extensionpoint.h"
#include "vorna/fileformat.h"
#include "vorna/mediasession_converter.h"
#include "vorna/referencedata.h"
#include "vorna_export.h"
#include "vorna_host.h"
#include "vorna_sinks.h"

namespace vorna {
namespace {

// More allocations than any of the walks makes: reaching it means a run that never ends.
constexpr Int MAX_POINTS = 20000;

std::string ErrorText(ErrorWord error) {
  const Id* cls = GetErrorClassId(error);
  Result<CString> message = ErrorOf(error).GetMessage().GetCString();
  return std::string(cls ? cls->GetCString() : "(no class)") + ": " +
         (message.IsError() ? "" : message.GetValue().GetCString());
}

// The out-of-memory error, E_OUTOFMEMORY of the platform turned into an error, or the
// word of a reference that could not be made writable (PrivateGetNullReturnError(1)).
bool IsOutOfMemory(ErrorWord error) {
  if (IsErrorOfClass(error, g_OutOfMemoryErrorObject)) return true;
  if (error == PrivateGetNullReturnError(1)) return true;
  return IsErrorOfClass(error, g_IllegalStateErrorObject) && ErrorText(error).find("Error 0x8007000E") != std::string::npos;
}

struct Walk {
  Int points = 0;     // allocations failed, one per run
  Int recovered = 0;  // runs that got through all the same
};

// What one run answered, told without holding on to the host's memory.
struct Run {
  bool reached = false;  // the failing allocation was asked for
  bool failed = false;
  bool outOfMemory = false;
  std::string error;
};

// Runs prepare and then, with the n-th allocation failing, tortured on what prepare
// made (n = 0: none fails). Everything the run made is gone when it returns.
template <typename STATE>
Run RunFailing(const std::function<STATE()>& prepare, const std::function<Result<void>(STATE&)>& tortured, Int n) {
  STATE state = prepare();
  const Int refused = host::GetRefusedAllocationCount();
  if (n > 0) host::FailOneAllocationAfter(n - 1);
  Result<void> result = tortured(state);
  host::FailAllocationsAfter(-1);
  Run run{host::GetRefusedAllocationCount() != refused, result.IsError(), false, ""};
  if (run.failed) run.outOfMemory = IsOutOfMemory(result.GetError()), run.error = ErrorText(result.GetError());
  return run;
}

// Fails allocation n = 1, 2, ... of a run of tortured until a run no longer reaches
// it. A first run without a failure must succeed. Leaks are the leak checker's to find:
// the host keeps each thread's last raised errors alive, so its count of live blocks
// grows with every failed run.
template <typename STATE>
Walk Torture(const std::function<STATE()>& prepare, const std::function<Result<void>(STATE&)>& tortured) {
  const Run warm = RunFailing(prepare, tortured, 0);
  EXPECT_FALSE(warm.failed) << "without a failure: " << warm.error;
  Walk walk;
  for (Int n = 1; n <= MAX_POINTS; ++n) {
    const Run run = RunFailing(prepare, tortured, n);
    if (!run.reached) {
      EXPECT_FALSE(run.failed) << "without a failure: " << run.error;
      return walk;
    }
    walk.points = n;
    if (!run.failed) ++walk.recovered;
    EXPECT_TRUE(!run.failed || run.outOfMemory) << "allocation " << n << ": " << run.error;
  }
  ADD_FAILURE() << "still allocating after " << MAX_POINTS << " allocations";
  return walk;
}

class AllocationTortureTest : public tessel::testing::WithLoadedModule<> {
 protected:
  void SetUp() override {
    WithLoadedModule::SetUp();
    ASSERT_FALSE(_clip.Set(tessel::fixtures::Path(tessel::fixtures::kMovieAac.name).c_str()).IsError());
  }

  // A new loader of the module's movie handler for the clip, as a reading session
  // makes it once the clip is detected.
  static Result<MediaConverter> NewLoader(const Url& clip) {
    StrongRef<FileFormatHandlerInterface> handler = GetObjectFromData<FileFormatHandlerInterface>(
        ExtensionPoint::FindEntry(ExtensionPoint::Find(Id("vorna.FileFormatHandlers")), Id("movie.winmf")));
    if (!handler) return RaiseError(g_IllegalStateErrorObject, VORNA_SOURCE_LOCATION);
    VORNA_ASSIGN_OR_RETURN(ObjectRef loader, handler.CreateHandler(clip));
    return MediaConverter(Cast<MediaConverterInterface>(loader));
  }

  static void Report(const char* what, const Walk& walk) {
    std::printf("%s: %lld allocation points, %lld runs got through\n", what, (long long)walk.points,
                (long long)walk.recovered);
  }

  Url _clip;
};

TEST_F(AllocationTortureTest, AnalysisOfAClip) {
  const Walk walk = Torture<int>([] { return 0; },
                                 [this](int&) -> Result<void> {
                                   VORNA_ASSIGN_OR_RETURN(MediaConverter loader, NewLoader(_clip));
                                   Result<void> analysed = loader.Analyze({}, 0, 0);
                                   (void)loader.Close({});
                                   return analysed;
                                 });
  EXPECT_GT(walk.points, 0);
  Report("analysis", walk);
}

TEST_F(AllocationTortureTest, FirstFrameOfAClip) {
  struct Prepared {
    MediaConverter loader;
    std::shared_ptr<host::ImageSink> sink;
  };
  const Walk walk = Torture<Prepared>(
      [this] {
        Prepared prepared;
        prepared.loader = NewLoader(_clip).GetValue();
        EXPECT_FALSE(prepared.loader.Analyze({}, 0, 0).IsError());
        MediaStream video = prepared.loader.GetOutputStreams(0).GetValue()[0];
        prepared.sink = host::AttachImageSink(video, "vorna.PixelFormats.RGBA:u8");
        EXPECT_FALSE(video.SubscribeStream(MakeData(Int64(1))).IsError());
        return prepared;
      },
      [](Prepared& prepared) -> Result<void> {
        VORNA_RETURN_ON_ERROR(prepared.loader.PrepareExecute({}, 0, 0));
        VORNA_RETURN_ON_ERROR(prepared.loader.Execute({}, TimeValue(0.0), 0));
        if (prepared.sink->GetFrameCount() != 1) return RaiseError(g_IllegalStateErrorObject, VORNA_SOURCE_LOCATION);
        return prepared.loader.Close({});
      });
  EXPECT_GT(walk.points, 0);
  Report("first frame", walk);
}

TEST_F(AllocationTortureTest, ExportOfTwoFrames) {
  const std::filesystem::path output = std::filesystem::temp_directory_path() / "tessel-torture-export.mp4";
  host::TestPatternOptions pattern;
  pattern.width = 64;
  pattern.height = 48;
  pattern.duration = 2 / pattern.fps;
  const Walk walk = Torture<host::ExportRequest>(
      [&] {
        host::ExportRequest request;
        request.saver = "mp4";
        EXPECT_FALSE(request.output.Set(output.c_str()).IsError());
        return request;
      },
      [&](host::ExportRequest& request) -> Result<void> {
        VORNA_ASSIGN_OR_RETURN(std::unique_ptr<host::ExportSession> session,
                               host::ExportSession::OpenTestPattern(pattern, request));
        Result<host::ExportSummary> ran = session->Run(nullptr);
        if (ran.IsError()) return ran.GetErrorResult();
        return OK;
      });
  std::filesystem::remove(output);
  EXPECT_GT(walk.points, 0);
  Report("export", walk);
}

}  // namespace
}  // namespace vorna
