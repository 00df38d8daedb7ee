// What every fuzz target shares: the host started once per process, with the media
// module loaded, and the one check made of every answer the module gives.
#pragma once

#include <cstdlib>

#include "vorna/errorbase.h"

namespace tessel::fuzz {

// Starts the host, serving the target's own client layer, and loads the media module.
// The console goes nowhere: diagnostic lines would only slow the fuzzer down. Called
// from LLVMFuzzerInitialize; the host stays up until the process ends, and stops then.
void StartHostWithModule();

// A failure must come as an error of a registered error class: anything else (a word
// without an error object, an object that is no error) is a finding, and aborts.
inline void RequireClearError(vorna::ErrorWord error) {
  if (!vorna::GetErrorClassId(error)) std::abort();
}

template <typename T>
void RequireClearAnswer(const vorna::Result<T>& result) {
  if (result.IsError()) RequireClearError(result.GetError());
}

}  // namespace tessel::fuzz
