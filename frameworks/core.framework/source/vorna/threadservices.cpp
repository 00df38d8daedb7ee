#include "vorna/translationunit.h"

#include "vorna/threadservices.h"

namespace vorna {

VORNA_DEFINE_STATIC_INTERFACE(ThreadServices, nullptr, &ThreadServices::Table::WaitJobGroup,
                              &ThreadServices::Table::EnqueueJob);

}  // namespace vorna
