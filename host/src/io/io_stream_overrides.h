// The overrides every host stream class writes for vorna.BaseStreamInterface#1 and, for
// reading streams, vorna.InputStreamInterface#1; for the list of VORNA_COMPONENT_CLASS.
#pragma once

#include "vorna/component.h"
#include "vorna/iostreams.h"

#define VORNA_BASE_STREAM_OVERRIDES                                                                 \
  VORNA_OVERRIDE(::vorna::BaseStreamInterface, GetStreamLength),                                   \
      VORNA_OVERRIDE(::vorna::BaseStreamInterface, GetPosition),                                   \
      VORNA_OVERRIDE(::vorna::BaseStreamInterface, Close),                                         \
      VORNA_OVERRIDE(::vorna::BaseStreamInterface, SeekSupported),                                 \
      VORNA_OVERRIDE(::vorna::BaseStreamInterface, Seek),                                          \
      VORNA_OVERRIDE(::vorna::BaseStreamInterface, DisableBuffering)

#define VORNA_INPUT_STREAM_OVERRIDES                                                                \
  VORNA_BASE_STREAM_OVERRIDES, VORNA_OVERRIDE(::vorna::InputStreamInterface, BytesAvailable),      \
      VORNA_OVERRIDE(::vorna::InputStreamInterface, ReadEOS),                                      \
      VORNA_OVERRIDE(::vorna::InputStreamInterface, Skip)
