#include "tests/adapters/eds/private_eds.h"

namespace bridge {

const std::string PrivateEds::factoryService = "org.gnome.evolution.dataserver.AddressBook10";

} // namespace bridge
