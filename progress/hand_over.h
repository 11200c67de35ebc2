#pragma once

// The thread sanitizer does not see the locks with which a Qt that it has not instrumented hands an
// event from one thread to another, and would call every queued function a race. As the last
// capture of such a function this tells it; in all other builds it is nothing.

#if defined(__SANITIZE_THREAD__)
#define MOD_PROGRESS_QT_TSAN
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define MOD_PROGRESS_QT_TSAN
#endif
#endif

#ifdef MOD_PROGRESS_QT_TSAN

#include <sanitizer/tsan_interface.h>

namespace mod_progress_qt {

class HandOver
{
public:
    HandOver() = default;

    HandOver(const HandOver& /*other*/) { __tsan_release(&s_place); }

    ~HandOver() { taken(); }

    HandOver& operator=(const HandOver&) = delete;

    /// To be called first thing by the function.
    void taken() const { __tsan_acquire(&s_place); }

private:
    static inline char s_place = 0;
};

} // namespace mod_progress_qt

#else

namespace mod_progress_qt {

class HandOver
{
public:
    void taken() const { }
};

} // namespace mod_progress_qt

#endif
