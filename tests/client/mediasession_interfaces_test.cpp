#include <gtest/gtest.h>

#include "host_environment.h"
#include "vorna/audioobject.h"
#include "vorna/fileformat.h"
#include "vorna/mediasession_output.h"

namespace vorna {
namespace {

template <typename I>
void ExpectServed(Int methods) {
  EXPECT_TRUE(I::_record.IsResolved()) << I::ID;
  EXPECT_GT(I::_record.offset, 0) << I::ID;
  EXPECT_EQ(I::_record.size, methods ? 8 + 16 * methods : 1) << I::ID;
}

TEST(MediaSessionInterfacesTest, EveryInterfaceHasItsStretchWithTheMethodsInOrder) {
  ExpectServed<MediaBaseInterface>(2);
  ExpectServed<MediaConverterInterface>(10);
  ExpectServed<MediaInputInterface>(0);
  ExpectServed<MediaOutputInterface>(4);
  ExpectServed<MediaOutputUrlInterface>(5);
  ExpectServed<MediaStreamInterface>(8);
  ExpectServed<MediaStreamImageDataImportInterface>(4);
  ExpectServed<MediaStreamImageDataExportInterface>(4);
  ExpectServed<MediaStreamAudioDataImportInterface>(4);
  ExpectServed<MediaStreamAudioDataExportInterface>(5);
  ExpectServed<MediaStreamPropertiesInterface>(2);
  ExpectServed<HierarchyObjectInterface>(27);
  ExpectServed<AudioObjectInterface>(7);
  ExpectServed<FileFormatInterface>(1);
  ExpectServed<FileFormatHandlerInterface>(4);
  EXPECT_EQ(MediaConverterInterface::kClose, 9);
  EXPECT_EQ(MediaStreamInterface::kIsSubscribed, 7);
  EXPECT_EQ(MediaOutputUrlInterface::kCheckBitmapSize, 4);
}

TEST(MediaSessionInterfacesTest, CallsOnNullReferencesNeverReachCode) {
  MediaConverterInterface converter;
  Result<void> analyzed = converter.Analyze({}, 0, 0);
  EXPECT_TRUE(IsErrorOfClass(analyzed.GetError(), g_NullptrErrorObject));
  MediaStreamInterface stream;
  EXPECT_FALSE(stream.IsSubscribed());
  EXPECT_TRUE(stream.GetSelectedFormat().IsEmpty());
}

}  // namespace
}  // namespace vorna
