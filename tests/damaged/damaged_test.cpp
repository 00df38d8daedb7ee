// Runs each line of the damaged table (damaged_table.cpp) through the loaded module as
// its own test, with its own time limit under CTest.
#include <gtest/gtest.h>

#include <cctype>

#include "damaged_table.h"
#include "loaded_module.h"
#include "vorna_host.h"

namespace tessel::damaged {

// A failure names the case by its damage rather than by the bytes of its line.
void PrintTo(const DamagedCase& c, std::ostream* out) { *out << '"' << c.damage << '"'; }

namespace {

constexpr const char* BLOB = "damaged";

class DamagedInputTest : public testing::WithLoadedModule<::testing::TestWithParam<DamagedCase>> {
 protected:
  void SetUp() override {
    WithLoadedModule::SetUp();
    vorna::Result<vorna::host::LoadedModule*> faulty = vorna::host::LoadModule("net.vorna.test.faultyio");
    ASSERT_FALSE(faulty.IsError());
    _faulty = faulty.GetValue();
  }
  void TearDown() override {
    vorna::host::UnregisterMemoryBlob(BLOB);
    vorna::host::UnloadModule(_faulty);
    WithLoadedModule::TearDown();
  }

  vorna::host::LoadedModule* _faulty = nullptr;
};

// The url that hands the blob of size bytes over with the case's fault.
std::string UrlOf(const DamagedCase& c, size_t size) {
  if (c.fault.empty()) return std::string("memory://") + BLOB;
  std::string fault = c.fault;
  if (fault == "readfail" || fault == "length") fault += "-" + std::to_string(size_t(c.at * double(size)));
  return "faulty://" + fault + "/" + BLOB;
}

TEST_P(DamagedInputTest, GivesItsAnswer) {
  const DamagedCase& c = GetParam();
  Bytes bytes = c.make();
  const std::string url = UrlOf(c, bytes.size());
  vorna::host::RegisterMemoryBlob(BLOB, std::move(bytes));
  std::string detail;
  EXPECT_EQ(ReadAsAPlayer(url, detail), c.answer) << detail;
}

// "mp4 index last cut at 1%" as Mp4IndexLastCutAt1Percent.
std::string TestName(const std::string& damage) {
  std::string name;
  bool upper = true;
  for (char ch : damage) {
    if (std::isalnum(static_cast<unsigned char>(ch))) {
      name += upper ? char(std::toupper(static_cast<unsigned char>(ch))) : ch;
      upper = false;
    } else {
      if (ch == '%') name += "Percent";
      upper = true;
    }
  }
  return name;
}

INSTANTIATE_TEST_SUITE_P(Table, DamagedInputTest, ::testing::ValuesIn(DamagedCases()),
                         [](const auto& info) { return TestName(info.param.damage); });

}  // namespace
}  // namespace tessel::damaged
