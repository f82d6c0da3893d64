// SPDX-License-Identifier: Apache-2.0
// Tells ThreadSanitizer of the order that the toolkit's locks give. Debian's toolkit is not
// instrumented: without this each use of these classes is reported as a race although there is
// none, and suppressing by library name would hide real races in slots that it calls. Test
// programs are linked with --wrap for each symbol below; see tests/CMakeLists.txt.
#if defined(__SANITIZE_THREAD__)

extern "C" {
void __tsan_acquire(void *);
void __tsan_release(void *);

// QSemaphore
void __real__ZN10QSemaphore7acquireEi(void *, int);
void __wrap__ZN10QSemaphore7acquireEi(void *self, int n)
{
    __real__ZN10QSemaphore7acquireEi(self, n);
    __tsan_acquire(self);
}
bool __real__ZN10QSemaphore10tryAcquireEi(void *, int);
bool __wrap__ZN10QSemaphore10tryAcquireEi(void *self, int n)
{
    bool const taken = __real__ZN10QSemaphore10tryAcquireEi(self, n);
    __tsan_acquire(self);
    return taken;
}
bool __real__ZN10QSemaphore10tryAcquireEii(void *, int, int);
bool __wrap__ZN10QSemaphore10tryAcquireEii(void *self, int n, int timeout)
{
    bool const taken = __real__ZN10QSemaphore10tryAcquireEii(self, n, timeout);
    __tsan_acquire(self);
    return taken;
}
void __real__ZN10QSemaphore7releaseEi(void *, int);
void __wrap__ZN10QSemaphore7releaseEi(void *self, int n)
{
    __tsan_release(self);
    __real__ZN10QSemaphore7releaseEi(self, n);
}
}

#endif
