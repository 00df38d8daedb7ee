// The compressor chooser as a dialog in text: a numbered list of the compressors (code,
// name, what each supports) with the pre-selected one marked, then a question for the
// compressor's number and, where the compressor supports them and the request offers
// them, for its quality, the distance of its key frames and its data rate. Enter keeps
// the value shown in brackets; at the first question Enter or "q" cancels, and so does
// the end of the input at any question. An answer that is no value of its question is
// asked again.
#pragma once

#include <cstdio>

#include "tessel_platform_control.h"

namespace tessel::cli {

// Reads answers from in and writes the list and the questions to out. True with choice
// filled in when the user confirmed; choice starts as request.preselection. A compressor
// other than the pre-selected one starts without the pre-selection's own state, which
// belongs to that compressor.
bool AskForCompressor(FILE* in, FILE* out, const TesselChooserRequest& request, TesselCompressorChoice& choice);

}  // namespace tessel::cli
