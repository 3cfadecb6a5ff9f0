#include "decoder/MemoryWatch.h"

#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <initializer_list>

// The C library's own allocator, under the names it exports for programs
// that put a layer in front of it.
extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* old, size_t size);
}

namespace {

volatile sig_atomic_t refused = 0;
volatile sig_atomic_t crashExitCode = 0;

void OnCrash(int signal) {
  if (refused && crashExitCode) ::_exit(crashExitCode);
  // Not for want of memory: the crash goes on as it would have.
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

}  // namespace

// The layer: every allocation of the helper, its libraries' and operator
// new's alike, goes through these and is noted when refused. (A library
// opened with its own symbols first binds to the C library directly; its
// refusals go unnoticed and its failures count as the file's.)
extern "C" void* malloc(size_t size) {
  void* block = __libc_malloc(size);
  if (!block && size) refused = 1;
  return block;
}

extern "C" void* calloc(size_t count, size_t size) {
  void* block = __libc_calloc(count, size);
  if (!block && count && size) refused = 1;
  return block;
}

extern "C" void* realloc(void* old, size_t size) {
  void* block = __libc_realloc(old, size);
  if (!block && size) refused = 1;
  return block;
}

namespace decoder {

bool MemoryRanOut() { return refused != 0; }

void ExitOnCrashAfterRefusal(int exitCode) {
  crashExitCode = exitCode;
  for (const int signal : {SIGSEGV, SIGBUS, SIGABRT}) std::signal(signal, OnCrash);
}

}  // namespace decoder
