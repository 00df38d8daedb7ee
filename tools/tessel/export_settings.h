// The settings of one export, settled before it runs. They come in the order they win:
// the settings file's (--settings FILE), the options' (--codec, --quality, --setting
// KEY=VALUE, ..., each typed by the saver's own description, and --compressor CODE),
// and last the answers to the compressor chooser (--choose), which opens with what the
// others set. With --settings the settled settings are written back to FILE before the
// export; a cancelled choice writes nothing.
#pragma once

#include "commands.h"
#include "saver_catalogue.h"

namespace tessel::cli {

// Fills job.request.settings. Failures: bad usage for a key or value the saver does not
// take, a compressor the platform lacks, a saver without system options for
// --compressor or --choose, --choose without a terminal, a damaged settings file; exit
// 7 when the user cancels the choice.
bool SettleSettings(const SaverInfo& saver, ConvertJob& job, Failure& failure);

}  // namespace tessel::cli
