#pragma once

#include "base/file_descriptor.h"
#include "base/platform_error.h"

#include <string>
#include <string_view>
#include <sys/stat.h>

namespace bridge {

enum class IfExists { replace, fail };

// Something has the name already, although nothing may be replaced.
class FileExistsError : public PlatformError {
public:
    using PlatformError::PlatformError;
};

// Gives the file `name` of the open folder this content, whole or not at all: a hidden temporary file beside it is
// written, flushed and renamed, then the folder is flushed. Whoever reads meanwhile, or after a crash at any moment,
// finds the old content or the new. The file gets exactly the permission bits of `mode`, whatever the umask.
//
// `name` is a single path component; a link of that name is itself replaced. Returns the file's status, read from the
// very file that was written. Throws PlatformError and leaves no temporary file when something fails; with
// IfExists::fail throws FileExistsError when `name` exists at the moment of the rename.
struct stat writeFileAtomically(int folder, const std::string& name, std::string_view content, mode_t mode,
                                IfExists ifExists);

} // namespace bridge
