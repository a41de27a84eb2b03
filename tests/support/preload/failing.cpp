// SPDX-License-Identifier: GPL-3.0-or-later
// Loaded before the system's library, this is a disk that fails: the first TESSARANTH_WRITES calls that
// change a file succeed, every later one has the error TESSARANTH_ERRNO.
#include <cerrno>
#include <cstdlib>
#include <dlfcn.h>
#include <sys/stat.h>
#include <sys/types.h>

namespace {

bool isDead() {
    static const int error = std::atoi(std::getenv("TESSARANTH_ERRNO"));
    static long left = std::atol(std::getenv("TESSARANTH_WRITES"));
    if (left-- > 0)
        return false;
    errno = error;
    return true;
}

bool isFile(int handle) {
    struct stat status {};
    return fstat(handle, &status) == 0 && S_ISREG(status.st_mode);
}

template<typename Function, typename... Arguments>
auto real(const char* name, Function, Arguments... arguments) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name))(arguments...);
}

} // namespace

extern "C" {

#define FAILING(type, name, parameters, handle, ...)                                                         \
    type name parameters { return isFile(handle) && isDead() ? type(-1) : real(#name, &name, __VA_ARGS__); }

FAILING(ssize_t, write, (int file, const void* data, size_t size), file, file, data, size)
FAILING(ssize_t, pwrite, (int file, const void* data, size_t size, off_t at), file, file, data, size, at)
FAILING(ssize_t, pwrite64, (int file, const void* data, size_t size, off64_t at), file, file, data, size, at)
FAILING(int, ftruncate, (int file, off_t size), file, file, size)
FAILING(int, ftruncate64, (int file, off64_t size), file, file, size)
FAILING(int, fsync, (int file), file, file)
FAILING(int, fdatasync, (int file), file, file)

int rename(const char* from, const char* to) { return isDead() ? -1 : real("rename", &rename, from, to); }

int renameat2(int a, const char* from, int b, const char* to, unsigned int flags) {
    return isDead() ? -1 : real("renameat2", &renameat2, a, from, b, to, flags);
}
}
