#include "adapters/libreoffice/file_trouble.h"

#include <cerrno>

namespace bridge::office {

namespace {

int numberOf(int code) {
    switch (code) {
    case ENOENT:
    case ENOTDIR:
        return -43;
    case EEXIST:
        return -48;
    case ENOSPC:
    case EDQUOT:
        return -34;
    case EROFS:
        return -44;
    case EACCES:
    case EPERM:
        return -5000;
    default:
        return ioError;
    }
}

} // namespace

ScriptError fileTrouble(const std::string& what, int code) {
    return {numberOf(code), std::string(PlatformError::fromErrno(what, code).what()) + "."};
}

} // namespace bridge::office
