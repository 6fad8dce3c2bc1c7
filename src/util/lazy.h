// SPDX-License-Identifier: Apache-2.0
// A constant that is made when it is first asked for, by any of several threads.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>

namespace PI {

template <class Value>
class Lazy {
public:
    /// @param make gives the value; when it throws, the next call makes the value
    template <class Make>
    const Value& Get(Make make) {
        const Value* value = m_Value.load(std::memory_order_acquire);
        return value != nullptr ? *value : Made(make);
    }

private:
    template <class Make>
    [[gnu::noinline]] const Value& Made(Make make) {
        const std::lock_guard<std::mutex> lock(m_Mutex);
        if (m_Owner == nullptr) {
            m_Owner = std::make_unique<const Value>(make());
            m_Value.store(m_Owner.get(), std::memory_order_release);
        }
        return *m_Owner;
    }

    std::atomic<const Value*> m_Value = nullptr;
    std::mutex m_Mutex;
    std::unique_ptr<const Value> m_Owner;
};

}  // namespace PI
