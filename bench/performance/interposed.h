#pragma once

#include "lp_recording.h"

namespace corvane::bench {

// The program's calls of the solver, which the linker leads through interposed.cpp: each is charged
// to its phase, and what lies between them to what the program does there.

// Takes every LP that the program solves; null for none.
void recordLps(LpRecording *recording);

}  // namespace corvane::bench
