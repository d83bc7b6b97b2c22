#include "app/shell/display_loss.h"

#include "base/log.h"

#include <cstdlib>

namespace bridge {

namespace {

bool isWatched = false;

void endHere() {
    if (!isWatched) return;
    log::note("The display is gone.");
    log::flush();
    std::_Exit(EXIT_FAILURE);
}

} // namespace

DisplayLoss::DisplayLoss() {
    [[maybe_unused]] static const int once = std::atexit(endHere);
    isWatched = true;
}

DisplayLoss::~DisplayLoss() {
    isWatched = false;
}

} // namespace bridge
