// A test base that loads the media module before each test and unloads it after.
// BASE is ::testing::Test or a parameterised test.
#pragma once

#include <gtest/gtest.h>

#include "vorna_host.h"

namespace tessel::testing {

template <typename BASE = ::testing::Test>
class WithLoadedModule : public BASE {
 protected:
  void SetUp() override {
    vorna::Result<vorna::host::LoadedModule*> loaded = vorna::host::LoadModule("net.vorna.tessel_reel");
    ASSERT_FALSE(loaded.IsError());
    _module = loaded.GetValue();
  }
  void TearDown() override { vorna::host::UnloadModule(_module); }

  vorna::host::LoadedModule* _module = nullptr;
};

}  // namespace tessel::testing
