// The bare system calls and reads from which the properties come: the same files read whole but not parsed,
// the same calls, nothing kept.
#pragma once

namespace raw_reads {

void processor();
void memory();
void disk();
void network();
void misc();
void os();

}  // namespace raw_reads
