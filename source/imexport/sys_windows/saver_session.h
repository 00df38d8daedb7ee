// The steps every movie saver takes as the last converter of a media session: its one
// input converter, the streams it writes, the format of each frame with the size checks,
// the colour profile it asks for and the delegate through which its writer fetches rows.
// The session drives a saver on one thread; only the delegate is called from the row
// loop's threads, and it reads nothing that changes during a frame.
#pragma once

#include "vorna/baseref.h"
#include "vorna/datadictionary.h"
#include "vorna/mediasession_converter.h"
#include "vorna/mediasession_output.h"
#include "windows_mf_movie_writer.h"

namespace tessel {

using ImageExportStream = vorna::StrongRef<vorna::MediaStreamImageDataExportInterface>;
using AudioExportStream = vorna::StrongRef<vorna::MediaStreamAudioDataExportInterface>;

// The published file format a saver names; null while it is not available.
vorna::ObjectRef PublishedSaverFormat(vorna::ObjectUseRecord& use);

// The one input converter of a call; an illegal-state error without a message for any
// other count.
vorna::Result<vorna::MediaConverterInterface> SingleInput(const vorna::ConverterBlock& inputs);

// What Analyze finds among the input's streams; the saver's own fields.
struct SaverStreams {
  ImageExportStream& image;
  AudioExportStream& audio;
  vorna::Float64& fps;
  vorna::DataDictionary& settings;
};

// Takes the first image stream of type 1 that none is taken before (with its frame rate
// and export settings) and the first audio stream, and subscribes each with its selected
// format. "MEDIAFORMAT::VIDEO::FPS is missing." for an image stream without a rate, "no
// image stream(s) found." when none is there.
vorna::Result<void> PickExportStreams(const vorna::MediaConverterInterface& input, const SaverStreams& streams);

// The format of one frame as its properties give it.
struct FrameFormat {
  vorna::Int width = 0;
  vorna::Int height = 0;
  vorna::Float64 aspect = 1.0;
  vorna::PixelFormat pixelFormat;
  vorna::ColorProfile colorProfile;
};

// Reads the frame's format and checks its size against the saver's own
// maximalimageresolution: "resolution must not be 0." and "Maximum resolution exceeded.".
vorna::Result<FrameFormat> ReadFrameFormat(const vorna::MediaStreamPropertiesInterface& properties,
                                           const vorna::ObjectInterface& saver);

// sRGB, unless the settings hand frames over in their own profile.
vorna::ColorProfile ProfileToAsk(const vorna::DataDictionary& settings, const vorna::ColorProfile& frameProfile);

// Rows of the current frame from stream, in the format the writer asks for, converted to
// profile. properties and stream must outlive the delegate.
vorna::Result<GetPixelsDelegate> MakeGetPixels(const ImageExportStream& stream,
                                               const vorna::MediaStreamPropertiesInterface& properties,
                                               const vorna::ColorProfile& profile);

}  // namespace tessel
