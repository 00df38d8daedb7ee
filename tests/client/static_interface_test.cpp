#include "vorna/translationunit.h"

#include <gtest/gtest.h>

#include "host_environment.h"
#include "vorna/errorbase.h"
#include "vorna/staticinterface.h"

namespace vorna {

// An interface no host serves.
class MissingInterface {
 public:
  static constexpr const Char* ID = "net.vorna.test.Missing#1";
  static constexpr Int COUNT = 3;
  struct Table {
    Result<Int> (*Compute)(Int value);
    Int (*Count)();
    void (*Poke)();
  };
  static constexpr UChar RETURN_CLASSES[COUNT] = {5, 2, 0};
  static Table _table;
  static StaticInterfaceRecord _record;
};
VORNA_DEFINE_STATIC_INTERFACE(MissingInterface, nullptr, &MissingInterface::Table::Compute);

// An interface no host serves, with a local fallback.
class FallbackInterface {
 public:
  static constexpr const Char* ID = "net.vorna.test.WithFallback#1";
  static constexpr Int COUNT = 1;
  struct Table {
    Int (*Answer)(Int value);
  };
  static constexpr UChar RETURN_CLASSES[COUNT] = {5};
  static Table _table;
  static StaticInterfaceRecord _record;
};
namespace {
Int LocalAnswer(Int value) { return value + 1; }
void FillLocal(void** table) { reinterpret_cast<FallbackInterface::Table*>(table)->Answer = &LocalAnswer; }
}  // namespace
VORNA_DEFINE_STATIC_INTERFACE(FallbackInterface, &FillLocal, &FallbackInterface::Table::Answer);

namespace {

using tessel::testing::Console;

TEST(StaticInterfaceTest, UnresolvableCallSaysSoInThreeLinesAndGivesTheNullResult) {
  Console::Clear();
  Result<Int> result = MissingInterface::_table.Compute(7);
  ASSERT_TRUE(result.IsError());
  EXPECT_TRUE(IsErrorOfClass(result.GetError(), g_NullptrErrorObject));
  EXPECT_EQ(result.GetValue(), 0);
  auto lines = Console::Lines();
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_EQ(lines[0], "Method invocation of unresolvable interface ");
  EXPECT_EQ(lines[1], "net.vorna.test.Missing#1\n");
  EXPECT_EQ(lines[2].rfind("CRITICAL: Stop [staticinterface.cpp(", 0), 0u);
  EXPECT_NE(lines[3].find("Stop: reason not supported by PrivateGetNullReturnError."), std::string::npos);
}

TEST(StaticInterfaceTest, CommonStubsGiveNullValuesQuietly) {
  Console::Clear();
  EXPECT_EQ(MissingInterface::_table.Count(), 0);
  MissingInterface::_table.Poke();
  EXPECT_TRUE(Console::Lines().empty());
}

TEST(StaticInterfaceTest, FallbackFillsTheTableWithoutAHost) {
  Console::Clear();
  EXPECT_EQ(FallbackInterface::_table.Answer(41), 42);
  EXPECT_EQ(FallbackInterface::_table.Answer(1), 2);
  EXPECT_TRUE(Console::Lines().empty());
}

TEST(StaticInterfaceTest, ServedInterfacesCallTheHostDirectly) {
  EXPECT_TRUE(System::_record.IsResolved());
  void* block = System::Alloc(8, VORNA_SOURCE_LOCATION);
  EXPECT_NE(block, nullptr);
  System::Free(block);
  for (Int i = 0; i < System::COUNT; ++i) EXPECT_EQ(System::_record.hashes[i], SignatureHash(System::ID, i));
}

}  // namespace
}  // namespace vorna
