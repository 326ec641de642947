/*
 * Makes chosen system calls about files fail, or do less than they were asked for. A filter of the
 * kernel hands each such call of the process to us as a signal, also those that the C library makes
 * for its own; so none is missed. The call is then made here, from the one place that the filter
 * lets through, or not at all.
 */
#define _GNU_SOURCE
#include <errno.h>
#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <signal.h>
#include <stddef.h>
#include <string.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <ucontext.h>

#include "forkserver.h"

enum { half = -1, onebyte = -2 }; /* in place of an error: a call that does less */
enum { mostcalls = 4096 };

/* The calls that are counted. */
static const int counted[] = {
#ifdef SYS_open
    SYS_open,       SYS_stat,      SYS_lstat,     SYS_rename,     SYS_unlink,     SYS_mkdir,
    SYS_readlink,   SYS_access,    SYS_dup2,      SYS_poll,
#endif
    SYS_openat,     SYS_read,      SYS_write,     SYS_readv,      SYS_writev,     SYS_close,
    SYS_fsync,      SYS_fdatasync, SYS_renameat2, SYS_newfstatat, SYS_fstat,      SYS_statx,
    SYS_fchmod,     SYS_fchown,    SYS_unlinkat,  SYS_mkdirat,    SYS_readlinkat, SYS_faccessat,
    SYS_faccessat2, SYS_dup3,      SYS_dup,       SYS_fcntl,      SYS_getcwd,     SYS_chdir,
    SYS_getdents64, SYS_ftruncate, SYS_ppoll,
};
enum { kinds = sizeof counted / sizeof *counted };

/* The numbers of the calls of a run, in their order. Shared as the report is. */
static int32_t* journal;
static int counting;

/* Makes a call from the place that the filter knows by the address after it. */
long prove_systemcall(long number, const long* arguments);
extern const char prove_aftercall[];
#if defined(__x86_64__)
__asm__(
    ".text\n.globl prove_systemcall, prove_aftercall\nprove_systemcall:\n"
    "mov %rdi, %rax\nmov %rsi, %r11\nmov 0(%r11), %rdi\nmov 8(%r11), %rsi\nmov 16(%r11), %rdx\n"
    "mov 24(%r11), %r10\nmov 32(%r11), %r8\nmov 40(%r11), %r9\nsyscall\nprove_aftercall:\nret\n");
#elif defined(__aarch64__)
__asm__(
    ".text\n.globl prove_systemcall, prove_aftercall\nprove_systemcall:\n"
    "mov x8, x0\nmov x9, x1\nldp x0, x1, [x9]\nldp x2, x3, [x9, 16]\nldp x4, x5, [x9, 32]\nsvc 0\n"
    "prove_aftercall:\nret\n");
#else
#error "the system call of this processor is not known here"
#endif

static long* registersof(ucontext_t* context, long* number, long* arguments) {
#if defined(__x86_64__)
  static const int order[] = {REG_RDI, REG_RSI, REG_RDX, REG_R10, REG_R8, REG_R9};
  greg_t* const all = context->uc_mcontext.gregs;
  *number = (long)all[REG_RAX];
  for (int i = 0; i < 6; i++) arguments[i] = (long)all[order[i]];
  return (long*)&all[REG_RAX];
#else
  *number = (long)context->uc_mcontext.regs[8];
  for (int i = 0; i < 6; i++) arguments[i] = (long)context->uc_mcontext.regs[i];
  return (long*)&context->uc_mcontext.regs[0];
#endif
}

static long quietly(long number, long a, long b, long c) {
  const long arguments[6] = {a, b, c, 0, 0, 0};
  return prove_systemcall(number, arguments);
}

/* 1 if a failure has to show, as it loses what was written or may lose it; 2 if there is nobody to
 * tell, as standard error itself cannot be written; else 0. */
static int heeded(long number, long file) {
  if (number == SYS_fsync || number == SYS_fdatasync) return 1;
  if (number != SYS_close && number != SYS_write) return 0;
  if (file == STDERR_FILENO) return 2;
  struct stat status;
  const int device = quietly(SYS_fstat, file, (long)&status, 0) == 0 && S_ISCHR(status.st_mode);
  return !device && (quietly(SYS_fcntl, file, F_GETFL, 0) & O_ACCMODE) != O_RDONLY;
}

/* Nothing interrupts what the C library writes to the standard streams: the library holds such
 * signals back meanwhile, and the command has no handlers. */
static int cannotbe(long number, long file) {
  return asked.error == EINTR && number == SYS_write && file <= STDERR_FILENO;
}

static long failed(long number, const long* arguments) {
  if (cannotbe(number, arguments[0])) return prove_systemcall(number, arguments);
  told->failed++;
  if (asked.error != EINTR) told->heeded = heeded(number, arguments[0]);
  if (number == SYS_close)
    quietly(number, arguments[0], 0, 0); /* the system closes it all the same */
  return -asked.error;
}

/* A read or a write of less. */
static long lessened(long number, const long* arguments) {
  long less[6];
  memcpy(less, arguments, sizeof less);
  if (less[2] > 1) {
    told->failed++;
    less[2] = asked.error == half ? less[2] / 2 : 1;
  }
  return prove_systemcall(number, less);
}

static long answered(long number, const long* arguments) {
  if (!counting) return prove_systemcall(number, arguments);
  const int64_t place = ++told->calls;
  if (place <= mostcalls) journal[place - 1] = (int32_t)number;
  if (place < asked.first || place - asked.first >= asked.count)
    return prove_systemcall(number, arguments);
  if (asked.error > 0) return failed(number, arguments);
  return number == SYS_read || number == SYS_write ? lessened(number, arguments)
                                                   : prove_systemcall(number, arguments);
}

static void called(int signal, siginfo_t* information, void* context) {
  (void)signal;
  (void)information;
  long number = 0, arguments[6];
  long* const result = registersof(context, &number, arguments);
  *result = answered(number, arguments);
}

/* Sends the counted calls to us, except those of prove_systemcall. Gives 0 if the kernel takes the
 * filter. */
static int filtercalls(void) {
  enum { tail = 6 };
  const uint32_t place = offsetof(struct seccomp_data, instruction_pointer);
  const uint64_t ours = (uint64_t)(uintptr_t)prove_aftercall;
  const struct sock_filter last[tail] = {
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, place),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, (uint32_t)ours, 0, 2),
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, place + 4),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, (uint32_t)(ours >> 32), 1, 0),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP),
  };
  struct sock_filter filter[1 + kinds + tail + 1] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(struct seccomp_data, nr)),
  };
  for (int i = 0; i < kinds; i++)
    filter[1 + i] = (struct sock_filter)BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, (uint32_t)counted[i],
                                                 (uint8_t)(kinds - i), 0);
  memcpy(filter + 1 + kinds, last, sizeof last);
  filter[1 + kinds + tail] = last[0];
  const struct sock_fprog program = {sizeof filter / sizeof *filter, filter};
  if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) return -1;
  return prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program);
}

static void setup(void) {
  journal = mmap(NULL, mostcalls * sizeof *journal, PROT_READ | PROT_WRITE,
                 MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (journal == MAP_FAILED) _exit(125);
}

/* The journal of a run in which nothing was to fail. */
static int tellmore(int reports) {
  const size_t calls = told->calls < mostcalls ? (size_t)told->calls : mostcalls;
  const ssize_t size = (ssize_t)(asked.count == 0 ? calls * sizeof *journal : 0);
  return write(reports, journal, (size_t)size) == size ? 0 : -1;
}

static void begincounting(void) {
  struct sigaction action;
  memset(&action, 0, sizeof action);
  action.sa_sigaction = called;
  action.sa_flags = SA_SIGINFO | SA_RESTART | SA_NODEFER;
  if (sigaction(SIGSYS, &action, NULL) != 0 || filtercalls() != 0) _exit(125);
  counting = 1;
}
static void endcounting(void) {
  counting = 0;
}
