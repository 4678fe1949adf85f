// Input and output of the process itself.
#pragma once

namespace qrn::system {

// To be called before anything is opened. Descriptors 0 to 2 that are closed become /dev/null, so that no
// file of ours ever stands where output goes; what is printed to an output that was closed fails. A write
// that nobody reads, or that passes a limit on files, fails as any other write does (EPIPE, EFBIG) instead of
// ending the process; started programs are not affected.
void secureStandardStreams();

// Whether whoever read the standard output has gone.
bool nobodyReadsOutput();

}  // namespace qrn::system
