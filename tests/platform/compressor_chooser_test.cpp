// ICCompressorChoose with a scripted chooser: what the chooser is shown, and how its
// answer (a pick, a changed quality, a cancel, or no chooser at all) ends up in COMPVARS.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "tessel_platform_control.h"
#include "vfw.h"

namespace {

constexpr DWORD kXvid = mmioFOURCC('x', 'v', 'i', 'd');
constexpr DWORD kMjpg = mmioFOURCC('m', 'j', 'p', 'g');
constexpr UINT kModuleFlags = ICMF_CHOOSE_KEYFRAME | ICMF_CHOOSE_DATARATE | ICMF_CHOOSE_ALLCOMPRESSORS;

// What the chooser was shown, and its answer.
struct Script {
  std::function<BOOL(TesselCompressorChoice*)> answer;
  std::string title;
  UINT flags = 0;
  std::vector<DWORD> codes;
  TesselCompressorChoice preselection{};
  std::vector<uint8_t> preselectedState;
  std::vector<uint8_t> answeredState;  // what the answer's state points at
};

BOOL Scripted(void* context, const TesselChooserRequest* request, TesselCompressorChoice* choice) {
  auto* script = static_cast<Script*>(context);
  script->title = request->title;
  script->flags = request->flags;
  for (DWORD i = 0; i < request->compressorCount; ++i) script->codes.push_back(request->compressors[i].fccHandler);
  script->preselection = request->preselection;
  const auto* state = static_cast<const uint8_t*>(request->preselection.state);
  script->preselectedState.assign(state, state + request->preselection.stateSize);
  return script->answer(choice);
}

HGLOBAL StateBlock(const std::vector<uint8_t>& bytes) {
  HGLOBAL block = GlobalAlloc(GMEM_ZEROINIT, bytes.size());
  std::memcpy(GlobalLock(block), bytes.data(), bytes.size());
  GlobalUnlock(block);
  return block;
}

std::vector<uint8_t> StateBytes(const COMPVARS& compVars) {
  const auto* bytes = static_cast<const uint8_t*>(GlobalLock(compVars.lpState));
  std::vector<uint8_t> state(bytes, bytes + compVars.cbState);
  GlobalUnlock(compVars.lpState);
  return state;
}

bool SameChoice(const COMPVARS& a, const COMPVARS& b) {
  return a.dwFlags == b.dwFlags && a.hic == b.hic && a.fccType == b.fccType && a.fccHandler == b.fccHandler &&
         a.lQ == b.lQ && a.lKey == b.lKey && a.lDataRate == b.lDataRate && a.lpState == b.lpState &&
         a.cbState == b.cbState;
}

bool HandleIsGone(HGLOBAL handle) { return GlobalSize(handle) == 0 && GetLastError() == ERROR_INVALID_HANDLE; }

class CompressorChooser : public ::testing::Test {
 protected:
  CompressorChooser() {
    compVars_.cbSize = sizeof(COMPVARS);
    TesselPlatformSetCompressorChooser(&Scripted, &script_);
  }
  ~CompressorChooser() override {
    ICCompressorFree(&compVars_);
    TesselPlatformSetCompressorChooser(nullptr, nullptr);
  }

  // The module's stored choice: xvid at quality 7500, key frames every 10, 1 kB/s,
  // three bytes of state.
  void Preselect() {
    compVars_.dwFlags = ICMF_COMPVARS_VALID;
    compVars_.fccType = ICTYPE_VIDEO;
    compVars_.fccHandler = kXvid;
    compVars_.lQ = 7500;
    compVars_.lKey = 10;
    compVars_.lDataRate = 1;
    compVars_.lpState = StateBlock({1, 2, 3});
    compVars_.cbState = 3;
  }

  BOOL Choose(UINT flags = kModuleFlags) {
    char title[] = "Compressor";
    return ICCompressorChoose(nullptr, flags, nullptr, nullptr, &compVars_, title);
  }

  Script script_;
  COMPVARS compVars_{};
};

TEST_F(CompressorChooser, TheChooserIsShownTheListThePreselectionAndTheFlags) {
  Preselect();
  script_.answer = [](TesselCompressorChoice*) { return FALSE; };
  ASSERT_FALSE(Choose());
  EXPECT_EQ(script_.title, "Compressor");
  EXPECT_EQ(script_.flags, kModuleFlags);
  std::vector<TesselCompressor> listed(TesselPlatformGetCompressors(nullptr, 0));
  TesselPlatformGetCompressors(listed.data(), DWORD(listed.size()));
  ASSERT_EQ(script_.codes.size(), listed.size());
  for (size_t i = 0; i < listed.size(); ++i) EXPECT_EQ(script_.codes[i], listed[i].fccHandler);
  EXPECT_EQ(script_.preselection.fccHandler, kXvid);
  EXPECT_EQ(script_.preselection.quality, 7500);
  EXPECT_EQ(script_.preselection.keyFrameEvery, 10);
  EXPECT_EQ(script_.preselection.dataRate, 1);
  EXPECT_EQ(script_.preselectedState, (std::vector<uint8_t>{1, 2, 3}));
}

TEST_F(CompressorChooser, APickFillsCompVarsWithAnOpenCompressorAndItsState) {
  const std::vector<uint8_t> state{9, 8};
  script_.answer = [&](TesselCompressorChoice* choice) {
    *choice = {kMjpg, 5000, 25, 800, state.data(), LONG(state.size())};
    return TRUE;
  };
  ASSERT_TRUE(Choose());
  EXPECT_EQ(script_.preselection.fccHandler, 0u) << "nothing was preselected";
  EXPECT_TRUE(compVars_.dwFlags & ICMF_COMPVARS_VALID);
  EXPECT_NE(compVars_.hic, nullptr);
  EXPECT_EQ(compVars_.fccType, ICTYPE_VIDEO);
  EXPECT_EQ(compVars_.fccHandler, kMjpg);
  EXPECT_EQ(compVars_.lQ, 5000);
  EXPECT_EQ(compVars_.lKey, 25);
  EXPECT_EQ(compVars_.lDataRate, 800);
  ASSERT_EQ(compVars_.cbState, 2);
  EXPECT_EQ(StateBytes(compVars_), state);

  HGLOBAL block = compVars_.lpState;
  ICCompressorFree(&compVars_);
  EXPECT_EQ(compVars_.hic, nullptr);
  EXPECT_EQ(compVars_.lpState, nullptr);
  EXPECT_TRUE(HandleIsGone(block));
}

TEST_F(CompressorChooser, ChangingOnlyTheQualityKeepsTheRestOfTheChoice) {
  Preselect();
  HGLOBAL stored = compVars_.lpState;
  script_.answer = [](TesselCompressorChoice* choice) {
    choice->quality = 2500;
    return TRUE;
  };
  ASSERT_TRUE(Choose());
  EXPECT_EQ(compVars_.fccHandler, kXvid);
  EXPECT_EQ(compVars_.lQ, 2500);
  EXPECT_EQ(compVars_.lKey, 10);
  EXPECT_EQ(compVars_.lDataRate, 1);
  EXPECT_EQ(StateBytes(compVars_), (std::vector<uint8_t>{1, 2, 3}));
  EXPECT_TRUE(HandleIsGone(stored)) << "the stored state is replaced by the chosen one";
}

TEST_F(CompressorChooser, WhatIsNotOfferedIsNotTaken) {
  Preselect();
  script_.answer = [](TesselCompressorChoice* choice) {
    choice->keyFrameEvery = 99;
    choice->dataRate = 99;
    return TRUE;
  };
  ASSERT_TRUE(Choose(ICMF_CHOOSE_ALLCOMPRESSORS));
  EXPECT_EQ(compVars_.lKey, 10);
  EXPECT_EQ(compVars_.lDataRate, 1);
}

// A cancel, an answer outside the list, no memory for the state and no chooser at all
// each leave COMPVARS as it was, its state included.
TEST_F(CompressorChooser, AnythingButAPickLeavesCompVarsAsItWas) {
  struct Case {
    const char* what;
    std::function<BOOL(TesselCompressorChoice*)> answer;
    bool failAlloc = false;
    bool installed = true;
  };
  const Case cases[] = {
      {"a cancel", [](TesselCompressorChoice*) { return FALSE; }},
      {"an unknown code",
       [](TesselCompressorChoice* choice) {
         choice->fccHandler = mmioFOURCC('a', 'b', 'c', 'd');
         return TRUE;
       }},
      {"no memory for the state", [](TesselCompressorChoice*) { return TRUE; }, true},
      {"no chooser", nullptr, false, false},
  };
  for (const Case& c : cases) {
    Preselect();
    COMPVARS before = compVars_;
    script_.answer = c.answer;
    TesselPlatformSetCompressorChooser(c.installed ? &Scripted : nullptr, &script_);
    if (c.failAlloc) TesselPlatformFailNextGlobalAlloc(ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_FALSE(Choose()) << c.what;
    TesselPlatformFailNextGlobalAlloc(0);
    EXPECT_TRUE(SameChoice(before, compVars_)) << c.what;
    EXPECT_EQ(StateBytes(compVars_), (std::vector<uint8_t>{1, 2, 3})) << c.what;
    ICCompressorFree(&compVars_);
  }
}

}  // namespace
