#include "vorna/translationunit.h"

#include "vorna/jobqueue.h"

namespace vorna {

VORNA_DEFINE_STATIC_INTERFACE(JobQueueInterface, nullptr);

}  // namespace vorna
