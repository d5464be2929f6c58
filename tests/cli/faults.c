// Preloaded into the command line, makes system calls misbehave: QUILLPRESS_FAULTS lists CALL=NUMBER pairs,
// separated by commas. A positive number is the error that the call fails with; a negative one is a signal
// that comes while the call is made, which then goes on as usual. The calls are fsync, linkat, rename, and
// "nameless" for the opening of a file without a name.
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <stdarg.h>
#include <stdlib.h>
#include <string.h>
#include <sys/types.h>

// The number that stands for `call`, 0 without one.
static int faultOf(const char *call) {
  const char *rest = getenv("QUILLPRESS_FAULTS");
  const size_t length = strlen(call);
  while (rest != NULL && *rest != '\0') {
    if (strncmp(rest, call, length) == 0 && rest[length] == '=') return atoi(rest + length + 1);
    rest = strchr(rest, ',');
    if (rest != NULL) ++rest;
  }
  return 0;
}

// Whether `call` fails now, with errno set; sends the signal when there is to be one.
static int fails(const char *call) {
  const int fault = faultOf(call);
  if (fault < 0) raise(-fault);
  if (fault > 0) errno = fault;
  return fault > 0;
}

int fsync(int descriptor) {
  int (*next)(int);
  *(void **)&next = dlsym(RTLD_NEXT, "fsync");
  return fails("fsync") ? -1 : next(descriptor);
}

int rename(const char *from, const char *to) {
  int (*next)(const char *, const char *);
  *(void **)&next = dlsym(RTLD_NEXT, "rename");
  return fails("rename") ? -1 : next(from, to);
}

int linkat(int fromFolder, const char *from, int toFolder, const char *to, int flags) {
  int (*next)(int, const char *, int, const char *, int);
  *(void **)&next = dlsym(RTLD_NEXT, "linkat");
  return fails("linkat") ? -1 : next(fromFolder, from, toFolder, to, flags);
}

int open(const char *path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
  va_end(arguments);
  int (*next)(const char *, int, ...);
  *(void **)&next = dlsym(RTLD_NEXT, "open");
  const int isNameless = (flags & O_TMPFILE) == O_TMPFILE;
  return isNameless && fails("nameless") ? -1 : next(path, flags, mode);
}
