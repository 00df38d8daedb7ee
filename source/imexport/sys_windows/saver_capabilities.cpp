#include "saver_capabilities.h"

#include "vorna/datatypelib.h"
#include "vorna/mediasession_keys.h"

namespace tessel {

using namespace vorna;

Data SaverCapability(const ConstDataPtr& key, const DataType& bitDepth, Bool systemOptions) {
  const InternedId* id = key.As<InternedId>();
  if (!id || !id->IsSet()) return Data();
  if (*id == g_mediaOutputUrlSupportsImage || *id == g_mediaOutputUrlSupportsVideo ||
      *id == g_mediaOutputUrlSupportsAudio)
    return MakeData(Bool(true));
  if (systemOptions && *id == g_mediaOutputUrlSupportsSystemoptions) return MakeData(Bool(true));
  if (*id == g_mediaOutputUrlMaximalalphachannels || *id == g_mediaOutputUrlMaximallayerresolution)
    return MakeData(Int64(0));
  if (*id == g_mediaOutputUrlMaximalimageresolution) return MakeData(MAXIMAL_IMAGE_RESOLUTION);
  if (*id == g_mediaOutputUrlBitdepthsimage) return MakeBlockData<DataType>({&bitDepth, 1});
  if (*id == g_mediaOutputUrlBitdepthslayer) return MakeBlockData<DataType>({});
  if (*id == g_mediaOutputUrlEmbedColorprofile) return MakeData(Bool(false));
  return Data();
}

}  // namespace tessel
