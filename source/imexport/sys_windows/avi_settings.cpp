#include "avi_settings.h"

#include "setting_description.h"
#include "vorna/array.h"
#include "vorna/saversettings.h"

namespace tessel {

using namespace vorna;

namespace {

constexpr DWORD RAW_I420 = mmioFOURCC('i', 'y', 'u', 'v');
constexpr DWORD DEFAULT_BYTES_PER_SECOND = 800000;

Result<void> DescribeQuality(DataDescription& description) {
  VORNA_ASSIGN_OR_RETURN(DataDictionary entry, NewSettingEntry(g_saverSettingQuality, Float64(1.0)));
  VORNA_RETURN_ON_ERROR(entry.Set(g_dataDescriptionMinvalue, Float64(0.0)));
  VORNA_RETURN_ON_ERROR(entry.Set(g_dataDescriptionMaxvalue, Float64(1.0)));
  VORNA_RETURN_ON_ERROR(entry.Set(g_dataDescriptionUnit, Id("percent")));
  return description.Add(entry);
}

Result<void> TakeCompressorState(const DataDictionary& settings, AVICOMPRESSOPTIONS& options,
                                 BaseArray<Char>& state) {
  Result<Array<Char>> stored = settings.Get<Array<Char>>(g_saverSettingCustomdata);
  if (stored.IsError() || stored.GetValue().GetCount() == 0) return OK;
  state.Flush();
  const Block<const Char> bytes = stored.GetValue().ToBlock();
  if (!state.Append(bytes.data, bytes.count)) return RaiseError(g_OutOfMemoryErrorObject, VORNA_SOURCE_LOCATION);
  options.lpParms = state.GetData();
  options.cbParms = DWORD(state.GetCount());
  return OK;
}

}  // namespace

Int32 QualityToTenThousandths(Float64 quality) { return Int32(quality * 10000 + 0.5); }

Result<void> DescribeAviSettings(DataDescription& description) {
  VORNA_RETURN_ON_ERROR(DescribeQuality(description));
  VORNA_RETURN_ON_ERROR(DescribeFromMinimum(description, g_saverSettingDatarate, BytesValue{0}));
  VORNA_RETURN_ON_ERROR(DescribeFromMinimum(description, g_saverSettingKeyframes, Int32(0)));
  VORNA_ASSIGN_OR_RETURN(DataDictionary srgb, NewSettingEntry(g_saverSettingDisableSrgbConversion, Bool(false)));
  return description.Add(srgb);
}

Result<void> AviOptionsFromSettings(const DataDictionary& settings, AVICOMPRESSOPTIONS& options,
                                    BaseArray<Char>& state) {
  options = {};
  if (settings.Get<Int32>(g_settingAviType).IsError()) {
    options.fccHandler = RAW_I420;
    options.dwQuality = ICQUALITY_HIGH;
    options.dwBytesPerSecond = DEFAULT_BYTES_PER_SECOND;
    options.dwFlags = AVICOMPRESSF_VALID | AVICOMPRESSF_DATARATE;
    return OK;
  }
  options.fccHandler = DWORD(settings.Get<Int32>(g_settingAviHandler, 0));
  options.dwQuality = DWORD(QualityToTenThousandths(settings.Get<Float64>(g_saverSettingQuality, 1.0)));
  options.dwKeyFrameEvery = DWORD(settings.Get<Int32>(g_saverSettingKeyframes, 0));
  options.dwBytesPerSecond = DWORD(settings.Get<BytesValue>(g_saverSettingDatarate, BytesValue{0}).bytes);
  VORNA_RETURN_ON_ERROR(TakeCompressorState(settings, options, state));
  options.dwFlags = AVICOMPRESSF_VALID | (options.dwKeyFrameEvery ? AVICOMPRESSF_KEYFRAMES : 0) |
                    (options.dwBytesPerSecond ? AVICOMPRESSF_DATARATE : 0);
  return OK;
}

}  // namespace tessel
