#include "tests/shell/qt_environment.h"

namespace bridge {

namespace {

[[maybe_unused]] auto* const environment = testing::AddGlobalTestEnvironment(new QtEnvironment);

} // namespace

} // namespace bridge
