// Input and output streams of the file and memory handlers, read through the client
// functions the way the media module reads them.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "host_environment.h"
#include "vorna/errorbase.h"
#include "vorna/ioconnection.h"

namespace vorna {
namespace {

std::vector<UChar> Pattern(size_t size) {
  std::vector<UChar> bytes(size);
  for (size_t i = 0; i < size; ++i) bytes[i] = UChar(i * 7 + i / 251);
  return bytes;
}

Url MakeUrl(const std::string& text) {
  Url url;
  EXPECT_FALSE(url.Set(text.c_str()).IsError());
  return url;
}

std::string MessageOf(ErrorWord error) {
  Result<CString> text = ErrorOf(error).GetMessage().GetCString();
  return text.IsError() ? std::string() : text.GetValue().GetCString();
}

// The same bytes, once as a memory blob and once as a file, by the parameter.
class InputStreamTest : public ::testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    _bytes = Pattern(100003);
    if (std::string(GetParam()) == "memory") {
      _url = "memory://io-streams/pattern.bin";
      host::RegisterMemoryBlob("io-streams/pattern.bin", _bytes);
    } else {
      char pattern[] = "/tmp/vorna-io-streams-XXXXXX";
      int descriptor = mkstemp(pattern);
      ASSERT_GE(descriptor, 0);
      ASSERT_EQ(write(descriptor, _bytes.data(), _bytes.size()), ssize_t(_bytes.size()));
      close(descriptor);
      _url = pattern;
      _file = pattern;
    }
  }
  void TearDown() override {
    host::UnregisterMemoryBlob("io-streams/pattern.bin");
    if (!_file.empty()) std::filesystem::remove(_file);
  }

  InputStreamRef Open() {
    Result<InputStreamRef> stream = OpenInputStream(MakeUrl(_url), 0);
    EXPECT_FALSE(stream.IsError()) << MessageOf(stream.GetError());
    return stream.IsError() ? InputStreamRef() : stream.GetValue();
  }

  std::vector<UChar> _bytes;
  std::string _url;
  std::string _file;
};

// Everything from the position on, in chunks of chunk bytes.
std::vector<UChar> ReadToEnd(const InputStreamRef& stream, Int chunk) {
  std::vector<UChar> read;
  std::vector<UChar> buffer(size_t(chunk) + 1, 0xEE);
  for (;;) {
    Result<Int> got = stream.ReadEOS(buffer.data(), chunk);
    EXPECT_FALSE(got.IsError());
    if (got.IsError() || got.GetValue() == 0) return read;
    EXPECT_LE(got.GetValue(), chunk);
    EXPECT_EQ(buffer[size_t(chunk)], 0xEE) << "wrote behind the requested count";
    read.insert(read.end(), buffer.begin(), buffer.begin() + got.GetValue());
  }
}

TEST_P(InputStreamTest, ReadsToTheEndInOddChunks) {
  InputStreamRef stream = Open();
  ASSERT_TRUE(stream);
  EXPECT_TRUE(stream.SeekSupported());
  EXPECT_EQ(stream.GetStreamLength().GetValue(), Int64(_bytes.size()));
  EXPECT_EQ(stream.BytesAvailable().GetValue(), Int64(_bytes.size()));
  EXPECT_TRUE(ReadToEnd(stream, 997) == _bytes);
  EXPECT_EQ(stream.GetPosition().GetValue(), Int64(_bytes.size()));
  EXPECT_EQ(stream.BytesAvailable().GetValue(), 0);
  UChar byte = 0;
  Result<Int> atEnd = stream.ReadEOS(&byte, 1);
  EXPECT_FALSE(atEnd.IsError());
  EXPECT_EQ(atEnd.GetValue(), 0);
}

TEST_P(InputStreamTest, SeeksAbsolutelyAndReadsShortAtTheEnd) {
  InputStreamRef stream = Open();
  ASSERT_TRUE(stream);
  ASSERT_FALSE(stream.Seek(54321).IsError());
  EXPECT_EQ(stream.GetPosition().GetValue(), 54321);
  std::vector<UChar> part(100);
  ASSERT_EQ(stream.ReadEOS(part.data(), 100).GetValue(), 100);
  EXPECT_TRUE(std::equal(part.begin(), part.end(), _bytes.begin() + 54321));

  ASSERT_FALSE(stream.Skip(1000).IsError());
  EXPECT_EQ(stream.GetPosition().GetValue(), 55421);

  Int64 length = Int64(_bytes.size());
  ASSERT_FALSE(stream.Seek(length - 3).IsError());
  EXPECT_EQ(stream.ReadEOS(part.data(), 100).GetValue(), 3) << "a short read is how the end shows";
  EXPECT_TRUE(std::equal(part.begin(), part.begin() + 3, _bytes.end() - 3));

  ASSERT_FALSE(stream.Seek(length + 4096).IsError()) << "behind the end is a place too";
  EXPECT_EQ(stream.ReadEOS(part.data(), 100).GetValue(), 0);
  EXPECT_EQ(stream.BytesAvailable().GetValue(), 0);

  ASSERT_FALSE(stream.Seek(0).IsError());
  EXPECT_TRUE(ReadToEnd(stream, 65536) == _bytes);
  EXPECT_TRUE(IsErrorOfClass(stream.Seek(-1).GetError(), g_IllegalArgumentErrorObject));
}

TEST_P(InputStreamTest, CloseTwiceThenEverythingFails) {
  InputStreamRef stream = Open();
  ASSERT_TRUE(stream);
  EXPECT_FALSE(stream.Close().IsError());
  EXPECT_FALSE(stream.Close().IsError());
  UChar byte = 0;
  Result<Int> read = stream.ReadEOS(&byte, 1);
  EXPECT_TRUE(IsErrorOfClass(read.GetError(), g_IoErrorObject));
  EXPECT_NE(MessageOf(read.GetError()).find("closed"), std::string::npos);
  EXPECT_TRUE(stream.GetPosition().IsError());
  EXPECT_TRUE(stream.GetStreamLength().IsError());
}

INSTANTIATE_TEST_SUITE_P(Schemes, InputStreamTest, ::testing::Values("memory", "file"));

TEST(MemoryStreamTest, BlobUnregisteredWhileOpenStillReads) {
  std::vector<UChar> bytes = Pattern(4099);
  host::RegisterMemoryBlob("io-streams/short-lived", bytes);
  Url url = MakeUrl("memory://io-streams/short-lived");
  Result<InputStreamRef> stream = OpenInputStream(url, 0);
  ASSERT_FALSE(stream.IsError());
  ASSERT_TRUE(host::UnregisterMemoryBlob("io-streams/short-lived"));
  EXPECT_FALSE(host::UnregisterMemoryBlob("io-streams/short-lived"));
  host::RegisterMemoryBlob("io-streams/short-lived", {1, 2, 3});
  EXPECT_TRUE(ReadToEnd(stream.GetValue(), 10) == bytes) << "the stream keeps the bytes it opened";
  ASSERT_TRUE(host::UnregisterMemoryBlob("io-streams/short-lived"));

  Result<InputStreamRef> again = OpenInputStream(url, 0);
  EXPECT_TRUE(IsErrorOfClass(again.GetError(), g_IoErrorObject));
  EXPECT_EQ(MessageOf(again.GetError()), "Cannot open memory://io-streams/short-lived: no such blob");
}

// One thread replaces and removes a blob while others open and read it: each stream
// reads one whole version or its open fails, never a mixture.
TEST(MemoryStreamTest, BlobsChangeWhileOtherThreadsRead) {
  const std::vector<UChar> first(3000, 0x11), second(5000, 0x22);
  std::atomic<Bool> done{false};
  std::thread writer([&] {
    for (int i = 0; i < 300; ++i) {
      host::RegisterMemoryBlob("io-streams/changing", i % 2 ? first : second);
      if (i % 3 == 0) host::UnregisterMemoryBlob("io-streams/changing");
    }
    done = true;
  });
  auto reader = [&] {
    Url url = MakeUrl("memory://io-streams/changing");
    while (!done) {
      Result<InputStreamRef> stream = OpenInputStream(url, 0);
      if (stream.IsError()) continue;
      std::vector<UChar> bytes = ReadToEnd(stream.GetValue(), 777);
      EXPECT_TRUE(bytes == first || bytes == second);
    }
  };
  std::thread readerA(reader), readerB(reader);
  writer.join();
  readerA.join();
  readerB.join();
  host::UnregisterMemoryBlob("io-streams/changing");
}

class FileOutputStreamTest : public ::testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/vorna-io-output-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    _directory = pattern;
  }
  void TearDown() override { std::filesystem::remove_all(_directory); }
  std::string _directory;
};

TEST_F(FileOutputStreamTest, WritesSeeksAndReadsBack) {
  Url url = MakeUrl(_directory + "/written.bin");
  Result<OutputStreamRef> output = OpenOutputStream(url, 0);
  ASSERT_FALSE(output.IsError()) << MessageOf(output.GetError());
  std::vector<UChar> bytes = Pattern(10000);
  ASSERT_FALSE(output.GetValue().Write(bytes.data(), Int(bytes.size())).IsError());
  EXPECT_EQ(output.GetValue().GetPosition().GetValue(), 10000);
  ASSERT_FALSE(output.GetValue().Seek(10).IsError());
  const UChar patch[] = {0xA1, 0xA2};
  ASSERT_FALSE(output.GetValue().Write(patch, 2).IsError());
  ASSERT_FALSE(output.GetValue().Flush().IsError());
  EXPECT_EQ(output.GetValue().GetStreamLength().GetValue(), 10000);
  ASSERT_FALSE(output.GetValue().Close().IsError());
  EXPECT_TRUE(output.GetValue().Write(patch, 2).IsError());

  bytes[10] = 0xA1;
  bytes[11] = 0xA2;
  Result<InputStreamRef> input = OpenInputStream(url, 0);
  ASSERT_FALSE(input.IsError());
  EXPECT_TRUE(ReadToEnd(input.GetValue(), 333) == bytes);
}

// Offsets beyond 32 bits, in a sparse file that costs no disk space.
TEST_F(FileOutputStreamTest, PositionsBeyondFourGigabytes) {
  std::string path = _directory + "/sparse.bin";
  const Int64 tail = (Int64(5) << 30) + 7;
  int descriptor = open(path.c_str(), O_CREAT | O_WRONLY, 0600);
  ASSERT_GE(descriptor, 0);
  const UChar marker[] = {'e', 'n', 'd'};
  ASSERT_EQ(pwrite(descriptor, marker, 3, off_t(tail)), 3);
  close(descriptor);

  Result<InputStreamRef> input = OpenInputStream(MakeUrl(path), 0);
  ASSERT_FALSE(input.IsError());
  EXPECT_EQ(input.GetValue().GetStreamLength().GetValue(), tail + 3);
  ASSERT_FALSE(input.GetValue().Seek(tail - 1).IsError());
  UChar read[8] = {};
  ASSERT_EQ(input.GetValue().ReadEOS(read, 8).GetValue(), 4);
  EXPECT_EQ(std::string(reinterpret_cast<char*>(read), 4), std::string("\0end", 4));
  EXPECT_EQ(input.GetValue().GetPosition().GetValue(), tail + 3);
}

}  // namespace
}  // namespace vorna
