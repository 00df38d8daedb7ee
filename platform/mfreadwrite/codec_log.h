// The lines FFmpeg's libraries print about the files they read. The system's media
// libraries print nothing: a damaged frame is concealed or dropped, and the caller
// learns of what matters through statuses. So these lines are held back unless a tool
// asks for them through the platform's control door.
#pragma once

namespace tessel::platform {

// Routes FFmpeg's lines through the platform's filter; done once, before the first
// container is opened.
void TakeOverCodecLog();

void ShowCodecLog(bool show);

}  // namespace tessel::platform
