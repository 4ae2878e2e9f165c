#pragma once

namespace corvane::lp {

// Lets the process keep memory that it has freed, up to 64 MiB of it, instead of handing it back to
// the system at once: CLP takes and frees its arrays in every solve. A setting of the C library's
// heap, where it has one, for the whole process; a later call changes nothing.
void keepFreedMemory();

}  // namespace corvane::lp
