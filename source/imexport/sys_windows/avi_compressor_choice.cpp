#include "avi_compressor_choice.h"

#include <vfw.h>
#include <windows.h>

#include <cstring>

#include "avi_settings.h"
#include "vorna/array.h"
#include "vorna/saversettings.h"

namespace tessel {

using namespace vorna;

namespace {

// The compressor a dialog opens with when the settings hold none.
void PreselectDefault(COMPVARS& choice) {
  choice.fccType = ICTYPE_VIDEO;
  choice.fccHandler = mmioFOURCC('i', 'y', 'u', 'v');
  choice.lQ = ICQUALITY_HIGH;
  choice.lKey = 10;
  choice.lDataRate = 0;
}

// The stored choice; its state goes to the dialog in memory of its own, which
// ICCompressorFree gives back.
Result<void> PreselectStored(const DataDictionary& settings, COMPVARS& choice) {
  choice.fccType = DWORD(settings.Get<Int32>(g_settingAviType, 0));
  choice.fccHandler = DWORD(settings.Get<Int32>(g_settingAviHandler, 0));
  choice.lQ = QualityToTenThousandths(settings.Get<Float64>(g_saverSettingQuality, 1.0));
  choice.lKey = settings.Get<Int32>(g_saverSettingKeyframes, 0);
  choice.lDataRate = LONG(Float32(Float64(settings.Get<BytesValue>(g_saverSettingDatarate, BytesValue{0}).bytes) * 0.001));
  const Array<Char> state = settings.Get<Array<Char>>(g_saverSettingCustomdata, Array<Char>());
  if (state.GetCount() == 0) return OK;
  HGLOBAL memory = GlobalAlloc(GMEM_ZEROINIT, SIZE_T(state.GetCount()));
  if (!memory) return RaiseError(g_OutOfMemoryErrorObject, VORNA_SOURCE_LOCATION);
  std::memcpy(GlobalLock(memory), state.ToBlock().data, size_t(state.GetCount()));
  GlobalUnlock(memory);
  choice.lpState = memory;
  choice.cbState = LONG(state.GetCount());
  return OK;
}

Result<void> WriteBack(DataDictionary& settings, const COMPVARS& choice) {
  VORNA_RETURN_ON_ERROR(settings.Set(g_settingAviType, Int32(choice.fccType)));
  VORNA_RETURN_ON_ERROR(settings.Set(g_settingAviHandler, Int32(choice.fccHandler)));
  VORNA_RETURN_ON_ERROR(settings.Set(g_saverSettingQuality, Float64(choice.lQ) / 10000.0));
  VORNA_RETURN_ON_ERROR(settings.Set(g_saverSettingKeyframes, Int32(choice.lKey)));
  VORNA_RETURN_ON_ERROR(settings.Set(g_saverSettingDatarate, BytesValue{Int64(choice.lDataRate) * 1000}));
  Array<Char> state;
  BaseArray<Char>* bytes = state.MakeWritable();
  if (!bytes) return RaiseError(g_OutOfMemoryErrorObject, VORNA_SOURCE_LOCATION);
  if (choice.lpState && choice.cbState > 0) {
    const Bool copied = bytes->Append(static_cast<const Char*>(GlobalLock(choice.lpState)), choice.cbState);
    GlobalUnlock(choice.lpState);
    if (!copied) return RaiseError(g_OutOfMemoryErrorObject, VORNA_SOURCE_LOCATION);
  }
  return settings.Set(g_saverSettingCustomdata, state);
}

// The dialog itself; what it allocated is freed on every path.
Result<Bool> RunDialog(DataDictionary& settings, HWND window, COMPVARS& choice) {
  if (!ICCompressorChoose(window, ICMF_CHOOSE_KEYFRAME | ICMF_CHOOSE_DATARATE | ICMF_CHOOSE_ALLCOMPRESSORS, nullptr,
                          nullptr, &choice, const_cast<LPSTR>("Compressor")))
    return false;
  VORNA_RETURN_ON_ERROR(WriteBack(settings, choice));
  return true;
}

}  // namespace

Result<Bool> ChooseAviCompressor(DataDictionary& settings, const GetWindowDelegate& getWindow) {
  VORNA_ASSIGN_OR_RETURN(void* window, getWindow());
  COMPVARS choice{};
  choice.cbSize = sizeof(COMPVARS);
  choice.dwFlags = ICMF_COMPVARS_VALID;
  Result<void> preselected = OK;
  if (settings.Get<Int32>(g_settingAviType).IsError())
    PreselectDefault(choice);
  else
    preselected = PreselectStored(settings, choice);
  Result<Bool> chosen = preselected.IsError() ? Result<Bool>(preselected.GetErrorResult())
                                              : RunDialog(settings, HWND(window), choice);
  ICCompressorFree(&choice);
  return chosen;
}

}  // namespace tessel
