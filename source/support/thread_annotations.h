// Says to clang's analysis what a lock guards and who holds it. Other compilers see nothing of it.
#pragma once

#if defined(__clang__)
#define VLRCOMN_THREAD_ATTRIBUTE(...) __attribute__((__VA_ARGS__))
#else
#define VLRCOMN_THREAD_ATTRIBUTE(...)
#endif

// Types: a lock, and what holds one for a scope.
#define VLRCOMN_CAPABILITY(name) VLRCOMN_THREAD_ATTRIBUTE(capability(name))
#define VLRCOMN_SCOPED_CAPABILITY VLRCOMN_THREAD_ATTRIBUTE(scoped_lockable)

// Data: what is used only under a lock, and what is pointed to and used only so.
#define VLRCOMN_GUARDED_BY(lock) VLRCOMN_THREAD_ATTRIBUTE(guarded_by(lock))
#define VLRCOMN_PT_GUARDED_BY(lock) VLRCOMN_THREAD_ATTRIBUTE(pt_guarded_by(lock))

// Functions: called under a lock, or takes it, tries to take it, gives it back.
#define VLRCOMN_REQUIRES(...) VLRCOMN_THREAD_ATTRIBUTE(requires_capability(__VA_ARGS__))
#define VLRCOMN_ACQUIRE(...) VLRCOMN_THREAD_ATTRIBUTE(acquire_capability(__VA_ARGS__))
#define VLRCOMN_TRY_ACQUIRE(...) VLRCOMN_THREAD_ATTRIBUTE(try_acquire_capability(__VA_ARGS__))
#define VLRCOMN_RELEASE(...) VLRCOMN_THREAD_ATTRIBUTE(release_capability(__VA_ARGS__))

// A function that the analysis cannot follow; a comment there says why.
#define VLRCOMN_NO_THREAD_SAFETY_ANALYSIS VLRCOMN_THREAD_ATTRIBUTE(no_thread_safety_analysis)
