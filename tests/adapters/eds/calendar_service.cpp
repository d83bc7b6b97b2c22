#include "tests/adapters/eds/private_eds.h"

namespace bridge {

const std::string PrivateEds::factoryService = "org.gnome.evolution.dataserver.Calendar8";

} // namespace bridge
