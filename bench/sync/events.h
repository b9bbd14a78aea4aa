// Manual-reset events. Those of the monitors are a monitor and a flag, as the portability layer's own are.
#pragma once

#include "monitors.h"
#include "vlrcomn/handle.h"
#include "vlrcomn/sync.h"

#ifdef WITH_POCO
#include <Poco/Event.h>
#endif
#ifdef WITH_WINPR
#include <winpr/handle.h>
#include <winpr/synch.h>
#endif

namespace contenders {

// Broadcasts while it holds the lock.
template <typename Monitor>
class Event {
public:
    static constexpr const char* name = Monitor::name;
    void set() {
        monitor_.lock();
        flag_ = true;
        monitor_.wake_all();
        monitor_.unlock();
    }
    void reset() {
        monitor_.lock();
        flag_ = false;
        monitor_.unlock();
    }
    void wait() {
        monitor_.lock();
        while (!flag_) {
            monitor_.wait();
        }
        monitor_.unlock();
    }
    bool is_set() {
        monitor_.lock();
        const bool set = flag_;
        monitor_.unlock();
        return set;
    }

private:
    Monitor monitor_;
    bool flag_ = false;
};

class OurEvent {
public:
    static constexpr const char* name = "ours";
    OurEvent() : handle_(oruCreateEvent(nullptr, 1, 0, nullptr)) {}
    ~OurEvent() { oruCloseHandle(handle_); }
    void set() { oruSetEvent(handle_); }
    void reset() { oruResetEvent(handle_); }
    void wait() { oruWaitForSingleObject(handle_, ORU_INFINITE); }
    bool is_set() { return oruWaitForSingleObject(handle_, 0) == ORU_WAIT_SIGNALLED; }

private:
    oruHandle handle_;
};

#ifdef WITH_POCO
class PocoEvent {
public:
    static constexpr const char* name = "poco";
    void set() { event_.set(); }
    void reset() { event_.reset(); }
    void wait() { event_.wait(); }
    bool is_set() { return event_.tryWait(0); }

private:
    Poco::Event event_{Poco::Event::EVENT_MANUALRESET};
};
#endif

#ifdef WITH_WINPR
class WinprEvent {
public:
    static constexpr const char* name = "winpr";
    WinprEvent() : handle_(CreateEventA(nullptr, TRUE, FALSE, nullptr)) {}
    ~WinprEvent() { CloseHandle(handle_); }
    void set() { SetEvent(handle_); }
    void reset() { ResetEvent(handle_); }
    void wait() { WaitForSingleObject(handle_, 0xFFFFFFFFU); }
    bool is_set() { return WaitForSingleObject(handle_, 0) == WAIT_OBJECT_0; }

private:
    HANDLE handle_;
};
#endif

template <typename Register>
void for_each_event(Register register_one) {
    register_one.template operator()<OurEvent>();
    for_each_monitor<Event>(register_one);
#ifdef WITH_POCO
    register_one.template operator()<PocoEvent>();
#endif
#ifdef WITH_WINPR
    register_one.template operator()<WinprEvent>();
#endif
}

}  // namespace contenders
