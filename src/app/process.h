#pragma once

namespace bridge {

// What holds for the whole process, before anything else: a peer that hangs up is an error code and no signal, and as
// many descriptors as the system lets us have.
void prepareProcess();

} // namespace bridge
