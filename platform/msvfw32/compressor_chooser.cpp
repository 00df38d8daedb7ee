// ICCompressorChoose and ICCompressorFree over the installed chooser.
#include "msvfw32/compressor_chooser.h"

#include <algorithm>
#include <cstring>
#include <mutex>
#include <new>
#include <vector>

#include "msvfw32/compressor_table.h"

// An open compressor of a choice: which entry of the table it is.
struct HIC__ {
  DWORD fccHandler;
};

namespace tessel::platform {

namespace {

struct InstalledChooser {
  TesselCompressorChooser chooser = nullptr;
  void* context = nullptr;
};

std::mutex g_chooserMutex;
InstalledChooser g_installed;

InstalledChooser CurrentChooser() {
  std::lock_guard lock(g_chooserMutex);
  return g_installed;
}

// The caller's choice, or the defaults when COMPVARS holds none; its state stays locked
// while the preselection lives.
class Preselection {
 public:
  explicit Preselection(const COMPVARS& compVars) : handle_(compVars.lpState) {
    choice_ = {0, static_cast<LONG>(ICQUALITY_DEFAULT), 0, 0, nullptr, 0};
    if (!(compVars.dwFlags & ICMF_COMPVARS_VALID)) return;
    choice_ = {compVars.fccHandler, compVars.lQ, compVars.lKey, compVars.lDataRate, nullptr, 0};
    if (compVars.cbState > 0 && (choice_.state = GlobalLock(handle_))) {
      choice_.stateSize = static_cast<LONG>(std::min<SIZE_T>(compVars.cbState, GlobalSize(handle_)));
    }
  }
  ~Preselection() {
    if (choice_.state) GlobalUnlock(handle_);
  }
  Preselection(const Preselection&) = delete;
  Preselection& operator=(const Preselection&) = delete;

  const TesselCompressorChoice& Choice() const { return choice_; }

 private:
  HGLOBAL handle_;
  TesselCompressorChoice choice_;
};

// What the chooser answered, with its state copied into GlobalAlloc memory.
struct Chosen {
  const CompressorEntry* entry = nullptr;
  TesselCompressorChoice choice{};
  HGLOBAL state = nullptr;
};

// A GlobalAlloc copy of the chosen state; false when there is no memory for it.
bool CopyState(const TesselCompressorChoice& choice, HGLOBAL* state) {
  *state = nullptr;
  if (choice.stateSize <= 0 || !choice.state) return true;
  *state = GlobalAlloc(GMEM_MOVEABLE, static_cast<SIZE_T>(choice.stateSize));
  if (!*state) return false;
  std::memcpy(GlobalLock(*state), choice.state, static_cast<size_t>(choice.stateSize));
  GlobalUnlock(*state);
  return true;
}

// Shows the chooser; false for a cancel, a code that is not in the list, or no memory.
// Every compressor takes 24-bit frames, so the list is the same with and without
// ICMF_CHOOSE_ALLCOMPRESSORS.
bool AskChooser(const InstalledChooser& installed, const COMPVARS& compVars, UINT flags, const char* title,
                Chosen* chosen) {
  std::vector<TesselCompressor> offered;
  try {
    for (const CompressorEntry& entry : Compressors()) offered.push_back(entry.info);
  } catch (const std::bad_alloc&) {
    return false;
  }
  Preselection preselection(compVars);
  TesselChooserRequest request{title, flags, offered.data(), static_cast<DWORD>(offered.size()),
                               preselection.Choice()};
  chosen->choice = preselection.Choice();
  if (!installed.chooser(installed.context, &request, &chosen->choice)) return false;
  chosen->entry = FindCompressor(chosen->choice.fccHandler);
  return chosen->entry && CopyState(chosen->choice, &chosen->state);
}

LONG ValidQuality(LONG quality) {
  if (quality == static_cast<LONG>(ICQUALITY_DEFAULT)) return quality;
  return std::clamp<LONG>(quality, ICQUALITY_LOW, ICQUALITY_HIGH);
}

}  // namespace

void InstallCompressorChooser(TesselCompressorChooser chooser, void* context) {
  std::lock_guard lock(g_chooserMutex);
  g_installed = {chooser, context};
}

}  // namespace tessel::platform

using namespace tessel::platform;

extern "C" BOOL WINAPI ICCompressorChoose(HWND, UINT uiFlags, LPVOID, LPVOID, PCOMPVARS pc, LPSTR lpszTitle) {
  if (!pc || pc->cbSize != sizeof(COMPVARS)) return FALSE;
  InstalledChooser installed = CurrentChooser();
  Chosen chosen;
  if (!installed.chooser || !AskChooser(installed, *pc, uiFlags, lpszTitle, &chosen)) return FALSE;
  HIC hic = new (std::nothrow) HIC__{chosen.entry->info.fccHandler};
  if (!hic) {
    GlobalFree(chosen.state);
    return FALSE;
  }
  ICCompressorFree(pc);
  const TesselCompressorChoice& choice = chosen.choice;
  pc->dwFlags |= ICMF_COMPVARS_VALID;
  pc->hic = hic;
  pc->fccType = ICTYPE_VIDEO;
  pc->fccHandler = chosen.entry->info.fccHandler;
  pc->lQ = ValidQuality(choice.quality);
  if (uiFlags & ICMF_CHOOSE_KEYFRAME) pc->lKey = std::max<LONG>(choice.keyFrameEvery, 0);
  if (uiFlags & ICMF_CHOOSE_DATARATE) pc->lDataRate = std::max<LONG>(choice.dataRate, 0);
  pc->lpState = chosen.state;
  pc->cbState = chosen.state ? choice.stateSize : 0;
  return TRUE;
}

extern "C" void WINAPI ICCompressorFree(PCOMPVARS pc) {
  if (!pc || pc->cbSize != sizeof(COMPVARS)) return;
  delete pc->hic;
  pc->hic = nullptr;
  if (pc->lpState) GlobalFree(pc->lpState);
  pc->lpState = nullptr;
  pc->cbState = 0;
}
