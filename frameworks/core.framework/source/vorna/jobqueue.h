// vorna.JobQueueInterface#1: the queues of the host's job pool. A queue is known by its
// handle; -1 is the default queue, whose threads are the pool's workers.
#pragma once

#include "vorna/staticinterface.h"

namespace vorna {

using JobQueueHandle = Int;
inline constexpr JobQueueHandle JOBQUEUE_DEFAULT = -1;

class JobQueueInterface {
 public:
  static constexpr const Char* ID = "vorna.JobQueueInterface#1";
  static constexpr Int COUNT = 12;
  using Reserved = void (*)();

  struct Table {
    // How many jobs the queue runs at a time, but no more than limit (no limit when
    // limit is 0 or less). At least 1.
    Int (*GetThreadCount)(JobQueueHandle queue, Int limit);
    Reserved reserved[11];
  };
  static constexpr UChar RETURN_CLASSES[COUNT] = {2};
  static Table _table;
  static StaticInterfaceRecord _record;

  static Int GetThreadCount(JobQueueHandle queue, Int limit) { return _table.GetThreadCount(queue, limit); }
};

}  // namespace vorna
