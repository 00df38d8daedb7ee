// vorna.MediaSessionProgressInterface#1 as the host serves it, and its object class
// vorna.MediaSessionProgressObject. A session's driver starts a run, adds its jobs with
// their shares of the whole, and sets each job's progress; every setting reports the
// whole run's progress to the observer the driver gave, and fails with the cancelled
// error once the observer asked to stop. The observable notification of the interface
// is not served: the host's observer is the one given here.
#pragma once

#include <functional>

#include "vorna/mediasession_base.h"

namespace vorna::host {

class MediaSessionProgress : public MediaSessionProgressInterface {
 public:
  enum : Int { kInitProgress, kAddProgressJob, kSetProgressAndCheckBreak, kObservableProgressNotification };
  using MediaSessionProgressInterface::MediaSessionProgressInterface;

  // Starts a run without jobs.
  Result<void> InitProgress() const { return Invoke<&MediaSessionProgress::InitProgress, kInitProgress>(); }
  // Adds a job with its weight among the run's jobs; gives the job's number.
  Result<Int> AddProgressJob(Float64 weight) const {
    return Invoke<&MediaSessionProgress::AddProgressJob, kAddProgressJob>(weight);
  }
  // Sets the job's part done, from 0 to 1; a vorna.ThreadCancelledErrorObject when the
  // run is to stop.
  Result<void> SetProgressAndCheckBreak(Int job, Float64 done) const {
    return Invoke<&MediaSessionProgress::SetProgressAndCheckBreak, kSetProgressAndCheckBreak>(job, done);
  }
};

// Gets the whole run's part done after each setting; false asks the run to stop.
using ProgressObserver = std::function<Bool(Float64 done)>;

Result<StrongRef<MediaSessionProgress>> CreateMediaSessionProgress(ProgressObserver observer);

}  // namespace vorna::host
