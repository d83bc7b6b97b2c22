#pragma once

#include <string>

namespace bridge::office {

// Writes the settings that LibreOffice is to start with into its fresh profile: no macros, no Java, no links that are
// followed, no recovery, English of the United States.
void writeProfile(const std::string& folder);

} // namespace bridge::office
