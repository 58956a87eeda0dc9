// SPDX-License-Identifier: GPL-3.0-or-later
// Loaded before the C library (LD_PRELOAD), it lets one call of a program fail: the Nth of a kind,
// counted from the start of main. Of files only calls count that concern the current folder, or
// one that is named: a relative path, one below that folder, or what was opened so.
//
//   ORVANE_FAULT_KIND    open, read, write, stat, lock, mkdir, list, rename, remove, sync, resize,
//                        close, dup, rights, memory, or late memory: of the allocations those
//                        after the first call that concerns a file; any: all of these but for
//                        memory
//   ORVANE_FAULT_NUMBER  which one fails; 0: none
//   ORVANE_FAULT_LASTS   not empty: and all after it
//   ORVANE_FAULT_ERROR   with which errno; 0: the program is killed there
//   ORVANE_FAULT_FOLDER  the folder
//   ORVANE_FAULT_RIGHTS  not empty: no file can be given another's rights, beside that
//   ORVANE_FAULT_COUNTS  a descriptor of a file of 4 bytes, in which the calls are counted
//
// Each function stands here under its name in the C library, so the headers must not redirect any.
#undef _FORTIFY_SOURCE
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr std::size_t kMostHandles = 1024;

std::atomic<bool> is_armed = false;
const char* kind = "";
unsigned number = 0;
int error = 0;
const char* folder = "";
bool lasts = false;
bool forbids_rights = false;
std::atomic<unsigned>* counts = nullptr;
std::array<std::atomic<bool>, kMostHandles> concerned{};
std::atomic<bool> is_late = false;

const char* Setting(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

void Arm() {
  kind = Setting("ORVANE_FAULT_KIND");
  number = static_cast<unsigned>(std::atoi(Setting("ORVANE_FAULT_NUMBER")));
  error = std::atoi(Setting("ORVANE_FAULT_ERROR"));
  folder = Setting("ORVANE_FAULT_FOLDER");
  lasts = *Setting("ORVANE_FAULT_LASTS") != '\0';
  forbids_rights = *Setting("ORVANE_FAULT_RIGHTS") != '\0';
  void* const shared = mmap(nullptr, sizeof *counts, PROT_READ | PROT_WRITE, MAP_SHARED,
                            std::atoi(Setting("ORVANE_FAULT_COUNTS")), 0);
  if (shared == MAP_FAILED) {
    _exit(126);  // rather than a run without faults
  }
  counts = static_cast<std::atomic<unsigned>*>(shared);
  is_armed = true;
}

// Whether this call is the one to fail; errno says why then.
bool Fails(const char* of_kind) {
  if (forbids_rights && std::strcmp("rights", of_kind) == 0) {
    errno = EIO;
    return true;
  }
  const bool is_any = std::strcmp(kind, "any") == 0 && std::strstr(of_kind, "memory") == nullptr;
  if (!is_armed || (!is_any && std::strcmp(kind, of_kind) != 0)) {
    return false;
  }
  const unsigned count = counts->fetch_add(1) + 1;
  if (number == 0 || (lasts ? count < number : count != number)) {
    return false;
  }
  if (error == 0) {
    kill(getpid(), SIGKILL);
  }
  errno = error;
  return true;
}

bool Concerns(const char* path) {
  const std::size_t length = std::strlen(folder);
  const bool does = path != nullptr && is_armed &&
                    (*path != '/' || (length > 0 && std::strncmp(path, folder, length) == 0));
  is_late = is_late || does;
  return does;
}

bool Concerns(int handle) {
  return handle >= 0 && static_cast<std::size_t>(handle) < kMostHandles &&
         concerned[static_cast<std::size_t>(handle)];
}

bool Concerns(DIR* entries) { return Concerns(dirfd(entries)); }

int Noted(int handle, bool is_concerned) {
  if (handle >= 0 && static_cast<std::size_t>(handle) < kMostHandles) {
    concerned[static_cast<std::size_t>(handle)] = is_concerned;
  }
  return handle;
}

bool NoMemory(size_t size) {
  return size > 0 && (Fails("memory") || (is_late && Fails("late memory")));
}

template <typename Function>
Function* Real(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

mode_t ModeOf(int flags, va_list* rest) {
  return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(*rest, mode_t) : 0;
}

using Main = int(int, char**, char**);
Main* real_main = nullptr;

int ArmedMain(int count, char** arguments, char** environment) {
  Arm();
  return real_main(count, arguments, environment);
}

}  // namespace

// A function of this kind that fails with `failed` where `subject` is concerned. `promise`:
// noexcept where the headers have it.
#define FAULTY(of_kind, failed, result, name, parameters, promise, arguments, subject) \
  result name parameters promise {                                                     \
    static auto* const real = Real<result parameters>(#name);                          \
    if (Concerns(subject) && Fails(of_kind)) {                                         \
      return failed;                                                                   \
    }                                                                                  \
    return real arguments;                                                             \
  }
#define FAULTY_OPEN(name, parameters, arguments)           \
  int name parameters {                                    \
    static auto* const real = Real<int parameters>(#name); \
    const bool is_concerned = Concerns(path);              \
    if (is_concerned && Fails("open")) {                   \
      return -1;                                           \
    }                                                      \
    va_list rest;                                          \
    va_start(rest, flags);                                 \
    const mode_t mode = ModeOf(flags, &rest);              \
    va_end(rest);                                          \
    return Noted(real arguments, is_concerned);            \
  }

extern "C" {

FAULTY_OPEN(open, (const char* path, int flags, ...), (path, flags, mode))
FAULTY_OPEN(open64, (const char* path, int flags, ...), (path, flags, mode))

FAULTY("read", -1, ssize_t, read, (int handle, void* to, size_t size), , (handle, to, size), handle)
FAULTY("read", -1, ssize_t, pread, (int handle, void* to, size_t size, off_t at), ,
       (handle, to, size, at), handle)
FAULTY("write", -1, ssize_t, write, (int handle, const void* from, size_t size), ,
       (handle, from, size), handle)
FAULTY("write", -1, ssize_t, pwrite, (int handle, const void* from, size_t size, off_t at), ,
       (handle, from, size, at), handle)
FAULTY("sync", -1, int, fsync, (int handle), , (handle), handle)
FAULTY("resize", -1, int, ftruncate, (int handle, off_t size), noexcept, (handle, size), handle)

FAULTY("stat", -1, int, stat, (const char* path, struct stat* to), noexcept, (path, to), path)
FAULTY("stat", -1, int, stat64, (const char* path, struct stat64* to), noexcept, (path, to), path)
FAULTY("stat", -1, int, lstat, (const char* path, struct stat* to), noexcept, (path, to), path)
FAULTY("stat", -1, int, lstat64, (const char* path, struct stat64* to), noexcept, (path, to), path)
FAULTY("stat", -1, int, fstat, (int handle, struct stat* to), noexcept, (handle, to), handle)
FAULTY("stat", -1, int, fstat64, (int handle, struct stat64* to), noexcept, (handle, to), handle)
FAULTY("stat", -1, int, access, (const char* path, int mode), noexcept, (path, mode), path)

FAULTY("lock", -1, int, flock, (int handle, int operation), noexcept, (handle, operation), handle)
FAULTY("mkdir", -1, int, mkdir, (const char* path, mode_t mode), noexcept, (path, mode), path)
FAULTY("list", nullptr, dirent*, readdir, (DIR * entries), , (entries), entries)
FAULTY("list", nullptr, dirent64*, readdir64, (DIR * entries), , (entries), entries)
FAULTY("rename", -1, int, rename, (const char* from, const char* to), noexcept, (from, to), to)
FAULTY("remove", -1, int, remove, (const char* path), noexcept, (path), path)
FAULTY("rights", -1, int, fchmod, (int handle, mode_t mode), noexcept, (handle, mode), handle)
FAULTY("rights", -1, int, fchmodat, (int at, const char* path, mode_t mode, int flags), noexcept,
       (at, path, mode, flags), path)
FAULTY("rights", -1, int, fchown, (int handle, uid_t user, gid_t group), noexcept,
       (handle, user, group), handle)
FAULTY("rights", -1, ssize_t, fgetxattr, (int handle, const char* name, void* to, size_t size),
       noexcept, (handle, name, to, size), handle)

DIR* opendir(const char* path) {
  static auto* const real = Real<DIR*(const char*)>("opendir");
  const bool is_concerned = Concerns(path);
  if (is_concerned && Fails("list")) {
    return nullptr;
  }
  DIR* const entries = real(path);
  if (entries != nullptr) {
    Noted(dirfd(entries), is_concerned);
  }
  return entries;
}

int closedir(DIR* entries) {
  static auto* const real = Real<int(DIR*)>("closedir");
  Noted(dirfd(entries), false);
  return real(entries);
}

// What fails is closed all the same.
int close(int handle) {
  static auto* const real = Real<int(int)>("close");
  const bool is_concerned = Concerns(handle);
  Noted(handle, false);
  const int result = real(handle);
  return is_concerned && Fails("close") ? -1 : result;
}

// All commands take at most one argument of the size of a pointer.
int fcntl(int handle, int command, ...) {
  static auto* const real = Real<int(int, int, ...)>("fcntl64");
  va_list rest;
  va_start(rest, command);
  void* const argument = va_arg(rest, void*);
  va_end(rest);
  const bool is_copy = command == F_DUPFD || command == F_DUPFD_CLOEXEC;
  if (is_copy && Concerns(handle) && Fails("dup")) {
    return -1;
  }
  const int result = real(handle, command, argument);
  return is_copy ? Noted(result, Concerns(handle)) : result;
}
int fcntl64(int handle, int command, ...) {
  va_list rest;
  va_start(rest, command);
  void* const argument = va_arg(rest, void*);
  va_end(rest);
  return fcntl(handle, command, argument);
}

// These names of the C library need no looking for, which would itself ask for memory.
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* old, size_t size);

void* malloc(size_t size) noexcept { return NoMemory(size) ? nullptr : __libc_malloc(size); }
void* calloc(size_t count, size_t size) noexcept {
  return NoMemory(count * size) ? nullptr : __libc_calloc(count, size);
}
void* realloc(void* old, size_t size) noexcept {
  return NoMemory(size) ? nullptr : __libc_realloc(old, size);
}

int __libc_start_main(Main* program, int count, char** arguments, void (*start)(), void (*end)(),
                      void (*end_of_linker)(), void* stack) {
  using Start = int(Main*, int, char**, void (*)(), void (*)(), void (*)(), void*);
  real_main = program;
  return Real<Start>("__libc_start_main")(ArmedMain, count, arguments, start, end, end_of_linker,
                                          stack);
}

}  // extern "C"
