#include <gtest/gtest.h>

#include <iterator>

#include "host_environment.h"
#include "vorna/errorbase.h"
#include "vorna/formatstring.h"

namespace vorna {
namespace {

using tessel::testing::Console;

std::string Text(const String& s) {
  Result<CString> bytes = s.GetCString();
  return bytes.IsError() ? "<error>" : bytes.GetValue().GetCString();
}

// Reason 2 is unsupported: it says stop and gives the null pointer error; the others are quiet.
TEST(ErrorTest, NullReturnReasonsGiveStaticWordsAndOnlyTheUnsupportedOneSaysStop) {
  ObjectUseRecord* classes[] = {&g_NullptrErrorObject, &g_NullptrErrorObject, &g_NullptrErrorObject,
                                &g_FunctionNotImplementedErrorObject, &g_FunctionNotImplementedErrorObject};
  Console::Clear();
  for (Int reason = 0; reason < Int(std::size(classes)); ++reason)
    EXPECT_TRUE(IsErrorOfClass(PrivateGetNullReturnError(reason), *classes[reason])) << reason;
  EXPECT_EQ(PrivateGetNullReturnError(0), StaticErrorWord(g_NullptrErrorObject));
  ASSERT_EQ(Console::Lines().size(), 1u);
  EXPECT_EQ(Console::Lines()[0].rfind("CRITICAL: Stop: reason not supported by PrivateGetNullReturnError. [", 0), 0u);
}

TEST(ErrorTest, CreateErrorMapsNumbersToClassesWithThePrivateLocation) {
  struct {
    Int number;
    ObjectUseRecord* cls;
  } cases[] = {{0, &g_OutOfMemoryErrorObject},   {1, &g_NullptrErrorObject},
               {2, &g_IllegalArgumentErrorObject}, {3, &g_IllegalStateErrorObject},
               {4, &g_FunctionNotImplementedErrorObject}, {9, &g_UnknownErrorObject}};
  for (auto& c : cases) {
    SourceLocation where{"here.cpp", 40 + c.number, 0};
    ErrorWord word = CreateError(where, c.number).word;
    EXPECT_TRUE(IsErrorOfClass(word, *c.cls)) << c.number;
    EXPECT_NE(word, StaticErrorWord(*c.cls)) << "a raised error is a private copy";
    EXPECT_EQ(ErrorOf(word).GetLocation().line, 40 + c.number);
    EXPECT_EQ(ErrorOf(StaticErrorWord(*c.cls)).GetLocation().line, 0) << "the prototype stays untouched";
  }
}

TEST(ErrorTest, RaisedMessageAndClassReadBack) {
  String message = FormatToString("Error 0x@{x}: @", Int32(0x80070002), String::FromLiteral("not found"));
  ErrorWord word = RaiseError(g_IllegalStateErrorObject, VORNA_SOURCE_LOCATION, &message).word;
  EXPECT_EQ(Text(ErrorOf(word).GetMessage()), "Error 0x80070002: not found");
  EXPECT_EQ(Text(ErrorOf(word).ToString(nullptr)), "vorna.IllegalStateErrorObjectClass: Error 0x80070002: not found");
  EXPECT_STREQ(GetErrorClassId(word)->GetCString(), "vorna.IllegalStateErrorObjectClass");
}

TEST(ErrorTest, OutOfMemoryNeedsNoMemory) {
  vorna::host::FailAllocationsAfter(0);
  ErrorWord word = CreateError(VORNA_SOURCE_LOCATION, 0).word;
  void* block = System::Alloc(16, VORNA_SOURCE_LOCATION);
  vorna::host::FailAllocationsAfter(-1);
  EXPECT_EQ(block, nullptr);
  EXPECT_TRUE(IsErrorOfClass(word, g_OutOfMemoryErrorObject));
}

TEST(ErrorTest, RaisedWordsOutliveLaterRaisesOnTheSameThread) {
  ErrorWord first = CreateError({"first.cpp", 1, 0}, 3).word;
  for (int i = 0; i < 32; ++i) (void)CreateError({"later.cpp", 2, 0}, 2);
  EXPECT_STREQ(ErrorOf(first).GetLocation().file, "first.cpp");
}

TEST(FormatTest, PlaceholdersTakeArgumentsInOrder) {
  Id id("net.vorna.fileformat.movie.avi");
  EXPECT_EQ(Text(FormatToString("Component @ has members, but CopyFrom is not implemented!", id)),
            "Component net.vorna.fileformat.movie.avi has members, but CopyFrom is not implemented!");
  EXPECT_EQ(Text(FormatToString("@ and @{x} and @@", Int32(-1), Int32(-1))), "-1 and FFFFFFFF and @");
  EXPECT_EQ(Text(FormatToString("@{x}", UInt32(255))), "FF");
  EXPECT_EQ(Text(FormatToString("missing @ @", Int32(1))), "missing 1 ");
  ObjectInterface none;
  EXPECT_EQ(Text(FormatToString("[@]", none)), "[nullptr]");
}

}  // namespace
}  // namespace vorna
