// SPDX-License-Identifier: Apache-2.0
// Memory that runs out when a test wants it to.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <new>

namespace PI::Test {

/// How memory fails: one allocation only, or that one and all behind it.
enum class Shortage { ONCE, LASTING };

/// While it lives, allocations of the process, those of the XML library included, fail from a given one on.
/// Serves programs of one thread.
class FailingMemory {
public:
    /// @param succeeding how many allocations succeed before the first fails
    FailingMemory(std::uint64_t succeeding, Shortage shortage);
    ~FailingMemory();
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;

    /// Whether any allocation has failed.
    bool HasFailed() const;
};

/// Blocks of memory that are allocated and not freed.
std::int64_t LiveBlocks();

/// How an operation ended.
enum class Ending {
    DONE,      ///< nothing failed
    THREW,     ///< std::bad_alloc reached the caller
    ABSORBED,  ///< an allocation failed, and the caller was not told
};

template <class Act>
Ending TryWithout(std::uint64_t succeeding, Shortage shortage, Act act) {
    const FailingMemory memory(succeeding, shortage);
    try {
        act();
    } catch (const std::bad_alloc&) {
        return Ending::THREW;
    }
    return memory.HasFailed() ? Ending::ABSORBED : Ending::DONE;
}

/// Runs an operation again and again, each time with one more allocation that succeeds, until none fails.
/// Expects that some did, and that nothing was left allocated.
///
/// @param make  gives what the operation works on, anew for each run
/// @param act   the operation, on what make gave
/// @param check looks at what make gave, and at the ending
template <class Make, class Act, class Check>
void RunOutOfMemoryEverywhere(Make make, Act act, Check check) {
    for (const Shortage shortage : {Shortage::ONCE, Shortage::LASTING}) {
        std::uint64_t succeeding = 0;
        for (Ending ending = Ending::THREW; ending != Ending::DONE; ++succeeding) {
            SCOPED_TRACE(testing::Message() << "allocation " << succeeding << " fails"
                                            << (shortage == Shortage::ONCE ? "" : ", and all behind it"));
            ASSERT_LT(succeeding, 100000U) << "does not end";
            const std::int64_t before = LiveBlocks();
            {
                auto subject = make();
                ending = TryWithout(succeeding, shortage, [&] { std::invoke(act, subject); });
                check(subject, ending);
            }
            if (testing::Test::HasFailure()) {
                return;  // the failure itself holds memory
            }
            ASSERT_EQ(LiveBlocks(), before);
        }
        ASSERT_GT(succeeding, 1U) << "nothing was allocated";
    }
}

}  // namespace PI::Test
