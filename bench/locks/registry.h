// The registry of threads that the locks and locked lists of this library need.
#pragma once

#include "vlrcomn/se_lock.h"

// Keeps the calling thread in the registry, and the registry itself.
class AttachedThread {
public:
    AttachedThread() {
        static const struct Registry {
            Registry() { orSO_ProcessAttach(); }
            ~Registry() { orSO_ProcessDetach(); }
        } registry;
        orSO_ThreadAttach();
    }
    ~AttachedThread() { orSO_ThreadDetach(); }
    AttachedThread(const AttachedThread&) = delete;
    AttachedThread& operator=(const AttachedThread&) = delete;
};
