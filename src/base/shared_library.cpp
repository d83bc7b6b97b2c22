#include "base/shared_library.h"

#include "base/platform_error.h"

#include <dlfcn.h>

namespace bridge {

namespace {

void* found(void* result) {
    if (!result) throw PlatformError(dlerror());
    return result;
}

} // namespace

// All that it needs is looked up now: what is missing is an error here, and not the end of the program later.
SharedLibrary::SharedLibrary(const std::string& name) : m_handle(found(dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL))) {}

SharedLibrary::Symbol SharedLibrary::operator[](const char* function) const {
    return Symbol(found(dlsym(m_handle, function)));
}

} // namespace bridge
