// The compressor chooser's dialog in text, in-process: answers typed into it, the
// choice it hands back and what it showed. A list of its own, so that the cases do not
// depend on the platform's compressors.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "compressor_prompt.h"

namespace tessel::testing {
namespace {

constexpr DWORD kRaw = mmioFOURCC('r', 'a', 'w', ' ');
constexpr DWORD kJpeg = mmioFOURCC('j', 'p', 'e', 'g');
constexpr DWORD kMotion = mmioFOURCC('M', 'O', 'V', 'E');
constexpr DWORD kAll = VIDCF_QUALITY | VIDCF_TEMPORAL | VIDCF_CRUNCH;

const TesselCompressor kCompressors[] = {
    {kRaw, "Raw", 0}, {kJpeg, "Pictures", VIDCF_QUALITY | VIDCF_CRUNCH}, {kMotion, "Motion", kAll}};

const char kState[] = "state";

TesselChooserRequest Request(DWORD preselected, UINT flags = ICMF_CHOOSE_KEYFRAME | ICMF_CHOOSE_DATARATE) {
  return {"Compressor", flags, kCompressors, 3, {preselected, 7500, 10, 2, kState, 5}};
}

struct Dialog {
  bool confirmed = false;
  TesselCompressorChoice choice{};
  std::string shown;
};

// The dialog with typed as everything the user types before the input ends.
Dialog Ask(const TesselChooserRequest& request, std::string typed) {
  Dialog dialog;
  FILE* in = fmemopen(typed.data(), typed.size(), "r");
  char* shown = nullptr;
  size_t shownSize = 0;
  FILE* out = open_memstream(&shown, &shownSize);
  if (!in || !out) return dialog;
  dialog.confirmed = cli::AskForCompressor(in, out, request, dialog.choice);
  std::fclose(in);
  std::fclose(out);
  dialog.shown.assign(shown, shownSize);
  std::free(shown);
  return dialog;
}

TEST(CompressorPromptTest, ListsTheCompressorsWithWhatTheySupportAndMarksThePreselection) {
  Dialog dialog = Ask(Request(mmioFOURCC('m', 'o', 'v', 'e')), "q\n");
  EXPECT_NE(dialog.shown.find("Compressor\n    1  raw   Raw\n    2  jpeg  Pictures"), std::string::npos)
      << dialog.shown;
  EXPECT_NE(dialog.shown.find("Pictures                         quality, data rate\n"), std::string::npos);
  EXPECT_NE(dialog.shown.find(" *  3  MOVE  Motion                           quality, key frames, data rate\n"),
            std::string::npos)
      << "the pre-selection is found whatever the case of its code";
}

// What is asked depends on the compressor and the request; Enter keeps the value shown.
TEST(CompressorPromptTest, AsksWhatTheCompressorSupportsAndTheRequestOffers) {
  const struct {
    const char* name;
    TesselChooserRequest request;
    const char* typed;
    DWORD handler;
    LONG quality, keyFrames, dataRate;
    LONG stateSize;
  } kCases[] = {
      {"all kept", Request(kMotion), "3\n\n\n\n", kMotion, 7500, 10, 2, 5},
      {"all given", Request(kMotion), "3\n0.25\n30\n500\n", kMotion, 2500, 30, 500, 5},
      {"no key frames for an intra codec", Request(kMotion), "2\n1\n80\n", kJpeg, 10000, 10, 80, 0},
      {"nothing to ask of raw", Request(kMotion), "1\n", kRaw, 7500, 10, 2, 0},
      {"key frames not offered", Request(kMotion, ICMF_CHOOSE_DATARATE), "3\n0\n9\n", kMotion, 0, 10, 9, 5},
      {"data rate not offered", Request(kMotion, ICMF_CHOOSE_KEYFRAME), "3\n0.5\n4\n", kMotion, 5000, 4, 2, 5},
      {"blanks around answers", Request(kRaw), " 3 \n 0.5\r\n\t7\n\n", kMotion, 5000, 7, 2, 0},
  };
  for (const auto& c : kCases) {
    Dialog dialog = Ask(c.request, c.typed);
    ASSERT_TRUE(dialog.confirmed) << c.name << "\n" << dialog.shown;
    EXPECT_EQ(dialog.choice.fccHandler, c.handler) << c.name;
    EXPECT_EQ(dialog.choice.quality, c.quality) << c.name;
    EXPECT_EQ(dialog.choice.keyFrameEvery, c.keyFrames) << c.name;
    EXPECT_EQ(dialog.choice.dataRate, c.dataRate) << c.name;
    EXPECT_EQ(dialog.choice.stateSize, c.stateSize) << c.name << ": the state stays with its own compressor";
    EXPECT_EQ(dialog.choice.state, c.stateSize ? kState : nullptr) << c.name;
  }
}

TEST(CompressorPromptTest, EnterOrQAtTheFirstQuestionOrTheEndOfInputCancels) {
  for (const char* typed : {"\n", "q\n", "", "  q \n", "3\n0.5\n", "9\n"}) {
    Dialog dialog = Ask(Request(kMotion), typed);
    EXPECT_FALSE(dialog.confirmed) << "typed \"" << typed << "\"\n" << dialog.shown;
  }
}

TEST(CompressorPromptTest, AnAnswerThatIsNoValueIsAskedAgain) {
  Dialog dialog = Ask(Request(kRaw), "0\n4\nthree\n3\n1.5\n-0.1\nnan\n0.8\n-3\n2.5\n12\n9999999999\n40\n");
  ASSERT_TRUE(dialog.confirmed) << dialog.shown;
  EXPECT_EQ(dialog.choice.fccHandler, kMotion);
  EXPECT_EQ(dialog.choice.quality, 8000);
  EXPECT_EQ(dialog.choice.keyFrameEvery, 12);
  EXPECT_EQ(dialog.choice.dataRate, 40);
  auto count = [&](const std::string& text) {
    size_t found = 0;
    for (size_t at = dialog.shown.find(text); at != std::string::npos; at = dialog.shown.find(text, at + 1)) ++found;
    return found;
  };
  EXPECT_EQ(count("a number from 1 to 3, or q"), 3u);
  EXPECT_EQ(count("a number from 0 to 1"), 3u);
  EXPECT_EQ(count("a whole number, 0 or more"), 3u);
}

TEST(CompressorPromptTest, TheCompressorsOwnQualityIsShownAsSuchAndKeptOnEnter) {
  TesselChooserRequest request = Request(kMotion);
  request.preselection.quality = LONG(ICQUALITY_DEFAULT);
  Dialog dialog = Ask(request, "3\n\n\n\n");
  ASSERT_TRUE(dialog.confirmed);
  EXPECT_EQ(dialog.choice.quality, LONG(ICQUALITY_DEFAULT));
  EXPECT_NE(dialog.shown.find("Quality, 0 to 1 [the compressor's own]: "), std::string::npos) << dialog.shown;
  EXPECT_NE(Ask(Request(kMotion), "3\n").shown.find("Quality, 0 to 1 [0.75]: "), std::string::npos);
}

}  // namespace
}  // namespace tessel::testing
