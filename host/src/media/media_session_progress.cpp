#include "vorna/translationunit.h"

#include "media/media_session_progress.h"

#include <vector>

#include "vorna/component.h"

namespace vorna::host {

namespace {

constexpr SourceLocation PROGRESS_LOCATION{"host/sessionprogress", 1, 0};

class MediaSessionProgressComponent : public Component<MediaSessionProgressComponent> {
 public:
  static ClassRecord _classRecord;

  Result<void> InitProgress() {
    _jobs.clear();
    _stopped = false;
    return OK;
  }
  Result<Int> AddProgressJob(Float64 weight) {
    if (!(weight > 0)) return RaiseError(g_IllegalArgumentErrorObject, PROGRESS_LOCATION);
    _jobs.push_back({weight, 0.0});
    return Int(_jobs.size()) - 1;
  }
  Result<void> SetProgressAndCheckBreak(Int job, Float64 done) {
    if (job < 0 || job >= Int(_jobs.size())) return RaiseError(g_IllegalArgumentErrorObject, PROGRESS_LOCATION);
    _jobs[size_t(job)].done = done < 0 ? 0.0 : (done > 1 ? 1.0 : done);
    if (!_stopped && observer && !observer(WholeDone())) _stopped = true;
    if (!_stopped) return OK;
    String message = String::FromLiteral("Cancelled.");
    return RaiseError(g_ThreadCancelledErrorObject, PROGRESS_LOCATION, &message);
  }

  ProgressObserver observer;

 private:
  struct Job {
    Float64 weight;
    Float64 done;
  };

  Float64 WholeDone() const {
    Float64 weights = 0;
    Float64 done = 0;
    for (const Job& job : _jobs) {
      weights += job.weight;
      done += job.weight * job.done;
    }
    return weights > 0 ? done / weights : 0.0;
  }

  std::vector<Job> _jobs;
  Bool _stopped = false;
};

}  // namespace

VORNA_COMPONENT_CLASS(MediaSessionProgressComponent, g_mediaSessionProgressClass, "vorna.MediaSessionProgressObject",
                      "", nullptr, &MediaSessionProgressInterface::_record,
                      VORNA_OVERRIDE(MediaSessionProgress, InitProgress),
                      VORNA_OVERRIDE(MediaSessionProgress, AddProgressJob),
                      VORNA_OVERRIDE(MediaSessionProgress, SetProgressAndCheckBreak));

Result<StrongRef<MediaSessionProgress>> CreateMediaSessionProgress(ProgressObserver observer) {
  VORNA_ASSIGN_OR_RETURN(ObjectRef object,
                         CreateObjectOfClass(GetDefinedClass(g_mediaSessionProgressClass), PROGRESS_LOCATION));
  GetComponent<MediaSessionProgressComponent>(object)->observer = std::move(observer);
  return StrongRef<MediaSessionProgress>(Cast<MediaSessionProgress>(object));
}

}  // namespace vorna::host
