// Functions of a library that is opened when it is wanted.

#include "common/platform/shared_library.h"

#include <dlfcn.h>

namespace tarquil {

SharedLibrary::SharedLibrary(const char* file_name)
    : file(dlopen(file_name, RTLD_NOW | RTLD_LOCAL)) {}

void* SharedLibrary::address(const char* name) const {
    return file != nullptr ? dlsym(file, name) : nullptr;
}

} // namespace tarquil
