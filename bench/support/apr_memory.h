// What every call of APR takes its memory from.
#pragma once

#include <apr_general.h>
#include <apr_pools.h>

class AprMemory {
public:
    AprMemory() {
        [[maybe_unused]] static const apr_status_t started = apr_initialize();
        apr_pool_create(&pool_, nullptr);
    }
    ~AprMemory() { apr_pool_destroy(pool_); }
    AprMemory(const AprMemory&) = delete;
    AprMemory& operator=(const AprMemory&) = delete;
    apr_pool_t* get() const { return pool_; }

private:
    apr_pool_t* pool_ = nullptr;
};
